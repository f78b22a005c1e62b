#include "bench/peers.h"
#include "moxcc/hsv.h"

namespace bench {

const Table hsv{
    ROW(moxiRGBToHSV_8u_C3R, CVTCOLOR(RGB2HSV_FULL)),
    ROW(moxiRGBToHSV_8u_AC4R),
    ROW(moxiRGBToHSV_16u_C3R),
    ROW(moxiRGBToHSV_16u_AC4R),
    ROW(moxiHSVToRGB_8u_C3R, CVTCOLOR(HSV2RGB_FULL)),
    ROW(moxiHSVToRGB_8u_AC4R),
    ROW(moxiHSVToRGB_16u_C3R),
    ROW(moxiHSVToRGB_16u_AC4R),
};

}  // namespace bench
