// Uniform pseudo-random numbers.
#include "tone/noise.h"

#include "frame/checks.h"
#include "simd/control.h"

namespace q4 {
namespace {

template <class T>
constexpr int32_t identifier = std::is_same_v<T, Mox16s> ? 36 : 37;

constexpr uint32_t congruence(uint32_t x) { return x * 69069 + 1013904243; }

template <class T>
MoxStatus init(RandUniformState<T>* state, T low, T high, uint32_t seed) {
    if (MoxStatus s = firstOf(notNull(state))) return s;
    const uint32_t second = congruence(seed), third = congruence(second);
    *state = {.identifier = identifier<T>,
              .seed = seed,
              .low = low,
              .high = high,
              .mean = Mox64f(low + high) * 0.5,       // sums and differences in int or float,
              .scale = Mox64f(high - low) * 0x1p-32,  // whichever T gives
              .congruential = 1131199209,
              .lag = {seed, second, third},
              .borrow = -1};
    return moxStatusOk;
}

template <class T>
int32_t next(RandUniformState<T>& state) {
    const uint32_t difference = uint32_t(state.borrow) + state.lag[1] - state.lag[2];
    state.borrow = int32_t(difference) < 0 ? -1 : 0;
    const uint32_t number = state.borrow ? difference - 18 : difference;
    state.lag[2] = state.lag[1];
    state.lag[1] = state.lag[0];
    state.lag[0] = number;
    state.congruential = congruence(state.congruential);
    return int32_t(number + state.congruential);
}

template <class T>
MoxStatus generate(T* dst, int32_t len, RandUniformState<T>* state) {
    if (MoxStatus s = firstOf(notNull(dst, state), require([=] { return len >= 1; }, moxStatusBadSize),
                              require([=] { return state->identifier == identifier<T>; }, moxStatusBadState)))
        return s;
    RandUniformState<T> running = *state;
    for (int32_t i = 0; i < len; ++i) {
        const Mox64f y = Mox64f(next(running)) * running.scale + running.mean;
        if constexpr (std::is_integral_v<T>)
            dst[i] = T(nearest(y));
        else
            dst[i] = T(y);
    }
    *state = running;
    return moxStatusOk;
}

}  // namespace

MoxStatus moxsRandUniformInit_16s(MoxRandUniformState16s* state, Mox16s low, Mox16s high, uint32_t seed) {
    return init(state, low, high, seed);
}
MoxStatus moxsRandUniformInit_32f(MoxRandUniformState32f* state, Mox32f low, Mox32f high, uint32_t seed) {
    return init(state, low, high, seed);
}
MoxStatus moxsRandUniform_16s(Mox16s* dst, int32_t len, MoxRandUniformState16s* state) {
    return generate(dst, len, state);
}
MoxStatus moxsRandUniform_32f(Mox32f* dst, int32_t len, MoxRandUniformState32f* state) {
    return generate(dst, len, state);
}

NoiseTables makeNoise(void* memory, Mox32f low, Mox32f high) {
    constexpr int32_t count = NoiseTables::count;
    Mox32f* const number = static_cast<Mox32f*>(memory);
    Mox16s* const offset = reinterpret_cast<Mox16s*>(number + count);
    MoxRandUniformState16s offsets;
    moxsRandUniformInit_16s(&offsets, 0, count, 0);
    moxsRandUniform_16s(offset, count, &offsets);
    for (int32_t x = 0; x < count; ++x) offset[x] = Mox16s(offset[x] + x);
    MoxRandUniformState32f numbers;
    moxsRandUniformInit_32f(&numbers, low, high, 0);
    moxsRandUniform_32f(number, count, &numbers);
    return {number, offset};
}

}  // namespace q4
