// Images as the demo keeps them, and what sections do with them besides conversions.
#pragma once

#include <moxcc/moxcc.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <vector>

namespace demo {

// One plane of interleaved channels; rows follow one another without padding.
template <class T>
class Image {
  public:
    Image() = default;
    Image(int width, int height, int channels)
        : width_(width), height_(height), channels_(channels), samples_(size_t(width) * height * channels) {}
    Image(MoxiSize size, int channels) : Image(size.width, size.height, channels) {}

    int width() const { return width_; }
    int height() const { return height_; }
    int channels() const { return channels_; }
    bool empty() const { return samples_.empty(); }
    MoxiSize size() const { return {width_, height_}; }
    int32_t step() const { return int32_t(sizeof(T)) * width_ * channels_; }  // bytes

    T* data() { return samples_.data(); }
    const T* data() const { return samples_.data(); }
    T* row(int y) { return data() + size_t(y) * width_ * channels_; }
    const T* row(int y) const { return data() + size_t(y) * width_ * channels_; }
    T* at(int x, int y) { return row(y) + size_t(x) * channels_; }
    const T* at(int x, int y) const { return row(y) + size_t(x) * channels_; }
    std::vector<T>& samples() { return samples_; }
    const std::vector<T>& samples() const { return samples_; }

  private:
    int width_ = 0;
    int height_ = 0;
    int channels_ = 1;
    std::vector<T> samples_;
};

using Image8 = Image<Mox8u>;
using Image16 = Image<Mox16u>;
using ImageF = Image<Mox32f>;

// Applies a function to every sample: map<Mox8u>(image, [](float x) { ... }).
template <class To, class From, class F>
Image<To> map(const Image<From>& image, F function) {
    Image<To> result(image.size(), image.channels());
    std::transform(image.samples().begin(), image.samples().end(), result.data(), function);
    return result;
}

// Converts between depths: integers stand for 0 to 1, floats beyond that are clamped.
template <class To, class From>
Image<To> depth(const Image<From>& image) {
    const auto highest = [](auto sample) {
        using T = decltype(sample);
        return std::is_integral_v<T> ? double(std::numeric_limits<T>::max()) : 1.0;
    };
    const double scale = highest(To()) / highest(From());
    return map<To>(image, [=](From sample) {
        if constexpr (!std::is_integral_v<To>) return To(sample * scale);
        const double value = sample * scale;
        return To(value > 0 ? std::min(value, highest(To())) + 0.5 : 0);  // NaN gives 0
    });
}

template <class T>
Image<T> crop(const Image<T>& image, MoxiRect part) {
    Image<T> result(part.width, part.height, image.channels());
    for (int y = 0; y < part.height; ++y) {
        const T* row = image.at(part.x, part.y + y);
        std::copy(row, row + size_t(part.width) * image.channels(), result.row(y));
    }
    return result;
}

// One channel of an interleaved image.
template <class T>
Image<T> channel(const Image<T>& image, int index) {
    Image<T> result(image.size(), 1);
    for (size_t i = 0; i < result.samples().size(); ++i) {
        result.samples()[i] = image.samples()[i * size_t(image.channels()) + size_t(index)];
    }
    return result;
}

// The channels in reverse order: RGB from BGR and back.
template <class T>
Image<T> reversed(Image<T> image) {
    for (auto pixel = image.samples().begin(); pixel != image.samples().end(); pixel += image.channels())
        std::reverse(pixel, pixel + image.channels());
    return image;
}

// The colours of B, G, R and a fourth channel.
template <class T>
Image<T> rgbOf(const Image<T>& bgra) {
    Image<T> rgb(bgra.size(), 3);
    for (int y = 0; y < rgb.height(); ++y) {
        for (int x = 0; x < rgb.width(); ++x) std::reverse_copy(bgra.at(x, y), bgra.at(x, y) + 3, rgb.at(x, y));
    }
    return rgb;
}

// Peak signal-to-noise ratio in decibels; infinite for equal images.
template <class T>
double psnr(const Image<T>& a, const Image<T>& b) {
    const double peak = std::is_integral_v<T> ? double(std::numeric_limits<T>::max()) : 1.0;
    double sum = 0;
    for (size_t i = 0; i < a.samples().size(); ++i) {
        const double d = double(a.samples()[i]) - double(b.samples()[i]);
        sum += d * d;
    }
    return 10 * std::log10(peak * peak * double(a.samples().size()) / sum);
}

// A window that fills a tile of the contact sheet when it is enlarged four times.
inline constexpr MoxiSize kDetail = {114, 85};

// The window, of a grid of them, in which two images differ most.
template <class T>
MoxiRect mostDifferent(const Image<T>& a, const Image<T>& b, MoxiSize window) {
    MoxiRect found = {0, 0, std::min(window.width, a.width()), std::min(window.height, a.height())};
    double worst = std::numeric_limits<double>::infinity();
    for (MoxiRect at = found; at.y + at.height <= a.height(); at.y += at.height) {
        for (at.x = 0; at.x + at.width <= a.width(); at.x += at.width) {
            const double here = psnr(crop(a, at), crop(b, at));
            if (here < worst) worst = here, found = at;
        }
    }
    return found;
}

// The window, of a grid of them, in which neighbours differ most.
template <class T>
MoxiRect busiest(const Image<T>& image, MoxiSize window) {
    if (image.width() < 2) return {0, 0, image.width(), std::min(window.height, image.height())};
    const int width = image.width() - 1;
    return mostDifferent(crop(image, {0, 0, width, image.height()}), crop(image, {1, 0, width, image.height()}),
                         window);
}

}  // namespace demo
