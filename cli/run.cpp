#include <md5.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <memory>

#include "cli/commands.h"
#include "cli/terminal.h"

namespace cli {

using catalogue::Export;
using catalogue::Value;
using catalogue::Values;
using pictures::Error;
using pictures::Frame;

namespace {

using Clock = std::chrono::steady_clock;
using Seconds = std::chrono::duration<double>;

/// Adds the time that f takes.
template <class F>
auto timed(Seconds& sum, F f) {
    const Clock::time_point begin = Clock::now();
    struct End {
        Seconds& sum;
        Clock::time_point begin;
        ~End() { sum += Clock::now() - begin; }
    } end{sum, begin};
    return f();
}

// ---- arguments ------------------------------------------------------------------------------------------------------

double number(const ValueOption& option, const std::string& text) {
    if (option.names) {
        const std::string names = std::string(" ") + option.names + " ";
        int index = 0;
        for (size_t at = 1; at < names.size(); at = names.find(' ', at) + 1, ++index) {
            const std::string word = names.substr(at, names.find(' ', at) - at), name = word.substr(0, word.find('='));
            if (name == text) return name == word ? index : std::atof(&word[name.size() + 1]);
        }
        throw UsageError(std::string(option.name) + " " + text + " is none of:" + names.substr(0, names.size() - 1));
    }
    char* end = nullptr;
    const double value = std::strtod(text.c_str(), &end);
    if (text.empty() || *end) throw UsageError(std::string(option.name) + " " + text + " is no number");
    // Whole numbers go through 32 bits.
    const bool whole =
        option.value != Value::alpha && option.value != Value::lowerLimit && option.value != Value::upperLimit;
    if (!std::isfinite(value) || (whole && (value != std::floor(value) || std::abs(value) > 1e9)))
        throw UsageError(std::string(option.name) + " " + text + " is out of range");
    return value;
}

double opaque(const catalogue::Side& side) {
    return side.floating               ? 1
           : side.depth.ends_with("s") ? std::exp2(8 * side.sampleBytes - 1) - 1
                                       : std::exp2(8 * side.sampleBytes) - 1;
}

/// The values that the export takes, and the memory of its weights.
struct Arguments {
    Arguments(const Export& e, const RunOptions& options) {
        values.alpha = opaque(e.sides[1]);
        values.threshold = 127;
        for (const auto& [option, text] : options.values) {
            if (!option->taken(e)) throw UsageError(shortName(e) + " takes no " + option->name);
            option->set(values, number(*option, text));
        }
        readWeights(e, options.weights);
        if (!options.region.empty()) {
            MoxiRect& r = values.region;
            char behind;
            if (!e.takesRegion()) throw UsageError(shortName(e) + " takes no --region");
            if (std::sscanf(options.region.c_str(), "%9d,%9d,%9d,%9d%c", &r.x, &r.y, &r.width, &r.height, &behind) !=
                    4 ||
                r.x < 0 || r.y < 0 || r.width < 1 || r.height < 1)
                throw UsageError("--region " + options.region + " is no region: --region X,Y,WIDTH,HEIGHT");
        }
    }

    Values values;

  private:
    // "0.299,0.587,0.114", or a file of numbers.
    void readWeights(const Export& e, const std::string& given) {
        const catalogue::Parameter* const parameter = e.parameter(catalogue::Parameter::weights);
        if (given.empty()) {
            if (parameter && e.needsWeights)
                throw UsageError(shortName(e) + " needs --weights: " + std::to_string(e.weights) +
                                 " numbers, or a file of them");
            return;
        }
        if (!parameter) throw UsageError(shortName(e) + " takes no --weights");
        std::string text = given;
        if (given.find_first_not_of("0123456789.,eE+- ") != given.npos || access(given.c_str(), R_OK) == 0)
            naming(given, [&] {
                pictures::Input file(given);
                text.clear();
                for (int c; (c = file.get()) >= 0 && text.size() < 4096;) text += char(c);
            });
        std::ranges::replace(text, ',', ' ');
        const char* at = text.c_str();
        for (char* end; at += std::strspn(at, " \t\r\n"), *at; at = end) {
            const double weight = std::strtod(at, &end);
            if (end == at) throw Error(given + ": '" + std::string(at, std::strcspn(at, " \t\r\n")) + "' is no number");
            doubles_.push_back(weight);
            floats_.push_back(float(weight));
        }
        if (doubles_.size() != size_t(e.weights))
            throw UsageError("--weights: " + std::to_string(doubles_.size()) + " numbers, where " + shortName(e) +
                             " takes " + std::to_string(e.weights));
        values.weights = parameter->bytes == 8 ? static_cast<const void*>(doubles_.data()) : floats_.data();
    }

