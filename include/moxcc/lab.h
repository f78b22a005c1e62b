/* SPDX-License-Identifier: BSD-2-Clause */
/**
 * @defgroup lab RGB and CIE Lab
 * @ingroup models
 * @brief CIE 1976 L*a*b* with the D65 white, of linear RGB with the primaries of BT.709.
 *
 * With X, Y, Z as in xyz.h and the white Xn = 0.950456, Zn = 1.088754:
 *
 *     L = 116 Y^(1/3) - 16 if Y > 0.008856, else 903.3 Y
 *     a = 500 (f(X / Xn) - f(Y)), b = 200 (f(Y) - f(Z / Zn))
 *     f(t) = t^(1/3) if t > 0.008856, else 7.787 t + 16 / 116
 *
 * and back, with P = (L + 16) / 116: X = Xn (P + a / 500)^3, Y = P^3, Z = Zn (P - b / 200)^3.
 *
 * L goes from 0 to 100, a and b from -128 to 127, which 32f and 64f samples carry as they are, beside RGB from 0 to 1.
 * Only the way to Lab has the straight part for dark colours; the way back takes cubes throughout, so that black comes
 * back as a little more than 0.
 *
 * Arithmetic and conversions to integers follow the caller's rounding mode: single precision, in the 64f forms double.
 *
 * All functions here: pointers, those of planes and of step arrays too, must not be null (moxStatusNullPtr), width and
 * height must be at least 1 (moxStatusBadSize); steps are bytes and are not tested, zero and negative ones included.
 *
 * @{
 */
#ifndef MOXCC_LAB_H
#define MOXCC_LAB_H

#include "moxcc/types.h"

MOX_EXTERN_C_BEGIN

/**
 * @brief Converts 8u RGB pixels to Lab. L is scaled by 2.55; a and b are stored as a + 128 and b + 128. Columns of
 * whole groups of four saturate; the last columns of a row keep the low byte of a result that rounding drives out of
 * range.
 *
 * @param src     interleaved source pixels
 * @param srcStep distance between source rows in bytes
 * @param dst     interleaved destination pixels
 * @param dstStep distance between destination rows in bytes
 * @param roiSize width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr or moxStatusBadSize
 */
MOX_API MoxStatus moxiRGBToLab_8u_C3R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize);

/**
 * Converts 32f RGB pixels to Lab. Results are stored unscaled. RGB outside 0 to 1 gives what the arithmetic gives, with
 * a cube root of no defined precision. @copydetails moxiRGBToLab_8u_C3R
 */
MOX_API MoxStatus moxiRGBToLab_32f_C3R(const Mox32f* src, int32_t srcStep, Mox32f* dst, int32_t dstStep,
                                       MoxiSize roiSize);

/**
 * Converts 8u BGR pixels to Lab. L is scaled by 2.55; a and b are stored as a + 128 and b + 128. Columns of whole
 * groups of four saturate; the last columns of a row keep the low byte of a result that rounding drives out of range.
 * @copydetails moxiRGBToLab_8u_C3R
 */
MOX_API MoxStatus moxiBGRToLab_8u_C3R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize);
/** Converts 32f BGR pixels to Lab. @copydetails moxiRGBToLab_32f_C3R */
MOX_API MoxStatus moxiBGRToLab_32f_C3R(const Mox32f* src, int32_t srcStep, Mox32f* dst, int32_t dstStep,
                                       MoxiSize roiSize);

/**
 * Converts 8u BGR pixels to Lab of 16u. L is scaled by 655.35; a and b are (a + 128) * 255. Columns of whole groups of
 * four saturate; the last columns of a row keep the low 16 bits of a result that rounding drives out of range.
 * @copydetails moxiRGBToLab_8u_C3R
 */
MOX_API MoxStatus moxiBGRToLab_8u16u_C3R(const Mox8u* src, int32_t srcStep, Mox16u* dst, int32_t dstStep,
                                         MoxiSize roiSize);

/**
 * Converts 8u Lab pixels to RGB. L is scaled by 2.55; a and b are stored as a + 128 and b + 128. Results saturate.
 * @copydetails moxiRGBToLab_8u_C3R
 */
MOX_API MoxStatus moxiLabToRGB_8u_C3R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize);

/**
 * Converts 32f Lab pixels to RGB. Results are stored unclamped: colours outside the RGB cube lie outside 0 to 1.
 * @copydetails moxiRGBToLab_8u_C3R
 */
MOX_API MoxStatus moxiLabToRGB_32f_C3R(const Mox32f* src, int32_t srcStep, Mox32f* dst, int32_t dstStep,
                                       MoxiSize roiSize);
