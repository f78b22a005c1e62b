#include "demo.h"

namespace demo {
namespace {

// The picture as v210 with BT.709 luma of 0 to highest; chroma lies around 512 on the same scale.
Image<Mox32u> v210(const ImageF& rgb, int highest) {
    // Where the samples of six pixels lie: word and lowest bit.
    static constexpr struct {
        int word, bit;
    } lumas[] = {{0, 10}, {1, 0}, {1, 20}, {2, 10}, {3, 0}, {3, 20}}, blues[] = {{0, 0}, {1, 10}, {2, 20}},
      reds[] = {{0, 20}, {2, 0}, {3, 10}};
    Image<Mox32u> words((rgb.width() + 5) / 6 * 4, rgb.height(), 1);
    const auto store = [&](Mox32u* group, auto place, float value) {
        group[place.word] |= Mox32u(std::clamp(std::lround(value), 0l, 1023l)) << place.bit;
    };
    for (int y = 0; y < rgb.height(); ++y) {
        for (int x = 0; x < rgb.width(); ++x) {
            const float* p = rgb.at(x, y);
            Mox32u* group = words.row(y) + x / 6 * 4;
            const float luma = (0.2126f * p[0] + 0.7152f * p[1] + 0.0722f * p[2]) * float(highest);
            store(group, lumas[x % 6], luma);
            if (x % 2) continue;
            store(group, blues[x % 6 / 2], (p[2] * float(highest) - luma) / 1.816f + 512);
            store(group, reds[x % 6 / 2], (p[0] * float(highest) - luma) / 1.54f + 512);
        }
    }
    return words;
}

// Words of 5, 6 and 5 bits, the first field in the upper ones, of which 31 is white.
Image8 fields(const Image16& words) {
    Image8 result(words.size(), 3);
    for (size_t i = 0; i < words.samples().size(); ++i) {
        const int word = words.samples()[i];
        int c = 0;
        for (const int field : {word >> 11, word >> 5 & 63, word & 31})
            result.samples()[3 * i + size_t(c++)] = Mox8u(std::min(field, 31) * 255 / 31);
    }
    return result;
}

}  // namespace

void v210Section(Demo& demo) {
    const ImageF& rgb = demo.source().rgb32f();
    const MoxiSize size = rgb.size();
    Image16 result(size, 1);
    const auto samples = [](const auto& image) { return image.width(); };  // the steps are counted in samples

    const Image<Mox32u> ten = v210(rgb, 1023);
    if (demo.run(CALL(moxiYUV422v210ToGray_709HDTV_32u16u_C3C1, ten.data(), samples(ten), result.data(),
                      samples(result), size)))
        demo.show("v210-luma", "Luma of ten bits, scaled to sixteen",
                  map<Mox16u>(result, [](Mox16u y) { return Mox16u(y << 6 | y >> 4); }));

    // The colour words take samples as they are, so that a picture must come in five bits.
    const Image<Mox32u> five = v210(rgb, 31);
    if (demo.run(CALL(moxiYUV422v210ToRGB_709HDTV_32u16u_C3, five.data(), samples(five), result.data(), samples(result),
                      size)))
        demo.show("v210-rgb", "Five bits: colour words, blue in the upper bits", reversed(fields(result)));
    if (demo.run(CALL(moxiYUV422v210ToBGR_709HDTV_32u16u_C3, five.data(), samples(five), result.data(), samples(result),
                      size)))
        demo.show("v210-bgr", "Five bits: colour words, red in the upper bits", fields(result));
}

}  // namespace demo
