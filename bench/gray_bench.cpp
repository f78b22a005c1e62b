#include "bench/peers.h"
#include "moxcc/gray.h"

namespace bench {
namespace {

const Mox32f weights[] = {0.2126f, 0.7152f, 0.0722f};
const Mox64f weights64[] = {0.2126, 0.7152, 0.0722};

}  // namespace

const Table gray{
    ROW(moxiRGBToGray_8u_C3C1R, CVTCOLOR(RGB2GRAY), LIBYUV(RAWToJ400), SWSCALE(RGB24, GRAY8)),
    ROW(moxiRGBToGray_8u_AC4C1R, CVTCOLOR(RGBA2GRAY), LIBYUV(ABGRToJ400), SWSCALE(RGBA, GRAY8)),
    ROW(moxiRGBToGray_16u_C3C1R, CVTCOLOR(RGB2GRAY), SWSCALE(RGB48LE, GRAY16LE)),
    ROW(moxiRGBToGray_16u_AC4C1R, CVTCOLOR(RGBA2GRAY), SWSCALE(RGBA64LE, GRAY16LE)),
    ROW(moxiRGBToGray_16s_C3C1R),
    ROW(moxiRGBToGray_16s_AC4C1R),
    ROW(moxiRGBToGray_32f_C3C1R, CVTCOLOR(RGB2GRAY)),
    ROW(moxiRGBToGray_32f_AC4C1R, CVTCOLOR(RGBA2GRAY)),

    ROW(moxiColorToGray_8u_C3C1R, with(weights), TRANSFORM(cv::Matx13f(weights))),
    ROW(moxiColorToGray_8u_AC4C1R, with(weights)),
    ROW(moxiColorToGray_16u_C3C1R, with(weights), TRANSFORM(cv::Matx13f(weights))),
    ROW(moxiColorToGray_16u_AC4C1R, with(weights)),
    ROW(moxiColorToGray_16s_C3C1R, with(weights)),
    ROW(moxiColorToGray_16s_AC4C1R, with(weights)),
    ROW(moxiColorToGray_32f_C3C1R, with(weights), TRANSFORM(cv::Matx13f(weights))),
    ROW(moxiColorToGray_32f_AC4C1R, with(weights)),
    ROW(moxiColorToGray_64f_C3C1R, with(weights64), TRANSFORM(cv::Matx13d(weights64))),
    ROW(moxiColorToGray_64f_AC4C1R, with(weights64)),

    ROW(moxiGrayToRGB_8u_C1C3R, CVTCOLOR(GRAY2RGB), SWSCALE(GRAY8, RGB24)),
    ROW(moxiGrayToRGB_8u_C1C4R, with(255), CVTCOLOR(GRAY2RGBA), LIBYUV(J400ToARGB), SWSCALE(GRAY8, RGBA)),
    ROW(moxiGrayToRGB_16u_C1C3R, CVTCOLOR(GRAY2RGB)),
    ROW(moxiGrayToRGB_16u_C1C4R, with(65535), CVTCOLOR(GRAY2RGBA)),
    ROW(moxiGrayToRGB_32f_C1C3R, CVTCOLOR(GRAY2RGB)),
    ROW(moxiGrayToRGB_32f_C1C4R, with(1.0f), CVTCOLOR(GRAY2RGBA)),
};

}  // namespace bench
