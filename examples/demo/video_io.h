// Single frames of uncompressed 8-bit video, decoded by the library as BT.601.
#pragma once

#include <filesystem>

#include "image.h"

namespace demo {

using Bytes = std::vector<unsigned char>;

// The first frame of a YUV4MPEG2 file: 4:2:0, 4:2:2, 4:1:1, 4:4:4 or luma only, of any size; full range is scaled to
// studio range first. Throws Error.
Image8 readY4m(const Bytes& bytes);

// A file of frames without a header, whose name tells what they are: clip_640x480.yuv (4:2:0 planes Y, Cb, Cr),
// .nv12, .nv21, .yuy2, .uyvy.
bool isRawVideo(const std::filesystem::path& path);
// Its first frame. Throws Error.
Image8 readRawVideo(const std::filesystem::path& path, const Bytes& bytes);

}  // namespace demo
