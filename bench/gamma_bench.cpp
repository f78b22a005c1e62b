#include <cmath>

#include "bench/peers.h"
#include "moxcc/gamma.h"

namespace bench {
namespace {

#if MOXCC_BENCH_OPENCV
cv::Mat gammaTable() {
    cv::Mat table(1, 256, CV_8U);
    for (int i = 0; i < 256; ++i) table.at<uint8_t>(i) = cv::saturate_cast<uint8_t>(255 * std::pow(i / 255.0, 0.45));
    return table;
}
#endif

void powers(const Picture& src, const Picture& dst, float exponent) {
    for (int y = 0; y < src.size.height; ++y) {
        const float* const from = src.data<float>() + ptrdiff_t(y) * src.step() / 4;
        float* const to = dst.data<float>() + ptrdiff_t(y) * dst.step() / 4;
        for (int x = 0; x < src.size.width * src.layout.channels; ++x) to[x] = std::pow(from[x], exponent);
    }
}

}  // namespace

// The table's entries make no difference.
#define LUT OPENCV([table = gammaTable()](const cv::Mat& src, cv::Mat& dst) { cv::LUT(src, table, dst); })

// The power alone, without the line and the range.
#define POW(exponent)  OPENCV([](const cv::Mat& src, cv::Mat& dst) { cv::pow(src, exponent, dst); })
#define POWF(exponent) PEER("powf", [](const Picture& src, const Picture& dst) { powers(src, dst, exponent); })

const Table gamma{
    ROW(moxiGammaFwd_8u_C3R, LUT),
    ROW(moxiGammaFwd_8u_AC4R, LUT),
    ROW(moxiGammaFwd_8u_P3R),
    ROW(moxiGammaInv_8u_C3R, LUT),
    ROW(moxiGammaFwd_16u_C3R),
    ROW(moxiGammaFwd_16u_AC4R),
    ROW(moxiGammaInv_16u_P3R),

    ROW(moxiGammaFwd_32f_C3R, with(0.0f, 1.0f), POWF(0.45f), POW(0.45)),
    ROW(moxiGammaFwd_32f_AC4R, with(0.0f, 1.0f), POWF(0.45f), POW(0.45)),
    ROW(moxiGammaFwd_32f_P3R, with(0.0f, 1.0f)),
    ROW(moxiGammaInv_32f_C3R, with(0.0f, 1.0f), POWF(1 / 0.45f), POW(1 / 0.45)),
    ROW(moxiGammaInv_32f_AC4R, with(0.0f, 1.0f), POWF(1 / 0.45f), POW(1 / 0.45)),
    ROW(moxiGammaInv_32f_P3R, with(0.0f, 1.0f)),
};

}  // namespace bench
