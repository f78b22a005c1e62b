/* SPDX-License-Identifier: BSD-2-Clause */
/**
 * @defgroup ycbcr_encode RGB to subsampled YCbCr
 * @ingroup video
 * @brief RGB and BGR to subsampled YCbCr of BT.601, studio range: luma 16 to 235, chroma 16 to 240 about 128.
 *
 *     Y  = 16  + 0.257 R + 0.504 G + 0.098 B
 *     Cb = 128 - 0.148 R - 0.291 G + 0.439 B
 *     Cr = 128 + 0.439 R - 0.368 G - 0.071 B
 *
 * Luma is computed for each pixel. Chroma is that of the mean colour of a cell of pixels, two of a row in 4:2:2, two by
 * two in 4:2:0, four of a row in 4:1:1, and so sited in its middle (@ref siting); only the two functions that filter it
 * site it at the first pixel of a pair. The first columns of a row are computed with less precision than the rest, by
 * rules that differ by 1 at most; where the rest begins depends on the width alone, and each function says where.
 *
 * Where memory holds B, G, R, the name says BGR. The fourth byte of AC4 and C4 sources is not read into any result.
 *
 * Layouts of the results:
 * - YCbCr422 C2: two pixels in four bytes, Y0 Cb Y1 Cr; YCrCb422: Y0 Cr Y1 Cb; CbYCr422: Cb Y0 Cr Y1
 * - YCbCr422 P3: planes Y, Cb and Cr, chroma of width / 2 columns
 * - YCbCr420 P3: planes Y, Cb and Cr, chroma of width / 2 columns and height / 2 rows; YCrCb420: planes Y, Cr, Cb
 * - YCbCr420 P2: plane Y, and a plane of byte pairs Cb Cr, one for each cell
 * - YCbCr411 P3: planes Y, Cb and Cr, chroma of width / 4 columns
 *
 * Pixels of no whole cell are neither read nor written, unless the function says otherwise. Steps are bytes and are not
 * tested; zero and negative ones are fine. Nothing is written when the status is negative.
 *
 * No pointer, nor a pointer in a plane array, may be null (moxStatusNullPtr). Pointers are tested before the size where
 * nothing else is said; arrays of steps must not be null, and are not tested.
 *
 * @{
 */
#ifndef MOXCC_YCBCR_ENCODE_H
#define MOXCC_YCBCR_ENCODE_H

#include "moxcc/types.h"

MOX_EXTERN_C_BEGIN

/**
 * @brief Encodes RGB pixels as packed 4:2:2, Y0 Cb Y1 Cr. Less precision in the columns below the width rounded down to
 * a multiple of 8. In the rest, luma of even columns is rounded, that of odd columns truncated. A last pixel of an odd
 * width is not written; a width of 1 writes nothing.
 *
 * @param src     interleaved source pixels
 * @param srcStep distance between source rows in bytes
 * @param dst     packed destination pixel pairs, two bytes a pixel
 * @param dstStep distance between destination rows in bytes
 * @param roiSize width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr, moxStatusBadSize below 1 x 1
 */
MOX_API MoxStatus moxiRGBToYCbCr422_8u_C3C2R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                             MoxiSize roiSize);

/**
 * Encodes RGB pixels as packed 4:2:2, Y0 Cr Y1 Cb. Less precision in the columns below the width rounded down to a
 * multiple of 8. In the rest, luma of even columns is rounded, that of odd columns truncated. A last pixel of an odd
 * width is not written; a width of 1 writes nothing. @copydetails moxiRGBToYCbCr422_8u_C3C2R
 */
MOX_API MoxStatus moxiRGBToYCrCb422_8u_C3C2R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                             MoxiSize roiSize);

/**
 * @brief Encodes RGB planes as packed 4:2:2, Y0 Cb Y1 Cr. Less precision in the columns below the width rounded down to
 * a multiple of 8. In the rest, luma of even columns is rounded, that of odd columns truncated. A last pixel of an odd
 * width is not written; a width of 1 writes nothing. The plane pointers are tested after the size.
 *
 * @param srcPlanes the three source planes, R, G, B
 * @param srcStep   distance between source rows in bytes, the same in all planes
 * @param dst       packed destination pixel pairs, two bytes a pixel
 * @param dstStep   distance between destination rows in bytes
 * @param roiSize   width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr, moxStatusBadSize below 1 x 1
 */
