#include "cli/pictures/formats.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstring>

namespace pictures {
namespace {

bool startsWith(std::span<const uint8_t> bytes, std::string_view magic) {
    return bytes.size() >= magic.size() && std::memcmp(bytes.data(), magic.data(), magic.size()) == 0;
}

// Gray and RGB as pictures store them: "bits" are pictures of two colours.
const Side* picture(const Side& side, bool alpha) {
    if (side.depth != "8u" && side.depth != "16u") return nullptr;
    if (modelOf(side) == "Gray") return &pictureSide(1, side.depth);
    const bool four = alpha && (side.channels() == 4 || side.planes.size() == 4);
    return modelOf(side) == "RGB" ? &pictureSide(four ? 4 : 3, side.depth) : nullptr;
}
const Side* pictureOrBits(const Side& side, bool alpha) { return side.holds == "bits" ? &side : picture(side, alpha); }
const Side* withoutAlpha(const Side& side, bool) { return pictureOrBits(side, false); }

const Side* floats(const Side& side, bool) {
    if (side.depth != "32f") return nullptr;
    const std::string model = modelOf(side);
    return model == "Gray" ? &pictureSide(1, "32f") : model == "RGB" ? &pictureSide(3, "32f") : nullptr;
}

const Side* video(const Side& side, bool) {
    if (side.depth != "8u") return nullptr;
    if (side.holds == "Gray") return &side;
    if (modelOf(side) != "YUV" || side.cell.height == 4) return nullptr;
    const char* const holds = side.cell.width == 4    ? "YCbCr411"
                              : side.cell.height == 2 ? "YCbCr420"
                              : side.cell.width == 2  ? "YCbCr422"
                                                      : "YCbCr";
    return &sideOf(holds, "P3", "8u");
}

constexpr Format table[] = {
    {"PNG", " png", false, [](std::span<const uint8_t> b) { return startsWith(b, "\x89PNG\r\n\x1a\n"); }, readPng,
     pictureOrBits, writePng},
    {"PNM", " ppm pgm pbm pnm", true,
     [](std::span<const uint8_t> b) {
         return b.size() > 2 && b[0] == 'P' && b[1] >= '1' && b[1] <= '6' && (std::isspace(b[2]) || b[2] == '#');
     },
     readPnm, withoutAlpha, writePnm},
    {"PAM", " pam", true, [](std::span<const uint8_t> b) { return startsWith(b, "P7\n"); }, readPnm, picture, writePam},
    {"PFM", " pfm", true, [](std::span<const uint8_t> b) { return startsWith(b, "PF\n") || startsWith(b, "Pf\n"); },
     readPfm, floats, writePfm},
    {"Y4M", " y4m", true, [](std::span<const uint8_t> b) { return startsWith(b, "YUV4MPEG2"); }, readY4m, video,
     writeY4m},
};

std::string extensionOf(std::string_view path) {
    const size_t dot = path.rfind('.'), slash = path.rfind('/');
    if (dot == path.npos || (slash != path.npos && dot < slash)) return "";
    std::string extension(path.substr(dot + 1));
    std::ranges::transform(extension, extension.begin(), [](unsigned char c) { return char(std::tolower(c)); });
    return extension;
}

}  // namespace

std::span<const Format> formats() { return table; }

const Format* formatNamed(std::string_view path) {
    const std::string extension = extensionOf(path);
    if (extension.empty()) return nullptr;
    for (const Format& format : table)
        if ((std::string(format.extensions) + " ").find(" " + extension + " ") != std::string::npos) return &format;
    return nullptr;
}

// ---- planes without a header ----------------------------------------------------------------------------------------

Raw rawFrom(const std::string& path) {
    Raw raw;
    const std::string extension = extensionOf(path), name = path.substr(path.rfind('/') + 1);
    raw.side = extension == "yuv" ? sideNamed("I420") : extension.empty() ? nullptr : sideNamed(extension);
    raw.given = raw.side || extension == "raw";
    for (size_t x = name.find('x'); x != name.npos; x = name.find('x', x + 1)) {  // the last WIDTHxHEIGHT
        size_t start = x;
        while (start > 0 && std::isdigit(static_cast<unsigned char>(name[start - 1]))) --start;
        MoxiSize found;
        if (std::sscanf(&name[start], "%7dx%7d", &found.width, &found.height) == 2) raw.size = found;
    }
    return raw;
}

Reader readRaw(Input& input, const Raw& raw) {
    if (raw.size.width == 0 || raw.size.height == 0)
        throw Error("raw planes need their size, by --size or as the size in its name: clip_640x480.nv12");
    if (!raw.side) throw Error("raw planes need their format");
    return [&input, raw](Frame& frame) {
        if (input.atEnd()) return false;
        checkSize(raw.size.width, raw.size.height);
        int64_t bytes = 0;
        for (size_t i = 0; i < raw.side->planes.size(); ++i) {
            const int height = raw.side->planes[i].height;
            bytes += rowBytes(*raw.side, i, raw.size.width) * ((raw.size.height + height - 1) / height);
        }
        input.expect(bytes);
        frame.shape(*raw.side, raw.size);
        frame.alpha = true;
        for (size_t i = 0; i < frame.planeCount(); ++i)
            input.need(frame.row(i, 0), size_t(frame.rowBytes[i]) * size_t(frame.rows[i]));
        return true;
    };
}

Writer writeRaw(Output& output) {
    return [&output](const Frame& frame) {
        for (size_t i = 0; i < frame.planeCount(); ++i)
            output.write(frame.row(i, 0), size_t(frame.rowBytes[i]) * size_t(frame.rows[i]));
    };
}

Reader open(Input& input, const Raw& raw) {
    const std::span<const uint8_t> first = input.peek(16);
    if (first.empty()) throw Error("an empty file");
    if (raw.given) return readRaw(input, raw);
    for (const Format& format : table)
        if (format.begins(first)) return format.read(input);
    throw Error("not a picture that this program reads: PNG, PNM, PAM, PFM, Y4M, or raw planes of a given size");
}

}  // namespace pictures
