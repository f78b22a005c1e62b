#include "bench/peers.h"
#include "moxcc/ycocg.h"

namespace bench {

const Table ycocg{
    ROW(moxiBGRToYCoCg_8u16s_C3P3R),
    ROW(moxiBGRToYCoCg_8u16s_C4P3R),
    ROW(moxiBGRToYCoCg_Rev_8u16s_C3P3R),
    ROW(moxiBGRToYCoCg_Rev_8u16s_C4P3R),
    ROW(moxiSBGRToYCoCg_16s_C3P3R),
    ROW(moxiSBGRToYCoCg_16s_C4P3R),
    ROW(moxiSBGRToYCoCg_16s32s_C3P3R),
    ROW(moxiSBGRToYCoCg_Rev_16s_C3P3R),
    ROW(moxiSBGRToYCoCg_Rev_16s32s_C4P3R),
    ROW(moxiRGBToYCoCg_8u_C3P3R),
    ROW(moxiYCoCgToBGR_16s8u_P3C3R),
    ROW(moxiYCoCgToBGR_16s8u_P3C4R, with(255)),
    ROW(moxiYCoCgToBGR_Rev_16s8u_P3C3R),
    ROW(moxiYCoCgToSBGR_16s_P3C3R),
    ROW(moxiYCoCgToSBGR_16s_P3C4R, with(32767)),
    ROW(moxiYCoCgToSBGR_32s16s_P3C3R),
    ROW(moxiYCoCgToSBGR_Rev_16s_P3C3R),
    ROW(moxiYCoCgToSBGR_Rev_32s16s_P3C4R, with(32767)),
    ROW(moxiYCoCgToRGB_8u_P3C3R),
};

}  // namespace bench
