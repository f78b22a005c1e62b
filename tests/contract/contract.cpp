#include "contract/contract.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstring>

#include "catalogue/call.h"
#include "support/float_env.h"

namespace moxtest {
namespace {

template <class T>
void put(std::vector<uint8_t>& bytes, size_t at, T value) {
    std::memcpy(&bytes[at], &value, sizeof(T));
}

// Samples of one kind: any, or the ends of the range only, or all equal; floats from 0 to 1, some of them any.
void fill(std::vector<uint8_t>& bytes, int sampleBytes, bool floating, Random& random) {
    const bool wild = random.oneIn(8), flat = random.oneIn(8);
    const auto fillAs = [&]<class T>(T) {
        const auto draw = [&]() -> T {
            if constexpr (std::is_floating_point_v<T>)
                if (wild && random.oneIn(4)) return random.oneIn(2) ? random.special<T>() : random.anyBits<T>();
            return random.sample<T>();
        };
        const T first = draw();
        for (size_t at = 0; at < bytes.size(); at += sizeof(T)) put(bytes, at, flat ? first : draw());
    };
    if (floating)
        sampleBytes == 4 ? fillAs(float()) : fillAs(double());
    else
        sampleBytes == 1 ? fillAs(uint8_t()) : sampleBytes == 2 ? fillAs(uint16_t()) : fillAs(uint32_t());
}

int drawSide(Random& random, int least, int most) {
    if (least == INT_MIN)
        return random.oneIn(8) ? random.oneOf({0, -1, INT_MIN}) : static_cast<int>(random.between(1, most));
    if (random.oneIn(6)) return 16 * static_cast<int>(random.between(1, most / 16 + 1));
    return least + static_cast<int>(random.between(0, most));
}

double drawNumber(const Export& form, const Parameter& p, Random& random) {
    const std::vector<double>& good = valueKind(p.meaning).good;
    if (p.meaning == Value::levels)
        return static_cast<double>(random.between(2, random.oneIn(2) ? 16 : form.mostLevels));
    if ((p.meaning == Value::alpha || p.meaning == Value::threshold) && !p.floating)
        return static_cast<double>(random.between(0, 255));
    if (p.floating && random.oneIn(8)) return random.special<float>();
    return good[random.bits() % good.size()];
}

}  // namespace

Inputs::Inputs(const Export& f, Random& random) : form(&f), arguments(f.parameters.size()) {
    const int widest = random.oneIn(8) ? 300 : 70;
    MoxiSize drawn = {drawSide(random, f.least.width, widest), drawSide(random, f.least.height, 6)};
    if (f.tested(Check::wholeCells))
        drawn.width -= drawn.width % f.cell.width, drawn.height -= drawn.height % f.cell.height;
    if (f.takesRegion()) drawn.height = drawSide(random, f.least.height, 30);
    size[0] = size[1] = drawn;
    for (size_t i = 0; i < arguments.size(); ++i) {
        const Parameter& p = f.parameters[i];
        Argument& argument = arguments[i];
        if (p.kind == Parameter::size) argument.size = drawn;
        if (p.meaning != Value::none) argument.number = drawNumber(f, p, random);
        if (p.kind != Parameter::rect) continue;
        MoxiRect& roi = argument.rect;
        roi.x = static_cast<int>(random.between(0, drawn.width - 1));
        roi.y = static_cast<int>(random.between(0, drawn.height - 1));
        if (random.oneIn(3)) roi = {};
        size[1] = {drawn.width - roi.x, drawn.height - roi.y};
        if (random.oneIn(2)) size[1].width = static_cast<int>(random.between(1, size[1].width));
        if (random.oneIn(2)) size[1].height = static_cast<int>(random.between(1, size[1].height));
        roi.width = size[1].width, roi.height = size[1].height;
    }
    const double slice = number(f, Value::slice, arguments);
    if (slice == 1 || slice == 4 || slice == 16) rowsAround = 4;
    for (const int side : {0, 1}) {
        for (size_t i = 0; i < f.sides[side].planes.size(); ++i) {
            const auto p = std::ranges::find_if(f.parameters, [&](const Parameter& q) {
                return q.side == side && (q.role == Parameter::image || q.role == Parameter::images);
            });
            const int rows = f.rows(side, i, size[side].height);
            const int rowBytes =
                f.rowBytes(side, i, size[side].width, static_cast<int>(number(f, Value::firstBit, arguments)));
            bytes[side].emplace_back(static_cast<size_t>(rowBytes) * static_cast<size_t>(rows + 2 * rowsAround));
            fill(bytes[side].back(), p->bytes, p->floating, random);
        }
    }
    for (const Parameter& p : f.parameters) {
        if (p.role != Parameter::weights) continue;
        const bool optional = !f.needsWeights;
        weights.resize(optional && random.oneIn(8) ? 0 : static_cast<size_t>(f.weights * p.bytes));
        const auto fillAs = [&]<class T>(T) {
            for (size_t at = 0; at < weights.size(); at += sizeof(T))
                put(weights, at, random.oneIn(9) ? random.special<T>() : random.uniform(T(-1), T(1)));
        };
        p.bytes == 4 ? fillAs(float()) : fillAs(double());
    }
    buffer = random.oneIn(2);
}

namespace {
PlaneBytes* place(std::vector<std::unique_ptr<PlaneBytes>>& where, int rowBytes, int rows, const Layout& layout) {
    return where.emplace_back(std::make_unique<PlaneBytes>(rowBytes, rows, layout)).get();
}
}  // namespace

Scene::Scene(const Inputs& inputs, Random& random) : arguments(inputs.arguments), inputs_(&inputs) {
    const Export& f = form();
    const bool forward = f.tested(Check::steps) || f.tested(Check::rowLengths);
    const auto has = [&](Parameter::Role role, int side) {
        return std::ranges::any_of(f.parameters, [&](const Parameter& p) { return p.role == role && p.side == side; });
    };
    const bool aligned = random.oneIn(4);  // all rows on 64
    for (const int side : {0, 1}) {
        const auto p =
            std::ranges::find_if(f.parameters, [&](const Parameter& q) { return q.side == side && q.bytes; });
        const Layout shared = Layout::random(random, p == f.parameters.end() ? 1 : p->bytes);
        for (size_t i = 0; i < inputs.bytes[side].size(); ++i) {
            const std::vector<uint8_t>& bytes = inputs.bytes[side][i];
            const int rows = f.rows(side, i, inputs.size[side].height) + 2 * inputs.rowsAround;
            const int rowBytes = rows ? static_cast<int>(bytes.size()) / rows : 0;
            Layout layout = Layout::random(random, p->bytes);
            if (has(Parameter::images, side) && !has(Parameter::steps, side))
                layout.gap = shared.gap, layout.bottomUp = shared.bottomUp;
            if (!has(Parameter::step, side) && !has(Parameter::steps, side)) layout.gap = 0, layout.bottomUp = false;
            if (forward) layout.bottomUp = false;
            if (aligned)
                layout = {.gap = layout.gap ? -rowBytes & 63 : 0, .bottomUp = layout.bottomUp, .guard = Guard::none};
            PlaneBytes& plane = *place(planes_[side], rowBytes, rows, layout);
            std::ranges::generate(plane.all(), [&] { return static_cast<uint8_t>(random.bits()); });
            for (int y = 0; y < rows; ++y)
                std::copy_n(bytes.begin() + static_cast<ptrdiff_t>(y) * rowBytes, rowBytes, plane.rowStart(y));
            if (side == 0)
                plane.protect();
            else
                before_.push_back(std::make_unique<PlaneBytes>(plane));
            pointers_[side][i] = plane.rowStart(inputs.rowsAround);
            steps_[side][i] = plane.step();
        }
    }
    const PlaneBytes* buffer = nullptr;
    for (size_t i = 0; i < arguments.size(); ++i) {
        const Parameter& p = f.parameters[i];
        Argument& argument = arguments[i];
        switch (p.role) {
            case Parameter::image:
                argument.pointer = pointers_[p.side][p.plane];
                break;
            case Parameter::images:
                argument.pointer = arrays_[p.side];
                break;
            case Parameter::steps:
                argument.pointer = steps_[p.side];
                break;
            case Parameter::step:
                argument.number = p.side == 2 ? buffer->step() : steps_[p.side][std::max(p.plane, 0)];
                if (f.steps == StepUnit::samples) argument.number /= p.bytes;
                break;
            case Parameter::result:
                argument.pointer = place(others_, p.bytes, 1, {})->rowStart(0);
                break;
            case Parameter::weights:
                if (inputs.weights.empty()) break;
                argument.pointer = place(others_, static_cast<int>(inputs.weights.size()), 1, {})->rowStart(0);
                std::ranges::copy(inputs.weights, static_cast<uint8_t*>(argument.pointer));
                others_.back()->protect();
                break;
            case Parameter::buffer:
                if (f.is("*AHD*")) {
                    const int sample = f.sides[0].sampleBytes;
                    buffer = place(others_, (std::max(inputs.size[1].width, 6) + 8) * sample, 30,
                                   Layout::random(random, sample));
                } else {
                    Values values;
                    values.dither =
                        static_cast<int>(number(f, Value::dither, arguments) + number(f, Value::bitDither, arguments));
                    values.noise = static_cast<int>(number(f, Value::noise, arguments));
                    const int64_t bytes = f.bufferBytes(inputs.size[0], values);
                    if (!bytes && !inputs.buffer) break;
                    buffer = place(others_, static_cast<int>(bytes), 1, Layout::random(random, 1));
                }
                argument.pointer = buffer->rowStart(0);
                break;
            default:
                break;
        }
    }
    given_ = arguments;
}

void Scene::restore() {
    arguments = given_;
    for (const int side : {0, 1}) std::ranges::copy(pointers_[side], arrays_[side]);
    for (size_t i = 0; i < planes_[1].size(); ++i) std::ranges::copy(before_[i]->all(), planes_[1][i]->all().begin());
}

std::vector<uint8_t> Scene::result() const {
    std::vector<uint8_t> bytes;
    for (const auto& plane : planes_[1])
        for (int y = 0; y < plane->rows(); ++y)
            bytes.insert(bytes.end(), plane->rowStart(y), plane->rowStart(y) + plane->rowBytes());
    return bytes;
}

std::string Scene::strayWrites(bool anywhere) const {
    for (size_t i = 0; i < planes_[1].size(); ++i) {
        if (anywhere || bytesEqual(*planes_[1][i], *before_[i])) {
            if (!bytesEqual(*planes_[1][i], *before_[i])) return "wrote to plane " + std::to_string(i);
            continue;
        }
        const auto margins = sameMargins(*planes_[1][i], *before_[i]);
        if (!margins) return "plane " + std::to_string(i) + ": " + margins.message();
    }
    return "";
}

MoxStatus call(const Library& lib, const Export& form, std::span<const Argument> arguments) {
    CallNote note{form.name.c_str(), lib.name(), {}};
    for (size_t i = 0; i < arguments.size(); ++i)
        if (form.parameters[i].kind == Parameter::size) note.roi = arguments[i].size;
    const CallScope scope(note);
    return form.invoke(lib.symbol(form.name.c_str()), arguments);
}

bool sameResult(const Export& form, const std::vector<uint8_t>& a, const std::vector<uint8_t>& b) {
    if (a == b) return true;
    const auto equal = [&]<class T>(T) {
        for (size_t at = 0; at < a.size(); at += sizeof(T)) {
            T x, y;
            std::memcpy(&x, &a[at], sizeof(T));
            std::memcpy(&y, &b[at], sizeof(T));
            if (std::memcmp(&x, &y, sizeof(T)) != 0 && !(std::isnan(x) && std::isnan(y))) return false;
        }
        return true;
    };
    for (const Parameter& p : form.parameters)
        if (p.side == 1 && p.floating && p.kind != Parameter::number)
            return p.bytes == 4 ? equal(float()) : equal(double());
    return false;
}

std::string breach(const Export& form, Random& random) {
    std::vector<Fault> injected;
    const std::vector<Fault> faults = faultsOf(form);
    if (!faults.empty() && random.oneIn(4))
        for (int i = 0; i < 2; ++i) injected.push_back(faults[random.bits() % faults.size()]);
    const uint32_t control = random.oneOf({mxcsr::usual, mxcsr::usual, mxcsr::down, mxcsr::up,
                                           mxcsr::towardZero | mxcsr::flushToZero | mxcsr::denormalsAreZero});
    const uint16_t x87 = random.oneOf<uint16_t>({0x037F, 0x027F, 0x0C7F});
    Random lying(random.bits());
    const Inputs inputs(form, random);

    std::vector<uint8_t> first;
    for (int i = 0; i < 2; ++i) {
        Scene scene(inputs, lying);
        std::vector<uint8_t> firstFile;
        for (const Library& lib : libraries()) {
            const auto told = [&](const std::string& what) {
                return describe(lastCall()) + ", " + roundingName(control) + ": " + what;
            };
            scene.restore();
            for (const Fault& fault : injected) inject(fault, scene.arguments);
            MoxStatus status = 0, expected = 0;
            {
                const X87Scope x87Scope(x87);
                underMxcsr(control, [&] {
                    status = call(lib, form, scene.arguments);
                    expected = expectedStatus(form, scene.arguments);  // a difference of limits depends on the controls
                });
            }
            if (status != expected && !(status == moxStatusNoOperation && form.is("*ToneMap*")))
                return told("status " + std::to_string(status) + " instead of " + std::to_string(expected));
            const std::string stray = scene.strayWrites(status < 0);
            if (!stray.empty()) return told(stray);
            std::vector<uint8_t> result = scene.result();
            if (firstFile.empty()) firstFile = result;
            if (!sameResult(form, result, firstFile)) return told("the files give different results");
            if (first.empty()) first = result;
            if (!form.dependsOnAddresses && !sameResult(form, result, first))
                return told("the result depends on where the planes lie");
        }
    }
    return "";
}

}  // namespace moxtest
