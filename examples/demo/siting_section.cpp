#include "demo.h"
#include "planar.h"

namespace demo {
// The picture with full chroma rows, through half of them, and back in three ways.
void sitingSection(Demo& demo) {
    const Image8& whole = demo.source().rgb8();
    const MoxiSize size = {whole.width() & -2, whole.height() & -8};
    if (size.width == 0 || size.height == 0) return demo.note("too small for whole groups of rows");
    Planar full(size, 2, 1), dropped(size, 2, 2), fields(size, 2, 2), back(size, 2, 1);
    if (!demo.run(CALL(moxiRGBToYCbCr422_8u_C3P3R, whole.data(), whole.step(), full.planes, full.steps, size))) return;

    const auto toRgb = [&](const Planar& picture) {
        Image8 rgb(size, 3);
        moxiYCbCr422ToRGB_8u_P3C3R(picture.planes, picture.steps, rgb.data(), rgb.step(), size);
        return rgb;
    };
    const Image8 original = toRgb(full);
    std::vector<Image8> results = {original};
    const auto result = [&](const char* name, const char* caption) {
        results.push_back(toRgb(back));
        demo.note("Cb " + decibels(psnr(full.plane[1], back.plane[1])) + ", Cr " +
                  decibels(psnr(full.plane[2], back.plane[2])));
        demo.show(name, caption, results.back());
    };

    if (!demo.run(CALL(moxiYCbCr422ToYCbCr420_8u_P3R, full.planes, full.steps, dropped.planes, dropped.steps, size)))
        return;
    if (demo.run(CALL(moxiYCbCr420ToYCbCr422_8u_P3R, dropped.planes, dropped.steps, back.planes, back.steps, size)))
        result("siting-doubled", "Chroma rows dropped, then doubled");
    if (demo.run(
            CALL(moxiYCbCr420ToYCbCr422_Filter_8u_P3R, dropped.planes, dropped.steps, back.planes, back.steps, size)))
        result("siting-filter", "Chroma rows dropped, then filtered");
    if (demo.run(
            CALL(moxiYCbCr422To420_Interlace_8u_P3R, full.planes, full.steps, fields.planes, fields.steps, size)) &&
        demo.run(CALL(moxiYCbCr420To422_Interlace_8u_P3R, fields.planes, fields.steps, back.planes, back.steps, size)))
        result("siting-fields", "Chroma merged and spread in fields");

    const MoxiSize window = {std::min(64, size.width), std::min(96, size.height)};
    const MoxiRect detail = mostDifferent(original, results[1], window);
    for (Image8& image : results) image = enlarged(crop(image, detail), 4);
    demo.show("siting-detail", "Original, doubled, filtered, fields", sideBySide(results));
}

}  // namespace demo
