// A frame is planes of samples that catalogue::Picture views, and what the samples are.
#pragma once

#include <cstdlib>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

#include "catalogue/call.h"

namespace pictures {

using catalogue::Side;

/// What the user should read: the file's name is not part of it.
struct Error : std::runtime_error {
    using runtime_error::runtime_error;
};

/// Throws Error for sizes that no header means seriously.
void checkSize(int64_t width, int64_t height);

/// The bytes of a row of a plane as files have them: whole cells, in v210 whole groups.
int64_t rowBytes(const Side& side, size_t plane, int width);

class Frame {
  public:
    Side side;
    MoxiSize size = {};
    int64_t rowBytes[4] = {};
    int rows[4] = {};
    bool alpha = false;  // the fourth channel came with the picture, or from the conversion
    std::string video;   // the words of a Y4M header that are no size and no sampling
    std::string siting;  // its sampling, as it was written

    /// Makes room. Memory is kept where the shape stays, and zero where it is new.
    void shape(const Side& side, MoxiSize size);
    /// The same as the export wants its planes to be.
    void shape(const catalogue::Export& e, int sideIndex, MoxiSize size, int firstBit = 0);

    size_t planeCount() const { return side.planes.size(); }
    uint8_t* row(size_t plane, int y) {
        return static_cast<uint8_t*>(picture_.planes[plane].data) + ptrdiff_t(y) * picture_.planes[plane].step;
    }
    const uint8_t* row(size_t plane, int y) const { return const_cast<Frame*>(this)->row(plane, y); }
    catalogue::Picture picture() const {
        return {size, {picture_.planes[0], picture_.planes[1], picture_.planes[2], picture_.planes[3]}};
    }

  private:
    void allocate(const Side& side, MoxiSize size, const int64_t (&bytes)[4]);

    catalogue::Picture picture_;
    std::unique_ptr<void, decltype(&std::free)> memory_{nullptr, std::free};
};

/// "RGB_8u_C3"
std::string nameOf(const Side& side);
/// By the name of a pixel format (NV12, yuv420p ...) or as nameOf() has it; null if there is none.
const Side* sideNamed(std::string_view name);
/// One that is known to be there.
const Side& sideOf(std::string_view holds, std::string_view layout, std::string_view depth);
/// Gray, RGB, or RGB with alpha.
const Side& pictureSide(int channels, std::string_view depth);

/// "RGB": any order of these; "YUV": luma and chroma; "Gray": also raw Bayer samples; or what the side holds.
std::string modelOf(const Side& side);
/// Whether one may be taken for the other as it lies in memory.
bool alike(const Side& a, const Side& b);
/// Why one cannot be repacked to the other; empty if it can.
std::string mismatch(const Side& from, const Side& to);

/// Copies samples into another layout of the same model. Gray gives R, G and B or neutral chroma; a fourth channel that
/// is missing becomes opaque; gray and RGB are scaled to another depth.
void repack(const Frame& from, Frame& to);
/// Only the fourth channel.
void repackAlpha(const Frame& from, Frame& to);
/// Enlarged to whole multiples of `cell` by repeating the last columns and rows.
void pad(const Frame& from, MoxiSize cell, Frame& to);

}  // namespace pictures
