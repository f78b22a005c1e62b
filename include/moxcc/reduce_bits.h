/* SPDX-License-Identifier: BSD-2-Clause */
/**
 * @defgroup reduce_bits Bit-depth reduction
 * @ingroup tone
 * @brief Images to a small number of evenly spaced levels, by plain rounding, error diffusion or ordered dither, with
 * or without noise.
 *
 * The forms differ in depth and layout only. The depth gives the range of source values and the number of levels:
 *
 *     depth     source value x               largest level count   lowest and highest result
 *     8u        s                            256                   0, 255
 *     16u       s                            65536                 0, 65535
 *     16s       s + 32768                    65536                 -32768, 32767
 *     16u8u     s                            256                   0, 255
 *     16s8u     s + 32768                    256                   0, 255
 *     32f8u     s, nominally 0 to 1          256                   0, 255
 *     32f16u    s, nominally 0 to 1          65536                 0, 65535
 *     32f16s    s, nominally 0 to 1          65536                 -32768, 32767
 *
 * C1, C3 and C4 reduce all their samples, AC4 the first three of four. The destination's fourth samples of AC4 are
 * neither read nor written, so that they may belong to another thread.
 *
 * With n levels, level i stands for i / (n - 1) of the range; results are truncated to integers.
 *
 * The methods:
 * - moxDitherNone rounds to the nearest level; exact ties go down. 16-bit samples reduced to 8 bits are scaled.
 * - moxDitherFs, moxDitherJj, moxDitherSt hand each sample's rounding error on to its neighbours to the right and
 *   below, by the weights of Floyd and Steinberg, of Jarvis, Judice and Ninke, or of Stucki. Rows run from left to
 *   right. A sample that runs into the end of the range leaves no error. Channels follow one another: the first rows of
 *   a channel receive the errors of the last rows of the channel before.
 * - moxDitherBayer compares what is left above the level below with a threshold of a 4 by 4 matrix, chosen by the
 *   pixel's place in the region; all samples of a pixel share it.
 *
 * What a sample, `*`, gives to its neighbours of an error, and the thresholds of ordered dither in fifteenths of a
 * level step:
 *
 *     moxDitherFs, / 16        moxDitherJj, / 48        moxDitherSt, / 42        moxDitherBayer, / 15
 *                                     *  7  5                  *  8  4            0   8   2  10
 *           *  7                3  5  7  5  3            2  4  8  4  2           12   4  14   6
 *        3  5  1                1  3  5  3  1            1  2  4  2  1            3  11   1   9
 *                                                                                15   7  13   5
 *
 * In all methods but plain rounding, 16-bit samples that are reduced to 8 bits give the upper byte of their level.
 *
 * Noise, a percentage, jitters the thresholds of every method but plain rounding by up to so many hundredths of a level
 * step. It comes from a generator that starts anew in each call: the result of a call depends on its arguments only.
 *
 * All arithmetic is in single precision, each operation rounded to nearest, denormals included, whatever the rounding
 * mode, flush-to-zero and denormals-are-zero of the caller.
 *
 * @{
 */
#ifndef MOXCC_REDUCE_BITS_H
#define MOXCC_REDUCE_BITS_H

#include "moxcc/types.h"

MOX_EXTERN_C_BEGIN

/** The method of bit-depth reduction. */
enum {
    moxDitherNone = 0, /**< Rounding to the nearest level. */
    moxDitherFs = 1,   /**< Error diffusion, weights 7 3 5 1 over 16 (Floyd and Steinberg). */
    moxDitherJj = 2,   /**< Error diffusion over two rows, divisor 48 (Jarvis, Judice and Ninke). */
    moxDitherSt = 3,   /**< Error diffusion over two rows, divisor 42 (Stucki). */
    moxDitherBayer = 4 /**< Ordered dither, 4 by 4 matrix. */
};
/** One of the methods above. */
typedef int32_t MoxDitherType;

