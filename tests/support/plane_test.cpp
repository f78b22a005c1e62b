// The planes see what they are there to see.
#include "support/plane.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace moxtest {
namespace {

TEST(Plane, EveryByteOutsideTheRowsIsWatched) {
    Random random(1);
    for (int i = 0; i < 12; ++i) {
        Plane<uint16_t> before(static_cast<int>(random.between(1, 9)), static_cast<int>(random.between(1, 4)), 3,
                               random);
        Plane<uint16_t> got = before;
        EXPECT_EQ(reinterpret_cast<uintptr_t>(got.data()) % 4096, reinterpret_cast<uintptr_t>(before.data()) % 4096);
        EXPECT_TRUE(same(got, before));
        for (size_t at = 0; at < got.all().size(); ++at) {
            got.all()[at] ^= 1;
            const bool inRow = got.position(at).inRow;
            ASSERT_FALSE(bytesEqual(got, before)) << at;
            ASSERT_EQ(static_cast<bool>(sameMargins(got, before)), inRow) << at;
            got.all()[at] ^= 1;
        }
        for (int y = 0; y < got.rows(); ++y) {
            const auto first = static_cast<size_t>(got.rowStart(y) - got.all().data());
            EXPECT_TRUE(got.position(first).inRow && got.position(first).y == y && got.position(first).x == 0);
            EXPECT_EQ(got.rowStart(y), got.rowStart(0) + y * got.step());
        }
    }
}

TEST(Plane, NamesWhatDiffers) {
    Random random(1);
    const Plane<float> want(5, 3, 3, random);
    Plane<float> got = want;
    got.set(2, 1, 1, 77.0f);
    const std::string message = same(got, want).message();
    EXPECT_NE(message.find("column 2, row 1, channel 1: expected"), std::string::npos) << message;
    EXPECT_NE(message.find("got 77 "), std::string::npos) << message;
}

TEST(PlaneDeathTest, GuardPagesAndProtectionFault) {
    Random random(1);
    for (const bool bottomUp : {false, true}) {
        const Plane<uint8_t> first(3, 2, 1, {.gap = 4, .bottomUp = bottomUp, .guard = Guard::before}, random);
        const Plane<uint8_t> last(3, 2, 1, {.gap = 4, .bottomUp = bottomUp, .guard = Guard::after}, random);
        EXPECT_DEATH(first.row(bottomUp ? 1 : 0)[-1] = 1, "");
        EXPECT_DEATH(last.row(bottomUp ? 0 : 1)[3] = 1, "");
        Plane<uint8_t> locked = last;
        locked.protect();
        EXPECT_DEATH(locked.row(0)[0] = 1, "");
    }
}

}  // namespace
}  // namespace moxtest
