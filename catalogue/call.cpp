#include "catalogue/call.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <thread>

#include "moxcc/moxcc.h"

namespace catalogue {
namespace {

/// Scratch memory is asked for once a call, at the alignment that most callers have.
using Buffer = std::unique_ptr<uint8_t[]>;

/// The arguments of one call, and the arrays that they point to.
struct Arguments {
    Arguments(const Export& e, const Picture& src, const Picture& dst, const Values& values)
        : list(e.parameters.size()) {
        const Picture* const pictures[] = {&src, &dst};
        for (const int side : {0, 1})
            for (int i = 0; i < 4; ++i) {
                planes[side][i] = pictures[side]->planes[i].data;
                steps[side][i] = pictures[side]->planes[i].step;
            }
        for (size_t i = 0; i < list.size(); ++i) {
            const Parameter& p = e.parameters[i];
            Argument& argument = list[i];
            switch (p.role) {
                case Parameter::image:
                    argument.pointer = planes[p.side][p.plane];
                    break;
                case Parameter::images:
                    argument.pointer = planes[p.side];
                    break;
                case Parameter::steps:
                    argument.pointer = steps[p.side];
                    break;
                case Parameter::step:
                    argument.number = p.side == 2 ? values.bufferStep : steps[p.side][std::max(p.plane, 0)];
                    if (e.steps == StepUnit::samples) argument.number = steps[p.side][0] / p.bytes;
                    break;
                case Parameter::region:
                    argument.size = dst.size;
                    break;
                case Parameter::sourceSize:
                    argument.size = src.size;
                    break;
                case Parameter::roi:
                    argument.rect = values.region;
                    if (argument.rect.width == 0) argument.rect = {0, 0, dst.size.width, dst.size.height};
                    break;
                case Parameter::weights:
                    argument.pointer = const_cast<void*>(values.weights);
                    break;
                case Parameter::buffer:
                    argument.pointer = values.buffer;
                    break;
                default:
                    argument.number = values.of(p.meaning);
            }
        }
    }

    std::vector<Argument> list;
    void* planes[2][4];
    int32_t steps[2][4];
};

/// Rows y to end - 1 of a picture. Null stays null.
Picture rowsOf(const Export& e, int side, Picture picture, int y, int end) {
    for (size_t i = 0; i < e.sides[side].planes.size(); ++i) {
        Plane& plane = picture.planes[i];
        const ptrdiff_t row = y / e.sides[side].planes[i].height;
        ptrdiff_t step = e.takesNoSteps(side) ? e.rowBytes(side, i, picture.size.width) : plane.step;
        if (e.steps == StepUnit::roundedDown) step &= -ptrdiff_t(e.sides[side].sampleBytes);
        if (plane.data) plane.data = static_cast<uint8_t*>(plane.data) + row * step;
    }
    picture.size.height = end - y;
    return picture;
}

}  // namespace

double Values::of(Value value) const {
    switch (value) {
        case Value::alpha:
            return alpha;
        case Value::dither:
        case Value::bitDither:
            return dither;
        case Value::grid:
            return grid;
        case Value::levels:
            return levels;
        case Value::slice:
            return slice;
        case Value::noise:
            return noise;
        case Value::firstBit:
            return firstBit;
        case Value::threshold:
            return threshold;
        case Value::dataType:
            return dataType;
        case Value::lowerLimit:
            return double(lowerLimit);
        case Value::upperLimit:
            return double(upperLimit);
        default:
            return 0;
    }
}

MoxStatus call(const Export& e, const Picture& src, const Picture& dst, const Values& values, void* function) {
    Values own = values;
    Buffer buffer;
    if (!own.buffer && e.converts()) {
        if (const int64_t bytes = e.bufferBytes(dst.size, values); bytes > 0) {
            buffer.reset(new uint8_t[size_t(bytes)]);
            own.buffer = buffer.get();
            own.bufferStep = (std::max(dst.size.width, 6) + 8) * e.sides[0].sampleBytes;
        }
    }
    return e.invoke(function ? function : e.function, Arguments(e, src, dst, own).list);
}

std::vector<int> bandsOf(const Export& e, MoxiSize size, const Values& values, int count) {
    const Cuts cuts = e.cuts(size, values);
    std::vector<int> begins = {0};
    for (int i = 1; cuts.mayBeSplit() && i < count; ++i) {
        const auto wanted = int(int64_t(size.height) * i / count);
        const int y = wanted - (wanted - cuts.phase) % cuts.unit;
        if (y - begins.back() >= cuts.least && y > begins.back()) begins.push_back(y);
    }
    while (begins.size() > 1 && size.height - begins.back() < cuts.least) begins.pop_back();
    begins.push_back(size.height);
    return begins;
}

MoxStatus callInBands(const Export& e, const Picture& src, const Picture& dst, const Values& values, int threads,
                      void* function) {
    const std::vector<int> begins = bandsOf(e, dst.size, values, threads);
    const size_t count = begins.size() - 1;
    if (count == 1) return call(e, src, dst, values, function);

    std::vector<MoxStatus> statuses(count);
    const auto run = [&](size_t i) {
        const int y = begins[i], end = begins[i + 1];
        Values own = values;
        own.buffer = nullptr;  // each band has scratch memory of its own
        Picture from = src;
        if (e.takesRegion()) {
            if (own.region.width == 0) own.region = {0, 0, dst.size.width, dst.size.height};
            own.region.y += y, own.region.height = end - y;
        } else {
            from = rowsOf(e, 0, src, y, end);
        }
        statuses[i] = call(e, from, rowsOf(e, 1, dst, y, end), own, function);
    };
    {
        std::vector<std::jthread> running;
        for (size_t i = 1; i < count; ++i) running.emplace_back(run, i);
        run(0);
    }
    for (const MoxStatus status : statuses)
        if (status < 0) return status;
    return *std::ranges::max_element(statuses);
}

}  // namespace catalogue
