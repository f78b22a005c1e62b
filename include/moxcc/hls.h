/* SPDX-License-Identifier: BSD-2-Clause */
/**
 * @defgroup hls RGB and HLS
 * @ingroup models
 * @brief Hue, lightness and saturation: the double-hexcone model of computer graphics (Smith, Joblove and Greenberg,
 * 1978).
 *
 * With mx and mn the greatest and the least of R, G, B on a scale from 0 to 1:
 *
 *     L = (mx + mn) / 2
 *     S = (mx - mn) / (mx + mn) if L <= 0.5, else (mx - mn) / (2 - mx - mn)
 *     H = 60 * (G - B) / (mx - mn) if R is mx, 120 + 60 * (B - R) / (mx - mn) if G is mx, else
 *         240 + 60 * (R - G) / (mx - mn), in degrees from 0 to 360; a negative H takes a turn more
 *
 * and back, with m2 = L (1 + S) if L <= 0.5, else L + S - L S, and m1 = 2 L - m2:
 *
 *     R = v(H + 120), G = v(H), B = v(H - 120), where v(h), h brought to 0 to 360, is
 *     m1 + (m2 - m1) h / 60 below 60, m2 below 180, m1 + (m2 - m1) (240 - h) / 60 below 240, else m1
 *
 * Grays have H = 0 and S = 0. Samples hold H as a fraction of the circle, L and S as fractions: 0 to 255 (8u), 0 to
 * 65535 (16u), -32768 to 32767 (16s), 0 to 1 (32f).
 *
 * All forms compute in single precision and in the caller's rounding mode. The columns of vector groups and the last
 * columns of a row follow recipes of their own, which can differ by 1 in an integer sample. Integer forms to HLS, and
 * some columns of moxiHLSToRGB_8u_C3R, use the processor's approximate reciprocal, refined or as it is, so that results
 * may differ between makes of processor.
 *
 * All functions here: no pointer may be null, planes included (moxStatusNullPtr); width and height must be at least 1
 * (moxStatusBadSize). Steps are bytes. Between RGB and HLS they are not tested, zero and negative ones included, and
 * the 16u, 16s and 32f forms round them down to a whole number of samples. Between BGR and HLS they must be at least 1
 * (moxStatusBadStep), which is tested before the size, but in moxiBGRToHLS_8u_AC4R after it. One step holds for all
 * planes of a side.
 *
 * Alpha: in AC4R forms the fourth sample of a source pixel is not read, and that of a destination pixel keeps what it
 * held. Forms with a plane of alpha (AC4P4R, AP4C4R, AP4R) copy it.
 *
 * @{
 */
#ifndef MOXCC_HLS_H
#define MOXCC_HLS_H

#include "moxcc/types.h"

MOX_EXTERN_C_BEGIN

/**
 * @brief Converts 8u pixels from RGB to HLS. The width rounded down to a multiple of 8 is computed with approximate
 * reciprocals and converted in the caller's rounding mode; the last columns use refined reciprocals and truncate.
 *
 * @param src     source pixels, the samples in the order told above
 * @param srcStep distance between source rows in bytes
 * @param dst     destination pixels, the samples in the order told above
 * @param dstStep distance between destination rows in bytes
 * @param roiSize width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr or moxStatusBadSize
 */
MOX_API MoxStatus moxiRGBToHLS_8u_C3R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize);

/**
 * Converts 8u pixels with alpha from RGB to HLS. The width rounded down to a multiple of 4 is computed with approximate
 * reciprocals, the last columns with refined ones; all are converted in the caller's rounding mode.
 * @copydetails moxiRGBToHLS_8u_C3R
 */
MOX_API MoxStatus moxiRGBToHLS_8u_AC4R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                       MoxiSize roiSize);

/**
 * Converts 16u pixels from RGB to HLS. Refined reciprocals. The width rounded down to a multiple of 4 is converted in
 * the caller's rounding mode; the last columns truncate. @copydetails moxiRGBToHLS_8u_C3R
 */
