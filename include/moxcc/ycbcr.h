/* SPDX-License-Identifier: BSD-2-Clause */
/**
 * @defgroup ycbcr RGB and YCbCr
 * @ingroup models
 * @brief The studio-range YCbCr of ITU-R BT.601, 8 bits, at full resolution.
 *
 *     Y  = 16  + 0.257 R + 0.504 G + 0.098 B           R = 1.164 (Y - 16)                      + 1.596 (Cr - 128)
 *     Cb = 128 - 0.148 R - 0.291 G + 0.439 B           G = 1.164 (Y - 16) - 0.392 (Cb - 128) - 0.813 (Cr - 128)
 *     Cr = 128 + 0.439 R - 0.368 G - 0.071 B           B = 1.164 (Y - 16) + 2.017 (Cb - 128)
 *
 * Y goes from 16 to 235, Cb and Cr from 16 to 240. On the way back any samples are accepted, also such as lie outside
 * the studio range; results are limited to 0 to 255.
 *
 * The fixed-point forms of these formulas differ by where they round, by at most one or two steps. Which column of a
 * row follows which form depends on the width alone, and is told with each function.
 *
 * All functions here: no pointer, nor a pointer in a plane array, may be null (moxStatusNullPtr); width and height
 * must be at least 1 (moxStatusBadSize). The pointers in plane arrays are tested before the size where nothing else
 * is said. Steps are not tested: zero and negative ones will do. All planes of an array share one step.
 *
 * @{
 */
#ifndef MOXCC_YCBCR_H
#define MOXCC_YCBCR_H

#include "moxcc/types.h"

MOX_EXTERN_C_BEGIN

/**
 * @brief Converts interleaved RGB to interleaved YCbCr. Columns below the width rounded down to a multiple of 16: terms
 * rounded to 6 fractional bits. The columns beyond: one sum of 16 fractional bits, rounded.
 *
 * @param src     interleaved source pixels
 * @param srcStep distance between source rows in bytes
 * @param dst     interleaved destination pixels
 * @param dstStep distance between destination rows in bytes
 * @param roiSize width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr or moxStatusBadSize
 */
MOX_API MoxStatus moxiRGBToYCbCr_8u_C3R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                        MoxiSize roiSize);

/**
 * Converts RGB pixels of four bytes to YCbCr pixels of four bytes. Columns below the width rounded down to a multiple
 * of 16: terms rounded to 6 fractional bits, and the fourth byte of the destination is set to 0. The columns beyond:
 * one sum of 16 fractional bits, rounded, and the fourth byte keeps its value. The source's fourth byte is not read.
 * @copydetails moxiRGBToYCbCr_8u_C3R
 */
MOX_API MoxStatus moxiRGBToYCbCr_8u_AC4R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                         MoxiSize roiSize);

/**
 * @brief Converts interleaved RGB to planes of Y, Cb and Cr. Columns below the width rounded down to a multiple of 8:
 * truncated terms. The columns beyond: one sum of 16 fractional bits, rounded.
 *
 * @param src       interleaved source pixels
 * @param srcStep   distance between source rows in bytes
 * @param dstPlanes pointers to the destination planes, in the order told above
 * @param dstStep   distance between rows in bytes, the same in all destination planes
 * @param roiSize   width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr or moxStatusBadSize
 */
MOX_API MoxStatus moxiRGBToYCbCr_8u_C3P3R(const Mox8u* src, int32_t srcStep, Mox8u* const* dstPlanes, int32_t dstStep,
                                          MoxiSize roiSize);

/**
 * Converts RGB pixels of four bytes to planes of Y, Cb and Cr. Columns below the width rounded down to a multiple of 8:
 * truncated terms. The columns beyond: one sum of 16 fractional bits, rounded. Alpha is dropped.
 * @copydetails moxiRGBToYCbCr_8u_C3P3R
 */
MOX_API MoxStatus moxiRGBToYCbCr_8u_AC4P3R(const Mox8u* src, int32_t srcStep, Mox8u* const* dstPlanes, int32_t dstStep,
                                           MoxiSize roiSize);

/**
 * @brief Converts planes of R, G and B to planes of Y, Cb and Cr. Columns below the width rounded down to a multiple of
 * 8: truncated terms. The columns beyond: one sum of 16 fractional bits, rounded. The plane pointers are tested after
 * the size.
 *
 * @param srcPlanes pointers to the source planes, in the order told above
 * @param srcStep   distance between rows in bytes, the same in all source planes
 * @param dstPlanes pointers to the destination planes, in the order told above
 * @param dstStep   distance between rows in bytes, the same in all destination planes
 * @param roiSize   width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr or moxStatusBadSize
 */
