#include "png_io.h"

#include <png.h>

#include <cstdio>
#include <cstring>
#include <memory>

namespace demo {
namespace {

// libpng's own way out of an error is longjmp, which would skip destructors. Exceptions pass through its frames: the
// platform's ABI has unwind tables for C code too.
[[noreturn]] void onError(png_structp, png_const_charp message) { throw Error(std::string("broken PNG: ") + message); }
void onWarning(png_structp, png_const_charp) {}

struct Reader {
    png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, onError, onWarning);
    png_infop info = png_create_info_struct(png);
    Reader() = default;
    Reader(const Reader&) = delete;
    ~Reader() { png_destroy_read_struct(&png, &info, nullptr); }
};

struct Writer {
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, onError, onWarning);
    png_infop info = png_create_info_struct(png);
    Writer() = default;
    Writer(const Writer&) = delete;
    ~Writer() { png_destroy_write_struct(&png, &info); }
};

struct Input {
    const unsigned char* bytes;
    size_t left;
};

void readBytes(png_structp png, png_bytep to, size_t size) {
    Input& input = *static_cast<Input*>(png_get_io_ptr(png));
    if (input.left < size) throw Error("truncated PNG");
    std::memcpy(to, input.bytes, size);
    input.bytes += size;
    input.left -= size;
}

// Drops an alpha channel, the picture being laid over white.
template <class T>
Image<T> overWhite(Image<T> image) {
    const int channels = image.channels();
    if (channels % 2 != 0) return image;
    const uint32_t full = std::numeric_limits<T>::max();
    Image<T> result(image.size(), channels - 1);
    for (size_t i = 0; i < size_t(image.width()) * image.height(); ++i) {
        const T* from = image.data() + i * channels;
        T* to = result.data() + i * (channels - 1);
        const uint32_t alpha = from[channels - 1];
        for (int c = 0; c < channels - 1; ++c) to[c] = T((from[c] * alpha + full * (full - alpha) + full / 2) / full);
    }
    return result;
}

template <class T>
Image<T> readRows(png_structp png, int width, int height, int channels) {
    Image<T> image(width, height, channels);
    std::vector<png_bytep> rows;
    for (int y = 0; y < height; ++y) rows.push_back(reinterpret_cast<png_bytep>(image.row(y)));
    png_read_image(png, rows.data());
    png_read_end(png, nullptr);
    return overWhite(std::move(image));
}

template <class T>
void write(const std::filesystem::path& path, const Image<T>& image) {
    std::filesystem::path part = path;
    part += ".part";
    try {
        Writer writer;
        const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(part.c_str(), "wb"), std::fclose);
        if (!file) throw Error("cannot be written: " + std::string(std::strerror(errno)));
        png_init_io(writer.png, file.get());
        png_set_compression_level(writer.png, 2);  // a demo should not wait for the compressor
        png_set_filter(writer.png, 0, PNG_FILTER_SUB | PNG_FILTER_UP);
        png_set_IHDR(writer.png, writer.info, png_uint_32(image.width()), png_uint_32(image.height()), 8 * sizeof(T),
                     image.channels() == 1 ? PNG_COLOR_TYPE_GRAY : PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE,
                     PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
        png_write_info(writer.png, writer.info);
        if (sizeof(T) == 2) png_set_swap(writer.png);
        for (int y = 0; y < image.height(); ++y) {
            png_write_row(writer.png, reinterpret_cast<png_const_bytep>(image.row(y)));
        }
        png_write_end(writer.png, writer.info);
        if (std::fflush(file.get()) != 0) throw Error("cannot be written: " + std::string(std::strerror(errno)));
        std::filesystem::rename(part, path);
    } catch (...) {
        std::error_code ignored;
        std::filesystem::remove(part, ignored);
        throw;
    }
}

}  // namespace

PngImage decodePng(const unsigned char* bytes, size_t size) {
    Reader reader;
    Input input{bytes, size};
    png_set_read_fn(reader.png, &input, readBytes);
    png_read_info(reader.png, reader.info);
    const png_uint_32 width = png_get_image_width(reader.png, reader.info);
    const png_uint_32 height = png_get_image_height(reader.png, reader.info);
    checkSize(int(width), int(height));

    png_set_expand(reader.png);  // palettes, 1 to 4 bits, transparent colours
    png_set_swap(reader.png);    // 16 bits are big-endian in the file
    png_set_interlace_handling(reader.png);
    png_read_update_info(reader.png, reader.info);
    const int channels = png_get_channels(reader.png, reader.info);
    PngImage result;
    if (png_get_bit_depth(reader.png, reader.info) == 16) {
        result.image16 = readRows<Mox16u>(reader.png, int(width), int(height), channels);
    } else {
        result.image8 = readRows<Mox8u>(reader.png, int(width), int(height), channels);
    }
    return result;
}

void writePng(const std::filesystem::path& path, const Image8& image) { write(path, image); }
void writePng(const std::filesystem::path& path, const Image16& image) { write(path, image); }

}  // namespace demo
