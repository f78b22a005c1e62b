// Scales between samples and the degrees and fractions of the hue models.
#pragma once

#include <type_traits>

#include "moxcc/types.h"

namespace q4 {

/// Samples run from 0 to top, after the bias of signed ones is added.
struct HueScales {
    int32_t bias;
    float top;
    float degreesToSample, sampleToDegrees;  // top / 360, 360 / top
    float sampleToFraction;                  // 1 / top
};

template <class T>
inline constexpr HueScales hueScales = {std::is_signed_v<T> ? 32768 : 0, 65535.0f, 182.04167f, 0.00549324788f,
                                        1.5259022e-05f};
template <>
inline constexpr HueScales hueScales<Mox8u> = {0, 255.0f, 0.7083333f, 1.4117647f, 0.003921569f};

/// 1 / 60: from degrees to the six sectors of the colour circle.
inline constexpr float degreesToSector = 0.016666668f;

}  // namespace q4