/** The source's sample type, for moxiReduceBitsGetBufferSize(). */
enum {
    moxDataType8u = 1,  /**< #Mox8u. */
    moxDataType16u = 3, /**< #Mox16u. */
    moxDataType16s = 4, /**< #Mox16s. */
    moxDataType32f = 9  /**< #Mox32f. */
};
/** One of the types above. */
typedef int32_t MoxDataType;

/**
 * The size of the buffer that the functions below want.
 *
 * @param dataType   the source's sample type, a #MoxDataType; the size is the same for all
 * @param roiSize    the region; its height does not count
 * @param noise      noise in percent, 0 to 100
 * @param ditherType the method
 * @param bufferSize receives the size in bytes; 0 if the method needs no buffer
 * @return moxStatusOk; moxStatusNullPtr if bufferSize is null; moxStatusBadSize if the width is below 1;
 *         moxStatusBadDataType; moxStatusBadNoise; moxStatusBadDitherType
 */
MOX_API MoxStatus moxiReduceBitsGetBufferSize(int32_t dataType, MoxiSize roiSize, int32_t noise,
                                              MoxDitherType ditherType, int32_t* bufferSize);

/**
 * Reduces an 8u image of one channel to evenly spaced levels.
 *
 * @param src        source
 * @param srcStep    distance between source rows in bytes, a whole number of samples; any sign
 * @param dst        destination; may be the source itself in forms that keep the sample type, with the same step
 * @param dstStep    distance between destination rows in bytes, a whole number of samples; any sign
 * @param roiSize    width and height in pixels, each at least 1
 * @param noise      noise in percent, 0 to 100; without effect on plain rounding
 * @param ditherType the method
 * @param levels     the number of levels, 2 to the depth's largest
 * @param buffer     scratch memory of the size that moxiReduceBitsGetBufferSize() tells, at any address; what it holds
 *                   does not matter. May be null for plain rounding, and for ordered dither without noise.
 * @return moxStatusOk; moxStatusNullPtr if src or dst is null; moxStatusBadSize if the width or the height is below 1;
 *         moxStatusBadNoise; moxStatusBadLevels; moxStatusBadDitherType; moxStatusNullPtr if the method needs a buffer
 *         and buffer is null
 */
MOX_API MoxStatus moxiReduceBits_8u_C1R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                        MoxiSize roiSize, int32_t noise, MoxDitherType ditherType, int32_t levels,
                                        Mox8u* buffer);
/** Reduces an 8u image, three channels. @copydetails moxiReduceBits_8u_C1R */
MOX_API MoxStatus moxiReduceBits_8u_C3R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                        MoxiSize roiSize, int32_t noise, MoxDitherType ditherType, int32_t levels,
                                        Mox8u* buffer);
/** Reduces an 8u image, four channels. @copydetails moxiReduceBits_8u_C1R */
MOX_API MoxStatus moxiReduceBits_8u_C4R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                        MoxiSize roiSize, int32_t noise, MoxDitherType ditherType, int32_t levels,
                                        Mox8u* buffer);
/** Reduces an 8u image, three channels; the fourth, alpha, is left alone. @copydetails moxiReduceBits_8u_C1R */
MOX_API MoxStatus moxiReduceBits_8u_AC4R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                         MoxiSize roiSize, int32_t noise, MoxDitherType ditherType, int32_t levels,
                                         Mox8u* buffer);

/** Reduces a 16u image, one channel. @copydetails moxiReduceBits_8u_C1R */
MOX_API MoxStatus moxiReduceBits_16u_C1R(const Mox16u* src, int32_t srcStep, Mox16u* dst, int32_t dstStep,
                                         MoxiSize roiSize, int32_t noise, MoxDitherType ditherType, int32_t levels,
                                         Mox8u* buffer);
/** Reduces a 16u image, three channels. @copydetails moxiReduceBits_8u_C1R */
MOX_API MoxStatus moxiReduceBits_16u_C3R(const Mox16u* src, int32_t srcStep, Mox16u* dst, int32_t dstStep,
                                         MoxiSize roiSize, int32_t noise, MoxDitherType ditherType, int32_t levels,
                                         Mox8u* buffer);