MOX_API MoxStatus moxiRGBToHLS_16u_C3R(const Mox16u* src, int32_t srcStep, Mox16u* dst, int32_t dstStep,
                                       MoxiSize roiSize);
/** Converts 16u pixels with alpha from RGB to HLS. @copydetails moxiRGBToHLS_16u_C3R */
MOX_API MoxStatus moxiRGBToHLS_16u_AC4R(const Mox16u* src, int32_t srcStep, Mox16u* dst, int32_t dstStep,
                                        MoxiSize roiSize);

/**
 * Converts 16s pixels from RGB to HLS. As the 16u form on samples biased by 32768: a hue of 0 degrees is -32768, and so
 * is a saturation of 0. @copydetails moxiRGBToHLS_8u_C3R
 */
MOX_API MoxStatus moxiRGBToHLS_16s_C3R(const Mox16s* src, int32_t srcStep, Mox16s* dst, int32_t dstStep,
                                       MoxiSize roiSize);
/** Converts 16s pixels with alpha from RGB to HLS. @copydetails moxiRGBToHLS_16s_C3R */
MOX_API MoxStatus moxiRGBToHLS_16s_AC4R(const Mox16s* src, int32_t srcStep, Mox16s* dst, int32_t dstStep,
                                        MoxiSize roiSize);

/**
 * Converts 32f pixels from RGB to HLS. True divisions in all columns. Pixels whose channels differ by at most 2^-23
 * count as gray. Values outside 0 to 1 are not treated separately. @copydetails moxiRGBToHLS_8u_C3R
 */
MOX_API MoxStatus moxiRGBToHLS_32f_C3R(const Mox32f* src, int32_t srcStep, Mox32f* dst, int32_t dstStep,
                                       MoxiSize roiSize);
/** Converts 32f pixels with alpha from RGB to HLS. @copydetails moxiRGBToHLS_32f_C3R */
MOX_API MoxStatus moxiRGBToHLS_32f_AC4R(const Mox32f* src, int32_t srcStep, Mox32f* dst, int32_t dstStep,
                                        MoxiSize roiSize);

/**
 * Converts 8u pixels from HLS to RGB. The width rounded down to a multiple of 8 multiplies by rounded reciprocals and
 * converts in the caller's rounding mode. The last columns truncate: the first four of them, if there are as many and
 * the row's source and destination do not overlap, with refined reciprocals, the others with true divisions.
 * @copydetails moxiRGBToHLS_8u_C3R
 */
MOX_API MoxStatus moxiHLSToRGB_8u_C3R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize);

/**
 * Converts 8u pixels with alpha from HLS to RGB. The width rounded down to a multiple of 4 multiplies by rounded
 * reciprocals and converts in the caller's rounding mode; the last columns divide truly and truncate.
 * @copydetails moxiRGBToHLS_8u_C3R
 */
MOX_API MoxStatus moxiHLSToRGB_8u_AC4R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                       MoxiSize roiSize);

/**
 * Converts 16u pixels from HLS to RGB. Converted in the caller's rounding mode. The width rounded down to a multiple of
 * 4 and the last columns differ in the order of their operations. @copydetails moxiRGBToHLS_8u_C3R
 */
MOX_API MoxStatus moxiHLSToRGB_16u_C3R(const Mox16u* src, int32_t srcStep, Mox16u* dst, int32_t dstStep,
                                       MoxiSize roiSize);
/** Converts 16u pixels with alpha from HLS to RGB. @copydetails moxiHLSToRGB_16u_C3R */
MOX_API MoxStatus moxiHLSToRGB_16u_AC4R(const Mox16u* src, int32_t srcStep, Mox16u* dst, int32_t dstStep,
                                        MoxiSize roiSize);
/** Converts 16s pixels from HLS to RGB. As the 16u form on samples biased by 32768. @copydetails moxiRGBToHLS_8u_C3R */
MOX_API MoxStatus moxiHLSToRGB_16s_C3R(const Mox16s* src, int32_t srcStep, Mox16s* dst, int32_t dstStep,
                                       MoxiSize roiSize);
