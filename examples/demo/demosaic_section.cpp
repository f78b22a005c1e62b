#include "demo.h"

namespace demo {
namespace {

// What a sensor of even rows R G R G ..., odd rows G B G B ... would see.
template <class T>
Image<T> mosaic(const Image<T>& rgb) {
    Image<T> raw(rgb.size(), 1);
    for (int y = 0; y < rgb.height(); ++y) {
        for (int x = 0; x < rgb.width(); ++x) *raw.at(x, y) = rgb.at(x, y)[(x & 1) + (y & 1)];
    }
    return raw;
}

template <class T>
Image<T> rgbOf(const Image<T>& bgra) {
    Image<T> rgb(bgra.size(), 3);
    for (int y = 0; y < rgb.height(); ++y) {
        for (int x = 0; x < rgb.width(); ++x) std::reverse_copy(bgra.at(x, y), bgra.at(x, y) + 3, rgb.at(x, y));
    }
    return rgb;
}

}  // namespace

// A raw frame made from the picture, and back by the three methods.
void demosaicSection(Demo& demo) {
    const Image8& original = demo.source().rgb8();
    const MoxiSize size = original.size();
    const MoxiRect all = {0, 0, size.width, size.height};
    const MoxBayerGrid grid = moxBayerGridRGGB;
    const Image8 raw = mosaic(original);
    const int32_t bufferStep = 2 * (std::max(size.width, 6) + 8);
    std::vector<Mox8u> buffer(size_t(bufferStep) * 30);

    Image8 rgb(size, 3), bgra(size, 4);
    std::vector<Image8> results = {original};
    const auto result = [&](const Image8& image, const char* name, const char* caption) {
        demo.note(decibels(psnr(original, image)));
        demo.show(name, caption, image);
        results.push_back(image);
    };
    if (demo.run(CALL(moxiCFAToRGB_8u_C1C3R, raw.data(), all, size, raw.step(), rgb.data(), rgb.step(), grid)))
        result(rgb, "bayer-bilinear", "Bayer, bilinear");
    if (demo.run(CALL(moxiCFAToBGRA_VNG_8u_C1C4R_L, raw.data(), all, size, raw.step(), nullptr, bgra.data(),
                      bgra.step(), grid)))
        result(rgbOf(bgra), "bayer-vng", "Bayer, variable number of gradients");
    if (demo.run(CALL(moxiDemosaicAHD_8u_C1C3R, raw.data(), all, size, raw.step(), rgb.data(), rgb.step(), grid,
                      buffer.data(), bufferStep)))
        result(rgb, "bayer-ahd", "Bayer, homogeneity-directed");

    if (results.size() > 1) {
        const MoxiSize window = {std::min(32, size.width), std::min(48, size.height)};
        const MoxiRect detail = mostDifferent(original, results[1], window);
        for (Image8& image : results) image = enlarged(crop(image, detail), 4);
        demo.show("bayer-detail", "Original, and the three in turn", sideBySide(results));
    }

    const Image16& original16 = demo.source().rgb16();
    const Image16 raw16 = mosaic(original16);
    Image16 rgb16(size, 3), bgra16(size, 4);
    if (demo.run(CALL(moxiCFAToRGB_16u_C1C3R, raw16.data(), all, size, raw16.step(), rgb16.data(), rgb16.step(), grid)))
        demo.note(decibels(psnr(original16, rgb16)));
    if (demo.run(CALL(moxiCFAToBGRA_VNG_16u_C1C4R_L, raw16.data(), all, size, raw16.step(), nullptr, bgra16.data(),
                      bgra16.step(), grid)))
        demo.note(decibels(psnr(original16, rgbOf(bgra16))));
    if (demo.run(CALL(moxiDemosaicAHD_16u_C1C3R, raw16.data(), all, size, raw16.step(), rgb16.data(), rgb16.step(),
                      grid, buffer.data(), bufferStep)))
        demo.note(decibels(psnr(original16, rgb16)));
}

}  // namespace demo