MOX_API MoxStatus moxiRGBToYCbCr422_8u_P3C2R(const Mox8u* const* srcPlanes, int32_t srcStep, Mox8u* dst,
                                             int32_t dstStep, MoxiSize roiSize);

/**
 * Encodes RGB planes as packed 4:2:2, Y0 Cr Y1 Cb. Less precision in the columns below the width rounded down to a
 * multiple of 8. In the rest, luma of even columns is rounded, that of odd columns truncated. A last pixel of an odd
 * width is not written; a width of 1 writes nothing. The plane pointers are tested after the size.
 * @copydetails moxiRGBToYCbCr422_8u_P3C2R
 */
MOX_API MoxStatus moxiRGBToYCrCb422_8u_P3C2R(const Mox8u* const* srcPlanes, int32_t srcStep, Mox8u* dst,
                                             int32_t dstStep, MoxiSize roiSize);

/**
 * Encodes RGB pixels as packed 4:2:2, Cb Y0 Cr Y1, with filtered chroma. The chroma of a pair is that at its even
 * pixel, filtered along the row with the weights 1/4, 1/2 and 1/4. To the left of a row lies neutral chroma, so that a
 * saturated row starts with weaker chroma. Less precision in the columns below the width rounded down to a multiple of
 * 8. The last pixel of an odd width gets two bytes, Cb and Y, of this pixel alone.
 * @copydetails moxiRGBToYCbCr422_8u_C3C2R
 */
MOX_API MoxStatus moxiRGBToCbYCr422_8u_C3C2R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                             MoxiSize roiSize);

/**
 * Encodes RGB pixels as packed 4:2:2, Cb Y0 Cr Y1, after gamma correction and with filtered chroma. Each sample first
 * goes through the curve of BT.709 for 8 bits, as in moxiGammaFwd_8u_C3R. Chroma is filtered as in
 * moxiRGBToCbYCr422_8u_C3C2R, by one rule for all columns. The last pixel of an odd width gets two bytes, Cb and Y, of
 * this pixel alone. @copydetails moxiRGBToYCbCr422_8u_C3C2R
 */
MOX_API MoxStatus moxiRGBToCbYCr422Gamma_8u_C3C2R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                                  MoxiSize roiSize);

/**
 * @brief Encodes BGR pixels as packed 4:2:2, Y0 Cb Y1 Cr. Less precision in the columns below the width rounded down to
 * a multiple of 8. A last pixel of an odd width is not written.
 *
 * @param src     interleaved source pixels
 * @param srcStep distance between source rows in bytes
 * @param dst     packed destination pixel pairs, two bytes a pixel
 * @param dstStep distance between destination rows in bytes
 * @param roiSize width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr, moxStatusBadSize below 2 x 1
 */
MOX_API MoxStatus moxiBGRToYCbCr422_8u_C3C2R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                             MoxiSize roiSize);

/**
 * Encodes BGR pixels with a fourth byte as packed 4:2:2, Y0 Cb Y1 Cr. Less precision in the columns below the width
 * rounded down to a multiple of 8. A last pixel of an odd width is not written. @copydetails moxiBGRToYCbCr422_8u_C3C2R
 */
MOX_API MoxStatus moxiBGRToYCbCr422_8u_AC4C2R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                              MoxiSize roiSize);

/**
 * Encodes BGR pixels with a fourth byte as packed 4:2:2, Cb Y0 Cr Y1. Less precision in the columns below the width
 * rounded down to a multiple of 8. The last pixel of an odd width gets two bytes, Cb and Y, of this pixel alone.
 * @copydetails moxiRGBToYCbCr422_8u_C3C2R
 */
MOX_API MoxStatus moxiBGRToCbYCr422_8u_AC4C2R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                              MoxiSize roiSize);

/**
 * @brief Encodes RGB pixels as planar 4:2:2. Less precision in the columns below the width rounded down to a multiple
 * of 8. A last pixel of an odd width is not written.
 *
 * @param src       interleaved source pixels
 * @param srcStep   distance between source rows in bytes
 * @param dstPlanes the three destination planes: Y, and Cb before Cr where nothing else is said
 * @param dstSteps  distance between the rows of each plane in bytes, three values
 * @param roiSize   width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr, moxStatusBadSize below 2 x 1
 */
