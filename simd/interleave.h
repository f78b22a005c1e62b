// Interleaved pixels to one vector a channel, and back. Each lane is handled by itself: it holds as many whole pixels
// as it has samples of one channel.
#pragma once

#include "simd/vec.h"

namespace q4 {

/// A shuffle order made by a rule: element e of a lane comes from element from(e).
template <int size, class From>
MOX_INLINE U8 elementOrder(From from) {
    return [&]<int... b>(std::integer_sequence<int, b...>) { return pattern((from(b / size) * size + b % size)...); }
    (std::make_integer_sequence<int, 16>());
}

/// A mask of the elements e of a lane for which in(e) holds.
template <class T, class In>
MOX_INLINE Vec<T> elementMask(In in) {
    return [&]<int... b>(std::integer_sequence<int, b...>) {
        return pattern<Vec<T>>((in(b / int(sizeof(T))) ? 0xFF : 0)...);
    }
    (std::make_integer_sequence<int, 16>());
}

// ---- two channels ---------------------------------------------------------------------------------------------------

template <class T>
MOX_INLINE void deinterleave(const Vec<T> (&reg)[2], Vec<T> (&channel)[2]) {
    constexpr int half = 8 / int(sizeof(T));
    const U8 order = elementOrder<sizeof(T)>([](int e) { return e % half * 2 + e / half; });
    const Vec<T> a = shuffle(reg[0], order), b = shuffle(reg[1], order);
    channel[0] = unpackLo<64>(a, b), channel[1] = unpackHi<64>(a, b);
}

template <class T>
MOX_INLINE void interleave(const Vec<T> (&channel)[2], Vec<T> (&reg)[2]) {
    const Vec<T> lo = unpackLo<8 * sizeof(T)>(channel[0], channel[1]);
    reg[1] = unpackHi<8 * sizeof(T)>(channel[0], channel[1]), reg[0] = lo;
}

// ---- three channels -------------------------------------------------------------------------------------------------
//
// Three registers of E elements hold E pixels; element i of all belongs to channel i % 3. In every register the
// elements of a channel are those of one residue modulo 3, and over the three registers the residues of a channel
// differ: two blends bring all its elements into one register, a shuffle sorts them.

/// b where the element's index is r modulo 3, a elsewhere.
template <int r, class T>
MOX_INLINE Vec<T> takeResidue(Vec<T> a, Vec<T> b) {
    constexpr auto inResidue = [](int elementBytes) {
        int bits = 0;
        for (int i = 0; i < 16 / elementBytes; ++i) bits |= (i * elementBytes / int(sizeof(T)) % 3 == r) << i;
        return bits;
    };
    if constexpr (sizeof(T) == 1)
        return blend8<inResidue(1)>(a, b);
    else
        return blend16<inResidue(2)>(a, b);
}

template <class T>
inline constexpr int laneElements = 16 / int(sizeof(T));
/// The residue, within register reg, of the elements that belong to channel k.
template <class T>
inline constexpr int residue(int k, int reg) {
    return (k + 3 - reg * laneElements<T> % 3) % 3;
}

template <int k, class T>
MOX_INLINE Vec<T> gatherChannel(const Vec<T> (&reg)[3]) {
    const Vec<T> mixed = takeResidue<residue<T>(k, 2)>(takeResidue<residue<T>(k, 1)>(reg[0], reg[1]), reg[2]);
    return shuffle(mixed, elementOrder<sizeof(T)>([](int p) { return (3 * p + k) % laneElements<T>; }));
}

template <class T>
MOX_INLINE void deinterleave(const Vec<T> (&reg)[3], Vec<T> (&channel)[3]) {
    if constexpr (sizeof(T) == 4) {  // a shuffle that takes pairs from two registers leaves fewer blends
        const Vec<T> x0y0z0x1 = reg[0], y1z1x2y2 = reg[1], z2x3y3z3 = reg[2];
        const Vec<T> x3x2 = takeResidue<1>(y1z1x2y2, z2x3y3z3);
        const Vec<T> y1y0 = takeResidue<1>(y1z1x2y2, x0y0z0x1), y3y2 = takeResidue<2>(y1z1x2y2, z2x3y3z3);
        const Vec<T> z1z0 = takeResidue<2>(y1z1x2y2, x0y0z0x1);
        channel[0] = shufflePairs32<0, 3, 2, 1>(x0y0z0x1, x3x2);
        channel[1] = shufflePairs32<1, 0, 3, 2>(y1y0, y3y2);
        channel[2] = shufflePairs32<2, 1, 0, 3>(z1z0, z2x3y3z3);
        return;
    }
    const Vec<T> c0 = gatherChannel<0>(reg), c1 = gatherChannel<1>(reg), c2 = gatherChannel<2>(reg);
    channel[0] = c0, channel[1] = c1, channel[2] = c2;
}

template <int k, class T>
MOX_INLINE Vec<T> scatterOrder(Vec<T> channel) {
    return shuffle(channel, elementOrder<sizeof(T)>([](int i) {
                       int p = 0;
                       while ((3 * p + k) % laneElements<T> != i) ++p;
                       return p;
                   }));
}

template <class T>
MOX_INLINE void interleave(const Vec<T> (&channel)[3], Vec<T> (&reg)[3]) {
    if constexpr (sizeof(T) == 4) {
        const Vec<T> x = channel[0], y = channel[1], z = channel[2];
        const Vec<T> zx = blend16<0xCC>(z, x);  // z0 x1 z2 x3
        reg[0] = shufflePairs32<0, 1, 0, 1>(unpackLo<32>(x, y), zx);
        reg[1] = shufflePairs32<2, 3, 0, 1>(unpackLo<32>(y, z), unpackHi<32>(x, y));
        reg[2] = shufflePairs32<2, 3, 2, 3>(zx, unpackHi<32>(y, z));
        return;
    }
    const Vec<T> c0 = scatterOrder<0>(channel[0]), c1 = scatterOrder<1>(channel[1]), c2 = scatterOrder<2>(channel[2]);
    reg[0] = takeResidue<residue<T>(2, 0)>(takeResidue<residue<T>(1, 0)>(c0, c1), c2);
    reg[1] = takeResidue<residue<T>(2, 1)>(takeResidue<residue<T>(1, 1)>(c0, c1), c2);
    reg[2] = takeResidue<residue<T>(2, 2)>(takeResidue<residue<T>(1, 2)>(c0, c1), c2);
}

// ---- four channels --------------------------------------------------------------------------------------------------
//
// Within each register the elements are sorted by channel, then a transposition collects each channel's parts.

template <class T>
MOX_INLINE void transpose4(const Vec<T> (&in)[4], Vec<T> (&out)[4]) {
    if constexpr (sizeof(T) == 8) {
        const Vec<T> a = in[0], b = in[1], c = in[2], d = in[3];
        out[0] = unpackLo<64>(a, c), out[1] = unpackHi<64>(a, c);
        out[2] = unpackLo<64>(b, d), out[3] = unpackHi<64>(b, d);
    } else {
        const Vec<T> ab = unpackLo<32>(in[0], in[1]), cd = unpackLo<32>(in[2], in[3]);
        const Vec<T> ef = unpackHi<32>(in[0], in[1]), gh = unpackHi<32>(in[2], in[3]);
        out[0] = unpackLo<64>(ab, cd), out[1] = unpackHi<64>(ab, cd);
        out[2] = unpackLo<64>(ef, gh), out[3] = unpackHi<64>(ef, gh);
    }
}

/// Of a table of rows of four floats, the rows that start at the indices, as four columns.
MOX_INLINE void gatherRows(const float* table, I32 index, F32 (&column)[4]) {
    const auto rowsAt = [&]<int which, int shift>() {
        return fromLanes<F32>(
            [&](auto lane) { return load128(table + uint32_t(half<which>(laneOf<lane>(index)) >> shift)); });
    };
    const F32 rows[4] = {rowsAt.template operator()<0, 0>(), rowsAt.template operator()<0, 32>(),
                         rowsAt.template operator()<1, 0>(), rowsAt.template operator()<1, 32>()};
    transpose4(rows, column);
}

template <class T>
MOX_INLINE void deinterleave(const Vec<T> (&reg)[4], Vec<T> (&channel)[4]) {
    if constexpr (sizeof(T) >= 4) {
        transpose4(reg, channel);
    } else {
        constexpr int pixels = laneElements<T> / 4;
        const U8 order = elementOrder<sizeof(T)>([](int e) { return e % pixels * 4 + e / pixels; });
        const Vec<T> sorted[4] = {shuffle(reg[0], order), shuffle(reg[1], order), shuffle(reg[2], order),
                                  shuffle(reg[3], order)};
        transpose4(sorted, channel);
    }
}

template <class T>
MOX_INLINE void interleave(const Vec<T> (&channel)[4], Vec<T> (&reg)[4]) {
    if constexpr (sizeof(T) == 8) {
        reg[0] = unpackLo<64>(channel[0], channel[1]), reg[1] = unpackLo<64>(channel[2], channel[3]);
        reg[2] = unpackHi<64>(channel[0], channel[1]), reg[3] = unpackHi<64>(channel[2], channel[3]);
    } else if constexpr (sizeof(T) == 4) {
        transpose4(channel, reg);
    } else if constexpr (sizeof(T) == 2) {
        const Vec<T> lo01 = unpackLo<16>(channel[0], channel[1]), lo23 = unpackLo<16>(channel[2], channel[3]);
        const Vec<T> hi01 = unpackHi<16>(channel[0], channel[1]), hi23 = unpackHi<16>(channel[2], channel[3]);
        reg[0] = unpackLo<32>(lo01, lo23), reg[1] = unpackHi<32>(lo01, lo23);
        reg[2] = unpackLo<32>(hi01, hi23), reg[3] = unpackHi<32>(hi01, hi23);
    } else {
        const Vec<T> lo01 = unpackLo<8>(channel[0], channel[1]), lo23 = unpackLo<8>(channel[2], channel[3]);
        const Vec<T> hi01 = unpackHi<8>(channel[0], channel[1]), hi23 = unpackHi<8>(channel[2], channel[3]);
        reg[0] = unpackLo<16>(lo01, lo23), reg[1] = unpackHi<16>(lo01, lo23);
        reg[2] = unpackLo<16>(hi01, hi23), reg[3] = unpackHi<16>(hi01, hi23);
    }
}

/// A mask of the fourth channel's elements in interleaved registers.
template <class T>
MOX_INLINE Vec<T> fourthMask(int firstElement = 0) {
    return elementMask<T>([&](int e) { return (e + firstElement) % 4 == 3; });
}

}  // namespace q4
