// One line on the terminal that says what is going on. It goes away before anything else is printed.
#pragma once

#include <unistd.h>

#include <cstdio>
#include <string>

namespace demo {

inline void progress(const std::string& text) {
    static const bool terminal = isatty(STDERR_FILENO);
    if (terminal) std::fprintf(stderr, "\r\033[K%.100s", text.c_str());
}

}  // namespace demo