    std::vector<double> doubles_;
    std::vector<float> floats_;
};

// ---- conversion -----------------------------------------------------------------------------------------------------

[[noreturn]] void refuse(const Export& e, MoxStatus status, MoxiSize size) {
    switch (status) {
        case moxStatusBadSize:
            throw Error("of " + std::to_string(size.width) + "x" + std::to_string(size.height) + ", a size that " +
                        shortName(e) + " does not take: it wants " + std::to_string(std::max(1, e.least.width)) + "x" +
                        std::to_string(std::max(1, e.least.height)) + " or more" +
                        (e.tested(catalogue::Check::wholeCells)
                             ? ", in multiples of " + std::to_string(e.cell.width) + "x" + std::to_string(e.cell.height)
                             : ""));
        case moxStatusBadLevels:
            throw UsageError("--levels: " + shortName(e) + " takes 2 to " + std::to_string(e.mostLevels));
        case moxStatusBadNoise:
            throw UsageError("--noise: 0 to 100 per cent");
        case moxStatusBadDitherType:
            throw UsageError("--dither: " + shortName(e) + " takes none and st only");
        case moxStatusBadRange:
            throw UsageError("--upper must be above --lower");
        default:
            throw Error(shortName(e) + " answered " + std::to_string(status));
    }
}

class Conversion {
  public:
    Conversion(const Export& e, const RunOptions& options)
        : export_(e), arguments_(e, options), threads_(options.threads), pad_(options.pad) {}

    const Frame& operator()(const Frame& picture) {
        const Export& e = export_;
        if (const std::string why = pictures::mismatch(picture.side, e.sides[e.inPlace()]); !why.empty())
            throw Error(why + " by " + shortName(e));
        if (!pad_) {
            convert(picture, result_);
            return result_;
        }
        const auto most = [&](int MoxiSize::*side) {
            return std::max({e.cut.*side, e.cell.*side, e.sides[0].cell.*side, e.sides[1].cell.*side});
        };
        pictures::pad(picture, {most(&MoxiSize::width), most(&MoxiSize::height)}, padded_);
        convert(padded_, whole_);
        result_.shape(e, 1, picture.size);
        pictures::repack(whole_, result_);
        return result_;
    }

    Seconds seconds() const { return seconds_; }
    bool leftPixelsOut() const { return leftOut_ && !pad_; }

  private:
    void convert(const Frame& picture, Frame& result) {
        const Export& e = export_;
        const Values& values = arguments_.values;
        const MoxiRect& region = values.region;
        MoxiSize size = picture.size;
        if (region.width > 0) {
            if (int64_t(region.x) + region.width > size.width || int64_t(region.y) + region.height > size.height)
                throw Error("smaller than the region");
            size = {region.width, region.height};
        }
        const Frame* source = &picture;
        if (!e.inPlace() && (!pictures::alike(picture.side, e.sides[0]) || e.takesNoSteps(0))) {
            source_.shape(e, 0, picture.size);
            pictures::repack(picture, source_);
            source = &source_;
        }
        result.shape(e, 1, size, values.firstBit);
        if (e.inPlace())
            pictures::repack(picture, result);
        else if (e.sides[1].keepsFourth)
            pictures::repackAlpha(picture, result);
        // The fourth channel is the picture's, or the export's own, unless that is the 0 of a layout with alpha.
        const catalogue::Side& to = e.sides[1];
        const bool zero = to.layout == "AC4" && !to.keepsFourth;
        result.alpha = !zero && (picture.alpha || !to.layout.starts_with("A"));
        result.video = picture.video;
        result.siting = picture.siting;
        const MoxStatus status = timed(
            seconds_, [&] { return catalogue::callInBands(e, source->picture(), result.picture(), values, threads_); });
        if (status < 0) refuse(e, status, size);
        if (status == moxStatusNoOperation) throw Error("of a negative mean or maximum: there is no tone to map");
        leftOut_ |= size.width % e.cut.width || size.height % e.cut.height;
    }

