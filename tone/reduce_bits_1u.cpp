// Reduction of 8-bit images to one bit a pixel.
#include <algorithm>

#include "frame/entry.h"
#include "moxcc/reduce_bits.h"
#include "simd/interleave.h"
#include "tone/dither.h"

namespace q4 {
namespace {

// ---- bits of a row --------------------------------------------------------------------------------------------------

/// Bits by a threshold.
struct Above {
    const Mox8u* src;
    Mox8u threshold;

    bool bit(ptrdiff_t x) { return src[x] > threshold; }

    /// The bits of whole blocks of columns x to end - 1; where that ends.
    ptrdiff_t blocks(uint8_t*& dst, ptrdiff_t x, ptrdiff_t end) const {
        const U8 firstOnTop = elementOrder<1>([](int e) { return e ^ 7; });
        for (; x + vectorBytes <= end; x += vectorBytes, dst += vectorBytes / 8) {
            const U8 excess = subs(load<U8>(src + x), splat<U8>(threshold));
            const ByteBits bits = ~topBits(shuffle(eq(excess, zero<U8>()), firstOnTop));
            std::memcpy(dst, &bits, vectorBytes / 8);
        }
        return x;
    }
};

/// Bits by Stucki's error diffusion, in integers: an error of a sample unit is 8, white is 2047.
struct Diffused {
    const int32_t* sums;  // of sample and errors of the rows above, for all columns, in units of 1 / 1024
    int32_t threshold;    // in their unit
    int32_t* errors;      // of this row, with two columns before it; may lie where the sums do

    bool bit(ptrdiff_t x) {
        const int32_t sum =
            int32_t(uint32_t(sums[x]) + 23 * (4 * uint32_t(errors[x - 2]) + 8 * uint32_t(errors[x - 1])));
        const bool white = sum > threshold;
        errors[x] = (sum >> 10) - (white ? 2047 : 0);
        return white;
    }

    ptrdiff_t blocks(uint8_t*&, ptrdiff_t x, ptrdiff_t) const { return x; }
};

/// Sample and errors of the rows above for all columns of a row; `above2` and `above` have two columns on either side.
/// Sums wrap at 32 bits.
void sumAbove(const Mox8u* src, const int32_t* above2, const int32_t* above, int32_t* sums, ptrdiff_t width) {
    for (ptrdiff_t x = 0; x < width; ++x) {
        const auto a = [&](int i) { return uint32_t(above2[x + i]); };
        const auto b = [&](int i) { return uint32_t(above[x + i]); };
        sums[x] = int32_t(src[x] * 8192 + 23 * (a(-2) + a(2) + 2 * (a(-1) + a(1) + b(-2) + b(2)) +
                                                4 * (a(0) + b(-1) + b(1)) + 8 * b(0)));
    }
}

/// Packs n bits, from column x on, into the top of a byte.
template <class Bits>
uint8_t pack(Bits& bits, ptrdiff_t x, ptrdiff_t n) {
    unsigned byte = 0;
    for (ptrdiff_t i = 0; i < n; ++i) byte |= unsigned(bits.bit(x + i)) << (7 - i);
    return uint8_t(byte);
}

/// Writes a row from bit `offset` of its first byte on.
template <class Bits>
void writeBits(Bits bits, uint8_t* dst, int offset, ptrdiff_t width) {
    ptrdiff_t x = 0;
    if (offset != 0) {  // the bits before the row stay, all others of the byte are replaced
        x = std::min<ptrdiff_t>(8 - offset, width);
        *dst = uint8_t((*dst & ~(0xFF >> offset)) | pack(bits, 0, x) >> offset);
        ++dst;
    }
    x = bits.blocks(dst, x, width);
    for (; x + 8 <= width; x += 8) *dst++ = pack(bits, x, 8);
    if (x < width) *dst = uint8_t(pack(bits, x, width - x) | (*dst & 0xFF >> (width - x)));
}

// ---- entries --------------------------------------------------------------------------------------------------------

struct Bitmap {
    Mox8u* base;
    ptrdiff_t step;
    int offset;
    template <class Bits>
    void writeRow(ptrdiff_t y, const Bits& bits, ptrdiff_t width) const {
        writeBits(bits, base + y * step, offset, width);
    }
};

void diffuse(const Mox8u* src, ptrdiff_t srcStep, const Bitmap& dst, MoxiSize size, Mox8u threshold, Mox8u* buffer) {
    const ptrdiff_t entries = size.width + 4;
    int32_t* const rows = reinterpret_cast<int32_t*>(workspace(buffer));
    std::fill(rows, rows + 3 * entries, 0);
    int32_t *above2 = rows + 2, *above = above2 + entries, *current = above + entries;
    for (ptrdiff_t y = 0; y < size.height; ++y) {
        sumAbove(src + y * srcStep, above2, above, current, size.width);
        dst.writeRow(y, Diffused{current, threshold * 8192, current}, size.width);
        std::swap(above2, above);
        std::swap(above, current);
    }
}

MoxStatus reduceToBits(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, int32_t dstBitOffset,
                       MoxiSize roiSize, int32_t, int32_t, MoxDitherType ditherType, Mox8u threshold, Mox8u* buffer) {
    if (MoxStatus s = firstOf(
            notNull(src, dst), sizeAtLeast(roiSize, 1, 1), require([=] { return dstBitOffset >= 0; }, moxStatusBadSize),
            require([=] { return ditherType == moxDitherNone || ditherType == moxDitherSt; }, moxStatusBadDitherType),
            require([=] { return buffer || ditherType == moxDitherNone; }, moxStatusNullPtr)))
        return s;
    const Bitmap bitmap = {dst, dstStep, dstBitOffset & 7};
    if (ditherType == moxDitherSt) {
        diffuse(src, srcStep, bitmap, roiSize, threshold, buffer);
    } else {
        for (ptrdiff_t y = 0; y < roiSize.height; ++y)
            bitmap.writeRow(y, Above{src + y * ptrdiff_t(srcStep), threshold}, roiSize.width);
    }
    return moxStatusOk;
}

}  // namespace

template <>
constexpr auto entry<moxiReduceBits_8u1u_C1R> = reduceToBits;

}  // namespace q4

#include "reduce_bits_1u.inc"
