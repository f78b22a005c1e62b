// Colour twist against plain code.
#include "moxcc/twist.h"

#include <algorithm>

#include "models/pixels.h"

using namespace moxtest;

namespace {

/// The result for output channel i; float samples as they come, integers limited and rounded to the even neighbour.
template <class T>
T twisted(const T* c, const Mox32f* twist, int i, bool fourChannels) {
    const Mox32f* t = twist + 4 * i;
    const auto f = [&](int k) { return static_cast<float>(c[k]); };
    float sum;
    if (fourChannels) {
        sum = ((f(0) * t[0] + f(1) * t[1]) + f(2) * t[2]) + f(3) * t[3];
    } else {
        const float a = t[3] + f(0) * t[0], b = f(2) * t[2] + f(1) * t[1];
        sum = a + b;
    }
    if constexpr (std::is_floating_point_v<T>) {
        return sum;
    } else {
        const float top = std::numeric_limits<T>::max(), bottom = std::numeric_limits<T>::min();
        sum = sum < top ? sum : top;
        sum = sum > bottom ? sum : bottom;
        return static_cast<T>(nearest(sum));
    }
}

/// Matrices of usual weights, and of weights and offsets whose sums of integers leave 32 bits, alone or together.
Values anyMatrix(Random& random) {
    static Mox32f matrix[16];
    const bool wild = random.oneIn(2);
    for (int i = 0; i < 16; ++i) {
        const bool offset = i % 4 == 3;
        if (!wild)
            matrix[i] = offset ? random.uniform(-140.0f, 140.0f) : random.uniform(-0.5f, 1.0f);
        else if (random.oneIn(16))
            matrix[i] = random.special<float>();
        else
            matrix[i] = (random.oneIn(2) ? -1 : 1) *
                        random.oneOf({0.0f, 0.5f, offset ? 2e8f : 4000.0f, offset ? 2.1e9f : 40000.0f});
    }
    return {.weights = matrix};
}

/// Integer samples are rounded to nearest in any mode, floats in the caller's.
template <class T>
void expectTwist(const char* name) {
    const int mapped = catalogue::find(name)->is("*_C4R") ? 4 : 3;
    const auto reference = [mapped](const Picture& src, Picture& want, const Values& values) {
        underMxcsr(std::is_floating_point_v<T> ? readMxcsr() : mxcsr::usual, [&] {
            for (int y = 0; y < src.size().height; ++y)
                for (int x = 0; x < src.size().width; ++x) {
                    T in[4] = {};
                    for (int c = 0; c < mapped; ++c) in[c] = src.get<T>(x, y, c);
                    const auto* const matrix = static_cast<const Mox32f*>(values.weights);
                    for (int c = 0; c < mapped; ++c) want.set(x, y, c, twisted(in, matrix, c, mapped == 4));
                }
        });
    };
    const auto next = [](Random& random) {
        if constexpr (std::is_floating_point_v<T>)
            return random.oneIn(9) ? random.special<T>() : random.uniform<T>(-2, 2);
        return random.sample<T>();
    };
    expect(name, reference,
           {.roundings = {std::begin(mxcsr::roundings), std::end(mxcsr::roundings)},
            .fill = [&](Picture& src, Random& random) { src.fill<T>([&] { return next(random); }); },
            .values = anyMatrix,
            .nan = Nan::anyNan});
}

TEST(ColorTwist, FollowsItsMatrix) {
    for (const char* name : named("moxiColorTwist32f_8u_*")) expectTwist<Mox8u>(name);
    for (const char* name : named("moxiColorTwist32f_16u_*")) expectTwist<Mox16u>(name);
    for (const char* name : named("moxiColorTwist32f_16s_*")) expectTwist<Mox16s>(name);
    for (const char* name : named("moxiColorTwist_32f_*")) expectTwist<Mox32f>(name);
}

}  // namespace
