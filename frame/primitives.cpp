#include "frame/primitives.h"

#include <cfloat>
#include <cstring>

#include "frame/checks.h"
#include "frame/kernel.h"
#include "frame/moxcore.h"
#include "simd/extended.h"

namespace q4 {
namespace {

// ---- copy and fill --------------------------------------------------------------------------------------------------

constexpr int64_t largestFillInCache = 0x80000;

/// A fill that the largest cache cannot hold would only drive other data out of it.
void owniSet_8u_C1_Q2(Mox8u value, uint8_t* dst, int64_t len) {
    int32_t cache = 0;
    if (len <= largestFillInCache || moxGetMaxCacheSizeB(&cache) != 0 || len < cache) {
        std::memset(dst, value, size_t(len));
        return;
    }
    // Stores past the cache are of whole aligned vectors.
    const ptrdiff_t head = ptrdiff_t(-reinterpret_cast<uintptr_t>(dst) & (vectorBytes - 1));
    std::memset(dst, value, size_t(head));
    ptrdiff_t i = head;
    for (; i + vectorBytes <= len; i += vectorBytes) stream(dst + i, splat<U8>(value));
    std::memset(dst + i, value, size_t(len - i));
    storeFence();
}

// ---- sum ------------------------------------------------------------------------------------------------------------

MOX_INLINE float sampleAt(const uint8_t* row, ptrdiff_t i) {
    float x;  // rows start at any byte
    std::memcpy(&x, row + i * 4, 4);
    return x;
}

/// Four accumulators of four lanes: A in lanes 0 to 3, B in 4 to 7, C in 8 to 11, D in 12 to 15.
struct RowSum {
    static constexpr int A = 0, B = 4, C = 8, D = 12;
    alignas(vectorBytes) float lane[16] = {};

    void add(int to, const uint8_t* row, ptrdiff_t from, int n) {
        for (int i = 0; i < n; ++i) lane[to + i] += sampleAt(row, from + i);
    }
    /// Passes of 16 samples, each to its own lane; returns where they end.
    ptrdiff_t addPasses(const uint8_t* row, ptrdiff_t i, ptrdiff_t n) {
        constexpr int vectors = 16 / F32::count;
        F32 sum[vectors];
        for (int v = 0; v < vectors; ++v) {  // by fours, as they were written: a processor forwards no wider loads
            const float* fours = lane + v * F32::count;
            sum[v] = fromLanes<F32>([fours](int l) { return load128(fours + 4 * l); });
        }
        for (; i + 16 <= n; i += 16)
            for (int v = 0; v < vectors; ++v) sum[v] = sum[v] + load<F32>(row + (i + v * F32::count) * 4);
        for (int v = 0; v < vectors; ++v) store(lane + v * F32::count, sum[v]);
        return i;
    }
    void reduce(Extended& total) const {
        float v[4];
        for (int i = 0; i < 4; ++i) v[i] = (lane[A + i] + lane[B + i]) + (lane[C + i] + lane[D + i]);
        total += v[0] + v[2];
        total += v[1] + v[3];
    }
};

/// The order of additions depends on the row's address modulo 16, as that of code on aligned groups of four does.
void addRow(const uint8_t* row, ptrdiff_t n, Extended& total) {
    RowSum sum;
    ptrdiff_t i = 0;
    const int misaligned = int(reinterpret_cast<uintptr_t>(row) & 15);
    if (misaligned % 4 != 0) {
        for (; i + 4 <= n; i += 4) sum.add(RowSum::A, row, i, 4);
    } else {
        const int toAligned = (4 - misaligned / 4) % 4;
        if (n >= toAligned) {
            if (toAligned >= 2) sum.add(RowSum::A, row, 0, 2);
            if (toAligned % 2 == 1) sum.add(RowSum::B, row, toAligned - 1, 1);
            i = toAligned;
        }
        i = sum.addPasses(row, i, n);
        if (n - i >= 8) sum.add(RowSum::A, row, i, 8), i += 8;
        if (n - i >= 4) sum.add(RowSum::C, row, i, 4), i += 4;
    }
    if (n - i >= 2) sum.add(RowSum::D, row, i, 2), i += 2;
    if (n - i >= 1) sum.add(RowSum::C, row, i, 1);
    sum.reduce(total);
}

}  // namespace

MoxStatus moxiCopy_8u_C1R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize) {
    if (MoxStatus s = firstOf(notNull(src, dst), sizeAtLeast(roiSize, 1, 1))) return s;
    const bool oneRun = roiSize.width == srcStep && roiSize.width == dstStep;
    const int64_t rows = oneRun ? 1 : roiSize.height;
    const int64_t len = oneRun ? int64_t(roiSize.width) * roiSize.height : roiSize.width;
    for (ptrdiff_t y = 0; y < rows; ++y) std::memcpy(dst + y * dstStep, src + y * srcStep, size_t(len));
    return moxStatusOk;
}

