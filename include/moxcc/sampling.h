/* SPDX-License-Identifier: BSD-2-Clause */
/**
 * @defgroup sampling Sampling and layout
 * @ingroup video
 * @brief Changes of chroma sampling and of memory layout, without colour arithmetic.
 *
 * Layouts. C2 is packed 4:2:2, two bytes a pixel: luma and one chroma sample in turn. P2 is semi-planar: a luma plane
 * and one plane of chroma pairs. P3 is planar: luma and two chroma planes. Chroma planes have, for a region of w by h
 * pixels, w / 2 columns and h rows (4:2:2), w / 2 and h / 2 (4:2:0), w / 4 and h (4:1:1), or w / 4 and h / 4 (1620).
 * Pairs and planes are in the order Cb, Cr where nothing else is said.
 *
 * Luma is copied. All functions here test their pointers first, plane pointers included (moxStatusNullPtr), then the
 * size (moxStatusBadSize). Sizes are cut to whole chroma cells, and nothing is read or written beyond these; a cut
 * size is no warning. Where a function says nothing else:
 *
 *     changes of                  width                                height
 *     4:2:2 alone                 at least 2, cut to an even number    at least 1
 *     4:2:0 alone or with 4:2:2   at least 2, cut to an even number    at least 2, cut to an even number
 *     4:1:1 alone or with 4:2:2   at least 4, cut to a multiple of 4   any; one below 1 does nothing
 *     4:1:1 with 4:2:0            at least 4, cut to a multiple of 4   at least 2, cut to an even number
 *
 * Steps are bytes and are not tested, zero and negative ones included; step arrays are not tested for null where
 * nothing else is said. Source and destination must not overlap.
 *
 * @{
 */
#ifndef MOXCC_SAMPLING_H
#define MOXCC_SAMPLING_H

#include "moxcc/types.h"

MOX_EXTERN_C_BEGIN

/** @name Same sampling
 * @{ */
/**
 * Converts semi-planar 4:1:1 to planar 4:1:1.
 *
 * @param srcY, srcYStep       source luma and the distance between its rows in bytes
 * @param srcCbCr, srcCbCrStep source chroma pairs, two bytes a chroma column, and the distance between their rows
 * @param dstPlanes, dstSteps  destination planes, luma first, and the distances between their rows in bytes
 * @param roiSize              width and height in luma pixels, by the table of sizes above
 * @return moxStatusOk, moxStatusNullPtr or moxStatusBadSize
 */
MOX_API MoxStatus moxiYCbCr411_8u_P2P3R(const Mox8u* srcY, int32_t srcYStep, const Mox8u* srcCbCr, int32_t srcCbCrStep,
                                        Mox8u* const* dstPlanes, const int32_t* dstSteps, MoxiSize roiSize);

/**
 * Converts planar 4:1:1 to semi-planar 4:1:1.
 *
 * @param srcPlanes, srcSteps  source planes, luma first, and the distances between their rows in bytes
 * @param dstY, dstYStep       destination luma and the distance between its rows in bytes
 * @param dstCbCr, dstCbCrStep destination chroma pairs, two bytes a chroma column, and the distance between their rows
 * @param roiSize              width and height in luma pixels, by the table of sizes above
 * @return moxStatusOk, moxStatusNullPtr or moxStatusBadSize
 */
MOX_API MoxStatus moxiYCbCr411_8u_P3P2R(const Mox8u* const* srcPlanes, const int32_t* srcSteps, Mox8u* dstY,
                                        int32_t dstYStep, Mox8u* dstCbCr, int32_t dstCbCrStep, MoxiSize roiSize);
/** Converts semi-planar 4:2:0 to planar 4:2:0. @copydetails moxiYCbCr411_8u_P2P3R */
MOX_API MoxStatus moxiYCbCr420_8u_P2P3R(const Mox8u* srcY, int32_t srcYStep, const Mox8u* srcCbCr, int32_t srcCbCrStep,
                                        Mox8u* const* dstPlanes, const int32_t* dstSteps, MoxiSize roiSize);
/** Converts planar 4:2:0 to semi-planar 4:2:0. @copydetails moxiYCbCr411_8u_P3P2R */
MOX_API MoxStatus moxiYCbCr420_8u_P3P2R(const Mox8u* const* srcPlanes, const int32_t* srcSteps, Mox8u* dstY,
                                        int32_t dstYStep, Mox8u* dstCbCr, int32_t dstCbCrStep, MoxiSize roiSize);

