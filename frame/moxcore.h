// The core library's one service.
#ifndef FRAME_MOXCORE_H
#define FRAME_MOXCORE_H

#include <cstdint>

#include "moxcc/types.h"

/// Stores the size in bytes of the processor's largest data cache. Returns 0 on success, another value if the size is
/// not known; nothing is stored then.
extern "C" MOX_API int32_t moxGetMaxCacheSizeB(int32_t* bytes);

#endif
