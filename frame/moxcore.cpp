// libmoxcore: asks the C library for the largest cache, as the kernel or CPUID reported it. That may trap to a
// hypervisor and take far longer than a fill of the size that the answer decides about, so the answer is kept.
#include "frame/moxcore.h"

#include <unistd.h>

#include <atomic>
#include <cstdint>
#include <initializer_list>

namespace {

int32_t askForLargestCache() {
    long largest = 0;
    for (const int level :
         {_SC_LEVEL1_DCACHE_SIZE, _SC_LEVEL2_CACHE_SIZE, _SC_LEVEL3_CACHE_SIZE, _SC_LEVEL4_CACHE_SIZE}) {
        const long size = sysconf(level);
        if (size > largest) largest = size;
    }
    return largest > INT32_MAX ? INT32_MAX : static_cast<int32_t>(largest);
}

constinit std::atomic<int32_t> largestCache = -1;  // not asked yet; threads that ask at once get the same answer

}  // namespace

extern "C" int32_t moxGetMaxCacheSizeB(int32_t* bytes) {
    int32_t size = largestCache.load(std::memory_order_relaxed);
    if (size < 0) {
        size = askForLargestCache();
        largestCache.store(size, std::memory_order_relaxed);
    }
    if (!bytes || size == 0) return -1;
    *bytes = size;
    return 0;
}
