/* SPDX-License-Identifier: BSD-2-Clause */
/**
 * @defgroup ycocg RGB and YCoCg
 * @ingroup models
 * @brief A luma Y, an orange difference Co and a green difference Cg, by additions and shifts.
 *
 * Pixels are B, G, R in memory (R, G, B in the two 8u forms), with a fourth sample in C4 layouts, which is not read
 * from a source; planes are Y, Co, Cg. The plain transform has Y = (R + 2 G + B + 2) >> 2, Co = (R - B + 1) >> 1, Cg =
 * (2 G - R - B + 2) >> 2 and loses low bits; the Rev forms lift (Co = R - B, t = B + (Co >> 1), Cg = G - t, Y = t + (Cg
 * >> 1)) and return exactly what went in. 16s samples are signed.
 *
 * All functions here: the image pointer, the plane array and its three pointers must not be null (moxStatusNullPtr).
 * Where a function says that it tests the size, a width or height below 1 is moxStatusBadSize after that; elsewhere
 * such a size writes nothing and gives moxStatusOk. Steps are bytes, honoured to the byte and not tested; one step
 * serves all three planes.
 *
 * @{
 */
#ifndef MOXCC_YCOCG_H
#define MOXCC_YCOCG_H

#include "moxcc/types.h"

MOX_EXTERN_C_BEGIN

/**
 * @brief Converts 8u BGR pixels to 16s YCoCg planes. Results always fit. Tests the size.
 *
 * @param src       interleaved pixels
 * @param srcStep   distance between source rows in bytes
 * @param dstPlanes the planes Y, Co, Cg
 * @param dstStep   distance between the rows of each plane in bytes
 * @param roiSize   width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr, or moxStatusBadSize where the size is tested
 */
MOX_API MoxStatus moxiBGRToYCoCg_8u16s_C3P3R(const Mox8u* src, int32_t srcStep, Mox16s* const* dstPlanes,
                                             int32_t dstStep, MoxiSize roiSize);

/**
 * Converts 8u BGR pixels of four samples to 16s YCoCg planes. Results always fit. Tests the size.
 * @copydetails moxiBGRToYCoCg_8u16s_C3P3R
 */
MOX_API MoxStatus moxiBGRToYCoCg_8u16s_C4P3R(const Mox8u* src, int32_t srcStep, Mox16s* const* dstPlanes,
                                             int32_t dstStep, MoxiSize roiSize);
/** Converts 8u BGR pixels to 16s YCoCg planes by lifting. @copydetails moxiBGRToYCoCg_8u16s_C4P3R */
MOX_API MoxStatus moxiBGRToYCoCg_Rev_8u16s_C3P3R(const Mox8u* src, int32_t srcStep, Mox16s* const* dstPlanes,
                                                 int32_t dstStep, MoxiSize roiSize);
/** Converts 8u BGR pixels of four samples to 16s YCoCg planes by lifting. @copydetails moxiBGRToYCoCg_8u16s_C4P3R */
MOX_API MoxStatus moxiBGRToYCoCg_Rev_8u16s_C4P3R(const Mox8u* src, int32_t srcStep, Mox16s* const* dstPlanes,
                                                 int32_t dstStep, MoxiSize roiSize);

/**
 * Converts 8u RGB pixels to 8u YCoCg planes. Co and Cg are stored with an offset of 128, saturated. Tests the size.
 * @copydetails moxiBGRToYCoCg_8u16s_C3P3R
 */
MOX_API MoxStatus moxiRGBToYCoCg_8u_C3P3R(const Mox8u* src, int32_t srcStep, Mox8u* const* dstPlanes, int32_t dstStep,
                                          MoxiSize roiSize);
/** Converts 16s BGR pixels to 32s YCoCg planes. @copydetails moxiBGRToYCoCg_8u16s_C4P3R */
MOX_API MoxStatus moxiSBGRToYCoCg_16s32s_C3P3R(const Mox16s* src, int32_t srcStep, Mox32s* const* dstPlanes,
                                               int32_t dstStep, MoxiSize roiSize);

/**
 * Converts 16s BGR pixels of four samples to 32s YCoCg planes. Results always fit. Does not test the size.
 * @copydetails moxiBGRToYCoCg_8u16s_C3P3R
 */
MOX_API MoxStatus moxiSBGRToYCoCg_16s32s_C4P3R(const Mox16s* src, int32_t srcStep, Mox32s* const* dstPlanes,
                                               int32_t dstStep, MoxiSize roiSize);

/**
 * Converts 16s BGR pixels to 16s YCoCg planes. Results saturate to 16 bits. Tests the size.
 * @copydetails moxiBGRToYCoCg_8u16s_C3P3R
 */
