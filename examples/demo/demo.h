// What a section of the demo works with.
//
// A family adds <family>_section.cpp, which the build finds by its name, with one function, and names that function in
// the list of sections below:
//
//     void graySection(Demo& demo) {
//         const Image8& rgb = demo.source().rgb8();
//         Image8 gray(rgb.size(), 1);
//         if (demo.run(CALL(moxiRGBToGray_8u_C3C1R, rgb.data(), rgb.step(), gray.data(), gray.step(), rgb.size())))
//             demo.show("gray-8u", "gray, BT.601 weights", gray);
//     }
//
// run() calls the function several times for its speed, prints its line and tells whether there is a result to show: a
// picture may be too small for a conversion. A function that works in place needs its input back before each call:
// demo.run(CALL(...), [&] { image = original; }). show() writes demo-out/<picture>/<name>.png and adds a tile to the
// contact sheet. image.h has what sections need besides: crop(), channel(), sideBySide(), enlarged(), psnr(),
// mostDifferent(), depth().
#pragma once

#include <filesystem>
#include <functional>
#include <string>

#include "picture_io.h"

namespace demo {

class Sheet;

class Demo {
  public:
    Demo(std::string name, Source source, std::filesystem::path folder, Sheet& sheet);

    const Source& source() const { return source_; }

    // Starts a section: prints its title and gives it a heading on the contact sheet.
    void section(const std::string& title);

    // Runs and times a conversion, and prints its line. True if it has written a result.
    bool run(const char* name, const std::function<MoxStatus()>& call, const std::function<void()>& prepare = {});

    // Prints a line below the conversion's, and adds it to the caption of the next tile: "PSNR 41.2 dB", say.
    void note(const std::string& text);

    // Writes a result as PNG and puts it on the contact sheet; below its caption stands the last function that ran.
    void show(const std::string& name, const std::string& caption, const Image8& image);
    void show(const std::string& name, const std::string& caption, const Image16& image);

  private:
    template <class T>
    void showAny(const std::string& name, const std::string& caption, const Image<T>& image);

    std::string name_;
    Source source_;
    std::filesystem::path folder_;
    Sheet& sheet_;
    std::string lastFunction_;
    std::string note_;
};

// The first two arguments of Demo::run().
#define CALL(function, ...) #function, [&] { return function(__VA_ARGS__); }

std::string decibels(double psnr);

void cieSection(Demo& demo);
void demosaicSection(Demo& demo);
void ditherSection(Demo& demo);
void gammaSection(Demo& demo);
void graySection(Demo& demo);
void hueSection(Demo& demo);
void sitingSection(Demo& demo);
void toneMapSection(Demo& demo);
void videoSection(Demo& demo);

inline constexpr struct Section {
    const char* title;
    void (*run)(Demo&);
} sections[] = {
    {"Gray", graySection},
    {"HLS and HSV", hueSection},
    {"LUV and Lab", cieSection},
    {"Gamma", gammaSection},
    {"YUV, YCbCr and video", videoSection},
    {"Chroma siting", sitingSection},
    {"Bit-depth reduction", ditherSection},
    {"Bayer reconstruction", demosaicSection},
    {"Tone map", toneMapSection},
};

}  // namespace demo
