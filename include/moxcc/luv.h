/* SPDX-License-Identifier: BSD-2-Clause */
/**
 * @defgroup luv RGB and CIE LUV
 * @ingroup models
 * @brief CIE 1976 L*u*v* with the D65 white, of linear RGB with the primaries of BT.709.
 *
 * With X, Y, Z as in xyz.h and the white point u'n = 0.197839, v'n = 0.468342:
 *
 *     L = 116 Y^(1/3) - 16 if Y > 0.008856, else 903.3 Y
 *     u = 13 L (u' - u'n), u' = 4 X / (X + 15 Y + 3 Z)
 *     v = 13 L (v' - v'n), v' = 9 Y / (X + 15 Y + 3 Z)
 *
 * and back:
 *
 *     Y = ((L + 16) / 116)^3 if L > 7.9996247, else L / 903.3
 *     X = 9/4 Y u' / v', Z = 3 Y / v' - 5 Y - X / 3, u' = u / (13 L) + u'n, v' = v / (13 L) + v'n
 *
 * L goes from 0 to 100, u from -134 to 220, v from -140 to 122. 32f samples carry them as they are, beside RGB from 0
 * to 1; integer samples carry RGB, L, u and v scaled to the full range of their type: 8u as L * 2.55, (u + 134) * 255 /
 * 354 and (v + 140) * 255 / 262, 16u likewise with 65535 for 255, 16s as 16u less 32768.
 *
 * Arithmetic is in single precision, in the caller's rounding mode, with the processor's approximate reciprocal where a
 * description says so; u and v of the forward direction rest on it, refined once, in all columns. Going to LUV, V has
 * half a unit added before it becomes a 16-bit sample.
 *
 * All functions here: src and dst must not be null (moxStatusNullPtr), width and height must be at least 1
 * (moxStatusBadSize); steps are bytes and are not tested, zero and negative ones included. The 16u and 16s forms and
 * moxiLUVToRGB_32f_AC4R round a step down to a whole number of samples. In the AC4 forms the fourth sample of a source
 * pixel is not read, and that of a destination pixel keeps what it held.
 *
 * @{
 */
#ifndef MOXCC_LUV_H
#define MOXCC_LUV_H

#include "moxcc/types.h"

MOX_EXTERN_C_BEGIN

/**
 * @brief Converts 8u three-channel RGB pixels to LUV. In the last width % 4 columns of a row, samples that rounding
 * drives out of range keep their low byte; others saturate.
 *
 * @param src     interleaved source pixels
 * @param srcStep distance between source rows in bytes
 * @param dst     interleaved destination pixels
 * @param dstStep distance between destination rows in bytes
 * @param roiSize width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr or moxStatusBadSize
 */
MOX_API MoxStatus moxiRGBToLUV_8u_C3R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize);

/**
 * Converts 8u four-channel RGB pixels to LUV. Samples that rounding drives out of range keep their low byte.
 * @copydetails moxiRGBToLUV_8u_C3R
 */
MOX_API MoxStatus moxiRGBToLUV_8u_AC4R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                       MoxiSize roiSize);

/**
 * Converts 16u three-channel RGB pixels to LUV. Columns of whole groups of four truncate L and round U and V; the last
 * columns of a row round all three, and give black a U and a V of 0. @copydetails moxiRGBToLUV_8u_C3R
 */
MOX_API MoxStatus moxiRGBToLUV_16u_C3R(const Mox16u* src, int32_t srcStep, Mox16u* dst, int32_t dstStep,
                                       MoxiSize roiSize);

/**
 * Converts 16u four-channel RGB pixels to LUV. Columns of whole groups of four truncate L and round U and V; the last
 * columns of a row truncate all three, and give black a U and a V of 0. @copydetails moxiRGBToLUV_8u_C3R
 */
MOX_API MoxStatus moxiRGBToLUV_16u_AC4R(const Mox16u* src, int32_t srcStep, Mox16u* dst, int32_t dstStep,
                                        MoxiSize roiSize);

/**
 * Converts 16s three-channel RGB pixels to LUV. Columns of whole groups of four truncate L and round U and V; the last
 * columns of a row round all three, and give black a U and a V of -32768. As the 16u form on samples biased by 32768.
 * @copydetails moxiRGBToLUV_8u_C3R
 */
MOX_API MoxStatus moxiRGBToLUV_16s_C3R(const Mox16s* src, int32_t srcStep, Mox16s* dst, int32_t dstStep,
                                       MoxiSize roiSize);
/** Converts 16s four-channel RGB pixels to LUV. @copydetails moxiRGBToLUV_16s_C3R */
MOX_API MoxStatus moxiRGBToLUV_16s_AC4R(const Mox16s* src, int32_t srcStep, Mox16s* dst, int32_t dstStep,
                                        MoxiSize roiSize);

