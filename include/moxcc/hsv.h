/* SPDX-License-Identifier: BSD-2-Clause */
/**
 * @defgroup hsv RGB and HSV
 * @ingroup models
 * @brief Hue, saturation and value: the hexcone model of computer graphics (Smith, 1978).
 *
 * With mx and mn the greatest and the least of R, G, B:
 *
 *     V = mx
 *     S = (mx - mn) / mx
 *     H = (G - B) / (mx - mn) if R is mx, 2 + (B - R) / (mx - mn) if G is mx, else 4 + (R - G) / (mx - mn), in sixths
 *         of the circle; a negative H takes a turn more
 *
 * and back, with i the whole sixths of H, f the rest, p = V (1 - S), q = V (1 - S f) and t = V (1 - S (1 - f)):
 *
 *     i            0        1        2        3        4        5
 *     R, G, B      V t p    q V p    p V t    p q V    t p V    V p q
 *
 * Grays have H = 0 and S = 0. H and S cover the full range of the sample type, 0 to 255 (8u) or 0 to 65535 (16u); V is
 * the sample itself.
 *
 * All forms compute in single precision and in the caller's rounding mode. The 8u forms from RGB use the processor's
 * approximate reciprocal, so that results may differ between makes of processor.
 *
 * All functions here: src and dst must not be null (moxStatusNullPtr), width and height must be at least 1
 * (moxStatusBadSize); steps are bytes and are not tested, zero and negative ones included. The 16u forms round a step
 * down to a whole number of samples. In the AC4 forms the fourth sample of a source pixel is not read, and that of a
 * destination pixel keeps what it held.
 *
 * @{
 */
#ifndef MOXCC_HSV_H
#define MOXCC_HSV_H

#include "moxcc/types.h"

MOX_EXTERN_C_BEGIN

/**
 * @brief Converts 8u pixels from RGB to HSV. Converted in the caller's rounding mode. Where two channels are both the
 * greatest, the width rounded down to a multiple of 4 and the last columns choose the sector of the hue in different
 * orders, so that the hue may differ by 1.
 *
 * @param src     source pixels, the samples in the order told above
 * @param srcStep distance between source rows in bytes
 * @param dst     destination pixels, the samples in the order told above
 * @param dstStep distance between destination rows in bytes
 * @param roiSize width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr or moxStatusBadSize
 */
MOX_API MoxStatus moxiRGBToHSV_8u_C3R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize);

/**
 * Converts 8u pixels with alpha from RGB to HSV. Converted in the caller's rounding mode. Where two channels are both
 * the greatest, the width rounded down to a multiple of 4 and the last columns choose the sector of the hue in
 * different orders, so that the hue may differ by 1. @copydetails moxiRGBToHSV_8u_C3R
 */
MOX_API MoxStatus moxiRGBToHSV_8u_AC4R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                       MoxiSize roiSize);

/**
 * Converts 16u pixels from RGB to HSV. True divisions; adds 0.5 and truncates. All columns alike.
 * @copydetails moxiRGBToHSV_8u_C3R
 */
MOX_API MoxStatus moxiRGBToHSV_16u_C3R(const Mox16u* src, int32_t srcStep, Mox16u* dst, int32_t dstStep,
                                       MoxiSize roiSize);
/** Converts 16u pixels with alpha from RGB to HSV. @copydetails moxiRGBToHSV_16u_C3R */
MOX_API MoxStatus moxiRGBToHSV_16u_AC4R(const Mox16u* src, int32_t srcStep, Mox16u* dst, int32_t dstStep,
                                        MoxiSize roiSize);

/**
 * Converts 8u pixels from HSV to RGB. Converted in the caller's rounding mode, all columns alike. H = 255 counts as 0;
 * S = 0 gives R = G = B = V. @copydetails moxiRGBToHSV_8u_C3R
 */
MOX_API MoxStatus moxiHSVToRGB_8u_C3R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize);
/** Converts 8u pixels with alpha from HSV to RGB. @copydetails moxiHSVToRGB_8u_C3R */
MOX_API MoxStatus moxiHSVToRGB_8u_AC4R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                       MoxiSize roiSize);

/**
 * Converts 16u pixels from HSV to RGB. Converted in the caller's rounding mode, all columns alike. H = 65535 counts as
 * 0; S = 0 gives R = G = B = V. @copydetails moxiRGBToHSV_8u_C3R
 */
MOX_API MoxStatus moxiHSVToRGB_16u_C3R(const Mox16u* src, int32_t srcStep, Mox16u* dst, int32_t dstStep,
                                       MoxiSize roiSize);
/** Converts 16u pixels with alpha from HSV to RGB. @copydetails moxiHSVToRGB_16u_C3R */
MOX_API MoxStatus moxiHSVToRGB_16u_AC4R(const Mox16u* src, int32_t srcStep, Mox16u* dst, int32_t dstStep,
                                        MoxiSize roiSize);

MOX_EXTERN_C_END

/** @} */

#endif
