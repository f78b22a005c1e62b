/* SPDX-License-Identifier: BSD-2-Clause */
/**
 * @defgroup ycbcr_decode Subsampled YCbCr to RGB
 * @ingroup video
 * @brief Subsampled YCbCr of ITU-R BT.601 to RGB and BGR, 8 bits.
 *
 *     R = 1.164 (Y - 16)                      + 1.596 (Cr - 128)
 *     G = 1.164 (Y - 16) - 0.392 (Cb - 128) - 0.813 (Cr - 128)
 *     B = 1.164 (Y - 16) + 2.017 (Cb - 128)
 *
 * Studio range, as in ycbcr.h; results are limited to 0 to 255. The fixed-point forms of these formulas differ by where
 * they round. Which column follows which form depends on the width alone, and is told with each function.
 *
 * Each pixel takes the chroma of the cell that it lies in, unfiltered, as if it were sited in the cell's middle
 * (@ref siting). Of 4:2:0 the whole cells of 2 by 2 pixels are decoded: the last column of an odd width and the last
 * row of an odd height are neither read nor written, and the status is moxStatusOddSize. All other functions return
 * moxStatusOk at any size that they accept.
 *
 * Packed 4:2:2 rows hold two bytes a pixel. The last pixel of an odd width takes the chroma sample that it lacks from
 * the pair before; in a row of one pixel the one chroma sample stands for both.
 *
 * All functions here: no pointer, nor a pointer in a plane array, may be null (moxStatusNullPtr); width and height
 * must be at least 1 (moxStatusBadSize) where nothing else is said. Steps are not tested: zero and negative ones will
 * do; arrays of steps must not be null. A fourth byte is aval in every pixel written.
 *
 * @{
 */
#ifndef MOXCC_YCBCR_DECODE_H
#define MOXCC_YCBCR_DECODE_H

#include "moxcc/types.h"

MOX_EXTERN_C_BEGIN

/**
 * @brief Decodes packed 4:2:2, Y0, Cb, Y1, Cr, to interleaved R, G, B. Columns below the width rounded down to a
 * multiple of 8: terms of 3 fractional bits, rounded. The columns beyond: one sum of 16 fractional bits, rounded. The
 * last pixel of an odd width is written, by the second form.
 *
 * @param src     packed source pixel pairs, two bytes a pixel
 * @param srcStep distance between source rows in bytes
 * @param dst     interleaved destination pixels
 * @param dstStep distance between destination rows in bytes
 * @param roiSize width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr or moxStatusBadSize; of 4:2:0 also moxStatusOddSize
 */
MOX_API MoxStatus moxiYCbCr422ToRGB_8u_C2C3R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                             MoxiSize roiSize);

/**
 * @brief Decodes packed 4:2:2, Y0, Cb, Y1, Cr, to interleaved R, G, B and a fourth byte. Columns below the width
 * rounded down to a multiple of 8: terms of 3 fractional bits, with the rounding in their offsets. The columns beyond:
 * one sum of 16 fractional bits, rounded. The last pixel of an odd width is written, by the second form.
 *
 * @param src     packed source pixel pairs, two bytes a pixel
 * @param srcStep distance between source rows in bytes
 * @param dst     interleaved destination pixels
 * @param dstStep distance between destination rows in bytes
 * @param roiSize width and height in pixels
 * @param aval    value of the fourth byte of each pixel written
 * @return moxStatusOk, moxStatusNullPtr or moxStatusBadSize; of 4:2:0 also moxStatusOddSize
 */
MOX_API MoxStatus moxiYCbCr422ToRGB_8u_C2C4R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                             MoxiSize roiSize, Mox8u aval);

/**
 * Decodes packed 4:2:2, Y0, Cb, Y1, Cr, to interleaved B, G, R. Columns below the width rounded down to a multiple of
 * 8: terms of 3 fractional bits, rounded. The columns beyond: one sum of 16 fractional bits, rounded. The last pixel of
 * an odd width is written, by the second form. The width must be at least 2. @copydetails moxiYCbCr422ToRGB_8u_C2C3R
 */
