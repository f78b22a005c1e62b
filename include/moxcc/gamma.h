/**
 * @file
 * Gamma correction by the transfer characteristic of ITU-R BT.709: linear samples to corrected ones (GammaFwd), and
 * back (GammaInv).
 *
 * On the scale 0 to 1, with linear x and corrected y:
 *
 *     forward  y = 4.5 x if x < 0.018, else 1.099 x^0.45 - 0.099
 *     inverse  x = y / 4.5 if y < 0.0812, else ((y + 0.099) / 1.099)^(1 / 0.45)
 *
 * All colour channels go through the same curve. The 8u and 16u forms look each sample up in a table: the curve at
 * i / 255 or i / 65535 times 255 or 65535, rounded to single precision, then to an integer, to nearest with ties to
 * even.
 *
 * All functions here: no pointer may be null (moxStatusNullPtr), width and height must be at least 1
 * (moxStatusBadSize), steps are bytes and must be at least 1 (moxStatusBadStep). In this order the first failure is
 * returned, and nothing has been written.
 */
#ifndef MOXCC_GAMMA_H
#define MOXCC_GAMMA_H

#include "moxcc/types.h"

MOX_EXTERN_C_BEGIN

/**
 * Gamma-corrects 8u interleaved pixels of three channels.
 *
 * @param src     source pixels
 * @param srcStep distance between source rows in bytes
 * @param dst     destination pixels
 * @param dstStep distance between destination rows in bytes
 * @param roiSize width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr, moxStatusBadSize or moxStatusBadStep
 */
MOX_API MoxStatus moxiGammaFwd_8u_C3R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize);

/**
 * Gamma-corrects 8u interleaved pixels of three channels, in place.
 *
 * @param srcDst     the pixels, read and rewritten
 * @param srcDstStep distance between rows in bytes
 * @param roiSize    width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr, moxStatusBadSize or moxStatusBadStep
 */
MOX_API MoxStatus moxiGammaFwd_8u_C3IR(Mox8u* srcDst, int32_t srcDstStep, MoxiSize roiSize);

/**
 * Gamma-corrects 8u interleaved pixels of three channels and alpha.
 *
 * Alpha is neither read nor written: the destination's keeps its value.
 *
 * @param src     source pixels
 * @param srcStep distance between source rows in bytes
 * @param dst     destination pixels
 * @param dstStep distance between destination rows in bytes
 * @param roiSize width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr, moxStatusBadSize or moxStatusBadStep
 */
MOX_API MoxStatus moxiGammaFwd_8u_AC4R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                       MoxiSize roiSize);

/**
 * Gamma-corrects 8u interleaved pixels of three channels and alpha, in place.
 *
 * Alpha is neither read nor written: it keeps its value.
 *
 * @param srcDst     the pixels, read and rewritten
 * @param srcDstStep distance between rows in bytes
 * @param roiSize    width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr, moxStatusBadSize or moxStatusBadStep
 */
MOX_API MoxStatus moxiGammaFwd_8u_AC4IR(Mox8u* srcDst, int32_t srcDstStep, MoxiSize roiSize);

/**
 * Gamma-corrects 8u three planes.
 *
 * @param srcPlanes source planes
 * @param srcStep   distance between source rows in bytes, of each plane
 * @param dstPlanes destination planes
 * @param dstStep   distance between destination rows in bytes, of each plane
 * @param roiSize   width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr, moxStatusBadSize or moxStatusBadStep
 */
MOX_API MoxStatus moxiGammaFwd_8u_P3R(const Mox8u* const srcPlanes[3], int32_t srcStep, Mox8u* const dstPlanes[3],
                                      int32_t dstStep, MoxiSize roiSize);

/**
 * Gamma-corrects 8u three planes, in place.
 *
 * @param srcDstPlanes the planes, read and rewritten
 * @param srcDstStep   distance between rows in bytes, of each plane
 * @param roiSize      width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr, moxStatusBadSize or moxStatusBadStep
 */
MOX_API MoxStatus moxiGammaFwd_8u_IP3R(Mox8u* const srcDstPlanes[3], int32_t srcDstStep, MoxiSize roiSize);

/**
 * Gamma-corrects 16u interleaved pixels of three channels.
 *
 * @param src     source pixels
 * @param srcStep distance between source rows in bytes
 * @param dst     destination pixels
 * @param dstStep distance between destination rows in bytes
 * @param roiSize width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr, moxStatusBadSize or moxStatusBadStep
 */
