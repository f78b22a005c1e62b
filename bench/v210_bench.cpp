#include "bench/peers.h"
#include "moxcc/v210.h"

namespace bench {
namespace {

// Four words for six pixels; steps in elements.
const auto words = call([](auto function, const Picture& src, const Picture& dst) {
    return function(src.data<Mox32u>(), src.step() / 4, dst.data<Mox16u>(), dst.step() / 2, dst.size);
});
const Shape pixels = shape(interleaved<Mox32u>(1), interleaved<Mox16u>(1));

}  // namespace

const Table v210{
    ROW(moxiYUV422v210ToBGR_709HDTV_32u16u_C3, pixels, words),
    ROW(moxiYUV422v210ToRGB_709HDTV_32u16u_C3, pixels, words),
    ROW(moxiYUV422v210ToGray_709HDTV_32u16u_C3C1, pixels, words),
};

}  // namespace bench
