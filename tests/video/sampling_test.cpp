#include "moxcc/sampling.h"

#include <algorithm>
#include <functional>
#include <memory>
#include <string>

#include "support/support.h"

using namespace moxtest;

namespace {

// ---- pictures in any layout -----------------------------------------------------------------------------------------

struct Sampling {
    int cellWidth, cellHeight;
    bool operator==(const Sampling&) const = default;
};
const Sampling s422 = {2, 1}, s420 = {2, 2}, s411 = {4, 1}, s1620 = {4, 4};

enum Layout { C2, C2chromaFirst, P2, P3, C1 };

struct Place {
    int plane, row, byte;
};
Place luma(Layout layout, int x, int y) {
    return {0, y, layout == C2 ? 2 * x : layout == C2chromaFirst ? 2 * x + 1 : x};
}
/// Sample i of row r of the first (k = 0) or second kind of chroma.
Place chroma(Layout layout, int k, int i, int r) {
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
    /// chromaRowsLess: planes of chroma end so many rows before the picture's last.
    Picture(Layout layout, Sampling s, MoxiSize size, Random& random, int chromaRowsLess = 0) : layout_(layout) {
        const int w = size.width, h = std::max(size.height, 0);
        const int columns = w / s.cellWidth, rows = h / s.cellHeight - chromaRowsLess;
        const auto add = [&](int bytes, int r) {
            planes_.push_back(std::make_unique<Plane<Mox8u>>(bytes, std::max(r, 1), 1, random));
        };
        add(layout == C2 || layout == C2chromaFirst ? 2 * w : w, h);
        if (layout == P2) add(2 * columns, rows);
        if (layout == P3) add(columns, rows), add(columns, rows);
    }
    Picture(const Picture& other) : layout_(other.layout_) {
        for (const auto& plane : other.planes_) planes_.push_back(std::make_unique<Plane<Mox8u>>(*plane));
    }

    Layout layout() const { return layout_; }
    int planes() const { return static_cast<int>(planes_.size()); }
    Plane<Mox8u>& plane(int i) const { return *planes_[static_cast<size_t>(i)]; }
    Mox8u get(Place p) const { return plane(p.plane).get(p.byte, p.row); }
    void set(Place p, Mox8u v) { plane(p.plane).set(p.byte, p.row, v); }

  private:
    Layout layout_;
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
    bool nullArray = false, nullSteps = false;
};

/// An export of any signature, called with the pictures' planes and steps in the order of its parameters.
struct Function {
    std::string name;
    std::function<MoxStatus(const Library&, const Side& src, const Side& dst, MoxiSize)> call;
};

class Arguments {
  public:
    Arguments(const Side& src, const Side& dst, MoxiSize size) : sides_{&src, &dst}, size_(size) {}

