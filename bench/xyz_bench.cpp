#include "bench/peers.h"
#include "moxcc/xyz.h"

namespace bench {

const Table xyz{
    ROW(moxiRGBToXYZ_8u_C3R, CVTCOLOR(RGB2XYZ)),
    ROW(moxiRGBToXYZ_8u_AC4R),
    ROW(moxiRGBToXYZ_16u_C3R, CVTCOLOR(RGB2XYZ)),
    ROW(moxiRGBToXYZ_16u_AC4R),
    ROW(moxiRGBToXYZ_16s_C3R),
    ROW(moxiRGBToXYZ_16s_AC4R),
    ROW(moxiRGBToXYZ_32f_C3R, CVTCOLOR(RGB2XYZ)),
    ROW(moxiRGBToXYZ_32f_AC4R),
    ROW(moxiXYZToRGB_8u_C3R, CVTCOLOR(XYZ2RGB)),
    ROW(moxiXYZToRGB_8u_AC4R),
    ROW(moxiXYZToRGB_16u_C3R, CVTCOLOR(XYZ2RGB)),
    ROW(moxiXYZToRGB_16u_AC4R),
    ROW(moxiXYZToRGB_16s_C3R),
    ROW(moxiXYZToRGB_16s_AC4R),
    ROW(moxiXYZToRGB_32f_C3R, CVTCOLOR(XYZ2RGB)),
    ROW(moxiXYZToRGB_32f_AC4R),
};

}  // namespace bench