/** Converts 16s pixels with alpha from HLS to RGB. @copydetails moxiHLSToRGB_16s_C3R */
MOX_API MoxStatus moxiHLSToRGB_16s_AC4R(const Mox16s* src, int32_t srcStep, Mox16s* dst, int32_t dstStep,
                                        MoxiSize roiSize);

/**
 * Converts 32f pixels from HLS to RGB. The width rounded down to a multiple of 4 and the last columns differ in the
 * order of their operations. Pixels with S = 0 get R = G = B = L. Values outside 0 to 1 are not treated separately; a
 * hue above 1 is wrapped once at most, and not for green. @copydetails moxiRGBToHLS_8u_C3R
 */
MOX_API MoxStatus moxiHLSToRGB_32f_C3R(const Mox32f* src, int32_t srcStep, Mox32f* dst, int32_t dstStep,
                                       MoxiSize roiSize);
/** Converts 32f pixels with alpha from HLS to RGB. @copydetails moxiHLSToRGB_32f_C3R */
MOX_API MoxStatus moxiHLSToRGB_32f_AC4R(const Mox32f* src, int32_t srcStep, Mox32f* dst, int32_t dstStep,
                                        MoxiSize roiSize);

/**
 * Converts 8u interleaved pixels with alpha from BGR to HLS.
 *
 * Truncates in all columns: the width rounded down to a multiple of 4 with approximate reciprocals, the last columns
 * with refined ones.
 *
 * @param src     source pixels, the samples in the order told above
 * @param srcStep distance between source rows in bytes
 * @param dst     destination pixels, the samples in the order told above
 * @param dstStep distance between destination rows in bytes
 * @param roiSize width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr, moxStatusBadStep or moxStatusBadSize
 */
MOX_API MoxStatus moxiBGRToHLS_8u_AC4R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                       MoxiSize roiSize);

/**
 * @brief Converts 8u interleaved pixels from BGR to HLS planes. Truncates in all columns: the width rounded down to a
 * multiple of 4 with approximate reciprocals, the last columns with refined ones.
 *
 * @param src       source pixels, the samples in the order told above
 * @param srcStep   distance between source rows in bytes
 * @param dstPlanes destination planes in the order told above, alpha, if any, last
 * @param dstStep   distance between destination rows in bytes
 * @param roiSize   width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr, moxStatusBadStep or moxStatusBadSize
 */
MOX_API MoxStatus moxiBGRToHLS_8u_C3P3R(const Mox8u* src, int32_t srcStep, Mox8u* const* dstPlanes, int32_t dstStep,
                                        MoxiSize roiSize);

/**
 * @brief Converts 8u planes from BGR to HLS interleaved pixels. Truncates in all columns: the width rounded down to a
 * multiple of 4 with approximate reciprocals, the last columns with refined ones.
 *
 * @param srcPlanes source planes in the order told above, alpha, if any, last
 * @param srcStep   distance between source rows in bytes
 * @param dst       destination pixels, the samples in the order told above
 * @param dstStep   distance between destination rows in bytes
 * @param roiSize   width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr, moxStatusBadStep or moxStatusBadSize
 */
MOX_API MoxStatus moxiBGRToHLS_8u_P3C3R(const Mox8u* const* srcPlanes, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                        MoxiSize roiSize);

/**
 * @brief Converts 8u planes from BGR to HLS. Truncates in all columns: the width rounded down to a multiple of 4 with
 * approximate reciprocals, the last columns with refined ones.
 *
 * @param srcPlanes source planes in the order told above, alpha, if any, last
 * @param srcStep   distance between source rows in bytes
 * @param dstPlanes destination planes in the order told above, alpha, if any, last
 * @param dstStep   distance between destination rows in bytes
 * @param roiSize   width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr, moxStatusBadStep or moxStatusBadSize
 */
