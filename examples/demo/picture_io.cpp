#include "picture_io.h"

#include <bit>
#include <cstring>
#include <fstream>
#include <limits>

#include "png_io.h"
#include "video_io.h"

namespace demo {
namespace {

Bytes readFile(const std::filesystem::path& path) {
    if (!std::filesystem::exists(path)) throw Error("no such file");
    if (!std::filesystem::is_regular_file(path)) throw Error("not a regular file");
    std::ifstream file(path, std::ios::binary);
    if (!file) throw Error("cannot be opened");
    Bytes bytes(std::filesystem::file_size(path));
    if (bytes.empty()) throw Error("an empty file");
    if (!file.read(reinterpret_cast<char*>(bytes.data()), std::streamsize(bytes.size()))) throw Error("cannot be read");
    return bytes;
}

// The text header of the PNM and PFM formats: words between white space, with comments.
class Header {
  public:
    explicit Header(const Bytes& bytes) : bytes_(bytes) {}

    std::string word() {
        while (at_ < bytes_.size() && (std::isspace(bytes_[at_]) || bytes_[at_] == '#')) {
            const bool comment = bytes_[at_] == '#';
            do ++at_;
            while (comment && at_ < bytes_.size() && bytes_[at_] != '\n');
        }
        std::string word;
        while (at_ < bytes_.size() && !std::isspace(bytes_[at_])) word += char(bytes_[at_++]);
        if (at_++ >= bytes_.size()) throw Error("truncated in its header");
        return word;
    }

    int number(int highest) {
        const std::string text = word();
        if (text.empty() || text.size() > 9 || text.find_first_not_of("0123456789") != text.npos) {
            throw Error("'" + text + "' in the header, where a number should be");
        }
        const int value = std::stoi(text);
        if (value < 1 || value > highest) throw Error(text + " in the header, out of range");
        return value;
    }

    // The samples behind the header.
    const unsigned char* body(size_t size) const {
        if (bytes_.size() - at_ < size) {
            throw Error("truncated: " + std::to_string(bytes_.size() - at_) + " of " + std::to_string(size) +
                        " bytes of samples");
        }
        return &bytes_[at_];
    }

  private:
    const Bytes& bytes_;
    size_t at_ = 0;
};

template <class T>
Image<T> toRgb(Image<T> image) {
    if (image.channels() == 3) return image;
    Image<T> rgb(image.size(), 3);
    for (size_t i = 0; i < rgb.samples().size(); ++i) rgb.samples()[i] = image.samples()[i / 3];
    return rgb;
}

Source readPnm(const Bytes& bytes) {
    Header header(bytes);
    const int channels = header.word() == "P5" ? 1 : 3;
    const int width = header.number(kMaxSide);
    const int height = header.number(kMaxSide);
    const int highest = header.number(65535);
    checkSize(width, height);
    const size_t count = size_t(width) * height * channels;

    const auto read = [&]<class T>(Image<T> image) {
        const unsigned char* body = header.body(count * sizeof(T));
        const unsigned full = std::numeric_limits<T>::max();
        for (size_t i = 0; i < count; ++i) {
            const unsigned sample = sizeof(T) == 1 ? body[i] : unsigned(body[2 * i]) << 8 | body[2 * i + 1];
            image.samples()[i] =
                T((std::min(sample, unsigned(highest)) * full + unsigned(highest) / 2) / unsigned(highest));
        }
        return Source(toRgb(std::move(image)));
    };
    header.body(count * (highest < 256 ? 1 : 2));  // before room is made for what is not there
    return highest < 256 ? read(Image8(width, height, channels)) : read(Image16(width, height, channels));
}

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

Source readPfm(const Bytes& bytes) {
    Header header(bytes);
    const int channels = header.word() == "Pf" ? 1 : 3;
    const int width = header.number(kMaxSide);
    const int height = header.number(kMaxSide);
    const std::string scale = header.word();
    checkSize(width, height);
    const bool bigEndian = std::strtod(scale.c_str(), nullptr) > 0;

    const size_t rowSize = size_t(width) * channels;
    const unsigned char* body = header.body(rowSize * height * sizeof(float));
    ImageF image(width, height, channels);
    for (int y = 0; y < height; ++y) {  // the last row comes first
        const unsigned char* from = body + size_t(height - 1 - y) * rowSize * sizeof(float);
        for (size_t i = 0; i < rowSize; ++i) {
            uint32_t word;
            std::memcpy(&word, from + i * sizeof word, sizeof word);
            image.row(y)[i] = std::bit_cast<float>(bigEndian ? __builtin_bswap32(word) : word);
        }
    }
    const float exposure = exposureOf(image);
    return Source(toRgb(std::move(image)), exposure);
}

Source readPng(const Bytes& bytes) {
    PngImage png = decodePng(bytes.data(), bytes.size());
    return png.image16.empty() ? Source(toRgb(std::move(png.image8))) : Source(toRgb(std::move(png.image16)));
}

Source readVideo(const Bytes& bytes) { return Source(readY4m(bytes)); }

constexpr struct Format {
    std::string_view magic;
    Source (*read)(const Bytes&);
} formats[] = {
    {"\x89PNG\r\n\x1a\n", readPng}, {"P5", readPnm}, {"P6", readPnm}, {"PF", readPfm}, {"Pf", readPfm},
    {"YUV4MPEG2", readVideo},
};

constexpr float kGamma = 2.2f;

}  // namespace

void checkSize(int width, int height) {
    if (width < 1 || height < 1 || width > kMaxSide || height > kMaxSide || int64_t(width) * height > kMaxPixels) {
        throw Error("too large: " + std::to_string(width) + "x" + std::to_string(height));
    }
}

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
    const Bytes bytes = readFile(path);
    for (const Format& format : formats) {
        if (bytes.size() >= format.magic.size() &&
            std::memcmp(bytes.data(), format.magic.data(), format.magic.size()) == 0) {
            return format.read(bytes);
        }
    }
    if (isRawVideo(path)) return Source(readRawVideo(path, bytes));
    throw Error(
        "not a picture that this program reads: PNG, PNM (P5, P6), PFM, Y4M, raw video. Convert it to PNG first");
}

}  // namespace demo