MOX_API MoxStatus moxiRGBToYCbCr422_8u_C3P3R(const Mox8u* src, int32_t srcStep, Mox8u* const* dstPlanes,
                                             const int32_t* dstSteps, MoxiSize roiSize);

/**
 * Encodes BGR pixels as planar 4:2:2. Less precision in the columns below the width rounded down to a multiple of 8. A
 * last pixel of an odd width is not written. @copydetails moxiRGBToYCbCr422_8u_C3P3R
 */
MOX_API MoxStatus moxiBGRToYCbCr422_8u_C3P3R(const Mox8u* src, int32_t srcStep, Mox8u* const* dstPlanes,
                                             const int32_t* dstSteps, MoxiSize roiSize);
/** Encodes BGR pixels with a fourth byte as planar 4:2:2. @copydetails moxiBGRToYCbCr422_8u_C3P3R */
MOX_API MoxStatus moxiBGRToYCbCr422_8u_AC4P3R(const Mox8u* src, int32_t srcStep, Mox8u* const* dstPlanes,
                                              const int32_t* dstSteps, MoxiSize roiSize);

/**
 * Encodes RGB pixels as planar 4:2:0.
 *
 * Less precision in the columns below the width rounded down to a multiple of 8.
 *
 * The plane pointers are tested after the size. A width or height of 1 writes nothing.
 *
 * @param src       interleaved source pixels
 * @param srcStep   distance between source rows in bytes
 * @param dstPlanes the three destination planes: Y, and Cb before Cr where nothing else is said
 * @param dstSteps  distance between the rows of each plane in bytes, three values
 * @param roiSize   width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr, moxStatusBadSize below 1 x 1, or moxStatusOddSize when width or height is odd
 *         (whole cells have been written)
 */
MOX_API MoxStatus moxiRGBToYCbCr420_8u_C3P3R(const Mox8u* src, int32_t srcStep, Mox8u* const* dstPlanes,
                                             const int32_t* dstSteps, MoxiSize roiSize);

/**
 * @brief Encodes RGB pixels with a fourth byte as planar 4:2:0, Cr before Cb. Less precision in the columns below the
 * width rounded down to a multiple of 4.
 *
 * @param src       interleaved source pixels
 * @param srcStep   distance between source rows in bytes
 * @param dstPlanes the three destination planes: Y, and Cb before Cr where nothing else is said
 * @param dstSteps  distance between the rows of each plane in bytes, three values
 * @param roiSize   width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr, moxStatusBadSize below 2 x 2, or moxStatusOddSize when width or height is odd
 *         (whole cells have been written)
 */
MOX_API MoxStatus moxiRGBToYCrCb420_8u_AC4P3R(const Mox8u* src, int32_t srcStep, Mox8u* const* dstPlanes,
                                              const int32_t* dstSteps, MoxiSize roiSize);

/**
 * Encodes BGR pixels as planar 4:2:0, Cb before Cr. Less precision in the columns below the width rounded down to a
 * multiple of 8. @copydetails moxiRGBToYCrCb420_8u_AC4P3R
 */
MOX_API MoxStatus moxiBGRToYCbCr420_8u_C3P3R(const Mox8u* src, int32_t srcStep, Mox8u* const* dstPlanes,
                                             const int32_t* dstSteps, MoxiSize roiSize);

/**
 * Encodes BGR pixels with a fourth byte as planar 4:2:0, Cb before Cr. Less precision in the columns below the width
 * rounded down to a multiple of 4. @copydetails moxiRGBToYCrCb420_8u_AC4P3R
 */
MOX_API MoxStatus moxiBGRToYCbCr420_8u_AC4P3R(const Mox8u* src, int32_t srcStep, Mox8u* const* dstPlanes,
                                              const int32_t* dstSteps, MoxiSize roiSize);
/** Encodes BGR pixels as planar 4:2:0, Cr before Cb. @copydetails moxiBGRToYCbCr420_8u_C3P3R */
MOX_API MoxStatus moxiBGRToYCrCb420_8u_C3P3R(const Mox8u* src, int32_t srcStep, Mox8u* const* dstPlanes,
                                             const int32_t* dstSteps, MoxiSize roiSize);