/**
 * Converts semi-planar 4:2:0 to planar 4:2:0, without exchanging the chroma. In spite of its name the first sample of a
 * pair goes to the first chroma plane, as in moxiYCbCr420_8u_P2P3R(). Its plane pointers are tested behind a size below
 * 1. @copydetails moxiYCbCr411_8u_P2P3R
 */
MOX_API MoxStatus moxiYCbCr420ToYCrCb420_8u_P2P3R(const Mox8u* srcY, int32_t srcYStep, const Mox8u* srcCbCr,
                                                  int32_t srcCbCrStep, Mox8u* const* dstPlanes, const int32_t* dstSteps,
                                                  MoxiSize roiSize);
/** Converts planar 4:2:0 (Y, Cr, Cb) to semi-planar 4:2:0. @copydetails moxiYCbCr411_8u_P3P2R */
MOX_API MoxStatus moxiYCrCb420ToYCbCr420_8u_P3P2R(const Mox8u* const* srcPlanes, const int32_t* srcSteps, Mox8u* dstY,
                                                  int32_t dstYStep, Mox8u* dstCbCr, int32_t dstCbCrStep,
                                                  MoxiSize roiSize);

/**
 * Converts packed 4:2:2 (Y0 Cb Y1 Cr) to planar 4:2:2. A null dstSteps is refused too.
 * @copydetails moxiCbYCr422ToYCbCr422_8u_C2P3R
 */
MOX_API MoxStatus moxiYCbCr422_8u_C2P3R(const Mox8u* src, int32_t srcStep, Mox8u* const* dstPlanes,
                                        const int32_t* dstSteps, MoxiSize roiSize);

/**
 * Converts planar 4:2:2 to packed 4:2:2 (Y0 Cb Y1 Cr).
 *
 * @param srcPlanes, srcSteps source planes, luma first, and the distances between their rows in bytes
 * @param dst                 destination row of packed pairs, two bytes a pixel
 * @param dstStep             distance between destination rows in bytes
 * @param roiSize             width and height in luma pixels, by the table of sizes above
 * @return moxStatusOk, moxStatusNullPtr or moxStatusBadSize
 */
MOX_API MoxStatus moxiYCbCr422_8u_P3C2R(const Mox8u* const* srcPlanes, const int32_t* srcSteps, Mox8u* dst,
                                        int32_t dstStep, MoxiSize roiSize);

/**
 * Converts packed 4:2:2 (Cb Y0 Cr Y1) to planar 4:2:2.
 *
 * @param src                 source row of packed pairs, two bytes a pixel
 * @param srcStep             distance between source rows in bytes
 * @param dstPlanes, dstSteps destination planes, luma first, and the distances between their rows in bytes
 * @param roiSize             width and height in luma pixels, by the table of sizes above
 * @return moxStatusOk, moxStatusNullPtr or moxStatusBadSize
 */
MOX_API MoxStatus moxiCbYCr422ToYCbCr422_8u_C2P3R(const Mox8u* src, int32_t srcStep, Mox8u* const* dstPlanes,
                                                  const int32_t* dstSteps, MoxiSize roiSize);

/**
 * Converts packed 4:2:2 (Cb Y0 Cr Y1) to packed 4:2:2 (Y0 Cb Y1 Cr).
 *
 * @param src     source row of packed pairs, two bytes a pixel
 * @param srcStep distance between source rows in bytes
 * @param dst     destination row of packed pairs, two bytes a pixel
 * @param dstStep distance between destination rows in bytes
 * @param roiSize width and height in luma pixels, by the table of sizes above
 * @return moxStatusOk, moxStatusNullPtr or moxStatusBadSize
 */
MOX_API MoxStatus moxiCbYCr422ToYCbCr422_8u_C2R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                                MoxiSize roiSize);
/** Converts packed 4:2:2 (Y0 Cb Y1 Cr) to packed 4:2:2 (Cb Y0 Cr Y1). @copydetails moxiCbYCr422ToYCbCr422_8u_C2R */
MOX_API MoxStatus moxiYCbCr422ToCbYCr422_8u_C2R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                                MoxiSize roiSize);
/** Converts planar 4:2:2 to packed 4:2:2 (Cb Y0 Cr Y1). @copydetails moxiYCbCr422_8u_P3C2R */
MOX_API MoxStatus moxiYCbCr422ToCbYCr422_8u_P3C2R(const Mox8u* const* srcPlanes, const int32_t* srcSteps, Mox8u* dst,
                                                  int32_t dstStep, MoxiSize roiSize);

