// Pictures without gaps between their rows: the steps of the forms that take none.
#pragma once

#include "moxcc/types.h"

namespace q4 {

/// The steps of three planes.
struct PlaneSteps {
    int32_t planes[3];
};
constexpr int32_t naturalRGB(int32_t width) { return int32_t(3 * uint32_t(width)); }
constexpr PlaneSteps natural422(int32_t width) {
    const int32_t chroma = width / 2 + (width & 1);
    return {{width, chroma, chroma}};
}
constexpr PlaneSteps natural420(int32_t width) { return {{width, width / 2, width / 2}}; }

/// The pixels of a picture, as a 32-bit integer that wraps.
constexpr int32_t pixelsOf(MoxiSize size) { return int32_t(uint32_t(size.width) * uint32_t(size.height)); }

/// Whether a 4:2:2 picture without gaps is one row to the kernels, whose limits then lie in that row: one of pairs alone
/// and not too small.
constexpr bool isOneRow(MoxiSize size) {
    return size.width > 0 && size.height > 0 && size.width % 2 == 0 && pixelsOf(size) >= 256;
}
constexpr MoxiSize joinedRows(MoxiSize size) { return isOneRow(size) ? MoxiSize{pixelsOf(size), 1} : size; }

}  // namespace q4