/** Reduces a 16u image, four channels. @copydetails moxiReduceBits_8u_C1R */
MOX_API MoxStatus moxiReduceBits_16u_C4R(const Mox16u* src, int32_t srcStep, Mox16u* dst, int32_t dstStep,
                                         MoxiSize roiSize, int32_t noise, MoxDitherType ditherType, int32_t levels,
                                         Mox8u* buffer);
/** Reduces a 16u image, three channels; the fourth, alpha, is left alone. @copydetails moxiReduceBits_8u_C1R */
MOX_API MoxStatus moxiReduceBits_16u_AC4R(const Mox16u* src, int32_t srcStep, Mox16u* dst, int32_t dstStep,
                                          MoxiSize roiSize, int32_t noise, MoxDitherType ditherType, int32_t levels,
                                          Mox8u* buffer);

/** Reduces a 16s image, one channel. @copydetails moxiReduceBits_8u_C1R */
MOX_API MoxStatus moxiReduceBits_16s_C1R(const Mox16s* src, int32_t srcStep, Mox16s* dst, int32_t dstStep,
                                         MoxiSize roiSize, int32_t noise, MoxDitherType ditherType, int32_t levels,
                                         Mox8u* buffer);
/** Reduces a 16s image, three channels. @copydetails moxiReduceBits_8u_C1R */
MOX_API MoxStatus moxiReduceBits_16s_C3R(const Mox16s* src, int32_t srcStep, Mox16s* dst, int32_t dstStep,
                                         MoxiSize roiSize, int32_t noise, MoxDitherType ditherType, int32_t levels,
                                         Mox8u* buffer);
/** Reduces a 16s image, four channels. @copydetails moxiReduceBits_8u_C1R */
MOX_API MoxStatus moxiReduceBits_16s_C4R(const Mox16s* src, int32_t srcStep, Mox16s* dst, int32_t dstStep,
                                         MoxiSize roiSize, int32_t noise, MoxDitherType ditherType, int32_t levels,
                                         Mox8u* buffer);
/** Reduces a 16s image, three channels; the fourth, alpha, is left alone. @copydetails moxiReduceBits_8u_C1R */
MOX_API MoxStatus moxiReduceBits_16s_AC4R(const Mox16s* src, int32_t srcStep, Mox16s* dst, int32_t dstStep,
                                          MoxiSize roiSize, int32_t noise, MoxDitherType ditherType, int32_t levels,
                                          Mox8u* buffer);

/** Reduces a 16u image to 8u, one channel. @copydetails moxiReduceBits_8u_C1R */
MOX_API MoxStatus moxiReduceBits_16u8u_C1R(const Mox16u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                           MoxiSize roiSize, int32_t noise, MoxDitherType ditherType, int32_t levels,
                                           Mox8u* buffer);
/** Reduces a 16u image to 8u, three channels. @copydetails moxiReduceBits_8u_C1R */
MOX_API MoxStatus moxiReduceBits_16u8u_C3R(const Mox16u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                           MoxiSize roiSize, int32_t noise, MoxDitherType ditherType, int32_t levels,
                                           Mox8u* buffer);
/** Reduces a 16u image to 8u, four channels. @copydetails moxiReduceBits_8u_C1R */
MOX_API MoxStatus moxiReduceBits_16u8u_C4R(const Mox16u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                           MoxiSize roiSize, int32_t noise, MoxDitherType ditherType, int32_t levels,
                                           Mox8u* buffer);
/** Reduces a 16u image to 8u, three channels; the fourth, alpha, is left alone. @copydetails moxiReduceBits_8u_C1R */
MOX_API MoxStatus moxiReduceBits_16u8u_AC4R(const Mox16u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                            MoxiSize roiSize, int32_t noise, MoxDitherType ditherType, int32_t levels,
                                            Mox8u* buffer);