MOX_API MoxStatus moxiYCbCr422ToBGR_8u_C2C3R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                             MoxiSize roiSize);

/**
 * Decodes packed 4:2:2, Y0, Cb, Y1, Cr, to interleaved B, G, R and a fourth byte. Columns below the width rounded down
 * to a multiple of 8: terms of 3 fractional bits, truncated. The columns beyond: one sum of 16 fractional bits, with
 * the rounding in its offsets. The last pixel of an odd width is written, by the second form. The width must be at
 * least 2. @copydetails moxiYCbCr422ToRGB_8u_C2C4R
 */
MOX_API MoxStatus moxiYCbCr422ToBGR_8u_C2C4R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                             MoxiSize roiSize, Mox8u aval);

/**
 * Decodes packed 4:2:2, Y0, Cr, Y1, Cb, to interleaved R, G, B. Columns below the width rounded down to a multiple of
 * 8: terms of 3 fractional bits, with the rounding in their offsets. The columns beyond: one sum of 16 fractional bits,
 * rounded. The last pixel of an odd width is written, by the second form. @copydetails moxiYCbCr422ToRGB_8u_C2C3R
 */
MOX_API MoxStatus moxiYCrCb422ToRGB_8u_C2C3R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                             MoxiSize roiSize);

/**
 * Decodes packed 4:2:2, Y0, Cr, Y1, Cb, to interleaved R, G, B and a fourth byte. Columns below the width rounded down
 * to a multiple of 8: terms of 3 fractional bits, with the rounding in their offsets. The columns beyond: one sum of 16
 * fractional bits, rounded. The last pixel of an odd width is written, by the second form.
 * @copydetails moxiYCbCr422ToRGB_8u_C2C4R
 */
MOX_API MoxStatus moxiYCrCb422ToRGB_8u_C2C4R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                             MoxiSize roiSize, Mox8u aval);
/** Decodes packed 4:2:2, Y0, Cr, Y1, Cb, to interleaved B, G, R. @copydetails moxiYCrCb422ToRGB_8u_C2C3R */
MOX_API MoxStatus moxiYCrCb422ToBGR_8u_C2C3R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                             MoxiSize roiSize);

/**
 * Decodes packed 4:2:2, Y0, Cr, Y1, Cb, to interleaved B, G, R and a fourth byte.
 * @copydetails moxiYCrCb422ToRGB_8u_C2C4R
 */
MOX_API MoxStatus moxiYCrCb422ToBGR_8u_C2C4R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                             MoxiSize roiSize, Mox8u aval);

/**
 * Decodes packed 4:2:2, Cb, Y0, Cr, Y1, to interleaved R, G, B. Columns below the width rounded down to a multiple of
 * 8: terms of 3 fractional bits, rounded. The columns beyond: one sum of 16 fractional bits, rounded. The last pixel of
 * an odd width is written, by the second form. @copydetails moxiYCbCr422ToRGB_8u_C2C3R
 */
MOX_API MoxStatus moxiCbYCr422ToRGB_8u_C2C3R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                             MoxiSize roiSize);

/**
 * Decodes packed 4:2:2, Cb, Y0, Cr, Y1, to interleaved B, G, R and a fourth byte. Columns below the width rounded down
 * to a multiple of 8: terms of 4 fractional bits, rounded. The columns beyond: one sum of 16 fractional bits, rounded.
 * The last pixel of an odd width is written, by the second form. @copydetails moxiYCbCr422ToRGB_8u_C2C4R
 */
MOX_API MoxStatus moxiCbYCr422ToBGR_8u_C2C4R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                             MoxiSize roiSize, Mox8u aval);

