/* SPDX-License-Identifier: BSD-2-Clause */
/**
 * @defgroup twist Colour twist
 * @ingroup tone
 * @brief Every output channel is a weighted sum of the input channels, by a matrix that the caller gives.
 *
 * The matrix of the three-channel forms has 3 rows of 4 values: row i belongs to output channel i, its first three
 * values weigh input channels 0 to 2, the fourth is an offset in units of the sample. Each result is (offset + c0 * w0)
 * + (c2 * w2 + c1 * w1) in single precision. ColorTwist_32f stores it as it is, in the caller's rounding mode;
 * ColorTwist32f forms have integer samples, limit the result to the sample's range (a NaN becomes the upper limit) and
 * round it to nearest, ties to even, whatever the caller's rounding mode, which is restored.
 *
 * All functions here test, in this order: image pointers, the matrix, and pointers inside plane arrays not null
 * (moxStatusNullPtr); width and height at least 1 (moxStatusBadSize); steps at least 1 (moxStatusBadStep). Steps are
 * bytes. AC4 forms leave the fourth sample of a destination pixel as it is; it has no weight.
 *
 * @{
 */
#ifndef MOXCC_TWIST_H
#define MOXCC_TWIST_H

#include "moxcc/types.h"

MOX_EXTERN_C_BEGIN

/**
 * Twists the colours of 8u pixels of three channels.
 *
 * @param src     source pixels
 * @param srcStep distance between source rows in bytes
 * @param dst     destination pixels
 * @param dstStep distance between destination rows in bytes
 * @param roiSize width and height in pixels
 * @param twist   the matrix, 12 values
 * @return moxStatusOk, moxStatusNullPtr, moxStatusBadSize or moxStatusBadStep
 */
MOX_API MoxStatus moxiColorTwist32f_8u_C3R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                           MoxiSize roiSize, const Mox32f* twist);

/**
 * Twists the colours of 8u pixels of three channels, in place.
 *
 * @param srcDst     pixels, converted in place
 * @param srcDstStep distance between rows in bytes
 * @param roiSize    width and height in pixels
 * @param twist      the matrix, 12 values
 * @return moxStatusOk, moxStatusNullPtr, moxStatusBadSize or moxStatusBadStep
 */
MOX_API MoxStatus moxiColorTwist32f_8u_C3IR(Mox8u* srcDst, int32_t srcDstStep, MoxiSize roiSize, const Mox32f* twist);
/** Twists the colours of 8u pixels of three channels and alpha. @copydetails moxiColorTwist32f_8u_C3R */
MOX_API MoxStatus moxiColorTwist32f_8u_AC4R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                            MoxiSize roiSize, const Mox32f* twist);
/** Twists the colours of 8u pixels of three channels and alpha, in place. @copydetails moxiColorTwist32f_8u_C3IR */
MOX_API MoxStatus moxiColorTwist32f_8u_AC4IR(Mox8u* srcDst, int32_t srcDstStep, MoxiSize roiSize, const Mox32f* twist);

/**
 * Twists the colours of three 8u planes.
 *
 * @param srcPlanes three source planes
 * @param srcStep   distance between the rows of each source plane in bytes
 * @param dstPlanes three destination planes
 * @param dstStep   distance between the rows of each destination plane in bytes
 * @param roiSize   width and height in pixels
 * @param twist     the matrix, 12 values
 * @return moxStatusOk, moxStatusNullPtr, moxStatusBadSize or moxStatusBadStep
 */
MOX_API MoxStatus moxiColorTwist32f_8u_P3R(const Mox8u* const* srcPlanes, int32_t srcStep, Mox8u* const* dstPlanes,
                                           int32_t dstStep, MoxiSize roiSize, const Mox32f* twist);

/**
 * Twists the colours of three 8u planes, in place.
 *
 * @param srcDstPlanes three planes, converted in place
 * @param srcDstStep   distance between the rows of each plane in bytes
 * @param roiSize      width and height in pixels
 * @param twist        the matrix, 12 values
 * @return moxStatusOk, moxStatusNullPtr, moxStatusBadSize or moxStatusBadStep
 */
MOX_API MoxStatus moxiColorTwist32f_8u_IP3R(Mox8u* const* srcDstPlanes, int32_t srcDstStep, MoxiSize roiSize,
                                            const Mox32f* twist);
/** Twists the colours of 16u pixels of three channels. @copydetails moxiColorTwist32f_8u_C3R */
MOX_API MoxStatus moxiColorTwist32f_16u_C3R(const Mox16u* src, int32_t srcStep, Mox16u* dst, int32_t dstStep,
                                            MoxiSize roiSize, const Mox32f* twist);
/** Twists the colours of 16u pixels of three channels, in place. @copydetails moxiColorTwist32f_8u_C3IR */
MOX_API MoxStatus moxiColorTwist32f_16u_C3IR(Mox16u* srcDst, int32_t srcDstStep, MoxiSize roiSize, const Mox32f* twist);
/** Twists the colours of 16u pixels of three channels and alpha. @copydetails moxiColorTwist32f_8u_C3R */
MOX_API MoxStatus moxiColorTwist32f_16u_AC4R(const Mox16u* src, int32_t srcStep, Mox16u* dst, int32_t dstStep,
                                             MoxiSize roiSize, const Mox32f* twist);
/** Twists the colours of 16u pixels of three channels and alpha, in place. @copydetails moxiColorTwist32f_8u_C3IR */
MOX_API MoxStatus moxiColorTwist32f_16u_AC4IR(Mox16u* srcDst, int32_t srcDstStep, MoxiSize roiSize,
                                              const Mox32f* twist);
