/* SPDX-License-Identifier: BSD-2-Clause */
/**
 * @defgroup chroma_filter Filtered chroma
 * @ingroup video
 * @brief Changes between 4:2:2 and 4:2:0 that filter chroma: field-wise, with four taps, against interlace flicker, and
 * to BGR.
 *
 * Layouts and chroma orders are those of sampling.h: C2 packed 4:2:2, P2 luma and a plane of chroma pairs, P3 three
 * planes; the order is Cb, Cr where nothing else is said. Steps are bytes and are not tested; step arrays are not
 * tested for null. Source and destination must not overlap. Cut-off columns and rows are not written.
 *
 * @{
 */
#ifndef MOXCC_CHROMA_FILTER_H
#define MOXCC_CHROMA_FILTER_H

#include "moxcc/types.h"

MOX_EXTERN_C_BEGIN

/** @name Field-wise
 * The even and the odd rows are two fields; chroma is resampled within each. Luma is copied. The width is cut to an
 * even number, the height to a multiple of 4. Chroma of 4:2:0 is sited as in interlaced MPEG-2: between two rows of its
 * field, a quarter of the way down in the even field, three quarters in the odd one (@ref siting).
 * @{ */

/**
 * @brief Converts planar 4:2:2 to planar 4:2:0, field by field. Of source chroma rows 4k to 4k + 3: row 2k is
 * (3 c[4k] + c[4k + 2] + 2) >> 2, row 2k + 1 is (c[4k + 1] + 3 c[4k + 3] + 2) >> 2.
 *
 * @param srcPlanes, srcSteps source planes, luma first, and the distances between their rows in bytes
 * @param dstPlanes, dstSteps destination planes, luma first, and the distances between their rows in bytes
 * @param roiSize  width and height in luma pixels, at least 2 by 4
 * @return moxStatusOk; moxStatusOddSize if the width is odd or the height no multiple of 4; moxStatusNullPtr, also for
 *         a null plane, then moxStatusBadSize
 */
MOX_API MoxStatus moxiYCbCr422To420_Interlace_8u_P3R(const Mox8u* const* srcPlanes, const int32_t* srcSteps,
                                                     Mox8u* const* dstPlanes, const int32_t* dstSteps,
                                                     MoxiSize roiSize);
/**
 * Converts packed 4:2:2 (Cb Y0 Cr Y1) to planar 4:2:0, field by field.
 *
 * The arithmetic is that of moxiYCbCr422To420_Interlace_8u_P3R().
 *
 * @param src, srcStep        packed pairs, two bytes a pixel, and the distance between rows in bytes
 * @param dstPlanes, dstSteps destination planes, luma first, and the distances between their rows in bytes
 * @param roiSize  width and height in luma pixels, at least 2 by 4
 * @return moxStatusOk; moxStatusOddSize if the width is odd or the height no multiple of 4; moxStatusNullPtr, also for
 *         a null plane, then moxStatusBadSize
 */
MOX_API MoxStatus moxiCbYCr422ToYCbCr420_Interlace_8u_C2P3R(const Mox8u* src, int32_t srcStep, Mox8u* const* dstPlanes,
                                                            const int32_t* dstSteps, MoxiSize roiSize);
/**
 * Converts planar 4:2:0 to planar 4:2:2, field by field. The first two and the last two chroma rows are copies. Between
 * two chroma rows a, b of the even field lie (5 a + 3 b + 4) >> 3 and (a + 7 b + 4) >> 3; of the odd field
 * (7 a + b + 4) >> 3 and (3 a + 5 b + 4) >> 3. @copydetails moxiYCbCr422To420_Interlace_8u_P3R
 */
MOX_API MoxStatus moxiYCbCr420To422_Interlace_8u_P3R(const Mox8u* const* srcPlanes, const int32_t* srcSteps,
                                                     Mox8u* const* dstPlanes, const int32_t* dstSteps,
                                                     MoxiSize roiSize);
/**
 * Converts planar 4:2:0 to packed 4:2:2 (Cb Y0 Cr Y1), field by field.
 *
 * The arithmetic is that of moxiYCbCr420To422_Interlace_8u_P3R().
 *
 * @param srcPlanes, srcSteps source planes, luma first, and the distances between their rows in bytes
 * @param dst, dstStep        packed pairs, two bytes a pixel, and the distance between rows in bytes
 * @param roiSize  width and height in luma pixels, at least 2 by 4
 * @return moxStatusOk; moxStatusOddSize if the width is odd or the height no multiple of 4; moxStatusNullPtr, also for
 *         a null plane, then moxStatusBadSize
 */
