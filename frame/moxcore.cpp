// libmoxcore: asks the C library for the largest cache, as the kernel or CPUID reported it.
#include "frame/moxcore.h"

#include <unistd.h>

#include <cstdint>
#include <initializer_list>

extern "C" int32_t moxGetMaxCacheSizeB(int32_t* bytes) {
    long largest = 0;
    for (const int level :
         {_SC_LEVEL1_DCACHE_SIZE, _SC_LEVEL2_CACHE_SIZE, _SC_LEVEL3_CACHE_SIZE, _SC_LEVEL4_CACHE_SIZE}) {
        const long size = sysconf(level);
        if (size > largest) largest = size;
    }
    if (!bytes || largest <= 0) return -1;
    *bytes = largest > INT32_MAX ? INT32_MAX : static_cast<int32_t>(largest);
    return 0;
}
