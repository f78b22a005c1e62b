#include "bench/peers.h"
#include "moxcc/tonemap.h"

namespace bench {

const Table toneMap{
    ROW(moxiToneMapLinear_32f8u_C1R, range(0, 40), OPENCV([](const cv::Mat& src, cv::Mat& dst) {
            double highest;
            cv::minMaxLoc(src, nullptr, &highest);
            src.convertTo(dst, CV_8U, 255 / highest);
        })),
    ROW(moxiToneMapMean_32f8u_C1R, range(0, 40),
        OPENCV([](const cv::Mat& src, cv::Mat& dst) { src.convertTo(dst, CV_8U, 255 / (2 * cv::mean(src)[0])); })),
};

}  // namespace bench