MOX_API MoxStatus moxiYCbCr420ToCbYCr422_Interlace_8u_P3C2R(const Mox8u* const* srcPlanes, const int32_t* srcSteps,
                                                            Mox8u* dst, int32_t dstStep, MoxiSize roiSize);
/** @} */

/** @name Four taps
 * 4:2:0 to 4:2:2. Even chroma rows are copies of the source rows; the rows between are
 * (-c[k - 1] + 9 c[k] + 9 c[k + 1] - c[k + 2] + 8) >> 4, limited to 0 to 255, where rows beyond the first and the last
 * count as these. Luma is copied. The width is cut to an even number, the height to a multiple of 8, without a warning.
 * Right for chroma that is sited on the upper row of its cell (@ref siting).
 * @{ */

/**
 * Converts planar 4:2:0 to planar 4:2:2 with a four-tap filter.
 *
 * @param srcPlanes, srcSteps source planes, luma first, and the distances between their rows in bytes
 * @param dstPlanes, dstSteps destination planes, luma first, and the distances between their rows in bytes
 * @param roiSize  width and height in luma pixels, at least 2 by 8
 * @return moxStatusOk; moxStatusNullPtr, also for a null plane, then moxStatusBadSize
 */
MOX_API MoxStatus moxiYCbCr420ToYCbCr422_Filter_8u_P3R(const Mox8u* const* srcPlanes, const int32_t* srcSteps,
                                                       Mox8u* const* dstPlanes, const int32_t* dstSteps,
                                                       MoxiSize roiSize);
/**
 * Converts planar 4:2:0 with the planes Y, Cr, Cb to planar 4:2:2 with a four-tap filter.
 * @copydetails moxiYCbCr420ToYCbCr422_Filter_8u_P3R
 */
MOX_API MoxStatus moxiYCrCb420ToYCbCr422_Filter_8u_P3R(const Mox8u* const* srcPlanes, const int32_t* srcSteps,
                                                       Mox8u* const* dstPlanes, const int32_t* dstSteps,
                                                       MoxiSize roiSize);
/**
 * Converts semi-planar 4:2:0 to planar 4:2:2 with a four-tap filter.
 *
 * @param srcY, srcYStep       source luma and the distance between its rows in bytes
 * @param srcCbCr, srcCbCrStep source chroma pairs and the distance between their rows
 * @param dstPlanes, dstSteps  destination planes, luma first, and the distances between their rows in bytes
 * @param roiSize  width and height in luma pixels, at least 2 by 8
 * @return moxStatusOk; moxStatusNullPtr, also for a null plane, then moxStatusBadSize
 */
MOX_API MoxStatus moxiYCbCr420ToYCbCr422_Filter_8u_P2P3R(const Mox8u* srcY, int32_t srcYStep, const Mox8u* srcCbCr,
                                                         int32_t srcCbCrStep, Mox8u* const* dstPlanes,
                                                         const int32_t* dstSteps, MoxiSize roiSize);
/** @} */

/** @name Slices
 * Softening against interlace flicker: each luma row is averaged with those above and below, each chroma row with the
 * next, which sites chroma one luma row lower than it was. A picture may be given whole or in slices of even height
 * from top to bottom, the first, any number of middle ones, the last, in source and destination pictures that stay the
 * same. A slice's pointers are those of its first row. Because every row needs the one below it, output runs two luma
 * rows and one chroma row behind input: of a first or middle slice of h rows the last two luma rows are left to the
 * next call, which reads and writes above its own start.
 *
 *     mode             luma rows written   luma rows read   chroma rows read
 *     moxSliceFirst    0 to h - 3          0 to h - 2       0 to h / 2 - 1
 *     moxSliceMiddle   -2 to h - 3         -3 to h - 2      -1 to h / 2 - 1
 *     moxSliceLast     -2 to h - 1         -3 to h - 1      -1 to h / 2 - 1
 *     moxSliceAll      0 to h - 1          0 to h - 1       0 to h / 2 - 1
 *
 * A first slice of two rows writes nothing. Width and height are cut to even numbers. The last chroma row of a picture
 * takes the average of the one above it. Averages are rounded up in whole vectors of columns and mostly down in the
 * rest, so that the two may differ by 1.
 * @{ */

/** Which slice of a picture a call carries. Any value that holds the three bits means the whole; other values do
 * nothing. */
