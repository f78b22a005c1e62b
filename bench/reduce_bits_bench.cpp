#include <algorithm>
#include <vector>

#include "bench/peers.h"
#include "moxcc/reduce_bits.h"

namespace bench {
namespace {

/// Scratch memory for every method at any usual width.
alignas(64) Mox8u buffer[1 << 18];

constexpr int plain = moxDitherNone, ordered = moxDitherBayer;

#if MOXCC_BENCH_OPENCV
/// Eight levels by table.
const Peer lookUp = OPENCV([](const cv::Mat& src, cv::Mat& dst) {
    static const cv::Mat table = [] {
        cv::Mat levels(1, 256, CV_8U);
        for (int i = 0; i < 256; ++i) levels.at<uchar>(i) = uchar((i * 7 + 127) / 255 * 255 / 7);
        return levels;
    }();
    cv::LUT(src, table, dst);
});
#else
const Peer lookUp;
#endif

/// Floyd and Steinberg's filter to eight levels, row by row.
const Peer rowByRow = PEER("plain loop", [](const Picture& src, const Picture& dst) {
    const int width = src.size.width;
    std::vector<float> above(size_t(width) + 2), errors(size_t(width) + 2);
    constexpr float step = 255.0f / 7, invStep = 7 / 255.0f;
    for (int y = 0; y < src.size.height; ++y) {
        const Mox8u* const from = src.data<Mox8u>() + ptrdiff_t(y) * src.step();
        Mox8u* const to = dst.data<Mox8u>() + ptrdiff_t(y) * dst.step();
        for (int x = 0; x < width; ++x) {
            const float *p = &above[size_t(x)], *c = &errors[size_t(x)];
            const float v = float(from[x]) + (3 * p[2] + p[0] + 5 * p[1] + 7 * c[0]) * 0.0625f;
            float level = std::clamp(v, 0.0f, 255.0f) * invStep;
            level = float(int(level + 0.5f)) * step;
            errors[size_t(x) + 1] = v - level;
            to[x] = Mox8u(level);
        }
        above.swap(errors);
    }
});

}  // namespace

// noise, method, levels, buffer
const Table reduceBits{
    ROW(moxiReduceBits_8u_C1R, also("plain"), with(0, plain, 8, buffer), lookUp),
    ROW(moxiReduceBits_8u_C3R, also("plain"), with(0, plain, 8, buffer), lookUp),
    ROW(moxiReduceBits_8u_AC4R, also("plain"), with(0, plain, 8, buffer)),
    ROW(moxiReduceBits_16u_C1R, also("plain"), with(0, plain, 256, buffer)),
    ROW(moxiReduceBits_16u8u_C3R, also("plain"), with(0, plain, 256, buffer)),
    ROW(moxiReduceBits_32f8u_C1R, also("plain"), with(0, plain, 256, buffer)),

    ROW(moxiReduceBits_8u_C1R, also("ordered"), with(0, ordered, 8, buffer)),
    ROW(moxiReduceBits_8u_C3R, also("ordered"), with(0, ordered, 8, buffer)),
    ROW(moxiReduceBits_8u_C4R, also("ordered"), with(0, ordered, 8, buffer)),
    ROW(moxiReduceBits_8u_AC4R, also("ordered"), with(0, ordered, 8, buffer)),
    ROW(moxiReduceBits_16s_C1R, also("ordered"), with(0, ordered, 256, buffer)),
    ROW(moxiReduceBits_16u8u_C3R, also("ordered"), with(0, ordered, 256, buffer)),
    ROW(moxiReduceBits_32f8u_C3R, also("ordered"), with(0, ordered, 256, buffer)),
    ROW(moxiReduceBits_32f16s_AC4R, also("ordered"), with(0, ordered, 256, buffer)),
    ROW(moxiReduceBits_8u_C1R, also("ordered, noise"), with(20, ordered, 8, buffer)),
    ROW(moxiReduceBits_8u_C3R, also("ordered, noise"), with(20, ordered, 8, buffer)),

    ROW(moxiReduceBits_8u_C1R, also("Floyd"), with(0, moxDitherFs, 8, buffer), rowByRow),
    ROW(moxiReduceBits_8u_C3R, also("Floyd"), with(0, moxDitherFs, 8, buffer)),
    ROW(moxiReduceBits_16u8u_C1R, also("Floyd"), with(0, moxDitherFs, 8, buffer)),
    ROW(moxiReduceBits_32f8u_C1R, also("Floyd"), with(0, moxDitherFs, 8, buffer)),
    ROW(moxiReduceBits_8u_C1R, also("Floyd, noise"), with(20, moxDitherFs, 8, buffer)),
    ROW(moxiReduceBits_8u_C1R, also("Jarvis"), with(0, moxDitherJj, 8, buffer)),
    ROW(moxiReduceBits_8u_C1R, also("Stucki"), with(0, moxDitherSt, 8, buffer)),
    ROW(moxiReduceBits_8u_C1R, also("Stucki, noise"), with(20, moxDitherSt, 8, buffer)),

    ROW(moxiReduceBits_8u1u_C1R, also("plain"), call([](auto* reduce, const Picture& src, const Picture& dst) {
            return reduce(src.data<Mox8u>(), src.step(), dst.data<Mox8u>(), dst.step(), 0, src.size, 0, 0, plain, 127,
                          buffer);
        }),
        SWSCALE(GRAY8, MONOBLACK)),
    ROW(moxiReduceBits_8u1u_C1R, also("Stucki"), call([](auto* reduce, const Picture& src, const Picture& dst) {
            return reduce(src.data<Mox8u>(), src.step(), dst.data<Mox8u>(), dst.step(), 0, src.size, 0, 0, moxDitherSt,
                          127, buffer);
        })),
};

}  // namespace bench
