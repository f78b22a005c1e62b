// Uniform pseudo-random numbers.
#include "tone/noise.h"

#include "simd/control.h"

namespace q4 {
namespace {

constexpr uint32_t congruence(uint32_t x) { return x * 69069 + 1013904243; }

/// The sum of a subtract-with-borrow sequence over three words and of a linear congruential one.
class Sequence {
  public:
    int32_t next() {
        const uint32_t difference = uint32_t(borrow_) + lag_[1] - lag_[2];
        borrow_ = int32_t(difference) < 0 ? -1 : 0;
        const uint32_t number = borrow_ ? difference - 18 : difference;
        lag_[2] = lag_[1];
        lag_[1] = lag_[0];
        lag_[0] = number;
        congruential_ = congruence(congruential_);
        return int32_t(number + congruential_);
    }

  private:
    static constexpr uint32_t seed_ = 0;
    uint32_t congruential_ = 1131199209;
    uint32_t lag_[3] = {seed_, congruence(seed_), congruence(congruence(seed_))};  // the last numbers, latest first
    int32_t borrow_ = -1;                                                          // -1 or 0
};

/// Numbers from low to high. Their sum and difference are an int or a float, whichever T gives.
template <class T>
void fillUniform(T* dst, int32_t count, T low, T high) {
    const Mox64f mean = Mox64f(low + high) * 0.5, scale = Mox64f(high - low) * 0x1p-32;
    Sequence sequence;
    for (int32_t i = 0; i < count; ++i) {
        const Mox64f y = Mox64f(sequence.next()) * scale + mean;
        if constexpr (std::is_integral_v<T>)
            dst[i] = T(nearest(y));
        else
            dst[i] = T(y);
    }
}

}  // namespace

NoiseTables makeNoise(void* memory, Mox32f low, Mox32f high) {
    constexpr int32_t count = NoiseTables::count;
    Mox32f* const number = static_cast<Mox32f*>(memory);
    Mox16s* const offset = reinterpret_cast<Mox16s*>(number + count);
    fillUniform<Mox16s>(offset, count, 0, count);
    for (int32_t x = 0; x < count; ++x) offset[x] = Mox16s(offset[x] + x);
    fillUniform(number, count, low, high);
    return {number, offset};
}

}  // namespace q4
