/* SPDX-License-Identifier: BSD-2-Clause */
/**
 * @defgroup gray Gray
 * @ingroup models
 * @brief Colour to one luma sample with fixed or given weights, and gray spread to colour channels.
 *
 * The default weights are those of BT.601 luma, 0.299, 0.587 and 0.114, for channels 0, 1 and 2 (R, G, B).
 *
 * All functions here: src and dst must not be null (moxStatusNullPtr), width and height must be at least 1
 * (moxStatusBadSize); steps are bytes and are not tested, zero and negative ones included. The 16u, 16s and 32f forms
 * of RGBToGray and ColorToGray round a step down to a whole number of samples.
 *
 * @{
 */
#ifndef MOXCC_GRAY_H
#define MOXCC_GRAY_H

#include "moxcc/types.h"

MOX_EXTERN_C_BEGIN

/**
 * @brief Converts 8u three-channel pixels to gray with the default weights. 8-bit fixed point with weights in units of
 * 1/32768. Columns of whole vector groups (the width rounded down to a multiple of 4) truncate each term to 7
 * fractional bits; the last columns of a row sum at full precision. With the default weights the two differ by at most
 * 1.
 *
 * @param src     interleaved colour pixels
 * @param srcStep distance between source rows in bytes
 * @param dst     one sample per pixel
 * @param dstStep distance between destination rows in bytes
 * @param roiSize width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr or moxStatusBadSize
 */
MOX_API MoxStatus moxiRGBToGray_8u_C3C1R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                         MoxiSize roiSize);

/**
 * Converts 8u four-channel (alpha is not read) pixels to gray with the default weights. 8-bit fixed point with weights
 * in units of 1/32768. Columns of whole vector groups (the width rounded down to a multiple of 8) truncate each term to
 * 7 fractional bits; the last columns of a row sum at full precision. With the default weights the two differ by at
 * most 1. @copydetails moxiRGBToGray_8u_C3C1R
 */
MOX_API MoxStatus moxiRGBToGray_8u_AC4C1R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                          MoxiSize roiSize);

/**
 * Converts 16u three-channel pixels to gray with the default weights. (w0 * c0 + w1 * c1) + w2 * c2 in single
 * precision, converted in the caller's rounding mode; the low 16 bits are stored. @copydetails moxiRGBToGray_8u_C3C1R
 */
MOX_API MoxStatus moxiRGBToGray_16u_C3C1R(const Mox16u* src, int32_t srcStep, Mox16u* dst, int32_t dstStep,
                                          MoxiSize roiSize);

/**
 * Converts 16u four-channel (alpha is not read) pixels to gray with the default weights.
 * @copydetails moxiRGBToGray_16u_C3C1R
 */
MOX_API MoxStatus moxiRGBToGray_16u_AC4C1R(const Mox16u* src, int32_t srcStep, Mox16u* dst, int32_t dstStep,
                                           MoxiSize roiSize);

/**
 * Converts 16s three-channel pixels to gray with the default weights. As the 16u form on samples biased by 32768.
 * @copydetails moxiRGBToGray_8u_C3C1R
 */
MOX_API MoxStatus moxiRGBToGray_16s_C3C1R(const Mox16s* src, int32_t srcStep, Mox16s* dst, int32_t dstStep,
                                          MoxiSize roiSize);

/**
 * Converts 16s four-channel (alpha is not read) pixels to gray with the default weights.
 * @copydetails moxiRGBToGray_16s_C3C1R
 */
MOX_API MoxStatus moxiRGBToGray_16s_AC4C1R(const Mox16s* src, int32_t srcStep, Mox16s* dst, int32_t dstStep,
                                           MoxiSize roiSize);

/**
 * Converts 32f three-channel pixels to gray with the default weights. (w0 * c0 + w1 * c1) + w2 * c2 in single
 * precision, stored unclamped. @copydetails moxiRGBToGray_8u_C3C1R
 */
MOX_API MoxStatus moxiRGBToGray_32f_C3C1R(const Mox32f* src, int32_t srcStep, Mox32f* dst, int32_t dstStep,
                                          MoxiSize roiSize);

