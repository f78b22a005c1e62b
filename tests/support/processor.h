// What the processor runs of code that is built for a width of vectors.
#ifndef SUPPORT_PROCESSOR_H
#define SUPPORT_PROCESSOR_H

namespace moxtest {

#if defined(__x86_64__)

inline bool hasAvx2() { return __builtin_cpu_supports("avx2"); }
inline bool hasAvx512() {
    return __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512bw") &&
           __builtin_cpu_supports("avx512dq") && __builtin_cpu_supports("avx512vl") &&
           __builtin_cpu_supports("avx512cd");
}

#if defined(MOXCC_EMULATE_AVX512)
inline constexpr char avx512Name[] = "AVX-512-emulated";  // its code, run at AVX2
inline bool runsAvx512() { return hasAvx2(); }
#else
inline constexpr char avx512Name[] = "AVX-512";
inline bool runsAvx512() { return hasAvx512(); }
#endif

#endif

}  // namespace moxtest

#endif
