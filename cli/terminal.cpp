#include "cli/terminal.h"

#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <numeric>

namespace cli {
namespace {

std::string lower(std::string_view text) {
    std::string result(text);
    for (char& c : result) c = char(std::tolower(static_cast<unsigned char>(c)));
    return result;
}

// Letters to insert, remove or replace.
size_t distance(std::string_view a, std::string_view b) {
    std::vector<size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), size_t{0});
    for (size_t i = 0; i < a.size(); ++i) {
        size_t diagonal = row[0];
        row[0] = i + 1;
        for (size_t j = 0; j < b.size(); ++j) {
            const size_t replaced = diagonal + (a[i] != b[j]);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, row[j] + 1, diagonal + 1});
        }
    }
    return row.back();
}

}  // namespace

std::string bold(const std::string& text) {
    static const char* const none = std::getenv("NO_COLOR");
    static const bool colours = isatty(STDOUT_FILENO) && !(none && *none);
    return colours ? "\033[1m" + text + "\033[0m" : text;
}

std::string didYouMean(std::string_view wrong, std::span<const std::string> names) {
    const std::string given = lower(wrong);
    std::vector<std::pair<size_t, const std::string*>> close;
    for (const std::string& name : names) {
        const std::string candidate = lower(name);
        // A beginning is as close as a letter.
        const size_t far = given.size() > 2 && candidate.starts_with(given) ? 1 : distance(given, candidate);
        if (far <= std::max<size_t>(2, given.size() / 4)) close.emplace_back(far, &name);
    }
    std::ranges::stable_sort(close, {}, [](const auto& pair) { return pair.first; });
    close.resize(std::min<size_t>(close.size(), 3));
    std::string text;
    for (size_t i = 0; i < close.size(); ++i)
        text += (i == 0 ? ", did you mean " : i + 1 < close.size() ? ", " : " or ") + *close[i].second;
    return text.empty() ? text : text + "?";
}

Progress::Progress() : terminal_(isatty(STDERR_FILENO)) {}

Progress::~Progress() {
    if (shown_) std::fputs("\r\033[K", stderr);
}

void Progress::show(int64_t frames, double part) {
    using namespace std::chrono_literals;
    const Clock::time_point now = Clock::now();
    if (!terminal_ || now - begin_ < 1s || now - last_ < 200ms) return;
    last_ = now;
    shown_ = true;
    const double seconds = std::chrono::duration<double>(now - begin_).count();
    std::fprintf(stderr, "\r\033[K%lld frames, %.1f a second", static_cast<long long>(frames),
                 double(frames) / seconds);
    if (part > 0) std::fprintf(stderr, ", %.0f%%, %.0f s left", 100 * part, seconds * (1 - part) / part);
    std::fflush(stderr);
}

}  // namespace cli
