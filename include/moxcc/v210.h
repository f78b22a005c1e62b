/* SPDX-License-Identifier: BSD-2-Clause */
/**
 * @defgroup v210 v210
 * @ingroup video
 * @brief 4:2:2 video of 10-bit samples in 32-bit words, to 16-bit luma and to 5-6-5 colour words.
 *
 * Four little-endian words hold a group of six pixels, three samples a word; bits 30 and 31 are ignored:
 *
 *     word   bits 0 to 9   10 to 19   20 to 29
 *      0       Cb0           Y0         Cr0
 *      1       Y1            Cb1        Y2
 *      2       Cr1           Y3         Cb2
 *      3       Y4            Cr2        Y5
 *
 * Pixels 2i and 2i + 1 share Cbi and Cri. A width that is no multiple of six ends within a group, of which only the
 * words are read that the row's pixels need.
 *
 * All functions here count steps in elements, not in bytes: srcStep in words, dstStep in samples. They answer
 * moxStatusNullPtr if src or dst is null, then moxStatusBadSize if the width, the height or a step is below 1. Odd
 * widths are whole.
 *
 * The colour functions are no way to show a picture. Broadcast video, with luma from 64 to 940, is far above what the
 * fields of a colour word hold, so that nearly all its pixels run into the limits; and a gray of any level fills G half
 * as far as R and B. They are for programs that expect these very words; for all else take the luma, or unpack and
 * scale the samples first. Nor is their matrix quite that of BT.709, which has 1.5748 and 1.8556 for 1.54 and 1.816.
 *
 * @{
 */
#ifndef MOXCC_V210_H
#define MOXCC_V210_H

#include "moxcc/types.h"

MOX_EXTERN_C_BEGIN

/**
 * Converts v210 to one colour word a pixel: R in bits 11 to 15, G in bits 5 to 10, B in bits 0 to 4. By the BT.709
 * matrix in single precision, with u = Cb - 512 and v = Cr - 512: R = 1.54 v + Y, G = (-0.459 v + Y) - 0.183 u, B = Y +
 * 1.816 u. Each is rounded to the nearest integer, ties to even in any rounding mode, and limited to its field, 0 to 31
 * or 0 to 63. The 10-bit values are not scaled to the fields first: anything above 31 or 63 fills its field. Chroma is
 * not interpolated, as if it were sited between the two pixels (@ref siting).
 * @copydetails moxiYUV422v210ToGray_709HDTV_32u16u_C3C1
 */
MOX_API MoxStatus moxiYUV422v210ToBGR_709HDTV_32u16u_C3(const Mox32u* src, int32_t srcStep, Mox16u* dst,
                                                        int32_t dstStep, MoxiSize roiSize);

/**
 * Converts v210 to one colour word a pixel: B in bits 11 to 15, G in bits 5 to 10, R in bits 0 to 4. The arithmetic is
 * that of moxiYUV422v210ToBGR_709HDTV_32u16u_C3(). @copydetails moxiYUV422v210ToGray_709HDTV_32u16u_C3C1
 */
MOX_API MoxStatus moxiYUV422v210ToRGB_709HDTV_32u16u_C3(const Mox32u* src, int32_t srcStep, Mox16u* dst,
                                                        int32_t dstStep, MoxiSize roiSize);

/**
 * Takes the luma of v210 as 16-bit samples: the 10-bit value, 0 to 1023, unscaled.
 *
 * @param src     groups of four words
 * @param srcStep distance between source rows in words
 * @param dst     one word or sample per pixel
 * @param dstStep distance between destination rows in samples
 * @param roiSize width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr or moxStatusBadSize
 */
MOX_API MoxStatus moxiYUV422v210ToGray_709HDTV_32u16u_C3C1(const Mox32u* src, int32_t srcStep, Mox16u* dst,
                                                           int32_t dstStep, MoxiSize roiSize);

MOX_EXTERN_C_END

/** @} */

#endif
