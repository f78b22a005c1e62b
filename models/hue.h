// What the hue models share: scales, and the parts of a pixel that its hue is made of.
#pragma once

#include <type_traits>

#include "frame/block.h"
#include "moxcc/types.h"

namespace q4 {

/// Scales between samples, which run from 0 to top, and degrees and fractions.
struct HueScales {
    float top;
    float degreesToSample, sampleToDegrees;  // top / 360, 360 / top
    float sampleToFraction;                  // 1 / top
};

template <class T>
inline constexpr HueScales hueScales = {65535.0f, 182.04167f, 0.00549324788f, 1.5259022e-05f};
template <>
inline constexpr HueScales hueScales<Mox8u> = {255.0f, 0.7083333f, 1.4117647f, 0.003921569f};

/// 1 / 60: from degrees to the six sectors of the colour circle.
inline constexpr float degreesToSector = 0.016666668f;

// The colour circle has three thirds, around red, green and blue; a pixel lies in that of its greatest channel. The
// orders differ in which of equal greatest channels it is. They give masks of the thirds around red and green; a pixel
// that has both is red's.

struct RedGreenBlue {
    template <class V>
    MOX_INLINE static Px<V, 2> redAndGreen(const Px<V, 3>& p, V mx) {
        return {{eq(p.c[0], mx), eq(p.c[1], mx)}};
    }
};

struct BlueGreenRed {
    template <class V>
    MOX_INLINE static Px<V, 2> redAndGreen(const Px<V, 3>& p, V mx) {
        const V blue = eq(p.c[2], mx), green = andNot(blue, eq(p.c[1], mx));
        return {{eq(blue | green, zero<V>()), green}};
    }
};

/// Green if red is less, else blue before red.
struct GreenIfLessRed {
    template <class V>
    MOX_INLINE static Px<V, 2> redAndGreen(const Px<V, 3>& p, V mx) {
        const V red = eq(p.c[0], mx), green = andNot(red, eq(p.c[1], mx));
        return {{andNot(eq(p.c[2], mx), red), green}};
    }
};

/// A pixel on the colour circle, on lanes of any type.
template <class V>
struct Hue {
    V mx, mn;         // the greatest and the least channel
    V red, green;     // masks of the thirds; blue's is the rest
    V before, after;  // the channels beside the greatest one: blue is before red, and green after it
};

/// Of channels that do not compare (NaNs), the earlier ones count.
template <class Order, class V>
MOX_INLINE Hue<V> hueOf(const Px<V, 3>& p) {
    const V r = p.c[0], g = p.c[1], b = p.c[2];
    const V mx = max(b, max(g, r)), mn = min(b, min(g, r));
    const auto [red, green] = Order::redAndGreen(p, mx).c;
    return {mx, mn, red, green, select(red, b, select(green, r, g)), select(red, g, select(green, b, r))};
}

}  // namespace q4
