#include "moxcc/sampling.h"

#include "support/picture.h"
#include "support/support.h"

using namespace moxtest;

namespace {

bool operator==(MoxiSize a, MoxiSize b) { return a.width == b.width && a.height == b.height; }

void copyLuma(const Picture& src, Picture& want) {
    for (int y = 0; y < want[0].rows(); ++y)
        for (int x = 0; x < want.size().width - want.size().width % want.side().cell.width; ++x)
            want.setLuma(x, y, src.luma(x, y));
}

// ---- luma and chroma moved ------------------------------------------------------------------------------------------

const char* const moves[] = {
    "moxiYCbCr411_8u_P2P3R",           "moxiYCbCr411_8u_P3P2R",           "moxiYCbCr420_8u_P2P3R",
    "moxiYCbCr420_8u_P3P2R",           "moxiYCbCr420ToYCrCb420_8u_P2P3R", "moxiYCrCb420ToYCbCr420_8u_P3P2R",
    "moxiYCbCr422_8u_C2P3R",           "moxiYCbCr422_8u_P3C2R",           "moxiCbYCr422ToYCbCr422_8u_C2P3R",
    "moxiCbYCr422ToYCbCr422_8u_C2R",   "moxiYCbCr422ToCbYCr422_8u_C2R",   "moxiYCbCr422ToCbYCr422_8u_P3C2R",
    "moxiYCbCr422ToYCrCb422_8u_C2R",   "moxiYCbCr422ToYCrCb422_8u_P3C2R", "moxiYCrCb422ToYCbCr422_8u_C2P3R",
    "moxiCbYCr422ToYCbCr420_8u_C2P2R", "moxiCbYCr422ToYCbCr420_8u_C2P3R", "moxiYCbCr422ToYCbCr420_8u_C2P2R",
    "moxiYCbCr422ToYCbCr420_8u_C2P3R", "moxiYCbCr422ToYCbCr420_8u_P3P2R", "moxiYCbCr422ToYCbCr420_8u_P3R",
    "moxiCbYCr422ToYCrCb420_8u_C2P3R", "moxiYCbCr422ToYCrCb420_8u_C2P2R", "moxiYCbCr422ToYCrCb420_8u_C2P3R",
    "moxiYCrCb422ToYCbCr420_8u_C2P3R", "moxiYCbCr420ToCbYCr422_8u_P2C2R", "moxiYCbCr420ToYCbCr422_8u_P2C2R",
    "moxiYCbCr420ToYCbCr422_8u_P2P3R", "moxiYCbCr420ToYCbCr422_8u_P3R",   "moxiYCrCb420ToCbYCr422_8u_P3C2R",
    "moxiYCrCb420ToYCbCr422_8u_P3C2R", "moxiYCrCb420ToYCbCr422_8u_P3R",   "moxiCbYCr422ToYCbCr411_8u_C2P3R",
    "moxiYCbCr422ToYCbCr411_8u_C2P2R", "moxiYCbCr422ToYCbCr411_8u_C2P3R", "moxiYCbCr422ToYCbCr411_8u_P3P2R",
    "moxiYCbCr422ToYCbCr411_8u_P3R",   "moxiYCrCb422ToYCbCr411_8u_C2P3R", "moxiYCbCr411ToYCbCr422_8u_P2C2R",
    "moxiYCbCr411ToYCbCr422_8u_P2P3R", "moxiYCbCr411ToYCbCr422_8u_P3C2R", "moxiYCbCr411ToYCbCr422_8u_P3R",
    "moxiYCbCr411ToYCrCb422_8u_P3C2R", "moxiYCbCr411ToYCrCb422_8u_P3R",   "moxiYCbCr411ToYCbCr420_8u_P2P3R",
    "moxiYCbCr411ToYCbCr420_8u_P3P2R", "moxiYCbCr411ToYCbCr420_8u_P3R",   "moxiYCbCr411ToYCrCb420_8u_P2P3R",
    "moxiYCbCr420ToYCbCr411_8u_P2P3R", "moxiYCbCr420ToYCbCr411_8u_P3P2R", "moxiYCrCb420ToYCbCr411_8u_P3P2R",
};

/// Where the chroma sample of column i, row r of the destination comes from.
std::pair<int, int> source(MoxiSize from, MoxiSize to, int i, int r) {
    const MoxiSize s422 = {2, 1}, s420 = {2, 2}, s411 = {4, 1};
    if (from == to) return {i, r};
    if (from == s422 && to == s420) return {i, 2 * r};
    if (from == s420 && to == s422) return {i, r / 2};
    if (from == s422 && to == s411) return {2 * i, r};
    if (from == s411 && to == s422) return {i / 2, r};
    if (from == s411 && to == s420) return {i / 2, 2 * r + i % 2};
    return {2 * i + r % 2, r / 2};  // 4:2:0 to 4:1:1
}

TEST(Sampling, MovesEverySampleToItsPlace) {
    const auto reference = [](const Picture& src, Picture& want, const Values&) {
        const MoxiSize from = src.side().cell, to = want.side().cell;
        const int width = src.size().width / std::max(from.width, to.width) * std::max(from.width, to.width);
        const int height = src.size().height / std::max(from.height, to.height) * std::max(from.height, to.height);
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x) want.setLuma(x, y, src.luma(x, y));
        for (int r = 0; r < height / to.height; ++r) {
            for (int i = 0; i < width / to.width; ++i) {
                const auto [column, row] = source(from, to, i, r);
                for (const int kind : {0, 1}) want.setChroma(i, r, kind, src.chroma(column, row, kind));
            }
        }
    };
    for (const char* name : moves) expect(name, reference, {.toWidth = 140});
}

