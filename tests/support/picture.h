// Pictures of one or more 8-bit planes, and calls that take their arguments from them: a table of exports with
// different argument lists can then be tested by one loop.
#ifndef SUPPORT_PICTURE_H
#define SUPPORT_PICTURE_H

#include <algorithm>
#include <functional>
#include <utility>
#include <vector>

#include "support/library.h"
#include "support/plane.h"
#include "support/sizes.h"

namespace moxtest {

struct Shape {
    int columns, rows, channels;
};

enum class Steps {
    own,    // each plane has a step of its own
    shared  // one step serves all
};

class Picture {
  public:
    Picture(const std::vector<Shape>& shapes, Steps steps, Random& random) {
        Layout first = Layout::random(random, 1);
        for (const Shape& shape : shapes) {
            Layout layout = Layout::random(random, 1);
            if (steps == Steps::shared) layout.gap = first.gap, layout.bottomUp = first.bottomUp;
            planes_.emplace_back(shape.columns, std::max(shape.rows, 1), shape.channels, layout, random);
        }
        for (size_t i = 0; i < planes_.size(); ++i) steps_[i] = planes_[i].step();
    }

    /// All planes lie in the same way.
    Picture(const std::vector<Shape>& shapes, const Layout& layout, Random& random) {
        for (const Shape& shape : shapes)
            planes_.emplace_back(shape.columns, std::max(shape.rows, 1), shape.channels, layout, random);
        for (size_t i = 0; i < planes_.size(); ++i) steps_[i] = planes_[i].step();
    }

    Plane<Mox8u>& operator[](size_t plane) { return planes_[plane]; }
    const Plane<Mox8u>& operator[](size_t plane) const { return planes_[plane]; }
    size_t planes() const { return planes_.size(); }
    const int32_t* steps() const { return steps_; }

  private:
    std::vector<Plane<Mox8u>> planes_;
    int32_t steps_[4] = {};
};

/// Calls an export with what its parameters ask for, in their order: pointers to const come from the source, others
/// from the destination; integers are the steps of the pointers before them; a byte is the alpha value.
template <class... P>
MoxStatus callOn(const Function<MoxStatus(P...)>& function, const Picture& src, const Picture& dst, MoxiSize roi,
                 Mox8u aval) {
    Mox8u* planes[2][4] = {};
    for (size_t i = 0; i < src.planes(); ++i) planes[0][i] = src[i].data();
    for (size_t i = 0; i < dst.planes(); ++i) planes[1][i] = dst[i].data();
    const Picture* last = nullptr;
    size_t next[2] = {};
    const auto argument = [&]<class T>(std::type_identity<T>) -> T {
        if constexpr (std::is_same_v<T, MoxiSize>) {
            return roi;
        } else if constexpr (std::is_same_v<T, Mox8u>) {
            return aval;
        } else if constexpr (std::is_same_v<T, const int32_t*>) {
            return last->steps();
        } else if constexpr (std::is_same_v<T, int32_t>) {
            return last->steps()[last == &src ? next[0] - 1 : next[1] - 1];
        } else if constexpr (std::is_pointer_v<std::remove_pointer_t<T>>) {
            constexpr int side = std::is_const_v<std::remove_pointer_t<std::remove_pointer_t<T>>> ? 0 : 1;
            last = side == 0 ? &src : &dst;
            next[side] = 1;
            return const_cast<T>(static_cast<Mox8u* const*>(planes[side]));
        } else {
            constexpr int side = std::is_const_v<std::remove_pointer_t<T>> ? 0 : 1;
            last = side == 0 ? &src : &dst;
            return planes[side][next[side]++];
        }
    };
    std::tuple<P...> arguments{argument(std::type_identity<P>())...};
    return std::apply(function, arguments);
}

/// What a conversion is expected to do.
struct Conversion {
    std::function<std::vector<Shape>(MoxiSize)> src, dst;  // the planes, with no byte more than the export may touch
    Steps srcSteps, dstSteps;
    std::function<void(const Picture& src, Picture& dst, MoxiSize roi, Mox8u aval)> expected;
    std::function<MoxStatus(MoxiSize)> status = [](MoxiSize) { return moxStatusOk; };
};

/// Calls an export of both files at all sizes, on random pictures, and compares every byte of the destination.
template <class F>
void expectConversion(Symbol<F> function, const Conversion& conversion, int fromWidth = 1, int toWidth = 70) {
    forEachSize(
        [&](MoxiSize roi, Random& random) {
            Picture src(conversion.src(roi), conversion.srcSteps, random);
            Picture want(conversion.dst(roi), conversion.dstSteps, random);
            const Picture before = want;
            const auto aval = static_cast<Mox8u>(random.bits());
            conversion.expected(src, want, roi, aval);
            for (size_t i = 0; i < src.planes(); ++i) src[i].protect();
            forEachLibrary([&](const Library& lib) {
                const Picture got = before;
                ASSERT_EQ(callOn(lib(function), src, got, roi, aval), conversion.status(roi)) << function.name;
                for (size_t i = 0; i < want.planes(); ++i) ASSERT_TRUE(same(got[i], want[i])) << "plane " << i;
            });
        },
        fromWidth, toWidth);
}

}  // namespace moxtest

#endif
