#include "support/picture.h"

#include <algorithm>

namespace moxtest {

Picture::Picture(const catalogue::Export& e, int side, MoxiSize size, Random& random, const Values& values,
                 const Layout* layout)
    : side_(&e.sides[side]),
      size_(size),
      reversed_(side_->holds == "BGR"),
      chromaFirst_(side_->holds.starts_with("Cb")),
      crossed_(side_->holds.starts_with("YCr")) {
    const int unit = e.steps == catalogue::StepUnit::bytes ? 1 : side_->sampleBytes;
    if (e.steps == catalogue::StepUnit::roundedDown) lowBits_ = static_cast<int>(random.between(0, unit - 1));
    const bool sharesStep = !e.parameter(catalogue::Parameter::steps, side) && side_->layout != "P2";
    const Layout first = Layout::random(random, unit);
    planes_.reserve(side_->planes.size());
    for (size_t i = 0; i < side_->planes.size(); ++i) {
        Layout own = layout ? *layout : Layout::random(random, unit);
        if (sharesStep && !layout) own.gap = first.gap, own.bottomUp = first.bottomUp;
        if (e.tested(catalogue::Check::steps) || e.tested(catalogue::Check::rowLengths)) own.bottomUp = false;
        if (e.takesNoSteps(side)) own.gap = 0, own.bottomUp = false;
        PlaneBytes& plane =
            planes_.emplace_back(e.rowBytes(side, i, size.width, values.firstBit), e.rows(side, i, size.height), own);
        std::ranges::generate(plane.all(), [&] { return static_cast<uint8_t>(random.bits()); });
    }
}

catalogue::Picture Picture::view() const {
    catalogue::Picture picture = {.size = size_};
    for (size_t i = 0; i < planes_.size(); ++i)
        picture.planes[i] = {planes_[i].rowStart(0), planes_[i].step() + lowBits_};
    return picture;
}

int Picture::inMemory(int colour) const { return reversed_ && colour < 3 ? 2 - colour : colour; }

void Picture::setByte(uint8_t* to, int value) {
    EXPECT_EQ(value, value & 0xFF) << "the reference left the range of a byte";
    *to = static_cast<uint8_t>(value);
}

uint8_t* Picture::channel(int x, int y, int c) const {
    const PlaneBytes& plane = planes_[isPlanar() ? size_t(c) : 0];
    const int channels = isPlanar() ? 1 : side_->channels();
    return plane.rowStart(y) + (x * channels + (isPlanar() ? 0 : c)) * side_->sampleBytes;
}

uint8_t* Picture::lumaByte(int x, int y) const {
    return planes_[0].rowStart(y) + (isPlanar() || side_->channels() == 1 ? x : 2 * x + chromaFirst_);
}

uint8_t* Picture::chromaByte(int cell, int row, int kind) const {
    const int place = kind ^ int(crossed_);
    if (!isPlanar()) return planes_[0].rowStart(row) + 4 * cell + 2 * place + !chromaFirst_;
    if (planes_.size() == 2) return planes_[1].rowStart(row) + 2 * cell + place;
    return planes_[size_t(1 + place)].rowStart(row) + cell;
}

::testing::AssertionResult same(const Picture& got, const Picture& want, Nan nan) {
    const catalogue::Side& side = got.side();
    const detail::SampleType type = detail::sampleType(side.sampleBytes, side.floating, side.depth.ends_with('s'));
    for (size_t i = 0; i < got.planes(); ++i) {
        const int channels = got.planes() > 1 ? 1 : side.channels();
        if (const auto result = detail::same(got[i], want[i], channels, type, nan); !result)
            return ::testing::AssertionFailure() << "plane " << i << ": " << result.message();
    }
    return ::testing::AssertionSuccess();
}

std::vector<const char*> named(const char* pattern) {
    std::vector<const char*> names;
    for (const catalogue::Export& e : catalogue::exports())
        if (e.is(pattern)) names.push_back(e.name.c_str());
    EXPECT_FALSE(names.empty()) << pattern;
    return names;
}

void expectAt(const char* name, MoxiSize size, Random& random, const Reference& reference, const Calls& calls) {
    const catalogue::Export* const e = catalogue::find(name);
    ASSERT_TRUE(e) << name;
    Values values;
    values.alpha = static_cast<double>(random.bits() & 0xFF);
    if (calls.values) values = calls.values(random);
    const Layout layout = calls.source ? calls.source(random) : Layout{};
    Picture src(*e, e->inPlace() ? 1 : 0, size, random, values, calls.source ? &layout : nullptr);
    if (calls.fill) calls.fill(src, random);
    const Picture before = e->inPlace() ? src : Picture(*e, 1, size, random, values);
    const bool outside = size.width % e->cell.width || size.height % e->cell.height;
    const MoxStatus status = e->tested(catalogue::Check::oddSize) && outside ? moxStatusOddSize : moxStatusOk;
    for (size_t i = 0; i < src.planes(); ++i) src[i].protect();
    for (const uint32_t control : calls.roundings) {
        Picture want = before;
        MoxStatus wantStatus = status;
        underMxcsr(control, [&] {
            reference(src, want, values);
            if (calls.status) wantStatus = calls.status(src);
        });
        forEachLibrary([&](const Library& lib) {
            const Picture got = before;
            const CallScope note({name, lib.name(), size});
            const MxcsrScope scope(control);
            ASSERT_EQ(catalogue::call(*e, src.view(), got.view(), values, lib.symbol(name)), wantStatus) << name;
            ASSERT_TRUE(same(got, want, calls.nan)) << roundingName(control);
        });
    }
}

void expect(const char* name, const Reference& reference, const Calls& calls) {
    const catalogue::Export* const e = catalogue::find(name);
    ASSERT_TRUE(e) << name;
    const int from = std::max(calls.fromWidth, e->least.width), least = std::max(e->least.height, 1);
    forEachSize(
        [&](MoxiSize size, Random& random) {
            size.height += least - 1;
            if (e->tested(catalogue::Check::wholeCells)) size = {(size.width + 3) / 4 * 4, (size.height + 3) / 4 * 4};
            expectAt(name, size, random, reference, calls);
        },
        from, calls.toWidth, calls.maxHeight);
}

}  // namespace moxtest
