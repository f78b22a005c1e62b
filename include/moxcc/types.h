/* SPDX-License-Identifier: BSD-2-Clause */
/**
 * @defgroup types Types and statuses
 * @brief Sample types, records and status codes that all functions share.
 *
 * A function tests its arguments in an order that its group tells: as a rule pointers, then the size, then what else
 * there is. The first test that fails decides the status; nothing has been written then. Samples are never tested: any
 * bits are a value.
 *
 * MOX_API marks an exported function. A program that binds the library in another way defines it before the first
 * header.
 *
 * @{
 */
#ifndef MOXCC_TYPES_H
#define MOXCC_TYPES_H

#include <stdint.h>

#ifndef MOX_API
#define MOX_API __attribute__((visibility("default")))
#endif

/** @cond The headers' frame of C linkage. */
#ifdef __cplusplus
#define MOX_EXTERN_C_BEGIN extern "C" {
#define MOX_EXTERN_C_END   }
#else
#define MOX_EXTERN_C_BEGIN
#define MOX_EXTERN_C_END
#endif
/** @endcond */

MOX_EXTERN_C_BEGIN

/** @name Sample types
 * The depth token of a function's name says which of these its samples are.
 * @{ */
typedef uint8_t Mox8u;   /**< 8 bits, unsigned. */
typedef uint16_t Mox16u; /**< 16 bits, unsigned. */
typedef int16_t Mox16s;  /**< 16 bits, signed. */
typedef uint32_t Mox32u; /**< 32 bits, unsigned: packed v210 words. */
typedef int32_t Mox32s;  /**< 32 bits, signed. */
typedef float Mox32f;    /**< 32-bit IEEE float. */
typedef double Mox64f;   /**< 64-bit IEEE float. */
/** @} */

/** The size of a region of interest, in pixels. */
typedef struct MoxiSize {
    int32_t width;  /**< Columns. */
    int32_t height; /**< Rows. */
} MoxiSize;

/** A region in source coordinates, in pixels. */
typedef struct MoxiRect {
    int32_t x;      /**< The first column. */
    int32_t y;      /**< The first row. */
    int32_t width;  /**< Columns. */
    int32_t height; /**< Rows. */
} MoxiRect;

/**
 * The result of a function. Zero is success; a positive code is a warning: the function did what could be done; a
 * negative code is an error: nothing has been written.
 */
typedef int32_t MoxStatus;

/** Status codes. */
enum {
    moxStatusOk = 0,            /**< Success. */
    moxStatusNoOperation = 1,   /**< Tone mapping: the maximum or the mean is negative, and nothing was written. */
    moxStatusOddSize = 35,      /**< The region holds no whole number of chroma cells: the whole ones were converted. */
    moxStatusBadArg = -5,       /**< An unknown Bayer grid code. */
    moxStatusBadSize = -6,      /**< A region too small, or of a size that is not taken; in v210 also a step. */
    moxStatusNullPtr = -8,      /**< A required pointer is null. */
    moxStatusBadState = -13,    /**< A generator state of the wrong kind. No exported function takes one. */
    moxStatusBadStep = -16,     /**< A step below 1, in the families that test steps. */
    moxStatusBadDataType = -47, /**< An unknown data-type code. */
    moxStatusBadRange = -49,    /**< An upper limit that is not above the lower limit. */
    moxStatusBadLevels = -54,   /**< A level count below 2 or above the depth's limit. */
    moxStatusBadNoise = -55,    /**< A noise percentage below 0 or above 100. */
    moxStatusBadDitherType = -224 /**< An unknown dither code. */
};

/**
 * A status in words, for messages.
 *
 * @param status any value
 * @return the text, which is constant: the description of the status above
 */
static inline const char* moxStatusText(MoxStatus status) {
    switch (status) {
        case moxStatusOk:
            return "Success";
        case moxStatusNoOperation:
            return "Tone mapping: the maximum or the mean is negative, and nothing was written";
        case moxStatusOddSize:
            return "The region holds no whole number of chroma cells: the whole ones were converted";
        case moxStatusBadArg:
            return "An unknown Bayer grid code";
        case moxStatusBadSize:
            return "A region too small, or of a size that is not taken; in v210 also a step";
        case moxStatusNullPtr:
            return "A required pointer is null";
        case moxStatusBadState:
            return "A generator state of the wrong kind. No exported function takes one";
        case moxStatusBadStep:
            return "A step below 1, in the families that test steps";
        case moxStatusBadDataType:
            return "An unknown data-type code";
        case moxStatusBadRange:
            return "An upper limit that is not above the lower limit";
        case moxStatusBadLevels:
            return "A level count below 2 or above the depth's limit";
        case moxStatusBadNoise:
            return "A noise percentage below 0 or above 100";
        case moxStatusBadDitherType:
            return "An unknown dither code";
        default:
            return "An unknown status";
    }
}

MOX_EXTERN_C_END

/** @} */

#endif
