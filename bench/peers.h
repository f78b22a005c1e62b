// The peers of the benchmark rows: OpenCV, libyuv and libswscale, each only where the build found it.
#pragma once

#include "bench/bench.h"

// Where a peer is missing, its macro leaves an empty Peer, so that tables need no conditions.
#define BENCH_NO_PEER(...) \
    ::bench::Peer {}

#define PEER(name, ...) \
    ::bench::Peer { name, ::bench::plainPeer(__VA_ARGS__) }

namespace bench {

// "OpenCV 4.6.0, ..."
std::string peerVersions();

// A peer without preparation: function(src, dst) does all the work.
template <class F>
auto plainPeer(F function) {
    return [=](const Picture& src, const Picture& dst) -> Run {
        return [=] {
            function(src, dst);
            return moxStatusOk;
        };
    };
}

}  // namespace bench

#if MOXCC_BENCH_OPENCV
#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>

namespace bench {
// The plane's samples as a matrix that shares them.
cv::Mat mat(const Picture& picture, int plane = 0);
Run cvtColor(const Picture& src, const Picture& dst, int code);

template <class F>
Peer openCvPeer(F function) {
    return {"OpenCV", [=](const Picture& src, const Picture& dst) -> Run {
                return [=, from = mat(src), to = mat(dst)]() mutable {
                    function(std::as_const(from), to);
                    return moxStatusOk;
                };
            }};
}
}  // namespace bench

#define CVTCOLOR(code)                                                           \
    ::bench::Peer {                                                              \
        "OpenCV", [](const ::bench::Picture& src, const ::bench::Picture& dst) { \
            return ::bench::cvtColor(src, dst, cv::COLOR_##code);                \
        }                                                                        \
    }
#define OPENCV(...)    ::bench::openCvPeer(__VA_ARGS__)
// The rows of the matrix are the result's channels; a last column is added.
#define TRANSFORM(...) OPENCV([](const cv::Mat& src, cv::Mat& dst) { cv::transform(src, dst, __VA_ARGS__); })
#else
#define CVTCOLOR(...)  BENCH_NO_PEER()
#define OPENCV(...)    BENCH_NO_PEER()
#define TRANSFORM(...) BENCH_NO_PEER()
#endif

#if MOXCC_BENCH_LIBYUV
#include <libyuv.h>

#define LIBYUV(function)                                                         \
    ::bench::Peer {                                                              \
        "libyuv", [](const ::bench::Picture& src, const ::bench::Picture& dst) { \
            return ::bench::bind(&libyuv::function, src, dst);                   \
        }                                                                        \
    }
#else
#define LIBYUV(...) BENCH_NO_PEER()
#endif

#if MOXCC_BENCH_SWSCALE
extern "C" {
#include <libavutil/pixfmt.h>
}

namespace bench {
Run swscale(const Picture& src, const Picture& dst, AVPixelFormat from, AVPixelFormat to);
}

#define SWSCALE(from, to)                                                          \
    ::bench::Peer {                                                                \
        "swscale", [](const ::bench::Picture& src, const ::bench::Picture& dst) {  \
            return ::bench::swscale(src, dst, AV_PIX_FMT_##from, AV_PIX_FMT_##to); \
        }                                                                          \
    }
#else
#define SWSCALE(...) BENCH_NO_PEER()
#endif