typedef int32_t MoxSliceMode;
enum {
    moxSliceFirst = 1,  /**< The top slice. */
    moxSliceMiddle = 4, /**< A slice between. */
    moxSliceLast = 16,  /**< The bottom slice. */
    moxSliceAll = 21    /**< The whole picture. */
};

/**
 * Softens semi-planar 4:2:0 into packed 4:2:2 (Y0 Cb Y1 Cr).
 *
 * Rows 0 and 1 of a first and the last two of a last slice average in groups of 8 columns, others in groups of 32. In a
 * whole picture the luma of the other columns, and of the first and the last two rows, is 1 above the rounded-down
 * average, limited to 255.
 *
 * @param srcY, srcYStep       source luma and the distance between its rows in bytes
 * @param srcCbCr, srcCbCrStep source chroma pairs and the distance between their rows
 * @param dst, dstStep         packed pairs, two bytes a pixel, and the distance between rows in bytes
 * @param roiSize   width and height of the slice in luma pixels, at least 2 by 2
 * @param sliceMode which slice this is
 * @return moxStatusOk, moxStatusNullPtr, moxStatusBadSize
 */
MOX_API MoxStatus moxiYCbCr420ToYCbCr422_Filter_8u_P2C2R(const Mox8u* srcY, int32_t srcYStep, const Mox8u* srcCbCr,
                                                         int32_t srcCbCrStep, Mox8u* dst, int32_t dstStep,
                                                         MoxiSize roiSize, MoxSliceMode sliceMode);
/**
 * Softens semi-planar 4:2:0 into planar 4:2:0. The first sample of a pair goes to the first chroma plane.
 *
 * Averages in groups of 16 columns. The rounding of first and last slices depends on alignment: those are aligned if
 * the width is a multiple of 64 or one more, the height one of 16, srcYStep and all pointers are multiples of 16, and
 * srcCbCrStep and all dstSteps of 32.
 *
 * @param srcY, srcYStep       source luma and the distance between its rows in bytes
 * @param srcCbCr, srcCbCrStep source chroma pairs and the distance between their rows
 * @param dstPlanes, dstSteps  destination planes, luma first, and the distances between their rows in bytes
 * @param roiSize   width and height of the slice in luma pixels, at least 2 by 2
 * @param sliceMode which slice this is
 * @return moxStatusOk; moxStatusNullPtr for a null argument, moxStatusBadSize below 1 by 1, moxStatusNullPtr for a null
 *         plane, moxStatusBadSize below 2 by 2, in this order
 */
MOX_API MoxStatus moxiYCbCr420ToYCrCb420_Filter_8u_P2P3R(const Mox8u* srcY, int32_t srcYStep, const Mox8u* srcCbCr,
                                                         int32_t srcCbCrStep, Mox8u* const* dstPlanes,
                                                         const int32_t* dstSteps, MoxiSize roiSize,
                                                         MoxSliceMode sliceMode);
/** @} */

/**
 * Converts planar 4:2:0 with the planes Y, Cr, Cb to BGR with a fourth channel, with chroma interpolated across
 * columns.
 *
 * The second pixel of each pair takes the mean of its pair's chroma and the next pair's, the last pair its own; rows
 * are not filtered: chroma is sited as in MPEG-2 (@ref siting). By the BT.601 matrix with 12 fractional bits: R = 1.164
 * y + 1.596 v, G = 1.164 y - 0.813 v - 0.392 u, B = 1.164 y + 2.017 u, with y = Y - 16, u = Cb - 128, v = Cr - 128. In
 * groups of eight pairs before the last pair each term is rounded down to 3 fractional bits, so that results may differ
 * by 1 from those of the other columns.
 *
 * @param srcPlanes, srcSteps source planes Y, Cr, Cb and the distances between their rows in bytes
 * @param dst, dstStep        B, G, R and aval for each pixel, and the distance between rows in bytes
 * @param roiSize  width and height in luma pixels, at least 1 by 1; only whole pairs of columns and rows are written
 * @param aval     the fourth byte of each pixel
 * @return moxStatusOk; moxStatusOddSize if the width or the height is odd; moxStatusNullPtr for a null argument,
 *         moxStatusBadSize, moxStatusNullPtr for a null plane, in this order
 */
MOX_API MoxStatus moxiYCrCb420ToBGR_Filter_8u_P3C4R(const Mox8u* const* srcPlanes, const int32_t* srcSteps, Mox8u* dst,
                                                    int32_t dstStep, MoxiSize roiSize, Mox8u aval);

MOX_EXTERN_C_END

/** @} */

#endif
