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

const Mox32f gains[] = {1.7f, 1.0f, 2.1f};

}  // namespace

// OpenCV names a pattern by the second and third site of the second row: its BG is RGGB. Peers in a row: bilinear,
// edge-aware.
const Table demosaic{
    ROW(moxiCFAToRGB_8u_C1C3R, with(moxBayerGridRGGB), CVTCOLOR(BayerBG2RGB)),
    ROW(moxiCFAToRGB_8u_C1C3R, with(moxBayerGridRGGB), CVTCOLOR(BayerBG2RGB_EA)),
    ROW(moxiCFAToRGB_16u_C1C3R, with(moxBayerGridRGGB), CVTCOLOR(BayerBG2RGB)),
    ROW(moxiCFAToRGB_16u_C1C3R, with(moxBayerGridRGGB), CVTCOLOR(BayerBG2RGB_EA)),
    ROW(moxiCFAToBGRA_VNG_8u_C1C4R_L, vng<Mox8u>(nullptr), CVTCOLOR(BayerBG2BGR_VNG)),
    ROW(moxiCFAToBGRA_VNG_8u_C1C4R_L, vng<Mox8u>(gains)),
    ROW(moxiCFAToBGRA_VNG_16u_C1C4R_L, vng<Mox16u>(nullptr)),
};

}  // namespace bench
