/* SPDX-License-Identifier: BSD-2-Clause */
/**
 * @defgroup rec709_decode YCbCr of BT.709 to RGB
 * @ingroup video
 * @brief YCbCr with the matrices of ITU-R BT.709 to BGR, 8 bits, subsampled and at full resolution.
 *
 * 709CSC is studio range, Y from 16 to 235 and chroma from 16 to 240:
 *
 *     R = 1.164 (Y - 16)                      + 1.793 (Cr - 128)
 *     G = 1.164 (Y - 16) - 0.213 (Cb - 128) - 0.534 (Cr - 128)
 *     B = 1.164 (Y - 16) + 2.115 (Cb - 128)
 *
 * 709HDTV is full range:
 *
 *     R = Y                      + 1.540 (Cr - 128)
 *     G = Y - 0.183 (Cb - 128) - 0.459 (Cr - 128)
 *     B = Y + 1.816 (Cb - 128)
 *
 * BT.709 itself has 1.5748 and 1.8556 where these have 1.540 and 1.816: a full-range stream by the standard comes out
 * wrong by up to 6. They are the inverse of the 709HDTV matrix in rec709_encode.h.
 *
 * Results are limited to 0 to 255. The fixed-point forms differ by where they round; which column follows which depends
 * on the width alone, and is told with each function.
 *
 * Each pixel takes the chroma of the cell that it lies in, unfiltered, as if it were sited in the cell's middle
 * (@ref siting). Of 4:2:0 the whole cells of 2 by 2 pixels are decoded: the last column of an odd width and the last
 * row of an odd height are neither read nor written, and the status is moxStatusOddSize. All other functions return
 * moxStatusOk at any size that they accept.
 *
 * Packed 4:2:2 rows hold two bytes a pixel. The last pixel of an odd width takes the chroma sample that it lacks from
 * the pair before; in a row of one pixel the one chroma sample stands for both.
 *
 * All functions here: no pointer, nor a pointer in a plane array, may be null (moxStatusNullPtr); width and height
 * must be at least 1 (moxStatusBadSize). The plane pointers are tested after the size where nothing else is said.
 * Steps are not tested: zero and negative ones will do; arrays of steps must not be null. A fourth byte is aval in
 * every pixel written.
 *
 * @{
 */
#ifndef MOXCC_REC709_DECODE_H
#define MOXCC_REC709_DECODE_H

#include "moxcc/types.h"

MOX_EXTERN_C_BEGIN

/**
 * Converts planes of Y, Cb, Cr to interleaved B, G, R.
 *
 * Studio range. Terms of 4 fractional bits, rounded, in all columns; negative terms are truncated as such. The plane
 * pointers are tested before the size.
 *
 * @param srcPlanes pointers to the source planes, in the order told above
 * @param srcStep   distance between rows in bytes, the same in all source planes
 * @param dst       interleaved destination pixels
 * @param dstStep   distance between destination rows in bytes
 * @param roiSize   width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr or moxStatusBadSize; of 4:2:0 also moxStatusOddSize
 */
MOX_API MoxStatus moxiYCbCrToBGR_709CSC_8u_P3C3R(const Mox8u* const* srcPlanes, int32_t srcStep, Mox8u* dst,
                                                 int32_t dstStep, MoxiSize roiSize);

/**
 * Converts planes of Y, Cb, Cr to interleaved B, G, R and a fourth byte.
 *
 * Studio range. Terms of 4 fractional bits, rounded, in all columns; negative terms are truncated without their sign.
 * The plane pointers are tested before the size.
 *
 * @param srcPlanes pointers to the source planes, in the order told above
 * @param srcStep   distance between rows in bytes, the same in all source planes
 * @param dst       interleaved destination pixels
 * @param dstStep   distance between destination rows in bytes
 * @param roiSize   width and height in pixels
 * @param aval      value of the fourth byte of each pixel written
 * @return moxStatusOk, moxStatusNullPtr or moxStatusBadSize; of 4:2:0 also moxStatusOddSize
 */
