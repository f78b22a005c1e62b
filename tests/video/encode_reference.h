// What the tests of the encoders share: the walk over the cells of a row by the rules of a family's table.
#ifndef VIDEO_ENCODE_REFERENCE_H
#define VIDEO_ENCODE_REFERENCE_H

#include <algorithm>
#include <array>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include "support/picture.h"
#include "support/support.h"

namespace moxtest {

struct Colour {
    int r, g, b;
};
inline Colour operator+(Colour p, Colour q) { return {p.r + q.r, p.g + q.g, p.b + q.b}; }

/// The first kind of chroma is Cb or U, the second Cr or V.
struct Samples {
    std::array<int, 4> y;
    int cb, cr;
};
/// The pixels of a cell, row by row, to its samples.
using CellRule = std::function<Samples(std::span<const Colour>)>;

inline int clamp(int x) { return std::clamp(x, 0, 255); }
inline int floorShift(int64_t x, int bits) { return static_cast<int>(x >> bits); }

// ---- rules ----------------------------------------------------------------------------------------------------------

struct CbCr {
    int cb, cr;
};
using LumaRule = int (*)(Colour);
using ChromaRule = CbCr (*)(Colour sums);

/// A cell's rule from those of the luma of even and odd columns, and of the chroma of the cell's sums.
inline CellRule cell(LumaRule even, LumaRule odd, ChromaRule chroma) {
    return [=](std::span<const Colour> pixels) {
        Samples samples = {};
        Colour sums = {};
        for (size_t i = 0; i < pixels.size(); ++i) {
            samples.y[i] = (i % 2 ? odd : even)(pixels[i]);
            sums = sums + pixels[i];
        }
        const CbCr c = chroma(sums);
        samples.cb = c.cb, samples.cr = c.cr;
        return samples;
    };
}
inline CellRule cell(LumaRule luma, ChromaRule chroma) { return cell(luma, luma, chroma); }

template <int group>
int wholeGroups(int width) {
    return width / group * group;
}

// ---- the walk over cells --------------------------------------------------------------------------------------------

/// How a family's table describes an export.
struct Encoder {
    std::function<int(int width)> limit;
    CellRule below, above;
    /// The last pixel of an odd width, if it is written.
    CellRule last = nullptr;
    /// Whether the second chroma sample of that pixel is written too.
    bool wholeLast = false;
    /// Luma of the columns past the last whole cell, if it is written.
    std::function<int(Colour)> lumaOfRest = nullptr;
    /// In place of all rules: what a whole row becomes.
    std::function<void(const Picture& src, Picture& want, int y)> row = nullptr;
};

inline Colour pixelOf(const Picture& p, int x, int y) {
    return {p.colour(x, y, 0), p.colour(x, y, 1), p.colour(x, y, 2)};
}

inline void encode(const Encoder& e, const Picture& src, Picture& want, MoxiSize size) {
    const int width = size.width, height = size.height;
    if (e.row) {
        for (int y = 0; y < height; ++y) e.row(src, want, y);
        return;
    }
    const int cw = want.side().cell.width, ch = want.side().cell.height;
    const int limit = e.limit(width), whole = width - width % cw;
    const auto cellAt = [&](const CellRule& rule, int x, int row, int columns) {
        Colour pixels[4] = {};
        for (int i = 0; i < columns * ch; ++i) pixels[i] = pixelOf(src, x + i % cw, ch * row + i / cw);
        const Samples samples = rule({pixels, size_t(columns * ch)});
        for (int i = 0; i < columns * ch; ++i) want.setLuma(x + i % cw, ch * row + i / cw, samples.y[size_t(i)]);
        want.setChroma(x / cw, row, 0, samples.cb);
        if (columns == cw || e.wholeLast) want.setChroma(x / cw, row, 1, samples.cr);
    };
    for (int j = 0; j < height / ch; ++j) {
        for (int x = 0; x < whole; x += cw) cellAt(x < limit ? e.below : e.above, x, j, cw);
        if (e.last && width % 2) cellAt(e.last, whole, j, 1);
        if (e.lumaOfRest)
            for (int x = whole; x < width; ++x) want.setLuma(x, j, e.lumaOfRest(pixelOf(src, x, j)));
    }
}

/// Compares an export with its encoder at all sizes.
inline void expectEncodes(const char* name, const Encoder& e) {
    expect(name, [&](const Picture& src, Picture& want, const Values&) { encode(e, src, want, src.size()); });
}

/// The same in pictures so narrow that all columns follow the last rules, for so many colours that each residue below
/// the rounding comes up: an offset that is one off shows in one cell of 2^17 or 2^18.
inline void expectEncodesTails(const char* name, const Encoder& e) {
#ifdef MOXCC_FEWER_CASES
    constexpr int cells = 1000;
#else
    constexpr int cells = 2'000'000;
#endif
    Random random(11);
    const MoxiSize cell = catalogue::find(name)->sides[1].cell;
    for (const int width : {cell.width, e.last ? 1 : 0})
        if (width > 0)
            expectAt(name, {width, cells * cell.height}, random,
                     [&](const Picture& src, Picture& want, const Values&) { encode(e, src, want, src.size()); });
}

}  // namespace moxtest

#endif
