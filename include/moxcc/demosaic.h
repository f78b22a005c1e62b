/* SPDX-License-Identifier: BSD-2-Clause */
/**
 * @defgroup demosaic Bayer reconstruction
 * @ingroup camera
 * @brief Full-colour images from raw Bayer sensor data, by three methods.
 *
 * A sensor behind a Bayer colour-filter array delivers one sample per pixel: green at half of the sites, red and blue
 * at a quarter each. From fast to good: bilinear means with a choice of direction for green (moxiCFAToRGB_*), a
 * variable number of gradients (moxiCFAToBGRA_VNG_*), adaptive homogeneity-directed interpolation (moxiDemosaicAHD_*).
 *
 * In all of them src points at sample (0, 0) of the whole source image, srcSize is the size of the whole image, and
 * srcRoi the region of it to convert, in source coordinates; dst points at the first pixel of the region's result. The
 * colour of a site depends on its place in the whole image and on the grid only, never on the region, and pixels
 * outside the region are read where the method needs them. Steps are distances between rows in bytes; they are not
 * tested, and may be zero or negative. dst must not overlap the source.
 *
 * Checks, in this order: null pointers (moxStatusNullPtr), the size of the source (moxStatusBadSize), the grid code
 * (moxStatusBadArg). On these nothing is written.
 *
 * @{
 */
#ifndef MOXCC_DEMOSAIC_H
#define MOXCC_DEMOSAIC_H

#include "moxcc/types.h"

MOX_EXTERN_C_BEGIN

/** The Bayer pattern: which colours stand at the upper left of the source image. */
enum {
    moxBayerGridBGGR = 0, /**< Even rows B G B G ..., odd rows G R G R ... */
    moxBayerGridRGGB = 1, /**< Even rows R G R G ..., odd rows G B G B ... */
    moxBayerGridGBRG = 2, /**< Even rows G B G B ..., odd rows R G R G ... */
    moxBayerGridGRBG = 3  /**< Even rows G R G R ..., odd rows B G B G ... */
};
/** One of the patterns above. */
typedef int32_t MoxBayerGrid;

/**
 * Reconstructs 8u R, G, B by bilinear means.
 *
 * Red and blue are rounded means of the two or four nearest sites of their colour. Green at red and blue sites follows
 * the direction, horizontal or vertical, in which the site's own colour changes least over a distance of two on each
 * side, and is the mean of all four neighbours where both change alike, or within two pixels of the image's edges. At
 * the edges the image is continued by reflection.
 *
 * A region that overruns the source on the right or below is cut; one that has a negative origin, or nothing left, is
 * success without any work. The 16u form rounds steps down to whole samples.
 *
 * @param src     sample (0, 0) of the whole source image
 * @param srcRoi  region to convert, in source coordinates
 * @param srcSize size of the whole source image, at least 2 x 2
 * @param srcStep distance between source rows in bytes
 * @param dst     first pixel of the region's result: three interleaved samples, R, G, B
 * @param dstStep distance between destination rows in bytes
 * @param grid    the Bayer pattern
 * @return moxStatusOk, moxStatusNullPtr, moxStatusBadSize or moxStatusBadArg
 */
MOX_API MoxStatus moxiCFAToRGB_8u_C1C3R(const Mox8u* src, MoxiRect srcRoi, MoxiSize srcSize, int32_t srcStep,
                                        Mox8u* dst, int32_t dstStep, MoxBayerGrid grid);

/** Reconstructs 16u R, G, B by bilinear means. @copydetails moxiCFAToRGB_8u_C1C3R */
MOX_API MoxStatus moxiCFAToRGB_16u_C1C3R(const Mox16u* src, MoxiRect srcRoi, MoxiSize srcSize, int32_t srcStep,
                                         Mox16u* dst, int32_t dstStep, MoxBayerGrid grid);

/**
 * Reconstructs 8u B, G, R, A by a variable number of gradients.
 *
 * At each interior pixel eight directional gradients are measured in a window of 5 x 5. The directions whose gradient
 * lies below a threshold, the smallest plus half the largest (at least plus 1), count: the differences between colours
 * are averaged over them, with one single-precision division, converted in the caller's rounding mode, and added to
 * the site's own sample. Results are clipped, then multiplied by their channel's gain in single precision, converted
 * in the caller's rounding mode, and clipped again; the site's own colour gets its gain, too.
 *
 * The fourth sample of interior pixels keeps what the destination held. Pixels of the two outermost rows and columns
 * of the source repeat the nearest interior pixel, with its fourth sample.
 *
 * The region must lie inside the source. One without a pixel in columns 2 to width - 3 and rows 2 to height - 3 is
 * success without any work, as is an empty one. Steps are used as they are.
 *
 * @param src     sample (0, 0) of the whole source image
 * @param srcRoi  region to convert, in source coordinates
 * @param srcSize size of the whole source image, at least 5 x 5
 * @param srcStep distance between source rows in bytes
 * @param scale   gains of B, G and R, or null for gains of 1
 * @param dst     first pixel of the region's result: four interleaved samples, B, G, R, A
 * @param dstStep distance between destination rows in bytes
 * @param grid    the Bayer pattern
 * @return moxStatusOk, moxStatusNullPtr, moxStatusBadSize or moxStatusBadArg
 */
