/* SPDX-License-Identifier: BSD-2-Clause */
/**
 * @defgroup yuv RGB and YUV
 * @ingroup models
 * @brief Full-range YUV, 8 bits, at full resolution.
 *
 *     Y = 0.299 R + 0.587 G + 0.114 B                  R = Y                     + 1.140 (V - 128)
 *     U = 128 + 0.492 (B - Y)                          G = Y - 0.394 (U - 128) - 0.581 (V - 128)
 *     V = 128 + 0.877 (R - Y)                          B = Y + 2.032 (U - 128)
 *
 * with the luma weights of ITU-R BT.601. Results are limited to 0 to 255; any samples are accepted.
 *
 * U and V are the colour differences of analogue YUV. JPEG's YCbCr (JFIF) has the same luma and range, but other
 * chroma, 0.564 (B - Y) and 0.713 (R - Y): a JPEG frame that goes through the functions of YUV comes out wrong by up to
 * 34. No function of this library reads or writes JPEG's YCbCr.
 *
 * The fixed-point forms of these formulas differ by where they round, by at most one or two steps. Which column of a
 * row follows which form depends on the width alone, and is told with each function.
 *
 * All functions here: no pointer may be null (moxStatusNullPtr); width and height must be at least 1
 * (moxStatusBadSize); then no pointer in a plane array may be null. Steps are not tested: zero and negative ones will
 * do. All planes of an array share one step.
 *
 * @{
 */
#ifndef MOXCC_YUV_H
#define MOXCC_YUV_H

#include "moxcc/types.h"

MOX_EXTERN_C_BEGIN

/**
 * @brief Converts interleaved RGB to interleaved YUV. Columns below the width rounded down to a multiple of 16:
 * truncated terms; white gives Y 254. The columns beyond: Y is truncated, the differences are rounded.
 *
 * @param src     interleaved source pixels
 * @param srcStep distance between source rows in bytes
 * @param dst     interleaved destination pixels
 * @param dstStep distance between destination rows in bytes
 * @param roiSize width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr or moxStatusBadSize
 */
MOX_API MoxStatus moxiRGBToYUV_8u_C3R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize);

/**
 * Converts RGB pixels of four bytes to YUV pixels of four bytes. Y and the differences are rounded, in all columns. The
 * source's fourth byte is not read, that of the destination keeps its value. @copydetails moxiRGBToYUV_8u_C3R
 */
MOX_API MoxStatus moxiRGBToYUV_8u_AC4R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                       MoxiSize roiSize);

/**
 * Converts interleaved RGB to planes of Y, U and V.
 *
 * Columns below the width rounded down to a multiple of 8: truncated terms; white gives Y 254. The columns beyond: Y is
 * truncated, the differences are rounded.
 *
 * @param src       interleaved source pixels
 * @param srcStep   distance between source rows in bytes
 * @param dstPlanes pointers to the destination planes, in the order told above
 * @param dstStep   distance between rows in bytes, the same in all destination planes
 * @param roiSize   width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr or moxStatusBadSize
 */
MOX_API MoxStatus moxiRGBToYUV_8u_C3P3R(const Mox8u* src, int32_t srcStep, Mox8u* const* dstPlanes, int32_t dstStep,
                                        MoxiSize roiSize);

/**
 * Converts RGB and alpha, interleaved, to planes of Y, U, V and alpha.
 *
 * Columns below the width rounded down to a multiple of 8: through twice the luma, with one fractional bit. The columns
 * beyond: Y and the differences are rounded. Alpha is copied.
 *
 * @param src       interleaved source pixels
 * @param srcStep   distance between source rows in bytes
 * @param dstPlanes pointers to the destination planes, Y, U, V and alpha; all four must be valid
 * @param dstStep   distance between rows in bytes, the same in all destination planes
 * @param roiSize   width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr or moxStatusBadSize
 */
MOX_API MoxStatus moxiRGBToYUV_8u_AC4P4R(const Mox8u* src, int32_t srcStep, Mox8u* const* dstPlanes, int32_t dstStep,
                                         MoxiSize roiSize);

/**
 * @brief Converts planes of R, G and B to planes of Y, U and V. Columns below the width rounded down to a multiple of
 * 16: truncated terms; white gives Y 254. The columns beyond: weights of 15 or 16 fractional bits, truncated.
 *
 * @param srcPlanes pointers to the source planes, in the order told above
 * @param srcStep   distance between rows in bytes, the same in all source planes
 * @param dstPlanes pointers to the destination planes, in the order told above
 * @param dstStep   distance between rows in bytes, the same in all destination planes
 * @param roiSize   width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr or moxStatusBadSize
 */
MOX_API MoxStatus moxiRGBToYUV_8u_P3R(const Mox8u* const* srcPlanes, int32_t srcStep, Mox8u* const* dstPlanes,
                                      int32_t dstStep, MoxiSize roiSize);

/**
 * Converts interleaved YUV to interleaved RGB. Columns below the width rounded down to a multiple of 8: terms truncated
 * to whole numbers. The columns beyond: one sum of 16 fractional bits; R and B are rounded, G is truncated.
 * @copydetails moxiRGBToYUV_8u_C3R
 */
MOX_API MoxStatus moxiYUVToRGB_8u_C3R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize);

/**
 * Converts YUV pixels of four bytes to RGB pixels of four bytes. One sum of 16 fractional bits in all columns; R and B
 * are rounded, G is truncated. The fourth byte of the destination keeps its value. @copydetails moxiRGBToYUV_8u_C3R
 */
MOX_API MoxStatus moxiYUVToRGB_8u_AC4R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                       MoxiSize roiSize);

/**
 * Converts interleaved YUV to interleaved RGB and a fourth byte.
 *
 * Columns below the width rounded down to a multiple of 8: terms of 3 fractional bits, rounded. The columns beyond: one
 * sum of 16 fractional bits, rounded.
 *
 * @param src     interleaved source pixels
 * @param srcStep distance between source rows in bytes
 * @param dst     interleaved destination pixels
 * @param dstStep distance between destination rows in bytes
 * @param roiSize width and height in pixels
 * @param aval    value of the fourth byte of each pixel written
 * @return moxStatusOk, moxStatusNullPtr or moxStatusBadSize
 */
MOX_API MoxStatus moxiYUVToRGB_8u_C3C4R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                        MoxiSize roiSize, Mox8u aval);

/**
 * Converts planes of Y, U and V to interleaved RGB.
 *
 * Columns below the width rounded down to a multiple of 16: terms of one fractional bit, truncated. The columns beyond:
 * one sum of 16 fractional bits, truncated.
 *
 * @param srcPlanes pointers to the source planes, in the order told above
 * @param srcStep   distance between rows in bytes, the same in all source planes
 * @param dst       interleaved destination pixels
 * @param dstStep   distance between destination rows in bytes
 * @param roiSize   width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr or moxStatusBadSize
 */
MOX_API MoxStatus moxiYUVToRGB_8u_P3C3R(const Mox8u* const* srcPlanes, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                        MoxiSize roiSize);

/**
 * Converts planes of Y, U and V to planes of R, G and B. One sum of 16 fractional bits, truncated, in all columns.
 * @copydetails moxiRGBToYUV_8u_P3R
 */
MOX_API MoxStatus moxiYUVToRGB_8u_P3R(const Mox8u* const* srcPlanes, int32_t srcStep, Mox8u* const* dstPlanes,
                                      int32_t dstStep, MoxiSize roiSize);

MOX_EXTERN_C_END

/** @} */

#endif