/** Converts 8u Lab pixels to BGR. @copydetails moxiLabToRGB_8u_C3R */
MOX_API MoxStatus moxiLabToBGR_8u_C3R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize);
/** Converts 32f Lab pixels to BGR. @copydetails moxiLabToRGB_32f_C3R */
MOX_API MoxStatus moxiLabToBGR_32f_C3R(const Mox32f* src, int32_t srcStep, Mox32f* dst, int32_t dstStep,
                                       MoxiSize roiSize);

/**
 * Converts 16u Lab pixels to BGR of 8u. L is scaled by 655.35; a and b are (a + 128) * 255. Results saturate.
 * @copydetails moxiRGBToLab_8u_C3R
 */
MOX_API MoxStatus moxiLabToBGR_16u8u_C3R(const Mox16u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                         MoxiSize roiSize);

/**
 * @brief Converts 32f RGB planes to Lab planes. Results are stored unscaled.
 *
 * @param srcPlanes the three source planes, in the order told above
 * @param srcSteps  for each source plane, the distance between rows in bytes
 * @param dstPlanes the three destination planes, in the order told above
 * @param dstSteps  for each destination plane, the distance between rows in bytes
 * @param roiSize   width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr or moxStatusBadSize
 */
MOX_API MoxStatus moxiRGBToLab_32f_P3R(const Mox32f* const srcPlanes[3], const int32_t srcSteps[3],
                                       Mox32f* const dstPlanes[3], const int32_t dstSteps[3], MoxiSize roiSize);

/**
 * Converts 32f RGB planes to Lab planes, under a second name. As moxiRGBToLab_32f_P3R, for callers with sizes and steps
 * of the machine's word; here that is the same type. @copydetails moxiRGBToLab_32f_P3R
 */
MOX_API MoxStatus moxiRGBToLab_32f_P3R_L(const Mox32f* const srcPlanes[3], const int32_t srcSteps[3],
                                         Mox32f* const dstPlanes[3], const int32_t dstSteps[3], MoxiSize roiSize);

/**
 * Converts 64f RGB planes to Lab planes. Results are stored unscaled. The cube roots are within 0.51 units in the last
 * place. @copydetails moxiRGBToLab_32f_P3R
 */
MOX_API MoxStatus moxiRGBToLab_64f_P3R(const Mox64f* const srcPlanes[3], const int32_t srcSteps[3],
                                       Mox64f* const dstPlanes[3], const int32_t dstSteps[3], MoxiSize roiSize);

/**
 * Converts 64f RGB planes to Lab planes, under a second name. As moxiRGBToLab_64f_P3R, for callers with sizes and steps
 * of the machine's word; here that is the same type. @copydetails moxiRGBToLab_32f_P3R
 */
MOX_API MoxStatus moxiRGBToLab_64f_P3R_L(const Mox64f* const srcPlanes[3], const int32_t srcSteps[3],
                                         Mox64f* const dstPlanes[3], const int32_t dstSteps[3], MoxiSize roiSize);
/** Converts 32f Lab planes to RGB planes. Results are stored unclamped. @copydetails moxiRGBToLab_32f_P3R */
MOX_API MoxStatus moxiLabToRGB_32f_P3R(const Mox32f* const srcPlanes[3], const int32_t srcSteps[3],
                                       Mox32f* const dstPlanes[3], const int32_t dstSteps[3], MoxiSize roiSize);

/**
 * Converts 32f Lab planes to RGB planes, under a second name. As moxiLabToRGB_32f_P3R, for callers with sizes and steps
 * of the machine's word; here that is the same type. @copydetails moxiRGBToLab_32f_P3R
 */
MOX_API MoxStatus moxiLabToRGB_32f_P3R_L(const Mox32f* const srcPlanes[3], const int32_t srcSteps[3],
                                         Mox32f* const dstPlanes[3], const int32_t dstSteps[3], MoxiSize roiSize);
/** Converts 64f Lab planes to RGB planes. @copydetails moxiLabToRGB_32f_P3R */
MOX_API MoxStatus moxiLabToRGB_64f_P3R(const Mox64f* const srcPlanes[3], const int32_t srcSteps[3],
                                       Mox64f* const dstPlanes[3], const int32_t dstSteps[3], MoxiSize roiSize);

/**
 * Converts 64f Lab planes to RGB planes, under a second name. As moxiLabToRGB_64f_P3R, for callers with sizes and steps
 * of the machine's word; here that is the same type. @copydetails moxiRGBToLab_32f_P3R
 */
MOX_API MoxStatus moxiLabToRGB_64f_P3R_L(const Mox64f* const srcPlanes[3], const int32_t srcSteps[3],
                                         Mox64f* const dstPlanes[3], const int32_t dstSteps[3], MoxiSize roiSize);

MOX_EXTERN_C_END

/** @} */

#endif