/** Reduces a 16s image to 8u, one channel. @copydetails moxiReduceBits_8u_C1R */
MOX_API MoxStatus moxiReduceBits_16s8u_C1R(const Mox16s* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                           MoxiSize roiSize, int32_t noise, MoxDitherType ditherType, int32_t levels,
                                           Mox8u* buffer);
/** Reduces a 16s image to 8u, three channels. @copydetails moxiReduceBits_8u_C1R */
MOX_API MoxStatus moxiReduceBits_16s8u_C3R(const Mox16s* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                           MoxiSize roiSize, int32_t noise, MoxDitherType ditherType, int32_t levels,
                                           Mox8u* buffer);
/** Reduces a 16s image to 8u, four channels. @copydetails moxiReduceBits_8u_C1R */
MOX_API MoxStatus moxiReduceBits_16s8u_C4R(const Mox16s* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                           MoxiSize roiSize, int32_t noise, MoxDitherType ditherType, int32_t levels,
                                           Mox8u* buffer);
/** Reduces a 16s image to 8u, three channels; the fourth, alpha, is left alone. @copydetails moxiReduceBits_8u_C1R */
MOX_API MoxStatus moxiReduceBits_16s8u_AC4R(const Mox16s* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                            MoxiSize roiSize, int32_t noise, MoxDitherType ditherType, int32_t levels,
                                            Mox8u* buffer);

/** Reduces a 32f image to 8u, one channel. @copydetails moxiReduceBits_8u_C1R */
MOX_API MoxStatus moxiReduceBits_32f8u_C1R(const Mox32f* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                           MoxiSize roiSize, int32_t noise, MoxDitherType ditherType, int32_t levels,
                                           Mox8u* buffer);
/** Reduces a 32f image to 8u, three channels. @copydetails moxiReduceBits_8u_C1R */
MOX_API MoxStatus moxiReduceBits_32f8u_C3R(const Mox32f* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                           MoxiSize roiSize, int32_t noise, MoxDitherType ditherType, int32_t levels,
                                           Mox8u* buffer);
/** Reduces a 32f image to 8u, four channels. @copydetails moxiReduceBits_8u_C1R */
MOX_API MoxStatus moxiReduceBits_32f8u_C4R(const Mox32f* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                           MoxiSize roiSize, int32_t noise, MoxDitherType ditherType, int32_t levels,
                                           Mox8u* buffer);
/** Reduces a 32f image to 8u, three channels; the fourth, alpha, is left alone. @copydetails moxiReduceBits_8u_C1R */
MOX_API MoxStatus moxiReduceBits_32f8u_AC4R(const Mox32f* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                            MoxiSize roiSize, int32_t noise, MoxDitherType ditherType, int32_t levels,
                                            Mox8u* buffer);

/** Reduces a 32f image to 16u, one channel. @copydetails moxiReduceBits_8u_C1R */
MOX_API MoxStatus moxiReduceBits_32f16u_C1R(const Mox32f* src, int32_t srcStep, Mox16u* dst, int32_t dstStep,
                                            MoxiSize roiSize, int32_t noise, MoxDitherType ditherType, int32_t levels,
                                            Mox8u* buffer);
/** Reduces a 32f image to 16u, three channels. @copydetails moxiReduceBits_8u_C1R */
MOX_API MoxStatus moxiReduceBits_32f16u_C3R(const Mox32f* src, int32_t srcStep, Mox16u* dst, int32_t dstStep,
                                            MoxiSize roiSize, int32_t noise, MoxDitherType ditherType, int32_t levels,
                                            Mox8u* buffer);
/** Reduces a 32f image to 16u, four channels. @copydetails moxiReduceBits_8u_C1R */
MOX_API MoxStatus moxiReduceBits_32f16u_C4R(const Mox32f* src, int32_t srcStep, Mox16u* dst, int32_t dstStep,
                                            MoxiSize roiSize, int32_t noise, MoxDitherType ditherType, int32_t levels,
                                            Mox8u* buffer);
