/* SPDX-License-Identifier: BSD-2-Clause */
/**
 * @defgroup tonemap Tone mapping
 * @ingroup tone
 * @brief One-channel float images of any range to 8 bits by one global gain.
 *
 * The image is measured first, then each sample is multiplied by one gain: there is no local adaptation, and no gamma
 * correction. The two functions take the same arguments, test them in the same order and answer alike: they differ in
 * the measure, and in what becomes of products outside 0 to 255. Arithmetic is in single precision in the caller's
 * rounding mode; conversion to integers truncates in any mode. The mean is summed with a total of extended precision.
 *
 * @{
 */
#ifndef MOXCC_TONEMAP_H
#define MOXCC_TONEMAP_H

#include "moxcc/types.h"

MOX_EXTERN_C_BEGIN

/**
 * @brief Maps a float image to 8 bits so that its maximum becomes 255. Each result is the low 8 bits of trunc(sample *
 * (255 / maximum)), computed in single precision: a negative product wraps (-1.5 gives 255), and a product beyond 32
 * bits or a NaN gives 0. A maximum of at most the smallest normal float gives an image of zeros.
 *
 * @param src     one-channel source, samples of any range
 * @param srcStep distance between source rows in bytes; the start of row y is src + ((srcStep * y) & ~3), so a step
 *                should be a multiple of 4
 * @param dst     one-channel destination; must not overlap the source
 * @param dstStep distance between destination rows in bytes
 * @param roiSize width and height in pixels, each at least 1
 * @return moxStatusOk; moxStatusNoOperation if the maximum or mean, as measured, is below 0 (nothing is written);
 *         moxStatusNullPtr if src or dst is null; moxStatusBadSize if the width or the height is below 1
 */
MOX_API MoxStatus moxiToneMapLinear_32f8u_C1R(const Mox32f* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                              MoxiSize roiSize);

/**
 * Maps a float image to 8 bits so that twice its mean becomes 255. Each result is trunc(sample * scale) saturated to 0
 * to 255, with scale = 255 / (2 * mean) rounded to single precision; a product beyond 32 bits or a NaN gives 0. The
 * mean is summed in a fixed order that depends on each row's address modulo 16. Twice the mean of at most the smallest
 * normal float gives an image of zeros. @copydetails moxiToneMapLinear_32f8u_C1R
 */
MOX_API MoxStatus moxiToneMapMean_32f8u_C1R(const Mox32f* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                            MoxiSize roiSize);

MOX_EXTERN_C_END

/** @} */

#endif
