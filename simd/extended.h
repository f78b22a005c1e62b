// Sums of floats with 64 bits of mantissa, each rounded to nearest.
#pragma once

#include <bit>
#include <cstdint>
#include <utility>

namespace q4 {

/// By integers: what the x87 unit's usual control word gives, on processors without that unit.
class EmulatedExtended {
  public:
    EmulatedExtended& operator+=(float x) {
        const uint32_t bits = std::bit_cast<uint32_t>(x), exponent = bits >> 23 & 0xFF;
        const uint64_t fraction = bits & 0x7FFFFF;
        const bool negative = bits >> 31;
        if (exponent == 0xFF)
            addSpecial(fraction != 0, negative);
        else if (exponent != 0)
            add({negative, int(exponent) - 150, fraction | 0x800000});
        else if (fraction != 0)
            add({negative, -149, fraction});
        return *this;
    }

    explicit operator double() const {
        uint64_t bits = 0;
        if (kind_ == nan) {
            bits = 0x7FF8000000000000;
        } else if (kind_ == infinite) {
            bits = 0x7FF0000000000000;
        } else if (total_.mantissa != 0) {
            // No sum of floats leaves the doubles' range. A carry out of the mantissa goes to the exponent.
            const uint64_t rounded = roundedShift(total_.mantissa, 11);
            bits = (uint64_t(total_.exponent + 63 + 1023 - 1) << 52) + rounded;
        }
        return std::bit_cast<double>(bits | uint64_t(total_.negative) << 63);
    }

  private:
    __extension__ typedef unsigned __int128 Wide;

    /// mantissa * 2^exponent; the top bit of the mantissa is set, unless the number is 0.
    struct Number {
        bool negative = false;
        int exponent = 0;
        uint64_t mantissa = 0;
    };

    template <class T>
    static uint64_t roundedShift(T x, int n) {  // ties to even
        const T low = x & ((T(1) << n) - 1), half = T(1) << (n - 1);
        const uint64_t floor = uint64_t(x >> n);
        return floor + (low > half || (low == half && (floor & 1)));
    }

    void addSpecial(bool isNan, bool negative) {
        if (isNan || kind_ == nan || (kind_ == infinite && total_.negative != negative))
            kind_ = nan;
        else
            kind_ = infinite, total_.negative = negative;
    }

    void add(Number b) {
        if (kind_ != finite) return;
        const int shift = std::countl_zero(b.mantissa);
        b.mantissa <<= shift, b.exponent -= shift;
        Number a = total_;
        if (a.mantissa == 0) {
            total_ = b;
            return;
        }
        if (a.exponent < b.exponent || (a.exponent == b.exponent && a.mantissa < b.mantissa)) std::swap(a, b);
        // With 63 bits below the mantissas, of which what leaves the lowest sticks to it.
        constexpr int below = 63;
        const int distance = a.exponent - b.exponent;
        Wide small = Wide(b.mantissa) << below;
        if (distance > below)
            small = distance > 126 ? 1 : (small >> distance) | ((small & ((Wide(1) << distance) - 1)) != 0);
        else
            small >>= distance;
        Wide sum = Wide(a.mantissa) << below;
        sum = a.negative == b.negative ? sum + small : sum - small;
        if (sum == 0) {
            total_ = {};
            return;
        }
        const int bits =
            uint64_t(sum >> 64) ? 128 - std::countl_zero(uint64_t(sum >> 64)) : 64 - std::countl_zero(uint64_t(sum));
        const int drop = bits - 64;
        total_ = {a.negative, a.exponent - below + drop, 0};
        if (drop <= 0) {
            total_.mantissa = uint64_t(sum) << -drop;
            return;
        }
        total_.mantissa = roundedShift(sum, drop);
        if (total_.mantissa == 0) total_.mantissa = uint64_t(1) << 63, ++total_.exponent;  // a carry out of the top
    }

    enum { finite, infinite, nan } kind_ = finite;
    Number total_;
};

#if defined(__x86_64__)
using Extended = long double;
#else
using Extended = EmulatedExtended;
#endif

}  // namespace q4
