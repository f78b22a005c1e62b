// PNG through libpng.
#pragma once

#include "picture_io.h"

namespace demo {

// What the demo is ready to hold; steps of 32 bits must do for a row of three floats.
constexpr int kMaxSide = 100'000'000;
constexpr int64_t kMaxPixels = int64_t(1) << 27;
void checkSize(int width, int height);

// One of the two is filled, with one or three channels: transparency is laid over white.
struct PngImage {
    Image8 image8;
    Image16 image16;
};

PngImage decodePng(const unsigned char* bytes, size_t size);

}  // namespace demo