MOX_API MoxStatus moxiBGRToHLS_8u_P3R(const Mox8u* const* srcPlanes, int32_t srcStep, Mox8u* const* dstPlanes,
                                      int32_t dstStep, MoxiSize roiSize);

/**
 * Converts 8u interleaved pixels with alpha from BGR to HLS planes with alpha. Truncates in all columns: the width
 * rounded down to a multiple of 4 with approximate reciprocals, the last columns with refined ones.
 * @copydetails moxiBGRToHLS_8u_C3P3R
 */
MOX_API MoxStatus moxiBGRToHLS_8u_AC4P4R(const Mox8u* src, int32_t srcStep, Mox8u* const* dstPlanes, int32_t dstStep,
                                         MoxiSize roiSize);

/**
 * Converts 8u planes with alpha from BGR to HLS interleaved pixels with alpha. Truncates in all columns: the width
 * rounded down to a multiple of 4 with approximate reciprocals, the last columns with refined ones.
 * @copydetails moxiBGRToHLS_8u_P3C3R
 */
MOX_API MoxStatus moxiBGRToHLS_8u_AP4C4R(const Mox8u* const* srcPlanes, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                         MoxiSize roiSize);

/**
 * Converts 8u planes with alpha from BGR to HLS. Truncates in all columns: the width rounded down to a multiple of 4
 * with approximate reciprocals, the last columns with refined ones. @copydetails moxiBGRToHLS_8u_P3R
 */
MOX_API MoxStatus moxiBGRToHLS_8u_AP4R(const Mox8u* const* srcPlanes, int32_t srcStep, Mox8u* const* dstPlanes,
                                       int32_t dstStep, MoxiSize roiSize);

/**
 * Converts 8u interleaved pixels from HLS to BGR planes. Truncates; all columns alike.
 * @copydetails moxiBGRToHLS_8u_C3P3R
 */
MOX_API MoxStatus moxiHLSToBGR_8u_C3P3R(const Mox8u* src, int32_t srcStep, Mox8u* const* dstPlanes, int32_t dstStep,
                                        MoxiSize roiSize);

/**
 * Converts 8u planes from HLS to BGR interleaved pixels. Truncates; all columns alike.
 * @copydetails moxiBGRToHLS_8u_P3C3R
 */
MOX_API MoxStatus moxiHLSToBGR_8u_P3C3R(const Mox8u* const* srcPlanes, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                        MoxiSize roiSize);
/** Converts 8u planes from HLS to BGR. Truncates; all columns alike. @copydetails moxiBGRToHLS_8u_P3R */
MOX_API MoxStatus moxiHLSToBGR_8u_P3R(const Mox8u* const* srcPlanes, int32_t srcStep, Mox8u* const* dstPlanes,
                                      int32_t dstStep, MoxiSize roiSize);
/** Converts 8u interleaved pixels with alpha from HLS to BGR planes with alpha. @copydetails moxiHLSToBGR_8u_C3P3R */
MOX_API MoxStatus moxiHLSToBGR_8u_AC4P4R(const Mox8u* src, int32_t srcStep, Mox8u* const* dstPlanes, int32_t dstStep,
                                         MoxiSize roiSize);
/** Converts 8u planes with alpha from HLS to BGR interleaved pixels with alpha. @copydetails moxiHLSToBGR_8u_P3C3R */
MOX_API MoxStatus moxiHLSToBGR_8u_AP4C4R(const Mox8u* const* srcPlanes, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                         MoxiSize roiSize);
/** Converts 8u planes with alpha from HLS to BGR. @copydetails moxiHLSToBGR_8u_P3R */
MOX_API MoxStatus moxiHLSToBGR_8u_AP4R(const Mox8u* const* srcPlanes, int32_t srcStep, Mox8u* const* dstPlanes,
                                       int32_t dstStep, MoxiSize roiSize);

MOX_EXTERN_C_END

/** @} */

#endif
