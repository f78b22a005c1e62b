// moxcc_bench [--data] [regex] [WIDTHxHEIGHT ...] [--benchmark_* ...]: measures the rows whose name the regex matches,
// at 1280x720 if no size is given; with --data at three sizes, as lines of data.
//
// A row's contenders run as Google Benchmark repetitions in random order, so that a burst of other work on the machine
// hits all alike; the best repetition of each counts. Times are processor time of the one thread.

#include "bench/bench.h"

#include <benchmark/benchmark.h>
#include <dlfcn.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <fstream>
#include <map>
#include <memory>
#include <regex>
#include <stdexcept>

#include "bench/peers.h"

namespace bench {

std::vector<Row>& allRows() {
    static std::vector<Row> rows;
    return rows;
}

namespace {

#ifdef __clang__
constexpr char compiler[] = __VERSION__;
#else
constexpr char compiler[] = "gcc " __VERSION__;
#endif
const std::string kCopy = "copy";

// Keeps the best time of each contender, in seconds.
class BestTimes : public benchmark::BenchmarkReporter {
  public:
    bool ReportContext(const Context&) override { return true; }

    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs) {
            const std::string name = run.run_name.function_name;
            if (run.error_occurred) {
                errors[name] = run.error_message;
            } else if (run.run_type == Run::RT_Iteration) {
                const double time = run.cpu_accumulated_time / double(run.iterations);
                const auto [best, isNew] = times.emplace(name, time);
                if (!isNew) best->second = std::min(best->second, time);
            }
        }
    }

    std::map<std::string, double> times;
    std::map<std::string, std::string> errors;
};

struct LibraryFile {
    std::string name;
    const char* path;
    void* handle;
};

std::vector<LibraryFile> openLibraries() {
    std::vector<LibraryFile> files{{"SSE4.2", MOXCC_FILE_SSE42, nullptr}};
    if (__builtin_cpu_supports("avx2")) files.push_back({"AVX2", MOXCC_FILE_AVX2, nullptr});
    if (__builtin_cpu_supports("avx512bw") && __builtin_cpu_supports("avx512dq") && __builtin_cpu_supports("avx512vl"))
        files.push_back({"AVX-512", MOXCC_FILE_AVX512, nullptr});
    for (LibraryFile& file : files) {
        file.handle = dlopen(file.path, RTLD_NOW | RTLD_LOCAL);
        if (!file.handle) {
            std::fprintf(stderr, "moxcc_bench: %s\n", dlerror());
            std::exit(1);
        }
    }
    return files;
}

void addContender(const std::string& name, const Run& run) {
    benchmark::RegisterBenchmark(name.c_str(), [run](benchmark::State& state) {
        const MoxStatus status = run();
        if (status < 0) state.SkipWithError(("status " + std::to_string(status)).c_str());
        for (auto _ : state) run();
    });
}

// Copies as many bytes as a conversion reads and writes: half of them read, half written.
Run memcpyRun(const Picture& src, const Picture& dst) {
    const size_t size = (src.bytes() + dst.bytes()) / 2;
    const std::shared_ptr<uint8_t[]> from(new uint8_t[size]), to(new uint8_t[size]);
    std::memset(from.get(), 1, size);
    return [=] {
        std::memcpy(to.get(), from.get(), size);
        benchmark::ClobberMemory();
        return moxStatusOk;
    };
}

// The figures: for a person a table, one line per row and size as soon as it is measured, and a summary at the end; or
// the lines of data that docs/measurements/ keeps, with the machine they come from.
class Report {
  public:
    Report(const std::vector<LibraryFile>& files, bool data) : data_(data) {
        for (const LibraryFile& file : files) files_.push_back(file.name);
        if (data_) {
            std::string processor = "unknown processor", line;
            for (std::ifstream info("/proc/cpuinfo"); std::getline(info, line);)
                if (line.starts_with("model name")) processor = line.substr(line.find(':') + 2);
            char today[16];
            const std::time_t now = std::time(nullptr);
            std::strftime(today, sizeof today, "%Y-%m-%d", std::localtime(&now));
            std::printf("# processor\t%s\n# date\t%s\n# compiler\t%s\n# with\t%s\n", processor.c_str(), today, compiler,
                        peerVersions().c_str());
            return;
        }
        std::vector<std::string> names = {"MPix/s, best of the run", "size"}, rule;
        for (const std::string& file : files_) names.push_back(file);
        names.push_back("peers");
        for (const std::string& file : files_) names.push_back(file + "/peer");
        names.push_back(files_.back() + "/copy");
        tableLine(names);
        for (size_t i = 0; i < names.size(); ++i) rule.emplace_back(width(i), '-');
        tableLine(rule);
    }

