#include "moxcc/lab.h"

#include "bench/peers.h"

namespace bench {

const Table lab{
    ROW(moxiRGBToLab_8u_C3R, CVTCOLOR(RGB2Lab)),
    ROW(moxiBGRToLab_8u_C3R, CVTCOLOR(BGR2Lab)),
    ROW(moxiBGRToLab_8u16u_C3R),
    ROW(moxiRGBToLab_32f_C3R, CVTCOLOR(RGB2Lab)),
    ROW(moxiBGRToLab_32f_C3R, CVTCOLOR(BGR2Lab)),
    ROW(moxiRGBToLab_32f_P3R),
    ROW(moxiRGBToLab_64f_P3R),

    ROW(moxiLabToRGB_8u_C3R, CVTCOLOR(Lab2RGB)),
    ROW(moxiLabToBGR_8u_C3R, CVTCOLOR(Lab2BGR)),
    ROW(moxiLabToBGR_16u8u_C3R),
    ROW(moxiLabToRGB_32f_C3R, range(0, 100), CVTCOLOR(Lab2RGB)),
    ROW(moxiLabToBGR_32f_C3R, range(0, 100), CVTCOLOR(Lab2BGR)),
    ROW(moxiLabToRGB_32f_P3R, range(0, 100)),
    ROW(moxiLabToRGB_64f_P3R, range(0, 100)),
};

}  // namespace bench