/**
 * Converts 32f three-channel RGB pixels to LUV. RGB from 0 to 1; L, u and v are stored unscaled. Other RGB values give
 * what the arithmetic gives, with a cube root of no defined precision. @copydetails moxiRGBToLUV_8u_C3R
 */
MOX_API MoxStatus moxiRGBToLUV_32f_C3R(const Mox32f* src, int32_t srcStep, Mox32f* dst, int32_t dstStep,
                                       MoxiSize roiSize);
/** Converts 32f four-channel RGB pixels to LUV. @copydetails moxiRGBToLUV_32f_C3R */
MOX_API MoxStatus moxiRGBToLUV_32f_AC4R(const Mox32f* src, int32_t srcStep, Mox32f* dst, int32_t dstStep,
                                        MoxiSize roiSize);

/**
 * Converts 8u three-channel BGR pixels to LUV. In the last width % 4 columns of a row, samples that rounding drives out
 * of range keep their low byte; others saturate. @copydetails moxiRGBToLUV_8u_C3R
 */
MOX_API MoxStatus moxiBGRToLUV_8u_C3R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize);
/** Converts 32f three-channel BGR pixels to LUV. @copydetails moxiRGBToLUV_32f_C3R */
MOX_API MoxStatus moxiBGRToLUV_32f_C3R(const Mox32f* src, int32_t srcStep, Mox32f* dst, int32_t dstStep,
                                       MoxiSize roiSize);

/**
 * Converts 8u three-channel LUV pixels to RGB. Columns of whole groups of four round to nearest results of approximate
 * divisions; the last columns of a row divide truly and round half up. @copydetails moxiRGBToLUV_8u_C3R
 */
MOX_API MoxStatus moxiLUVToRGB_8u_C3R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize);

/**
 * Converts 8u four-channel LUV pixels to RGB. Columns of whole groups of four truncate results of approximate
 * divisions; the last columns of a row divide truly and round half up. @copydetails moxiRGBToLUV_8u_C3R
 */
MOX_API MoxStatus moxiLUVToRGB_8u_AC4R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                       MoxiSize roiSize);

/**
 * Converts 16u three-channel LUV pixels to RGB. Columns of whole groups of four truncate results of refined approximate
 * divisions; the last columns of a row divide truly and round half up. @copydetails moxiRGBToLUV_8u_C3R
 */
MOX_API MoxStatus moxiLUVToRGB_16u_C3R(const Mox16u* src, int32_t srcStep, Mox16u* dst, int32_t dstStep,
                                       MoxiSize roiSize);
/** Converts 16u four-channel LUV pixels to RGB. @copydetails moxiLUVToRGB_16u_C3R */
MOX_API MoxStatus moxiLUVToRGB_16u_AC4R(const Mox16u* src, int32_t srcStep, Mox16u* dst, int32_t dstStep,
                                        MoxiSize roiSize);

/**
 * Converts 16s three-channel LUV pixels to RGB. Columns of whole groups of four truncate results of refined approximate
 * divisions; the last columns of a row divide truly and round half up. As the 16u form on samples biased by 32768.
 * @copydetails moxiRGBToLUV_8u_C3R
 */
MOX_API MoxStatus moxiLUVToRGB_16s_C3R(const Mox16s* src, int32_t srcStep, Mox16s* dst, int32_t dstStep,
                                       MoxiSize roiSize);
/** Converts 16s four-channel LUV pixels to RGB. @copydetails moxiLUVToRGB_16s_C3R */
MOX_API MoxStatus moxiLUVToRGB_16s_AC4R(const Mox16s* src, int32_t srcStep, Mox16s* dst, int32_t dstStep,
                                        MoxiSize roiSize);

/**
 * Converts 32f three-channel LUV pixels to RGB. Columns of whole groups of four are stored unclamped; the last columns
 * of a row are clamped to 0 to 1. @copydetails moxiRGBToLUV_8u_C3R
 */
MOX_API MoxStatus moxiLUVToRGB_32f_C3R(const Mox32f* src, int32_t srcStep, Mox32f* dst, int32_t dstStep,
                                       MoxiSize roiSize);
/** Converts 32f four-channel LUV pixels to RGB. All results are clamped to 0 to 1. @copydetails moxiRGBToLUV_8u_C3R */
MOX_API MoxStatus moxiLUVToRGB_32f_AC4R(const Mox32f* src, int32_t srcStep, Mox32f* dst, int32_t dstStep,
                                        MoxiSize roiSize);
/** Converts 8u three-channel LUV pixels to BGR. @copydetails moxiLUVToRGB_8u_C3R */
MOX_API MoxStatus moxiLUVToBGR_8u_C3R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize);
/** Converts 32f three-channel LUV pixels to BGR. @copydetails moxiLUVToRGB_32f_C3R */
MOX_API MoxStatus moxiLUVToBGR_32f_C3R(const Mox32f* src, int32_t srcStep, Mox32f* dst, int32_t dstStep,
                                       MoxiSize roiSize);

MOX_EXTERN_C_END

/** @} */

#endif