/**
 * @brief Decodes packed 4:2:2, Y0, Cb, Y1, Cr, to planes of R, G, B. Columns below the width rounded down to a multiple
 * of 4: terms of 4 fractional bits, truncated. The columns beyond: one sum of 16 fractional bits, with the rounding in
 * its offsets. The last pixel of an odd width is written, by the second form. The pointers in dstPlanes are tested
 * after the size.
 *
 * @param src       packed source pixel pairs, two bytes a pixel
 * @param srcStep   distance between source rows in bytes
 * @param dstPlanes pointers to the destination planes, in the order told above
 * @param dstStep   distance between rows in bytes, the same in all destination planes
 * @param roiSize   width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr or moxStatusBadSize; of 4:2:0 also moxStatusOddSize
 */
MOX_API MoxStatus moxiYCbCr422ToRGB_8u_C2P3R(const Mox8u* src, int32_t srcStep, Mox8u* const* dstPlanes,
                                             int32_t dstStep, MoxiSize roiSize);

/**
 * Decodes packed 4:2:2, Y0, Cr, Y1, Cb, to planes of R, G, B. Columns below the width rounded down to a multiple of 4:
 * terms of 4 fractional bits, truncated. The columns beyond: one sum of 16 fractional bits, with the rounding in its
 * offsets. The last pixel of an odd width is written, by the second form. The pointers in dstPlanes are tested after
 * the size. @copydetails moxiYCbCr422ToRGB_8u_C2P3R
 */
MOX_API MoxStatus moxiYCrCb422ToRGB_8u_C2P3R(const Mox8u* src, int32_t srcStep, Mox8u* const* dstPlanes,
                                             int32_t dstStep, MoxiSize roiSize);

/**
 * @brief Decodes 4:2:2 planes of Y, Cb, Cr to interleaved R, G, B. Columns below the width rounded down to a multiple
 * of 8: terms of 3 fractional bits, rounded. The columns beyond: one sum of 16 fractional bits, with the rounding in
 * its offsets. The last column of an odd width is not written. The width must be at least 2. The plane pointers are
 * tested before the size.
 *
 * @param srcPlanes pointers to the source planes, in the order told above
 * @param srcSteps  distance between rows in bytes for each source plane
 * @param dst       interleaved destination pixels
 * @param dstStep   distance between destination rows in bytes
 * @param roiSize   width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr or moxStatusBadSize; of 4:2:0 also moxStatusOddSize
 */
MOX_API MoxStatus moxiYCbCr422ToRGB_8u_P3C3R(const Mox8u* const* srcPlanes, const int32_t* srcSteps, Mox8u* dst,
                                             int32_t dstStep, MoxiSize roiSize);

/**
 * Decodes 4:2:2 planes of Y, Cb, Cr to interleaved B, G, R. Columns below the width rounded down to a multiple of 8:
 * terms of 3 fractional bits, rounded. The columns beyond: one sum of 16 fractional bits, with the rounding in its
 * offsets. The last column of an odd width is not written. The width must be at least 2. The plane pointers are tested
 * before the size. @copydetails moxiYCbCr422ToRGB_8u_P3C3R
 */
MOX_API MoxStatus moxiYCbCr422ToBGR_8u_P3C3R(const Mox8u* const* srcPlanes, const int32_t* srcSteps, Mox8u* dst,
                                             int32_t dstStep, MoxiSize roiSize);

/**
 * Decodes 4:1:1 planes of Y, Cb, Cr to interleaved B, G, R. Columns of whole groups of four: terms of 3 fractional
 * bits, rounded. One or two columns beyond: one sum of 16 fractional bits, rounded; three: as the whole groups. The
 * columns beyond take the chroma of the last whole group. The width must be at least 4. The plane pointers are tested
 * before the size. @copydetails moxiYCbCr422ToRGB_8u_P3C3R
 */
MOX_API MoxStatus moxiYCbCr411ToBGR_8u_P3C3R(const Mox8u* const* srcPlanes, const int32_t* srcSteps, Mox8u* dst,
                                             int32_t dstStep, MoxiSize roiSize);

