#include "sheet.h"

#include <sstream>

#include "draw.h"
#include "picture_io.h"

namespace demo {
namespace {

using Colour = std::array<Mox8u, 3>;

constexpr Colour kPaper{38, 40, 44}, kTile{52, 54, 60}, kInk{240, 240, 240}, kFaint{170, 176, 186},
    kAccent{255, 196, 84};
constexpr int kColumns = 4, kGap = 12, kMargin = 8, kHeading = 44;
constexpr int kPictureWidth = kTilePicture.width, kPictureHeight = kTilePicture.height;
constexpr int kTileWidth = kPictureWidth + 2 * kMargin;
constexpr int kHeadingScale = 3, kTextScale = 2, kLineHeight = kTextScale * kGlyphHeight;
constexpr size_t kLineLength = kPictureWidth / (kTextScale * kGlyphWidth);
constexpr int kPageWidth = kGap + kColumns * (kTileWidth + kGap);
constexpr int kPageHeight = 3000;

void fill(Image8& image, Colour colour) {
    for (size_t i = 0; i < image.samples().size(); ++i) image.samples()[i] = colour[i % 3];
}

void paste(Image8& to, int x, int y, const Image8& from) {
    for (int row = 0; row < from.height(); ++row) {
        std::copy(from.row(row), from.row(row) + 3 * from.width(), to.at(x, y + row));
    }
}

// Fits an image to a tile: the mean of the samples under each dot, or whole dots for tiny images.
Image8 fit(const Image8& image) {
    const int enlarge = std::min({kPictureWidth / image.width(), kPictureHeight / image.height(), 32});
    double scale = std::max(1, enlarge);
    if (enlarge < 1) scale = std::min(double(kPictureWidth) / image.width(), double(kPictureHeight) / image.height());

    Image8 result(std::max(1, int(image.width() * scale)), std::max(1, int(image.height() * scale)), 3);
    const auto span = [](int i, int from, int to) {  // the samples under dot i, at least one
        const int first = int(int64_t(i) * from / to);
        return std::pair(first, std::max(first + 1, int(int64_t(i + 1) * from / to)));
    };
    for (int y = 0; y < result.height(); ++y) {
        const auto [top, bottom] = span(y, image.height(), result.height());
        for (int x = 0; x < result.width(); ++x) {
            const auto [left, right] = span(x, image.width(), result.width());
            int sums[3] = {};
            for (int sy = top; sy < bottom; ++sy) {
                for (int sx = left; sx < right; ++sx) {
                    for (int c = 0; c < 3; ++c) sums[c] += image.at(sx, sy)[image.channels() == 3 ? c : 0];
                }
            }
            const int count = (bottom - top) * (right - left);
            for (int c = 0; c < 3; ++c) result.at(x, y)[c] = Mox8u((sums[c] + count / 2) / count);
        }
    }
    return result;
}

// Adds a text, broken into lines at spaces, and at underscores where a word is too long.
void addWrapped(std::vector<std::string>& lines, const std::string& text) {
    lines.emplace_back();
    std::istringstream words(text);
    for (std::string word; words >> word;) {
        std::string& line = lines.back();
        if (line.empty()) {
            line = word;
        } else if (line.size() + 1 + word.size() <= kLineLength) {
            line += " " + word;
        } else {
            lines.push_back(word);
        }
        while (lines.back().size() > kLineLength) {
            const size_t underscore = lines.back().rfind('_', kLineLength - 1);
            const size_t end = underscore == std::string::npos ? kLineLength : underscore + 1;
            std::string rest = "  " + lines.back().substr(end);
            lines.back().resize(end);
            lines.push_back(std::move(rest));
        }
    }
}

// Images of equal width one below the other.
Image8 stack(const std::vector<Image8>& images) {
    int height = 0;
    for (const Image8& image : images) height += image.height();
    Image8 result(images[0].width(), height, 3);
    int y = 0;
    for (const Image8& image : images) {
        paste(result, 0, y, image);
        y += image.height();
    }
    return result;
}

// A group's tiles in rows, each as high as its highest tile.
Image8 render(const Sheet::Group& group) {
    std::vector<Image8> rows;
    const auto addRow = [&](int height) {
        rows.emplace_back(kPageWidth, height, 3);
        fill(rows.back(), kPaper);
    };
    addRow(kHeading);
    drawText(rows[0], kGap, kGap, kHeadingScale, group.heading, kAccent);
    for (auto first = group.tiles.begin(); first != group.tiles.end();) {
        const auto last = first + std::min<ptrdiff_t>(kColumns, group.tiles.end() - first);
        const auto highest =
            std::max_element(first, last, [](const Image8& a, const Image8& b) { return a.height() < b.height(); });
        addRow(highest->height() + kGap);
        for (int x = kGap; first != last; ++first, x += kTileWidth + kGap) paste(rows.back(), x, 0, *first);
    }
    return stack(rows);
}

std::string pageName(int page) {
    std::string name = "contact-sheet";
    if (page > 1) name.append("-").append(std::to_string(page));
    return name.append(".png");
}

}  // namespace

void Sheet::heading(const std::string& text) { groups_.push_back({text, {}}); }

void Sheet::tile(const std::string& caption, const std::vector<std::string>& details, const Image8& image) {
    const Image8 picture = fit(image);
    std::vector<std::string> lines;
    addWrapped(lines, caption);
    const size_t captionLines = lines.size();
    for (const std::string& detail : details) addWrapped(lines, detail);

    Image8 tile(kTileWidth, picture.height() + kLineHeight * int(lines.size()) + 3 * kMargin, 3);
    fill(tile, kTile);
    paste(tile, (kTileWidth - picture.width()) / 2, kMargin, picture);
    int y = picture.height() + 2 * kMargin;
    for (size_t i = 0; i < lines.size(); ++i, y += kLineHeight)
        drawText(tile, kMargin, y, kTextScale, lines[i], i < captionLines ? kInk : kFaint);
    groups_.back().tiles.push_back(std::move(tile));
}

int Sheet::write(const std::filesystem::path& folder) const {
    std::vector<Image8> page;
    int height = 0, pages = 0;
    const auto writePage = [&] {
        writePng(folder / pageName(++pages), stack(page));
        page.clear();
        height = 0;
    };
    for (const Group& group : groups_) {
        if (group.tiles.empty()) continue;
        Image8 next = render(group);
        if (!page.empty() && height + next.height() > kPageHeight) writePage();
        height += next.height();
        page.push_back(std::move(next));
    }
    if (!page.empty()) writePage();
    for (int old = pages + 1; std::filesystem::remove(folder / pageName(old)); ++old) {
    }
    return pages;
}

}  // namespace demo