MoxStatus moxiSet_8u_C1R(Mox8u value, Mox8u* dst, int32_t dstStep, MoxiSize roiSize) {
    if (MoxStatus s = firstOf(notNull(dst), sizeAtLeast(roiSize, 1, 1))) return s;
    const bool oneRun = roiSize.width == dstStep;
    const int64_t rows = oneRun ? 1 : roiSize.height;
    const int64_t len = oneRun ? int64_t(roiSize.width) * roiSize.height : roiSize.width;
    for (ptrdiff_t y = 0; y < rows; ++y) owniSet_8u_C1_Q2(value, dst + y * dstStep, len);
    return moxStatusOk;
}

MoxStatus moxiMax_32f_C1R(const Mox32f* src, int32_t srcStep, MoxiSize roiSize, Mox32f* result) {
    if (MoxStatus s = firstOf(notNull(src, result), sizeAtLeast(roiSize, 1, 1))) return s;
    constexpr int vectors = 4;
    F32 most[vectors];
    for (F32& m : most) m = splat<F32>(-FLT_MAX);
    float best = -FLT_MAX;
    for (ptrdiff_t y = 0; y < roiSize.height; ++y) {
        const uint8_t* row = image(src, srcStep).row(y).p[0];
        ptrdiff_t i = 0;
        // MAXPS gives its second operand for a NaN: the greatest so far stays.
        for (; i + vectors * F32::count <= roiSize.width; i += vectors * F32::count)
            for (int v = 0; v < vectors; ++v) most[v] = max(load<F32>(row + (i + v * F32::count) * 4), most[v]);
        for (; i < roiSize.width; ++i)
            if (const float x = sampleAt(row, i); x > best) best = x;
    }
    for (const F32& m : most) {
        float lane[F32::count];
        store(lane, m);
        for (const float x : lane)
            if (x > best) best = x;
    }
    *result = best;
    return moxStatusOk;
}

MoxStatus moxiSum_32f_C1R(const Mox32f* src, int32_t srcStep, MoxiSize roiSize, Mox64f* result) {
    if (MoxStatus s = firstOf(notNull(src, result), sizeAtLeast(roiSize, 1, 1))) return s;
    Extended total{};
    for (ptrdiff_t y = 0; y < roiSize.height; ++y) addRow(image(src, srcStep).row(y).p[0], roiSize.width, total);
    *result = static_cast<Mox64f>(total);
    return moxStatusOk;
}

MoxStatus moxiMean_32f_C1R(const Mox32f* src, int32_t srcStep, MoxiSize roiSize, Mox64f* result) {
    if (!result) return moxStatusNullPtr;
    Mox64f sum;
    if (MoxStatus s = moxiSum_32f_C1R(src, srcStep, roiSize, &sum)) return s;
    const int32_t count = int32_t(uint32_t(roiSize.width) * uint32_t(roiSize.height));
    *result = sum / count;
    return moxStatusOk;
}

}  // namespace q4
