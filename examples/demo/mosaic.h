// Raw frames of a sensor behind a Bayer colour-filter array.
#pragma once

#include "image.h"

namespace demo {

// What a sensor of even rows R G R G ..., odd rows G B G B ... would see.
template <class T>
Image<T> mosaic(const Image<T>& rgb) {
    Image<T> raw(rgb.size(), 1);
    for (int y = 0; y < rgb.height(); ++y) {
        for (int x = 0; x < rgb.width(); ++x) *raw.at(x, y) = rgb.at(x, y)[(x & 1) + (y & 1)];
    }
    return raw;
}
inline constexpr MoxBayerGrid kMosaicGrid = moxBayerGridRGGB;

// The same as a picture: each site in the colour of its filter.
template <class T>
Image<T> colouredMosaic(const Image<T>& raw) {
    Image<T> rgb(raw.size(), 3);
    for (int y = 0; y < rgb.height(); ++y) {
        for (int x = 0; x < rgb.width(); ++x) rgb.at(x, y)[(x & 1) + (y & 1)] = *raw.at(x, y);
    }
    return rgb;
}

// Scratch memory for moxiDemosaicAHD.
struct DemosaicBuffer {
    int32_t step;
    std::vector<Mox8u> bytes;
    explicit DemosaicBuffer(int width) : bytes(moxiDemosaicAHDGetBufferSize(width, sizeof(Mox16u), &step)) {}
};

}  // namespace demo
