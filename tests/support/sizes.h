// The sizes that a conversion is tested at.
#ifndef SUPPORT_SIZES_H
#define SUPPORT_SIZES_H

#include <gtest/gtest.h>

#include "moxcc/types.h"
#include "support/random.h"

namespace moxtest {

/// Calls body(MoxiSize, Random&) for each width from `from` to `to`, with a small random height each, then for two
/// wider images. 70 columns see both sides of the limits of two 32-pixel blocks. Ends at the first failure.
template <class Body>
void forEachSize(const Body& body, int from = 1, int to = 70, int maxHeight = 5, uint64_t seed = 1) {
    Random random(seed);
    const auto run = [&](int width, int height) {
        if (!::testing::Test::HasFailure()) body(MoxiSize{width, height}, random);
    };
    for (int width = from; width <= to; ++width) run(width, static_cast<int>(random.between(1, maxHeight)));
    run(to + 187, maxHeight);
    run(to + 1000, 1);
}

}  // namespace moxtest

#endif
