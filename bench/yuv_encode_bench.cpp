#include "bench/peers.h"
#include "moxcc/yuv_encode.h"

namespace bench {

// The peers' full range has chroma of a little larger scale, which costs the same.
const Table yuvEncode{
    ROW(moxiRGBToYUV422_8u_C3C2R), ROW(moxiRGBToYUV422_8u_C3P3R, SWSCALE(RGB24, YUVJ422P)),
    ROW(moxiRGBToYUV422_8u_C3P3),  ROW(moxiRGBToYUV422_8u_P3R),
    ROW(moxiRGBToYUV422_8u_P3),    ROW(moxiRGBToYUV420_8u_C3P3R, LIBYUV(RAWToJ420), SWSCALE(RGB24, YUVJ420P)),
    ROW(moxiRGBToYUV420_8u_C3P3),  ROW(moxiRGBToYUV420_8u_P3R),
    ROW(moxiRGBToYUV420_8u_P3),    ROW(moxiBGRToYUV420_8u_AC4P3R, LIBYUV(ARGBToJ420), SWSCALE(BGRA, YUVJ420P)),
};

}  // namespace bench