/** Encodes BGR pixels with a fourth byte as planar 4:2:0, Cr before Cb. @copydetails moxiBGRToYCbCr420_8u_AC4P3R */
MOX_API MoxStatus moxiBGRToYCrCb420_8u_AC4P3R(const Mox8u* src, int32_t srcStep, Mox8u* const* dstPlanes,
                                              const int32_t* dstSteps, MoxiSize roiSize);

/**
 * @brief Encodes RGB pixels as semi-planar 4:2:0. Less precision in the columns below the width rounded down to a
 * multiple of 8. A width or height of 1 writes nothing.
 *
 * @param src         interleaved source pixels
 * @param srcStep     distance between source rows in bytes
 * @param dstY        luma plane
 * @param dstYStep    distance between luma rows in bytes
 * @param dstCbCr     plane of Cb Cr pairs
 * @param dstCbCrStep distance between rows of pairs in bytes
 * @param roiSize     width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr, moxStatusBadSize below 1 x 1, or moxStatusOddSize when width or height is odd
 *         (whole cells have been written)
 */
MOX_API MoxStatus moxiRGBToYCbCr420_8u_C3P2R(const Mox8u* src, int32_t srcStep, Mox8u* dstY, int32_t dstYStep,
                                             Mox8u* dstCbCr, int32_t dstCbCrStep, MoxiSize roiSize);

/**
 * Encodes RGB pixels with a fourth byte as semi-planar 4:2:0. Less precision in the columns below the width rounded
 * down to a multiple of 8. A width or height of 1 writes nothing. @copydetails moxiRGBToYCbCr420_8u_C3P2R
 */
MOX_API MoxStatus moxiRGBToYCbCr420_8u_C4P2R(const Mox8u* src, int32_t srcStep, Mox8u* dstY, int32_t dstYStep,
                                             Mox8u* dstCbCr, int32_t dstCbCrStep, MoxiSize roiSize);
/** Encodes BGR pixels as semi-planar 4:2:0. @copydetails moxiRGBToYCbCr420_8u_C4P2R */
MOX_API MoxStatus moxiBGRToYCbCr420_8u_C3P2R(const Mox8u* src, int32_t srcStep, Mox8u* dstY, int32_t dstYStep,
                                             Mox8u* dstCbCr, int32_t dstCbCrStep, MoxiSize roiSize);
/** Encodes BGR pixels with a fourth byte as semi-planar 4:2:0. @copydetails moxiRGBToYCbCr420_8u_C4P2R */
MOX_API MoxStatus moxiBGRToYCbCr420_8u_AC4P2R(const Mox8u* src, int32_t srcStep, Mox8u* dstY, int32_t dstYStep,
                                              Mox8u* dstCbCr, int32_t dstCbCrStep, MoxiSize roiSize);

/**
 * @brief Encodes BGR pixels as planar 4:1:1. Less precision in the columns below the width rounded down to a multiple
 * of 16.
 *
 * @param src       interleaved source pixels
 * @param srcStep   distance between source rows in bytes
 * @param dstPlanes the three destination planes: Y, and Cb before Cr where nothing else is said
 * @param dstSteps  distance between the rows of each plane in bytes, three values
 * @param roiSize   width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr, moxStatusBadSize below 4 x 1, or moxStatusOddSize when the width is no
 *         multiple of 4 (whole cells have been written)
 */
MOX_API MoxStatus moxiBGRToYCbCr411_8u_C3P3R(const Mox8u* src, int32_t srcStep, Mox8u* const* dstPlanes,
                                             const int32_t* dstSteps, MoxiSize roiSize);

/**
 * Encodes BGR pixels with a fourth byte as planar 4:1:1. Less precision in the columns below the width rounded down to
 * a multiple of 16. Luma is written for all pixels, also those past the last whole cell.
 * @copydetails moxiBGRToYCbCr411_8u_C3P3R
 */
MOX_API MoxStatus moxiBGRToYCbCr411_8u_AC4P3R(const Mox8u* src, int32_t srcStep, Mox8u* const* dstPlanes,
                                              const int32_t* dstSteps, MoxiSize roiSize);

MOX_EXTERN_C_END

/** @} */

#endif
