// Text on images.
#pragma once

#include <array>
#include <string_view>

#include "font.h"
#include "image.h"

namespace demo {

constexpr int kGlyphWidth = 6, kGlyphHeight = 10;  // with the space between

// Draws a line of text, each dot of the font scale by scale samples; dots outside the image are left out.
template <class T>
void drawText(Image<T>& image, int x, int y, int scale, std::string_view text, std::array<T, 3> colour) {
    for (size_t i = 0; i < text.size(); ++i) {
        const unsigned code = unsigned(text[i]) - 32u;
        const uint8_t* columns = kFont[code < 95 ? code : '?' - 32];
        for (int dx = 0; dx < 5 * scale; ++dx) {
            for (int dy = 0; dy < 8 * scale; ++dy) {
                const int px = x + int(i) * kGlyphWidth * scale + dx;
                const int py = y + dy;
                if (!(columns[dx / scale] >> (dy / scale) & 1)) continue;
                if (px < 0 || py < 0 || px >= image.width() || py >= image.height()) continue;
                std::copy(colour.begin(), colour.end(), image.at(px, py));
            }
        }
    }
}

}  // namespace demo
