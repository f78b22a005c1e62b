/* SPDX-License-Identifier: BSD-2-Clause */
/**
 * @defgroup rec709_encode RGB to YCbCr of BT.709
 * @ingroup video
 * @brief BGR to subsampled YCbCr of BT.709.
 *
 * 709CSC is studio range, luma 16 to 235 and chroma 16 to 240 about 128:
 *
 *     Y  = 16  + 0.183 R + 0.614 G + 0.062 B
 *     Cb = 128 - 0.101 R - 0.338 G + 0.439 B
 *     Cr = 128 + 0.439 R - 0.399 G - 0.040 B
 *
 * 709HDTV is full range, chroma about 128, with every sample limited to 1 to 254:
 *
 *     Y  =       0.213 R + 0.715 G + 0.072 B
 *     Cb = 128 - 0.117 R - 0.394 G + 0.511 B
 *     Cr = 128 + 0.511 R - 0.464 G - 0.047 B
 *
 * BT.709 itself has 0.5 where these have 0.511: chroma is off by up to 3 from a stream by the standard. The functions
 * of 709HDTV in rec709_decode.h are the inverse of this matrix.
 *
 * Luma is computed for each pixel. Chroma is that of the mean colour of a cell of pixels, two of a row in 4:2:2, two by
 * two in 4:2:0, and so sited in its middle (@ref siting). Some columns of a row are computed with less precision than
 * the rest, by rules that differ by 1 at most; which ones depends on the width alone, and each function says which.
 *
 * Memory holds B, G, R. The fourth byte of AC4 sources is not read into any result.
 *
 * Layouts of the results:
 * - YCbCr420 P3: planes Y, Cb and Cr, chroma of width / 2 columns and height / 2 rows; YCrCb420: planes Y, Cr, Cb
 * - YCbCr420 P2: plane Y, and a plane of byte pairs Cb Cr, one for each cell
 * - CbYCr422 C2: two pixels in four bytes, Cb Y0 Cr Y1
 *
 * Pixels of no whole cell are neither read nor written, unless the function says otherwise. Steps are bytes and are not
 * tested; zero and negative ones are fine. Nothing is written when the status is negative.
 *
 * No pointer, nor a pointer in a plane array, may be null (moxStatusNullPtr); pointers are tested before the size.
 * Arrays of steps must not be null, and are not tested.
 *
 * @{
 */
#ifndef MOXCC_REC709_ENCODE_H
#define MOXCC_REC709_ENCODE_H

#include "moxcc/types.h"

MOX_EXTERN_C_BEGIN

/**
 * @brief Encodes BGR pixels as planar 4:2:0 in studio range, Cb before Cr. Less precision in the columns that passes of
 * 16 take, and in one pass of 4 more if that bit of the width is set.
 *
 * @param src       interleaved source pixels
 * @param srcStep   distance between source rows in bytes
 * @param dstPlanes the three destination planes: Y, and Cb before Cr where nothing else is said
 * @param dstSteps  distance between the rows of each plane in bytes, three values
 * @param roiSize   width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr, moxStatusBadSize below 2 x 2, or moxStatusOddSize when width or height is odd
 *         (whole cells have been written)
 */
MOX_API MoxStatus moxiBGRToYCbCr420_709CSC_8u_C3P3R(const Mox8u* src, int32_t srcStep, Mox8u* const* dstPlanes,
                                                    const int32_t* dstSteps, MoxiSize roiSize);

/**
 * Encodes BGR pixels with a fourth byte as planar 4:2:0 in studio range, Cb before Cr. Less precision in the columns
 * that passes of 16 take, and in one pass of 4 more if that bit of the width is set.
 * @copydetails moxiBGRToYCbCr420_709CSC_8u_C3P3R
 */
MOX_API MoxStatus moxiBGRToYCbCr420_709CSC_8u_AC4P3R(const Mox8u* src, int32_t srcStep, Mox8u* const* dstPlanes,
                                                     const int32_t* dstSteps, MoxiSize roiSize);
