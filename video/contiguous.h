// Pictures without gaps between their rows: the forms that take no steps.
#pragma once

#include "frame/entry.h"

namespace q4 {

// ---- steps, of a width ----------------------------------------------------------------------------------------------

constexpr int32_t stepRGB(int32_t width) { return int32_t(3 * uint32_t(width)); }
constexpr int32_t stepPlane(int32_t width) { return width; }
/// The steps of three planes.
struct PlaneSteps {
    int32_t planes[3];
};
constexpr PlaneSteps steps422(int32_t width) {
    const int32_t chroma = width / 2 + (width & 1);
    return {{width, chroma, chroma}};
}
constexpr PlaneSteps steps420(int32_t width) { return {{width, width / 2, width / 2}}; }

inline int32_t argumentOf(int32_t step) { return step; }
inline const int32_t* argumentOf(const PlaneSteps& steps) { return steps.planes; }

// ---- entries --------------------------------------------------------------------------------------------------------

/// The pixels of a picture, as a 32-bit integer that wraps.
constexpr int32_t pixelsOf(MoxiSize size) { return int32_t(uint32_t(size.width) * uint32_t(size.height)); }

/// Whether a 4:2:2 picture is one row to the kernels, whose limits then lie in that row: one of pairs alone and not too
/// small.
constexpr bool isOneRow(MoxiSize size) {
    return size.width > 0 && size.height > 0 && size.width % 2 == 0 && pixelsOf(size) >= 256;
}
constexpr bool neverOneRow(MoxiSize) { return false; }

/// The entry of a form without steps, by the one with steps; where the picture is one row, another may do.
template <auto& rows, auto srcSteps, auto dstSteps, auto joins = neverOneRow, auto& oneRow = rows>
inline constexpr auto contiguous = [](auto* src, auto* dst, MoxiSize roiSize) -> MoxStatus {
    const auto srcStep = srcSteps(roiSize.width);
    const auto dstStep = dstSteps(roiSize.width);
    if (joins(roiSize)) return oneRow(src, argumentOf(srcStep), dst, argumentOf(dstStep), {pixelsOf(roiSize), 1});
    return rows(src, argumentOf(srcStep), dst, argumentOf(dstStep), roiSize);
};

}  // namespace q4
