// The intrinsics that this folder is written with.
#pragma once

#if defined(__aarch64__)
#include "simd/aarch64.h"
#else
#include <immintrin.h>
#endif
