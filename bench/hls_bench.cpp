#include "bench/peers.h"
#include "moxcc/hls.h"

namespace bench {

const Table hls{
    ROW(moxiRGBToHLS_8u_C3R, CVTCOLOR(RGB2HLS_FULL)),
    ROW(moxiRGBToHLS_8u_AC4R),
    ROW(moxiRGBToHLS_16u_C3R),
    ROW(moxiRGBToHLS_16u_AC4R),
    ROW(moxiRGBToHLS_16s_C3R),
    ROW(moxiRGBToHLS_16s_AC4R),
    ROW(moxiRGBToHLS_32f_C3R, CVTCOLOR(RGB2HLS)),
    ROW(moxiRGBToHLS_32f_AC4R),

    ROW(moxiHLSToRGB_8u_C3R, CVTCOLOR(HLS2RGB_FULL)),
    ROW(moxiHLSToRGB_8u_AC4R),
    ROW(moxiHLSToRGB_16u_C3R),
    ROW(moxiHLSToRGB_16u_AC4R),
    ROW(moxiHLSToRGB_16s_C3R),
    ROW(moxiHLSToRGB_16s_AC4R),
    ROW(moxiHLSToRGB_32f_C3R, CVTCOLOR(HLS2RGB)),
    ROW(moxiHLSToRGB_32f_AC4R),

    ROW(moxiBGRToHLS_8u_AC4R),
    ROW(moxiBGRToHLS_8u_C3P3R),
    ROW(moxiBGRToHLS_8u_P3C3R),
    ROW(moxiBGRToHLS_8u_P3R),
    ROW(moxiBGRToHLS_8u_AC4P4R),
    ROW(moxiBGRToHLS_8u_AP4C4R),
    ROW(moxiBGRToHLS_8u_AP4R),

    ROW(moxiHLSToBGR_8u_C3P3R),
    ROW(moxiHLSToBGR_8u_P3C3R),
    ROW(moxiHLSToBGR_8u_P3R),
    ROW(moxiHLSToBGR_8u_AC4P4R),
    ROW(moxiHLSToBGR_8u_AP4C4R),
    ROW(moxiHLSToBGR_8u_AP4R),
};

}  // namespace bench
