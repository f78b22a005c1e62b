// libmoxcore: asks the C library for the largest cache.
#include "frame/moxcore.h"

#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <initializer_list>

extern "C" int32_t moxGetMaxCacheSizeB(int32_t* bytes) {
    long largest = 0;
    for (const int level :
         {_SC_LEVEL1_DCACHE_SIZE, _SC_LEVEL2_CACHE_SIZE, _SC_LEVEL3_CACHE_SIZE, _SC_LEVEL4_CACHE_SIZE})
        largest = std::max(largest, sysconf(level));
    if (!bytes || largest <= 0) return -1;
    *bytes = int32_t(std::min<long>(largest, INT32_MAX));
    return 0;
}
