/* SPDX-License-Identifier: BSD-2-Clause */
/**
 * @defgroup version Version record
 * @ingroup types
 * @brief The library's version record.
 *
 * @{
 */
#ifndef MOXCC_VERSION_H
#define MOXCC_VERSION_H

#include "moxcc/types.h"

MOX_EXTERN_C_BEGIN

/** What the library is: its version, and the processor variant that its code is for. */
typedef struct MoxLibraryVersion {
    int32_t major;         /**< 2019. */
    int32_t minor;         /**< 0. */
    int32_t revision;      /**< 0. */
    int32_t build;         /**< 59881. */
    char targetCode[4];    /**< "q4", then two zero bytes. */
    const char* name;      /**< "moxCC SSE4.2 (q4)". */
    const char* version;   /**< "2019.0.0 Gold (r59881)". */
    const char* buildDate; /**< "Jul 12 2018". */
} MoxLibraryVersion;

/**
 * Gives the library's version record.
 *
 * @return a pointer to one constant record, the same on every call; never null. Both files of the library (SSE4.2 and
 *         AVX2) give the same record, since they give the same results.
 */
MOX_API const MoxLibraryVersion* moxccGetLibVersion(void);

MOX_EXTERN_C_END

/** @} */

#endif
