/* SPDX-License-Identifier: BSD-2-Clause */
/**
 * @defgroup yuv_encode RGB to subsampled YUV
 * @ingroup video
 * @brief RGB and BGR to subsampled YUV, full range: U and V are scaled colour differences about 128.
 *
 *     Y = 0.299 R + 0.587 G + 0.114 B
 *     U = 128 + 0.492 (B - Y)
 *     V = 128 + 0.877 (R - Y), limited to 255
 *
 * as in yuv.h, which says why these are not JPEG's YCbCr.
 *
 * Luma is computed for each pixel. Chroma is that of the mean colour of a cell of pixels, two of a row in 4:2:2, two by
 * two in 4:2:0, and so sited in its middle (@ref siting). The first columns of a row are computed with less precision
 * than the rest, by rules that differ by 1 or 2 at most; each function says where the rest begins.
 *
 * Layouts of the results:
 * - YUV422 C2: two pixels in four bytes, Y0 U Y1 V
 * - YUV422 P3: planes Y, U and V, chroma of (width + 1) / 2 columns
 * - YUV420 P3: planes Y, U and V, chroma of width / 2 columns and height / 2 rows
 *
 * In 4:2:0, the last column of an odd width and the last row of an odd height are neither read nor written. In 4:2:2,
 * the last pixel of an odd width has chroma of its own.
 *
 * Functions whose names end in R take steps, which are bytes and not tested; zero and negative ones are fine. The
 * others take images without gaps: rows of 3 * width bytes (interleaved) or width bytes (planes and luma), and chroma
 * rows of (width + 1) / 2 bytes in 4:2:2, width / 2 in 4:2:0. All test the pointers, then the size, then the pointers
 * inside the plane arrays, first those of the source. Arrays of steps must not be null, and are not tested. Nothing is
 * written when the status is negative.
 *
 * @{
 */
#ifndef MOXCC_YUV_ENCODE_H
#define MOXCC_YUV_ENCODE_H

#include "moxcc/types.h"

MOX_EXTERN_C_BEGIN

/**
 * Encodes RGB pixels as packed 4:2:2, Y0 U Y1 V.
 *
 * Less precision in the columns below the width rounded down to a multiple of 16.
 *
 * The last pixel of an odd width gets two bytes, Y and U.
 *
 * @param src     interleaved source pixels
 * @param srcStep distance between source rows in bytes
 * @param dst     packed destination pixel pairs, two bytes a pixel
 * @param dstStep distance between destination rows in bytes
 * @param roiSize width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr, moxStatusBadSize below 1 x 1, or, of 4:2:0, moxStatusOddSize when width or
 *         height is odd (whole cells have been written)
 */
MOX_API MoxStatus moxiRGBToYUV422_8u_C3C2R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                           MoxiSize roiSize);

/**
 * @brief Encodes RGB pixels as planar 4:2:2. Less precision in the columns below the width rounded down to a multiple
 * of 16. If src, the three destination planes and all four steps are multiples of 16, other rules hold, with more
 * precision in the first columns and less in the rest.
 *
 * @param src       interleaved source pixels
 * @param srcStep   distance between source rows in bytes
 * @param dstPlanes planes Y, U, V
 * @param dstSteps  distance between the rows of each plane in bytes, three values
 * @param roiSize   width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr, moxStatusBadSize below 1 x 1, or, of 4:2:0, moxStatusOddSize when width or
 *         height is odd (whole cells have been written)
 */
MOX_API MoxStatus moxiRGBToYUV422_8u_C3P3R(const Mox8u* src, int32_t srcStep, Mox8u* const* dstPlanes,
                                           const int32_t* dstSteps, MoxiSize roiSize);

/**
 * @brief Encodes RGB pixels without gaps as planar 4:2:2 without gaps. As moxiRGBToYUV422_8u_C3P3R. An even width and
 * at least 256 pixels make one long row of the image: the first columns are then those of the whole image. Alignment
 * then makes no difference.
 *
 * @param src       interleaved source pixels
 * @param dstPlanes planes Y, U, V
 * @param roiSize   width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr, moxStatusBadSize below 1 x 1, or, of 4:2:0, moxStatusOddSize when width or
 *         height is odd (whole cells have been written)
 */
