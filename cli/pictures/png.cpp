// PNG through libpng.
#include <png.h>

#include <bit>

#include "cli/pictures/formats.h"

namespace pictures {
namespace {

// libpng's own way out of an error is longjmp, which would skip destructors. Exceptions pass through its frames: the
// platform's ABI has unwind tables for C code too.
[[noreturn]] void onError(png_structp, png_const_charp message) { throw Error(std::string("broken PNG: ") + message); }
void onWarning(png_structp, png_const_charp) {}

struct Decoder {
    png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, onError, onWarning);
    png_infop info = png_create_info_struct(png);
    Decoder() = default;
    Decoder(const Decoder&) = delete;
    ~Decoder() { png_destroy_read_struct(&png, &info, nullptr); }
};

struct Encoder {
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, onError, onWarning);
    png_infop info = png_create_info_struct(png);
    Encoder() = default;
    Encoder(const Encoder&) = delete;
    ~Encoder() { png_destroy_write_struct(&png, &info); }
};

void decode(Input& input, Frame& frame) {
    Decoder decoder;
    png_structp png = decoder.png;
    png_infop info = decoder.info;
    png_set_read_fn(png, &input, [](png_structp p, png_bytep to, size_t size) {
        static_cast<Input*>(png_get_io_ptr(p))->need(to, size);
    });
    constexpr png_uint_32 noLimit = PNG_UINT_31_MAX;
    png_set_user_limits(png, noLimit, noLimit);  // checkSize() has the limits
    png_read_info(png, info);
    const auto width = int64_t(png_get_image_width(png, info)), height = int64_t(png_get_image_height(png, info));
    checkSize(width, height);
    // The compressor makes at most 1032 bytes of one.
    input.expect((width * png_get_bit_depth(png, info) + 7) / 8 * height / 1032);

    png_set_expand(png);  // palettes, 1 to 4 bits, transparent colours
    const bool gray = !(png_get_color_type(png, info) & PNG_COLOR_MASK_COLOR);
    const bool alpha =
        (png_get_color_type(png, info) & PNG_COLOR_MASK_ALPHA) || png_get_valid(png, info, PNG_INFO_tRNS);
    if (gray && alpha) png_set_gray_to_rgb(png);
    if constexpr (std::endian::native == std::endian::little) png_set_swap(png);
    png_set_interlace_handling(png);
    png_read_update_info(png, info);
    const int channels = png_get_channels(png, info);
    frame.shape(pictureSide(channels, png_get_bit_depth(png, info) == 16 ? "16u" : "8u"), {int(width), int(height)});
    frame.alpha = channels == 4;
    std::vector<png_bytep> rows;
    for (int y = 0; y < frame.size.height; ++y) rows.push_back(frame.row(0, y));
    png_read_image(png, rows.data());
    png_read_end(png, nullptr);
}

void encode(Output& output, const Frame& frame) {
    Encoder encoder;
    png_structp png = encoder.png;
    png_set_write_fn(
        png, &output,
        [](png_structp p, png_bytep from, size_t size) { static_cast<Output*>(png_get_io_ptr(p))->write(from, size); },
        [](png_structp) {});
    constexpr png_uint_32 noLimit = PNG_UINT_31_MAX;
    png_set_user_limits(png, noLimit, noLimit);
    png_set_compression_level(png, 2);  // nobody should wait for the compressor
    png_set_filter(png, 0, PNG_FILTER_SUB | PNG_FILTER_UP);
    const int channels = frame.side.channels();
    png_set_IHDR(png, encoder.info, png_uint_32(frame.size.width), png_uint_32(frame.size.height),
                 frame.side.depth == "1u" ? 1 : 8 * frame.side.sampleBytes,
                 channels == 1   ? PNG_COLOR_TYPE_GRAY
                 : channels == 3 ? PNG_COLOR_TYPE_RGB
                                 : PNG_COLOR_TYPE_RGB_ALPHA,
                 PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_write_info(png, encoder.info);
    if (std::endian::native == std::endian::little && frame.side.sampleBytes == 2) png_set_swap(png);
    for (int y = 0; y < frame.size.height; ++y) png_write_row(png, frame.row(0, y));
    png_write_end(png, encoder.info);
}

}  // namespace

Reader readPng(Input& input) {
    return [&input, done = false](Frame& frame) mutable {
        if (done) return false;
        decode(input, frame);
        return done = true;
    };
}

Writer writePng(Output& output) {
    return [&output, done = false](const Frame& frame) mutable {
        if (done) throw Error("a PNG holds one picture; a name as %04d.png gives each frame a file");
        encode(output, frame);
        done = true;
    };
}

}  // namespace pictures
