#include "bench/picture.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <new>
#include <regex>
#include <stdexcept>
#include <vector>

namespace bench {
namespace {

constexpr size_t kAlignment = 64;

size_t alignUp(size_t n) { return (n + kAlignment - 1) / kAlignment * kAlignment; }

int ceilDiv(int a, int b) { return (a + b - 1) / b; }

size_t rowBytes(const Layout& layout, const Picture::Plane& plane) {
    return (size_t(plane.width) * size_t(layout.bits) + 7) / 8;
}

// "8u" -> 8 bits, unsigned; "AP4" -> 4 planes; the side of the operation that says "420" -> cells of 2 x 2.
Layout parse(const std::string& depth, const std::string& token, const std::string& side) {
    Layout layout{.bits = std::stoi(depth), .kind = depth.back()};
    const int count = token.back() - '0';
    if (token.find('P') != token.npos) {
        layout.planes = count;
    } else {
        layout.channels = count;
    }
    if (side.find("1620") != side.npos) return layout.cells(4, 4);
    if (side.find("420") != side.npos) return layout.cells(2, 2);
    if (side.find("411") != side.npos) return layout.cells(4, 1);
    if (side.find("422") != side.npos) return layout.cells(2, 1);
    return layout;
}

// A value of 0 to 1 for each sample of a picture: slow gradients, an object with hard edges, texture and noise.
class Scene {
  public:
    Scene(MoxiSize size) : columns_(size_t(size.width)) {
        for (int x = 0; x < size.width; ++x) columns_[size_t(x)] = std::sin(0.013 * x) + 0.4 * std::sin(0.11 * x);
    }

    void startRow(int y) {
        row_ = std::sin(0.017 * y) + 0.3 * std::sin(0.23 * y);
        stripe_ = y / 37 % 3;
    }

    double at(int x, int channel) {
        random_ = random_ * 1664525u + 1013904223u;
        const double noise = double(random_ >> 8) / (1 << 24) - 0.5;
        const double edge = (x / 53 + stripe_) % 3 == 0 ? 0.25 : 0;
        const double tint = (channel == 0 ? 0.12 : channel == 1 ? -0.03 : -0.15) * row_;
        const double value = 0.42 + 0.16 * columns_[size_t(x)] + 0.14 * row_ + edge + tint + 0.06 * noise;
        return value < 0 ? 0 : value > 1 ? 1 : value;
    }

  private:
    std::vector<double> columns_;
    double row_ = 0;
    int stripe_ = 0;
    uint32_t random_ = 1;
};

template <class T>
void fillRow(T* row, const Picture& picture, int plane, Scene& scene, double low, double high) {
    const int channels = picture.layout.planes == 1 ? picture.layout.channels : 1;
    const int width = picture.planes[size_t(plane)].width;
    for (int i = 0; i < width; ++i) {
        const int x = std::min(i / channels, picture.size.width - 1);
        const double value = low + (high - low) * scene.at(x, plane + i % channels);
        row[i] = std::is_floating_point_v<T> ? T(value) : T(int64_t(value));
    }
}

}  // namespace

Layout Layout::cells(int x, int y) const {
    Layout layout = *this;
    layout.cellX = x;
    layout.cellY = y;
    return layout;
}

std::pair<Layout, Layout> layoutsOf(const std::string& name) {
    static const std::regex grammar("mox[is](.*?)_(\\d+[usf])(\\d+[usf])?_I?(A?[CP]\\d)(A?[CP]\\d)?I?(R?)(_L)?");
    std::smatch m;
    if (!std::regex_match(name, m, grammar)) throw std::invalid_argument("no layout in the name " + name);

    const std::string operation = m[1];
    const size_t to = operation.find("To");
    Layout src = parse(m[2], m[4], operation.substr(0, to));
    Layout dst = parse(m[3].matched ? m[3] : m[2], m[5].matched ? m[5] : m[4],
                       to == operation.npos ? operation : operation.substr(to));
    src.contiguous = dst.contiguous = m[6].length() == 0;
    return {src, dst};
}

Picture::Picture(const Layout& l, MoxiSize s) : layout(l), size(s), planes() {
    size_t total = 0;
    for (int p = 0; p < layout.planes; ++p) {
        Plane& plane = planes[size_t(p)];
        const bool chroma = p > 0 && p < 3;
        const int columns = chroma ? ceilDiv(size.width, layout.cellX) : size.width;
        plane.height = chroma ? ceilDiv(size.height, layout.cellY) : size.height;
        plane.width = layout.planes == 1             ? columns * layout.channels
                      : layout.planes == 2 && chroma ? 2 * columns
                                                     : columns;
        if (layout.planes == 1 && layout.channels == 2) plane.width = (plane.width + 3) / 4 * 4;  // whole chroma pairs
        plane.step =
            int32_t(layout.contiguous ? rowBytes(layout, plane) : alignUp(rowBytes(layout, plane)) + kAlignment);
        total += alignUp(size_t(plane.step) * size_t(plane.height)) + kAlignment;
    }
    memory_.reset(static_cast<uint8_t*>(std::aligned_alloc(kAlignment, total)), std::free);
    if (!memory_) throw std::bad_alloc();

    uint8_t* next = memory_.get();
    for (int p = 0; p < layout.planes; ++p) {
        planes[size_t(p)].data = next;
        next += alignUp(size_t(step(p)) * size_t(planes[size_t(p)].height)) + kAlignment;
    }
}

void Picture::fill() {
    if (layout.kind == 'f') return fill(0, 1);
    const double count = std::ldexp(1, layout.bits < 8 ? 8 : layout.bits);
    layout.kind == 's' ? fill(-count / 2, count / 2 - 1) : fill(0, count - 1);
}

void Picture::fill(double low, double high) {
    Scene scene(size);
    for (int p = 0; p < layout.planes; ++p) {
        for (int y = 0; y < planes[size_t(p)].height; ++y) {
            scene.startRow(y * size.height / planes[size_t(p)].height);
            uint8_t* row = data<uint8_t>(p) + ptrdiff_t(y) * step(p);
            const auto fillAs = [&](auto sample) {
                fillRow(reinterpret_cast<decltype(sample)*>(row), *this, p, scene, low, high);
            };
            if (layout.kind == 'f') {
                layout.bits == 64 ? fillAs(Mox64f()) : fillAs(Mox32f());
            } else if (layout.bits == 32) {
                layout.kind == 's' ? fillAs(Mox32s()) : fillAs(Mox32u());
            } else if (layout.bits == 16) {
                layout.kind == 's' ? fillAs(Mox16s()) : fillAs(Mox16u());
            } else if (layout.bits == 8) {
                fillAs(Mox8u());
            }
        }
    }
}

size_t Picture::bytes() const {
    size_t total = 0;
    for (const Plane& plane : planes) total += rowBytes(layout, plane) * size_t(plane.height);
    return total;
}

}  // namespace bench
