// The pictures of a call, as the catalogue has them: planes between guard pages, with not a byte more than the export
// may touch, read and written by what the samples mean; and the comparison of an export with its rule.
#ifndef SUPPORT_PICTURE_H
#define SUPPORT_PICTURE_H

#include <functional>
#include <string>
#include <type_traits>
#include <vector>

#include "catalogue/call.h"
#include "support/float_env.h"
#include "support/library.h"
#include "support/plane.h"
#include "support/sizes.h"

namespace moxtest {

using catalogue::Values;

/// A side of a call. All bytes start random. Copies lie the same way.
class Picture {
  public:
    /// Lying as the export's steps allow, at random, or all planes as `layout` says.
    Picture(const catalogue::Export& e, int side, MoxiSize size, Random& random, const Values& values = {},
            const Layout* layout = nullptr);

    const catalogue::Side& side() const { return *side_; }
    MoxiSize size() const { return size_; }
    size_t planes() const { return planes_.size(); }
    PlaneBytes& operator[](size_t plane) { return planes_[plane]; }
    const PlaneBytes& operator[](size_t plane) const { return planes_[plane]; }
    catalogue::Picture view() const;

    /// Sets every sample to what next() gives.
    template <class T>
    void fill(const std::function<T()>& next) {
        for (PlaneBytes& plane : planes_)
            for (int y = 0; y < plane.rows(); ++y)
                for (int x = 0; x < plane.rowBytes(); x += int(sizeof(T))) put(plane.rowStart(y) + x, next());
    }

    /// A channel of a pixel, as it stands in memory: interleaved or in a plane of its own.
    template <class T = Mox8u>
    T get(int x, int y, int c = 0) const {
        T value;
        std::memcpy(&value, channel(x, y, c), sizeof(T));
        return value;
    }
    template <class T>
    void set(int x, int y, int c, T value) {
        put(channel(x, y, c), value);
    }

    // Bytes by their meaning: red, green, blue, fourth; luma; the two kinds of chroma of a cell, Cb or U first.
    int colour(int x, int y, int c) const { return *channel(x, y, inMemory(c)); }
    void setColour(int x, int y, int c, int value) { setByte(channel(x, y, inMemory(c)), value); }
    int luma(int x, int y) const { return *lumaByte(x, y); }
    void setLuma(int x, int y, int value) { setByte(lumaByte(x, y), value); }
    int chroma(int cell, int row, int kind) const { return *chromaByte(cell, row, kind); }
    void setChroma(int cell, int row, int kind, int value) { setByte(chromaByte(cell, row, kind), value); }

  private:
    template <class T>
    static void put(uint8_t* to, T value) {
        std::memcpy(to, &value, sizeof(T));
    }
    static void setByte(uint8_t* to, int value);
    bool isPlanar() const { return planes_.size() > 1; }
    int inMemory(int colour) const;
    uint8_t* channel(int x, int y, int c) const;
    uint8_t* lumaByte(int x, int y) const;
    uint8_t* chromaByte(int cell, int row, int kind) const;

    const catalogue::Side* side_;
    MoxiSize size_;
    bool reversed_, chromaFirst_, crossed_;
    std::vector<PlaneBytes> planes_;
    int lowBits_ = 0;  // of a step that is rounded down
};

/// Compares every byte, margins too.
::testing::AssertionResult same(const Picture& got, const Picture& want, Nan nan = Nan::bits);

/// What a call makes of the source: writes the pixels of `want` that the export writes. In place, the source is what
/// the destination held before.
using Reference = std::function<void(const Picture& src, Picture& want, const Values& values)>;

/// The exports whose names fit a shell pattern; a failure if there is none.
std::vector<const char*> named(const char* pattern);

/// So many that a rounding offset of 16 fractional bits that is one off shows.
#ifdef MOXCC_FEWER_CASES
inline constexpr int manyPixels = 4000;
#else
inline constexpr int manyPixels = 1 << 19;
#endif

/// The calls that an export is compared in.
struct Calls {
    int fromWidth = 1, toWidth = 70, maxHeight = 5;
    std::vector<uint32_t> roundings = {mxcsr::usual};
    std::function<void(Picture& src, Random& random)> fill = nullptr;  // default: random samples of all values
    std::function<Values(Random& random)> values = nullptr;            // default: a random alpha
    std::function<Layout(Random& random)> source = nullptr;            // how it lies; default: in any way it may
    std::function<MoxStatus(const Picture& src)> status = nullptr;     // default: moxStatusOk, or moxStatusOddSize
    Nan nan = Nan::bits;
};

/// Calls an export of each file at all sizes from its least on, and compares status and bytes with the reference.
void expect(const char* name, const Reference& reference, const Calls& calls = {});
/// The same for one size.
void expectAt(const char* name, MoxiSize size, Random& random, const Reference& reference, const Calls& calls = {});

}  // namespace moxtest

#endif
