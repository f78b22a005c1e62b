/* SPDX-License-Identifier: BSD-2-Clause */
/**
 * @defgroup yuv_decode Subsampled YUV to RGB
 * @ingroup video
 * @brief Subsampled full-range YUV to RGB and BGR, 8 bits.
 *
 *     R = Y                     + 1.140 (V - 128)
 *     G = Y - 0.394 (U - 128) - 0.581 (V - 128)
 *     B = Y + 2.032 (U - 128)
 *
 * as in yuv.h, which says why these are not JPEG's YCbCr; results are limited to 0 to 255. The fixed-point forms of
 * these formulas differ by where they round. Which column follows which form depends on the size alone, and is told
 * with each function.
 *
 * Each pixel takes the chroma of the cell that it lies in, unfiltered, as if it were sited in the cell's middle
 * (@ref siting). Of 4:2:0 the whole cells of 2 by 2 pixels are decoded: the last column of an odd width and the last
 * row of an odd height are neither read nor written, and the status is moxStatusOddSize. All other functions return
 * moxStatusOk at any size that they accept.
 *
 * Packed 4:2:2 rows hold two bytes a pixel. The last pixel of an odd width takes the chroma sample that it lacks from
 * the pair before; in a row of one pixel the one chroma sample stands for both.
 *
 * All functions here: no pointer may be null (moxStatusNullPtr); width and height must be at least 1
 * (moxStatusBadSize) where nothing else is said; then no pointer in a plane array may be null, first those of the
 * source. Steps are not tested: zero and negative ones will do; arrays of steps must not be null.
 *
 * @{
 */
#ifndef MOXCC_YUV_DECODE_H
#define MOXCC_YUV_DECODE_H

#include "moxcc/types.h"

MOX_EXTERN_C_BEGIN

/**
 * Decodes packed 4:2:2, Y0, U, Y1, V, to interleaved R, G, B.
 *
 * Columns below the width rounded down to a multiple of 16: terms of one fractional bit, truncated. The columns beyond:
 * one sum of 16 fractional bits, rounded. The last pixel of an odd width is written by the second form, without
 * rounding in a row of one pixel.
 *
 * @param src     packed source pixel pairs, two bytes a pixel
 * @param srcStep distance between source rows in bytes
 * @param dst     interleaved destination pixels
 * @param dstStep distance between destination rows in bytes
 * @param roiSize width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr or moxStatusBadSize; of 4:2:0 also moxStatusOddSize
 */
MOX_API MoxStatus moxiYUV422ToRGB_8u_C2C3R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                           MoxiSize roiSize);

/**
 * @brief Decodes 4:2:2 planes of Y, U, V to interleaved R, G, B. Columns below the width rounded down to a multiple of
 * 16: terms of one fractional bit, truncated. The columns beyond: one sum of 16 fractional bits, truncated. The last
 * column of an odd width is written, from its own chroma sample.
 *
 * @param srcPlanes pointers to the source planes, in the order told above
 * @param srcSteps  distance between rows in bytes for each source plane
 * @param dst       interleaved destination pixels
 * @param dstStep   distance between destination rows in bytes
 * @param roiSize   width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr or moxStatusBadSize; of 4:2:0 also moxStatusOddSize
 */
MOX_API MoxStatus moxiYUV422ToRGB_8u_P3C3R(const Mox8u* const* srcPlanes, const int32_t* srcSteps, Mox8u* dst,
                                           int32_t dstStep, MoxiSize roiSize);

/**
 * @brief Decodes 4:2:2 planes of Y, U, V without gaps to interleaved R, G, B. As moxiYUV422ToRGB_8u_P3C3R. Chroma rows
 * of (width + 1) / 2 samples. A picture of 256 pixels or more and of even width counts as one row, so that the limit
 * lies at the end of the picture, not of each row.
 *
 * @param srcPlanes pointers to the source planes, in the order told above
 * @param dst       interleaved destination pixels
 * @param roiSize   width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr or moxStatusBadSize; of 4:2:0 also moxStatusOddSize
 */
MOX_API MoxStatus moxiYUV422ToRGB_8u_P3C3(const Mox8u* const* srcPlanes, Mox8u* dst, MoxiSize roiSize);

/**
 * Decodes 4:2:2 planes of Y, U, V to interleaved R, G, B and a fourth byte of 0. Columns below the width rounded down
 * to a multiple of 4: terms of 4 fractional bits, rounded. The columns beyond: one sum of 16 fractional bits,
 * truncated. The last column of an odd width is written, from its own chroma sample.
 * @copydetails moxiYUV422ToRGB_8u_P3C3R
 */
MOX_API MoxStatus moxiYUV422ToRGB_8u_P3AC4R(const Mox8u* const* srcPlanes, const int32_t* srcSteps, Mox8u* dst,
                                            int32_t dstStep, MoxiSize roiSize);