/**
 * Converts 32f four-channel (alpha is not read) pixels to gray with the default weights.
 * @copydetails moxiRGBToGray_32f_C3C1R
 */
MOX_API MoxStatus moxiRGBToGray_32f_AC4C1R(const Mox32f* src, int32_t srcStep, Mox32f* dst, int32_t dstStep,
                                           MoxiSize roiSize);

/**
 * @brief Converts 8u three-channel pixels to gray with the caller's weights. 8-bit fixed point with weights in units of
 * 1/32768. Columns of whole vector groups (the width rounded down to a multiple of 4) truncate each term to 7
 * fractional bits; the last columns of a row sum at full precision. With the default weights the two differ by at most
 * 1.
 *
 * @param src     interleaved colour pixels
 * @param srcStep distance between source rows in bytes
 * @param dst     one sample per pixel
 * @param dstStep distance between destination rows in bytes
 * @param roiSize width and height in pixels
 * @param coeffs  three weights; null means the default weights. Their sum should keep results in the sample's range
 * @return moxStatusOk, moxStatusNullPtr or moxStatusBadSize
 */
MOX_API MoxStatus moxiColorToGray_8u_C3C1R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                           MoxiSize roiSize, const Mox32f* coeffs);

/**
 * Converts 8u four-channel (alpha is not read) pixels to gray with the caller's weights. 8-bit fixed point with weights
 * in units of 1/32768. Columns of whole vector groups (the width rounded down to a multiple of 8) truncate each term to
 * 7 fractional bits; the last columns of a row sum at full precision. With the default weights the two differ by at
 * most 1. @copydetails moxiColorToGray_8u_C3C1R
 */
MOX_API MoxStatus moxiColorToGray_8u_AC4C1R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                            MoxiSize roiSize, const Mox32f* coeffs);

/**
 * Converts 16u three-channel pixels to gray with the caller's weights. (w0 * c0 + w1 * c1) + w2 * c2 in single
 * precision, converted in the caller's rounding mode; the low 16 bits are stored. @copydetails moxiColorToGray_8u_C3C1R
 */
MOX_API MoxStatus moxiColorToGray_16u_C3C1R(const Mox16u* src, int32_t srcStep, Mox16u* dst, int32_t dstStep,
                                            MoxiSize roiSize, const Mox32f* coeffs);

/**
 * Converts 16u four-channel (alpha is not read) pixels to gray with the caller's weights.
 * @copydetails moxiColorToGray_16u_C3C1R
 */
MOX_API MoxStatus moxiColorToGray_16u_AC4C1R(const Mox16u* src, int32_t srcStep, Mox16u* dst, int32_t dstStep,
                                             MoxiSize roiSize, const Mox32f* coeffs);

/**
 * Converts 16s three-channel pixels to gray with the caller's weights. As the 16u form on samples biased by 32768.
 * @copydetails moxiColorToGray_8u_C3C1R
 */
MOX_API MoxStatus moxiColorToGray_16s_C3C1R(const Mox16s* src, int32_t srcStep, Mox16s* dst, int32_t dstStep,
                                            MoxiSize roiSize, const Mox32f* coeffs);

/**
 * Converts 16s four-channel (alpha is not read) pixels to gray with the caller's weights.
 * @copydetails moxiColorToGray_16s_C3C1R
 */
MOX_API MoxStatus moxiColorToGray_16s_AC4C1R(const Mox16s* src, int32_t srcStep, Mox16s* dst, int32_t dstStep,
                                             MoxiSize roiSize, const Mox32f* coeffs);

/**
 * Converts 32f three-channel pixels to gray with the caller's weights. (w0 * c0 + w1 * c1) + w2 * c2 in single
 * precision, stored unclamped. @copydetails moxiColorToGray_8u_C3C1R
 */
MOX_API MoxStatus moxiColorToGray_32f_C3C1R(const Mox32f* src, int32_t srcStep, Mox32f* dst, int32_t dstStep,
                                            MoxiSize roiSize, const Mox32f* coeffs);