MOX_API MoxStatus moxiSBGRToYCoCg_16s_C3P3R(const Mox16s* src, int32_t srcStep, Mox16s* const* dstPlanes,
                                            int32_t dstStep, MoxiSize roiSize);
/** Converts 16s BGR pixels of four samples to 16s YCoCg planes. @copydetails moxiSBGRToYCoCg_16s_C3P3R */
MOX_API MoxStatus moxiSBGRToYCoCg_16s_C4P3R(const Mox16s* src, int32_t srcStep, Mox16s* const* dstPlanes,
                                            int32_t dstStep, MoxiSize roiSize);
/** Converts 16s BGR pixels to 32s YCoCg planes by lifting. @copydetails moxiBGRToYCoCg_8u16s_C4P3R */
MOX_API MoxStatus moxiSBGRToYCoCg_Rev_16s32s_C3P3R(const Mox16s* src, int32_t srcStep, Mox32s* const* dstPlanes,
                                                   int32_t dstStep, MoxiSize roiSize);
/** Converts 16s BGR pixels of four samples to 32s YCoCg planes by lifting. @copydetails moxiSBGRToYCoCg_16s32s_C4P3R */
MOX_API MoxStatus moxiSBGRToYCoCg_Rev_16s32s_C4P3R(const Mox16s* src, int32_t srcStep, Mox32s* const* dstPlanes,
                                                   int32_t dstStep, MoxiSize roiSize);

/**
 * Converts 16s BGR pixels to 16s YCoCg planes by lifting. Every step wraps to 16 bits, so that the inverse restores all
 * inputs. Does not test the size. @copydetails moxiBGRToYCoCg_8u16s_C3P3R
 */
MOX_API MoxStatus moxiSBGRToYCoCg_Rev_16s_C3P3R(const Mox16s* src, int32_t srcStep, Mox16s* const* dstPlanes,
                                                int32_t dstStep, MoxiSize roiSize);

/**
 * Converts 16s BGR pixels of four samples to 16s YCoCg planes by lifting. @copydetails moxiSBGRToYCoCg_Rev_16s_C3P3R
 */
MOX_API MoxStatus moxiSBGRToYCoCg_Rev_16s_C4P3R(const Mox16s* src, int32_t srcStep, Mox16s* const* dstPlanes,
                                                int32_t dstStep, MoxiSize roiSize);

/**
 * @brief Converts 16s YCoCg planes to 8u BGR pixels. Sums wrap to 16 bits, then saturate to 0 to 255. Does not test the
 * size.
 *
 * @param srcPlanes the planes Y, Co, Cg
 * @param srcStep   distance between the rows of each plane in bytes
 * @param dst       interleaved pixels
 * @param dstStep   distance between destination rows in bytes
 * @param roiSize   width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr, or moxStatusBadSize where the size is tested
 */
MOX_API MoxStatus moxiYCoCgToBGR_16s8u_P3C3R(const Mox16s* const* srcPlanes, int32_t srcStep, Mox8u* dst,
                                             int32_t dstStep, MoxiSize roiSize);

/**
 * @brief Converts 16s YCoCg planes to 8u BGR pixels of four samples. Sums wrap to 16 bits, then saturate to 0 to 255.
 * Does not test the size.
 *
 * @param srcPlanes the planes Y, Co, Cg
 * @param srcStep   distance between the rows of each plane in bytes
 * @param dst       interleaved pixels
 * @param dstStep   distance between destination rows in bytes
 * @param roiSize   width and height in pixels
 * @param aval      the fourth sample of every pixel
 * @return moxStatusOk, moxStatusNullPtr, or moxStatusBadSize where the size is tested
 */
MOX_API MoxStatus moxiYCoCgToBGR_16s8u_P3C4R(const Mox16s* const* srcPlanes, int32_t srcStep, Mox8u* dst,
                                             int32_t dstStep, MoxiSize roiSize, Mox8u aval);

/**
 * Converts 16s YCoCg planes to 8u BGR pixels by lifting. Every step wraps to 16 bits; results saturate to 0 to 255.
 * Does not test the size. @copydetails moxiYCoCgToBGR_16s8u_P3C3R
 */
MOX_API MoxStatus moxiYCoCgToBGR_Rev_16s8u_P3C3R(const Mox16s* const* srcPlanes, int32_t srcStep, Mox8u* dst,
                                                 int32_t dstStep, MoxiSize roiSize);

/**
 * Converts 16s YCoCg planes to 8u BGR pixels of four samples by lifting. Every step wraps to 16 bits; results saturate
 * to 0 to 255. Does not test the size. @copydetails moxiYCoCgToBGR_16s8u_P3C4R
 */