TEST(Sampling, TakesLumaOfOddWidths) {
    expect("moxiYCbCr422ToGray_8u_C2C1R", [](const Picture& src, Picture& want, const Values&) {
        for (int y = 0; y < src.size().height; ++y)
            for (int x = 0; x < src.size().width; ++x) want.set<Mox8u>(x, y, 0, Mox8u(src.luma(x, y)));
    });
}

// ---- chroma planes resampled ----------------------------------------------------------------------------------------

/// One kind of chroma of a picture.
struct Chroma {
    PlaneBytes& plane;
    int columns() const { return plane.rowBytes(); }
    int rows() const { return plane.rows(); }
    int get(int x, int y) const { return plane.rowStart(y)[x]; }
    void set(int x, int y, int value) { plane.rowStart(y)[x] = static_cast<Mox8u>(value); }
};

int average(bool up, int a, int b) { return (a + b + (up ? 1 : 0)) >> 1; }

void from411To420(const Chroma& c, Chroma& o) {
    const int cw = c.columns(), n = (cw - 1) / 16 * 16;
    for (int r = 0; r < o.rows(); ++r) {
        for (int i = 0; i < cw; ++i) {
            const int a = c.get(i, 2 * r);
            o.set(2 * i, r, a);
            o.set(2 * i + 1, r, i == cw - 1 ? a : average(i < n, a, c.get(i + 1, 2 * r)));
        }
    }
}

void from420To411(const Chroma& c, Chroma& o) {
    const int cw = o.columns(), n = cw / 32 * 32;
    for (int r = 0; r < c.rows(); ++r) {
        for (int i = 0; i < cw; ++i) {
            const int a = c.get(2 * i, r);
            o.set(i, 2 * r, a);
            o.set(i, 2 * r + 1, r == c.rows() - 1 ? a : average(i < n, a, c.get(2 * i, r + 1)));
        }
    }
}

void from420To1620(const Chroma& c, Chroma& o) {
    for (int r = 0; r < o.rows(); ++r) {
        for (int i = 0; i < o.columns(); ++i) o.set(i, r, c.get(2 * i, 2 * r));
    }
}

void from1620To420(const Chroma& c, Chroma& o) {
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
            o.set(2 * i, 2 * j, a);
            o.set(2 * i + 1, 2 * j, p);
            o.set(2 * i, 2 * j + 1, left);
            o.set(2 * i + 1, 2 * j + 1, right);
        }
    }
}

void expectResamples(const char* name, void (*rule)(const Chroma& c, Chroma& o)) {
    const auto reference = [&](const Picture& src, Picture& want, const Values&) {
        copyLuma(src, want);
        for (size_t k = 1; k < 3; ++k) {
            Picture& from = const_cast<Picture&>(src);
            Chroma o = {want[k]};
            rule({from[k]}, o);
        }
    };
    expect(name, reference, {.toWidth = 400, .maxHeight = 12});
}

TEST(Sampling, ResamplesPlanes) {
    expectResamples("moxiYCbCr411To420_8u_P3R", from411To420);
    expectResamples("moxiYCbCr420To411_8u_P3R", from420To411);
    expectResamples("moxiYCbCr420To1620_8u_P3R", from420To1620);
    expectResamples("moxiYCbCr1620To420_8u_P3R", from1620To420);
}

}  // namespace