/**
 * Converts 32f four-channel (alpha is not read) pixels to gray with the caller's weights.
 * @copydetails moxiColorToGray_32f_C3C1R
 */
MOX_API MoxStatus moxiColorToGray_32f_AC4C1R(const Mox32f* src, int32_t srcStep, Mox32f* dst, int32_t dstStep,
                                             MoxiSize roiSize, const Mox32f* coeffs);

/**
 * Converts 64f three-channel pixels to gray with the caller's weights. (w0 * c0 + w1 * c1) + w2 * c2 in double
 * precision, stored unclamped. Columns go in pairs from the first column whose destination is on 16 bytes, and the
 * second column of a pair is summed as (w2 * c2 + w1 * c1) + w0 * c0. @copydetails moxiColorToGray_8u_C3C1R
 */
MOX_API MoxStatus moxiColorToGray_64f_C3C1R(const Mox64f* src, int32_t srcStep, Mox64f* dst, int32_t dstStep,
                                            MoxiSize roiSize, const Mox64f* coeffs);

/**
 * Converts 64f four-channel (alpha is not read) pixels to gray with the caller's weights.
 * @copydetails moxiColorToGray_64f_C3C1R
 */
MOX_API MoxStatus moxiColorToGray_64f_AC4C1R(const Mox64f* src, int32_t srcStep, Mox64f* dst, int32_t dstStep,
                                             MoxiSize roiSize, const Mox64f* coeffs);

/**
 * Spreads 8u gray samples to three-channel pixels, bit for bit.
 *
 * @param src     one sample per pixel
 * @param srcStep distance between source rows in bytes
 * @param dst     interleaved pixels; channels 0, 1 and 2 become the source sample
 * @param dstStep distance between destination rows in bytes
 * @param roiSize width and height in pixels
 * @return moxStatusOk, moxStatusNullPtr or moxStatusBadSize
 */
MOX_API MoxStatus moxiGrayToRGB_8u_C1C3R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                         MoxiSize roiSize);

/**
 * Spreads 8u gray samples to four-channel pixels, bit for bit.
 *
 * @param src     one sample per pixel
 * @param srcStep distance between source rows in bytes
 * @param dst     interleaved pixels; channels 0, 1 and 2 become the source sample
 * @param dstStep distance between destination rows in bytes
 * @param roiSize width and height in pixels
 * @param aval    channel 3 of every pixel
 * @return moxStatusOk, moxStatusNullPtr or moxStatusBadSize
 */
MOX_API MoxStatus moxiGrayToRGB_8u_C1C4R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                         MoxiSize roiSize, Mox8u aval);
/** Spreads 16u gray samples to three-channel pixels, bit for bit. @copydetails moxiGrayToRGB_8u_C1C3R */
MOX_API MoxStatus moxiGrayToRGB_16u_C1C3R(const Mox16u* src, int32_t srcStep, Mox16u* dst, int32_t dstStep,
                                          MoxiSize roiSize);
/** Spreads 16u gray samples to four-channel pixels, bit for bit. @copydetails moxiGrayToRGB_8u_C1C4R */
MOX_API MoxStatus moxiGrayToRGB_16u_C1C4R(const Mox16u* src, int32_t srcStep, Mox16u* dst, int32_t dstStep,
                                          MoxiSize roiSize, Mox16u aval);
/** Spreads 32f gray samples to three-channel pixels, bit for bit. @copydetails moxiGrayToRGB_8u_C1C3R */
MOX_API MoxStatus moxiGrayToRGB_32f_C1C3R(const Mox32f* src, int32_t srcStep, Mox32f* dst, int32_t dstStep,
                                          MoxiSize roiSize);
/** Spreads 32f gray samples to four-channel pixels, bit for bit. @copydetails moxiGrayToRGB_8u_C1C4R */
MOX_API MoxStatus moxiGrayToRGB_32f_C1C4R(const Mox32f* src, int32_t srcStep, Mox32f* dst, int32_t dstStep,
                                          MoxiSize roiSize, Mox32f aval);

MOX_EXTERN_C_END

/** @} */

#endif
