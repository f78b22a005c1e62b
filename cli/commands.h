// What moxcc does, a function for each word behind its name.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cli/pictures/formats.h"

namespace cli {

/// Wrong arguments: exit status 2. Everything else that goes wrong is a pictures::Error: 1.
struct UsageError : std::runtime_error {
    using runtime_error::runtime_error;
};

/// The export of this name; throws UsageError with those that are close.
const catalogue::Export& exportNamed(const std::string& name);
/// Without "moxi".
std::string shortName(const catalogue::Export& e);

/// The value of a number that exports take, on the command line.
struct ValueOption {
    catalogue::Value value;
    const char* name;
    const char* help;
    const char* names;  // of its values, from 0 on, or as the numbers behind '='; null: numbers
    void (*set)(catalogue::Values&, double);
    bool taken(const catalogue::Export& e) const;
};
std::span<const ValueOption> valueOptions();

/// How raw planes lie, for programs that read them.
struct RawOptions {
    std::string size, format;
    pictures::Raw raw(const std::string& path, const catalogue::Side* otherwise) const;
};

struct RunOptions {
    std::string name;
    std::vector<std::string> inputs;
    std::string output;
    RawOptions layout;
    bool raw = false, pad = false, md5 = false, time = false, quiet = false;
    int threads = 1;
    std::string weights, region, rate;
    std::vector<std::pair<const ValueOption*, std::string>> values;
};
void run(const RunOptions& options);

struct CompareOptions {
    std::string a, b;
    RawOptions layout;
    std::optional<double> least;  // decibels
};
void compare(const CompareOptions& options);

struct ListOptions {
    std::vector<std::string> words;
    bool names = false;
};
void list(const ListOptions& options);
void show(const std::string& name);

/// Runs a part of the work; an Error that leaves it begins with the file's name.
template <class F>
decltype(auto) naming(const std::string& file, F f) {
    try {
        return f();
    } catch (const pictures::Error& error) {
        throw pictures::Error(file + ": " + error.what());
    } catch (const std::bad_alloc&) {
        throw pictures::Error(file + ": too large for this machine's memory");
    }
}

}  // namespace cli
