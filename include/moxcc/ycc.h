/* SPDX-License-Identifier: BSD-2-Clause */
/**
 * @defgroup ycc RGB and PhotoYCC
 * @ingroup models
 * @brief Luma and two colour differences, C1 of blue and C2 of red, as the photographic YCC encoding has them.
 *
 *     l = 0.299 R + 0.587 G + 0.114 B
 *     Y = 0.7132668 l, C1 = 0.4368627 (B - l) + o1, C2 = 0.53192 (R - l) + o2
 *
 * and back, with y = 1.3584 Y, c1 = 2.2179 (C1 - o1) and c2 = 1.8215 (C2 - o2):
 *
 *     R = y + c2, G = y - 0.194 c1 - 0.509 c2, B = y + c1
 *
 * Pixels are R, G, B and Y, C1, C2 in this order. On the 8-bit scale white is Y = 181, and the offsets o1 and o2 are
 * 156 and 137; 16u samples have 40092 and 35209, 16s samples are 16u samples less 32768, and 32f samples have R, G, B
 * in 0 to 1 and offsets of 156/255 and 137/255. Luma weighs R, G, B as BT.601 does. The two directions have constants
 * of their own and are no exact inverses: 8-bit white comes back as 245.
 *
 * All functions here: src and dst must not be null (moxStatusNullPtr), then width and height must be at least 1
 * (moxStatusBadSize). Steps are bytes and are not tested; 16-bit and float forms round them down to whole samples. In
 * AC4R forms the source's fourth sample is not read and the destination's keeps what it held. Vector columns, the width
 * rounded down to a multiple of 8 (8u C3R) or 4, may differ by one from the last columns of a row.
 *
 * @{
 */
#ifndef MOXCC_YCC_H
#define MOXCC_YCC_H

#include "moxcc/types.h"

MOX_EXTERN_C_BEGIN

/**
 * @brief Converts 8u RGB pixels to YCC. Fixed point; results lie in 0 to 255.
 *
 * @param src     source pixels
 * @param srcStep distance between source rows in bytes
 * @param dst     destination pixels
 * @param dstStep distance between destination rows in bytes
 * @param roiSize width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr or moxStatusBadSize
 */
MOX_API MoxStatus moxiRGBToYCC_8u_C3R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize);

/**
 * Converts 8u RGB pixels to YCC, keeping the destination's alpha. Fixed point; results lie in 0 to 255.
 * @copydetails moxiRGBToYCC_8u_C3R
 */
MOX_API MoxStatus moxiRGBToYCC_8u_AC4R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                       MoxiSize roiSize);

/**
 * Converts 16u RGB pixels to YCC. Single precision; vector columns are converted in the caller's rounding mode, the
 * last columns by a matrix of their own with half a unit added and truncated. @copydetails moxiRGBToYCC_8u_C3R
 */
MOX_API MoxStatus moxiRGBToYCC_16u_C3R(const Mox16u* src, int32_t srcStep, Mox16u* dst, int32_t dstStep,
                                       MoxiSize roiSize);
/** Converts 16u RGB pixels to YCC, keeping the destination's alpha. @copydetails moxiRGBToYCC_16u_C3R */
MOX_API MoxStatus moxiRGBToYCC_16u_AC4R(const Mox16u* src, int32_t srcStep, Mox16u* dst, int32_t dstStep,
                                        MoxiSize roiSize);

/**
 * Converts 16s RGB pixels to YCC. Single precision on samples biased by 32768; vector columns are converted in the
 * caller's rounding mode, the last columns add half a unit and truncate. @copydetails moxiRGBToYCC_8u_C3R
 */
MOX_API MoxStatus moxiRGBToYCC_16s_C3R(const Mox16s* src, int32_t srcStep, Mox16s* dst, int32_t dstStep,
                                       MoxiSize roiSize);
/** Converts 16s RGB pixels to YCC, keeping the destination's alpha. @copydetails moxiRGBToYCC_16s_C3R */
MOX_API MoxStatus moxiRGBToYCC_16s_AC4R(const Mox16s* src, int32_t srcStep, Mox16s* dst, int32_t dstStep,
                                        MoxiSize roiSize);
/** Converts 32f RGB pixels to YCC. Single precision, not clamped. @copydetails moxiRGBToYCC_8u_C3R */
MOX_API MoxStatus moxiRGBToYCC_32f_C3R(const Mox32f* src, int32_t srcStep, Mox32f* dst, int32_t dstStep,
                                       MoxiSize roiSize);
/** Converts 32f RGB pixels to YCC, keeping the destination's alpha. @copydetails moxiRGBToYCC_32f_C3R */
MOX_API MoxStatus moxiRGBToYCC_32f_AC4R(const Mox32f* src, int32_t srcStep, Mox32f* dst, int32_t dstStep,
                                        MoxiSize roiSize);
/** Converts 8u YCC pixels to RGB. Fixed point, saturated to 0 to 255. @copydetails moxiRGBToYCC_8u_C3R */
MOX_API MoxStatus moxiYCCToRGB_8u_C3R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize);
/** Converts 8u YCC pixels to RGB, keeping the destination's alpha. @copydetails moxiYCCToRGB_8u_C3R */
MOX_API MoxStatus moxiYCCToRGB_8u_AC4R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                       MoxiSize roiSize);

/**
 * Converts 16u YCC pixels to RGB. Single precision, saturated to 0 to 65535; vector columns are converted in the
 * caller's rounding mode, the last columns add half a unit and truncate. @copydetails moxiRGBToYCC_8u_C3R
 */
MOX_API MoxStatus moxiYCCToRGB_16u_C3R(const Mox16u* src, int32_t srcStep, Mox16u* dst, int32_t dstStep,
                                       MoxiSize roiSize);
/** Converts 16u YCC pixels to RGB, keeping the destination's alpha. @copydetails moxiYCCToRGB_16u_C3R */
MOX_API MoxStatus moxiYCCToRGB_16u_AC4R(const Mox16u* src, int32_t srcStep, Mox16u* dst, int32_t dstStep,
                                        MoxiSize roiSize);

/**
 * Converts 16s YCC pixels to RGB. Single precision on samples biased by 32768, truncated and saturated.
 * @copydetails moxiRGBToYCC_8u_C3R
 */
MOX_API MoxStatus moxiYCCToRGB_16s_C3R(const Mox16s* src, int32_t srcStep, Mox16s* dst, int32_t dstStep,
                                       MoxiSize roiSize);
/** Converts 16s YCC pixels to RGB, keeping the destination's alpha. @copydetails moxiYCCToRGB_16s_C3R */
MOX_API MoxStatus moxiYCCToRGB_16s_AC4R(const Mox16s* src, int32_t srcStep, Mox16s* dst, int32_t dstStep,
                                        MoxiSize roiSize);

/**
 * Converts 32f YCC pixels to RGB. Single precision, clamped to 0 to 1; a NaN stays. @copydetails moxiRGBToYCC_8u_C3R
 */
MOX_API MoxStatus moxiYCCToRGB_32f_C3R(const Mox32f* src, int32_t srcStep, Mox32f* dst, int32_t dstStep,
                                       MoxiSize roiSize);
/** Converts 32f YCC pixels to RGB, keeping the destination's alpha. @copydetails moxiYCCToRGB_32f_C3R */
MOX_API MoxStatus moxiYCCToRGB_32f_AC4R(const Mox32f* src, int32_t srcStep, Mox32f* dst, int32_t dstStep,
                                        MoxiSize roiSize);

MOX_EXTERN_C_END

/** @} */

#endif
