#include "demo.h"

#include <algorithm>
#include <chrono>
#include <cstdio>

#include "progress.h"
#include "sheet.h"

namespace demo {
namespace {

using Clock = std::chrono::steady_clock;

std::string statusText(MoxStatus status) {
    switch (status) {
        case moxStatusOk:
            return "ok";
        case moxStatusNoOperation:
            return "nothing to do";
        case moxStatusOddSize:
            return "ok, odd size";
        case moxStatusBadSize:
            return "too small";
        default:
            return "status " + std::to_string(status);
    }
}

}  // namespace

Demo::Demo(std::string name, Source source, std::filesystem::path folder, Sheet& sheet)
    : name_(std::move(name)), source_(std::move(source)), folder_(std::move(folder)), sheet_(sheet) {}

void Demo::section(const std::string& title) {
    progress("");
    std::printf("%s\n", title.c_str());
    sheet_.heading(name_ + ": " + title);
    drop();
}

bool Demo::run(const char* name, const std::function<MoxStatus()>& call, const std::function<void()>& prepare) {
    progress(name_ + ": " + name);
    // The best of some runs, the first one paying for cold memory.
    constexpr int kRuns = 20;
    constexpr std::chrono::milliseconds kEnough(60);
    MoxStatus status = moxStatusOk;
    Clock::duration best = Clock::duration::max(), total{};
    for (int i = 0; i < kRuns && (i < 3 || total < kEnough) && status >= 0; ++i) {
        if (prepare) prepare();
        const Clock::time_point start = Clock::now();
        status = call();
        const Clock::duration time = Clock::now() - start;
        best = std::min(best, time);
        total += time;
    }
    const MoxiSize size = source_.size();
    const double seconds = std::max(std::chrono::duration<double>(best).count(), 1e-9);
    const double speed = double(size.width) * size.height / seconds * 1e-6;
    const bool written = status >= 0 && status != moxStatusNoOperation;
    progress("");
    std::printf("  %-44s %5d x %-5d %-13s", name, size.width, size.height, statusText(status).c_str());
    if (written) std::printf(" %8.0f MPix/s", speed);
    std::printf("\n");
    std::fflush(stdout);
    if (written) {
        functions_.push_back(name);
        speeds_ += (speeds_.empty() ? "" : " + ") + std::to_string(std::lround(speed));
    }
    return written;
}

void Demo::note(const std::string& text) {
    std::printf("      %s\n", text.c_str());
    notes_ += (notes_.empty() ? "" : ", ") + text;
}

void Demo::detail(const std::string& caption, const Image8& image) { sheet_.tile(caption, {}, image); }

void Demo::drop() {
    functions_.clear();
    notes_.clear();
    speeds_.clear();
}

template <class T>
void Demo::show(const std::string& name, const std::string& caption, const Image<T>& image, MoxiRect part) {
    progress(name_ + ": writing " + name + ".png");
    const Image<T> shown = crop(image, part);
    writePng(folder_ / (name + ".png"), shown);
    std::vector<std::string> details = std::move(functions_);
    if (!speeds_.empty()) details.push_back(speeds_ + " MPix/s");
    if (!notes_.empty()) details.push_back(notes_);
    sheet_.tile(caption, details, depth<Mox8u>(shown));
    drop();
    progress("");
}

template void Demo::show(const std::string&, const std::string&, const Image8&, MoxiRect);
template void Demo::show(const std::string&, const std::string&, const Image16&, MoxiRect);

std::string decibels(double psnr) {
    if (std::isinf(psnr)) return "equal";
    char text[32];
    std::snprintf(text, sizeof text, "PSNR %.1f dB", psnr);
    return text;
}

}  // namespace demo