/**
 * Converts packed 4:2:2 (Y0 Cb Y1 Cr) to packed 4:2:2 (Y0 Cr Y1 Cb). Any height: one below 1 does nothing.
 * @copydetails moxiCbYCr422ToYCbCr422_8u_C2R
 */
MOX_API MoxStatus moxiYCbCr422ToYCrCb422_8u_C2R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                                MoxiSize roiSize);

/**
 * Converts planar 4:2:2 to packed 4:2:2 (Y0 Cr Y1 Cb). Any height: one below 1 does nothing.
 * @copydetails moxiYCbCr422_8u_P3C2R
 */
MOX_API MoxStatus moxiYCbCr422ToYCrCb422_8u_P3C2R(const Mox8u* const* srcPlanes, const int32_t* srcSteps, Mox8u* dst,
                                                  int32_t dstStep, MoxiSize roiSize);
/** Converts packed 4:2:2 (Y0 Cr Y1 Cb) to planar 4:2:2. @copydetails moxiCbYCr422ToYCbCr422_8u_C2P3R */
MOX_API MoxStatus moxiYCrCb422ToYCbCr422_8u_C2P3R(const Mox8u* src, int32_t srcStep, Mox8u* const* dstPlanes,
                                                  const int32_t* dstSteps, MoxiSize roiSize);

/** @} */

/** @name 4:2:2 to 4:2:0: the chroma of odd rows is dropped
 * The chroma that is left is sited on the even rows, the upper of each cell.
 * @{ */
/**
 * @brief Converts packed 4:2:2 (Cb Y0 Cr Y1) to semi-planar 4:2:0. Chroma: the even rows go on unchanged, the odd rows
 * are dropped; rows are not averaged.
 *
 * @param src                  source row of packed pairs, two bytes a pixel
 * @param srcStep              distance between source rows in bytes
 * @param dstY, dstYStep       destination luma and the distance between its rows in bytes
 * @param dstCbCr, dstCbCrStep destination chroma pairs, two bytes a chroma column, and the distance between their rows
 * @param roiSize              width and height in luma pixels, by the table of sizes above
 * @return moxStatusOk, moxStatusNullPtr or moxStatusBadSize
 */
MOX_API MoxStatus moxiCbYCr422ToYCbCr420_8u_C2P2R(const Mox8u* src, int32_t srcStep, Mox8u* dstY, int32_t dstYStep,
                                                  Mox8u* dstCbCr, int32_t dstCbCrStep, MoxiSize roiSize);

/**
 * Converts packed 4:2:2 (Cb Y0 Cr Y1) to planar 4:2:0. Chroma: the even rows go on unchanged, the odd rows are dropped;
 * rows are not averaged. @copydetails moxiCbYCr422ToYCbCr422_8u_C2P3R
 */
MOX_API MoxStatus moxiCbYCr422ToYCbCr420_8u_C2P3R(const Mox8u* src, int32_t srcStep, Mox8u* const* dstPlanes,
                                                  const int32_t* dstSteps, MoxiSize roiSize);

/**
 * Converts packed 4:2:2 (Y0 Cb Y1 Cr) to semi-planar 4:2:0. Chroma: the even rows go on unchanged, the odd rows are
 * dropped; rows are not averaged. @copydetails moxiCbYCr422ToYCbCr420_8u_C2P2R
 */
MOX_API MoxStatus moxiYCbCr422ToYCbCr420_8u_C2P2R(const Mox8u* src, int32_t srcStep, Mox8u* dstY, int32_t dstYStep,
                                                  Mox8u* dstCbCr, int32_t dstCbCrStep, MoxiSize roiSize);
/** Converts packed 4:2:2 (Y0 Cb Y1 Cr) to planar 4:2:0. @copydetails moxiCbYCr422ToYCbCr420_8u_C2P3R */
MOX_API MoxStatus moxiYCbCr422ToYCbCr420_8u_C2P3R(const Mox8u* src, int32_t srcStep, Mox8u* const* dstPlanes,
                                                  const int32_t* dstSteps, MoxiSize roiSize);

/**
 * Converts planar 4:2:2 to semi-planar 4:2:0. Chroma: the even rows go on unchanged, the odd rows are dropped; rows are
 * not averaged. @copydetails moxiYCbCr411_8u_P3P2R
 */
