#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "cli/commands.h"
#include "cli/terminal.h"

namespace cli {

using catalogue::Export;
using catalogue::Value;
using catalogue::Values;

namespace {

constexpr ValueOption table[] = {
    {Value::alpha, "--alpha", "the fourth channel of the result; opaque if not given", nullptr,
     [](Values& v, double x) { v.alpha = x; }},
    {Value::dither, "--dither", "method of bit-depth reduction", "none fs jj st bayer",
     [](Values& v, double x) { v.dither = MoxDitherType(x); }},
    {Value::grid, "--grid", "colours of the first four Bayer samples", "bggr rggb gbrg grbg",
     [](Values& v, double x) { v.grid = MoxBayerGrid(x); }},
    {Value::levels, "--levels", "levels of each channel of the result", nullptr,
     [](Values& v, double x) { v.levels = int(x); }},
    {Value::noise, "--noise", "noise that the dither adds, in per cent", nullptr,
     [](Values& v, double x) { v.noise = int(x); }},
    {Value::threshold, "--threshold", "samples above it become 1", nullptr,
     [](Values& v, double x) { v.threshold = int(x); }},
    {Value::firstBit, "--first-bit", "bits in front of the first pixel of each row", nullptr,
     [](Values& v, double x) { v.firstBit = int(x); }},
    {Value::slice, "--slice", "which slice of a picture it is", "first=1 middle=4 last=16 all=21",
     [](Values& v, double x) { v.slice = MoxSliceMode(x); }},
    {Value::lowerLimit, "--lower", "lower limit of floating-point samples", nullptr,
     [](Values& v, double x) { v.lowerLimit = float(x); }},
    {Value::upperLimit, "--upper", "upper limit of floating-point samples", nullptr,
     [](Values& v, double x) { v.upperLimit = float(x); }},
};

}  // namespace

std::span<const ValueOption> valueOptions() { return table; }

bool ValueOption::taken(const Export& e) const {
    return e.parameter(value) || (value == Value::dither && e.parameter(Value::bitDither));
}

std::string shortName(const Export& e) { return e.name.substr(e.name.starts_with("moxi") ? 4 : 0); }

const Export& exportNamed(const std::string& name) {
    if (const Export* e = catalogue::find(name)) return *e;
    std::vector<std::string> names;
    for (const Export& e : catalogue::exports()) names.push_back(shortName(e));
    throw UsageError("no export is called " + name +
                     didYouMean(name.starts_with("moxi") ? std::string_view(name).substr(4) : name, names));
}

pictures::Raw RawOptions::raw(const std::string& path, const catalogue::Side* otherwise) const {
    pictures::Raw raw = pictures::rawFrom(path);
    if (!raw.side) raw.side = otherwise;
    raw.given |= !size.empty() || !format.empty();
    if (!size.empty()) {
        char behind;
        if (std::sscanf(size.c_str(), "%9dx%9d%c", &raw.size.width, &raw.size.height, &behind) != 2 ||
            raw.size.width < 1 || raw.size.height < 1)
            throw UsageError("--size " + size + " is no size: --size 640x480");
    }
    if (!format.empty()) {
        raw.side = pictures::sideNamed(format);
        std::vector<std::string> names;
        for (const catalogue::Format& f : catalogue::formats()) names.emplace_back(f.name);
        if (!raw.side) throw UsageError("no pixel format is called " + format + didYouMean(format, names));
    }
    return raw;
}

}  // namespace cli
