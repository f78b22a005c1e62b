#include "support/float_env.h"

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace moxtest {
namespace {

#if defined(__aarch64__)

// MXCSR's rounding modes stand in FPCR in another order; denormals are flushed on both sides or on none.
constexpr int fpcrRound = 22;
constexpr uint64_t fpcrFlush = uint64_t(1) << 24;
constexpr uint32_t modes[] = {0, 2, 1, 3};  // of the one as of the other

void writeMxcsr(uint32_t value) {
    const uint64_t fpcr = uint64_t(modes[value >> 13 & 3]) << fpcrRound | (value & mxcsr::flushToZero ? fpcrFlush : 0);
    __asm__ volatile("msr fpcr, %0" : : "r"(fpcr));
}
void writeX87Control(uint16_t) {}

#else

void writeMxcsr(uint32_t value) { _mm_setcsr(value); }
void writeX87Control(uint16_t value) { __asm__ volatile("fldcw %0" : : "m"(value)); }

#endif

}  // namespace

const char* roundingName(uint32_t value) {
    switch (value & mxcsr::towardZero & ~mxcsr::usual) {
        case mxcsr::down & ~mxcsr::usual:
            return "rounding down";
        case mxcsr::up & ~mxcsr::usual:
            return "rounding up";
        case mxcsr::towardZero & ~mxcsr::usual:
            return "rounding toward zero";
        default:
            return "rounding to nearest";
    }
}

#if defined(__aarch64__)

uint32_t readMxcsr() {
    uint64_t fpcr;
    __asm__ volatile("mrs %0, fpcr" : "=r"(fpcr));
    const uint32_t flush = fpcr & fpcrFlush ? mxcsr::flushToZero | mxcsr::denormalsAreZero : 0;
    return mxcsr::usual | modes[fpcr >> fpcrRound & 3] << 13 | flush;
}
uint16_t readX87Control() { return 0x037F; }

#else

uint32_t readMxcsr() { return _mm_getcsr(); }
uint16_t readX87Control() {
    uint16_t value;
    __asm__ volatile("fnstcw %0" : "=m"(value));
    return value;
}

#endif

MxcsrScope::MxcsrScope(uint32_t value) : saved_(readMxcsr()) { writeMxcsr(value); }
MxcsrScope::~MxcsrScope() { writeMxcsr(saved_); }

X87Scope::X87Scope(uint16_t value) : saved_(readX87Control()) { writeX87Control(value); }
X87Scope::~X87Scope() { writeX87Control(saved_); }

void underMxcsr(uint32_t value, const std::function<void()>& body) {
    const MxcsrScope scope(value);
    body();
}

}  // namespace moxtest