MOX_API MoxStatus moxiRGBToYCbCr_8u_P3R(const Mox8u* const* srcPlanes, int32_t srcStep, Mox8u* const* dstPlanes,
                                        int32_t dstStep, MoxiSize roiSize);

/**
 * Converts interleaved YCbCr to interleaved RGB. Columns below the width rounded down to a multiple of 8: terms of 3
 * fractional bits, rounded. The columns beyond: one sum of 16 fractional bits, rounded.
 * @copydetails moxiRGBToYCbCr_8u_C3R
 */
MOX_API MoxStatus moxiYCbCrToRGB_8u_C3R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                        MoxiSize roiSize);

/**
 * Converts YCbCr pixels of four bytes to RGB pixels of four bytes. One sum of 16 fractional bits, truncated, in all
 * columns. The fourth byte of the destination keeps its value. @copydetails moxiRGBToYCbCr_8u_C3R
 */
MOX_API MoxStatus moxiYCbCrToRGB_8u_AC4R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                         MoxiSize roiSize);

/**
 * @brief Converts planes of Y, Cb and Cr to interleaved RGB. Columns below the width rounded down to a multiple of 8:
 * terms of 3 fractional bits, rounded. The columns beyond: one sum of 16 fractional bits, rounded.
 *
 * @param srcPlanes pointers to the source planes, in the order told above
 * @param srcStep   distance between rows in bytes, the same in all source planes
 * @param dst       interleaved destination pixels
 * @param dstStep   distance between destination rows in bytes
 * @param roiSize   width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr or moxStatusBadSize
 */
MOX_API MoxStatus moxiYCbCrToRGB_8u_P3C3R(const Mox8u* const* srcPlanes, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                          MoxiSize roiSize);

/**
 * @brief Converts planes of Y, Cb and Cr to interleaved RGB and a fourth byte. Columns below the width rounded down to
 * a multiple of 8: terms of 4 fractional bits, rounded. The columns beyond: one sum of 16 fractional bits, rounded. The
 * plane pointers are tested after the size.
 *
 * @param srcPlanes pointers to the source planes, in the order told above
 * @param srcStep   distance between rows in bytes, the same in all source planes
 * @param dst       interleaved destination pixels
 * @param dstStep   distance between destination rows in bytes
 * @param roiSize   width and height in pixels
 * @param aval      value of the fourth byte of each pixel written
 * @return moxStatusOk, moxStatusNullPtr or moxStatusBadSize
 */
MOX_API MoxStatus moxiYCbCrToRGB_8u_P3C4R(const Mox8u* const* srcPlanes, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                          MoxiSize roiSize, Mox8u aval);

/**
 * Converts planes of Y, Cb and Cr to planes of R, G and B. Columns below the width rounded down to a multiple of 4:
 * terms of 4 fractional bits, truncated. The columns beyond: one sum of 16 fractional bits, rounded. The plane pointers
 * are tested after the size. @copydetails moxiRGBToYCbCr_8u_P3R
 */
MOX_API MoxStatus moxiYCbCrToRGB_8u_P3R(const Mox8u* const* srcPlanes, int32_t srcStep, Mox8u* const* dstPlanes,
                                        int32_t dstStep, MoxiSize roiSize);

/**
 * Converts planes of Y, Cb and Cr to interleaved BGR. Columns below the width rounded down to a multiple of 8: terms of
 * 3 fractional bits, rounded. The columns beyond: one sum of 16 fractional bits, rounded.
 * @copydetails moxiYCbCrToRGB_8u_P3C3R
 */
MOX_API MoxStatus moxiYCbCrToBGR_8u_P3C3R(const Mox8u* const* srcPlanes, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                          MoxiSize roiSize);

/**
 * Converts planes of Y, Cb and Cr to interleaved BGR and a fourth byte. Terms of 4 fractional bits, rounded, in all
 * columns. @copydetails moxiYCbCrToRGB_8u_P3C4R
 */
MOX_API MoxStatus moxiYCbCrToBGR_8u_P3C4R(const Mox8u* const* srcPlanes, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                          MoxiSize roiSize, Mox8u aval);

MOX_EXTERN_C_END

/** @} */

#endif