/** Twists the colours of three 16u planes. @copydetails moxiColorTwist32f_8u_P3R */
MOX_API MoxStatus moxiColorTwist32f_16u_P3R(const Mox16u* const* srcPlanes, int32_t srcStep, Mox16u* const* dstPlanes,
                                            int32_t dstStep, MoxiSize roiSize, const Mox32f* twist);
/** Twists the colours of three 16u planes, in place. @copydetails moxiColorTwist32f_8u_IP3R */
MOX_API MoxStatus moxiColorTwist32f_16u_IP3R(Mox16u* const* srcDstPlanes, int32_t srcDstStep, MoxiSize roiSize,
                                             const Mox32f* twist);
/** Twists the colours of 16s pixels of three channels. @copydetails moxiColorTwist32f_8u_C3R */
MOX_API MoxStatus moxiColorTwist32f_16s_C3R(const Mox16s* src, int32_t srcStep, Mox16s* dst, int32_t dstStep,
                                            MoxiSize roiSize, const Mox32f* twist);
/** Twists the colours of 16s pixels of three channels, in place. @copydetails moxiColorTwist32f_8u_C3IR */
MOX_API MoxStatus moxiColorTwist32f_16s_C3IR(Mox16s* srcDst, int32_t srcDstStep, MoxiSize roiSize, const Mox32f* twist);
/** Twists the colours of 16s pixels of three channels and alpha. @copydetails moxiColorTwist32f_8u_C3R */
MOX_API MoxStatus moxiColorTwist32f_16s_AC4R(const Mox16s* src, int32_t srcStep, Mox16s* dst, int32_t dstStep,
                                             MoxiSize roiSize, const Mox32f* twist);
/** Twists the colours of 16s pixels of three channels and alpha, in place. @copydetails moxiColorTwist32f_8u_C3IR */
MOX_API MoxStatus moxiColorTwist32f_16s_AC4IR(Mox16s* srcDst, int32_t srcDstStep, MoxiSize roiSize,
                                              const Mox32f* twist);
/** Twists the colours of three 16s planes. @copydetails moxiColorTwist32f_8u_P3R */
MOX_API MoxStatus moxiColorTwist32f_16s_P3R(const Mox16s* const* srcPlanes, int32_t srcStep, Mox16s* const* dstPlanes,
                                            int32_t dstStep, MoxiSize roiSize, const Mox32f* twist);
/** Twists the colours of three 16s planes, in place. @copydetails moxiColorTwist32f_8u_IP3R */
MOX_API MoxStatus moxiColorTwist32f_16s_IP3R(Mox16s* const* srcDstPlanes, int32_t srcDstStep, MoxiSize roiSize,
                                             const Mox32f* twist);
/** Twists the colours of 32f pixels of three channels. @copydetails moxiColorTwist32f_8u_C3R */
MOX_API MoxStatus moxiColorTwist_32f_C3R(const Mox32f* src, int32_t srcStep, Mox32f* dst, int32_t dstStep,
                                         MoxiSize roiSize, const Mox32f* twist);
/** Twists the colours of 32f pixels of three channels, in place. @copydetails moxiColorTwist32f_8u_C3IR */
MOX_API MoxStatus moxiColorTwist_32f_C3IR(Mox32f* srcDst, int32_t srcDstStep, MoxiSize roiSize, const Mox32f* twist);
/** Twists the colours of 32f pixels of three channels and alpha. @copydetails moxiColorTwist32f_8u_C3R */
MOX_API MoxStatus moxiColorTwist_32f_AC4R(const Mox32f* src, int32_t srcStep, Mox32f* dst, int32_t dstStep,
                                          MoxiSize roiSize, const Mox32f* twist);
/** Twists the colours of 32f pixels of three channels and alpha, in place. @copydetails moxiColorTwist32f_8u_C3IR */
MOX_API MoxStatus moxiColorTwist_32f_AC4IR(Mox32f* srcDst, int32_t srcDstStep, MoxiSize roiSize, const Mox32f* twist);
/** Twists the colours of three 32f planes. @copydetails moxiColorTwist32f_8u_P3R */
MOX_API MoxStatus moxiColorTwist_32f_P3R(const Mox32f* const* srcPlanes, int32_t srcStep, Mox32f* const* dstPlanes,
                                         int32_t dstStep, MoxiSize roiSize, const Mox32f* twist);
/** Twists the colours of three 32f planes, in place. @copydetails moxiColorTwist32f_8u_IP3R */
MOX_API MoxStatus moxiColorTwist_32f_IP3R(Mox32f* const* srcDstPlanes, int32_t srcDstStep, MoxiSize roiSize,
                                          const Mox32f* twist);

/**
 * Twists the colours of 32f pixels of four channels.
 *
 * The matrix has 4 rows of 4 weights and no offset; each result is ((c0 * w0 + c1 * w1) + c2 * w2) + c3 * w3.
 *
 * @param src     source pixels
 * @param srcStep distance between source rows in bytes
 * @param dst     destination pixels
 * @param dstStep distance between destination rows in bytes
 * @param roiSize width and height in pixels
 * @param twist   the matrix, 16 values
 * @return moxStatusOk, moxStatusNullPtr, moxStatusBadSize or moxStatusBadStep
 */
MOX_API MoxStatus moxiColorTwist_32f_C4R(const Mox32f* src, int32_t srcStep, Mox32f* dst, int32_t dstStep,
                                         MoxiSize roiSize, const Mox32f* twist);

MOX_EXTERN_C_END

/** @} */

#endif
