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

}  // namespace

// The table's entries make no difference.
#define LUT OPENCV([table = gammaTable()](const cv::Mat& src, cv::Mat& dst) { cv::LUT(src, table, dst); })

const Table gamma{
    ROW(moxiGammaFwd_8u_C3R, LUT), ROW(moxiGammaFwd_8u_AC4R, LUT), ROW(moxiGammaFwd_8u_P3R),
    ROW(moxiGammaInv_8u_C3R, LUT), ROW(moxiGammaFwd_16u_C3R),      ROW(moxiGammaFwd_16u_AC4R),
    ROW(moxiGammaInv_16u_P3R),
};

}  // namespace bench
