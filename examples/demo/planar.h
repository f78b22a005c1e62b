// Luma and two planes of chroma.
#pragma once

#include "image.h"

namespace demo {

// Chroma has one sample for a cell of cellWidth by cellHeight pixels. The size holds whole cells.
struct Planar {
    Image8 plane[3];
    Mox8u* planes[3];
    int32_t steps[3];

    Planar(MoxiSize size, int cellWidth, int cellHeight) {
        for (int i = 0; i < 3; ++i) {
            plane[i] = i == 0 ? Image8(size, 1) : Image8(size.width / cellWidth, size.height / cellHeight, 1);
            planes[i] = plane[i].data();
            steps[i] = plane[i].step();
        }
    }
    Planar(const Planar&) = delete;
    Planar& operator=(const Planar&) = delete;
};

}  // namespace demo
