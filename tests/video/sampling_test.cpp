#include "moxcc/sampling.h"

#include "video/pictures.h"

using namespace moxtest;
using namespace moxtest::video;

namespace {

struct Form {
    AnyFunction function;
    Sampling from;
    VideoLayout src;
    Sampling to;
    VideoLayout dst;
    bool crossed;
    int minWidth, minHeight;  // the width is cut to a multiple of its least value

    MoxiSize cut(MoxiSize size) const {
        return {size.width / minWidth * minWidth, size.height / cellHeight() * cellHeight()};
    }
    int cellHeight() const { return std::max(from.cellHeight, to.cellHeight); }
};

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
                // Of planes whose odd rows or columns are dropped the last one is never needed.
                const bool drops = form.src == P3 && form.from == s422;
                const Picture src(form.src, form.from, cut, random,
                                  {drops && form.to == s411 ? 1 : 0, drops && form.to == s420 ? 1 : 0});
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

TEST(Sampling, TakesLumaOfOddWidths) {
    const AnyFunction function = FORM(moxiYCbCr422ToGray_8u_C2C1R);
    forEachSize([&](MoxiSize size, Random& random) {
        const Picture src(C2, s422, size, random, {size.width % 2, 0}), before(C1, s422, size, random);
        expectSame(function, src, before, size, [&](const Picture& from, Picture& to) {
            for (int y = 0; y < size.height; ++y) {
                for (int x = 0; x < size.width; ++x) to.set({0, y, x}, from.get(luma(C2, x, y)));
            }
        });
    });
}

// ---- chroma planes resampled ----------------------------------------------------------------------------------------

using Mat = const Plane<Mox8u>&;

struct Resampling {
    AnyFunction function;
    Sampling from, to;
    int cellHeight;
    MoxiSize dropped;                                       // last columns and rows of a chroma plane, never needed
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
    {FORM(moxiYCbCr411To420_8u_P3R), s411, s420, 4, {0, 1}, from411To420},
    {FORM(moxiYCbCr420To411_8u_P3R), s420, s411, 2, {1, 0}, from420To411},
    {FORM(moxiYCbCr420To1620_8u_P3R), s420, s1620, 4, {1, 1}, from420To1620},
    {FORM(moxiYCbCr1620To420_8u_P3R), s1620, s420, 4, {0, 0}, from1620To420},
};

TEST(Sampling, ResamplesPlanes) {
    for (const Resampling& r : resamplings) {
        forEachSize(
            [&](MoxiSize cells, Random& random) {
                const MoxiSize size = {cells.width * 4, cells.height * r.cellHeight};
                const Picture src(P3, r.from, size, random, r.dropped), before(P3, r.to, size, random);
                expectSame(r.function, src, before, size, [&](const Picture& from, Picture& to) {
                    for (int y = 0; y < size.height; ++y) {
                        for (int x = 0; x < size.width; ++x) to.set({0, y, x}, from.get({0, y, x}));
                    }
                    for (int k = 1; k < 3; ++k) r.reference(from.plane(k), to.plane(k));
                });
            },
            1, 100, 3);
    }
}

}  // namespace