MOX_API MoxStatus moxiGammaFwd_16u_C3R(const Mox16u* src, int32_t srcStep, Mox16u* dst, int32_t dstStep,
                                       MoxiSize roiSize);

/**
 * Gamma-corrects 16u interleaved pixels of three channels, in place.
 *
 * @param srcDst     the pixels, read and rewritten
 * @param srcDstStep distance between rows in bytes
 * @param roiSize    width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr, moxStatusBadSize or moxStatusBadStep
 */
MOX_API MoxStatus moxiGammaFwd_16u_C3IR(Mox16u* srcDst, int32_t srcDstStep, MoxiSize roiSize);

/**
 * Gamma-corrects 16u interleaved pixels of three channels and alpha.
 *
 * Alpha is neither read nor written: the destination's keeps its value.
 *
 * @param src     source pixels
 * @param srcStep distance between source rows in bytes
 * @param dst     destination pixels
 * @param dstStep distance between destination rows in bytes
 * @param roiSize width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr, moxStatusBadSize or moxStatusBadStep
 */
MOX_API MoxStatus moxiGammaFwd_16u_AC4R(const Mox16u* src, int32_t srcStep, Mox16u* dst, int32_t dstStep,
                                        MoxiSize roiSize);

/**
 * Gamma-corrects 16u interleaved pixels of three channels and alpha, in place.
 *
 * Alpha is neither read nor written: it keeps its value.
 *
 * @param srcDst     the pixels, read and rewritten
 * @param srcDstStep distance between rows in bytes
 * @param roiSize    width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr, moxStatusBadSize or moxStatusBadStep
 */
MOX_API MoxStatus moxiGammaFwd_16u_AC4IR(Mox16u* srcDst, int32_t srcDstStep, MoxiSize roiSize);

/**
 * Gamma-corrects 16u three planes.
 *
 * @param srcPlanes source planes
 * @param srcStep   distance between source rows in bytes, of each plane
 * @param dstPlanes destination planes
 * @param dstStep   distance between destination rows in bytes, of each plane
 * @param roiSize   width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr, moxStatusBadSize or moxStatusBadStep
 */
MOX_API MoxStatus moxiGammaFwd_16u_P3R(const Mox16u* const srcPlanes[3], int32_t srcStep, Mox16u* const dstPlanes[3],
                                       int32_t dstStep, MoxiSize roiSize);

/**
 * Gamma-corrects 16u three planes, in place.
 *
 * @param srcDstPlanes the planes, read and rewritten
 * @param srcDstStep   distance between rows in bytes, of each plane
 * @param roiSize      width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr, moxStatusBadSize or moxStatusBadStep
 */
MOX_API MoxStatus moxiGammaFwd_16u_IP3R(Mox16u* const srcDstPlanes[3], int32_t srcDstStep, MoxiSize roiSize);

/**
 * Takes the gamma correction off 8u interleaved pixels of three channels.
 *
 * @param src     source pixels
 * @param srcStep distance between source rows in bytes
 * @param dst     destination pixels
 * @param dstStep distance between destination rows in bytes
 * @param roiSize width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr, moxStatusBadSize or moxStatusBadStep
 */
MOX_API MoxStatus moxiGammaInv_8u_C3R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize);

/**
 * Takes the gamma correction off 8u interleaved pixels of three channels, in place.
 *
 * @param srcDst     the pixels, read and rewritten
 * @param srcDstStep distance between rows in bytes
 * @param roiSize    width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr, moxStatusBadSize or moxStatusBadStep
 */
MOX_API MoxStatus moxiGammaInv_8u_C3IR(Mox8u* srcDst, int32_t srcDstStep, MoxiSize roiSize);

/**
 * Takes the gamma correction off 8u interleaved pixels of three channels and alpha.
 *
 * Alpha is neither read nor written: the destination's keeps its value.
 *
 * @param src     source pixels
 * @param srcStep distance between source rows in bytes
 * @param dst     destination pixels
 * @param dstStep distance between destination rows in bytes
 * @param roiSize width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr, moxStatusBadSize or moxStatusBadStep
 */
MOX_API MoxStatus moxiGammaInv_8u_AC4R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                       MoxiSize roiSize);

/**
 * Takes the gamma correction off 8u interleaved pixels of three channels and alpha, in place.
 *
 * Alpha is neither read nor written: it keeps its value.
 *
 * @param srcDst     the pixels, read and rewritten
 * @param srcDstStep distance between rows in bytes
 * @param roiSize    width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr, moxStatusBadSize or moxStatusBadStep
 */