    const Export& export_;
    const Arguments arguments_;
    const int threads_;
    const bool pad_;
    Frame source_, padded_, whole_, result_;
    Seconds seconds_{};
    bool leftOut_ = false;
};

// ---- results --------------------------------------------------------------------------------------------------------

// The name of a frame's own file: %d or %04d is its number, from 1 on.
struct Pattern {
    explicit Pattern(const std::string& path) {
        const size_t percent = path.find('%');
        if (percent == path.npos) return;
        const size_t end = path.find_first_not_of("0123456789", percent + 1);
        if (end == path.npos || path[end] != 'd' || end - percent > 3) return;
        before = path.substr(0, percent), behind = path.substr(end + 1);
        digits = std::atoi(&path[percent + 1]);
        several = true;
    }
    std::string name(int64_t index) const {
        std::string number = std::to_string(index);
        if (number.size() < size_t(digits)) number.insert(0, size_t(digits) - number.size(), '0');
        return before + number + behind;
    }
    bool several = false;
    std::string before, behind;
    int digits = 0;
};

class Results {
  public:
    explicit Results(const RunOptions& options) : options_(options), pattern_(options.output) { MD5Init(&md5_); }

    void take(const Frame& frame) {
        ++frames_;
        pixels_ += int64_t(frame.size.width) * frame.size.height;
        size_ = frame.size;
        if (options_.md5)
            for (size_t i = 0; i < frame.planeCount(); ++i)
                MD5Update(&md5_, frame.row(i, 0), size_t(frame.rowBytes[i]) * size_t(frame.rows[i]));
        if (options_.output.empty()) return;
        const std::string path = pattern_.several ? pattern_.name(frames_) : options_.output;
        timed(seconds_, [&] { naming(path == "-" ? "standard output" : path, [&] { write(path, frame); }); });
    }

    void finish() {
        if (output_) naming(output_->name(), [&] { output_->finish(); });
        if (!options_.md5) return;
        char sum[MD5_DIGEST_STRING_LENGTH];
        std::FILE* const to = options_.output == "-" ? stderr : stdout;
        std::fprintf(to, "%s  %s, %lld frame%s of %dx%d\n", MD5End(&md5_, sum), options_.name.c_str(),
                     static_cast<long long>(frames_), frames_ == 1 ? "" : "s", size_.width, size_.height);
    }

    int64_t frames() const { return frames_; }
    int64_t pixels() const { return pixels_; }
    Seconds seconds() const { return seconds_; }

  private:
    void write(const std::string& path, const Frame& frame) {
        if (!output_ || pattern_.several) {
            choose(path, frame);
            output_ = std::make_unique<pictures::Output>(path);
            writer_ = format_ ? format_->write(*output_) : pictures::writeRaw(*output_);
        }
        const Frame* stored = &frame;
        if (format_) {
            const catalogue::Side* side = format_->stores(frame.side, frame.alpha);
            if (!fits(frame, *side)) {
                stored_.shape(*side, frame.size);
                pictures::repack(frame, stored_);
                stored = &stored_;
            }
            if (!options_.rate.empty()) {
                if (stored != &stored_)
                    stored_.shape(*side, frame.size), pictures::repack(frame, stored_), stored = &stored_;
                stored_.video = " F" + options_.rate + " Ip A1:1";
            }
        }
        writer_(*stored);
        if (!format_ && frames_ == 1 && !options_.quiet) describe(path, frame);
        if (pattern_.several) {
            output_->finish();
            output_.reset();
        } else {
            output_->flush();  // whoever reads a pipe has the frame now
        }
    }

    static bool fits(const Frame& frame, const catalogue::Side& side) {
        bool natural = pictures::alike(frame.side, side) && frame.side.channels() == side.channels();
        for (size_t i = 0; natural && i < frame.planeCount(); ++i)
            natural = frame.rowBytes[i] == pictures::rowBytes(side, i, frame.size.width);
        return natural;
    }

