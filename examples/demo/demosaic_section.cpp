#include "demo.h"
#include "mosaic.h"
#include "planar.h"

namespace demo {
// A raw frame made from the picture, and back by the three methods.
void demosaicSection(Demo& demo) {
    const Image8& original = demo.source().rgb8();
    const MoxiSize size = original.size();
    const MoxiRect all = {0, 0, size.width, size.height};
    const Image8 raw = mosaic(original);
    DemosaicBuffer buffer(size.width);

    struct Result {
        std::string name, caption;
        Image8 image;
    };
    std::vector<Result> results = {{"original", "the original", original}};
    const auto result = [&](const char* name, const char* caption, const Image8& image) {
        demo.note(decibels(psnr(original, image)));
        demo.show(std::string("bayer-") + name, std::string("Bayer, ") + caption, image);
        results.push_back({name, caption, image});
    };
    demo.show("bayer-raw", "Raw Bayer frame, each site behind its filter", colouredMosaic(raw));
    Image8 rgb(size, 3), bgra(size, 4);
    if (demo.run(CALL(moxiCFAToRGB_8u_C1C3R, raw.data(), all, size, raw.step(), rgb.data(), rgb.step(), kMosaicGrid)))
        result("bilinear", "bilinear", rgb);
    if (demo.run(CALL(moxiCFAToBGRA_VNG_8u_C1C4R_L, raw.data(), all, size, raw.step(), nullptr, bgra.data(),
                      bgra.step(), kMosaicGrid)))
        result("vng", "variable number of gradients", rgbOf(bgra));
    if (demo.run(CALL(moxiDemosaicAHD_8u_C1C3R, raw.data(), all, size, raw.step(), rgb.data(), rgb.step(), kMosaicGrid,
                      buffer.bytes.data(), buffer.step)))
        result("ahd", "homogeneity-directed", rgb);

    if (results.size() > 1) {
        const MoxiRect worst = mostDifferent(original, results[1].image, kDetail), edges = chromaDetail(original);
        for (const auto& [part, kind] : {std::pair(worst, "Finest detail"), std::pair(edges, "Edges of colour")})
            for (const Result& each : results)
                demo.detail(std::string(kind) + ", enlarged: " + each.caption, crop(each.image, part));
    }

    const Image16& original16 = demo.source().rgb16();
    const Image16 raw16 = mosaic(original16);
    Image16 rgb16(size, 3), bgra16(size, 4);
    if (demo.run(CALL(moxiCFAToRGB_16u_C1C3R, raw16.data(), all, size, raw16.step(), rgb16.data(), rgb16.step(),
                      kMosaicGrid)))
        demo.note(decibels(psnr(original16, rgb16)));
    if (demo.run(CALL(moxiCFAToBGRA_VNG_16u_C1C4R_L, raw16.data(), all, size, raw16.step(), nullptr, bgra16.data(),
                      bgra16.step(), kMosaicGrid)))
        demo.note(decibels(psnr(original16, rgbOf(bgra16))));
    if (demo.run(CALL(moxiDemosaicAHD_16u_C1C3R, raw16.data(), all, size, raw16.step(), rgb16.data(), rgb16.step(),
                      kMosaicGrid, buffer.bytes.data(), buffer.step)))
        demo.note(decibels(psnr(original16, rgb16)));
}

}  // namespace demo
