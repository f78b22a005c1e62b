#include <numbers>

#include "draw.h"
#include "picture_io.h"

namespace demo {
namespace {

using Colour = std::array<float, 3>;

float smooth(float from, float to, float x) {
    const float t = std::clamp((x - from) / (to - from), 0.0f, 1.0f);
    return t * t * (3 - 2 * t);
}

Colour mix(Colour a, Colour b, float t) {
    for (int c = 0; c < 3; ++c) a[c] += (b[c] - a[c]) * t;
    return a;
}

// A colour as a display shows it, in linear light.
Colour display(float r, float g, float b) { return {std::pow(r, 2.2f), std::pow(g, 2.2f), std::pow(b, 2.2f)}; }
Colour display(uint32_t code) {
    return display(float(code >> 16) / 255, float(code >> 8 & 255) / 255, float(code & 255) / 255);
}

Colour hue(float turn, float saturation, float value) {
    Colour c;
    for (int i = 0; i < 3; ++i) {
        const float distance = std::abs(std::remainder(turn - float(i) / 3, 1.0f)) * 6;  // from the primary
        c[i] = value * (1 - saturation * std::clamp(distance - 1, 0.0f, 1.0f));
    }
    return display(c[0], c[1], c[2]);
}

// Repeatable roughness of 0 to 1: random values on a grid, and smooth between.
float grid(int x, int y) {
    uint32_t h = uint32_t(x) * 0x8da6b343u ^ uint32_t(y) * 0xd8163841u;
    h = (h ^ h >> 13) * 0x5bd1e995u;
    return float((h ^ h >> 15) & 0xffff) / 65535;
}

float roughness(float x, float y) {
    const int ix = int(std::floor(x)), iy = int(std::floor(y));
    const float fx = smooth(0, 1, x - float(ix)), fy = smooth(0, 1, y - float(iy));
    return std::lerp(std::lerp(grid(ix, iy), grid(ix + 1, iy), fx),
                     std::lerp(grid(ix, iy + 1), grid(ix + 1, iy + 1), fx), fy);
}

// The panels below are laid out on 1280 by 720 units.

Colour landscape(float x, float y) {
    const float distance = std::hypot(x - 990, y - 170);
    Colour c = mix(display(0.24f, 0.45f, 0.75f), display(0.98f, 0.80f, 0.62f), smooth(0, 470, y));
    const float cloud = smooth(0.5f, 0.9f, 0.6f * roughness(x / 120, y / 40) + 0.4f * roughness(x / 35, y / 14));
    c = mix(c, {0.9f, 0.88f, 0.88f}, 0.7f * cloud);
    const float glow = 1.5f * std::exp(-distance / 45) + 8 * smooth(31, 29, distance);  // the sun, far beyond white
    c = {c[0] + glow, c[1] + 0.85f * glow, c[2] + 0.6f * glow};

    const float far = 395 + 28 * std::sin(x / 150) + 14 * std::sin(x / 47 + 1);
    const float texture = roughness(x / 6, y / 4) * 0.6f + roughness(x / 2, y / 2) * 0.4f;
    c = mix(c, mix({0.05f, 0.08f, 0.11f}, {0.12f, 0.17f, 0.20f}, texture), smooth(far - 1, far + 1, y));
    const float near = 450 + 22 * std::sin(x / 210 + 2) + 6 * std::sin(x / 31);
    return mix(c, mix({0.02f, 0.06f, 0.01f}, {0.13f, 0.26f, 0.05f}, texture), smooth(near - 1, near + 1, y));
}

constexpr uint32_t kPatches[2][10] = {
    // skin, from light to dark, then things that the eye knows
    {0xf6d7c3, 0xe8b796, 0xcc9270, 0x9c6644, 0x6d4329, 0x3f271a, 0x4a7bb5, 0x5b7c3a, 0xd8322b, 0xf2c12e},
    // grays, then primaries and what lies between
    {0xffffff, 0xc8c8c8, 0x969696, 0x646464, 0x323232, 0x000000, 0x0000ff, 0x00ff00, 0xff00ff, 0x00ffff},
};

Colour scene(float x, float y) {
    const auto inside = [&](float left, float top, float right, float bottom) {
        return x >= left && x < right && y >= top && y < bottom;
    };
    Colour c = landscape(x, y);

    const float radius = std::hypot(x - 190, y - 190);
    const float turn = std::atan2(190 - y, x - 190) / (2 * std::numbers::pi_v<float>);
    c = mix(c, hue(turn, std::min(radius / 140, 1.0f), 0.95f), smooth(151, 149, radius));

    // Edges lie on odd rows and columns, so that chroma cells do not happen to fit them.
    if (inside(381, 41, 681, 341)) {  // a zone plate: rings that reach one pixel's width at the corners
        const float r2 = (x - 531) * (x - 531) + (y - 191) * (y - 191);
        const float v = 0.5f + 0.5f * std::cos(std::numbers::pi_v<float> * r2 / 430);
        c = display(v, v, v);
    }
    if (inside(41, 481, 1241, 545)) {  // ramps, smooth on the left, in 16 steps on the right
        const int row = int((y - 481) / 16);
        const float u = (x - 41) / 600;
        const float v = u < 1 ? u : std::floor((u - 1) * 16) / 15;
        c = display(row == 0 || row == 1 ? v : 0, row == 0 || row == 2 ? v : 0, row == 0 || row == 3 ? v : 0);
    }
    if (inside(41, 561, 841, 681)) c = display(kPatches[int((y - 561) / 60)][int((x - 41) / 80)]);
    if (inside(861, 561, 1241, 681)) c = display(x < 1051 ? 0xf4f1e8 : 0x1b2fae);  // paper for the text
    return c;
}

}  // namespace

Source syntheticScene(int width) {
    const int height = width * 9 / 16;
    const float unit = 1280.0f / float(width);
    ImageF image(width, height, 3);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const Colour c = scene((float(x) + 0.5f) * unit, (float(y) + 0.5f) * unit);
            std::copy(c.begin(), c.end(), image.at(x, y));
        }
    }
    const auto text = [&](int x, int y, int size, const char* line, uint32_t code) {
        drawText(image, int(float(x) / unit), int(float(y) / unit), std::max(1, int(float(size) / unit)), line,
                 display(code));
    };
    text(873, 571, 4, "moxCC", 0x101010);
    text(873, 607, 2, "every bit", 0xa01010);
    text(873, 629, 1, "The quick brown fox jumps", 0x101010);
    text(873, 641, 1, "over the lazy dog. 0123456789", 0x101010);
    text(873, 657, 2, "MMMM llll WWWW", 0x107030);
    text(1063, 571, 4, "red", 0xff2020);
    text(1063, 607, 2, "on deep blue", 0xff2020);
    text(1063, 629, 1, "chroma edges in small type", 0xff2020);
    text(1063, 641, 1, "chroma edges in small type", 0xf0f000);
    text(1063, 657, 2, "yellow", 0xf0f000);
    return Source(std::move(image), 1);
}

}  // namespace demo
