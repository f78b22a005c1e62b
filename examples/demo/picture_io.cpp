#include "picture_io.h"

#include <cstring>

#include "cli/pictures/formats.h"
#include "planar.h"

namespace demo {
namespace {

using pictures::Frame;

constexpr float kGamma = 2.2f;

// A picture with highlights is exposed for its mean, which leaves the highlights white.
float exposureOf(const ImageF& image) {
    double sum = 0;
    float highest = 0;
    for (float sample : image.samples()) {
        if (!std::isfinite(sample)) continue;
        sum += sample;
        highest = std::max(highest, sample);
    }
    const double mean = sum / double(image.samples().size());
    return highest > 1 && mean > 0 ? float(std::min(1.0, 0.25 / mean)) : 1.0f;
}

template <class T>
Image<T> imageOf(const Frame& frame) {
    Image<T> image(frame.size, frame.side.channels());
    for (int y = 0; y < image.height(); ++y) std::memcpy(image.row(y), frame.row(0, y), size_t(image.step()));
    return image;
}

// Three channels, transparency being laid over white.
template <class T>
Image<T> toRgb(Image<T> image) {
    const size_t channels = size_t(image.channels());
    if (channels == 3) return image;
    Image<T> rgb(image.size(), 3);
    for (size_t i = 0; i < rgb.samples().size(); ++i) {
        const T* from = image.data() + i / 3 * channels;
        const uint32_t full = std::numeric_limits<T>::max(), alpha = channels == 4 ? uint32_t(from[3]) : full;
        const T sample = from[channels == 4 ? i % 3 : 0];
        rgb.samples()[i] = alpha == full ? sample : T((sample * alpha + full * (full - alpha) + full / 2) / full);
    }
    return rgb;
}

Source sourceOf(const Frame& picture) {
    if (picture.side.depth == "16u") return Source(toRgb(imageOf<Mox16u>(picture)));
    if (picture.side.depth == "8u") return Source(toRgb(imageOf<Mox8u>(picture)));
    const ImageF linear = imageOf<Mox32f>(picture);
    const float exposure = exposureOf(linear);
    ImageF rgb(linear.size(), 3);
    for (size_t i = 0; i < rgb.samples().size(); ++i)
        rgb.samples()[i] = linear.samples()[linear.channels() == 3 ? i : i / 3];
    return Source(std::move(rgb), exposure);
}

// Whole cells are decoded, the last samples being repeated. Studio range is 16 to 235 in luma, 16 to 240 in chroma.
Source decodeVideo(const Frame& frame) {
    Frame planar, whole;
    const bool luma = frame.side.holds == "Gray";
    planar.shape(
        luma ? pictures::sideOf("YCbCr", "P3", "8u") : *pictures::formatNamed(".y4m")->stores(frame.side, false),
        frame.size);
    pictures::repack(frame, planar);
    const Cell cell = {planar.side.cell.width, planar.side.cell.height};
    pictures::pad(planar, planar.side.cell, whole);
    Planar video(whole.size, cell);
    for (size_t i = 0; i < 3; ++i) {
        const bool full = frame.video.find("XCOLORRANGE=FULL") != std::string::npos;
        for (int y = 0; y < video.plane[i].height(); ++y) {
            std::copy_n(whole.row(i, y), video.plane[i].width(), video.plane[i].row(y));
            for (int x = 0; full && x < video.plane[i].width(); ++x) {
                Mox8u& s = *video.plane[i].at(x, y);
                s = i == 0 ? Mox8u((s * 219 + 127) / 255 + 16) : Mox8u(((s - 128) * 224 + 128 * 255 + 127) / 255);
            }
        }
    }
    return Source(crop(decode(video), {0, 0, frame.size.width, frame.size.height}));
}

template <class T>
void write(const std::filesystem::path& path, const Image<T>& image) {
    Frame frame;
    frame.shape(pictures::pictureSide(image.channels(), sizeof(T) == 2 ? "16u" : "8u"), image.size());
    for (int y = 0; y < image.height(); ++y) std::memcpy(frame.row(0, y), image.row(y), size_t(image.step()));
    pictures::Output output(path);
    pictures::writePng(output)(frame);
    output.finish();
}

}  // namespace

Source::Source(Image8 rgb) : rgb8_(std::move(rgb)) {}

Source::Source(Image16 rgb) : rgb8_(depth<Mox8u>(rgb)), rgb16_(std::move(rgb)) {}

Source::Source(ImageF linear, float exposure) : linear_(std::move(linear)), exposure_(exposure) {
    rgb32f_ = map<Mox32f>(linear_, [=](float sample) {
        return sample > 0 ? std::pow(std::min(sample * exposure, 1.0f), 1 / kGamma) : 0.0f;
    });
    rgb8_ = depth<Mox8u>(rgb32f_);
}

const Image16& Source::rgb16() const {
    if (rgb16_.empty()) rgb16_ = rgb32f_.empty() ? depth<Mox16u>(rgb8_) : depth<Mox16u>(rgb32f_);
    return rgb16_;
}

const ImageF& Source::rgb32f() const {
    if (rgb32f_.empty()) rgb32f_ = rgb16_.empty() ? depth<Mox32f>(rgb8_) : depth<Mox32f>(rgb16_);
    return rgb32f_;
}

const ImageF& Source::linear() const {
    if (linear_.empty()) linear_ = map<Mox32f>(rgb32f(), [](float sample) { return std::pow(sample, kGamma); });
    return linear_;
}

Source readPicture(const std::filesystem::path& path) {
    pictures::Input input(path.string());
    Frame frame;
    if (!pictures::open(input, pictures::rawFrom(path.string()))(frame)) throw Error("truncated in its first frame");
    const bool video = !frame.siting.empty() || pictures::modelOf(frame.side) == "YUV";
    return video ? decodeVideo(frame) : sourceOf(frame);
}

void writePng(const std::filesystem::path& path, const Image8& image) { write(path, image); }
void writePng(const std::filesystem::path& path, const Image16& image) { write(path, image); }

}  // namespace demo