MOX_API MoxStatus moxiGammaInv_8u_AC4IR(Mox8u* srcDst, int32_t srcDstStep, MoxiSize roiSize);

/**
 * Takes the gamma correction off 8u three planes.
 *
 * @param srcPlanes source planes
 * @param srcStep   distance between source rows in bytes, of each plane
 * @param dstPlanes destination planes
 * @param dstStep   distance between destination rows in bytes, of each plane
 * @param roiSize   width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr, moxStatusBadSize or moxStatusBadStep
 */
MOX_API MoxStatus moxiGammaInv_8u_P3R(const Mox8u* const srcPlanes[3], int32_t srcStep, Mox8u* const dstPlanes[3],
                                      int32_t dstStep, MoxiSize roiSize);

/**
 * Takes the gamma correction off 8u three planes, in place.
 *
 * @param srcDstPlanes the planes, read and rewritten
 * @param srcDstStep   distance between rows in bytes, of each plane
 * @param roiSize      width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr, moxStatusBadSize or moxStatusBadStep
 */
MOX_API MoxStatus moxiGammaInv_8u_IP3R(Mox8u* const srcDstPlanes[3], int32_t srcDstStep, MoxiSize roiSize);

/**
 * Takes the gamma correction off 16u interleaved pixels of three channels.
 *
 * @param src     source pixels
 * @param srcStep distance between source rows in bytes
 * @param dst     destination pixels
 * @param dstStep distance between destination rows in bytes
 * @param roiSize width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr, moxStatusBadSize or moxStatusBadStep
 */
MOX_API MoxStatus moxiGammaInv_16u_C3R(const Mox16u* src, int32_t srcStep, Mox16u* dst, int32_t dstStep,
                                       MoxiSize roiSize);

/**
 * Takes the gamma correction off 16u interleaved pixels of three channels, in place.
 *
 * @param srcDst     the pixels, read and rewritten
 * @param srcDstStep distance between rows in bytes
 * @param roiSize    width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr, moxStatusBadSize or moxStatusBadStep
 */
MOX_API MoxStatus moxiGammaInv_16u_C3IR(Mox16u* srcDst, int32_t srcDstStep, MoxiSize roiSize);

/**
 * Takes the gamma correction off 16u interleaved pixels of three channels and alpha.
 *
 * Alpha is neither read nor written: the destination's keeps its value.
 *
 * @param src     source pixels
 * @param srcStep distance between source rows in bytes
 * @param dst     destination pixels
 * @param dstStep distance between destination rows in bytes
 * @param roiSize width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr, moxStatusBadSize or moxStatusBadStep
 */
MOX_API MoxStatus moxiGammaInv_16u_AC4R(const Mox16u* src, int32_t srcStep, Mox16u* dst, int32_t dstStep,
                                        MoxiSize roiSize);

/**
 * Takes the gamma correction off 16u interleaved pixels of three channels and alpha, in place.
 *
 * Alpha is neither read nor written: it keeps its value.
 *
 * @param srcDst     the pixels, read and rewritten
 * @param srcDstStep distance between rows in bytes
 * @param roiSize    width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr, moxStatusBadSize or moxStatusBadStep
 */
MOX_API MoxStatus moxiGammaInv_16u_AC4IR(Mox16u* srcDst, int32_t srcDstStep, MoxiSize roiSize);

/**
 * Takes the gamma correction off 16u three planes.
 *
 * @param srcPlanes source planes
 * @param srcStep   distance between source rows in bytes, of each plane
 * @param dstPlanes destination planes
 * @param dstStep   distance between destination rows in bytes, of each plane
 * @param roiSize   width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr, moxStatusBadSize or moxStatusBadStep
 */
MOX_API MoxStatus moxiGammaInv_16u_P3R(const Mox16u* const srcPlanes[3], int32_t srcStep, Mox16u* const dstPlanes[3],
                                       int32_t dstStep, MoxiSize roiSize);

/**
 * Takes the gamma correction off 16u three planes, in place.
 *
 * @param srcDstPlanes the planes, read and rewritten
 * @param srcDstStep   distance between rows in bytes, of each plane
 * @param roiSize      width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr, moxStatusBadSize or moxStatusBadStep
 */
MOX_API MoxStatus moxiGammaInv_16u_IP3R(Mox16u* const srcDstPlanes[3], int32_t srcDstStep, MoxiSize roiSize);

MOX_EXTERN_C_END

#endif