    void line(const Row& row, MoxiSize size, const BestTimes& best) {
        const double pixels = double(size.width) * size.height;
        const auto time = [&](const std::string& name) {
            const auto found = best.times.find(name);
            return found == best.times.end() ? NAN : found->second;
        };
        const auto speed = [&](const std::string& name) { return text("%.0f", pixels / time(name) * 1e-6); };
        const std::string sizeText = std::to_string(size.width) + "x" + std::to_string(size.height);
        failed_ = failed_ || !best.errors.empty();
        for (const auto& [name, error] : best.errors)
            std::fprintf(stderr, "%s: %s: %s\n", row.name.c_str(), name.c_str(), error.c_str());

        if (data_) {
            std::printf("%s\t%s", row.name.c_str(), sizeText.c_str());
            for (const auto& [name, t] : best.times) std::printf("\t%s=%s", name.c_str(), speed(name).c_str());
            std::printf("\n");
            std::fflush(stdout);
            return;
        }
        double peer = NAN;
        std::string peers;
        for (const auto& [name, t] : best.times) {
            if (name == kCopy || std::ranges::find(files_, name) != files_.end()) continue;
            peers += (peers.empty() ? "" : ", ") + name + " " + speed(name);
            peer = std::fmin(peer, t);
        }
        std::vector<std::string> cells = {row.name, sizeText};
        for (const std::string& file : files_) cells.push_back(speed(file));
        cells.push_back(peers);
        for (const std::string& file : files_) cells.push_back(text("%.2f", peer / time(file)));
        cells.push_back(text("%.0f%%", 100 * time(kCopy) / time(files_.back())));
        tableLine(cells);

        const double ratio = peer / time(files_.back());
        if (std::isnan(ratio)) return;
        logSum_ += std::log(ratio);
        ++compared_;
        if (ratio < 1) slower_.push_back(row.name + " " + sizeText + " " + text("%.2f", ratio));
    }

    bool summary() const {
        if (compared_ > 0) {
            std::printf("\n%d rows with a peer: %s is %.2f times the best peer in the geometric mean", compared_,
                        files_.back().c_str(), std::exp(logSum_ / compared_));
            std::printf(slower_.empty() ? ", slower in none\n" : ", slower in %zu:\n\n", slower_.size());
            for (const std::string& row : slower_) std::printf("    %s\n", row.c_str());
        }
        return !failed_;
    }

  private:
    // The columns are the row, the size, the files, the peers, then ratios.
    size_t width(size_t column) const {
        const size_t peers = 2 + files_.size();
        return column == 0 ? 46 : column == 1 ? 9 : column < peers ? 7 : column == peers ? 44 : 12;
    }
    void tableLine(const std::vector<std::string>& cells) const {
        for (size_t i = 0; i < cells.size(); ++i) {
            const bool words = i == 0 || i == 2 + files_.size();
            std::printf(words ? "| %-*s " : "| %*s ", int(width(i)), cells[i].c_str());
        }
        std::puts("|");
        std::fflush(stdout);
    }

    static std::string text(const char* format, double value) {
        if (std::isnan(value)) return "-";
        char buffer[32];
        std::snprintf(buffer, sizeof buffer, format, value);
        return buffer;
    }

    std::vector<std::string> files_;  // of the library, by name, the widest last
    bool data_;
    double logSum_ = 0;
    int compared_ = 0;
    std::vector<std::string> slower_;
    bool failed_ = false;
};

void measure(const Row& row, MoxiSize size, const std::vector<LibraryFile>& files, Report& report) {
    Picture src(row.src, size), dst(row.dst, size);
    row.fill(src);
    row.fill(dst);  // the source of a form that works in place

    BestTimes best;
    benchmark::ClearRegisteredBenchmarks();
    for (const LibraryFile& file : files) {
        if (void* symbol = dlsym(file.handle, row.symbol.c_str())) {
            addContender(file.name, row.prepare(symbol, src, dst));
        } else {
            best.errors[file.name] = "not in this library file";
        }
    }
    for (const Peer& peer : row.peers) {
        try {
            const Run run = peer.prepare(src, dst);
            if (run() < 0) throw std::runtime_error("fails");
            addContender(peer.name, run);
        } catch (const std::exception& error) {  // odd sizes, most often
            std::fprintf(stderr, "%s: %s cannot: %s\n", row.name.c_str(), peer.name.c_str(), error.what());
        }
    }
    addContender(kCopy, memcpyRun(src, dst));
    benchmark::RunSpecifiedBenchmarks(&best, "all");
    report.line(row, size, best);
}

int benchMain(int argc, char** argv) {
    // Defaults that the command line may override.
    std::vector<char*> arguments{argv[0]};
    std::string defaults[] = {"--benchmark_enable_random_interleaving=true", "--benchmark_repetitions=15",
                              "--benchmark_min_time=0.01"};
    for (std::string& flag : defaults) arguments.push_back(flag.data());
    arguments.insert(arguments.end(), argv + 1, argv + argc);
    int count = int(arguments.size());
    benchmark::Initialize(&count, arguments.data());

    bool data = false;
    std::regex wanted(".");
    std::vector<MoxiSize> sizes;
    for (int i = 1; i < count; ++i) {
        MoxiSize size;
        int length = 0;
        if (!std::strcmp(arguments[size_t(i)], "--data")) {
            data = true;
        } else if (std::sscanf(arguments[size_t(i)], "%dx%d%n", &size.width, &size.height, &length) == 2 &&
                   arguments[size_t(i)][length] == 0 && size.width > 0 && size.height > 0) {
            sizes.push_back(size);
        } else {
            wanted = std::regex(arguments[size_t(i)]);
        }
    }
    if (sizes.empty()) {
        sizes = {{1280, 720}};
        if (data) sizes = {{64, 64}, {1280, 720}, {3840, 2160}};  // what a call costs, a picture, what memory allows
    }

#if MOXCC_BENCH_OPENCV
    cv::setNumThreads(1);
#endif
    const std::vector<LibraryFile> files = openLibraries();
    Report report(files, data);
    for (const Row& row : allRows()) {
        if (!std::regex_search(row.name, wanted)) continue;
        for (const MoxiSize size : sizes) measure(row, size, files, report);
    }
    return report.summary() ? 0 : 1;
}

}  // namespace
}  // namespace bench

int main(int argc, char** argv) {
    try {
        return bench::benchMain(argc, argv);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "moxcc_bench: %s\n", error.what());
        return 2;
    }
}
