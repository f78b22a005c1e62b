// How pixels lie in memory: each layout reads a block of them from its rows and writes one.
//
// A layout says how many row pointers it has (planes), how many bytes of each its n pixels take (bytes), and loads and
// stores a block of N pixels at column x. A layout that keeps part of what a row held (the alpha of AC4) reads the row
// when it stores.
#pragma once

#include <cstddef>
#include <cstdint>

#include "frame/block.h"
#include "simd/interleave.h"

namespace q4 {

/// Pointers to the starts of the rows that a layout works on at a time.
template <class Byte, int n>
struct RowsOf {
    Byte* p[n];

    /// Rows that may be written may be read.
    MOX_INLINE operator RowsOf<const Byte, n>() const requires(!std::is_const_v<Byte>) {
        RowsOf<const Byte, n> r;
        for (int i = 0; i < n; ++i) r.p[i] = p[i];
        return r;
    }
};
template <int n>
using SrcRows = RowsOf<const uint8_t, n>;
template <int n>
using DstRows = RowsOf<uint8_t, n>;

/// C interleaved samples a pixel, of which the first `used` carry colour; the others are not read, and keep what they
/// held. If the pixels are dealt, the block's vectors are those in memory.
template <class T, int C, int used = C, bool dealt = false>
struct Interleaved {
    using Sample = T;
    static constexpr int planes = 1;
    static constexpr int channels = used;
    static constexpr bool keepsOld = used != C;
    static constexpr ptrdiff_t bytes(int, ptrdiff_t n) { return n * C * ptrdiff_t(sizeof(T)); }

    template <int N>
    static constexpr int laneStride = dealt ? 16 : N / lanes* C* int(sizeof(T));
    static constexpr int registerStride = dealt ? vectorBytes : 16;
    static constexpr ptrdiff_t vectorStride = registerStride * C;

    template <int N>
    MOX_INLINE static Block<T, used, N> load(const SrcRows<1>& rows, ptrdiff_t x) {
        const uint8_t* p = rows.p[0] + bytes(0, x);
        Block<T, used, N> block;
        for (int j = 0; j < block.c[0].vectors; ++j, p += vectorStride) {
            Vec<T> reg[C];
            for (int i = 0; i < C; ++i) reg[i] = q4::load<Vec<T>, laneStride<N>>(p + registerStride * i);
            if constexpr (C > 1)
                deinterleave(reg, reg);
            else if constexpr (dealt)
                reg[0] = deal<4>(reg[0]);
            for (int c = 0; c < used; ++c) block.c[c].v[j] = reg[c];
        }
        return block;
    }

    template <int N>
    MOX_INLINE static void store(const DstRows<1>& rows, ptrdiff_t x, const Block<T, used, N>& block) {
        uint8_t* p = rows.p[0] + bytes(0, x);
        if constexpr (C == 1 && Channel<T, N>::vectors == 2 && !dealt) {
            storePair<laneStride<N>>(p, block.c[0].v[0], block.c[0].v[1]);
            return;
        }
        for (int j = 0; j < block.c[0].vectors; ++j, p += vectorStride) {
            Vec<T> channel[C], reg[C];
            for (int c = 0; c < C; ++c) channel[c] = c < used ? block.c[c].v[j] : zero<Vec<T>>();
            if constexpr (C > 1)
                interleave(channel, reg);
            else
                reg[0] = dealt ? undeal<4>(channel[0]) : channel[0];
            if constexpr (keepsOld) {
                for (int i = 0; i < C; ++i) {
                    const Vec<T> old = q4::load<Vec<T>, laneStride<N>>(p + registerStride * i);
                    reg[i] = select(fourthMask<T>(i * laneElements<T>), old, reg[i]);
                }
            }
            if constexpr (dealt) {
                for (int i = 0; i < C; ++i) q4::store(p + registerStride * i, reg[i]);
                continue;
            }
            for (int i = 0; i + 2 <= C; i += 2) storePair<laneStride<N>>(p + 16 * i, reg[i], reg[i + 1]);
            if constexpr (C % 2 == 1) q4::store<laneStride<N>>(p + 16 * (C - 1), reg[C - 1]);
        }
    }
};

template <class T>
using C1 = Interleaved<T, 1>;
template <class T>
using C3 = Interleaved<T, 3>;
template <class T>
using C4 = Interleaved<T, 4>;
/// Four samples a pixel, the fourth an alpha that is not read and keeps what it held.
template <class T>
using AC4 = Interleaved<T, 4, 3>;

/// AC4 to be written where the fourth samples are another's: they are neither read nor written.
template <class T>
struct ColoursOf4 : AC4<T> {
    static constexpr bool keepsOld = false;

