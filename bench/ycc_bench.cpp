#include "bench/peers.h"
#include "moxcc/ycc.h"

namespace bench {

const Table ycc{
    ROW(moxiRGBToYCC_8u_C3R),  ROW(moxiRGBToYCC_8u_AC4R),  ROW(moxiRGBToYCC_16u_C3R), ROW(moxiRGBToYCC_16u_AC4R),
    ROW(moxiRGBToYCC_16s_C3R), ROW(moxiRGBToYCC_16s_AC4R), ROW(moxiRGBToYCC_32f_C3R), ROW(moxiRGBToYCC_32f_AC4R),
    ROW(moxiYCCToRGB_8u_C3R),  ROW(moxiYCCToRGB_8u_AC4R),  ROW(moxiYCCToRGB_16u_C3R), ROW(moxiYCCToRGB_16u_AC4R),
    ROW(moxiYCCToRGB_16s_C3R), ROW(moxiYCCToRGB_16s_AC4R), ROW(moxiYCCToRGB_32f_C3R), ROW(moxiYCCToRGB_32f_AC4R),
};

}  // namespace bench
