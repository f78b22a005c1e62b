#include "support/float_env.h"

#include <immintrin.h>

namespace moxtest {
namespace {
void writeX87Control(uint16_t value) { __asm__ volatile("fldcw %0" : : "m"(value)); }
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

uint32_t readMxcsr() { return _mm_getcsr(); }

uint16_t readX87Control() {
    uint16_t value;
    __asm__ volatile("fnstcw %0" : "=m"(value));
    return value;
}

MxcsrScope::MxcsrScope(uint32_t value) : saved_(_mm_getcsr()) { _mm_setcsr(value); }
MxcsrScope::~MxcsrScope() { _mm_setcsr(saved_); }

X87Scope::X87Scope(uint16_t value) : saved_(readX87Control()) { writeX87Control(value); }
X87Scope::~X87Scope() { writeX87Control(saved_); }

void underMxcsr(uint32_t value, const std::function<void()>& body) {
    const MxcsrScope scope(value);
    body();
}

}  // namespace moxtest
