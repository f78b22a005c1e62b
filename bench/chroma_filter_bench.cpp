#include "bench/peers.h"
#include "moxcc/chroma_filter.h"

namespace bench {

const Table chromaFilter{
    ROW(moxiYCbCr422To420_Interlace_8u_P3R),
    ROW(moxiCbYCr422ToYCbCr420_Interlace_8u_C2P3R),
    ROW(moxiYCbCr420To422_Interlace_8u_P3R),
    ROW(moxiYCbCr420ToCbYCr422_Interlace_8u_P3C2R),
    ROW(moxiYCbCr420ToYCbCr422_Filter_8u_P3R),
    ROW(moxiYCrCb420ToYCbCr422_Filter_8u_P3R),
    ROW(moxiYCbCr420ToYCbCr422_Filter_8u_P2P3R),
    ROW(moxiYCbCr420ToYCbCr422_Filter_8u_P2C2R, with(moxSliceAll)),
    ROW(moxiYCbCr420ToYCrCb420_Filter_8u_P2P3R, with(moxSliceAll)),
    // libyuv's and swscale's do not interpolate chroma.
    ROW(moxiYCrCb420ToBGR_Filter_8u_P3C4R, with(255), LIBYUV(I420ToARGB), SWSCALE(YUV420P, BGRA)),
};

}  // namespace bench