MOX_API MoxStatus moxiCFAToBGRA_VNG_8u_C1C4R_L(const Mox8u* src, MoxiRect srcRoi, MoxiSize srcSize, int32_t srcStep,
                                               const Mox32f* scale, Mox8u* dst, int32_t dstStep, MoxBayerGrid grid);

/** Reconstructs 16u B, G, R, A by a variable number of gradients. @copydetails moxiCFAToBGRA_VNG_8u_C1C4R_L */
MOX_API MoxStatus moxiCFAToBGRA_VNG_16u_C1C4R_L(const Mox16u* src, MoxiRect srcRoi, MoxiSize srcSize, int32_t srcStep,
                                                const Mox32f* scale, Mox16u* dst, int32_t dstStep, MoxBayerGrid grid);

/**
 * The scratch memory that the functions below want.
 *
 * @param width      the width of the region to convert
 * @param sampleSize the size of a sample: sizeof(Mox8u) or sizeof(Mox16u)
 * @param bufferStep receives the least distance between its rows in bytes
 * @return the size of the whole in bytes
 */
static inline int64_t moxiDemosaicAHDGetBufferSize(int32_t width, int32_t sampleSize, int32_t* bufferStep) {
    const int64_t rows = 30;
    *bufferStep = ((width < 6 ? 6 : width) + 8) * sampleSize;
    return rows * *bufferStep;
}

/**
 * Reconstructs 8u R, G, B by adaptive homogeneity-directed interpolation.
 *
 * Every pixel is reconstructed along its row and along its column: green is the mean of the two neighbours on that line
 * plus a quarter of the own colour's second difference, within the neighbours' range; red and blue are green plus the
 * mean difference of colour and green around. In both reconstructions the neighbours are counted that are alike in
 * BT.601 luma and chroma, and the direction with more of them in the 3 x 3 neighbourhood wins. A pixel where both have
 * as many follows the one on its left, and the row's direction at the left end of the region or of the image's
 * interior, so that ties may fall differently in different regions. The image is continued by reflection on all sides.
 *
 * A negative origin of the region counts as 0 and does not shorten the region. One that overruns the source on the
 * right or below is cut; one of which nothing is left is success without any work.
 *
 * @param src        sample (0, 0) of the whole source image
 * @param srcRoi     region to convert, in source coordinates
 * @param srcSize    size of the whole source image, at least 5 x 5
 * @param srcStep    distance between source rows in bytes
 * @param dst        first pixel of the region's result: three interleaved samples, R, G, B
 * @param dstStep    distance between destination rows in bytes
 * @param grid       the Bayer pattern
 * @param buffer     scratch memory of 30 rows, bufferStep bytes apart, of any alignment, as
 *                   moxiDemosaicAHDGetBufferSize() tells; what it holds after the call means nothing. It must not
 *                   overlap source or destination, and is not tested
 * @param bufferStep at least (w + 8) samples in bytes, w being the larger of the region's width and 6; not tested
 * @return moxStatusOk, moxStatusNullPtr, moxStatusBadSize or moxStatusBadArg
 */
MOX_API MoxStatus moxiDemosaicAHD_8u_C1C3R(const Mox8u* src, MoxiRect srcRoi, MoxiSize srcSize, int32_t srcStep,
                                           Mox8u* dst, int32_t dstStep, MoxBayerGrid grid, Mox8u* buffer,
                                           int32_t bufferStep);

/** Reconstructs 16u R, G, B by adaptive homogeneity-directed interpolation. @copydetails moxiDemosaicAHD_8u_C1C3R */
MOX_API MoxStatus moxiDemosaicAHD_16u_C1C3R(const Mox16u* src, MoxiRect srcRoi, MoxiSize srcSize, int32_t srcStep,
                                            Mox16u* dst, int32_t dstStep, MoxBayerGrid grid, Mox8u* buffer,
                                            int32_t bufferStep);

MOX_EXTERN_C_END

/** @} */

#endif
