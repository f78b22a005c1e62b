// The noise of the dither methods: a uniform pseudo-random generator, and the tables that a call makes with it.
#pragma once

#include <cstddef>

#include "moxcc/types.h"
#include "simd/vec.h"

namespace q4 {

/// A generator in caller memory. It adds a subtract-with-borrow sequence over three words and a linear congruential
/// one.
template <class T>
struct [[gnu::packed]] RandUniformState {
    int32_t identifier;  // tells the sample types apart
    uint32_t seed;
    T low, high;
    Mox64f mean, scale;     // of the results, from signed 32-bit numbers
    uint32_t congruential;  //
    uint32_t lag[3];        // the last numbers of the other sequence, latest first
    int32_t borrow;         // -1 or 0
};
using MoxRandUniformState16s = RandUniformState<Mox16s>;
using MoxRandUniformState32f = RandUniformState<Mox32f>;
static_assert(sizeof(MoxRandUniformState16s) == 48 && sizeof(MoxRandUniformState32f) == 52);

/// Numbers from low to high. The same seed gives the same sequence.
MoxStatus moxsRandUniformInit_16s(MoxRandUniformState16s* state, Mox16s low, Mox16s high, uint32_t seed);
MoxStatus moxsRandUniformInit_32f(MoxRandUniformState32f* state, Mox32f low, Mox32f high, uint32_t seed);
/// The next len numbers. moxStatusBadState if the state is not of this type.
MoxStatus moxsRandUniform_16s(Mox16s* dst, int32_t len, MoxRandUniformState16s* state);
MoxStatus moxsRandUniform_32f(Mox32f* dst, int32_t len, MoxRandUniformState32f* state);

/// Random numbers for every place in a picture, from two tables: a column's offset leads to its number.
struct NoiseTables {
    static constexpr ptrdiff_t count = 1024;
    static constexpr ptrdiff_t bytes = count * ptrdiff_t(sizeof(Mox32f) + sizeof(Mox16s));

    const Mox32f* number;
    const Mox16s* offset;  // with the column added

    MOX_INLINE Mox32f at(ptrdiff_t x, ptrdiff_t y) const {
        return number[(offset[x & (count - 1)] + 2 * y) & (count - 1)];
    }
    /// Those of a vector of columns that starts at a multiple of 4.
    template <int laneStride>
    MOX_INLINE F32 at(ptrdiff_t x, ptrdiff_t y) const {
        constexpr int mask = count - 1;
        const I32 start = widenLo(loadHalf<I16, laneStride* int(sizeof(Mox16s))>(offset + (x & mask)));
        return gather(number, (start + splat<I32>(int(2 * y & mask))) & splat<I32>(mask));
    }
};

/// Makes the tables, always from the same seed, with numbers from low to high, in memory of NoiseTables::bytes.
NoiseTables makeNoise(void* memory, Mox32f low, Mox32f high);

}  // namespace q4
