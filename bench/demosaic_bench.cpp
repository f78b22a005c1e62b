#include "bench/peers.h"
#include "moxcc/demosaic.h"

namespace bench {
namespace {

// Without gains, or with some.
template <class T>
auto vng(const Mox32f* scale) {
    return call([=](auto function, const Picture& src, const Picture& dst) {
        return function(src.data<T>(), {0, 0, src.size.width, src.size.height}, src.size, src.step(), scale,
                        dst.data<T>(), dst.step(), moxBayerGridRGGB);
    });
}

// With scratch of 30 rows.
template <class T>
auto ahd() {
    return call([](auto function, const Picture& src, const Picture& dst) {
        const int32_t step = (src.size.width + 8) * int32_t(sizeof(T));
        static std::vector<Mox8u> buffer;
        buffer.resize(size_t(step) * 30);
        return function(src.data<T>(), {0, 0, src.size.width, src.size.height}, src.size, src.step(), dst.data<T>(),
                        dst.step(), moxBayerGridRGGB, buffer.data(), step);
    });
}

const Mox32f gains[] = {1.7f, 1.0f, 2.1f};

}  // namespace

// OpenCV names a pattern by the second and third site of the second row: its BG is RGGB. It has no homogeneity-directed
// method; the peer of that one is its best method.
const Table demosaic{
    ROW(moxiCFAToRGB_8u_C1C3R, with(moxBayerGridRGGB), CVTCOLOR(BayerBG2RGB)),
    ROW(moxiCFAToRGB_8u_C1C3R, with(moxBayerGridRGGB), CVTCOLOR(BayerBG2RGB_EA)),
    ROW(moxiCFAToRGB_16u_C1C3R, with(moxBayerGridRGGB), CVTCOLOR(BayerBG2RGB)),
    ROW(moxiCFAToRGB_16u_C1C3R, with(moxBayerGridRGGB), CVTCOLOR(BayerBG2RGB_EA)),
    ROW(moxiCFAToBGRA_VNG_8u_C1C4R_L, vng<Mox8u>(nullptr), CVTCOLOR(BayerBG2BGR_VNG)),
    ROW(moxiCFAToBGRA_VNG_8u_C1C4R_L, vng<Mox8u>(gains)),
    ROW(moxiCFAToBGRA_VNG_16u_C1C4R_L, vng<Mox16u>(nullptr)),
    ROW(moxiDemosaicAHD_8u_C1C3R, ahd<Mox8u>(), CVTCOLOR(BayerBG2RGB_VNG)),
    ROW(moxiDemosaicAHD_16u_C1C3R, ahd<Mox16u>()),
};

}  // namespace bench
