// How pixels lie in memory: each layout reads a block of them from its rows and writes one.
//
// The concept Layout says what a layout has; LayoutOf has what most have in common.
#pragma once

#include <concepts>

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

/// A picture in memory: the start of each plane's first row, and the distance to the next. Any step will do, zero and
/// negative ones included.
template <class Byte, int n>
struct Image {
    Byte* base[n];
    ptrdiff_t step[n];

    MOX_INLINE RowsOf<Byte, n> row(ptrdiff_t y) const {
        RowsOf<Byte, n> r;
        for (int i = 0; i < n; ++i) r.p[i] = base[i] + y * step[i];
        return r;
    }
    MOX_INLINE Image<Byte, 1> plane(int i) const { return {{base[i]}, {step[i]}}; }
    /// As a source.
    MOX_INLINE operator Image<const uint8_t, n>() const requires(!std::is_const_v<Byte>) {
        Image<const uint8_t, n> source;
        for (int i = 0; i < n; ++i) source.base[i] = base[i], source.step[i] = step[i];
        return source;
    }
};

/// What most layouts have in common: `planes_` planes in memory, one row of each at a time, all of it read and written.
/// A layout derives from this and names what is otherwise.
template <int planes_>
struct LayoutOf {
    /// Planes in memory, each with a start and a step.
    static constexpr int planes = planes_;
    /// Row pointers that a block is loaded from and stored to, and the rows of pixels that they stand for.
    static constexpr int rowPointers = planes_;
    static constexpr int rowsAtOnce = 1;
    /// A store reads what the rows hold, and keeps part of it.
    static constexpr bool keepsOld = false;
    /// Bytes at the end of a row's last column that a load does not need, and that need not exist. Such a layout has a
    /// loadAtEnd() too, which reads bytes before the block's columns in their place.
    static constexpr int spareBytes = 0;
    /// Of so many columns a row has whole numbers, where another row follows without a gap.
    static constexpr int groupColumns = 1;
    /// Pixels of a block; 0: those whose narrowest samples fill a vector.
    static constexpr int blockPixels = 0;

    /// The row pointers of a picture's rows, or groups of rows, as a picture.
    template <class Byte>
    MOX_INLINE static Image<Byte, planes> rowsOf(const Image<Byte, planes>& image) {
        return image;
    }
};

/// How pixels lie in memory. A source has load<N>(SrcRows<rowPointers>, x), which gives a block of N pixels from column
/// x on; a destination has store<N>(DstRows<rowPointers>, x, block). What a block is, layout and rule agree on: as a
/// rule a Block of channels.
template <class L>
concept Layout = requires(int row, ptrdiff_t pixels) {
    typename L::Sample;
    { L::planes } -> std::convertible_to<int>;
    { L::rowPointers } -> std::convertible_to<int>;
    { L::rowsAtOnce } -> std::convertible_to<int>;
    { L::keepsOld } -> std::convertible_to<bool>;
    { L::spareBytes } -> std::convertible_to<int>;
    { L::groupColumns } -> std::convertible_to<int>;
    { L::blockPixels } -> std::convertible_to<int>;
    { L::bytes(row, pixels) } -> std::same_as<ptrdiff_t>;  // of a row's first pixels
};

/// C interleaved samples a pixel, of which the first `used` carry colour; the others are not read, and keep what they
/// held. If the pixels are dealt, the block's vectors are those in memory.
template <class T, int C, int used = C, bool dealt = false>
struct Interleaved : LayoutOf<1> {
    using Sample = T;
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
struct Triple : LayoutOf<1> {
    using Sample = T;
    static constexpr int channels = 1;
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
struct Planar : LayoutOf<C> {
    using Sample = T;
    static constexpr int channels = C;
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
template <class L>
struct Reversed : L {
    template <int N>
    MOX_INLINE static auto load(const SrcRows<L::rowPointers>& rows, ptrdiff_t x) {
        return reversed(L::template load<N>(rows, x));
    }
    template <int N>
    MOX_INLINE static void store(const DstRows<L::rowPointers>& rows, ptrdiff_t x, const auto& block) {
        L::template store<N>(rows, x, reversed(block));
    }
};

/// Three channels with blue first.
template <class T>
using Bgr = Reversed<C3<T>>;

// ---- dealt pixels ---------------------------------------------------------------------------------------------------
//
// Pixels of four samples, loaded in vectors as they follow and taken apart lane by lane, leave a vector's pixels dealt
// to the lanes, so many at a time as a lane of memory holds: four bytes of each channel. A kernel whose rule takes each
// pixel by itself, or each pair of bytes, need not put them back in line before it is done: its two layouts are Dealt.

/// A layout whose blocks are dealt.
template <class L>
struct Dealt;
template <class T, int C, int used>
struct Dealt<Interleaved<T, C, used>> : Interleaved<T, C, used, true> {
    static_assert(C == 1 || C == 4);
};
template <class L>
struct Dealt<Reversed<L>> : Reversed<Dealt<L>> {};

/// Whether a layout is one of pixels of four samples.
template <class L>
inline constexpr bool fourSamples = L::planes == 1 && L::bytes(0, 1) == 4 * sizeof(typename L::Sample);

template <bool condition, class L>
using DealtIf = std::conditional_t<condition, Dealt<L>, L>;

}  // namespace q4
