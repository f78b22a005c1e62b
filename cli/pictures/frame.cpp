#include "cli/pictures/frame.h"

#include <strings.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <new>

namespace pictures {
namespace {

int64_t cells(int64_t pixels, int cell) { return (pixels + cell - 1) / cell; }

// Where the samples of one channel lie. Four-channel layouts may call the fourth 'A'.
struct Channel {
    char name;
    size_t plane;
    int offset, stride;  // bytes
    MoxiSize cell;
};

// The channels in order, a letter each: "RGB", "YVU" for YCrCb, "123" for a model that has one order only.
std::string orderOf(const Side& side) {
    const std::string model = modelOf(side);
    if (model == "Gray") return "Y";
    if (model != "RGB" && model != "YUV") return side.channels() == 1 && side.planes.size() == 1 ? "1" : "123";
    std::string order;
    for (size_t i = 0; i < side.holds.size() && !std::isdigit(static_cast<unsigned char>(side.holds[i])); ++i) {
        const char c = side.holds[i];
        if (c == 'C') continue;
        if (c != 'S') order += c == 'b' ? 'U' : c == 'r' ? 'V' : c;
    }
    return order;
}

std::vector<Channel> channelsOf(const Side& side) {
    std::string order = orderOf(side);
    const int bytes = side.sampleBytes;
    std::vector<Channel> channels;
    if (side.layout == "C2") {  // Y0 U Y1 V, or U Y0 V Y1
        const bool lumaFirst = order[0] == 'Y';
        int chroma = lumaFirst ? bytes : 0;
        for (const char c : order) {
            if (c == 'Y') {
                channels.push_back({c, 0, lumaFirst ? 0 : bytes, 2 * bytes, {1, 1}});
            } else {
                channels.push_back({c, 0, chroma, 4 * bytes, side.cell});
                chroma += 2 * bytes;
            }
        }
        return channels;
    }
    const bool planar = side.planes.size() > 1, pairs = side.planes.size() == 2;
    if (side.planes.size() == 4 || (!planar && side.channels() == 4)) order += 'A';
    for (int i = 0; i < int(order.size()); ++i) {
        const size_t plane = !planar ? 0 : pairs ? size_t(i > 0) : size_t(i);
        channels.push_back(
            {order[size_t(i)], plane,
             !planar           ? i * bytes
             : pairs && i == 2 ? bytes
                               : 0,
             !planar          ? side.planes[0].bytes
             : pairs && i > 0 ? 2 * bytes
                              : bytes,
             i == 0 || !planar ? MoxiSize{1, 1} : MoxiSize{side.planes[plane].width, side.planes[plane].height}});
    }
    return channels;
}

const Channel* find(const std::vector<Channel>& channels, char name) {
    const auto at = std::ranges::find(channels, name, &Channel::name);
    return at == channels.end() ? nullptr : &*at;
}

int columnsOf(const Frame& f, const Channel& c) {
    const int64_t there = (f.rowBytes[c.plane] - c.offset - f.side.sampleBytes) / c.stride + 1;
    return int(std::max<int64_t>(0, std::min(cells(f.size.width, c.cell.width), there)));
}
int rowsOf(const Frame& f, const Channel& c) {
    return int(std::min<int64_t>(f.rows[c.plane], cells(f.size.height, c.cell.height)));
}

/// Calls with a value of the sample's type.
template <class F>
void withType(const Side& side, F f) {
    if (side.depth == "16u") return f(uint16_t());
    if (side.depth == "16s") return f(int16_t());
    if (side.depth == "32s") return f(int32_t());
    if (side.depth == "32u") return f(uint32_t());
    if (side.depth == "32f") return f(float());
    if (side.depth == "64f") return f(double());
    f(uint8_t());
}

// Samples as parts of the whole range: integers stand for 0 to 1, floats for themselves.
template <class T>
double toUnit(T sample) {
    if constexpr (std::is_floating_point_v<T>) return double(sample);
    using L = std::numeric_limits<T>;
    return (double(sample) - double(L::min())) / (double(L::max()) - double(L::min()));
}
template <class T>
T fromUnit(double unit) {
    if constexpr (std::is_floating_point_v<T>) return T(unit);
    using L = std::numeric_limits<T>;
    const double clamped = unit > 0 ? std::min(unit, 1.0) : 0;  // NaN gives 0
    return T(std::floor(clamped * (double(L::max()) - double(L::min())) + 0.5) + double(L::min()));
}

template <class From, class To>
void copyRow(const uint8_t* from, int fromStride, uint8_t* to, int toStride, int count) {
    for (int x = 0; x < count; ++x) {
        From sample;
        std::memcpy(&sample, from + ptrdiff_t(x) * fromStride, sizeof sample);
        To result;
        if constexpr (std::is_same_v<From, To>)
            result = sample;
        else
            result = fromUnit<To>(toUnit(sample));
        std::memcpy(to + ptrdiff_t(x) * toStride, &result, sizeof result);
    }
}

void copyChannel(const Frame& from, const Channel& a, Frame& to, const Channel& b) {
    const int columns = std::min(columnsOf(from, a), columnsOf(to, b)), rows = std::min(rowsOf(from, a), rowsOf(to, b));
    withType(from.side, [&]<class From>(From) {
        withType(to.side, [&]<class To>(To) {
            for (int y = 0; y < rows; ++y) {
                const uint8_t* source = from.row(a.plane, y) + a.offset;
                uint8_t* target = to.row(b.plane, y) + b.offset;
                if (std::is_same_v<From, To> && a.stride == int(sizeof(To)) && b.stride == int(sizeof(To)))
                    std::memcpy(target, source, size_t(columns) * sizeof(To));
                else
                    copyRow<From, To>(source, a.stride, target, b.stride, columns);
            }
        });
    });
}

void fillChannel(Frame& to, const Channel& c, double unit) {
    withType(to.side, [&]<class T>(T) {
        const T sample = fromUnit<T>(unit);
        for (int y = 0; y < rowsOf(to, c); ++y)
            for (int x = 0; x < columnsOf(to, c); ++x)
                std::memcpy(to.row(c.plane, y) + c.offset + ptrdiff_t(x) * c.stride, &sample, sizeof sample);
    });
}

void fillOrCopy(const Frame& from, const std::vector<Channel>& sources, Frame& to, const Channel& target) {
    const Channel* source = find(sources, target.name);
    if (!source && modelOf(from.side) == "Gray" && modelOf(to.side) == "RGB" && target.name != 'A')
        source = &sources[0];
    if (source)
        copyChannel(from, *source, to, target);
    else
        fillChannel(to, target, target.name == 'A' ? 1 : 128.0 / 255);
}

void describeTo(const Frame& from, Frame& to) {
    to.alpha = from.alpha;
    to.video = from.video;
    to.siting = from.siting;
}

}  // namespace

void checkSize(int64_t width, int64_t height) {
    constexpr int64_t mostPixels = int64_t(1) << 28;
    if (width < 1 || height < 1)
        throw Error("a size of nothing: " + std::to_string(width) + "x" + std::to_string(height));
    if (width > mostPixels || height > mostPixels || width * height > mostPixels || width > INT32_MAX / 32)
        throw Error("too large: " + std::to_string(width) + "x" + std::to_string(height));
}

int64_t rowBytes(const Side& side, size_t plane, int width) {
    const catalogue::PlaneShape& shape = side.planes[plane];
    if (side.holds == "YUV422v210") return cells(width, 48) * 128;
    if (side.depth == "1u") return cells(width, 8);
    if (side.layout == "C2") return cells(width, 2) * 2 * shape.bytes;
    return cells(width, shape.width) * shape.bytes;
}

// ---- memory ---------------------------------------------------------------------------------------------------------

void Frame::allocate(const Side& newSide, MoxiSize newSize, const int64_t (&bytes)[4]) {
    checkSize(newSize.width, newSize.height);
    const bool same = memory_ && nameOf(side) == nameOf(newSide) && size.width == newSize.width &&
                      size.height == newSize.height && std::ranges::equal(bytes, rowBytes);
    if (same) return;
    side = newSide, size = newSize;
    // Planes begin where every processor's vectors do: some results depend on that, and they should not depend on chance.
    constexpr size_t alignment = 64;
    size_t total = alignment, offsets[4] = {};
    for (size_t i = 0; i < 4; ++i) {
        rowBytes[i] = bytes[i];
        rows[i] = i < side.planes.size() ? int(cells(size.height, side.planes[i].height)) : 0;
        offsets[i] = total;
        total += (size_t(bytes[i]) * size_t(rows[i]) + alignment - 1) / alignment * alignment;
    }
    memory_.reset();
    memory_.reset(std::calloc(total, 1));  // a page that is never touched costs nothing
    if (!memory_) throw std::bad_alloc();
    auto* const base = static_cast<uint8_t*>(memory_.get());
    uint8_t* const aligned = base + (alignment - reinterpret_cast<uintptr_t>(base) % alignment) % alignment - alignment;
    for (size_t i = 0; i < 4; ++i)
        picture_.planes[i] = {i < side.planes.size() ? aligned + offsets[i] : nullptr, int32_t(bytes[i])};
}

void Frame::shape(const Side& newSide, MoxiSize newSize) {
    checkSize(newSize.width, newSize.height);
    int64_t bytes[4] = {};
    for (size_t i = 0; i < newSide.planes.size(); ++i) bytes[i] = pictures::rowBytes(newSide, i, newSize.width);
    allocate(newSide, newSize, bytes);
}

void Frame::shape(const catalogue::Export& e, int sideIndex, MoxiSize newSize, int firstBit) {
    checkSize(newSize.width, newSize.height);
    const Side& newSide = e.sides[sideIndex];
    int64_t bytes[4] = {};
    for (size_t i = 0; i < newSide.planes.size(); ++i)
        bytes[i] = e.takesNoSteps(sideIndex) || newSide.depth == "1u"
                       ? e.rowBytes(sideIndex, i, newSize.width, firstBit)
                       : pictures::rowBytes(newSide, i, newSize.width);
    allocate(newSide, newSize, bytes);
}

// ---- names ----------------------------------------------------------------------------------------------------------

std::string nameOf(const Side& side) { return side.holds + "_" + side.depth + "_" + side.layout; }

const Side* sideNamed(std::string_view name) {
    const auto same = [&](std::string_view other) {
        return name.size() == other.size() && strncasecmp(name.data(), other.data(), name.size()) == 0;
    };
    for (const catalogue::Format& format : catalogue::formats()) {
        std::string_view others = format.otherNames;
        bool found = same(format.name);
        while (!found && !others.empty()) {
            const size_t comma = std::min(others.find(", "), others.size());
            found = same(others.substr(0, comma));
            others.remove_prefix(std::min(comma + 2, others.size()));
        }
        if (found) return catalogue::findSide(format.holds, format.layout, format.depth);
    }
    for (const catalogue::Export& e : catalogue::exports())
        for (const Side& side : e.sides)
            if (!side.planes.empty() && same(nameOf(side))) return &side;
    return nullptr;
}

const Side& sideOf(std::string_view holds, std::string_view layout, std::string_view depth) {
    return *catalogue::findSide(holds, layout, depth);
}

const Side& pictureSide(int channels, std::string_view depth) {
    return sideOf(channels == 1 ? "Gray" : "RGB", channels == 1 ? "C1" : channels == 3 ? "C3" : "C4", depth);
}

std::string modelOf(const Side& side) {
    const std::string& holds = side.holds;
    if (holds == "RGB" || holds == "BGR" || holds == "SBGR") return "RGB";
    if (holds == "Gray" || holds == "CFA") return "Gray";
    for (const char* luma : {"YCbCr", "YCrCb", "CbYCr", "YUV"})
        if (holds.starts_with(luma) && holds != "YUV422v210") return "YUV";
    return holds;
}

// ---- layouts --------------------------------------------------------------------------------------------------------

bool alike(const Side& a, const Side& b) {
    const auto plain = [](const std::string& layout) { return layout.substr(layout.starts_with("A")); };
    return modelOf(a) == modelOf(b) && orderOf(a) == orderOf(b) && plain(a.layout) == plain(b.layout) &&
           a.depth == b.depth && a.cell.width == b.cell.width && a.cell.height == b.cell.height;
}

std::string mismatch(const Side& from, const Side& to) {
    const std::string a = modelOf(from), b = modelOf(to);
    const bool scaled = from.depth != to.depth;
    const auto pictures = [](const std::string& model) { return model == "RGB" || model == "Gray"; };
    const bool grayToMore = a == "Gray" && from.holds == "Gray" && (b == "RGB" || b == "YUV");
    const bool sampled =
        a == "YUV" && b == "YUV" && (from.cell.width != to.cell.width || from.cell.height != to.cell.height);
    if ((a == b || grayToMore) && !sampled && (!scaled || (pictures(a) && pictures(b)))) return "";
    return nameOf(from) + " where " + nameOf(to) + " is wanted";
}

void repack(const Frame& from, Frame& to) {
    const std::vector<Channel> sources = channelsOf(from.side);
    for (const Channel& target : channelsOf(to.side)) fillOrCopy(from, sources, to, target);
    describeTo(from, to);
}

void repackAlpha(const Frame& from, Frame& to) {
    const std::vector<Channel> targets = channelsOf(to.side);
    if (const Channel* target = find(targets, 'A')) fillOrCopy(from, channelsOf(from.side), to, *target);
}

void pad(const Frame& from, MoxiSize cell, Frame& to) {
    const auto whole = [](int pixels, int unit) { return int(cells(pixels, unit)) * unit; };
    to.shape(from.side, {whole(from.size.width, cell.width), whole(from.size.height, cell.height)});
    repack(from, to);
    const size_t bytes = size_t(from.side.sampleBytes);
    for (const Channel& c : channelsOf(from.side)) {
        const int columns = columnsOf(from, c), rows = rowsOf(from, c);
        for (int y = 0; y < rowsOf(to, c); ++y) {
            const uint8_t* source = to.row(c.plane, std::min(y, rows - 1)) + c.offset;
            uint8_t* target = to.row(c.plane, y) + c.offset;
            for (int x = y < rows ? columns : 0; x < columnsOf(to, c); ++x)
                std::memcpy(target + ptrdiff_t(x) * c.stride, source + ptrdiff_t(std::min(x, columns - 1)) * c.stride,
                            bytes);
        }
    }
}

}  // namespace pictures
