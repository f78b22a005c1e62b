/* SPDX-License-Identifier: BSD-2-Clause */
/**
 * @defgroup gamma Gamma correction
 * @ingroup tone
 * @brief The transfer characteristic of ITU-R BT.709: linear samples to corrected ones (GammaFwd), and back (GammaInv).
 *
 * On the scale 0 to 1, with linear x and corrected y:
 *
 *     forward  y = 4.5 x if x < 0.018, else 1.099 x^0.45 - 0.099
 *     inverse  x = y / 4.5 if y < 0.0812, else ((y + 0.099) / 1.099)^(1 / 0.45)
 *
 * All colour channels go through the same curve. The 8u and 16u forms look each sample up in a table: the curve at
 * i / 255 or i / 65535 times 255 or 65535, rounded to single precision, then to an integer, to nearest with ties to
 * even.
 *
 * The 32f forms take the limits of the data's range. With r = vMax - vMin they bring a sample to the scale 0 to 1 as
 * t = (x - vMin) * (1 / r), and give
 *
 *     forward  (x - vMin) * 4.5 + vMin if t < 0.018, else (1.099 * t^0.45 - 0.099) * r + vMin
 *     inverse  (x - vMin) / 4.5 + vMin if t < 0.0812, else ((t + 0.099) / 1.099)^(1 / 0.45) * r + vMin
 *
 * Divisions by constants are multiplications by their reciprocals. All of this is in single precision, in the caller's
 * rounding mode; only t is computed and compared in double precision in the forms that say so. The power is within 4
 * units in the last place, and computed to nearest whatever the caller's mode. Nothing is clamped: samples below the
 * range follow the linear segment, samples above it the power, and a NaN stays a NaN. In a 32f call source and
 * destination may be the same rows, or must not overlap.
 *
 * Alpha, the fourth sample of AC4 forms, is neither read nor written: that of the destination keeps its value.
 *
 * All functions here: no pointer may be null (moxStatusNullPtr), width and height must be at least 1
 * (moxStatusBadSize), steps are bytes and must be at least 1 (moxStatusBadStep). In this order the first failure is
 * returned, and nothing has been written. Before all others the 32f forms test the range: vMax - vMin, in single
 * precision, must not be zero or negative (moxStatusBadRange).
 *
 * @{
 */
#ifndef MOXCC_GAMMA_H
#define MOXCC_GAMMA_H

#include "moxcc/types.h"

MOX_EXTERN_C_BEGIN

/**
 * Gamma-corrects 8u interleaved pixels of three channels.
 *
 * @param src     source pixels
 * @param srcStep distance between source rows in bytes
 * @param dst     destination pixels
 * @param dstStep distance between destination rows in bytes
 * @param roiSize width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr, moxStatusBadSize or moxStatusBadStep
 */
MOX_API MoxStatus moxiGammaFwd_8u_C3R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize);

/**
 * Gamma-corrects 8u interleaved pixels of three channels, in place.
 *
 * @param srcDst     the pixels, read and rewritten
 * @param srcDstStep distance between rows in bytes
 * @param roiSize    width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr, moxStatusBadSize or moxStatusBadStep
 */
MOX_API MoxStatus moxiGammaFwd_8u_C3IR(Mox8u* srcDst, int32_t srcDstStep, MoxiSize roiSize);
/** Gamma-corrects 8u interleaved pixels of three channels and alpha. @copydetails moxiGammaFwd_8u_C3R */
MOX_API MoxStatus moxiGammaFwd_8u_AC4R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                       MoxiSize roiSize);
/** Gamma-corrects 8u interleaved pixels of three channels and alpha, in place. @copydetails moxiGammaFwd_8u_C3IR */
MOX_API MoxStatus moxiGammaFwd_8u_AC4IR(Mox8u* srcDst, int32_t srcDstStep, MoxiSize roiSize);

/**
 * Gamma-corrects 8u three planes.
 *
 * @param srcPlanes source planes
 * @param srcStep   distance between source rows in bytes, of each plane
 * @param dstPlanes destination planes
 * @param dstStep   distance between destination rows in bytes, of each plane
 * @param roiSize   width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr, moxStatusBadSize or moxStatusBadStep
 */