MOX_API MoxStatus moxiYCoCgToBGR_Rev_16s8u_P3C4R(const Mox16s* const* srcPlanes, int32_t srcStep, Mox8u* dst,
                                                 int32_t dstStep, MoxiSize roiSize, Mox8u aval);

/**
 * Converts 8u YCoCg planes to 8u RGB pixels. Co and Cg have an offset of 128; results saturate to 0 to 255. Does not
 * test the size. @copydetails moxiYCoCgToBGR_16s8u_P3C3R
 */
MOX_API MoxStatus moxiYCoCgToRGB_8u_P3C3R(const Mox8u* const* srcPlanes, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                          MoxiSize roiSize);

/**
 * Converts 16s YCoCg planes to 16s BGR pixels. Sums wrap to 16 bits. Does not test the size.
 * @copydetails moxiYCoCgToBGR_16s8u_P3C3R
 */
MOX_API MoxStatus moxiYCoCgToSBGR_16s_P3C3R(const Mox16s* const* srcPlanes, int32_t srcStep, Mox16s* dst,
                                            int32_t dstStep, MoxiSize roiSize);

/**
 * Converts 16s YCoCg planes to 16s BGR pixels of four samples. Sums wrap to 16 bits. Tests the size.
 * @copydetails moxiYCoCgToBGR_16s8u_P3C4R
 */
MOX_API MoxStatus moxiYCoCgToSBGR_16s_P3C4R(const Mox16s* const* srcPlanes, int32_t srcStep, Mox16s* dst,
                                            int32_t dstStep, MoxiSize roiSize, Mox16s aval);

/**
 * Converts 32s YCoCg planes to 16s BGR pixels. Sums wrap to 32 bits; the low 16 bits are stored. Tests the size.
 * @copydetails moxiYCoCgToBGR_16s8u_P3C3R
 */
MOX_API MoxStatus moxiYCoCgToSBGR_32s16s_P3C3R(const Mox32s* const* srcPlanes, int32_t srcStep, Mox16s* dst,
                                               int32_t dstStep, MoxiSize roiSize);

/**
 * Converts 32s YCoCg planes to 16s BGR pixels of four samples. Sums wrap to 32 bits; the low 16 bits are stored. Tests
 * the size. @copydetails moxiYCoCgToBGR_16s8u_P3C4R
 */
MOX_API MoxStatus moxiYCoCgToSBGR_32s16s_P3C4R(const Mox32s* const* srcPlanes, int32_t srcStep, Mox16s* dst,
                                               int32_t dstStep, MoxiSize roiSize, Mox16s aval);

/**
 * Converts 16s YCoCg planes to 16s BGR pixels by lifting. Every step wraps to 16 bits. Does not test the size.
 * @copydetails moxiYCoCgToBGR_16s8u_P3C3R
 */
MOX_API MoxStatus moxiYCoCgToSBGR_Rev_16s_P3C3R(const Mox16s* const* srcPlanes, int32_t srcStep, Mox16s* dst,
                                                int32_t dstStep, MoxiSize roiSize);

/**
 * Converts 16s YCoCg planes to 16s BGR pixels of four samples by lifting. Every step wraps to 16 bits. Does not test
 * the size. @copydetails moxiYCoCgToBGR_16s8u_P3C4R
 */
MOX_API MoxStatus moxiYCoCgToSBGR_Rev_16s_P3C4R(const Mox16s* const* srcPlanes, int32_t srcStep, Mox16s* dst,
                                                int32_t dstStep, MoxiSize roiSize, Mox16s aval);

/**
 * Converts 32s YCoCg planes to 16s BGR pixels by lifting. Sums wrap to 32 bits; the low 16 bits are stored. Does not
 * test the size. @copydetails moxiYCoCgToBGR_16s8u_P3C3R
 */
MOX_API MoxStatus moxiYCoCgToSBGR_Rev_32s16s_P3C3R(const Mox32s* const* srcPlanes, int32_t srcStep, Mox16s* dst,
                                                   int32_t dstStep, MoxiSize roiSize);

/**
 * Converts 32s YCoCg planes to 16s BGR pixels of four samples by lifting. Sums wrap to 32 bits; the low 16 bits are
 * stored. Does not test the size. @copydetails moxiYCoCgToBGR_16s8u_P3C4R
 */
MOX_API MoxStatus moxiYCoCgToSBGR_Rev_32s16s_P3C4R(const Mox32s* const* srcPlanes, int32_t srcStep, Mox16s* dst,
                                                   int32_t dstStep, MoxiSize roiSize, Mox16s aval);

MOX_EXTERN_C_END

/** @} */

#endif
