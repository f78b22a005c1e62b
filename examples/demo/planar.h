// Luma and two planes of chroma.
#pragma once

#include "image.h"

namespace demo {

// The pixels that share a sample of chroma.
struct Cell {
    int width, height;
};

// The size holds whole cells.
struct Planar {
    Image8 plane[3];
    Mox8u* planes[3];
    int32_t steps[3];

    Cell cell;

    Planar(MoxiSize size, Cell chromaCell) : cell(chromaCell) {
        for (int i = 0; i < 3; ++i) {
            plane[i] = i == 0 ? Image8(size, 1) : Image8(size.width / cell.width, size.height / cell.height, 1);
            planes[i] = plane[i].data();
            steps[i] = plane[i].step();
        }
    }
    Planar(const Planar&) = delete;
    Planar& operator=(const Planar&) = delete;

    // As one picture: luma, on its right the planes of chroma one below the other.
    Image8 frame() const {
        Image8 result(plane[0].width() + plane[1].width(), std::max(plane[0].height(), 2 * plane[1].height()), 1);
        const auto paste = [&](const Image8& from, int x, int top) {
            for (int y = 0; y < from.height(); ++y)
                std::copy(from.row(y), from.row(y) + from.width(), result.at(x, top + y));
        };
        paste(plane[0], 0, 0);
        paste(plane[1], plane[0].width(), 0);
        paste(plane[2], plane[0].width(), plane[1].height());
        return result;
    }
};

// Decodes BT.601 of studio range with cells of 1 by 1, 2 by 1, 2 by 2 or 4 by 1 pixels.
inline Image8 decode(const Planar& video) {
    const MoxiSize size = video.plane[0].size();
    Image8 rgb(size, 3);
    if (video.cell.width == 1)
        moxiYCbCrToRGB_8u_P3C3R(video.planes, video.steps[0], rgb.data(), rgb.step(), size);
    else if (video.cell.height == 2)
        moxiYCbCr420ToRGB_8u_P3C3R(video.planes, video.steps, rgb.data(), rgb.step(), size);
    else if (video.cell.width == 2)
        moxiYCbCr422ToRGB_8u_P3C3R(video.planes, video.steps, rgb.data(), rgb.step(), size);
    else
        moxiYCbCr411ToBGR_8u_P3C3R(video.planes, video.steps, rgb.data(), rgb.step(), size);
    return video.cell.width == 4 ? reversed(std::move(rgb)) : rgb;
}

// The part of a picture where colours change most, whatever luma does.
inline MoxiRect chromaDetail(const Image8& rgb) {
    Planar video(rgb.size(), {1, 1});
    moxiRGBToYCbCr_8u_C3P3R(rgb.data(), rgb.step(), video.planes, video.steps[0], rgb.size());
    std::fill(video.plane[0].samples().begin(), video.plane[0].samples().end(), Mox8u{128});
    return busiest(decode(video), kDetail);
}

}  // namespace demo