/**
 * @brief Decodes 4:2:2 planes of Y, U, V to planes of R, G, B. Columns below the width rounded down to a multiple of
 * 16: terms of one fractional bit, truncated. The columns beyond: one sum of 16 fractional bits, truncated. The last
 * column of an odd width is written, from its own chroma sample, with weights of 13 fractional bits.
 *
 * @param srcPlanes pointers to the source planes, in the order told above
 * @param srcSteps  distance between rows in bytes for each source plane
 * @param dstPlanes pointers to the destination planes, in the order told above
 * @param dstStep   distance between rows in bytes, the same in all destination planes
 * @param roiSize   width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr or moxStatusBadSize; of 4:2:0 also moxStatusOddSize
 */
MOX_API MoxStatus moxiYUV422ToRGB_8u_P3R(const Mox8u* const* srcPlanes, const int32_t* srcSteps,
                                         Mox8u* const* dstPlanes, int32_t dstStep, MoxiSize roiSize);

/**
 * @brief Decodes 4:2:2 planes of Y, U, V without gaps to planes of R, G, B. As moxiYUV422ToRGB_8u_P3R. Chroma rows of
 * (width + 1) / 2 samples. A picture of 256 pixels or more and of even width counts as one row, so that the limit lies
 * at the end of the picture, not of each row.
 *
 * @param srcPlanes pointers to the source planes, in the order told above
 * @param dstPlanes pointers to the destination planes, in the order told above
 * @param roiSize   width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr or moxStatusBadSize; of 4:2:0 also moxStatusOddSize
 */
MOX_API MoxStatus moxiYUV422ToRGB_8u_P3(const Mox8u* const* srcPlanes, Mox8u* const* dstPlanes, MoxiSize roiSize);

/**
 * Decodes 4:2:0 planes of Y, U, V to interleaved R, G, B. Terms of one fractional bit, truncated, in all columns.
 * @copydetails moxiYUV422ToRGB_8u_P3C3R
 */
MOX_API MoxStatus moxiYUV420ToRGB_8u_P3C3R(const Mox8u* const* srcPlanes, const int32_t* srcSteps, Mox8u* dst,
                                           int32_t dstStep, MoxiSize roiSize);

/**
 * Decodes 4:2:0 planes of Y, U, V without gaps to interleaved R, G, B. As moxiYUV420ToRGB_8u_P3C3R; chroma rows have
 * width / 2 samples. @copydetails moxiYUV422ToRGB_8u_P3C3
 */
MOX_API MoxStatus moxiYUV420ToRGB_8u_P3C3(const Mox8u* const* srcPlanes, Mox8u* dst, MoxiSize roiSize);

/**
 * Decodes 4:2:0 planes of Y, U, V to interleaved R, G, B and a fourth byte of 0. Columns below the width rounded down
 * to a multiple of 4: terms of 4 fractional bits, rounded. The columns beyond: one sum of 16 fractional bits, rounded.
 * @copydetails moxiYUV422ToRGB_8u_P3C3R
 */
MOX_API MoxStatus moxiYUV420ToRGB_8u_P3AC4R(const Mox8u* const* srcPlanes, const int32_t* srcSteps, Mox8u* dst,
                                            int32_t dstStep, MoxiSize roiSize);

/**
 * Decodes 4:2:0 planes of Y, U, V to planes of R, G, B. One sum of 16 fractional bits, truncated, in all columns.
 * @copydetails moxiYUV422ToRGB_8u_P3R
 */
MOX_API MoxStatus moxiYUV420ToRGB_8u_P3R(const Mox8u* const* srcPlanes, const int32_t* srcSteps,
                                         Mox8u* const* dstPlanes, int32_t dstStep, MoxiSize roiSize);

/**
 * Decodes 4:2:0 planes of Y, U, V without gaps to planes of R, G, B. As moxiYUV420ToRGB_8u_P3R; chroma rows have width
 * / 2 samples. @copydetails moxiYUV422ToRGB_8u_P3
 */
MOX_API MoxStatus moxiYUV420ToRGB_8u_P3(const Mox8u* const* srcPlanes, Mox8u* const* dstPlanes, MoxiSize roiSize);

/**
 * Decodes 4:2:0 planes of Y, U, V to interleaved B, G, R. Terms of one fractional bit, truncated, in all columns. Width
 * and height must be at least 2. @copydetails moxiYUV422ToRGB_8u_P3C3R
 */
MOX_API MoxStatus moxiYUV420ToBGR_8u_P3C3R(const Mox8u* const* srcPlanes, const int32_t* srcSteps, Mox8u* dst,
                                           int32_t dstStep, MoxiSize roiSize);

MOX_EXTERN_C_END

/** @} */

#endif
