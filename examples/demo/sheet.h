// The contact sheet: labelled tiles in rows, under headings, on one page or more.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "image.h"

namespace demo {

class Sheet {
  public:
    struct Group {
        std::string heading;
        std::vector<Image8> tiles;
    };

    void heading(const std::string& text);
    // The image, one or three channels, is fitted to the tile; small lines below the caption end at line feeds.
    void tile(const std::string& caption, const std::string& details, const Image8& image);

    // Writes contact-sheet.png, and contact-sheet-2.png and so on when there is much to show. Pages of an earlier run
    // do not stay. Returns how many pages there are.
    int write(const std::filesystem::path& folder) const;

  private:
    std::vector<Group> groups_;
};

}  // namespace demo