MOX_API MoxStatus moxiYCbCr422ToYCbCr420_8u_P3P2R(const Mox8u* const* srcPlanes, const int32_t* srcSteps, Mox8u* dstY,
                                                  int32_t dstYStep, Mox8u* dstCbCr, int32_t dstCbCrStep,
                                                  MoxiSize roiSize);

/**
 * @brief Converts planar 4:2:2 to planar 4:2:0. Chroma: the even rows go on unchanged, the odd rows are dropped; rows
 * are not averaged.
 *
 * @param srcPlanes, srcSteps source planes, luma first, and the distances between their rows in bytes
 * @param dstPlanes, dstSteps destination planes, luma first, and the distances between their rows in bytes
 * @param roiSize             width and height in luma pixels, by the table of sizes above
 * @return moxStatusOk, moxStatusNullPtr or moxStatusBadSize
 */
MOX_API MoxStatus moxiYCbCr422ToYCbCr420_8u_P3R(const Mox8u* const* srcPlanes, const int32_t* srcSteps,
                                                Mox8u* const* dstPlanes, const int32_t* dstSteps, MoxiSize roiSize);
/** Converts packed 4:2:2 (Cb Y0 Cr Y1) to planar 4:2:0 (Y, Cr, Cb). @copydetails moxiCbYCr422ToYCbCr420_8u_C2P3R */
MOX_API MoxStatus moxiCbYCr422ToYCrCb420_8u_C2P3R(const Mox8u* src, int32_t srcStep, Mox8u* const* dstPlanes,
                                                  const int32_t* dstSteps, MoxiSize roiSize);

/**
 * Converts packed 4:2:2 (Y0 Cb Y1 Cr) to semi-planar 4:2:0 (pairs Cr Cb). @copydetails moxiYCbCr422ToYCbCr420_8u_C2P2R
 */
MOX_API MoxStatus moxiYCbCr422ToYCrCb420_8u_C2P2R(const Mox8u* src, int32_t srcStep, Mox8u* dstY, int32_t dstYStep,
                                                  Mox8u* dstCbCr, int32_t dstCbCrStep, MoxiSize roiSize);
/** Converts packed 4:2:2 (Y0 Cb Y1 Cr) to planar 4:2:0 (Y, Cr, Cb). @copydetails moxiCbYCr422ToYCbCr420_8u_C2P3R */
MOX_API MoxStatus moxiYCbCr422ToYCrCb420_8u_C2P3R(const Mox8u* src, int32_t srcStep, Mox8u* const* dstPlanes,
                                                  const int32_t* dstSteps, MoxiSize roiSize);
/** Converts packed 4:2:2 (Y0 Cr Y1 Cb) to planar 4:2:0. @copydetails moxiCbYCr422ToYCbCr420_8u_C2P3R */
MOX_API MoxStatus moxiYCrCb422ToYCbCr420_8u_C2P3R(const Mox8u* src, int32_t srcStep, Mox8u* const* dstPlanes,
                                                  const int32_t* dstSteps, MoxiSize roiSize);

/** @} */

/** @name 4:2:0 to 4:2:2: each chroma row is written twice
 * Right for chroma that is sited between the two rows of a cell.
 * @{ */
/**
 * @brief Converts semi-planar 4:2:0 to packed 4:2:2 (Cb Y0 Cr Y1). Chroma: each row is written to two rows, unchanged;
 * there is no interpolation.
 *
 * @param srcY, srcYStep       source luma and the distance between its rows in bytes
 * @param srcCbCr, srcCbCrStep source chroma pairs, two bytes a chroma column, and the distance between their rows
 * @param dst                  destination row of packed pairs, two bytes a pixel
 * @param dstStep              distance between destination rows in bytes
 * @param roiSize              width and height in luma pixels, by the table of sizes above
 * @return moxStatusOk, moxStatusNullPtr or moxStatusBadSize
 */
MOX_API MoxStatus moxiYCbCr420ToCbYCr422_8u_P2C2R(const Mox8u* srcY, int32_t srcYStep, const Mox8u* srcCbCr,
                                                  int32_t srcCbCrStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize);

/**
 * Converts semi-planar 4:2:0 to packed 4:2:2 (Y0 Cb Y1 Cr). Chroma: each row is written to two rows, unchanged; there
 * is no interpolation. @copydetails moxiYCbCr420ToCbYCr422_8u_P2C2R
 */
