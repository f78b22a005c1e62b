// Floating-point control for the length of a scope. The compiler knows nothing of the control word and may move
// operations across the change: what is to run under it stands in a noinline function that is called within the scope.
#pragma once

#include "simd/control.h"

namespace q4 {

/// Control bits of the vector unit cleared for the length of a scope; the caller's word is restored as it was.
template <uint32_t bits>
class WithoutControls {
  public:
    WithoutControls() : saved_(readMxcsr()) {
        if (changed()) writeMxcsr(saved_ & ~bits);
    }
    ~WithoutControls() {
        if (changed()) writeMxcsr(saved_);
    }
    WithoutControls(const WithoutControls&) = delete;
    WithoutControls& operator=(const WithoutControls&) = delete;

  private:
    bool changed() const { return saved_ & bits; }
    uint32_t saved_;
};

/// Rounding to nearest, whatever the caller's mode.
using RoundToNearest = WithoutControls<mxcsrRoundMask>;

/// Rounding to nearest, denormals taken and given as they are.
using PlainArithmetic = WithoutControls<mxcsrRoundMask | mxcsrFlushToZero | mxcsrDenormalsAreZero>;

/// The usual environment, whatever the caller's: rounding to nearest, denormals taken and given as they are, and no
/// exception that traps. The caller's control words are restored as they were; where the vector unit's needed no change
/// its exception flags are cleared instead, but for inexact, so that what runs here leaves none behind.
class UsualEnvironment {
  public:
    UsualEnvironment() : saved_(readMxcsr()), savedX87_(readX87Control()) {
        if (changed()) writeMxcsr(mxcsrAllMasked);
        if (changedX87()) writeX87Control(savedX87_ | x87AllMasked);
    }
    ~UsualEnvironment() {
        writeMxcsr(changed() ? saved_ : readMxcsr() & ~(mxcsrFlags & ~mxcsrInexact));
        if (changedX87()) writeX87Control(savedX87_);
    }
    UsualEnvironment(const UsualEnvironment&) = delete;
    UsualEnvironment& operator=(const UsualEnvironment&) = delete;

  private:
    bool changed() const { return (saved_ & ~mxcsrFlags) != mxcsrAllMasked; }
    bool changedX87() const { return (savedX87_ & x87AllMasked) != x87AllMasked; }
    uint32_t saved_;
    uint16_t savedX87_;
};

}  // namespace q4
