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
    const bool written = status >= 0 && status != moxStatusNoOperation;
    progress("");
    std::printf("  %-44s %5d x %-5d %-13s", name, size.width, size.height, statusText(status).c_str());
    if (written) std::printf(" %8.0f MPix/s", double(size.width) * size.height / seconds * 1e-6);
    std::printf("\n");
    std::fflush(stdout);
    lastFunction_ = name;
    note_.clear();
    return written;
}

void Demo::note(const std::string& text) {
    std::printf("      %s\n", text.c_str());
    note_ += (note_.empty() ? "" : ", ") + text;
}

template <class T>
void Demo::showAny(const std::string& name, const std::string& caption, const Image<T>& image) {
    progress(name_ + ": writing " + name + ".png");
    writePng(folder_ / (name + ".png"), image);
    sheet_.tile(caption, note_.empty() ? lastFunction_ : lastFunction_ + "\n" + note_, depth<Mox8u>(image));
    note_.clear();
    progress("");
}

void Demo::show(const std::string& name, const std::string& caption, const Image8& image) {
    showAny(name, caption, image);
}

void Demo::show(const std::string& name, const std::string& caption, const Image16& image) {
    showAny(name, caption, image);
}

std::string decibels(double psnr) {
    if (std::isinf(psnr)) return "equal";
    char text[32];
    std::snprintf(text, sizeof text, "PSNR %.1f dB", psnr);
    return text;
}

}  // namespace demo
