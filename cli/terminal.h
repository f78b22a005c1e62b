// What a person at a terminal sees: colours, progress, close names.
#pragma once

#include <chrono>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace cli {

/// Bold on a terminal, unless NO_COLOR is set.
std::string bold(const std::string& text);

/// ", did you mean a, b or c?", or nothing.
std::string didYouMean(std::string_view wrong, std::span<const std::string> names);

/// One line on the terminal for work of more than a second; it goes away at the end.
class Progress {
  public:
    Progress();
    ~Progress();
    /// `part`: of the whole, 0 to 1; below 0: unknown.
    void show(int64_t frames, double part);

  private:
    using Clock = std::chrono::steady_clock;
    const bool terminal_;
    bool shown_ = false;
    Clock::time_point begin_ = Clock::now(), last_ = begin_;
};

}  // namespace cli
