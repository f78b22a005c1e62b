// Video pictures in any layout for the tests, and calls of exports of any signature with their planes.
#ifndef VIDEO_PICTURES_H
#define VIDEO_PICTURES_H

#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <tuple>
#include <vector>

#include "support/support.h"

namespace moxtest::video {

// ---- pictures in any layout -----------------------------------------------------------------------------------------

struct Sampling {
    int cellWidth, cellHeight;
    bool operator==(const Sampling&) const = default;
};
inline const Sampling s422 = {2, 1}, s420 = {2, 2}, s411 = {4, 1}, s1620 = {4, 4};

enum VideoLayout { C2, C2chromaFirst, P2, P3, C1 };

struct Place {
    int plane, row, byte;
};
inline Place luma(VideoLayout layout, int x, int y) {
    return {0, y, layout == C2 ? 2 * x : layout == C2chromaFirst ? 2 * x + 1 : x};
}
/// Sample i of row r of the first (k = 0) or second kind of chroma.
inline Place chroma(VideoLayout layout, int k, int i, int r) {
    switch (layout) {
        case C2:
            return {0, r, 4 * i + 1 + 2 * k};
        case C2chromaFirst:
            return {0, r, 4 * i + 2 * k};
        case P2:
            return {1, r, 2 * i + k};
        default:
            return {1 + k, r, i};
    }
}

class Picture {
  public:
    /// chromaLess: planes of chroma end so many columns and rows before the picture's last, packed rows so many bytes.
    Picture(VideoLayout layout, Sampling s, MoxiSize size, Random& random, MoxiSize chromaLess = {0, 0})
        : layout_(layout) {
        const int w = size.width, h = std::max(size.height, 0);
        const int columns = w / s.cellWidth - chromaLess.width, rows = h / s.cellHeight - chromaLess.height;
        const auto add = [&](int bytes, int r) {
            planes_.push_back(std::make_unique<Plane<Mox8u>>(bytes, std::max(r, 1), 1, random));
        };
        add(layout == C2 || layout == C2chromaFirst ? 2 * w - chromaLess.width : w, h);
        if (layout == P2) add(2 * columns, rows);
        if (layout == P3) add(columns, rows), add(columns, rows);
    }
    Picture(const Picture& other) : layout_(other.layout_) {
        for (const auto& plane : other.planes_) planes_.push_back(std::make_unique<Plane<Mox8u>>(*plane));
    }

    VideoLayout layout() const { return layout_; }
    int planes() const { return static_cast<int>(planes_.size()); }
    Plane<Mox8u>& plane(int i) const { return *planes_[static_cast<size_t>(i)]; }
    Mox8u get(Place p) const { return plane(p.plane).get(p.byte, p.row); }
    void set(Place p, Mox8u v) { plane(p.plane).set(p.byte, p.row, v); }

  private:
    VideoLayout layout_;
    std::vector<std::unique_ptr<Plane<Mox8u>>> planes_;
};

// ---- calls ----------------------------------------------------------------------------------------------------------

/// The pointers and steps of one side, to be changed at will.
struct Side {
    explicit Side(const Picture& picture) {
        for (int i = 0; i < picture.planes(); ++i) {
            planes[i] = picture.plane(i).data();
            steps[i] = picture.plane(i).step();
        }
    }
    Mox8u* planes[3] = {};
    int32_t steps[3] = {};
};

/// An export of any signature, called with the pictures' planes and steps in the order of its parameters; an argument
/// behind the size is `extra`.
struct AnyFunction {
    std::string name;
    std::function<MoxStatus(const Library&, const Side& src, const Side& dst, MoxiSize, int32_t extra)> callWith;

    MoxStatus call(const Library& lib, const Side& src, const Side& dst, MoxiSize size, int32_t extra = 0) const {
        return callWith(lib, src, dst, size, extra);
    }
};

class Arguments {
  public:
    Arguments(const Side& src, const Side& dst, MoxiSize size, int32_t extra)
        : sides_{&src, &dst}, size_(size), extra_(extra) {}

    template <class P>
    P next() {
        if constexpr (std::is_same_v<P, MoxiSize>) {
            step_ = &extra_;
            return size_;
        } else if constexpr (std::is_same_v<P, const Mox8u*> || std::is_same_v<P, Mox8u*>) {
            step_ = &side<P>().steps[pointers_];
            return side<P>().planes[pointers_++];
        } else if constexpr (std::is_same_v<P, int32_t> || std::is_same_v<P, Mox8u>) {
            return static_cast<P>(*step_);
        } else if constexpr (std::is_same_v<P, const int32_t*>) {
            return last_->steps;
        } else {
            return const_cast<P>(
                reinterpret_cast<Mox8u* const*>(side<std::remove_const_t<std::remove_pointer_t<P>>>().planes));
        }
    }

  private:
    /// Pointers to const are the source's.
    template <class P>
    const Side& side() {
        const Side* const now = sides_[std::is_const_v<std::remove_pointer_t<P>> ? 0 : 1];
        if (now != last_) pointers_ = 0;
        return *(last_ = now);
    }

    const Side* sides_[2];
    MoxiSize size_;
    int32_t extra_;
    const Side* last_ = nullptr;
    const int32_t* step_ = nullptr;
    int pointers_ = 0;
};

template <class... P>
AnyFunction anySignature(Symbol<MoxStatus(P...)> function) {
    return {function.name, [=](const Library& lib, const Side& src, const Side& dst, MoxiSize size, int32_t extra) {
                Arguments arguments(src, dst, size, extra);
                std::tuple<P...> told{arguments.next<P>()...};
                return std::apply(lib(function), told);
            }};
}
#define FORM(function) ::moxtest::video::anySignature(MOX_EXPORT(function))

/// Compares every byte of what the library makes of the source with what reference(src, want) does.
template <class Reference>
void expectSame(const AnyFunction& function, const Picture& src, const Picture& before, MoxiSize size,
                const Reference& reference, MoxStatus status = moxStatusOk, int32_t extra = 0) {
    Picture want = before;
    reference(src, want);
    for (int i = 0; i < src.planes(); ++i) src.plane(i).protect();
    forEachLibrary([&](const Library& lib) {
        const Picture got = before;
        ASSERT_EQ(function.call(lib, Side(src), Side(got), size, extra), status) << describe(lastCall());
        for (int i = 0; i < got.planes(); ++i) ASSERT_TRUE(same(got.plane(i), want.plane(i))) << "plane " << i;
    });
}

}  // namespace moxtest::video

#endif
