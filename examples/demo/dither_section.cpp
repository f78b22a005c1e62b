// Few levels: the methods of bit-depth reduction side by side, each at 2 and 8 levels, without noise and with it.
#include "demo.h"

namespace demo {

void ditherSection(Demo& demo) {
    constexpr struct {
        MoxDitherType type;
        const char *name, *caption;
    } methods[] = {{moxDitherNone, "none", "Nearest level"},
                   {moxDitherFs, "floyd-steinberg", "Floyd and Steinberg"},
                   {moxDitherJj, "jarvis", "Jarvis, Judice and Ninke"},
                   {moxDitherSt, "stucki", "Stucki"},
                   {moxDitherBayer, "ordered", "Ordered, 4 by 4"}};
    constexpr int32_t u8 = 1;  // the code of the data type
    constexpr int noisy = 25;  // percent

    const Image8& rgb = demo.source().rgb8();
    const MoxiSize size = rgb.size();
    const MoxiRect middle = {size.width / 4, size.height / 4, (size.width + 1) / 2, (size.height + 1) / 2};
    Image8 result(size, 3);
    for (const auto& method : methods) {
        int32_t bytes = 0;
        if (moxiReduceBitsGetBufferSize(u8, size, noisy, method.type, &bytes) < 0) continue;
        std::vector<Mox8u> buffer(size_t(bytes) + 1);
        std::vector<Image8> parts;
        for (const int levels : {2, 8}) {
            for (const int noise : {0, noisy}) {
                if (demo.run(CALL(moxiReduceBits_8u_C3R, rgb.data(), rgb.step(), result.data(), result.step(), size,
                                  noise, method.type, levels, buffer.data())))
                    parts.push_back(crop(result, middle));
            }
        }
        if (parts.size() == 4) {
            demo.show(std::string("dither-") + method.name,
                      std::string(method.caption) + ": 2 levels, with noise, 8 levels, with noise", sideBySide(parts));
        }
    }

    Image8 gray(size, 1), bits((size.width + 7) / 8, size.height, 1), black(size, 1);
    std::vector<Mox8u> buffer(size_t(12) * size.width + 112);
    if (demo.run(CALL(moxiRGBToGray_8u_C3C1R, rgb.data(), rgb.step(), gray.data(), gray.step(), size)) &&
        demo.run(CALL(moxiReduceBits_8u1u_C1R, gray.data(), gray.step(), bits.data(), bits.step(), 0, size, 0, 0,
                      moxDitherSt, 127, buffer.data()))) {
        for (int y = 0; y < size.height; ++y)
            for (int x = 0; x < size.width; ++x) *black.at(x, y) = (bits.row(y)[x / 8] << x % 8 & 0x80) ? 255 : 0;
        demo.show("dither-1bit", "One bit a pixel", black);
    }
}

}  // namespace demo