MOX_API MoxStatus moxiYCbCr420ToYCbCr422_8u_P2C2R(const Mox8u* srcY, int32_t srcYStep, const Mox8u* srcCbCr,
                                                  int32_t srcCbCrStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize);

/**
 * Converts semi-planar 4:2:0 to planar 4:2:2. Chroma: each row is written to two rows, unchanged; there is no
 * interpolation. @copydetails moxiYCbCr411_8u_P2P3R
 */
MOX_API MoxStatus moxiYCbCr420ToYCbCr422_8u_P2P3R(const Mox8u* srcY, int32_t srcYStep, const Mox8u* srcCbCr,
                                                  int32_t srcCbCrStep, Mox8u* const* dstPlanes, const int32_t* dstSteps,
                                                  MoxiSize roiSize);

/**
 * Converts planar 4:2:0 to planar 4:2:2. Chroma: each row is written to two rows, unchanged; there is no interpolation.
 * @copydetails moxiYCbCr422ToYCbCr420_8u_P3R
 */
MOX_API MoxStatus moxiYCbCr420ToYCbCr422_8u_P3R(const Mox8u* const* srcPlanes, const int32_t* srcSteps,
                                                Mox8u* const* dstPlanes, const int32_t* dstSteps, MoxiSize roiSize);

/**
 * Converts planar 4:2:0 (Y, Cr, Cb) to packed 4:2:2 (Cb Y0 Cr Y1). Chroma: each row is written to two rows, unchanged;
 * there is no interpolation. @copydetails moxiYCbCr422_8u_P3C2R
 */
MOX_API MoxStatus moxiYCrCb420ToCbYCr422_8u_P3C2R(const Mox8u* const* srcPlanes, const int32_t* srcSteps, Mox8u* dst,
                                                  int32_t dstStep, MoxiSize roiSize);
/** Converts planar 4:2:0 (Y, Cr, Cb) to packed 4:2:2 (Y0 Cb Y1 Cr). @copydetails moxiYCrCb420ToCbYCr422_8u_P3C2R */
MOX_API MoxStatus moxiYCrCb420ToYCbCr422_8u_P3C2R(const Mox8u* const* srcPlanes, const int32_t* srcSteps, Mox8u* dst,
                                                  int32_t dstStep, MoxiSize roiSize);
/** Converts planar 4:2:0 (Y, Cr, Cb) to planar 4:2:2. @copydetails moxiYCbCr420ToYCbCr422_8u_P3R */
MOX_API MoxStatus moxiYCrCb420ToYCbCr422_8u_P3R(const Mox8u* const* srcPlanes, const int32_t* srcSteps,
                                                Mox8u* const* dstPlanes, const int32_t* dstSteps, MoxiSize roiSize);

/** @} */

/** @name 4:2:2 to 4:1:1: the chroma of odd columns is dropped
 * The chroma that is left is sited as it was in the left pair of each cell.
 * @{ */
/**
 * Converts packed 4:2:2 (Cb Y0 Cr Y1) to planar 4:1:1. Chroma: the even columns go on unchanged, the odd columns are
 * dropped. @copydetails moxiCbYCr422ToYCbCr422_8u_C2P3R
 */
MOX_API MoxStatus moxiCbYCr422ToYCbCr411_8u_C2P3R(const Mox8u* src, int32_t srcStep, Mox8u* const* dstPlanes,
                                                  const int32_t* dstSteps, MoxiSize roiSize);

/**
 * Converts packed 4:2:2 (Y0 Cb Y1 Cr) to semi-planar 4:1:1. Chroma: the even columns go on unchanged, the odd columns
 * are dropped. @copydetails moxiCbYCr422ToYCbCr420_8u_C2P2R
 */
MOX_API MoxStatus moxiYCbCr422ToYCbCr411_8u_C2P2R(const Mox8u* src, int32_t srcStep, Mox8u* dstY, int32_t dstYStep,
                                                  Mox8u* dstCbCr, int32_t dstCbCrStep, MoxiSize roiSize);

/**
 * Converts packed 4:2:2 (Y0 Cb Y1 Cr) to planar 4:1:1. Chroma: the even columns go on unchanged, the odd columns are
 * dropped. The height must be at least 1. @copydetails moxiCbYCr422ToYCbCr422_8u_C2P3R
 */
