#include "support/plane.h"

#include <sys/mman.h>

#include <algorithm>
#include <cinttypes>
#include <cmath>
#include <cstdio>
#include <stdexcept>

#include "support/library.h"

namespace moxtest {
namespace {

constexpr size_t pageSize = 4096;
constexpr int reported = 5;

size_t wholePages(size_t bytes) { return std::max((bytes + pageSize - 1) / pageSize, size_t{1}) * pageSize; }

uint8_t* mapBetweenGuards(size_t size) {
    void* const all = mmap(nullptr, size + 2 * pageSize, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (all == MAP_FAILED) throw std::runtime_error("mmap failed");
    uint8_t* const pages = static_cast<uint8_t*>(all) + pageSize;
    if (mprotect(pages, size, PROT_READ | PROT_WRITE)) throw std::runtime_error("mprotect failed");
    return pages;
}

template <class T>
T load(const uint8_t* from) {
    T value;
    std::memcpy(&value, from, sizeof(T));
    return value;
}

template <class T>
bool isNan(const uint8_t* sample) {
    if constexpr (std::is_floating_point_v<T>) {
        return std::isnan(load<T>(sample));
    } else {
        return false;
    }
}

template <class T>
std::string show(const uint8_t* sample) {
    const T value = load<T>(sample);
    char text[80];
    if constexpr (std::is_same_v<T, float>) {
        std::snprintf(text, sizeof text, "%.9g (0x%08" PRIX32 ")", static_cast<double>(value), load<uint32_t>(sample));
    } else if constexpr (std::is_same_v<T, double>) {
        std::snprintf(text, sizeof text, "%.17g (0x%016" PRIX64 ")", value, load<uint64_t>(sample));
    } else {
        std::snprintf(text, sizeof text, "%lld", static_cast<long long>(value));
    }
    return text;
}

// The first few of a list of differences, and how many there are.
class Report {
  public:
    void add(const std::string& line) {
        if (++count_ <= reported) lines_ += "\n  " + line;
    }
    ::testing::AssertionResult result() const {
        if (count_ == 0) return ::testing::AssertionSuccess();
        ::testing::AssertionResult failure = ::testing::AssertionFailure() << describe(lastCall()) << ":" << lines_;
        if (count_ > reported) failure << "\n  and " << count_ - reported << " more";
        return failure;
    }

  private:
    int count_ = 0;
    std::string lines_;
};

std::string marginText(const PlaneBytes::Position& at, uint8_t got, uint8_t want) {
    char text[120];
    std::snprintf(text, sizeof text, "margin byte %d of row %d changed from 0x%02X to 0x%02X", at.x, at.y, want, got);
    return text;
}

}  // namespace

Layout Layout::random(Random& random, int unit) {
    Layout layout;
    layout.guard = random.oneOf({Guard::before, Guard::after, Guard::after, Guard::none});
    layout.gap = random.oneIn(4) ? 0 : unit * static_cast<int>(random.between(1, 70));
    layout.bottomUp = random.oneIn(4);
    layout.offset = unit * static_cast<int>(random.between(0, 63 / unit));
    return layout;
}

PlaneBytes::PlaneBytes(int rowBytes, int rows, const Layout& layout)
    : rowBytes_(rowBytes), rows_(rows), layout_(layout) {
    constexpr size_t apart = 64;
    const size_t span = rows > 0 ? static_cast<size_t>(pitch()) * static_cast<size_t>(rows - 1) +
                                       static_cast<size_t>(std::max(rowBytes, 0))
                                 : 0;
    const size_t offset = static_cast<size_t>(layout.offset);
    size_ = wholePages(layout.guard == Guard::none ? span + 2 * apart + offset : span);
    pages_ = mapBetweenGuards(size_);
    lowest_ = layout.guard == Guard::before  ? pages_
              : layout.guard == Guard::after ? pages_ + (size_ - span)
                                             : pages_ + apart + offset;
}

PlaneBytes::PlaneBytes(const PlaneBytes& other) : PlaneBytes(other.rowBytes_, other.rows_, other.layout_) {
    std::memcpy(pages_, other.pages_, size_);
}

PlaneBytes::~PlaneBytes() { munmap(pages_ - pageSize, size_ + 2 * pageSize); }

void PlaneBytes::protect(bool readOnly) {
    if (mprotect(pages_, size_, readOnly ? PROT_READ : PROT_READ | PROT_WRITE)) throw std::runtime_error("mprotect");
}

PlaneBytes::Position PlaneBytes::position(size_t index) const {
    const ptrdiff_t fromLowest = pages_ + index - lowest_;
    const ptrdiff_t last = std::max(rows_ - 1, 0);
    const ptrdiff_t inMemory = pitch() > 0 ? std::clamp<ptrdiff_t>(fromLowest / pitch(), 0, last) : 0;
    const int x = static_cast<int>(fromLowest - inMemory * pitch());
    return {rows_ > 0 && x >= 0 && x < rowBytes_, memoryRow(static_cast<int>(inMemory)), x};
}

bool bytesEqual(const PlaneBytes& a, const PlaneBytes& b) { return std::ranges::equal(a.all(), b.all()); }

namespace detail {

SampleType sampleType(int bytes, bool floating, bool isSigned) {
    const auto of = []<class T>(T) -> SampleType { return {sizeof(T), isNan<T>, show<T>}; };
    if (floating) return bytes == 4 ? of(float()) : of(double());
    if (isSigned) return bytes == 2 ? of(int16_t()) : of(int32_t());
    return bytes == 1 ? of(uint8_t()) : bytes == 2 ? of(uint16_t()) : of(uint32_t());
}

::testing::AssertionResult same(const PlaneBytes& got, const PlaneBytes& want, int channels, const SampleType& type,
                                Nan nan) {
    const std::span<uint8_t> gotBytes = got.all(), wantBytes = want.all();
    if (gotBytes.size() != wantBytes.size() || got.step() != want.step()) {
        return ::testing::AssertionFailure() << "the planes lie differently: make one a copy of the other";
    }
    Report report;
    size_t seen = 0;  // bytes already told about, as part of a sample
    if (!bytesEqual(got, want)) {
        for (size_t i = 0; i < gotBytes.size(); ++i) {
            if (gotBytes[i] == wantBytes[i] || i < seen) continue;
            const PlaneBytes::Position at = got.position(i);
            if (!at.inRow) {
                report.add(marginText(at, gotBytes[i], wantBytes[i]));
                continue;
            }
            const int sample = at.x / type.bytes;
            const uint8_t* const gotSample = got.rowStart(at.y) + sample * type.bytes;
            const uint8_t* const wantSample = want.rowStart(at.y) + sample * type.bytes;
            seen = i - static_cast<size_t>(at.x % type.bytes) + static_cast<size_t>(type.bytes);
            if (nan == Nan::anyNan && type.nan(gotSample) && type.nan(wantSample)) continue;
            report.add("column " + std::to_string(sample / channels) + ", row " + std::to_string(at.y) + ", channel " +
                       std::to_string(sample % channels) + ": expected " + type.show(wantSample) + ", got " +
                       type.show(gotSample));
        }
    }
    return report.result();
}

}  // namespace detail

::testing::AssertionResult sameMargins(const PlaneBytes& got, const PlaneBytes& before) {
    const std::span<uint8_t> gotBytes = got.all(), beforeBytes = before.all();
    Report report;
    for (size_t i = 0; i < gotBytes.size(); ++i) {
        if (gotBytes[i] == beforeBytes[i]) continue;
        const PlaneBytes::Position at = got.position(i);
        if (!at.inRow) report.add(marginText(at, gotBytes[i], beforeBytes[i]));
    }
    return report.result();
}

}  // namespace moxtest
