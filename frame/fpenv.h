// Floating-point control for the length of a scope. The compiler knows nothing of the control word and may move
// operations across the change: what is to run under it stands in a noinline function that is called within the scope.
#pragma once

#include "simd/control.h"

namespace q4 {

/// Rounding to nearest, whatever the caller's mode; the caller's word is restored as it was.
class RoundToNearest {
  public:
    RoundToNearest() : saved_(readMxcsr()) {
        if (changed()) writeMxcsr(saved_ & ~mxcsrRoundMask);
    }
    ~RoundToNearest() {
        if (changed()) writeMxcsr(saved_);
    }
    RoundToNearest(const RoundToNearest&) = delete;
    RoundToNearest& operator=(const RoundToNearest&) = delete;

  private:
    bool changed() const { return saved_ & mxcsrRoundMask; }
    uint32_t saved_;
};

}  // namespace q4
