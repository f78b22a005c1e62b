// Each colour model's channels as pictures, the way back, and pictures changed in a model's channels.
#include "demo.h"
#include "planar.h"

namespace demo {
namespace {

template <class T>
struct ThereAndBack {
    using Convert = MoxStatus (*)(const T*, int32_t, T*, int32_t, MoxiSize);
    const char* toName = nullptr;
    Convert to = nullptr;
    const char* fromName = nullptr;
    Convert from = nullptr;
};

#define THERE_AND_BACK(model, depth)                                                                                  \
    {                                                                                                                 \
        "moxiRGBTo" #model "_" #depth "_C3R", moxiRGBTo##model##_##depth##_C3R, "moxi" #model "ToRGB_" #depth "_C3R", \
            moxi##model##ToRGB_##depth##_C3R                                                                          \
    }

// clang-format off
constexpr struct Model {
    const char* name;
    const char* remark;
    const char* channels[3];
    ThereAndBack<Mox8u> u8;
    ThereAndBack<Mox16u> u16 = {};
    ThereAndBack<Mox32f> f32 = {};
} differences[] = {
    {"YUV", "", {"Y, luma", "U, blue difference", "V, red difference"},
 THERE_AND_BACK(YUV, 8u)},
    {"YCbCr", "", {"Y, luma from 16 to 235", "Cb, blue difference", "Cr, red difference"},
 THERE_AND_BACK(YCbCr, 8u)},
    {"YCC", ": white returns as 245", {"Y, luma, white at 181", "C1, blue difference", "C2, red difference"},
 THERE_AND_BACK(YCC, 8u), THERE_AND_BACK(YCC, 16u), THERE_AND_BACK(YCC, 32f)},
}, colorimetric[] = {
    {"XYZ", ": Z of white is cut to 255", {"X, mostly red", "Y, luminance", "Z, mostly blue"},
 THERE_AND_BACK(XYZ, 8u), THERE_AND_BACK(XYZ, 16u), THERE_AND_BACK(XYZ, 32f)},
    {"LUV", "", {"L, lightness", "u, green to red", "v, blue to yellow"},
 THERE_AND_BACK(LUV, 8u), THERE_AND_BACK(LUV, 16u), THERE_AND_BACK(LUV, 32f)},
    {"Lab", "", {"L, lightness", "a, green to red", "b, blue to yellow"},
 THERE_AND_BACK(Lab, 8u), {}, THERE_AND_BACK(Lab, 32f)},
    {"HLS", "", {"H, hue once around", "L, lightness", "S, saturation"},
 THERE_AND_BACK(HLS, 8u), THERE_AND_BACK(HLS, 16u), THERE_AND_BACK(HLS, 32f)},
    {"HSV", "", {"H, hue once around", "S, saturation", "V, value"},
 THERE_AND_BACK(HSV, 8u), THERE_AND_BACK(HSV, 16u)},
};
// clang-format on

template <class T>
bool convert(Demo& demo, const char* name, typename ThereAndBack<T>::Convert function, const Image<T>& from,
             Image<T>& to) {
    return demo.run(name, [&] { return function(from.data(), from.step(), to.data(), to.step(), from.size()); });
}

// Tells how well a picture comes back, and returns it; nothing if there is no such depth.
template <class T>
Image<T> thereAndBack(Demo& demo, const ThereAndBack<T>& model, const Image<T>& rgb, Image<T>& converted) {
    Image<T> back(rgb.size(), 3);
    if (!model.to || !convert(demo, model.toName, model.to, rgb, converted) ||
        !convert(demo, model.fromName, model.from, converted, back))
        return {};
    demo.note(decibels(psnr(back, rgb)));
    return back;
}

void showModel(Demo& demo, const Model& model) {
    const MoxiSize size = demo.source().size();
    const std::string name = model.name;
    Image8 converted(size, 3);
    const Image8 back = thereAndBack(demo, model.u8, demo.source().rgb8(), converted);
    if (back.empty()) return;
    demo.show("model-" + name + "-back", name + ", there and back" + model.remark, back);
    for (int i = 0; i < 3; ++i) {
        const std::string letter(1, "123"[i]);
        demo.show("model-" + name + "-" + letter, name + ": " + model.channels[i], channel(converted, i));
    }

    Image16 converted16(size, 3);
    thereAndBack(demo, model.u16, demo.source().rgb16(), converted16);
    ImageF converted32f(size, 3);
    thereAndBack(demo, model.f32, demo.source().rgb32f(), converted32f);
    demo.drop();
}

void showYCoCg(Demo& demo) {
    const Image8& rgb = demo.source().rgb8();
    const MoxiSize size = rgb.size();
    Planar planes(size, {1, 1});
    Image8 back(size, 3);
    if (!demo.run(CALL(moxiRGBToYCoCg_8u_C3P3R, rgb.data(), rgb.step(), planes.planes, planes.steps[0], size)) ||
        !demo.run(CALL(moxiYCoCgToRGB_8u_P3C3R, planes.planes, planes.steps[0], back.data(), back.step(), size)))
        return;
    demo.note(decibels(psnr(back, rgb)));
    demo.show("model-YCoCg-back", "YCoCg, there and back", back);
    demo.show("model-YCoCg-1", "YCoCg: Y, luma", planes.plane[0]);
    demo.show("model-YCoCg-2", "YCoCg: Co, blue to orange", planes.plane[1]);
    demo.show("model-YCoCg-3", "YCoCg: Cg, magenta to green", planes.plane[2]);

    // The lifting form takes B, G, R to more than 8 bits, and loses nothing.
    const Image8 bgr = reversed(rgb);
    Image<Mox16s> lifted[] = {{size, 1}, {size, 1}, {size, 1}};
    Mox16s* const lifts[] = {lifted[0].data(), lifted[1].data(), lifted[2].data()};
    const int32_t step = lifted[0].step();
    if (demo.run(CALL(moxiBGRToYCoCg_Rev_8u16s_C3P3R, bgr.data(), bgr.step(), lifts, step, size)) &&
        demo.run(CALL(moxiYCoCgToBGR_Rev_16s8u_P3C3R, lifts, step, back.data(), back.step(), size)))
        demo.note(decibels(psnr(back, bgr)));
    demo.drop();
}

// A picture converted, changed sample by sample, and converted back.
void showChanges(Demo& demo) {
    static constexpr struct {
        const char *name, *caption;
        ThereAndBack<Mox8u> model;
        void (*change)(Mox8u* pixel);
    } changes[] = {
        {"hue", "The hue alone, at middle lightness", THERE_AND_BACK(HLS, 8u),
         [](Mox8u* hls) { hls[1] = 127, hls[2] = 255; }},
        {"turned", "Every hue turned by 120 degrees", THERE_AND_BACK(HLS, 8u),
         [](Mox8u* hls) { hls[0] = Mox8u((hls[0] + 85) % 255); }},  // 255 samples are the whole circle
        {"bright", "The same colours at full value", THERE_AND_BACK(HSV, 8u), [](Mox8u* hsv) { hsv[2] = 255; }},
        {"lightness", "The same colours at one lightness", THERE_AND_BACK(Lab, 8u), [](Mox8u* lab) { lab[0] = 153; }},
    };
    const Image8& rgb = demo.source().rgb8();
    Image8 image(rgb.size(), 3), result(rgb.size(), 3);
    for (const auto& change : changes) {
        if (!convert(demo, change.model.toName, change.model.to, rgb, image)) continue;
        for (size_t i = 0; i < image.samples().size(); i += 3) change.change(&image.samples()[i]);
        if (convert(demo, change.model.fromName, change.model.from, image, result))
            demo.show(std::string("changed-") + change.name, change.caption, result);
    }
}

}  // namespace

void differencesSection(Demo& demo) {
    for (const Model& model : differences) showModel(demo, model);
    showYCoCg(demo);
}

void colorimetricSection(Demo& demo) {
    for (const Model& model : colorimetric) showModel(demo, model);
    showChanges(demo);
}

}  // namespace demo