MOX_API MoxStatus moxiGammaFwd_8u_P3R(const Mox8u* const srcPlanes[3], int32_t srcStep, Mox8u* const dstPlanes[3],
                                      int32_t dstStep, MoxiSize roiSize);

/**
 * Gamma-corrects 8u three planes, in place.
 *
 * @param srcDstPlanes the planes, read and rewritten
 * @param srcDstStep   distance between rows in bytes, of each plane
 * @param roiSize      width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr, moxStatusBadSize or moxStatusBadStep
 */
MOX_API MoxStatus moxiGammaFwd_8u_IP3R(Mox8u* const srcDstPlanes[3], int32_t srcDstStep, MoxiSize roiSize);
/** Gamma-corrects 16u interleaved pixels of three channels. @copydetails moxiGammaFwd_8u_C3R */
MOX_API MoxStatus moxiGammaFwd_16u_C3R(const Mox16u* src, int32_t srcStep, Mox16u* dst, int32_t dstStep,
                                       MoxiSize roiSize);
/** Gamma-corrects 16u interleaved pixels of three channels, in place. @copydetails moxiGammaFwd_8u_C3IR */
MOX_API MoxStatus moxiGammaFwd_16u_C3IR(Mox16u* srcDst, int32_t srcDstStep, MoxiSize roiSize);
/** Gamma-corrects 16u interleaved pixels of three channels and alpha. @copydetails moxiGammaFwd_8u_C3R */
MOX_API MoxStatus moxiGammaFwd_16u_AC4R(const Mox16u* src, int32_t srcStep, Mox16u* dst, int32_t dstStep,
                                        MoxiSize roiSize);
/** Gamma-corrects 16u interleaved pixels of three channels and alpha, in place. @copydetails moxiGammaFwd_8u_C3IR */
MOX_API MoxStatus moxiGammaFwd_16u_AC4IR(Mox16u* srcDst, int32_t srcDstStep, MoxiSize roiSize);
/** Gamma-corrects 16u three planes. @copydetails moxiGammaFwd_8u_P3R */
MOX_API MoxStatus moxiGammaFwd_16u_P3R(const Mox16u* const srcPlanes[3], int32_t srcStep, Mox16u* const dstPlanes[3],
                                       int32_t dstStep, MoxiSize roiSize);
/** Gamma-corrects 16u three planes, in place. @copydetails moxiGammaFwd_8u_IP3R */
MOX_API MoxStatus moxiGammaFwd_16u_IP3R(Mox16u* const srcDstPlanes[3], int32_t srcDstStep, MoxiSize roiSize);

/**
 * Gamma-corrects 32f interleaved pixels of three channels.
 *
 * @param src     source pixels
 * @param srcStep distance between source rows in bytes
 * @param dst     destination pixels
 * @param dstStep distance between destination rows in bytes
 * @param roiSize width and height in pixels
 * @param vMin    lower limit of the range
 * @param vMax    upper limit of the range
 * @return moxStatusOk, moxStatusBadRange, moxStatusNullPtr, moxStatusBadSize or moxStatusBadStep
 */
MOX_API MoxStatus moxiGammaFwd_32f_C3R(const Mox32f* src, int32_t srcStep, Mox32f* dst, int32_t dstStep,
                                       MoxiSize roiSize, Mox32f vMin, Mox32f vMax);

/**
 * Gamma-corrects 32f interleaved pixels of three channels, in place.
 *
 * @param srcDst     the pixels, read and rewritten
 * @param srcDstStep distance between rows in bytes
 * @param roiSize    width and height in pixels
 * @param vMin       lower limit of the range
 * @param vMax       upper limit of the range
 * @return moxStatusOk, moxStatusBadRange, moxStatusNullPtr, moxStatusBadSize or moxStatusBadStep
 */