/**
 * @brief Decodes 4:1:1 planes of Y, Cb, Cr to interleaved B, G, R and a fourth byte. Columns of whole groups of four:
 * terms of 3 fractional bits, rounded. One or two columns beyond: one sum of 16 fractional bits, rounded; three: as the
 * whole groups. The columns beyond take the chroma of the last whole group. The width must be at least 4. The plane
 * pointers are tested before the size.
 *
 * @param srcPlanes pointers to the source planes, in the order told above
 * @param srcSteps  distance between rows in bytes for each source plane
 * @param dst       interleaved destination pixels
 * @param dstStep   distance between destination rows in bytes
 * @param roiSize   width and height in pixels
 * @param aval      value of the fourth byte of each pixel written
 * @return moxStatusOk, moxStatusNullPtr or moxStatusBadSize; of 4:2:0 also moxStatusOddSize
 */
MOX_API MoxStatus moxiYCbCr411ToBGR_8u_P3C4R(const Mox8u* const* srcPlanes, const int32_t* srcSteps, Mox8u* dst,
                                             int32_t dstStep, MoxiSize roiSize, Mox8u aval);

/**
 * Decodes 4:2:0 planes of Y, Cb, Cr to interleaved R, G, B. Columns below the width rounded down to a multiple of 8:
 * terms of 3 fractional bits, rounded. The columns beyond: one sum of 16 fractional bits, rounded. The plane pointers
 * are tested after the size. @copydetails moxiYCbCr422ToRGB_8u_P3C3R
 */
MOX_API MoxStatus moxiYCbCr420ToRGB_8u_P3C3R(const Mox8u* const* srcPlanes, const int32_t* srcSteps, Mox8u* dst,
                                             int32_t dstStep, MoxiSize roiSize);
/** Decodes 4:2:0 planes of Y, Cb, Cr to interleaved B, G, R. @copydetails moxiYCbCr420ToRGB_8u_P3C3R */
MOX_API MoxStatus moxiYCbCr420ToBGR_8u_P3C3R(const Mox8u* const* srcPlanes, const int32_t* srcSteps, Mox8u* dst,
                                             int32_t dstStep, MoxiSize roiSize);

/**
 * Decodes 4:2:0 planes of Y, Cb, Cr to interleaved B, G, R and a fourth byte. Terms of 3 fractional bits with the
 * rounding in their offsets, in all columns. The plane pointers are tested after the size.
 * @copydetails moxiYCbCr411ToBGR_8u_P3C4R
 */
MOX_API MoxStatus moxiYCbCr420ToBGR_8u_P3C4R(const Mox8u* const* srcPlanes, const int32_t* srcSteps, Mox8u* dst,
                                             int32_t dstStep, MoxiSize roiSize, Mox8u aval);

/**
 * Decodes 4:2:0 planes of Y, Cr, Cb to interleaved R, G, B and a fourth byte. Columns below the width rounded down to a
 * multiple of 8: terms of 4 fractional bits, rounded. The columns beyond: one sum of 16 fractional bits, rounded. The
 * plane pointers are tested after the size. @copydetails moxiYCbCr411ToBGR_8u_P3C4R
 */
MOX_API MoxStatus moxiYCrCb420ToRGB_8u_P3C4R(const Mox8u* const* srcPlanes, const int32_t* srcSteps, Mox8u* dst,
                                             int32_t dstStep, MoxiSize roiSize, Mox8u aval);

/**
 * @brief Decodes 4:2:0 of a plane of Y and one of pairs Cb, Cr to interleaved R, G, B. Terms of 3 fractional bits with
 * the rounding in their offsets, in all columns.
 *
 * @param srcY        luma plane
 * @param srcYStep    distance between luma rows in bytes
 * @param srcCbCr     plane of chroma pairs, in the order told above
 * @param srcCbCrStep distance between rows of chroma pairs in bytes
 * @param dst         interleaved destination pixels
 * @param dstStep     distance between destination rows in bytes
 * @param roiSize     width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr or moxStatusBadSize; of 4:2:0 also moxStatusOddSize
 */
MOX_API MoxStatus moxiYCbCr420ToRGB_8u_P2C3R(const Mox8u* srcY, int32_t srcYStep, const Mox8u* srcCbCr,
                                             int32_t srcCbCrStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize);