MOX_API MoxStatus moxiYCbCr422ToYCbCr411_8u_C2P3R(const Mox8u* src, int32_t srcStep, Mox8u* const* dstPlanes,
                                                  const int32_t* dstSteps, MoxiSize roiSize);

/**
 * Converts planar 4:2:2 to semi-planar 4:1:1. Chroma: the even columns go on unchanged, the odd columns are dropped.
 * @copydetails moxiYCbCr411_8u_P3P2R
 */
MOX_API MoxStatus moxiYCbCr422ToYCbCr411_8u_P3P2R(const Mox8u* const* srcPlanes, const int32_t* srcSteps, Mox8u* dstY,
                                                  int32_t dstYStep, Mox8u* dstCbCr, int32_t dstCbCrStep,
                                                  MoxiSize roiSize);

/**
 * Converts planar 4:2:2 to planar 4:1:1. Chroma: the even columns go on unchanged, the odd columns are dropped.
 * @copydetails moxiYCbCr422ToYCbCr420_8u_P3R
 */
MOX_API MoxStatus moxiYCbCr422ToYCbCr411_8u_P3R(const Mox8u* const* srcPlanes, const int32_t* srcSteps,
                                                Mox8u* const* dstPlanes, const int32_t* dstSteps, MoxiSize roiSize);
/** Converts packed 4:2:2 (Y0 Cr Y1 Cb) to planar 4:1:1. @copydetails moxiCbYCr422ToYCbCr411_8u_C2P3R */
MOX_API MoxStatus moxiYCrCb422ToYCbCr411_8u_C2P3R(const Mox8u* src, int32_t srcStep, Mox8u* const* dstPlanes,
                                                  const int32_t* dstSteps, MoxiSize roiSize);

/** @} */

/** @name 4:1:1 to 4:2:2: each chroma sample is written twice
 * Right for chroma that is sited in the middle of a cell of four columns.
 * @{ */
/**
 * Converts semi-planar 4:1:1 to packed 4:2:2 (Y0 Cb Y1 Cr). Chroma: each sample is written to two columns, unchanged.
 * @copydetails moxiYCbCr420ToCbYCr422_8u_P2C2R
 */
MOX_API MoxStatus moxiYCbCr411ToYCbCr422_8u_P2C2R(const Mox8u* srcY, int32_t srcYStep, const Mox8u* srcCbCr,
                                                  int32_t srcCbCrStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize);

/**
 * Converts semi-planar 4:1:1 to planar 4:2:2. Chroma: each sample is written to two columns, unchanged.
 * @copydetails moxiYCbCr411_8u_P2P3R
 */
MOX_API MoxStatus moxiYCbCr411ToYCbCr422_8u_P2P3R(const Mox8u* srcY, int32_t srcYStep, const Mox8u* srcCbCr,
                                                  int32_t srcCbCrStep, Mox8u* const* dstPlanes, const int32_t* dstSteps,
                                                  MoxiSize roiSize);

/**
 * Converts planar 4:1:1 to packed 4:2:2 (Y0 Cb Y1 Cr). Chroma: each sample is written to two columns, unchanged.
 * @copydetails moxiYCbCr422_8u_P3C2R
 */
MOX_API MoxStatus moxiYCbCr411ToYCbCr422_8u_P3C2R(const Mox8u* const* srcPlanes, const int32_t* srcSteps, Mox8u* dst,
                                                  int32_t dstStep, MoxiSize roiSize);

/**
 * Converts planar 4:1:1 to planar 4:2:2. Chroma: each sample is written to two columns, unchanged.
 * @copydetails moxiYCbCr422ToYCbCr420_8u_P3R
 */
MOX_API MoxStatus moxiYCbCr411ToYCbCr422_8u_P3R(const Mox8u* const* srcPlanes, const int32_t* srcSteps,
                                                Mox8u* const* dstPlanes, const int32_t* dstSteps, MoxiSize roiSize);
/** Converts planar 4:1:1 to packed 4:2:2 (Y0 Cr Y1 Cb). @copydetails moxiYCbCr411ToYCbCr422_8u_P3C2R */
MOX_API MoxStatus moxiYCbCr411ToYCrCb422_8u_P3C2R(const Mox8u* const* srcPlanes, const int32_t* srcSteps, Mox8u* dst,
                                                  int32_t dstStep, MoxiSize roiSize);
