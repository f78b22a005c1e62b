// The noise of the dither methods: tables of uniform pseudo-random numbers, which a call makes for itself.
#pragma once

#include <cstddef>

#include "moxcc/types.h"
#include "simd/vec.h"

namespace q4 {

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
