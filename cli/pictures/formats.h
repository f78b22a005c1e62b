// Formats of pictures and video: a reader is a function from bytes to frames, a writer the other way round.
#pragma once

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "cli/pictures/stream.h"

namespace pictures {

/// Gives the next frame; false at the end. The frame's memory is used again where its shape stays.
using Reader = std::function<bool(Frame&)>;
/// Takes frames of the side that Format::stores() told.
using Writer = std::function<void(const Frame&)>;

struct Format {
    const char* name;
    std::string_view extensions;  // each behind a space
    bool severalFrames;
    bool (*begins)(std::span<const uint8_t> bytes);
    Reader (*read)(Input&);
    /// How the format stores such samples; null if it cannot.
    const Side* (*stores)(const Side&, bool alpha);
    Writer (*write)(Output&);
};
std::span<const Format> formats();
/// Of a file name; null if it is none of a picture's.
const Format* formatNamed(std::string_view path);

/// Planes without a header.
struct Raw {
    bool given = false;  // the input is raw whatever it begins with
    MoxiSize size = {};
    const Side* side = nullptr;
};
Reader readRaw(Input& input, const Raw& raw);
Writer writeRaw(Output& output);
/// What a name tells: clip_640x480.nv12. What it does not tell is left.
Raw rawFrom(const std::string& path);

/// By what the input begins with.
Reader open(Input& input, const Raw& raw = {});

Reader readPng(Input& input);
Writer writePng(Output& output);
Reader readPnm(Input& input);
Writer writePnm(Output& output);
Writer writePam(Output& output);
Reader readPfm(Input& input);
Writer writePfm(Output& output);
Reader readY4m(Input& input);
Writer writeY4m(Output& output);

}  // namespace pictures