/** Converts planar 4:1:1 to planar 4:2:2 (Y, Cr, Cb). @copydetails moxiYCbCr411ToYCbCr422_8u_P3R */
MOX_API MoxStatus moxiYCbCr411ToYCrCb422_8u_P3R(const Mox8u* const* srcPlanes, const int32_t* srcSteps,
                                                Mox8u* const* dstPlanes, const int32_t* dstSteps, MoxiSize roiSize);

/** @} */

/** @name 4:1:1 to 4:2:0: two chroma rows become the even and the odd columns of one
 * All chroma samples are kept, but not sited where 4:2:0 has them: for the way back, not for display.
 * @{ */
/**
 * Converts semi-planar 4:1:1 to planar 4:2:0. Chroma is rearranged, not resampled: sample i of the even source rows
 * goes to column 2i of the destination row, sample i of the odd rows to column 2i + 1.
 * @copydetails moxiYCbCr411_8u_P2P3R
 */
MOX_API MoxStatus moxiYCbCr411ToYCbCr420_8u_P2P3R(const Mox8u* srcY, int32_t srcYStep, const Mox8u* srcCbCr,
                                                  int32_t srcCbCrStep, Mox8u* const* dstPlanes, const int32_t* dstSteps,
                                                  MoxiSize roiSize);

/**
 * Converts planar 4:1:1 to semi-planar 4:2:0. Chroma is rearranged, not resampled: sample i of the even source rows
 * goes to column 2i of the destination row, sample i of the odd rows to column 2i + 1.
 * @copydetails moxiYCbCr411_8u_P3P2R
 */
MOX_API MoxStatus moxiYCbCr411ToYCbCr420_8u_P3P2R(const Mox8u* const* srcPlanes, const int32_t* srcSteps, Mox8u* dstY,
                                                  int32_t dstYStep, Mox8u* dstCbCr, int32_t dstCbCrStep,
                                                  MoxiSize roiSize);

/**
 * Converts planar 4:1:1 to planar 4:2:0. Chroma is rearranged, not resampled: sample i of the even source rows goes to
 * column 2i of the destination row, sample i of the odd rows to column 2i + 1.
 * @copydetails moxiYCbCr422ToYCbCr420_8u_P3R
 */
MOX_API MoxStatus moxiYCbCr411ToYCbCr420_8u_P3R(const Mox8u* const* srcPlanes, const int32_t* srcSteps,
                                                Mox8u* const* dstPlanes, const int32_t* dstSteps, MoxiSize roiSize);
/** Converts semi-planar 4:1:1 to planar 4:2:0 (Y, Cr, Cb). @copydetails moxiYCbCr411ToYCbCr420_8u_P2P3R */
MOX_API MoxStatus moxiYCbCr411ToYCrCb420_8u_P2P3R(const Mox8u* srcY, int32_t srcYStep, const Mox8u* srcCbCr,
                                                  int32_t srcCbCrStep, Mox8u* const* dstPlanes, const int32_t* dstSteps,
                                                  MoxiSize roiSize);

/** @} */

/** @name 4:2:0 to 4:1:1: the even and the odd chroma columns of a row become two rows
 * All chroma samples are kept, but not sited where 4:1:1 has them: for the way back, not for display.
 * @{ */
/**
 * Converts semi-planar 4:2:0 to planar 4:1:1. Chroma is rearranged, not resampled: the samples of even columns make the
 * even destination row, those of odd columns the odd row. @copydetails moxiYCbCr411_8u_P2P3R
 */
MOX_API MoxStatus moxiYCbCr420ToYCbCr411_8u_P2P3R(const Mox8u* srcY, int32_t srcYStep, const Mox8u* srcCbCr,
                                                  int32_t srcCbCrStep, Mox8u* const* dstPlanes, const int32_t* dstSteps,
                                                  MoxiSize roiSize);

/**
 * Converts planar 4:2:0 to semi-planar 4:1:1. Chroma is rearranged, not resampled: the samples of even columns make the
 * even destination row, those of odd columns the odd row. @copydetails moxiYCbCr411_8u_P3P2R
 */
MOX_API MoxStatus moxiYCbCr420ToYCbCr411_8u_P3P2R(const Mox8u* const* srcPlanes, const int32_t* srcSteps, Mox8u* dstY,
                                                  int32_t dstYStep, Mox8u* dstCbCr, int32_t dstCbCrStep,
                                                  MoxiSize roiSize);