MOX_API MoxStatus moxiGammaFwd_32f_C3IR(Mox32f* srcDst, int32_t srcDstStep, MoxiSize roiSize, Mox32f vMin, Mox32f vMax);
/** Gamma-corrects 32f interleaved pixels of three channels and alpha. @copydetails moxiGammaFwd_32f_C3R */
MOX_API MoxStatus moxiGammaFwd_32f_AC4R(const Mox32f* src, int32_t srcStep, Mox32f* dst, int32_t dstStep,
                                        MoxiSize roiSize, Mox32f vMin, Mox32f vMax);

/**
 * Gamma-corrects 32f interleaved pixels of three channels and alpha, in place. t is computed and compared in double
 * precision, and rounded to single for the power. @copydetails moxiGammaFwd_32f_C3IR
 */
MOX_API MoxStatus moxiGammaFwd_32f_AC4IR(Mox32f* srcDst, int32_t srcDstStep, MoxiSize roiSize, Mox32f vMin,
                                         Mox32f vMax);

/**
 * Gamma-corrects 32f three planes.
 *
 * @param srcPlanes source planes
 * @param srcStep   distance between source rows in bytes, of each plane
 * @param dstPlanes destination planes
 * @param dstStep   distance between destination rows in bytes, of each plane
 * @param roiSize   width and height in pixels
 * @param vMin      lower limit of the range
 * @param vMax      upper limit of the range
 * @return moxStatusOk, moxStatusBadRange, moxStatusNullPtr, moxStatusBadSize or moxStatusBadStep
 */
MOX_API MoxStatus moxiGammaFwd_32f_P3R(const Mox32f* const srcPlanes[3], int32_t srcStep, Mox32f* const dstPlanes[3],
                                       int32_t dstStep, MoxiSize roiSize, Mox32f vMin, Mox32f vMax);

/**
 * Gamma-corrects 32f three planes, in place.
 *
 * @param srcDstPlanes the planes, read and rewritten
 * @param srcDstStep   distance between rows in bytes, of each plane
 * @param roiSize      width and height in pixels
 * @param vMin         lower limit of the range
 * @param vMax         upper limit of the range
 * @return moxStatusOk, moxStatusBadRange, moxStatusNullPtr, moxStatusBadSize or moxStatusBadStep
 */
MOX_API MoxStatus moxiGammaFwd_32f_IP3R(Mox32f* const srcDstPlanes[3], int32_t srcDstStep, MoxiSize roiSize,
                                        Mox32f vMin, Mox32f vMax);
/** Linearizes 8u interleaved pixels of three channels. @copydetails moxiGammaFwd_8u_C3R */
MOX_API MoxStatus moxiGammaInv_8u_C3R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize);
/** Linearizes 8u interleaved pixels of three channels, in place. @copydetails moxiGammaFwd_8u_C3IR */
MOX_API MoxStatus moxiGammaInv_8u_C3IR(Mox8u* srcDst, int32_t srcDstStep, MoxiSize roiSize);
/** Linearizes 8u interleaved pixels of three channels and alpha. @copydetails moxiGammaFwd_8u_C3R */
MOX_API MoxStatus moxiGammaInv_8u_AC4R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                       MoxiSize roiSize);
/** Linearizes 8u interleaved pixels of three channels and alpha, in place. @copydetails moxiGammaFwd_8u_C3IR */
MOX_API MoxStatus moxiGammaInv_8u_AC4IR(Mox8u* srcDst, int32_t srcDstStep, MoxiSize roiSize);
/** Linearizes 8u three planes. @copydetails moxiGammaFwd_8u_P3R */
MOX_API MoxStatus moxiGammaInv_8u_P3R(const Mox8u* const srcPlanes[3], int32_t srcStep, Mox8u* const dstPlanes[3],
                                      int32_t dstStep, MoxiSize roiSize);
/** Linearizes 8u three planes, in place. @copydetails moxiGammaFwd_8u_IP3R */
MOX_API MoxStatus moxiGammaInv_8u_IP3R(Mox8u* const srcDstPlanes[3], int32_t srcDstStep, MoxiSize roiSize);
/** Linearizes 16u interleaved pixels of three channels. @copydetails moxiGammaFwd_8u_C3R */
MOX_API MoxStatus moxiGammaInv_16u_C3R(const Mox16u* src, int32_t srcStep, Mox16u* dst, int32_t dstStep,
                                       MoxiSize roiSize);