MOX_API MoxStatus moxiYCbCrToBGR_709CSC_8u_P3C4R(const Mox8u* const* srcPlanes, int32_t srcStep, Mox8u* dst,
                                                 int32_t dstStep, MoxiSize roiSize, Mox8u aval);

/**
 * Decodes 4:2:0 planes of Y, Cb, Cr to interleaved B, G, R.
 *
 * Studio range. Columns below the width rounded down to a multiple of 8: terms of 4 fractional bits, rounded. The
 * columns beyond: one sum of 16 fractional bits, rounded.
 *
 * @param srcPlanes pointers to the source planes, in the order told above
 * @param srcSteps  distance between rows in bytes for each source plane
 * @param dst       interleaved destination pixels
 * @param dstStep   distance between destination rows in bytes
 * @param roiSize   width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr or moxStatusBadSize; of 4:2:0 also moxStatusOddSize
 */
MOX_API MoxStatus moxiYCbCr420ToBGR_709CSC_8u_P3C3R(const Mox8u* const* srcPlanes, const int32_t* srcSteps, Mox8u* dst,
                                                    int32_t dstStep, MoxiSize roiSize);

/**
 * Decodes packed 4:2:2, Cb, Y0, Cr, Y1, to interleaved B, G, R.
 *
 * Full range. Columns below the width rounded down to a multiple of 8: terms of 4 fractional bits, rounded. The columns
 * beyond: one sum of 16 fractional bits, rounded. The last pixel of an odd width is written, by the second form.
 *
 * @param src     packed source pixel pairs, two bytes a pixel
 * @param srcStep distance between source rows in bytes
 * @param dst     interleaved destination pixels
 * @param dstStep distance between destination rows in bytes
 * @param roiSize width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr or moxStatusBadSize; of 4:2:0 also moxStatusOddSize
 */
MOX_API MoxStatus moxiCbYCr422ToBGR_709HDTV_8u_C2C3R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                                     MoxiSize roiSize);

/**
 * Decodes packed 4:2:2, Cb, Y0, Cr, Y1, to interleaved B, G, R and a fourth byte.
 *
 * Full range. Columns below the width rounded down to a multiple of 8: terms of 4 fractional bits, rounded. The columns
 * beyond: one sum of 16 fractional bits, rounded. The last pixel of an odd width is written, by the second form.
 *
 * @param src     packed source pixel pairs, two bytes a pixel
 * @param srcStep distance between source rows in bytes
 * @param dst     interleaved destination pixels
 * @param dstStep distance between destination rows in bytes
 * @param roiSize width and height in pixels
 * @param aval    value of the fourth byte of each pixel written
 * @return moxStatusOk, moxStatusNullPtr or moxStatusBadSize; of 4:2:0 also moxStatusOddSize
 */
MOX_API MoxStatus moxiCbYCr422ToBGR_709HDTV_8u_C2C4R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                                     MoxiSize roiSize, Mox8u aval);

/**
 * Decodes 4:2:0 planes of Y, Cb, Cr to interleaved B, G, R and a fourth byte.
 *
 * Full range. Columns below the width rounded down to a multiple of 8: terms of 4 fractional bits, rounded. The columns
 * beyond: one sum of 16 fractional bits, rounded.
 *
 * @param srcPlanes pointers to the source planes, in the order told above
 * @param srcSteps  distance between rows in bytes for each source plane
 * @param dst       interleaved destination pixels
 * @param dstStep   distance between destination rows in bytes
 * @param roiSize   width and height in pixels
 * @param aval      value of the fourth byte of each pixel written
 * @return moxStatusOk, moxStatusNullPtr or moxStatusBadSize; of 4:2:0 also moxStatusOddSize
 */
MOX_API MoxStatus moxiYCbCr420ToBGR_709HDTV_8u_P3C4R(const Mox8u* const* srcPlanes, const int32_t* srcSteps, Mox8u* dst,
                                                     int32_t dstStep, MoxiSize roiSize, Mox8u aval);

MOX_EXTERN_C_END

/** @} */

#endif