/** Converts planar 4:2:0 (Y, Cr, Cb) to semi-planar 4:1:1. @copydetails moxiYCbCr420ToYCbCr411_8u_P3P2R */
MOX_API MoxStatus moxiYCrCb420ToYCbCr411_8u_P3P2R(const Mox8u* const* srcPlanes, const int32_t* srcSteps, Mox8u* dstY,
                                                  int32_t dstYStep, Mox8u* dstCbCr, int32_t dstCbCrStep,
                                                  MoxiSize roiSize);

/** @} */

/** @name Plane-wise resampling
 * Luma is copied; each chroma plane is resampled by itself, plane 1 to plane 1, plane 2 to plane 2. Averages are
 * (a + b + 1) >> 1 in the columns that the text says, (a + b) >> 1 in all others. The sizes have no remainder: others
 * are refused. Chroma is sited on the first column and row of its cell, on both sides (@ref siting).
 * @{ */
/**
 * Converts planar 4:1:1 to planar 4:2:0 by interpolated columns. Even chroma rows go on, odd rows are dropped. Even
 * columns are the source samples, odd columns the average of their two neighbours, the last one a copy of its left
 * neighbour. Rounded up for source columns below 16 * floor((cw - 1) / 16), with cw = width / 4. The width must be at
 * least 4 and a multiple of 4, the height at least 4 and a multiple of 4. @copydetails moxiYCbCr422ToYCbCr420_8u_P3R
 */
MOX_API MoxStatus moxiYCbCr411To420_8u_P3R(const Mox8u* const* srcPlanes, const int32_t* srcSteps,
                                           Mox8u* const* dstPlanes, const int32_t* dstSteps, MoxiSize roiSize);

/**
 * Converts planar 4:2:0 to planar 4:1:1 by interpolated rows. Even chroma columns go on, odd columns are dropped. Even
 * rows are the source samples, odd rows the average of the source rows above and below, the last one a copy of the row
 * above. Rounded up for destination columns below 32 * floor(cw / 32), with cw = width / 4. The width must be at least
 * 4 and a multiple of 4, the height at least 2 and even. @copydetails moxiYCbCr422ToYCbCr420_8u_P3R
 */
MOX_API MoxStatus moxiYCbCr420To411_8u_P3R(const Mox8u* const* srcPlanes, const int32_t* srcSteps,
                                           Mox8u* const* dstPlanes, const int32_t* dstSteps, MoxiSize roiSize);

/**
 * Converts planar 4:2:0 to planar chroma of one sample for 4 by 4 pixels, without a filter. Chroma sample (row r,
 * column i) is source sample (2r, 2i). The width must be at least 4 and a multiple of 4, the height at least 4 and a
 * multiple of 4. @copydetails moxiYCbCr422ToYCbCr420_8u_P3R
 */
MOX_API MoxStatus moxiYCbCr420To1620_8u_P3R(const Mox8u* const* srcPlanes, const int32_t* srcSteps,
                                            Mox8u* const* dstPlanes, const int32_t* dstSteps, MoxiSize roiSize);

/**
 * Converts planar chroma of one sample for 4 by 4 pixels to planar 4:2:0, doubled in both directions by interpolation.
 * Between columns and rows stand averages, in the middle of four samples the average of the two row averages. The last
 * column and the last row pair repeat the samples before them. Rounded up for source columns below 16 * floor((cw - 1)
 * / 16), with cw = width / 4. The width must be at least 4 and a multiple of 4, the height at least 4 and a multiple of
 * 4. @copydetails moxiYCbCr422ToYCbCr420_8u_P3R
 */
MOX_API MoxStatus moxiYCbCr1620To420_8u_P3R(const Mox8u* const* srcPlanes, const int32_t* srcSteps,
                                            Mox8u* const* dstPlanes, const int32_t* dstSteps, MoxiSize roiSize);

/** @} */

/**
 * Takes the luma of packed 4:2:2 (Y0 Cb Y1 Cr): the even bytes.
 *
 * @param src     source row of packed pairs, two bytes a pixel
 * @param srcStep distance between source rows in bytes
 * @param dst     one luma sample a pixel
 * @param dstStep distance between destination rows in bytes
 * @param roiSize width and height in pixels, at least 1 by 1; of an odd width the last pixel's luma is taken too
 * @return moxStatusOk, moxStatusNullPtr or moxStatusBadSize
 */
MOX_API MoxStatus moxiYCbCr422ToGray_8u_C2C1R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                              MoxiSize roiSize);

MOX_EXTERN_C_END

/** @} */

#endif
