// What the tests of the encoders share: pictures of any source and destination layout, made by the export's name, and
// the walk over the cells of a row by the rules of a family's table.
#ifndef VIDEO_ENCODE_REFERENCE_H
#define VIDEO_ENCODE_REFERENCE_H

#include <algorithm>
#include <functional>
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
    std::vector<int> y;
    int cb, cr;
};
/// The pixels of a cell, row by row, to its samples.
using CellRule = std::function<Samples(const std::vector<Colour>&)>;

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
    return [=](const std::vector<Colour>& pixels) {
        Samples samples;
        Colour sums = {};
        for (size_t i = 0; i < pixels.size(); ++i) {
            samples.y.push_back((i % 2 ? odd : even)(pixels[i]));
            sums = sums + pixels[i];
        }
        samples.cb = chroma(sums).cb, samples.cr = chroma(sums).cr;
        return samples;
    };
}
inline CellRule cell(LumaRule luma, ChromaRule chroma) { return cell(luma, luma, chroma); }

template <int group>
int wholeGroups(int width) {
    return width / group * group;
}

// ---- pictures -------------------------------------------------------------------------------------------------------

/// What an export's name tells of its formats.
struct Format {
    explicit Format(const std::string& name) {
        const auto has = [&](const char* part) { return name.find(part) != name.npos; };
        bgr = has("moxiBGR");
        cellWidth = has("411") ? 4 : 2;
        cellHeight = has("420") ? 2 : 1;
        chromaFirst = has("CbYCr");
        crossed = has("YCrCb");
        const std::string layout = name.substr(name.find("_8u_") + 4);
        srcPlanes = layout[0] == 'P' ? 3 : 1;
        srcChannels = srcPlanes == 3 ? 1 : layout[layout.find('C') + 1] - '0';
        dstPlanes = has("C2R") ? 1 : has("P2R") ? 2 : 3;
    }
    bool bgr, chromaFirst, crossed;
    int cellWidth, cellHeight, srcPlanes, srcChannels, dstPlanes;
};

/// A source and its destination, by pixels and chroma samples.
class Cells {
  public:
    Cells(const Format& format, const Picture& src, Picture& dst) : format_(format), src_(src), dst_(dst) {}

    Colour pixel(int x, int y) const {
        const auto channel = [&](int c) {
            return format_.srcPlanes == 3 ? src_[size_t(c)].get(x, y) : src_[0].get(x, y, c);
        };
        return {channel(format_.bgr ? 2 : 0), channel(1), channel(format_.bgr ? 0 : 2)};
    }
    void setLuma(int x, int y, int value) {
        dst_[0].set(format_.dstPlanes == 1 ? 2 * x + format_.chromaFirst : x, y, byte(value));
    }
    /// kind 0 is Cb or U.
    void setChroma(int cell, int row, int kind, int value) {
        const int place = kind ^ (format_.crossed ? 1 : 0);
        if (format_.dstPlanes == 1)
            dst_[0].set(4 * cell + 2 * place + !format_.chromaFirst, row, byte(value));
        else if (format_.dstPlanes == 2)
            dst_[1].set(cell, row, place, byte(value));
        else
            dst_[size_t(1 + place)].set(cell, row, byte(value));
    }

  private:
    static Mox8u byte(int value) {
        EXPECT_EQ(value, value & 0xFF) << "the reference left the range of a byte";
        return static_cast<Mox8u>(value);
    }

    const Format& format_;
    const Picture& src_;
    Picture& dst_;
};

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
    std::function<void(Cells&, int width, int y)> row = nullptr;
};

inline void everyRow(const Encoder& e, const Format&, Cells& p, MoxiSize roi) {
    for (int y = 0; y < roi.height; ++y) e.row(p, roi.width, y);
}

inline void reference(const Encoder& e, const Format& format, Cells& p, MoxiSize roi) {
    const int cw = format.cellWidth, ch = format.cellHeight;
    const int limit = e.limit(roi.width), whole = roi.width - roi.width % cw;
    for (int j = 0; j < roi.height / ch; ++j) {
        for (int x = 0; x < whole; x += cw) {
            std::vector<Colour> cell;
            for (int dy = 0; dy < ch; ++dy)
                for (int dx = 0; dx < cw; ++dx) cell.push_back(p.pixel(x + dx, ch * j + dy));
            const Samples samples = (x < limit ? e.below : e.above)(cell);
            for (int i = 0; i < cw * ch; ++i) p.setLuma(x + i % cw, ch * j + i / cw, samples.y[static_cast<size_t>(i)]);
            p.setChroma(x / cw, j, 0, samples.cb);
            p.setChroma(x / cw, j, 1, samples.cr);
        }
        if (e.last && roi.width % 2) {
            const Samples samples = e.last({p.pixel(whole, j)});
            p.setLuma(whole, j, samples.y[0]);
            p.setChroma(whole / 2, j, 0, samples.cb);
            if (e.wholeLast) p.setChroma(whole / 2, j, 1, samples.cr);
        }
        if (e.lumaOfRest)
            for (int x = whole; x < roi.width; ++x) p.setLuma(x, j, e.lumaOfRest(p.pixel(x, j)));
    }
}

/// The conversion of an export, with its pictures no larger than what it may touch.
inline Conversion conversionOf(const Encoder& e, const Format& f, MoxiSize least = {1, 1}) {
    const auto columns = [=](MoxiSize roi) {
        return e.last || e.lumaOfRest ? roi.width : roi.width / f.cellWidth * f.cellWidth;
    };
    const auto src = [=](MoxiSize roi) {
        const int rows = roi.height / f.cellHeight * f.cellHeight;
        return std::vector<Shape>(size_t(f.srcPlanes), {std::max(columns(roi), 1), rows, f.srcChannels});
    };
    const auto dst = [=](MoxiSize roi) {
        const int rows = roi.height / f.cellHeight;
        const int cells = roi.width / f.cellWidth + (e.wholeLast ? roi.width % 2 : 0);
        if (f.dstPlanes == 1) return std::vector<Shape>{{std::max(2 * columns(roi), 1), rows, 1}};
        std::vector<Shape> shapes = {{std::max(columns(roi), 1), rows * f.cellHeight, 1}};
        shapes.resize(size_t(f.dstPlanes), {std::max(cells, 1), rows, 4 - f.dstPlanes});
        return shapes;
    };
    const auto tooSmall = [=](MoxiSize roi) { return roi.width < least.width || roi.height < least.height; };
    const auto expected = [=](const Picture& from, Picture& to, MoxiSize roi, Mox8u) {
        Cells cells(f, from, to);
        if (!tooSmall(roi)) (e.row ? everyRow : reference)(e, f, cells, roi);
    };
    // 4:2:0 and 4:1:1 warn of pixels in no whole cell.
    const auto status = [=](MoxiSize roi) {
        if (tooSmall(roi)) return moxStatusBadSize;
        const bool whole = roi.width % f.cellWidth == 0 && roi.height % f.cellHeight == 0;
        return whole || f.cellWidth * f.cellHeight < 4 ? moxStatusOk : moxStatusOddSize;
    };
    return {src, dst, Steps::shared, Steps::own, expected, status};
}

/// Calls an export of both files, and compares with its encoder.
template <class Signature>
void expectEncodes(Symbol<Signature> function, const Encoder& e, MoxiSize least = {1, 1}) {
    expectConversion(function, conversionOf(e, Format(function.name), least));
}

}  // namespace moxtest

#endif
