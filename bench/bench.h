// Benchmark rows: one conversion each, from both files of the library, beside the peers that have the same conversion.
//
// A family adds bench/<family>_bench.cpp, which the build finds by its name, with one table:
//
//     #include "bench/peers.h"
//     #include "moxcc/gray.h"
//
//     namespace bench {
//     const Table gray{
//         ROW(moxiRGBToGray_8u_C3C1R, CVTCOLOR(RGB2GRAY), LIBYUV(RAWToJ400), SWSCALE(RGB24, GRAY8)),
//         ROW(moxiGrayToRGB_8u_C1C4R, with(255), CVTCOLOR(GRAY2RGBA)),
//     };
//     }
//
// ROW(function, options ...): source and destination layouts come from the function's name, the arguments from its
// parameter types: pointers, plane arrays, steps, the size, the whole image as a region. Options, in any order:
//
//     with(args ...)       the arguments behind the size: alpha, coefficients, slice mode
//     call(lambda)         the whole call, where with() does not do: called as lambda(function, src, dst)
//     shape(src, dst)      the layouts, where the name does not tell them: interleaved<Mox8u>(3), planar<Mox8u>(3)
//     also("mode")         a second row of a function: what sets it apart, behind the function's name
//     range(low, high)     source samples; default: all of an integer type, 0 to 1 for floats
//     CVTCOLOR(code)       peer: OpenCV's cvtColor with cv::COLOR_<code>, also on planar and semi-planar 4:2:0
//     TRANSFORM(matrix)    peer: OpenCV's transform by a cv::Matx
//     OPENCV(lambda)       peer: any other OpenCV call, lambda(const cv::Mat& src, cv::Mat& dst)
//     LIBYUV(function)     peer: libyuv::<function>, its arguments taken from its parameter types
//     SWSCALE(from, to)    peer: libswscale from AV_PIX_FMT_<from> to AV_PIX_FMT_<to>
//     PEER(name, lambda)   peer: a plain loop, say, lambda(const Picture& src, const Picture& dst)
//
// Peers that the machine does not have drop out of their rows. A row with two peers compares with the faster one.
#pragma once

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <memory>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "bench/picture.h"

namespace bench {

using Run = std::function<MoxStatus()>;

// Hands out what the parameters of a conversion ask for, in their order: pointers to const come from the source, others
// from the destination; an integer behind a pointer is its step, other integers are the width, then the height.
class Arguments {
  public:
    Arguments(const Picture& src, const Picture& dst) : sides_{Side(src), Side(dst)}, size_(dst.size) {}

    template <class P>
    P next() {
        if constexpr (std::is_same_v<P, MoxiSize>) {
            return size_;
        } else if constexpr (std::is_same_v<P, MoxiRect>) {
            return {0, 0, size_.width, size_.height};
        } else if constexpr (std::is_same_v<P, const int32_t*>) {
            return last_->steps;
        } else if constexpr (std::is_pointer_v<P>) {
            using T = std::remove_pointer_t<P>;
            using Sample = std::conditional_t<std::is_pointer_v<T>, std::remove_pointer_t<T>, T>;
            last_ = &sides_[std::is_const_v<Sample> ? 0 : 1];
            if constexpr (std::is_pointer_v<T>) {
                step_ = last_->steps;
                return reinterpret_cast<P>(last_->planes);
            } else {
                step_ = last_->steps + last_->next;
                return reinterpret_cast<P>(last_->planes[last_->next++]);
            }
        } else {
            static_assert(std::is_same_v<P, int32_t>, "give this argument by with()");
            if (step_) return *std::exchange(step_, nullptr);
            return std::exchange(width_, false) ? size_.width : size_.height;
        }
    }

  private:
    struct Side {
        explicit Side(const Picture& picture) {
            for (int p = 0; p < 4; ++p) {
                planes[p] = picture.data<uint8_t>(p);
                steps[p] = picture.step(p);
            }
        }
        uint8_t* planes[4];
        int32_t steps[4];
        int next = 0;
    };

