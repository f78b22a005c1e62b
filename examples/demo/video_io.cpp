#include "video_io.h"

#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <sstream>

#include "picture_io.h"
#include "planar.h"
#include "png_io.h"

namespace demo {
namespace {

int cells(int pixels, int cell) { return (pixels + cell - 1) / cell; }

// Reads a plane of columns by rows into a plane that may be larger; the last samples are repeated.
size_t readPlane(const Bytes& bytes, size_t at, int columns, int rows, Image8& plane) {
    if (bytes.size() - at < size_t(columns) * size_t(rows)) throw Error("truncated in its first frame");
    for (int y = 0; y < plane.height(); ++y) {
        const unsigned char* from = &bytes[at + size_t(std::min(y, rows - 1)) * size_t(columns)];
        for (int x = 0; x < plane.width(); ++x) *plane.at(x, y) = from[std::min(x, columns - 1)];
    }
    return at + size_t(columns) * size_t(rows);
}

// Three planes from byte `at` on, decoded. Studio range is 16 to 235 in luma, 16 to 240 in chroma.
Image8 decodePlanes(const Bytes& bytes, size_t at, MoxiSize size, Cell cell, bool hasChroma, bool fullRange) {
    const MoxiSize whole = {cells(size.width, cell.width) * cell.width, cells(size.height, cell.height) * cell.height};
    Planar video(whole, cell);
    at = readPlane(bytes, at, size.width, size.height, video.plane[0]);
    for (int i = 1; i < 3; ++i) {
        Image8& plane = video.plane[i];
        if (hasChroma)
            at = readPlane(bytes, at, plane.width(), plane.height(), plane);
        else
            std::fill(plane.samples().begin(), plane.samples().end(), Mox8u{128});
    }
    if (fullRange) {
        for (Mox8u& y : video.plane[0].samples()) y = Mox8u((y * 219 + 127) / 255 + 16);
        for (int i = 1; i < 3; ++i)
            for (Mox8u& c : video.plane[i].samples()) c = Mox8u(((c - 128) * 224 + 128 * 255 + 127) / 255);
    }

    return crop(decode(video), {0, 0, size.width, size.height});
}

constexpr struct Sampling {
    std::string_view tag;  // how the colour space parameter of a Y4M file begins
    Cell cell;
    bool hasChroma = true;
} samplings[] = {
    {"420", {2, 2}}, {"422", {2, 1}}, {"411", {4, 1}}, {"444", {1, 1}}, {"mono", {1, 1}, false},
};

}  // namespace

Image8 readY4m(const Bytes& bytes) {
    size_t at = 0;
    const auto line = [&] {
        std::string text;
        while (at < bytes.size() && bytes[at] != '\n') text += char(bytes[at++]);
        if (at++ >= bytes.size()) throw Error("truncated in its header");
        return text;
    };
    std::istringstream words(line());
    MoxiSize size = {};
    std::string colours = "420", word;
    bool fullRange = false;
    while (words >> word) {
        if (word[0] == 'W') size.width = std::atoi(&word[1]);
        if (word[0] == 'H') size.height = std::atoi(&word[1]);
        if (word[0] == 'C') colours = word.substr(1);
        if (word == "XCOLORRANGE=FULL") fullRange = true;
    }
    checkSize(size.width, size.height);
    if (line().compare(0, 5, "FRAME") != 0) throw Error("no frame behind its header");
    // Samples of more than 8 bits: 420p10 and the like. (420paldv and 420jpeg name chroma positions.)
    const size_t p = colours.find('p');
    const bool deep =
        (p != colours.npos && p + 1 < colours.size() && std::isdigit(colours[p + 1])) || colours == "mono16";
    for (const Sampling& sampling : samplings) {
        if (!deep && colours.compare(0, sampling.tag.size(), sampling.tag) == 0 && colours != "444alpha")
            return decodePlanes(bytes, at, size, sampling.cell, sampling.hasChroma, fullRange);
    }
    throw Error("Y4M of a kind that this program does not read: " + colours +
                " (it reads 8-bit 420, 422, 444, 411 and mono)");
}

namespace {

// From frames of width x height, of which the name tells the size.
constexpr struct RawFormat {
    std::string_view extension;
    MoxStatus (*decode)(const Mox8u* frame, MoxiSize size, Image8& rgb);
    int bytesPerTwoPixels;
} rawFormats[] = {
    {".yuv",
     [](const Mox8u* frame, MoxiSize size, Image8& rgb) {
         const ptrdiff_t luma = ptrdiff_t(size.width) * size.height;
         const Mox8u* const planes[] = {frame, frame + luma, frame + luma + luma / 4};
         const int32_t steps[] = {size.width, size.width / 2, size.width / 2};
         return moxiYCbCr420ToRGB_8u_P3C3R(planes, steps, rgb.data(), rgb.step(), size);
     },
     3},
    {".nv12",
     [](const Mox8u* frame, MoxiSize size, Image8& rgb) {
         const Mox8u* pairs = frame + ptrdiff_t(size.width) * size.height;
         return moxiYCbCr420ToRGB_8u_P2C3R(frame, size.width, pairs, size.width, rgb.data(), rgb.step(), size);
     },
     3},
    {".nv21",
     [](const Mox8u* frame, MoxiSize size, Image8& rgb) {
         const Mox8u* pairs = frame + ptrdiff_t(size.width) * size.height;
         return moxiYCrCb420ToRGB_8u_P2C3R(frame, size.width, pairs, size.width, rgb.data(), rgb.step(), size);
     },
     3},
    {".yuy2",
     [](const Mox8u* frame, MoxiSize size, Image8& rgb) {
         return moxiYCbCr422ToRGB_8u_C2C3R(frame, 2 * size.width, rgb.data(), rgb.step(), size);
     },
     4},
    {".uyvy",
     [](const Mox8u* frame, MoxiSize size, Image8& rgb) {
         return moxiCbYCr422ToRGB_8u_C2C3R(frame, 2 * size.width, rgb.data(), rgb.step(), size);
     },
     4},
};

const RawFormat* rawFormat(const std::filesystem::path& path) {
    for (const RawFormat& format : rawFormats)
        if (path.extension() == format.extension) return &format;
    return nullptr;
}

// The last WIDTHxHEIGHT in a name.
MoxiSize sizeIn(const std::string& name) {
    MoxiSize size = {};
    for (size_t x = name.find('x'); x != name.npos; x = name.find('x', x + 1)) {
        size_t start = x;
        while (start > 0 && std::isdigit(name[start - 1])) --start;
        MoxiSize found;
        if (std::sscanf(&name[start], "%5dx%5d", &found.width, &found.height) == 2) size = found;
    }
    return size;
}

}  // namespace

bool isRawVideo(const std::filesystem::path& path) { return rawFormat(path) != nullptr; }

Image8 readRawVideo(const std::filesystem::path& path, const Bytes& bytes) {
    const RawFormat& format = *rawFormat(path);
    const MoxiSize size = sizeIn(path.stem());
    if (size.width == 0) throw Error("raw video needs its size in its name: clip_640x480" + path.extension().string());
    checkSize(size.width, size.height);
    if (size.width % 2 || size.height % 2) throw Error("raw video of an odd size");
    if (bytes.size() < size_t(size.width) * size_t(size.height) * size_t(format.bytesPerTwoPixels) / 2)
        throw Error("truncated in its first frame");
    Image8 rgb(size, 3);
    format.decode(bytes.data(), size, rgb);
    return rgb;
}

}  // namespace demo
