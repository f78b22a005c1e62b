// Entries: an export is a line of its family's table, which names its kernel and what departs from the usual.
//
//     template <> constexpr auto entry<moxiRGBToXYZ_8u_C3R>    = converts<RGBToXYZ_8u<C3<Mox8u>>>;
//     template <> constexpr auto entry<moxiRGBToYCbCr_8u_P3R>  = converts<RGBToYCbCr_8u<P3<Mox8u>>, planesFirst>;
//     template <> constexpr auto entry<moxiReduceBits_8u1u_C1R> = reduceToBits;   // a function, where no line will do
//
// tools/symbols.cpp writes the C function of each line from the header's prototype; a family's source includes these at
// its end. An export that is declared and has no line does not build.
#pragma once

#include <climits>
#include <iterator>

#include "frame/checks.h"
#include "frame/kernel.h"

namespace q4 {

struct NoLine {
    /// This export has no line in its family's table.
    template <class... Argument>
    MoxStatus operator()(Argument...) const = delete;
};
template <auto& function>
inline constexpr NoLine entry{};

// ---- what a line can say --------------------------------------------------------------------------------------------

/// The tests of a call's arguments. The first that fails decides the status; nothing has been written then.
enum class Test {
    none,
    pointers,    // to pixels, to arrays of planes
    planes,      // the pointers in the arrays of planes
    stepArrays,  // the pointers to arrays of steps
    weights,     // the pointer to a table of weights
    steps,       // at least 1
    rowLengths,  // the same, as sizes: of the family that counts steps in samples
    anySize,     // at least 1 x 1
    size,        // at least as large as the line says
    wholeCells,  // of the smallest size
    values,      // the arguments behind the size, by the kernel's own check()
};

/// The tests in the order in which they decide. Without a test of the size, nothing is done for one below 1.
struct Order {
    Test test[6] = {};
};
inline constexpr Order plainOrder = {{Test::pointers, Test::size, Test::planes}};
inline constexpr Order sizeFirst = {{Test::size, Test::pointers}};
inline constexpr Order planesFirst = {{Test::pointers, Test::planes, Test::size}};

/// The smallest size.
struct AtLeast {
    int width = 1, height = 1;
};
inline constexpr int anyHeight = INT_MIN;  // nothing is done for one below 1

/// How steps count.
enum class Steps {
    bytes,
    wholeSamples,  // bytes, rounded down to whole samples
    samples,
};
inline constexpr Steps inSamples = Steps::wholeSamples;

/// The option of a type, of a line's options, or what is usual.
template <class Option>
constexpr Option optionOf(Option usual) {
    return usual;
}
template <class Option, class First, class... Rest>
constexpr Option optionOf(Option usual, First first, Rest... rest) {
    if constexpr (std::is_same_v<Option, First>)
        return first;
    else
        return optionOf<Option>(usual, rest...);
}

// ---- the sides of a call --------------------------------------------------------------------------------------------

/// A picture as an argument list has it. P: samples, or pointers to planes. Step: one for all planes, or an array.
template <class P, class Step>
struct Side {
    P* p;
    Step step;
    static constexpr bool isPlanes = std::is_pointer_v<P>;
    static constexpr bool isStepArray = std::is_pointer_v<Step>;

    bool hasPointers() const { return p; }
    bool hasStepArray() const {
        if constexpr (isStepArray) return step;
        return true;
    }
    template <int n>
    bool hasPlanes() const {
        if constexpr (isPlanes)
            for (int i = 0; i < n; ++i)
                if (!p[i]) return false;
        return true;
    }
    bool stepsArePositive() const {
        static_assert(!isStepArray, "no family tests the steps in an array");
        return step >= 1;
    }
    template <Layout L, Steps counted>
    MOX_INLINE auto imageIn() const {
        if constexpr (isStepArray) {
            static_assert(counted == Steps::bytes, "no family rounds the steps in an array");
            return L::rowsOf(image<L::planes>(p, step));
        } else {
            const ptrdiff_t bytes = counted == Steps::samples        ? step * ptrdiff_t(sizeof(P))
                                    : counted == Steps::wholeSamples ? wholeSamples<typename L::Sample>(step)
                                                                     : step;
            if constexpr (isPlanes)
                return L::rowsOf(image<L::planes>(p, bytes));
            else
                return L::rowsOf(image(p, bytes));
        }
    }
};

/// Semi-planar: a plane of luma and a plane of chroma pairs.
template <class T>
struct SemiPlanarSide {
    T *y, *chroma;
    int32_t yStep, chromaStep;