/** Encodes BGR pixels as planar 4:2:0 in studio range, Cr before Cb. @copydetails moxiBGRToYCbCr420_709CSC_8u_AC4P3R */
MOX_API MoxStatus moxiBGRToYCrCb420_709CSC_8u_C3P3R(const Mox8u* src, int32_t srcStep, Mox8u* const* dstPlanes,
                                                    const int32_t* dstSteps, MoxiSize roiSize);

/**
 * Encodes BGR pixels with a fourth byte as planar 4:2:0 in studio range, Cr before Cb.
 * @copydetails moxiBGRToYCbCr420_709CSC_8u_AC4P3R
 */
MOX_API MoxStatus moxiBGRToYCrCb420_709CSC_8u_AC4P3R(const Mox8u* src, int32_t srcStep, Mox8u* const* dstPlanes,
                                                     const int32_t* dstSteps, MoxiSize roiSize);

/**
 * @brief Encodes BGR pixels as semi-planar 4:2:0 in studio range. Less precision in the columns below the width rounded
 * down to a multiple of 8.
 *
 * @param src         interleaved source pixels
 * @param srcStep     distance between source rows in bytes
 * @param dstY        luma plane
 * @param dstYStep    distance between luma rows in bytes
 * @param dstCbCr     plane of Cb Cr pairs
 * @param dstCbCrStep distance between rows of pairs in bytes
 * @param roiSize     width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr, moxStatusBadSize below 2 x 2, or moxStatusOddSize when width or height is odd
 *         (whole cells have been written)
 */
MOX_API MoxStatus moxiBGRToYCbCr420_709CSC_8u_C3P2R(const Mox8u* src, int32_t srcStep, Mox8u* dstY, int32_t dstYStep,
                                                    Mox8u* dstCbCr, int32_t dstCbCrStep, MoxiSize roiSize);

/**
 * Encodes BGR pixels with a fourth byte as semi-planar 4:2:0 in studio range. Less precision in the columns below the
 * width rounded down to a multiple of 8. @copydetails moxiBGRToYCbCr420_709CSC_8u_C3P2R
 */
MOX_API MoxStatus moxiBGRToYCbCr420_709CSC_8u_AC4P2R(const Mox8u* src, int32_t srcStep, Mox8u* dstY, int32_t dstYStep,
                                                     Mox8u* dstCbCr, int32_t dstCbCrStep, MoxiSize roiSize);

/**
 * Encodes BGR pixels with a fourth byte as planar 4:2:0 in full range. @copydetails moxiBGRToYCbCr420_709CSC_8u_AC4P3R
 */
MOX_API MoxStatus moxiBGRToYCbCr420_709HDTV_8u_AC4P3R(const Mox8u* src, int32_t srcStep, Mox8u* const* dstPlanes,
                                                      const int32_t* dstSteps, MoxiSize roiSize);

/**
 * @brief Encodes BGR pixels as packed 4:2:2, Cb Y0 Cr Y1, in full range. Less precision in the columns that passes of
 * 32 take, and in one pass of 8 more if that bit of the width is set. The last pixel of an odd width gets two bytes, Cb
 * and Y, of this pixel alone.
 *
 * @param src     interleaved source pixels
 * @param srcStep distance between source rows in bytes
 * @param dst     packed destination pixel pairs, two bytes a pixel
 * @param dstStep distance between destination rows in bytes
 * @param roiSize width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr, moxStatusBadSize below 1 x 1
 */
MOX_API MoxStatus moxiBGRToCbYCr422_709HDTV_8u_C3C2R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                                     MoxiSize roiSize);

/**
 * Encodes BGR pixels with a fourth byte as packed 4:2:2, Cb Y0 Cr Y1, in full range. Less precision in the columns
 * below the width rounded down to a multiple of 8. The last pixel of an odd width gets two bytes, Cb and Y, of this
 * pixel alone. @copydetails moxiBGRToCbYCr422_709HDTV_8u_C3C2R
 */
MOX_API MoxStatus moxiBGRToCbYCr422_709HDTV_8u_AC4C2R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                                      MoxiSize roiSize);

MOX_EXTERN_C_END

/** @} */

#endif
