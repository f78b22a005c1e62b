// Pictures from files and to files.
#pragma once

#include <filesystem>

#include "cli/pictures/frame.h"
#include "image.h"

namespace demo {

using pictures::Error;

// A picture to convert, in the depths that conversions take: three channels, R, G, B.
class Source {
  public:
    explicit Source(Image8 rgb);
    explicit Source(Image16 rgb);
    // Linear light of any range; 1 / exposure becomes white on a display.
    Source(ImageF linear, float exposure);

    // For display.
    const Image8& rgb8() const { return rgb8_; }
    const Image16& rgb16() const;
    const ImageF& rgb32f() const;
    // Linear light.
    const ImageF& linear() const;
    float exposure() const { return exposure_; }

    MoxiSize size() const { return rgb8_.size(); }

  private:
    // What the file held, and what has been asked for so far: a large picture in all depths is much memory.
    Image8 rgb8_;
    mutable Image16 rgb16_;
    mutable ImageF rgb32f_;
    mutable ImageF linear_;
    float exposure_ = 1;
};

// The first picture of a file of any kind that moxcc reads: transparency is laid over white, video is decoded as BT.601.
// Frames of video without a header need a name that tells what they are: clip_640x480.yuv (planes of 4:2:0), .nv12,
// .nv21, .yuy2, .uyvy. Throws Error.
Source readPicture(const std::filesystem::path& path);

// A scene with everything that shows what a conversion does: hues, fine detail, text, skin tones, and a sun far
// brighter than white. Width and height in proportion 16 to 9.
Source syntheticScene(int width);

// One or three channels. The file appears whole or not at all. Throws Error.
void writePng(const std::filesystem::path& path, const Image8& image);
void writePng(const std::filesystem::path& path, const Image16& image);

}  // namespace demo