    /// The colours of n pixels.
    MOX_INLINE static void copy(uint8_t* to, const uint8_t* from, ptrdiff_t n) {
        constexpr ptrdiff_t pixel = 4 * sizeof(T), colours = 3 * sizeof(T);
        for (ptrdiff_t i = 0; i < n; ++i) std::memcpy(to + i * pixel, from + i * pixel, colours);
    }

    template <int N>
    MOX_INLINE static void store(const DstRows<1>& rows, ptrdiff_t x, const Block<T, 3, N>& block) {
        alignas(vectorBytes) uint8_t pixels[AC4<T>::bytes(0, N)];
        C4<T>::template store<N>({{pixels}}, 0, withFourth(block, T(0)));
        copy(rows.p[0] + AC4<T>::bytes(0, x), pixels, N);
    }
};

/// Interleaved pixels of three samples that are all the same, as a block of one channel: written only.
template <class T>
struct Triple {
    using Sample = T;
    static constexpr int planes = 1;
    static constexpr int channels = 1;
    static constexpr bool keepsOld = false;
    static constexpr ptrdiff_t bytes(int, ptrdiff_t n) { return n * 3 * ptrdiff_t(sizeof(T)); }

    template <int N>
    MOX_INLINE static void store(const DstRows<1>& rows, ptrdiff_t x, const Block<T, 1, N>& block) {
        uint8_t* p = rows.p[0] + bytes(0, x);
        constexpr int E = laneElements<T>, laneStride = int(bytes(0, N / lanes));
        for (int j = 0; j < block.c[0].vectors; ++j, p += 48) {
            const Vec<T> v = block.c[0].v[j];
            const Vec<T> first = shuffle(v, elementOrder<sizeof(T)>([](int e) { return e / 3; }));
            const Vec<T> second = shuffle(v, elementOrder<sizeof(T)>([](int e) { return (E + e) / 3; }));
            const Vec<T> third = shuffle(v, elementOrder<sizeof(T)>([](int e) { return (2 * E + e) / 3; }));
            storePair<laneStride>(p, first, second);
            q4::store<laneStride>(p + 32, third);
        }
    }
};

/// One plane a channel.
template <class T, int C>
struct Planar {
    using Sample = T;
    static constexpr int planes = C;
    static constexpr int channels = C;
    static constexpr bool keepsOld = false;
    static constexpr ptrdiff_t bytes(int, ptrdiff_t n) { return n * ptrdiff_t(sizeof(T)); }

    template <int N>
    MOX_INLINE static Block<T, C, N> load(const SrcRows<C>& rows, ptrdiff_t x) {
        Block<T, C, N> block;
        for (int c = 0; c < C; ++c) block.c[c] = C1<T>::template load<N>({{rows.p[c]}}, x).c[0];
        return block;
    }
    template <int N>
    MOX_INLINE static void store(const DstRows<C>& rows, ptrdiff_t x, const Block<T, C, N>& block) {
        for (int c = 0; c < C; ++c) C1<T>::template store<N>({{rows.p[c]}}, x, {{block.c[c]}});
    }
};

template <class T>
using P3 = Planar<T, 3>;
template <class T>
using P4 = Planar<T, 4>;

/// A layout with channels 0 and 2 exchanged: rules see R, G, B where memory holds B, G, R.
template <class Layout>
struct Reversed : Layout {
    template <int N>
    MOX_INLINE static auto load(const SrcRows<Layout::planes>& rows, ptrdiff_t x) {
        return reversed(Layout::template load<N>(rows, x));
    }
    template <int N>
    MOX_INLINE static void store(const DstRows<Layout::planes>& rows, ptrdiff_t x, const auto& block) {
        Layout::template store<N>(rows, x, reversed(block));
    }
};

// ---- dealt pixels ---------------------------------------------------------------------------------------------------
//
// Pixels of four samples, loaded in vectors as they follow and taken apart lane by lane, leave a vector's pixels dealt to
// the lanes, so many at a time as a lane of memory holds: four bytes of each channel. A kernel whose rule takes each pixel
// by itself, or each pair of bytes, need not put them back in line before it is done: its two layouts are Dealt.

/// A layout whose blocks are dealt.
template <class Layout>
struct Dealt;
template <class T, int C, int used>
struct Dealt<Interleaved<T, C, used>> : Interleaved<T, C, used, true> {
    static_assert(C == 1 || C == 4);
};
template <class Layout>
struct Dealt<Reversed<Layout>> : Reversed<Dealt<Layout>> {};

/// Whether a layout is one of pixels of four samples.
template <class Layout>
inline constexpr bool fourSamples = Layout::planes == 1 && Layout::bytes(0, 1) == 4 * sizeof(typename Layout::Sample);

template <bool condition, class Layout>
using DealtIf = std::conditional_t<condition, Dealt<Layout>, Layout>;

}  // namespace q4
