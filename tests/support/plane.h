// Image planes between guard pages, and their comparison byte by byte.
#ifndef SUPPORT_PLANE_H
#define SUPPORT_PLANE_H

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <span>
#include <string>
#include <vector>

#include "support/random.h"

namespace moxtest {

/// Which end of the plane stands directly at a page that may not be touched.
enum class Guard {
    before,  // the first byte of the lowest row is the first byte of a page
    after,   // the last byte of the highest row is the last byte of a page
    none     // the lowest row starts `offset` bytes after an address on 64; 64 bytes or more lie around the plane
};

/// How a plane lies in memory.
struct Layout {
    int gap = 0;                 // margin between the bytes of two rows
    bool bottomUp = false;       // row 0 is the highest in memory: the step is negative
    Guard guard = Guard::after;  //
    int offset = 0;              // see Guard::none

    /// Any layout, with gap and offset in multiples of `unit` bytes.
    static Layout random(Random& random, int unit);
};

/// The bytes of a plane. Copies lie the same way: their addresses are equal modulo 4096.
class PlaneBytes {
  public:
    PlaneBytes(int rowBytes, int rows, const Layout& layout);
    PlaneBytes(const PlaneBytes& other);
    PlaneBytes& operator=(const PlaneBytes&) = delete;
    ~PlaneBytes();

    int rowBytes() const { return rowBytes_; }
    int rows() const { return rows_; }
    int32_t step() const { return layout_.bottomUp ? -pitch() : pitch(); }  ///< In bytes.
    uint8_t* rowStart(int y) const { return lowest_ + static_cast<ptrdiff_t>(memoryRow(y)) * pitch(); }

    /// All writable bytes: rows, margins, and what lies between the plane and the page ends.
    std::span<uint8_t> all() const { return {pages_, size_}; }

    /// Makes the bytes read-only, or writable again: a write to a read-only plane is a fault.
    void protect(bool readOnly = true);

    /// Says where a byte of all() lies; x is a byte's index in the row.
    struct Position {
        bool inRow;
        int y, x;
    };
    Position position(size_t index) const;

  private:
    int pitch() const { return rowBytes_ + layout_.gap; }
    int memoryRow(int y) const { return layout_.bottomUp ? rows_ - 1 - y : y; }

    int rowBytes_, rows_;
    Layout layout_;
    uint8_t* pages_ = nullptr;
    size_t size_ = 0;
    uint8_t* lowest_ = nullptr;  // the row lowest in memory
};

/// Whether two planes that lie the same way hold the same bytes, margins included.
bool bytesEqual(const PlaneBytes& a, const PlaneBytes& b);

/// A plane of samples: `columns` pixels of `channels` interleaved samples in each row. All bytes start random.
/// Samples are read and written one by one, so that any step and alignment may be had.
template <class T>
class Plane : public PlaneBytes {
  public:
    /// The random layout and samples that a conversion's usual test wants.
    Plane(int columns, int rows, int channels, Random& random)
        : Plane(columns, rows, channels, Layout::random(random, sizeof(T)), random) {}

    Plane(int columns, int rows, int channels, const Layout& layout, Random& random)
        : PlaneBytes(columns * channels * static_cast<int>(sizeof(T)), rows, layout),
          columns_(columns),
          channels_(channels) {
        for (uint8_t& byte : all()) byte = static_cast<uint8_t>(random.bits());
        fill([&] { return random.sample<T>(); });
    }

    int columns() const { return columns_; }
    int channels() const { return channels_; }

    T* data() const { return row(0); }
    T* row(int y) const { return reinterpret_cast<T*>(rowStart(y)); }

    T get(int x, int y, int channel = 0) const {
        T value;
        std::memcpy(&value, rowStart(y) + sampleOffset(x, channel), sizeof(T));
        return value;
    }
    void set(int x, int y, int channel, T value) {
        std::memcpy(rowStart(y) + sampleOffset(x, channel), &value, sizeof(T));
    }
    void set(int x, int y, T value) { set(x, y, 0, value); }

    /// Sets each sample to what next() gives, row by row.
    template <class Next>
    void fill(const Next& next) {
        for (int y = 0; y < rows(); ++y) {
            for (int x = 0; x < columns_; ++x) {
                for (int c = 0; c < channels_; ++c) set(x, y, c, static_cast<T>(next()));
            }
        }
    }

  private:
    size_t sampleOffset(int x, int channel) const {
        return (static_cast<size_t>(x) * static_cast<size_t>(channels_) + static_cast<size_t>(channel)) * sizeof(T);
    }

    int columns_, channels_;
};

/// How two samples that differ in their bits may still be the same.
enum class Nan {
    bits,   // never
    anyNan  // if both are NaN
};

namespace detail {
struct SampleType {
    int bytes;
    bool (*nan)(const uint8_t*);
    std::string (*show)(const uint8_t*);
};
SampleType sampleType(int bytes, bool floating, bool isSigned);
::testing::AssertionResult same(const PlaneBytes& got, const PlaneBytes& want, int channels, const SampleType& type,
                                Nan nan);
}  // namespace detail

/// Compares all bytes of two planes that lie the same way, the margins included. The message names the last call into
/// the library and the first few samples that differ.
template <class T>
::testing::AssertionResult same(const Plane<T>& got, const Plane<T>& want, Nan nan = Nan::bits) {
    return detail::same(got, want, got.channels(),
                        detail::sampleType(sizeof(T), std::is_floating_point_v<T>, std::is_signed_v<T>), nan);
}

/// As same(), for the margins only: says whether anything beside the rows' own bytes has changed.
::testing::AssertionResult sameMargins(const PlaneBytes& got, const PlaneBytes& before);

}  // namespace moxtest

#endif