    Side sides_[2];
    MoxiSize size_;
    Side* last_ = nullptr;
    const int32_t* step_ = nullptr;
    bool width_ = true;
};

// A conversion with its arguments, ready to run; extra: the last ones, behind those that the pictures tell.
template <class R, class... P, class... Extra>
Run bind(R (*function)(P...), const Picture& src, const Picture& dst, Extra... extra) {
    const auto arguments = std::make_shared<Arguments>(src, dst);  // holds the arrays of planes and steps
    return [&]<size_t... I>(std::index_sequence<I...>)->Run {
        using Parameters = std::tuple<P...>;
        const std::tuple<std::tuple_element_t<I, Parameters>...> told{
            arguments->next<std::tuple_element_t<I, Parameters>>()...};
        return [=] {
            (void)arguments;
            return function(std::get<I>(told)..., extra...);
        };
    }
    (std::make_index_sequence<sizeof...(P) - sizeof...(Extra)>());
}

struct Peer {
    std::string name;
    std::function<Run(const Picture& src, const Picture& dst)> prepare;  // empty: not on this machine
};

struct Row {
    std::string symbol;  // the function
    std::string name;    // what the table calls the row
    Layout src;
    Layout dst;
    std::function<Run(void* symbol, const Picture& src, const Picture& dst)> prepare;
    std::function<void(Picture&)> fill = [](Picture& picture) { picture.fill(); };
    std::vector<Peer> peers;
};

std::vector<Row>& allRows();

struct Table {
    Table(std::initializer_list<Row> rows) { allRows().insert(allRows().end(), rows); }
};

// The options of a row. Each is applied to the row by a function of its own.

template <class... Extra>
struct With {
    std::tuple<Extra...> extra;
};

template <class... Extra>
With<Extra...> with(Extra... extra) {
    return {{extra...}};
}

template <class F>
struct Call {
    F function;
};

template <class F>
Call<F> call(F function) {
    return {function};
}

struct Shape {
    Layout src, dst;
};
inline Shape shape(Layout src, Layout dst) { return {src, dst}; }

struct Also {
    const char* mode;
};
inline Also also(const char* mode) { return {mode}; }

struct Range {
    double low, high;
};
inline Range range(double low, double high) { return {low, high}; }

template <class Function>
void apply(Row& row, const Peer& peer) {
    if (peer.prepare) row.peers.push_back(peer);
}

template <class Function>
void apply(Row& row, Shape shape) {
    row.src = shape.src;
    row.dst = shape.dst;
}

template <class Function>
void apply(Row& row, Also also) {
    row.name += std::string(" ") + also.mode;
}

template <class Function>
void apply(Row& row, Range range) {
    row.fill = [=](Picture& picture) { picture.fill(range.low, range.high); };
}

template <class Function, class... Extra>
void apply(Row& row, With<Extra...> with) {
    row.prepare = [=](void* symbol, const Picture& src, const Picture& dst) {
        return std::apply([&](Extra... extra) { return bind(reinterpret_cast<Function*>(symbol), src, dst, extra...); },
                          with.extra);
    };
}

template <class Function, class F>
void apply(Row& row, Call<F> call) {
    row.prepare = [=](void* symbol, const Picture& src, const Picture& dst) -> Run {
        return [=] { return call.function(reinterpret_cast<Function*>(symbol), src, dst); };
    };
}

template <class T>
constexpr bool isCall = false;
template <class... Extra>
constexpr bool isCall<With<Extra...>> = true;
template <class F>
constexpr bool isCall<Call<F>> = true;

template <class Function, class... Options>
Row row(const char* name, const Options&... options) {
    Row row;
    row.symbol = row.name = name;
    if constexpr (!(... || isCall<Options>)) apply<Function>(row, with());
    if constexpr (!(... || std::is_same_v<Options, Shape>)) std::tie(row.src, row.dst) = layoutsOf(name);
    (apply<Function>(row, options), ...);
    return row;
}

#define ROW(function, ...) ::bench::row<decltype(function)>(#function __VA_OPT__(, ) __VA_ARGS__)

}  // namespace bench
