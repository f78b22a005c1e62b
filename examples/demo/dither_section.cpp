// Few levels: each method of bit-depth reduction at 2 and 8 levels, without noise and with it.
#include "demo.h"
#include "sheet.h"

namespace demo {
namespace {

constexpr struct Method {
    MoxDitherType type;
    const char *name, *caption;
} methods[] = {{moxDitherNone, "none", "Nearest level"},
               {moxDitherFs, "floyd-steinberg", "Floyd and Steinberg"},
               {moxDitherJj, "jarvis", "Jarvis, Judice and Ninke"},
               {moxDitherSt, "stucki", "Stucki"},
               {moxDitherBayer, "ordered", "Ordered, 4 by 4"}};

constexpr int kNoisy = 25;  // percent

template <class T, class Reduce>
void reduce(Demo& demo, const char* function, Reduce convert, int32_t type, const Image<T>& rgb, const Method& method,
            int levels, int noise, const std::string& depth, MoxiRect part) {
    const MoxiSize size = rgb.size();
    Image8 result(size, 3);
    int32_t bytes = 0;
    moxiReduceBitsGetBufferSize(type, size, noise, method.type, &bytes);
    std::vector<Mox8u> buffer(size_t(bytes) + 1);
    if (!demo.run(function, [&] {
            return convert(rgb.data(), rgb.step(), result.data(), result.step(), size, noise, method.type, levels,
                           buffer.data());
        }))
        return;
    const std::string count = std::to_string(levels);
    demo.show("dither-" + depth + "-" + method.name + "-" + count + (noise ? "-noise" : ""),
              std::string(method.caption) + ", " + count + " levels" + (noise ? ", noise" : "") +
                  (depth == "8u" ? "" : ", from " + depth),
              result, part);
}
#define REDUCE(function) #function, function

// One bit a pixel, of gray.
void oneBit(Demo& demo, MoxiRect part) {
    const Image8& rgb = demo.source().rgb8();
    const MoxiSize size = rgb.size();
    Image8 gray(size, 1), bits((size.width + 7) / 8, size.height, 1), black(size, 1);
    std::vector<Mox8u> buffer(size_t(12) * size.width + 112);
    if (moxiRGBToGray_8u_C3C1R(rgb.data(), rgb.step(), gray.data(), gray.step(), size) != moxStatusOk) return;
    for (const Method& method : {methods[moxDitherNone], methods[moxDitherSt]}) {
        if (!demo.run(CALL(moxiReduceBits_8u1u_C1R, gray.data(), gray.step(), bits.data(), bits.step(), 0, size, 0, 0,
                           method.type, 127, buffer.data())))
            continue;
        for (int y = 0; y < size.height; ++y)
            for (int x = 0; x < size.width; ++x) *black.at(x, y) = (bits.row(y)[x / 8] << x % 8 & 0x80) ? 255 : 0;
        demo.show(std::string("dither-8u1u-") + method.name, std::string("One bit a pixel: ") + method.caption, black,
                  part);
    }
}

}  // namespace

void ditherSection(Demo& demo) {
    constexpr int32_t u8 = 1, u16 = 3, f32 = 9;  // the codes of data types
    const Source& source = demo.source();
    const MoxiRect part = busiest(source.rgb8(), kTilePicture);  // dots show as they are when nothing is scaled
    for (const Method& method : methods)
        for (const int levels : {2, 8})
            for (const int noise : {0, kNoisy})
                reduce(demo, REDUCE(moxiReduceBits_8u_C3R), u8, source.rgb8(), method, levels, noise, "8u", part);
    reduce(demo, REDUCE(moxiReduceBits_16u8u_C3R), u16, source.rgb16(), methods[moxDitherFs], 4, 0, "16u", part);
    reduce(demo, REDUCE(moxiReduceBits_32f8u_C3R), f32, source.rgb32f(), methods[moxDitherBayer], 4, 0, "32f", part);
    oneBit(demo, part);
}

}  // namespace demo
