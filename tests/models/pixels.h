// Conversions of pixels one by one, between images of interleaved samples or planes, against plain code.
#ifndef MODELS_PIXELS_H
#define MODELS_PIXELS_H

#include <array>
#include <functional>
#include <initializer_list>
#include <limits>
#include <string_view>
#include <vector>

#include "support/picture.h"
#include "support/processor.h"
#include "support/support.h"

namespace moxtest {

/// The colour samples of a pixel, in the order of memory.
template <class T>
using Pixel = std::array<T, 3>;

// ---- rules ----

/// What the pixel at column x of a row of some width becomes.
template <class S, class D = S>
using PixelRule = std::function<Pixel<D>(const Pixel<S>&, int x, int width)>;

/// A rule that differs between the whole groups of columns, its vector columns, and the last columns of a row.
template <class Rule>
auto inGroups(int group, Rule rule) {
    return [=](const auto& p, int x, int width) { return rule(p, x < width / group * group); };
}
inline constexpr int noGroups = std::numeric_limits<int>::max();

template <class T>
Pixel<T> reversed(const Pixel<T>& p) {
    return {p[2], p[1], p[0]};
}
template <class Rule>
auto fromBgr(Rule rule) {
    return [=](const auto& p, int x, int width) { return rule(reversed(p), x, width); };
}
template <class Rule>
auto toBgr(Rule rule) {
    return [=](const auto& p, int x, int width) { return reversed(rule(p, x, width)); };
}

// Operations of the definitions, in the rounding mode of the moment.
inline float rcp2(float x) {
    const float r = rcp(x);
    return (r + r) - ((x * r) * r);
}
inline float unit(float x) { return x < 0 ? 0 : x > 1 ? 1 : x; }  // a NaN stays

// ---- pixels to convert ----

/// Draws one pixel after the other.
template <class T>
using Pixels = std::function<Pixel<T>()>;

/// The pixels of one image, which may have something in common.
template <class T>
using Source = Pixels<T> (*)(Random&);

/// Pixels of independent samples.
template <class T, class Draw>
Pixels<T> independent(const Draw& draw) {
    return [=] { return Pixel<T>{draw(), draw(), draw()}; };
}

/// Integers of the whole range; floats mostly from -0.5 to 1.5.
template <class T>
Pixels<T> samples(Random& random) {
    return independent<T>([&] {
        if constexpr (std::is_floating_point_v<T>)
            return random.oneIn(9) ? random.special<T>() : random.uniform(T(-0.5), T(1.5));
        else
            return random.sample<T>();
    });
}

/// Samples on or beside the values at which hue models change their ways: the ends, the middle, the sixths.
template <class T>
T hueSample(Random& random) {
    const int sixths = static_cast<int>(random.between(0, 6));
    if constexpr (std::is_floating_point_v<T>) {
        if (random.oneIn(2)) return random.uniform<T>(T(-0.1), T(1.1));
        if (random.oneIn(8)) return random.special<T>();
        return static_cast<T>(sixths) / 6 + random.oneOf<T>({0, -1, 1, 2}) * std::numeric_limits<T>::epsilon();
    } else {
        if (random.oneIn(2)) return static_cast<T>(random.bits());
        const int64_t top = std::numeric_limits<std::make_unsigned_t<T>>::max();
        return static_cast<T>(std::numeric_limits<T>::min() + top * sixths / 6 + random.between(-1, 1));
    }
}

/// Hues of all kinds, among them grays and pixels of which two channels agree.
template <class T>
Pixels<T> hues(Random& random) {
    return [&] {
        Pixel<T> p;
        for (size_t c = 0; c < 3; ++c) p[c] = c > 0 && random.oneIn(4) ? p[random.bits() % c] : hueSample<T>(random);
        return p;
    };
}

/// Integers: black and samples near it as often as others, and pixels without colour.
template <class T>
Pixels<T> darkAndGray(Random& random) {
    using L = std::numeric_limits<T>;
    const int mode = static_cast<int>(random.between(0, 3));
    if (mode == 3)
        return [&]() -> Pixel<T> {
            const T gray = random.oneIn(3) ? L::min() : random.sample<T>();
            return {gray, gray, gray};
        };
    return independent<T>([&random, mode] {
        if (mode == 0 || (mode == 1 && random.oneIn(2))) return random.sample<T>();
        return static_cast<T>(L::min() + random.between(0, sizeof(T) == 1 ? 24 : 1500));
    });
}

/// Floats from 0 to 1, or to where colours turn dark.
template <class T>
Pixels<T> unitRange(Random& random) {
    const T limit = random.oneIn(3) ? T(0.03) : T(1);
    return independent<T>([&random, limit] { return random.oneIn(10) ? T(0) : random.uniform(T(0), limit); });
}

template <class T>
Pixels<T> anything(Random& random) {
    return independent<T>([&] {
        return random.oneIn(3)   ? random.special<T>()
               : random.oneIn(2) ? random.anyBits<T>()
                                 : random.uniform(T(-2), T(2));
    });
}

// ---- comparisons ----

template <class Pointer>
using SampleOf = std::remove_const_t<std::remove_pointer_t<std::remove_const_t<std::remove_pointer_t<Pointer>>>>;

/// Writes the colours of each pixel by a rule. The fourth samples of AC4 images stay; those of planes are copied.
template <class S, class D>
Reference byRule(const char* name, const PixelRule<S, D>& rule) {
    return [=, copiesFourth = catalogue::find(name)->is("*P4*")](const Picture& src, Picture& want, const Values&) {
        const MoxiSize size = src.size();
        for (int y = 0; y < size.height; ++y) {
            for (int x = 0; x < size.width; ++x) {
                const auto out = rule({src.get<S>(x, y, 0), src.get<S>(x, y, 1), src.get<S>(x, y, 2)}, x, size.width);
                for (int c = 0; c < 3; ++c) want.set(x, y, c, out[size_t(c)]);
                if (copiesFourth) want.set(x, y, 3, src.get<S>(x, y, 3));
            }
        }
    };
}

/// Calls in all rounding modes with images of a source.
template <class T>
Calls ofPixels(Source<T> source) {
    const auto fill = [=](Picture& picture, Random& random) {
        const Pixels<T> next = source(random);
        for (int y = 0; y < picture.size().height; ++y) {
            for (int x = 0; x < picture.size().width; ++x) {
                const Pixel<T> p = next();
                for (int c = 0; c < 3; ++c) picture.set(x, y, c, p[size_t(c)]);
            }
        }
    };
    return {.roundings = {std::begin(mxcsr::roundings), std::end(mxcsr::roundings)}, .fill = fill, .nan = Nan::anyNan};
}

/// Compares an export with its rule on images of each source, at all sizes up to a width.
template <class S, class SStep, class D, class DStep, class... Extra>
void expectPixels(Symbol<MoxStatus(S, SStep, D, DStep, MoxiSize, Extra...)> function,
                  const PixelRule<SampleOf<S>, SampleOf<D>>& rule, std::initializer_list<Source<SampleOf<S>>> sources,
                  int toWidth = 70) {
    for (const Source<SampleOf<S>> source : sources) {
        Calls calls = ofPixels<SampleOf<S>>(source);
        calls.toWidth = toWidth;
        expect(function.name, byRule<SampleOf<S>, SampleOf<D>>(function.name, rule), calls);
    }
}

/// The same for many pixels of a source that seeks what few pixels meet, in whole groups of columns and in last ones.
template <class S, class SStep, class D, class DStep, class... Extra>
void expectManyPixels(Symbol<MoxStatus(S, SStep, D, DStep, MoxiSize, Extra...)> function,
                      const PixelRule<SampleOf<S>, SampleOf<D>>& rule, Source<SampleOf<S>> source) {
    Random random(3);
    for (const int width : {3, 128})
        expectAt(function.name, {width, manyPixels / 4 / width}, random,
                 byRule<SampleOf<S>, SampleOf<D>>(function.name, rule), ofPixels<SampleOf<S>>(source));
}

/// Compares an export with its rule for a third of the 2^24 pixels of 8u samples, in vector columns and in last ones.
inline void expectMostPixels(Symbol<MoxStatus(const Mox8u*, int32_t, Mox8u*, int32_t, MoxiSize)> function,
                             const PixelRule<Mox8u>& rule) {
    constexpr int n = 1 << 16;
    std::vector<Pixel<Mox8u>> src(n), want(n), got(n);
    for (const int width : {256, 2}) {
        for (int first = 0; first < 256; first += 3) {
            for (size_t i = 0; i < n; ++i) {
                src[i] = {static_cast<Mox8u>(first), static_cast<Mox8u>(i >> 8), static_cast<Mox8u>(i)};
                want[i] = rule(src[i], 0, width);
            }
            forEachLibrary([&](const Library& lib) {
                lib(function)(src[0].data(), 3 * width, got[0].data(), 3 * width, {width, n / width});
                ASSERT_TRUE(got == want) << describe(lastCall()) << ": first sample " << first;
            });
        }
    }
}

}  // namespace moxtest

#endif