/** Linearizes 16u interleaved pixels of three channels, in place. @copydetails moxiGammaFwd_8u_C3IR */
MOX_API MoxStatus moxiGammaInv_16u_C3IR(Mox16u* srcDst, int32_t srcDstStep, MoxiSize roiSize);
/** Linearizes 16u interleaved pixels of three channels and alpha. @copydetails moxiGammaFwd_8u_C3R */
MOX_API MoxStatus moxiGammaInv_16u_AC4R(const Mox16u* src, int32_t srcStep, Mox16u* dst, int32_t dstStep,
                                        MoxiSize roiSize);
/** Linearizes 16u interleaved pixels of three channels and alpha, in place. @copydetails moxiGammaFwd_8u_C3IR */
MOX_API MoxStatus moxiGammaInv_16u_AC4IR(Mox16u* srcDst, int32_t srcDstStep, MoxiSize roiSize);
/** Linearizes 16u three planes. @copydetails moxiGammaFwd_8u_P3R */
MOX_API MoxStatus moxiGammaInv_16u_P3R(const Mox16u* const srcPlanes[3], int32_t srcStep, Mox16u* const dstPlanes[3],
                                       int32_t dstStep, MoxiSize roiSize);
/** Linearizes 16u three planes, in place. @copydetails moxiGammaFwd_8u_IP3R */
MOX_API MoxStatus moxiGammaInv_16u_IP3R(Mox16u* const srcDstPlanes[3], int32_t srcDstStep, MoxiSize roiSize);
/** Linearizes 32f interleaved pixels of three channels. @copydetails moxiGammaFwd_32f_C3R */
MOX_API MoxStatus moxiGammaInv_32f_C3R(const Mox32f* src, int32_t srcStep, Mox32f* dst, int32_t dstStep,
                                       MoxiSize roiSize, Mox32f vMin, Mox32f vMax);
/** Linearizes 32f interleaved pixels of three channels, in place. @copydetails moxiGammaFwd_32f_C3IR */
MOX_API MoxStatus moxiGammaInv_32f_C3IR(Mox32f* srcDst, int32_t srcDstStep, MoxiSize roiSize, Mox32f vMin, Mox32f vMax);

/**
 * Linearizes 32f interleaved pixels of three channels and alpha. t is computed and compared in double precision, and
 * rounded to single for the power. @copydetails moxiGammaFwd_32f_C3R
 */
MOX_API MoxStatus moxiGammaInv_32f_AC4R(const Mox32f* src, int32_t srcStep, Mox32f* dst, int32_t dstStep,
                                        MoxiSize roiSize, Mox32f vMin, Mox32f vMax);
/** Linearizes 32f interleaved pixels of three channels and alpha, in place. @copydetails moxiGammaFwd_32f_AC4IR */
MOX_API MoxStatus moxiGammaInv_32f_AC4IR(Mox32f* srcDst, int32_t srcDstStep, MoxiSize roiSize, Mox32f vMin,
                                         Mox32f vMax);

/**
 * Linearizes 32f three planes. t is computed and compared in double precision, and rounded to single for the power.
 * @copydetails moxiGammaFwd_32f_P3R
 */
MOX_API MoxStatus moxiGammaInv_32f_P3R(const Mox32f* const srcPlanes[3], int32_t srcStep, Mox32f* const dstPlanes[3],
                                       int32_t dstStep, MoxiSize roiSize, Mox32f vMin, Mox32f vMax);

/**
 * Linearizes 32f three planes, in place. t is computed and compared in double precision, and rounded to single for the
 * power. @copydetails moxiGammaFwd_32f_IP3R
 */
MOX_API MoxStatus moxiGammaInv_32f_IP3R(Mox32f* const srcDstPlanes[3], int32_t srcDstStep, MoxiSize roiSize,
                                        Mox32f vMin, Mox32f vMax);

MOX_EXTERN_C_END

/** @} */

#endif
