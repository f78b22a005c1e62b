// Seeded random values. The same seed gives the same values everywhere, so that a failure can be run again.
#ifndef SUPPORT_RANDOM_H
#define SUPPORT_RANDOM_H

#include <bit>
#include <cstdint>
#include <initializer_list>
#include <iterator>
#include <limits>
#include <span>
#include <type_traits>

namespace moxtest {

class Random {
  public:
    explicit Random(uint64_t seed) : state_(seed) {}

    /// Two of the bytes decide the low bits of each value, as long as they last.
    explicit Random(std::span<const uint8_t> bytes) : state_(bytes.size()), bytes_(bytes) {}

    uint64_t bits() {
        uint64_t value = mixed();
        if (bytes_.size() < 2) return value;
        value = (value & ~uint64_t{0xFFFF}) | static_cast<uint64_t>(bytes_[0] << 8 | bytes_[1]);
        bytes_ = bytes_.subspan(2);
        return value;
    }

    /// lo to hi, both included.
    int64_t between(int64_t lo, int64_t hi) {
        return lo + static_cast<int64_t>(bits() % (static_cast<uint64_t>(hi - lo) + 1));
    }

    bool oneIn(unsigned n) { return bits() % n == 0; }

    template <class T>
    T oneOf(std::initializer_list<T> values) {
        return std::data(values)[bits() % values.size()];
    }

    /// A float or double from lo to hi, the ends hardly ever.
    template <class T>
    T uniform(T lo, T hi) {
        return static_cast<T>(lo + (static_cast<double>(hi) - lo) * (static_cast<double>(bits() >> 11) * 0x1p-53));
    }

    /// Any bit pattern: of a float that is any magnitude, infinities and NaNs included.
    template <class T>
    T anyBits() {
        if constexpr (std::is_same_v<T, float>) {
            return std::bit_cast<float>(static_cast<uint32_t>(bits()));
        } else if constexpr (std::is_same_v<T, double>) {
            return std::bit_cast<double>(bits());
        } else {
            return static_cast<T>(bits());
        }
    }

    /// A float or double at which arithmetic changes its ways.
    template <class T>
    T special() {
        using L = std::numeric_limits<T>;
        const T value = oneOf<T>({T(0),
                                  L::min() * L::epsilon(),  // denorm_min(), which gcc 12 lays out as a quad on ARM
                                  L::min() / 2,
                                  L::min(),
                                  L::epsilon(),
                                  T(0.5),
                                  T(1) - L::epsilon() / 2,
                                  T(1),
                                  T(1) + L::epsilon(),
                                  T(1.5),
                                  T(2.5),
                                  T(127.5),
                                  T(255),
                                  T(256),
                                  T(32767.5),
                                  T(65535),
                                  T(65536),
                                  T(2147483648.0),
                                  T(4294967296.0),
                                  L::max(),
                                  L::infinity(),
                                  L::quiet_NaN()});
        return oneIn(2) ? -value : value;
    }

    /// The usual sample of a type: any integer, the ends of the range more often than chance; a float from 0 to 1.
    template <class T>
    T sample() {
        if constexpr (std::is_floating_point_v<T>) {
            return oneIn(16) ? oneOf<T>({T(0), T(1)}) : uniform<T>(T(0), T(1));
        } else {
            using L = std::numeric_limits<T>;
            return oneIn(8) ? oneOf<T>({L::min(), L::max()}) : static_cast<T>(bits());
        }
    }

  private:
    uint64_t mixed() {  // splitmix64
        uint64_t z = state_ += 0x9E3779B97F4A7C15u;
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9u;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBu;
        return z ^ (z >> 31);
    }

    uint64_t state_;
    std::span<const uint8_t> bytes_;
};

}  // namespace moxtest

#endif
