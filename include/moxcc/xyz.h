/* SPDX-License-Identifier: BSD-2-Clause */
/**
 * @defgroup xyz RGB and CIE XYZ
 * @ingroup models
 * @brief One matrix each way, for linear RGB with the primaries of BT.709 and the D65 white.
 *
 *     X =  0.412453 R + 0.357580 G + 0.180423 B        R =  3.240479 X - 1.537150 Y - 0.498535 Z
 *     Y =  0.212671 R + 0.715160 G + 0.072169 B        G = -0.969256 X + 1.875991 Y + 0.041556 Z
 *     Z =  0.019334 R + 0.119193 G + 0.950227 B        B =  0.055648 X - 0.204043 Y + 1.057311 Z
 *
 * Pixels are R, G, B and X, Y, Z in this order. Samples hold 0 to 1 scaled to the depth: to 255, to 65535 (16s less
 * 32768), or unscaled (32f). Z of white is 1.089 and is limited to the top value.
 *
 * All functions here: src and dst must not be null (moxStatusNullPtr), then width and height must be at least 1
 * (moxStatusBadSize). Steps are bytes and are not tested; 16-bit and float forms round them down to whole samples. In
 * AC4R forms the source's fourth sample is not read and the destination's keeps what it held.
 *
 * @{
 */
#ifndef MOXCC_XYZ_H
#define MOXCC_XYZ_H

#include "moxcc/types.h"

MOX_EXTERN_C_BEGIN

/**
 * @brief Converts 8u RGB pixels to XYZ. Fixed point, rounded down and saturated. Columns below the width rounded down
 * to a multiple of 8 have a coarser matrix than the rest of the row and may differ by one.
 *
 * @param src     source pixels
 * @param srcStep distance between source rows in bytes
 * @param dst     destination pixels
 * @param dstStep distance between destination rows in bytes
 * @param roiSize width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr or moxStatusBadSize
 */
MOX_API MoxStatus moxiRGBToXYZ_8u_C3R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize);

/**
 * Converts 8u RGB pixels to XYZ, keeping the destination's alpha. Fixed point, rounded down and saturated. Columns
 * below the width rounded down to a multiple of 4 have a coarser matrix than the rest of the row and may differ by one.
 * @copydetails moxiRGBToXYZ_8u_C3R
 */
MOX_API MoxStatus moxiRGBToXYZ_8u_AC4R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                       MoxiSize roiSize);

/**
 * Converts 16u RGB pixels to XYZ. Single precision, truncated and saturated to 0 to 65535.
 * @copydetails moxiRGBToXYZ_8u_C3R
 */
MOX_API MoxStatus moxiRGBToXYZ_16u_C3R(const Mox16u* src, int32_t srcStep, Mox16u* dst, int32_t dstStep,
                                       MoxiSize roiSize);
/** Converts 16u RGB pixels to XYZ, keeping the destination's alpha. @copydetails moxiRGBToXYZ_16u_C3R */
MOX_API MoxStatus moxiRGBToXYZ_16u_AC4R(const Mox16u* src, int32_t srcStep, Mox16u* dst, int32_t dstStep,
                                        MoxiSize roiSize);
/** Converts 16s RGB pixels to XYZ. As the 16u form on samples biased by 32768. @copydetails moxiRGBToXYZ_8u_C3R */
MOX_API MoxStatus moxiRGBToXYZ_16s_C3R(const Mox16s* src, int32_t srcStep, Mox16s* dst, int32_t dstStep,
                                       MoxiSize roiSize);
/** Converts 16s RGB pixels to XYZ, keeping the destination's alpha. @copydetails moxiRGBToXYZ_16s_C3R */
MOX_API MoxStatus moxiRGBToXYZ_16s_AC4R(const Mox16s* src, int32_t srcStep, Mox16s* dst, int32_t dstStep,
                                        MoxiSize roiSize);

/**
 * Converts 32f RGB pixels to XYZ. X and Y are stored as they come, Z is clamped to 0 to 1.
 * @copydetails moxiRGBToXYZ_8u_C3R
 */
MOX_API MoxStatus moxiRGBToXYZ_32f_C3R(const Mox32f* src, int32_t srcStep, Mox32f* dst, int32_t dstStep,
                                       MoxiSize roiSize);
/** Converts 32f RGB pixels to XYZ, keeping the destination's alpha. @copydetails moxiRGBToXYZ_32f_C3R */
MOX_API MoxStatus moxiRGBToXYZ_32f_AC4R(const Mox32f* src, int32_t srcStep, Mox32f* dst, int32_t dstStep,
                                        MoxiSize roiSize);

/**
 * Converts 8u XYZ pixels to RGB. Fixed point, rounded down and saturated. Columns below the width rounded down to a
 * multiple of 8 have a coarser matrix than the rest of the row and may differ by one. @copydetails moxiRGBToXYZ_8u_C3R
 */
MOX_API MoxStatus moxiXYZToRGB_8u_C3R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize);
/** Converts 8u XYZ pixels to RGB, keeping the destination's alpha. @copydetails moxiRGBToXYZ_8u_AC4R */
MOX_API MoxStatus moxiXYZToRGB_8u_AC4R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                       MoxiSize roiSize);
/** Converts 16u XYZ pixels to RGB. @copydetails moxiRGBToXYZ_16u_C3R */
MOX_API MoxStatus moxiXYZToRGB_16u_C3R(const Mox16u* src, int32_t srcStep, Mox16u* dst, int32_t dstStep,
                                       MoxiSize roiSize);
/** Converts 16u XYZ pixels to RGB, keeping the destination's alpha. @copydetails moxiRGBToXYZ_16u_C3R */
MOX_API MoxStatus moxiXYZToRGB_16u_AC4R(const Mox16u* src, int32_t srcStep, Mox16u* dst, int32_t dstStep,
                                        MoxiSize roiSize);
/** Converts 16s XYZ pixels to RGB. @copydetails moxiRGBToXYZ_16s_C3R */
MOX_API MoxStatus moxiXYZToRGB_16s_C3R(const Mox16s* src, int32_t srcStep, Mox16s* dst, int32_t dstStep,
                                       MoxiSize roiSize);
/** Converts 16s XYZ pixels to RGB, keeping the destination's alpha. @copydetails moxiRGBToXYZ_16s_C3R */
MOX_API MoxStatus moxiXYZToRGB_16s_AC4R(const Mox16s* src, int32_t srcStep, Mox16s* dst, int32_t dstStep,
                                        MoxiSize roiSize);
/** Converts 32f XYZ pixels to RGB. Results are clamped to 0 to 1; a NaN stays. @copydetails moxiRGBToXYZ_8u_C3R */
MOX_API MoxStatus moxiXYZToRGB_32f_C3R(const Mox32f* src, int32_t srcStep, Mox32f* dst, int32_t dstStep,
                                       MoxiSize roiSize);
/** Converts 32f XYZ pixels to RGB, keeping the destination's alpha. @copydetails moxiXYZToRGB_32f_C3R */
MOX_API MoxStatus moxiXYZToRGB_32f_AC4R(const Mox32f* src, int32_t srcStep, Mox32f* dst, int32_t dstStep,
                                        MoxiSize roiSize);

MOX_EXTERN_C_END

/** @} */

#endif
