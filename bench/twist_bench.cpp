#include "bench/peers.h"
#include "moxcc/twist.h"

namespace bench {
namespace {

const Mox32f matrix[] = {0.9f, 0.05f, 0.05f, 3, 0.1f, 0.8f, 0.1f, -2, 0, 0.1f, 0.9f, 1, 0.1f, 0.2f, 0.3f, 0.4f};
[[maybe_unused]] const float* const twist = matrix;

}  // namespace

const Table twists{
    ROW(moxiColorTwist32f_8u_C3R, with(matrix), TRANSFORM(cv::Matx34f(twist))),
    ROW(moxiColorTwist32f_8u_AC4R, with(matrix)),
    ROW(moxiColorTwist32f_8u_P3R, with(matrix)),
    ROW(moxiColorTwist32f_16u_C3R, with(matrix), TRANSFORM(cv::Matx34f(twist))),
    ROW(moxiColorTwist32f_16u_AC4R, with(matrix)),
    ROW(moxiColorTwist32f_16s_C3R, with(matrix), TRANSFORM(cv::Matx34f(twist))),
    ROW(moxiColorTwist32f_16s_P3R, with(matrix)),
    ROW(moxiColorTwist_32f_C3R, with(matrix), TRANSFORM(cv::Matx34f(twist))),
    ROW(moxiColorTwist_32f_AC4R, with(matrix)),
    ROW(moxiColorTwist_32f_P3R, with(matrix)),
    ROW(moxiColorTwist_32f_C4R, with(matrix), TRANSFORM(cv::Matx44f(twist))),
};

}  // namespace bench
