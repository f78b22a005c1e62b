#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>

#include "cli/commands.h"

namespace cli {

using pictures::Frame;

namespace {

/// What differs between pictures, or all frames of video.
struct Difference {
    double squares = 0, largest = 0, peak = 1;
    int64_t samples = 0, different = 0;
    int64_t frame = 0;  // where the largest is
    int column = 0, row = 0, channel = 0;
    double values[2] = {};

    double psnr() const {
        return squares == 0 ? std::numeric_limits<double>::infinity()
                            : 10 * std::log10(peak * peak * double(samples) / squares);
    }

    template <class T>
    void add(const Frame& a, const Frame& b, int64_t index) {
        if constexpr (!std::is_floating_point_v<T>)
            peak = double(std::numeric_limits<T>::max()) - double(std::numeric_limits<T>::min());
        for (size_t plane = 0; plane < a.planeCount(); ++plane) {
            const auto inRow = int(a.rowBytes[plane] / int64_t(sizeof(T)));
            const int channels = a.side.planes[plane].bytes / int(sizeof(T));
            for (int y = 0; y < a.rows[plane]; ++y) {
                const uint8_t *rowA = a.row(plane, y), *rowB = b.row(plane, y);
                samples += inRow;
                if (std::memcmp(rowA, rowB, size_t(inRow) * sizeof(T)) == 0) continue;
                for (int i = 0; i < inRow; ++i) {
                    T s[2];
                    std::memcpy(&s[0], rowA + size_t(i) * sizeof(T), sizeof(T));
                    std::memcpy(&s[1], rowB + size_t(i) * sizeof(T), sizeof(T));
                    if (std::memcmp(&s[0], &s[1], sizeof(T)) == 0) continue;
                    const double d = std::abs(double(s[0]) - double(s[1]));
                    ++different;
                    squares += d * d;
                    if (d <= largest && different > 1) continue;
                    largest = d, frame = index, column = i / channels, row = y;
                    channel = int(plane) + i % channels;
                    values[0] = double(s[0]), values[1] = double(s[1]);
                }
            }
        }
    }
};

struct Source {
    Source(const std::string& path, const RawOptions& layout)
        : name(path == "-" ? "standard input" : path),
          input(naming(name, [&] { return std::make_unique<pictures::Input>(path); })),
          reader(naming(name, [&] { return pictures::open(*input, layout.raw(path, nullptr)); })) {}
    bool next() {
        return naming(name, [&] { return reader(frame); });
    }

    std::string name;
    std::unique_ptr<pictures::Input> input;
    pictures::Reader reader;
    Frame frame;
};

}  // namespace

void compare(const CompareOptions& options) {
    Source a(options.a, options.layout), b(options.b, options.layout);
    Difference difference;
    int64_t frames = 0;
    Frame repacked;
    for (;;) {
        const bool more = a.next();
        if (more != b.next())
            throw pictures::Error((more ? b : a).name + ": fewer frames than " + (more ? a : b).name + ": " +
                                  std::to_string(frames));
        if (!more) break;
        ++frames;
        const Frame &f = a.frame, *g = &b.frame;
        const auto text = [](const Frame& x) {
            return pictures::nameOf(x.side) + " of " + std::to_string(x.size.width) + "x" +
                   std::to_string(x.size.height);
        };
        if (f.size.width != g->size.width || f.size.height != g->size.height || f.side.depth != g->side.depth ||
            f.side.channels() != g->side.channels() || !pictures::mismatch(g->side, f.side).empty())
            throw pictures::Error(b.name + ": " + text(*g) + ", and " + a.name + ": " + text(f));
        if (!pictures::alike(f.side, g->side)) {
            repacked.shape(f.side, f.size);
            pictures::repack(*g, repacked);
            g = &repacked;
        }
        const std::string& depth = f.side.depth;
        if (depth == "8u" || depth == "1u")
            difference.add<uint8_t>(f, *g, frames);
        else if (depth == "16u")
            difference.add<uint16_t>(f, *g, frames);
        else if (depth == "16s")
            difference.add<int16_t>(f, *g, frames);
        else if (depth == "32s")
            difference.add<int32_t>(f, *g, frames);
        else if (depth == "32u")
            difference.add<uint32_t>(f, *g, frames);
        else if (depth == "32f")
            difference.add<float>(f, *g, frames);
        else
            difference.add<double>(f, *g, frames);
    }
    const Difference& d = difference;
    if (d.different == 0) {
        std::puts("equal");
        return;
    }
    std::printf("PSNR %.2f dB, %lld of %lld samples differ\n", d.psnr(), static_cast<long long>(d.different),
                static_cast<long long>(d.samples));
    std::printf("largest difference %g, %g and %g, in channel %d at column %d, row %d", d.largest, d.values[0],
                d.values[1], d.channel, d.column, d.row);
    if (frames > 1) std::printf(" of frame %lld", static_cast<long long>(d.frame));
    std::puts("");
    if (options.least && !(d.psnr() >= *options.least))
        throw pictures::Error(b.name + ": not as close to " + a.name + " as --psnr wants");
}

}  // namespace cli
