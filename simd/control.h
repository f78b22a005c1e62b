// The floating-point control words of the calling thread, and conversions of single values. The compiler knows nothing
// of the control words: code that is to run under a changed one stands in a noinline function of its own, so that no
// operation moves across the change.
#pragma once

#include <cstdint>

#include "simd/intrinsics.h"

namespace q4 {

#if defined(__aarch64__)

// FPCR stands for MXCSR. It flushes denormals on both sides or on none; its sticky flags are in a register of their own,
// which nothing here asks for; and no exception traps. There is no second unit.
inline constexpr uint32_t mxcsrRoundMask = 0x00C00000;  // 0 is to nearest
inline constexpr uint32_t mxcsrFlushToZero = 0x01000000;
inline constexpr uint32_t mxcsrDenormalsAreZero = mxcsrFlushToZero;
inline constexpr uint32_t mxcsrAllMasked = 0;
inline constexpr uint32_t mxcsrFlags = 0;
inline constexpr uint32_t mxcsrInexact = 0;
inline constexpr uint16_t x87AllMasked = 0;

inline uint32_t readMxcsr() {
    uint64_t word;
    __asm__ volatile("mrs %0, fpcr" : "=r"(word));
    return uint32_t(word);
}
inline void writeMxcsr(uint32_t word) { __asm__ volatile("msr fpcr, %0" : : "r"(uint64_t(word))); }
inline uint16_t readX87Control() { return 0; }
inline void writeX87Control(uint16_t) {}

#else

inline constexpr uint32_t mxcsrRoundMask = 0x6000;  // 0 is to nearest
inline constexpr uint32_t mxcsrFlushToZero = 0x8000;
inline constexpr uint32_t mxcsrDenormalsAreZero = 0x0040;
inline constexpr uint32_t mxcsrAllMasked = 0x1F80;
inline constexpr uint32_t mxcsrFlags = 0x003F;
inline constexpr uint32_t mxcsrInexact = 0x0020;
inline constexpr uint16_t x87AllMasked = 0x003F;

inline uint32_t readMxcsr() { return _mm_getcsr(); }
inline void writeMxcsr(uint32_t word) { _mm_setcsr(word); }

inline uint16_t readX87Control() {
    uint16_t word;
    __asm__ volatile("fnstcw %0" : "=m"(word));
    return word;
}
inline void writeX87Control(uint16_t word) { __asm__ volatile("fldcw %0" : : "m"(word)); }

#endif

// By the same instructions as the vectors: values out of range and NaNs give -2147483648.

/// In the rounding mode of the control word.
inline int32_t nearest(float v) { return _mm_cvtss_si32(_mm_set_ss(v)); }
inline int32_t nearest(double v) { return _mm_cvtsd_si32(_mm_set_sd(v)); }
inline int32_t truncate(float v) { return _mm_cvttss_si32(_mm_set_ss(v)); }
inline int32_t truncate(double v) { return _mm_cvttsd_si32(_mm_set_sd(v)); }
/// The processor's approximate reciprocal, RCPSS, which gives what RCPPS gives.
inline float rcp(float v) { return _mm_cvtss_f32(_mm_rcp_ss(_mm_set_ss(v))); }

}  // namespace q4
