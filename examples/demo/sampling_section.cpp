// Between samplings and layouts of chroma: there and back, and what it does to edges of colour.
#include "demo.h"
#include "planar.h"

namespace demo {
namespace {

using Resample = MoxStatus (*)(const Mox8u* const*, const int32_t*, Mox8u* const*, const int32_t*, MoxiSize);

enum Start { kStill422, kStill420, kInterlaced422 };

constexpr struct Route {
    const char *name, *caption;
    Start start;
    Cell cell = {};  // of the chroma samples that are left on the way
    const char* toName = "";
    Resample to = nullptr;  // if there is none, the way starts from 4:2:0 as the encoder makes it, by the mean of four
    const char* backName = "";
    Resample back = nullptr;  // if there is none, the start is shown as it is
} routes[] = {
#define STEP(function) #function, function
    {"422", "Enlarged here and below: the picture in 4:2:2", kStill422},
    {"doubled",
     "Chroma rows dropped, then doubled",
     kStill422,
     {2, 2},
     STEP(moxiYCbCr422ToYCbCr420_8u_P3R),
     STEP(moxiYCbCr420ToYCbCr422_8u_P3R)},
    {"filter",
     "Chroma rows dropped, then filled in by four taps",
     kStill422,
     {2, 2},
     STEP(moxiYCbCr422ToYCbCr420_8u_P3R),
     STEP(moxiYCbCr420ToYCbCr422_Filter_8u_P3R)},
    {"fields",
     "Merged and spread within fields",
     kStill422,
     {2, 2},
     STEP(moxiYCbCr422To420_Interlace_8u_P3R),
     STEP(moxiYCbCr420To422_Interlace_8u_P3R)},

    {"interlaced-422", "An interlaced frame in 4:2:2", kInterlaced422},
    {"interlaced-doubled",
     "Interlaced: dropped, then doubled",
     kInterlaced422,
     {2, 2},
     STEP(moxiYCbCr422ToYCbCr420_8u_P3R),
     STEP(moxiYCbCr420ToYCbCr422_8u_P3R)},
    {"interlaced-filter",
     "Interlaced: dropped, then filled in",
     kInterlaced422,
     {2, 2},
     STEP(moxiYCbCr422ToYCbCr420_8u_P3R),
     STEP(moxiYCbCr420ToYCbCr422_Filter_8u_P3R)},
    {"interlaced-fields",
     "Interlaced: merged and spread within fields",
     kInterlaced422,
     {2, 2},
     STEP(moxiYCbCr422To420_Interlace_8u_P3R),
     STEP(moxiYCbCr420To422_Interlace_8u_P3R)},

    {"mean-doubled",
     "Chroma rows averaged, then doubled",
     kStill422,
     {2, 2},
     "",
     nullptr,
     STEP(moxiYCbCr420ToYCbCr422_8u_P3R)},
    {"mean-filter",
     "Chroma rows averaged, then filled in: half a row too high",
     kStill422,
     {2, 2},
     "",
     nullptr,
     STEP(moxiYCbCr420ToYCbCr422_Filter_8u_P3R)},
    {"422-411",
     "4:2:2 to 4:1:1 and back",
     kStill422,
     {4, 1},
     STEP(moxiYCbCr422ToYCbCr411_8u_P3R),
     STEP(moxiYCbCr411ToYCbCr422_8u_P3R)},
    {"420-411",
     "4:2:0 to 4:1:1 and back",
     kStill420,
     {4, 1},
     STEP(moxiYCbCr420To411_8u_P3R),
     STEP(moxiYCbCr411To420_8u_P3R)},

    {"420-1620",
     "4:2:0 to one sample for 4 by 4 and back",
     kStill420,
     {4, 4},
     STEP(moxiYCbCr420To1620_8u_P3R),
     STEP(moxiYCbCr1620To420_8u_P3R)},
#undef STEP
};

// Two fields of a moving camera: the odd rows were taken when the picture had moved by 8 pixels.
Image8 interlaced(Image8 rgb) {
    for (int y = 1; y < rgb.height(); y += 2)
        std::copy_backward(rgb.row(y), rgb.at(rgb.width() - 8, y), rgb.row(y + 1));
    return rgb;
}

}  // namespace

void samplingSection(Demo& demo) {
    const Image8& whole = demo.source().rgb8();
    const MoxiSize size = {whole.width() & -4, whole.height() & -8};
    if (size.width < 8 || size.height == 0) return demo.note("too small for whole groups of rows");
    const Image8 still = crop(whole, {0, 0, size.width, size.height}), moving = interlaced(still);
    const MoxiRect part = chromaDetail(still);

    Planar still422(size, {2, 1}), still420(size, {2, 2}), moving422(size, {2, 1});
    moxiRGBToYCbCr422_8u_C3P3R(still.data(), still.step(), still422.planes, still422.steps, size);
    moxiRGBToYCbCr420_8u_C3P3R(still.data(), still.step(), still420.planes, still420.steps, size);
    moxiRGBToYCbCr422_8u_C3P3R(moving.data(), moving.step(), moving422.planes, moving422.steps, size);
    const Planar* const starts[] = {&still422, &still420, &moving422};

    for (const Route& route : routes) {
        const Planar& start = *starts[route.start];
        const std::string name = std::string("sampling-") + route.name;
        if (!route.back) {
            demo.show(name, route.caption, decode(start), part);
            continue;
        }
        Planar fewer(size, route.cell), back(size, start.cell);
        const Planar& middle = route.to ? fewer : still420;
        const auto run = [&](const char* step, Resample function, const Planar& from, const Planar& to) {
            return demo.run(step, [&] { return function(from.planes, from.steps, to.planes, to.steps, size); });
        };
        if (route.to && !run(route.toName, route.to, start, fewer)) continue;
        if (!run(route.backName, route.back, middle, back)) continue;
        demo.note("Cb " + decibels(psnr(start.plane[1], back.plane[1])) + ", Cr " +
                  decibels(psnr(start.plane[2], back.plane[2])));
        demo.show(name, route.caption, decode(back), part);
    }

    // Half a step of chroma across columns, and the flicker filter, which softens luma too.
    const Mox8u* const crPlanes[] = {still420.planes[0], still420.planes[2], still420.planes[1]};
    Image8 bgra(size, 4), rgb(size, 3);
    if (demo.run(
            CALL(moxiYCrCb420ToBGR_Filter_8u_P3C4R, crPlanes, still420.steps, bgra.data(), bgra.step(), size, 255)))
        demo.show("sampling-columns", "4:2:0 decoded with chroma filtered across columns", rgbOf(bgra), part);

    // The same samples in one layout after the other.
    Image8 packed(size, 2), swapped(size, 2), pairs(size.width / 2, size.height / 2, 2), luma(size, 1);
    Planar planes(size, {2, 1});
    moxiRGBToYCbCr422_8u_C3C2R(still.data(), still.step(), packed.data(), packed.step(), size);
    if (demo.run(CALL(moxiYCbCr422_8u_C2P3R, packed.data(), packed.step(), planes.planes, planes.steps, size)) &&
        demo.run(CALL(moxiYCbCr422ToYCbCr420_8u_P3P2R, planes.planes, planes.steps, luma.data(), luma.step(),
                      pairs.data(), pairs.step(), size)) &&
        demo.run(CALL(moxiYCbCr420ToCbYCr422_8u_P2C2R, luma.data(), luma.step(), pairs.data(), pairs.step(),
                      swapped.data(), swapped.step(), size)) &&
        demo.run(
            CALL(moxiCbYCr422ToYCbCr422_8u_C2R, swapped.data(), swapped.step(), packed.data(), packed.step(), size)) &&
        demo.run(CALL(moxiYCbCr422ToRGB_8u_C2C3R, packed.data(), packed.step(), rgb.data(), rgb.step(), size)))
        demo.show("sampling-layouts", "Packed, to planes, to luma and pairs, to packed in both orders", rgb, part);
    if (demo.run(CALL(moxiYCbCr420ToYCbCr422_Filter_8u_P2C2R, luma.data(), luma.step(), pairs.data(), pairs.step(),
                      packed.data(), packed.step(), size, moxSliceAll)) &&
        demo.run(CALL(moxiYCbCr422ToRGB_8u_C2C3R, packed.data(), packed.step(), rgb.data(), rgb.step(), size)))
        demo.show("sampling-soft", "Softened against flicker of interlaced screens", rgb, part);
}

}  // namespace demo
