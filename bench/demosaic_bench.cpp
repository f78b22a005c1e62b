#include "bench/peers.h"
#include "moxcc/demosaic.h"

namespace bench {

// OpenCV names a pattern by the second and third site of the second row: its BG is RGGB. Peers in a row: bilinear,
// edge-aware.
const Table demosaic{
    ROW(moxiCFAToRGB_8u_C1C3R, with(moxBayerGridRGGB), CVTCOLOR(BayerBG2RGB)),
    ROW(moxiCFAToRGB_8u_C1C3R, with(moxBayerGridRGGB), CVTCOLOR(BayerBG2RGB_EA)),
    ROW(moxiCFAToRGB_16u_C1C3R, with(moxBayerGridRGGB), CVTCOLOR(BayerBG2RGB)),
    ROW(moxiCFAToRGB_16u_C1C3R, with(moxBayerGridRGGB), CVTCOLOR(BayerBG2RGB_EA)),
};

}  // namespace bench