/**
 * @brief Decodes 4:2:0 of a plane of Y and one of pairs Cb, Cr to interleaved R, G, B and a fourth byte. Terms of 3
 * fractional bits with the rounding in their offsets, in all columns.
 *
 * @param srcY        luma plane
 * @param srcYStep    distance between luma rows in bytes
 * @param srcCbCr     plane of chroma pairs, in the order told above
 * @param srcCbCrStep distance between rows of chroma pairs in bytes
 * @param dst         interleaved destination pixels
 * @param dstStep     distance between destination rows in bytes
 * @param roiSize     width and height in pixels
 * @param aval        value of the fourth byte of each pixel written
 * @return moxStatusOk, moxStatusNullPtr or moxStatusBadSize; of 4:2:0 also moxStatusOddSize
 */
MOX_API MoxStatus moxiYCbCr420ToRGB_8u_P2C4R(const Mox8u* srcY, int32_t srcYStep, const Mox8u* srcCbCr,
                                             int32_t srcCbCrStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize,
                                             Mox8u aval);

/**
 * Decodes 4:2:0 of a plane of Y and one of pairs Cb, Cr to interleaved B, G, R. Terms of 3 fractional bits with the
 * rounding in their offsets, in all columns. @copydetails moxiYCbCr420ToRGB_8u_P2C3R
 */
MOX_API MoxStatus moxiYCbCr420ToBGR_8u_P2C3R(const Mox8u* srcY, int32_t srcYStep, const Mox8u* srcCbCr,
                                             int32_t srcCbCrStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize);

/**
 * Decodes 4:2:0 of a plane of Y and one of pairs Cb, Cr to interleaved B, G, R and a fourth byte. Terms of 3 fractional
 * bits with the rounding in their offsets, in all columns. @copydetails moxiYCbCr420ToRGB_8u_P2C4R
 */
MOX_API MoxStatus moxiYCbCr420ToBGR_8u_P2C4R(const Mox8u* srcY, int32_t srcYStep, const Mox8u* srcCbCr,
                                             int32_t srcCbCrStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize,
                                             Mox8u aval);

/**
 * Decodes 4:2:0 of a plane of Y and one of pairs Cr, Cb to interleaved R, G, B. @copydetails moxiYCbCr420ToBGR_8u_P2C3R
 */
MOX_API MoxStatus moxiYCrCb420ToRGB_8u_P2C3R(const Mox8u* srcY, int32_t srcYStep, const Mox8u* srcCbCr,
                                             int32_t srcCbCrStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize);

/**
 * Decodes 4:2:0 of a plane of Y and one of pairs Cr, Cb to interleaved R, G, B and a fourth byte. Terms of 3 fractional
 * bits with the rounding in their offsets, in all columns. The size is tested before the pointers.
 * @copydetails moxiYCbCr420ToRGB_8u_P2C4R
 */
MOX_API MoxStatus moxiYCrCb420ToRGB_8u_P2C4R(const Mox8u* srcY, int32_t srcYStep, const Mox8u* srcCbCr,
                                             int32_t srcCbCrStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize,
                                             Mox8u aval);

/**
 * Decodes 4:2:0 of a plane of Y and one of pairs Cr, Cb to interleaved B, G, R. @copydetails moxiYCbCr420ToBGR_8u_P2C3R
 */
MOX_API MoxStatus moxiYCrCb420ToBGR_8u_P2C3R(const Mox8u* srcY, int32_t srcYStep, const Mox8u* srcCbCr,
                                             int32_t srcCbCrStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize);

/**
 * Decodes 4:2:0 of a plane of Y and one of pairs Cr, Cb to interleaved B, G, R and a fourth byte.
 * @copydetails moxiYCrCb420ToRGB_8u_P2C4R
 */
MOX_API MoxStatus moxiYCrCb420ToBGR_8u_P2C4R(const Mox8u* srcY, int32_t srcYStep, const Mox8u* srcCbCr,
                                             int32_t srcCbCrStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize,
                                             Mox8u aval);

MOX_EXTERN_C_END

/** @} */

#endif
