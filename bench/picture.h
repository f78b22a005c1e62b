// Picture buffers for the benchmarks: any layout of the library, filled with something that looks like a photograph.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>

#include "moxcc/types.h"

namespace bench {

// How an image lies in memory. A function's name tells it: see layoutsOf().
struct Layout {
    int bits = 8;             // of a sample: 1, 8, 16, 32, 64
    char kind = 'u';          // u: unsigned, s: signed, f: float
    int planes = 1;           // 1: interleaved, 2: luma and chroma pairs, 3, 4
    int channels = 1;         // of an interleaved image; 2 is packed 4:2:2
    int cellX = 1;            // pixels that share one chroma sample,
    int cellY = 1;            // across and down
    bool contiguous = false;  // rows without padding, for forms that take no steps

    Layout cells(int x, int y) const;
};

// Interleaved<Mox8u>(3): three interleaved channels; planar<Mox8u>(3).cells(2, 2): 4:2:0 in three planes.
template <class T>
Layout interleaved(int channels) {
    const char kind = std::is_floating_point_v<T> ? 'f' : std::is_signed_v<T> ? 's' : 'u';
    return {.bits = 8 * int(sizeof(T)), .kind = kind, .channels = channels};
}

template <class T>
Layout planar(int planes) {
    Layout layout = interleaved<T>(1);
    layout.planes = planes;
    return layout;
}

// The layouts of source and destination that an exported name tells, such as "moxiYCbCr420ToRGB_8u_P3C3R".
std::pair<Layout, Layout> layoutsOf(const std::string& name);

// One image: planes that start on 64 bytes, rows with padding behind them. A handle: copies share the samples.
class Picture {
  public:
    struct Plane {
        uint8_t* data = nullptr;
        int32_t step = 0;   // bytes
        int32_t width = 0;  // samples of a row, all channels
        int32_t height = 0;
    };

    Picture(const Layout& layout, MoxiSize size);

    // A seeded scene with gradients, texture, edges and correlated channels; samples run from low to high.
    void fill(double low, double high);
    // The whole range of an integer type, 0 to 1 for floats.
    void fill();

    template <class T>
    T* data(int plane = 0) const {
        return reinterpret_cast<T*>(planes[plane].data);
    }
    int32_t step(int plane = 0) const { return planes[plane].step; }
    size_t bytes() const;  // in the rows, without padding

    Layout layout;
    MoxiSize size;
    std::array<Plane, 4> planes;

  private:
    std::shared_ptr<uint8_t> memory_;
};

}  // namespace bench
