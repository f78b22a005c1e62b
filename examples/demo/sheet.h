// The contact sheet: labelled tiles in rows, under headings, on one page or more.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "image.h"

namespace demo {

// What a tile has room for: pictures are scaled down to it, and up to it by whole numbers.
inline constexpr MoxiSize kTilePicture = {456, 342};

class Sheet {
  public:
    struct Group {
        std::string heading;
        std::vector<Image8> tiles;
    };

    void heading(const std::string& text);
    // The image, one or three channels, stands over its caption and fainter lines of details.
    void tile(const std::string& caption, const std::vector<std::string>& details, const Image8& image);

    // Writes contact-sheet.png, and contact-sheet-2.png and so on when there is much to show. Pages of an earlier run
    // do not stay. Returns how many pages there are.
    int write(const std::filesystem::path& folder) const;

  private:
    std::vector<Group> groups_;
};

}  // namespace demo