MOX_API MoxStatus moxiRGBToYUV422_8u_C3P3(const Mox8u* src, Mox8u* const* dstPlanes, MoxiSize roiSize);

/**
 * @brief Encodes RGB planes as planar 4:2:2. Less precision in the columns below the width rounded down to a multiple
 * of 16.
 *
 * @param srcPlanes the three source planes, R, G, B
 * @param srcStep   distance between source rows in bytes, the same in all planes
 * @param dstPlanes planes Y, U, V
 * @param dstSteps  distance between the rows of each plane in bytes, three values
 * @param roiSize   width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr, moxStatusBadSize below 1 x 1, or, of 4:2:0, moxStatusOddSize when width or
 *         height is odd (whole cells have been written)
 */
MOX_API MoxStatus moxiRGBToYUV422_8u_P3R(const Mox8u* const* srcPlanes, int32_t srcStep, Mox8u* const* dstPlanes,
                                         const int32_t* dstSteps, MoxiSize roiSize);

/**
 * @brief Encodes RGB planes without gaps as planar 4:2:2 without gaps. As moxiRGBToYUV422_8u_P3R. An even width and at
 * least 256 pixels make one long row of the image: the first columns are then those of the whole image.
 *
 * @param srcPlanes the three source planes, R, G, B
 * @param dstPlanes planes Y, U, V
 * @param roiSize   width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr, moxStatusBadSize below 1 x 1, or, of 4:2:0, moxStatusOddSize when width or
 *         height is odd (whole cells have been written)
 */
MOX_API MoxStatus moxiRGBToYUV422_8u_P3(const Mox8u* const* srcPlanes, Mox8u* const* dstPlanes, MoxiSize roiSize);

/**
 * Encodes RGB pixels as planar 4:2:0. Less precision in the columns below the width rounded down to a multiple of 8.
 * @copydetails moxiRGBToYUV422_8u_C3P3R
 */
MOX_API MoxStatus moxiRGBToYUV420_8u_C3P3R(const Mox8u* src, int32_t srcStep, Mox8u* const* dstPlanes,
                                           const int32_t* dstSteps, MoxiSize roiSize);

/**
 * Encodes RGB pixels without gaps as planar 4:2:0 without gaps. As moxiRGBToYUV420_8u_C3P3R.
 * @copydetails moxiRGBToYUV422_8u_C3P3
 */
MOX_API MoxStatus moxiRGBToYUV420_8u_C3P3(const Mox8u* src, Mox8u* const* dstPlanes, MoxiSize roiSize);
/** Encodes RGB planes as planar 4:2:0. All columns are computed alike. @copydetails moxiRGBToYUV422_8u_P3R */
MOX_API MoxStatus moxiRGBToYUV420_8u_P3R(const Mox8u* const* srcPlanes, int32_t srcStep, Mox8u* const* dstPlanes,
                                         const int32_t* dstSteps, MoxiSize roiSize);

/**
 * Encodes RGB planes without gaps as planar 4:2:0 without gaps. As moxiRGBToYUV420_8u_P3R.
 * @copydetails moxiRGBToYUV422_8u_P3
 */
MOX_API MoxStatus moxiRGBToYUV420_8u_P3(const Mox8u* const* srcPlanes, Mox8u* const* dstPlanes, MoxiSize roiSize);

/**
 * Encodes BGR pixels with a fourth byte, which is not read, as planar 4:2:0. Less precision in the columns below the
 * width rounded down to a multiple of 16. @copydetails moxiRGBToYUV422_8u_C3P3R
 */
MOX_API MoxStatus moxiBGRToYUV420_8u_AC4P3R(const Mox8u* src, int32_t srcStep, Mox8u* const* dstPlanes,
                                            const int32_t* dstSteps, MoxiSize roiSize);

MOX_EXTERN_C_END

/** @} */

#endif
