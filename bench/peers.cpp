#include "bench/peers.h"

#include <stdexcept>

#if MOXCC_BENCH_SWSCALE
extern "C" {
#include <libswscale/swscale.h>
}
#endif

namespace bench {

std::string peerVersions() {
    std::string versions;
#if MOXCC_BENCH_OPENCV
    versions += ", OpenCV " CV_VERSION;
#endif
#if MOXCC_BENCH_LIBYUV
    versions += ", libyuv " + std::to_string(LIBYUV_VERSION);
#endif
#if MOXCC_BENCH_SWSCALE
    versions += ", libswscale " AV_STRINGIFY(LIBSWSCALE_VERSION);
#endif
    return versions.empty() ? versions : versions.substr(2);
}

#if MOXCC_BENCH_OPENCV

cv::Mat mat(const Picture& picture, int plane) {
    const Layout& layout = picture.layout;
    const int channels = layout.planes == 1 ? layout.channels : layout.planes == 2 && plane == 1 ? 2 : 1;
    const int depth = layout.kind == 'f'   ? (layout.bits == 64 ? CV_64F : CV_32F)
                      : layout.bits == 8   ? CV_8U
                      : layout.bits > 16   ? CV_32S
                      : layout.kind == 's' ? CV_16S
                                           : CV_16U;
    const Picture::Plane& p = picture.planes[size_t(plane)];
    return cv::Mat(p.height, p.width / channels, CV_MAKETYPE(depth, channels), p.data, size_t(p.step));
}

Run cvtColor(const Picture& src, const Picture& dst, int code) {
    if (src.layout.planes == 2) {
        return [=, y = mat(src), chroma = mat(src, 1), result = mat(dst)]() mutable {
            cv::cvtColorTwoPlane(y, chroma, result, code);
            return moxStatusOk;
        };
    }
    // OpenCV keeps the planes of 4:2:0 in one matrix without padding: such a side gets a matrix of its own, which holds
    // samples as good as the picture's.
    const auto sideMat = [](const Picture& side) {
        if (side.layout.planes == 1) return mat(side);
        cv::Mat all(side.size.height * 3 / 2, side.size.width, CV_8UC1);
        for (int y = 0; y < all.rows; ++y) mat(side).row(y % side.size.height).copyTo(all.row(y));
        return all;
    };
    return [=, from = sideMat(src), to = sideMat(dst)]() mutable {
        cv::cvtColor(from, to, code);
        return moxStatusOk;
    };
}

#endif

#if MOXCC_BENCH_SWSCALE

Run swscale(const Picture& src, const Picture& dst, AVPixelFormat from, AVPixelFormat to) {
    const std::shared_ptr<SwsContext> context(
        sws_getContext(src.size.width, src.size.height, from, dst.size.width, dst.size.height, to, SWS_FAST_BILINEAR,
                       nullptr, nullptr, nullptr),
        sws_freeContext);
    if (!context) throw std::runtime_error("libswscale does not take these formats");
    return [=] {
        const uint8_t* srcPlanes[4];
        uint8_t* dstPlanes[4];
        int srcSteps[4], dstSteps[4];
        for (int p = 0; p < 4; ++p) {
            srcPlanes[p] = src.data<uint8_t>(p);
            dstPlanes[p] = dst.data<uint8_t>(p);
            srcSteps[p] = src.step(p);
            dstSteps[p] = dst.step(p);
        }
        sws_scale(context.get(), srcPlanes, srcSteps, 0, src.size.height, dstPlanes, dstSteps);
        return moxStatusOk;
    };
}

#endif

}  // namespace bench