    bool hasPointers() const { return y && chroma; }
    bool hasStepArray() const { return true; }
    template <int>
    bool hasPlanes() const {
        return true;
    }
    template <Layout L, Steps counted>
    MOX_INLINE auto imageIn() const {
        static_assert(counted == Steps::bytes && L::planes == 2);
        return L::rowsOf(Image<ByteOf<T>, 2>{{y, chroma}, {yStep, chromaStep}});
    }
};

// ---- entries --------------------------------------------------------------------------------------------------------

/// The entry of an export: tests its arguments and runs the kernel over the picture.
template <class Kernel, auto... options>
struct Converts {
    using Src = typename Kernel::Src;
    using Dst = typename Kernel::Dst;
    static constexpr Order order = optionOf<Order>(plainOrder, options...);
    static constexpr AtLeast least = optionOf<AtLeast>({}, options...);
    static constexpr Steps steps = optionOf<Steps>(Steps::bytes, options...);

    /// From a picture, or planes, to another.
    template <class S, class SrcStep, class D, class DstStep, class... Extra>
    MOX_INLINE MoxStatus operator()(S* src, SrcStep srcStep, D* dst, DstStep dstStep, MoxiSize roiSize,
                                    Extra... extra) const {
        return run(Side<S, SrcStep>{src, srcStep}, Side<D, DstStep>{dst, dstStep}, roiSize, extra...);
    }
    /// From a plane of luma and one of chroma pairs.
    template <class S, class D, class DstStep, class... Extra>
    MOX_INLINE MoxStatus operator()(S* srcY, int32_t srcYStep, S* srcCbCr, int32_t srcCbCrStep, D* dst, DstStep dstStep,
                                    MoxiSize roiSize, Extra... extra) const {
        return run(SemiPlanarSide<S>{srcY, srcCbCr, srcYStep, srcCbCrStep}, Side<D, DstStep>{dst, dstStep}, roiSize,
                   extra...);
    }
    /// To a plane of luma and one of chroma pairs.
    template <class S, class SrcStep, class D, class... Extra>
    MOX_INLINE MoxStatus operator()(S* src, SrcStep srcStep, D* dstY, int32_t dstYStep, D* dstCbCr, int32_t dstCbCrStep,
                                    MoxiSize roiSize, Extra... extra) const {
        return run(Side<S, SrcStep>{src, srcStep}, SemiPlanarSide<D>{dstY, dstCbCr, dstYStep, dstCbCrStep}, roiSize,
                   extra...);
    }
    /// In place.
    template <class P, class Step, class... Extra>
    MOX_INLINE MoxStatus operator()(P* srcDst, Step step, MoxiSize roiSize, Extra... extra) const {
        const Side<P, Step> both = {srcDst, step};
        return run(both, both, roiSize, extra...);
    }

  private:
    template <Test test, class S, class D, class... Extra>
    static MoxStatus passes(const S& src, const D& dst, MoxiSize size, const Extra&... extra) {
        const auto status = [](bool good, MoxStatus otherwise) { return good ? MoxStatus(moxStatusOk) : otherwise; };
        if constexpr (test == Test::pointers) return status(src.hasPointers() && dst.hasPointers(), moxStatusNullPtr);
        if constexpr (test == Test::planes)
            return status(src.template hasPlanes<Src::planes>() && dst.template hasPlanes<Dst::planes>(),
                          moxStatusNullPtr);
        if constexpr (test == Test::stepArrays)
            return status(src.hasStepArray() && dst.hasStepArray(), moxStatusNullPtr);
        if constexpr (test == Test::weights) return status((... && extra), moxStatusNullPtr);
        if constexpr (test == Test::steps)
            return status(src.stepsArePositive() && dst.stepsArePositive(), moxStatusBadStep);
        if constexpr (test == Test::rowLengths)
            return status(src.stepsArePositive() && dst.stepsArePositive(), moxStatusBadSize);
        if constexpr (test == Test::values) return Kernel::check(extra...);
        if constexpr (test == Test::size)
            return status(size.width >= least.width && size.height >= least.height, moxStatusBadSize);
        if constexpr (test == Test::anySize) return status(size.width >= 1 && size.height >= 1, moxStatusBadSize);
        if constexpr (test == Test::wholeCells)
            return status(size.width % least.width == 0 && size.height % least.height == 0, moxStatusBadSize);
        return moxStatusOk;
    }

    static constexpr bool testsSize = [] {
        for (const Test test : order.test)
            if (test == Test::size) return true;
        return false;
    }();

    template <class S, class D, class... Extra>
    MOX_INLINE static MoxStatus run(const S& src, const D& dst, MoxiSize size, Extra... extra) {
        const MoxStatus status = [&]<size_t... i>(std::index_sequence<i...>) {
            return firstOf([&] { return passes<order.test[i]>(src, dst, size, extra...); }...);
        }
        (std::make_index_sequence<std::size(Order{}.test)>());
        if (status != moxStatusOk) return status;
        if constexpr (!testsSize)
            if (size.width < 1 || size.height < 1) return moxStatusOk;
        return convertPicture(partOf<Kernel>(extra...), src.template imageIn<Src, steps>(),
                              dst.template imageIn<Dst, steps>(), size);
    }
};
template <class Kernel, auto... options>
inline constexpr Converts<Kernel, options...> converts{};

}  // namespace q4