    template <class P>
    P next() {
        if constexpr (std::is_same_v<P, MoxiSize>) {
            return size_;
        } else if constexpr (std::is_same_v<P, const Mox8u*> || std::is_same_v<P, Mox8u*>) {
            step_ = &side<P>().steps[pointers_];
            return side<P>().planes[pointers_++];
        } else if constexpr (std::is_same_v<P, int32_t>) {
            return *step_;
        } else if constexpr (std::is_same_v<P, const int32_t*>) {
            return last_->nullSteps ? nullptr : last_->steps;
        } else {
            return side<std::remove_const_t<std::remove_pointer_t<P>>>().nullArray
                       ? nullptr
                       : const_cast<P>(reinterpret_cast<Mox8u* const*>(last_->planes));
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
    const Side* last_ = nullptr;
    const int32_t* step_ = nullptr;
    int pointers_ = 0;
};

template <class... P>
Function anySignature(Export<MoxStatus(P...)> function) {
    return {function.name, [=](const Library& lib, const Side& src, const Side& dst, MoxiSize size) {
                Arguments arguments(src, dst, size);
                std::tuple<P...> told{arguments.next<P>()...};
                return std::apply(lib(function), told);
            }};
}
#define FORM(function) anySignature(MOX_EXPORT(function))

struct Form {
    Function function;
    Sampling from;
    Layout src;
    Sampling to;
    Layout dst;
    bool crossed;
    int minWidth, minHeight;  // the width is cut to a multiple of its least value

    MoxiSize cut(MoxiSize size) const {
        return {size.width / minWidth * minWidth, size.height / cellHeight() * cellHeight()};
    }
    int cellHeight() const { return std::max(from.cellHeight, to.cellHeight); }
};

/// Compares every byte of what the library makes of the source with what reference(src, want) does.
template <class Reference>
void expectSame(const Function& function, const Picture& src, const Picture& before, MoxiSize size,
                const Reference& reference) {
    Picture want = before;
    reference(src, want);
    for (int i = 0; i < src.planes(); ++i) src.plane(i).protect();
    forEachLibrary([&](const Library& lib) {
        const Picture got = before;
        ASSERT_EQ(function.call(lib, Side(src), Side(got), size), moxStatusOk) << describe(lastCall());
        for (int i = 0; i < got.planes(); ++i) ASSERT_TRUE(same(got.plane(i), want.plane(i))) << "plane " << i;
    });
}

void expectStatuses(const Function& function, Layout srcLayout, Layout dstLayout, Sampling finest, MoxiSize good,
                    const std::vector<MoxiSize>& bad) {
    Random random(1);
    const Picture src(srcLayout, finest, good, random), dst(dstLayout, finest, good, random);
    const Picture before = dst;
    forEachLibrary([&](const Library& lib) {
        const auto expect = [&](const Side& s, const Side& d, MoxiSize size, MoxStatus status, const char* what) {
            EXPECT_EQ(function.call(lib, s, d, size), status) << describe(lastCall()) << ": " << what;
        };
        // A null pointer is found before a bad size.
        for (const MoxiSize size : {good, MoxiSize{0, 0}}) {
            for (int i = 0; i < 3; ++i) {
                Side s(src), d(dst);
                if (i < src.planes()) {
                    s.planes[i] = nullptr;
                    expect(s, d, size, moxStatusNullPtr, "source plane");
                    s = Side(src);
                }
                if (i < dst.planes()) {
                    d.planes[i] = nullptr;
                    // One form looks at the size before the destination's planes.
                    const bool late = function.name == "moxiYCbCr420ToYCrCb420_8u_P2P3R" && size.width < 1;
                    expect(s, d, size, late ? moxStatusBadSize : moxStatusNullPtr, "destination plane");
                }
            }
            Side s(src), d(dst);
            s.nullArray = true;
            if (srcLayout == P3) expect(s, d, size, moxStatusNullPtr, "source array");
            s = Side(src);
            d.nullArray = true;
            if (dstLayout == P3) expect(s, d, size, moxStatusNullPtr, "destination array");
        }
        for (const MoxiSize size : bad) expect(Side(src), Side(dst), size, moxStatusBadSize, "size");
        for (int i = 0; i < dst.planes(); ++i) EXPECT_TRUE(bytesEqual(dst.plane(i), before.plane(i)));
    });
}

// ---- luma and chroma moved ------------------------------------------------------------------------------------------

constexpr int any = -1000;
constexpr bool straight = false, crossed = true;

const Form forms[] = {
    // function, source sampling and layout, destination sampling and layout, chroma, smallest width and height
    // clang-format off
    {FORM(moxiYCbCr411_8u_P2P3R),           s411, P2,            s411, P3,            straight, 4, any},
    {FORM(moxiYCbCr411_8u_P3P2R),           s411, P3,            s411, P2,            straight, 4, any},
    {FORM(moxiYCbCr420_8u_P2P3R),           s420, P2,            s420, P3,            straight, 2, 2},
    {FORM(moxiYCbCr420_8u_P3P2R),           s420, P3,            s420, P2,            straight, 2, 2},
    {FORM(moxiYCbCr420ToYCrCb420_8u_P2P3R), s420, P2,            s420, P3,            straight, 2, 2},
    {FORM(moxiYCrCb420ToYCbCr420_8u_P3P2R), s420, P3,            s420, P2,            crossed,  2, 2},
    {FORM(moxiYCbCr422_8u_C2P3R),           s422, C2,            s422, P3,            straight, 2, 1},
    {FORM(moxiYCbCr422_8u_P3C2R),           s422, P3,            s422, C2,            straight, 2, 1},
    {FORM(moxiCbYCr422ToYCbCr422_8u_C2P3R), s422, C2chromaFirst, s422, P3,            straight, 2, 1},
    {FORM(moxiCbYCr422ToYCbCr422_8u_C2R),   s422, C2chromaFirst, s422, C2,            straight, 2, 1},
    {FORM(moxiYCbCr422ToCbYCr422_8u_C2R),   s422, C2,            s422, C2chromaFirst, straight, 2, 1},
    {FORM(moxiYCbCr422ToCbYCr422_8u_P3C2R), s422, P3,            s422, C2chromaFirst, straight, 2, 1},
    {FORM(moxiYCbCr422ToYCrCb422_8u_C2R),   s422, C2,            s422, C2,            crossed,  2, any},
    {FORM(moxiYCbCr422ToYCrCb422_8u_P3C2R), s422, P3,            s422, C2,            crossed,  2, any},
    {FORM(moxiYCrCb422ToYCbCr422_8u_C2P3R), s422, C2,            s422, P3,            crossed,  2, 1},
    {FORM(moxiCbYCr422ToYCbCr420_8u_C2P2R), s422, C2chromaFirst, s420, P2,            straight, 2, 2},
    {FORM(moxiCbYCr422ToYCbCr420_8u_C2P3R), s422, C2chromaFirst, s420, P3,            straight, 2, 2},
    {FORM(moxiYCbCr422ToYCbCr420_8u_C2P2R), s422, C2,            s420, P2,            straight, 2, 2},
    {FORM(moxiYCbCr422ToYCbCr420_8u_C2P3R), s422, C2,            s420, P3,            straight, 2, 2},
    {FORM(moxiYCbCr422ToYCbCr420_8u_P3P2R), s422, P3,            s420, P2,            straight, 2, 2},
    {FORM(moxiYCbCr422ToYCbCr420_8u_P3R),   s422, P3,            s420, P3,            straight, 2, 2},
    {FORM(moxiCbYCr422ToYCrCb420_8u_C2P3R), s422, C2chromaFirst, s420, P3,            crossed,  2, 2},
    {FORM(moxiYCbCr422ToYCrCb420_8u_C2P2R), s422, C2,            s420, P2,            crossed,  2, 2},
    {FORM(moxiYCbCr422ToYCrCb420_8u_C2P3R), s422, C2,            s420, P3,            crossed,  2, 2},
    {FORM(moxiYCrCb422ToYCbCr420_8u_C2P3R), s422, C2,            s420, P3,            crossed,  2, 2},
    {FORM(moxiYCbCr420ToCbYCr422_8u_P2C2R), s420, P2,            s422, C2chromaFirst, straight, 2, 2},
    {FORM(moxiYCbCr420ToYCbCr422_8u_P2C2R), s420, P2,            s422, C2,            straight, 2, 2},
    {FORM(moxiYCbCr420ToYCbCr422_8u_P2P3R), s420, P2,            s422, P3,            straight, 2, 2},
    {FORM(moxiYCbCr420ToYCbCr422_8u_P3R),   s420, P3,            s422, P3,            straight, 2, 2},
    {FORM(moxiYCrCb420ToCbYCr422_8u_P3C2R), s420, P3,            s422, C2chromaFirst, crossed,  2, 2},
    {FORM(moxiYCrCb420ToYCbCr422_8u_P3C2R), s420, P3,            s422, C2,            crossed,  2, 2},
    {FORM(moxiYCrCb420ToYCbCr422_8u_P3R),   s420, P3,            s422, P3,            crossed,  2, 2},
    {FORM(moxiCbYCr422ToYCbCr411_8u_C2P3R), s422, C2chromaFirst, s411, P3,            straight, 4, any},
    {FORM(moxiYCbCr422ToYCbCr411_8u_C2P2R), s422, C2,            s411, P2,            straight, 4, any},
    {FORM(moxiYCbCr422ToYCbCr411_8u_C2P3R), s422, C2,            s411, P3,            straight, 4, 1},
    {FORM(moxiYCbCr422ToYCbCr411_8u_P3P2R), s422, P3,            s411, P2,            straight, 4, any},
    {FORM(moxiYCbCr422ToYCbCr411_8u_P3R),   s422, P3,            s411, P3,            straight, 4, any},
    {FORM(moxiYCrCb422ToYCbCr411_8u_C2P3R), s422, C2,            s411, P3,            crossed,  4, any},
    {FORM(moxiYCbCr411ToYCbCr422_8u_P2C2R), s411, P2,            s422, C2,            straight, 4, any},
    {FORM(moxiYCbCr411ToYCbCr422_8u_P2P3R), s411, P2,            s422, P3,            straight, 4, any},
    {FORM(moxiYCbCr411ToYCbCr422_8u_P3C2R), s411, P3,            s422, C2,            straight, 4, any},
    {FORM(moxiYCbCr411ToYCbCr422_8u_P3R),   s411, P3,            s422, P3,            straight, 4, any},
    {FORM(moxiYCbCr411ToYCrCb422_8u_P3C2R), s411, P3,            s422, C2,            crossed,  4, any},
    {FORM(moxiYCbCr411ToYCrCb422_8u_P3R),   s411, P3,            s422, P3,            crossed,  4, any},
    {FORM(moxiYCbCr411ToYCbCr420_8u_P2P3R), s411, P2,            s420, P3,            straight, 4, 2},
    {FORM(moxiYCbCr411ToYCbCr420_8u_P3P2R), s411, P3,            s420, P2,            straight, 4, 2},
    {FORM(moxiYCbCr411ToYCbCr420_8u_P3R),   s411, P3,            s420, P3,            straight, 4, 2},
    {FORM(moxiYCbCr411ToYCrCb420_8u_P2P3R), s411, P2,            s420, P3,            crossed,  4, 2},
    {FORM(moxiYCbCr420ToYCbCr411_8u_P2P3R), s420, P2,            s411, P3,            straight, 4, 2},
    {FORM(moxiYCbCr420ToYCbCr411_8u_P3P2R), s420, P3,            s411, P2,            straight, 4, 2},
    {FORM(moxiYCrCb420ToYCbCr411_8u_P3P2R), s420, P3,            s411, P2,            crossed,  4, 2},
    // clang-format on
};

/// Where the chroma sample of column i, row r of the destination comes from.
std::pair<int, int> source(Sampling from, Sampling to, int i, int r) {
    if (from == to) return {i, r};
    if (from == s422 && to == s420) return {i, 2 * r};
    if (from == s420 && to == s422) return {i, r / 2};
    if (from == s422 && to == s411) return {2 * i, r};
    if (from == s411 && to == s422) return {i / 2, r};
    if (from == s411 && to == s420) return {i / 2, 2 * r + i % 2};
    return {2 * i + r % 2, r / 2};  // 4:2:0 to 4:1:1
}

TEST(Sampling, MovesEverySampleToItsPlace) {
    for (const Form& form : forms) {
        forEachSize(
            [&](MoxiSize size, Random& random) {
                size.height = std::max(size.height, form.minHeight);
                const MoxiSize cut = form.cut(size);
                // Of planes whose odd rows are dropped the last row is never needed.
                const bool dropsRows = form.src == P3 && form.from == s422 && form.to == s420;
                const Picture src(form.src, form.from, cut, random, dropsRows ? 1 : 0);
                const Picture before(form.dst, form.to, cut, random);
                expectSame(form.function, src, before, size, [&](const Picture& from, Picture& to) {
                    for (int y = 0; y < cut.height; ++y) {
                        for (int x = 0; x < cut.width; ++x)
                            to.set(luma(form.dst, x, y), from.get(luma(form.src, x, y)));
                    }
                    for (int r = 0; r < cut.height / form.to.cellHeight; ++r) {
                        for (int i = 0; i < cut.width / form.to.cellWidth; ++i) {
                            const auto [si, sr] = source(form.from, form.to, i, r);
                            for (int k = 0; k < 2; ++k)
                                to.set(chroma(form.dst, form.crossed ? 1 - k : k, i, r),
                                       from.get(chroma(form.src, k, si, sr)));
                        }
                    }
                });
            },
            form.minWidth, 140, 5);
    }
}

TEST(Sampling, TestsPointersThenSize) {
    for (const Form& form : forms) {
        const MoxiSize good = {form.minWidth, std::max(form.minHeight, 1)};
        std::vector<MoxiSize> bad = {{form.minWidth - 1, good.height}, {-4, good.height}};
        if (form.minHeight != any) bad.push_back({form.minWidth, form.minHeight - 1});
        expectStatuses(form.function, form.src, form.dst, s422, good, bad);
    }
}

TEST(Sampling, AnyHeightBelowOneDoesNothing) {
    Random random(1);
    for (const Form& form : forms) {
        if (form.minHeight != any) continue;
        for (const int height : {0, -3}) {
            const Picture src(form.src, form.from, {8, 1}, random), dst(form.dst, form.to, {8, 1}, random);
            expectSame(form.function, src, dst, {8, height}, [](const Picture&, Picture&) {});
        }
    }
}

TEST(Sampling, OneFormTestsItsDestinationSteps) {
    Random random(1);
    const Picture src(C2, s422, {4, 1}, random), dst(P3, s422, {4, 1}, random);
    Side d(dst);
    d.nullSteps = true;
    forEachLibrary([&](const Library& lib) {
        EXPECT_EQ(FORM(moxiYCbCr422_8u_C2P3R).call(lib, Side(src), d, {0, 0}), moxStatusNullPtr);
    });
}

TEST(Sampling, TakesLumaOfOddWidths) {
    const Function function = FORM(moxiYCbCr422ToGray_8u_C2C1R);
    forEachSize([&](MoxiSize size, Random& random) {
        const Picture src(C2, s422, size, random), before(C1, s422, size, random);
        expectSame(function, src, before, size, [&](const Picture& from, Picture& to) {
            for (int y = 0; y < size.height; ++y) {
                for (int x = 0; x < size.width; ++x) to.set({0, y, x}, from.get(luma(C2, x, y)));
            }
        });
    });
    expectStatuses(function, C2, C1, s422, {1, 1}, {{0, 1}, {1, 0}, {-1, 1}});
}

// ---- chroma planes resampled ----------------------------------------------------------------------------------------

using Mat = const Plane<Mox8u>&;

struct Resampling {
    Function function;
    Sampling from, to;
    int cellHeight;
    std::function<void(Mat c, Plane<Mox8u>& o)> reference;  // on one chroma plane
};

int average(bool up, int a, int b) { return (a + b + (up ? 1 : 0)) >> 1; }

void from411To420(Mat c, Plane<Mox8u>& o) {
    const int cw = c.columns(), n = (cw - 1) / 16 * 16;
    for (int r = 0; r < o.rows(); ++r) {
        for (int i = 0; i < cw; ++i) {
            const int a = c.get(i, 2 * r);
            o.set(2 * i, r, static_cast<Mox8u>(a));
            o.set(2 * i + 1, r, static_cast<Mox8u>(i == cw - 1 ? a : average(i < n, a, c.get(i + 1, 2 * r))));
        }
    }
}

void from420To411(Mat c, Plane<Mox8u>& o) {
    const int cw = o.columns(), n = cw / 32 * 32;
    for (int r = 0; r < c.rows(); ++r) {
        for (int i = 0; i < cw; ++i) {
            const int a = c.get(2 * i, r);
            o.set(i, 2 * r, static_cast<Mox8u>(a));
            o.set(i, 2 * r + 1, static_cast<Mox8u>(r == c.rows() - 1 ? a : average(i < n, a, c.get(2 * i, r + 1))));
        }
    }
}

void from420To1620(Mat c, Plane<Mox8u>& o) {
    for (int r = 0; r < o.rows(); ++r) {
        for (int i = 0; i < o.columns(); ++i) o.set(i, r, c.get(2 * i, 2 * r));
    }
}

void from1620To420(Mat c, Plane<Mox8u>& o) {
    const int cw = c.columns(), n = (cw - 1) / 16 * 16;
    for (int j = 0; j < c.rows(); ++j) {
        for (int i = 0; i < cw; ++i) {
            const bool lastColumn = i == cw - 1, lastRow = j == c.rows() - 1, up = i < n;
            const int a = c.get(i, j);
            const int b = lastColumn ? a : c.get(i + 1, j);
            const int d = lastRow ? a : c.get(i, j + 1);
            const int e = lastRow || lastColumn ? d : c.get(i + 1, j + 1);
            const int p = lastColumn ? a : average(up, a, b);
            const int q = average(up, d, e);
            const int left = lastRow ? a : lastColumn ? average(false, a, d) : average(up, a, d);
            const int right = lastRow || lastColumn ? left : average(up, p, q);
            o.set(2 * i, 2 * j, static_cast<Mox8u>(a));
            o.set(2 * i + 1, 2 * j, static_cast<Mox8u>(p));
            o.set(2 * i, 2 * j + 1, static_cast<Mox8u>(left));
            o.set(2 * i + 1, 2 * j + 1, static_cast<Mox8u>(right));
        }
    }
}

const Resampling resamplings[] = {
    {FORM(moxiYCbCr411To420_8u_P3R), s411, s420, 4, from411To420},
    {FORM(moxiYCbCr420To411_8u_P3R), s420, s411, 2, from420To411},
    {FORM(moxiYCbCr420To1620_8u_P3R), s420, s1620, 4, from420To1620},
    {FORM(moxiYCbCr1620To420_8u_P3R), s1620, s420, 4, from1620To420},
};

TEST(Sampling, ResamplesPlanes) {
    for (const Resampling& r : resamplings) {
        forEachSize(
            [&](MoxiSize cells, Random& random) {
                const MoxiSize size = {cells.width * 4, cells.height * r.cellHeight};
                const Picture src(P3, r.from, size, random), before(P3, r.to, size, random);
                expectSame(r.function, src, before, size, [&](const Picture& from, Picture& to) {
                    for (int y = 0; y < size.height; ++y) {
                        for (int x = 0; x < size.width; ++x) to.set({0, y, x}, from.get({0, y, x}));
                    }
                    for (int k = 1; k < 3; ++k) r.reference(from.plane(k), to.plane(k));
                });
            },
            1, 100, 3);
        expectStatuses(r.function, P3, P3, s422, {4, 4}, {{6, 4}, {4, r.cellHeight + 1}, {0, 4}, {4, 0}, {-4, 4}});
    }
}

}  // namespace
