// v210, packed 10-bit 4:2:2, to 16-bit luma and to 5-6-5 colour by the BT.709 matrix.
#include "moxcc/v210.h"

#include "frame/entry.h"

namespace q4 {
namespace {

// ---- layout ---------------------------------------------------------------------------------------------------------

/// Four words hold a group of six pixels, three 10-bit samples a word: Y, or Y, Cb and Cr with each pair's chroma for
/// both of its pixels. A lane of a block is four groups, which fill whole vectors of samples.
template <int C>
struct V210 : LayoutOf<1> {
    using Sample = uint16_t;
    static constexpr int channels = C;
    static constexpr int groupColumns = 6;
    static constexpr int blockPixels = lanes * 4 * groupColumns;

    /// A group cut off after p pixels ends with the last word that these need.
    static constexpr ptrdiff_t bytes(int, ptrdiff_t n) {
        constexpr int words[2][groupColumns] = {{0, 1, 2, 2, 3, 4}, {0, 1, 2, 3, 3, 4}};
        return n / groupColumns * 16 + words[C == 3][n % groupColumns] * 4;
    }

    /// Where a pixel's samples stand in its group.
    struct Place {
        int word, third;  // which 10 bits of the word
    };
    static constexpr Place places[3][groupColumns] = {{{0, 1}, {1, 0}, {1, 2}, {2, 1}, {3, 0}, {3, 2}},
                                                      {{0, 0}, {0, 0}, {1, 1}, {1, 1}, {2, 2}, {2, 2}},
                                                      {{0, 2}, {0, 2}, {2, 0}, {2, 0}, {3, 1}, {3, 1}}};

    /// The samples of a channel that stand in the words' middle thirds, or in their outer ones, in pixel order.
    template <int c, bool middle>
    MOX_INLINE static U16 inOrder(U16 thirds) {
        return shuffle(thirds, elementOrder<2>([](int e) {
                           constexpr int none = 64;  // a shuffle order with its top bit set
                           if (e >= groupColumns || (places[c][e].third == 1) != middle) return none;
                           return places[c][e].word * 2 + places[c][e].third / 2;
                       }));
    }

    template <int c, int N>
    MOX_INLINE static Channel<uint16_t, N> channel(const U16 (&outer)[4], const U16 (&middle)[4]) {
        U16 six[4];
        for (int g = 0; g < 4; ++g) six[g] = inOrder<c, false>(outer[g]) | inOrder<c, true>(middle[g]);
        return {{six[0] | bytesUp<12>(six[1]), bytesDown<4>(six[1]) | bytesUp<8>(six[2]),
                 bytesDown<8>(six[2]) | bytesUp<4>(six[3])}};
    }

    template <int N>
    MOX_INLINE static Block<uint16_t, C, N> load(const SrcRows<1>& rows, ptrdiff_t x) {
        const uint8_t* p = rows.p[0] + bytes(0, x);
        U16 outer[4], middle[4];
        for (int g = 0; g < 4; ++g) {
            const U32 words = q4::load<U32, 64>(p + 16 * g);
            outer[g] = as<U16>((words & splat<U32>(0x3FF)) | (shr<4>(words) & splat<U32>(0x3FF0000)));
            middle[g] = as<U16>(shr<10>(words) & splat<U32>(0x3FF));
        }
        Block<uint16_t, C, N> block;
        block.c[0] = channel<0, N>(outer, middle);
        if constexpr (C == 3) {
            block.c[1] = channel<1, N>(outer, middle);
            block.c[2] = channel<2, N>(outer, middle);
        }
        return block;
    }
};

// ---- rules ----------------------------------------------------------------------------------------------------------

/// Bits 11 to 15, 5 to 10, 0 to 4. The 10-bit values are limited to the fields without scaling.
MOX_INLINE I32 pack565(I32 high, I32 middle, I32 low) {
    const auto limited = [](I32 v, int most) { return min(max(v, zero<I32>()), splat<I32>(most)); };
    return shl<11>(limited(high, 31)) | shl<5>(limited(middle, 63)) | limited(low, 31);
}

/// BT.709 in single precision on 10-bit samples. Products and sums round in the caller's mode, the conversion to
/// integers always to the nearest, ties to even.
template <bool redHigh>
struct Colour709 {
    MOX_INLINE Px<I32, 1> operator()(const Px<F32, 3>& p) const {
        const auto times = [](float k, F32 v) { return splat<F32>(k) * v; };
        const F32 y = p.c[0], u = p.c[1] + splat<F32>(-512), v = p.c[2] + splat<F32>(-512);
        const I32 r = nearestEven(times(1.54f, v) + y);
        const I32 g = nearestEven((times(-0.459f, v) + y) + times(-0.183f, u));
        const I32 b = nearestEven(y + times(1.816f, u));
        return {{redHigh ? pack565(r, g, b) : pack565(b, g, r)}};
    }
};

// ---- kernels --------------------------------------------------------------------------------------------------------

using Gray = AllColumns<V210<1>, C1<Mox16u>, Unchanged>;
template <bool redHigh>
using Colour = AllColumns<V210<3>, C1<Mox16u>, On<F32, Colour709<redHigh>>>;

}  // namespace

// ---- entries --------------------------------------------------------------------------------------------------------

/// Steps count words of the source, samples of the destination.
template <class Kernel>
constexpr auto fromWords = converts<Kernel, Order{{Test::pointers, Test::size, Test::rowLengths}}, Steps::samples>;

template <>
constexpr auto entry<moxiYUV422v210ToBGR_709HDTV_32u16u_C3> = fromWords<Colour<true>>;
template <>
constexpr auto entry<moxiYUV422v210ToRGB_709HDTV_32u16u_C3> = fromWords<Colour<false>>;
template <>
constexpr auto entry<moxiYUV422v210ToGray_709HDTV_32u16u_C3C1> = fromWords<Gray>;

}  // namespace q4

#include "v210.inc"