/** Reduces a 32f image to 16u, three channels; the fourth, alpha, is left alone. @copydetails moxiReduceBits_8u_C1R */
MOX_API MoxStatus moxiReduceBits_32f16u_AC4R(const Mox32f* src, int32_t srcStep, Mox16u* dst, int32_t dstStep,
                                             MoxiSize roiSize, int32_t noise, MoxDitherType ditherType, int32_t levels,
                                             Mox8u* buffer);

/** Reduces a 32f image to 16s, one channel. @copydetails moxiReduceBits_8u_C1R */
MOX_API MoxStatus moxiReduceBits_32f16s_C1R(const Mox32f* src, int32_t srcStep, Mox16s* dst, int32_t dstStep,
                                            MoxiSize roiSize, int32_t noise, MoxDitherType ditherType, int32_t levels,
                                            Mox8u* buffer);
/** Reduces a 32f image to 16s, three channels. @copydetails moxiReduceBits_8u_C1R */
MOX_API MoxStatus moxiReduceBits_32f16s_C3R(const Mox32f* src, int32_t srcStep, Mox16s* dst, int32_t dstStep,
                                            MoxiSize roiSize, int32_t noise, MoxDitherType ditherType, int32_t levels,
                                            Mox8u* buffer);
/** Reduces a 32f image to 16s, four channels. @copydetails moxiReduceBits_8u_C1R */
MOX_API MoxStatus moxiReduceBits_32f16s_C4R(const Mox32f* src, int32_t srcStep, Mox16s* dst, int32_t dstStep,
                                            MoxiSize roiSize, int32_t noise, MoxDitherType ditherType, int32_t levels,
                                            Mox8u* buffer);
/** Reduces a 32f image to 16s, three channels; the fourth, alpha, is left alone. @copydetails moxiReduceBits_8u_C1R */
MOX_API MoxStatus moxiReduceBits_32f16s_AC4R(const Mox32f* src, int32_t srcStep, Mox16s* dst, int32_t dstStep,
                                             MoxiSize roiSize, int32_t noise, MoxDitherType ditherType, int32_t levels,
                                             Mox8u* buffer);

/**
 * Reduces an 8u image of one channel to one bit a pixel, by a threshold or by error diffusion.
 *
 * Bits run from the most significant bit of a byte to the least. The bit of pixel i is bit dstBitOffset % 8 + i of its
 * row. A row that starts within a byte keeps the bits of that byte before it and sets those behind its last pixel, if
 * the row ends there, to 0; a last byte of which only a part belongs to the row keeps the rest of its bits.
 *
 * moxDitherNone sets the bits of samples above the threshold. moxDitherSt is error diffusion by Stucki's weights, in
 * integers of 8 units a sample; no other method is offered.
 *
 * @param src          source
 * @param srcStep      distance between source rows in bytes; any sign
 * @param dst          destination
 * @param dstStep      distance between destination rows in bytes; any sign
 * @param dstBitOffset where a row starts in its first byte: 0 or more, of which only the low three bits count
 * @param roiSize      width and height in pixels, each at least 1
 * @param reserved1    not used
 * @param reserved2    not used
 * @param ditherType   moxDitherNone or moxDitherSt
 * @param threshold    samples strictly above it are white
 * @param buffer       for moxDitherSt, scratch memory of the size that moxiReduceBitsGetBufferSize() tells for it
 *                     without noise, at any address
 * @return moxStatusOk; moxStatusNullPtr if src or dst is null; moxStatusBadSize if the width or the height is below 1
 *         or the offset below 0; moxStatusBadDitherType; moxStatusNullPtr if the method needs a buffer and buffer is null
 */
MOX_API MoxStatus moxiReduceBits_8u1u_C1R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                          int32_t dstBitOffset, MoxiSize roiSize, int32_t reserved1, int32_t reserved2,
                                          MoxDitherType ditherType, Mox8u threshold, Mox8u* buffer);

MOX_EXTERN_C_END

/** @} */

#endif