    // A file's name decides; else what the samples are as they lie in memory.
    void choose(const std::string& path, const Frame& frame) {
        format_ = options_.raw ? nullptr : pictures::formatNamed(path);
        if (format_ && !format_->stores(frame.side, frame.alpha))
            throw Error("a " + std::string(format_->name) + " does not hold " + pictures::nameOf(frame.side) +
                        "; --raw writes the samples as they are");
        if (!format_ && !options_.raw)
            for (const pictures::Format& format : pictures::formats()) {
                const catalogue::Side* side = format.severalFrames ? format.stores(frame.side, frame.alpha) : nullptr;
                if (side && fits(frame, *side) && pictures::rawFrom(path).side == nullptr) {
                    format_ = &format;
                    break;
                }
            }
    }

    // The line that says how raw samples lie.
    static void describe(const std::string& path, const Frame& frame) {
        std::string text = pictures::nameOf(frame.side) + ", " + std::to_string(frame.size.width) + "x" +
                           std::to_string(frame.size.height);
        for (size_t i = 0; i < frame.planeCount(); ++i)
            text += (i == 0 ? ": " : ", then ") + std::to_string(frame.rows[i]) + " rows of " +
                    std::to_string(frame.rowBytes[i]) + " bytes";
        std::fprintf(stderr, "%s: raw %s\n", path == "-" ? "standard output" : path.c_str(), text.c_str());
    }

    const RunOptions& options_;
    const Pattern pattern_;
    std::unique_ptr<pictures::Output> output_;
    const pictures::Format* format_ = nullptr;
    pictures::Writer writer_;
    Frame stored_;
    MD5_CTX md5_;
    int64_t frames_ = 0, pixels_ = 0;
    MoxiSize size_ = {};
    Seconds seconds_{};
};

int64_t fileBytes(const std::string& path) {
    std::error_code unknown;
    const auto size = std::filesystem::file_size(path, unknown);
    return unknown ? -1 : int64_t(size);
}

}  // namespace

void run(const RunOptions& options) {
    const Export& e = exportNamed(options.name);
    if (!e.converts()) throw UsageError(shortName(e) + " converts nothing");
    if (options.output.empty() && !options.md5 && !options.time)
        throw UsageError("-o is missing: -o picture.png, -o video.y4m, -o frames/%04d.png, -o - for a pipe");
    if (options.output == "-" && isatty(STDOUT_FILENO))
        throw UsageError("standard output is a terminal: -o FILE, or a pipe");
    if (!options.rate.empty() && options.rate.find_first_not_of("0123456789:") != options.rate.npos)
        throw UsageError("--rate " + options.rate + " is no rate: --rate 30000:1001");

    Conversion conversion(e, options);
    Results results(options);
    Progress progress;
    int64_t all = 0, before = 0;
    for (const std::string& path : options.inputs) {
        const int64_t bytes = path == "-" ? -1 : fileBytes(path);
        all = all < 0 || bytes < 0 ? -1 : all + bytes;
    }
    Seconds reading{};
    Frame frame;
    for (const std::string& path : options.inputs) {
        const std::string name = path == "-" ? "standard input" : path;
        const pictures::Raw raw = options.layout.raw(path, &e.sides[e.inPlace()]);
        const auto input = naming(name, [&] { return std::make_unique<pictures::Input>(path); });
        const pictures::Reader read = naming(name, [&] { return pictures::open(*input, raw); });
        while (timed(reading, [&] { return naming(name, [&] { return read(frame); }); })) {
            const Frame& result = naming(name, [&]() -> const Frame& { return conversion(frame); });
            results.take(result);
            progress.show(results.frames(), all > 0 ? double(before + input->position()) / double(all) : -1);
        }
        before += input->position();
    }
    results.finish();
    if (conversion.leftPixelsOut() && !options.quiet)
        std::fprintf(stderr, "moxcc: %s leaves out %s; --pad converts them too\n", shortName(e).c_str(),
                     e.oddSizes().c_str());
    if (options.time)
        std::fprintf(stderr,
                     "%lld frame%s: %.4g MPix/s converting; %.3f s reading, %.3f s converting, %.3f s writing\n",
                     static_cast<long long>(results.frames()), results.frames() == 1 ? "" : "s",
                     double(results.pixels()) / conversion.seconds().count() / 1e6, reading.count(),
                     conversion.seconds().count(), results.seconds().count());
}

}  // namespace cli
