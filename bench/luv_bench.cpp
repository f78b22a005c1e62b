#include "moxcc/luv.h"

#include "bench/peers.h"

namespace bench {

const Table luv{
    ROW(moxiRGBToLUV_8u_C3R, CVTCOLOR(RGB2Luv)),
    ROW(moxiRGBToLUV_8u_AC4R),
    ROW(moxiRGBToLUV_16u_C3R),
    ROW(moxiRGBToLUV_16u_AC4R),
    ROW(moxiRGBToLUV_16s_C3R),
    ROW(moxiRGBToLUV_16s_AC4R),
    ROW(moxiRGBToLUV_32f_C3R, CVTCOLOR(RGB2Luv)),
    ROW(moxiRGBToLUV_32f_AC4R),
    ROW(moxiBGRToLUV_8u_C3R, CVTCOLOR(BGR2Luv)),
    ROW(moxiBGRToLUV_32f_C3R, CVTCOLOR(BGR2Luv)),

    ROW(moxiLUVToRGB_8u_C3R, CVTCOLOR(Luv2RGB)),
    ROW(moxiLUVToRGB_8u_AC4R),
    ROW(moxiLUVToRGB_16u_C3R),
    ROW(moxiLUVToRGB_16u_AC4R),
    ROW(moxiLUVToRGB_16s_C3R),
    ROW(moxiLUVToRGB_16s_AC4R),
    ROW(moxiLUVToRGB_32f_C3R, range(0, 100), CVTCOLOR(Luv2RGB)),
    ROW(moxiLUVToRGB_32f_AC4R, range(0, 100)),
    ROW(moxiLUVToBGR_8u_C3R, CVTCOLOR(Luv2BGR)),
    ROW(moxiLUVToBGR_32f_C3R, range(0, 100), CVTCOLOR(Luv2BGR)),
};

}  // namespace bench
