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
// contact sheet. image.h has what sections need besides: crop(), channel(), psnr(), mostDifferent(), depth().
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

    // Prints a line below the conversion's, and adds it to the details of the next tile: "PSNR 41.2 dB", say.
    void note(const std::string& text);

    // Writes a result, or a part of it, as PNG and puts it on the contact sheet. Below the caption stand the functions
    // that ran since the last tile, with notes and speeds.
    template <class T>
    void show(const std::string& name, const std::string& caption, const Image<T>& image) {
        show(name, caption, image, {0, 0, image.width(), image.height()});
    }
    template <class T>
    void show(const std::string& name, const std::string& caption, const Image<T>& image, MoxiRect part);

    // Puts a part of what was shown on the contact sheet once more.
    void detail(const std::string& caption, const Image8& image);

    // Forgets functions and notes that no tile has taken.
    void drop();

  private:
    std::string name_;
    Source source_;
    std::filesystem::path folder_;
    Sheet& sheet_;
    std::vector<std::string> functions_;
    std::string notes_, speeds_;
};

// The first two arguments of Demo::run().
#define CALL(function, ...) #function, [&] { return function(__VA_ARGS__); }

std::string decibels(double psnr);

void colorimetricSection(Demo& demo);
void demosaicSection(Demo& demo);
void differencesSection(Demo& demo);
void ditherSection(Demo& demo);
void gammaSection(Demo& demo);
void graySection(Demo& demo);
void pipelineSection(Demo& demo);
void samplingSection(Demo& demo);
void toneMapSection(Demo& demo);
void twistSection(Demo& demo);
void v210Section(Demo& demo);
void videoSection(Demo& demo);

inline constexpr struct Section {
    const char* title;
    void (*run)(Demo&);
} sections[] = {
    {"From camera to screen", pipelineSection},
    {"Bayer reconstruction", demosaicSection},
    {"Colour twist", twistSection},
    {"Gamma", gammaSection},
    {"Tone map", toneMapSection},
    {"Models of luma and colour differences", differencesSection},
    {"Colorimetric models and models of hue", colorimetricSection},
    {"Gray", graySection},
    {"Video there and back", videoSection},
    {"Chroma samplings and sitings", samplingSection},
    {"v210", v210Section},
    {"Bit-depth reduction", ditherSection},
};

}  // namespace demo
