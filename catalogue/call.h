// A call of any export, for pictures with any steps; whole, or in bands over threads.
#pragma once

#include "catalogue/export.h"
#include "moxcc/chroma_filter.h"
#include "moxcc/demosaic.h"
#include "moxcc/reduce_bits.h"

namespace catalogue {

/// A plane in the caller's memory: its first row, and the bytes from a row to the next; negative ones lead upwards.
struct Plane {
    void* data = nullptr;
    int32_t step = 0;
};

/// What a call reads or writes. An interleaved picture has one plane. An export that shares one step among planes takes
/// that of the first.
struct Picture {
    MoxiSize size = {};
    Plane planes[4] = {};
};

/// The arguments that are no picture. An export takes those that it has parameters for.
struct Values {
    double alpha = 0;
    MoxDitherType dither = moxDitherNone;
    MoxBayerGrid grid = moxBayerGridBGGR;
    int levels = 2;
    MoxSliceMode slice = moxSliceAll;
    int noise = 0;
    int firstBit = 0;
    int threshold = 0;
    int dataType = 1;
    float lowerLimit = 0, upperLimit = 1;
    const void* weights = nullptr;  // of the type that the export takes
    void* buffer = nullptr;         // null: call() brings its own where one is needed
    int32_t bufferStep = 0;
    MoxiRect region = {};  // of the source; empty: from the top left, as large as the destination

    double of(Value value) const;
};

/// Calls an export. `function`: its address in another file of the library.
MoxStatus call(const Export& e, const Picture& src, const Picture& dst, const Values& values = {},
               void* function = nullptr);

/// The same in bands, on so many threads; the same bytes. Fewer run where the picture has too few rows, one where it
/// may not be split.
MoxStatus callInBands(const Export& e, const Picture& src, const Picture& dst, const Values& values, int threads,
                      void* function = nullptr);

/// The first rows of `count` bands or fewer, none of them empty, and the height.
std::vector<int> bandsOf(const Export& e, MoxiSize size, const Values& values, int count);

}  // namespace catalogue
