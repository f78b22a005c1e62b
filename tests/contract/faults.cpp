#include "contract/faults.h"

#include <algorithm>
#include <climits>
#include <cmath>

namespace moxtest {

std::vector<Fault> faultsOf(const Export& e) {
    std::vector<Fault> all;
    const auto add = [&](Check test, size_t parameter, double value = 0) {
        if (e.tested(test)) all.push_back({test, static_cast<int>(parameter), value});
    };
    for (size_t i = 0; i < e.parameters.size(); ++i) {
        const Parameter& p = e.parameters[i];
        if (p.role == Parameter::image || p.role == Parameter::result || p.role == Parameter::images)
            add(Check::pointers, i);
        if (p.role == Parameter::images)
            for (int plane = 0; plane < 3; ++plane) add(Check::planes, i, plane);
        if (p.role == Parameter::weights) add(Check::weights, i);
        if (p.role == Parameter::steps) add(Check::stepArrays, i);
        if (p.role == Parameter::step && p.side < 2)
            for (const double step : {0, -1, INT_MIN}) add(Check::steps, i, step), add(Check::rowLengths, i, step);
        if (p.role == Parameter::buffer) add(Check::buffer, i);
        if (p.meaning == Value::upperLimit)
            for (const double limit : {-1e30, -1.0, 0.0}) add(Check::range, i, limit);
        if (p.meaning != Value::none && e.tested(Check(p.meaning))) {
            for (const double bad : valueKind(p.meaning).bad) add(Check(p.meaning), i, bad);
            if (p.meaning == Value::levels) add(Check(Value::levels), i, e.mostLevels + 1);
        }
        if (p.kind == Parameter::size) {
            for (const double width : {e.least.width - 1.0, 0.0, -1.0, double(INT_MIN)})
                if (e.least.width != INT_MIN) add(Check::size, i, width);
            for (const double height : {e.least.height - 1.0, 0.0, -1.0, double(INT_MIN)})
                if (e.least.height != INT_MIN) add(Check::size, i, height + 0.5);  // half: of the height
        }
    }
    return all;
}

void inject(const Fault& fault, std::vector<Argument>& arguments) {
    Argument& argument = arguments[static_cast<size_t>(fault.parameter)];
    const double floor = std::floor(fault.value);
    switch (char(fault.test)) {
        case char(Check::pointers):
        case char(Check::weights):
        case char(Check::stepArrays):
        case char(Check::buffer):
            argument.pointer = nullptr;
            break;
        case char(Check::planes):
            if (argument.pointer) static_cast<void**>(argument.pointer)[static_cast<size_t>(fault.value)] = nullptr;
            break;
        case char(Check::size):
            (floor == fault.value ? argument.size.width : argument.size.height) = static_cast<int>(floor);
            break;
        default:
            argument.number = fault.value;
    }
}

double number(const Export& e, Value value, std::span<const Argument> arguments) {
    for (size_t i = 0; i < e.parameters.size(); ++i)
        if (e.parameters[i].meaning == value) return arguments[i].number;
    return 0;
}

MoxStatus expectedStatus(const Export& e, std::span<const Argument> arguments) {
    MoxiSize size = {};
    for (size_t i = 0; i < e.parameters.size(); ++i)
        if (e.parameters[i].kind == Parameter::size) size = arguments[i].size;
    const auto value = [&](Value v) { return number(e, v, arguments); };
    const auto anyOf = [&](Parameter::Role role, const auto& condition) {
        for (size_t i = 0; i < e.parameters.size(); ++i)
            if (e.parameters[i].role == role && condition(arguments[i])) return true;
        return false;
    };
    const auto null = [](const Argument& a) { return !a.pointer; };
    const auto notPositive = [](const Argument& a) { return a.number < 1; };
    const auto planeNull = [](const Argument& a) {
        void* const* const array = static_cast<void* const*>(a.pointer);
        return !array[0] || !array[1] || !array[2];
    };
    const auto fails = [&](Check test) -> MoxStatus {
        switch (char(test)) {
            case char(Check::pointers):
                return anyOf(Parameter::image, null) || anyOf(Parameter::result, null) || anyOf(Parameter::images, null)
                           ? moxStatusNullPtr
                           : 0;
            case char(Check::weights):
                return anyOf(Parameter::weights, null) ? moxStatusNullPtr : 0;
            case char(Check::planes):
                return anyOf(Parameter::images, planeNull) ? moxStatusNullPtr : 0;
            case char(Check::stepArrays):
                return anyOf(Parameter::steps, null) ? moxStatusNullPtr : 0;
            case char(Check::size):
                return size.width < e.least.width || size.height < e.least.height ? moxStatusBadSize : 0;
            case char(Check::anySize):
                return size.width < 1 || size.height < 1 ? moxStatusBadSize : 0;
            case char(Check::wholeCells):
                return size.width % e.cell.width || size.height % e.cell.height ? moxStatusBadSize : 0;
            case char(Check::steps):
                return anyOf(Parameter::step, notPositive) ? moxStatusBadStep : 0;
            case char(Check::rowLengths):
                return anyOf(Parameter::step, notPositive) ? moxStatusBadSize : 0;
            case char(Check::range): {
                const float range =
                    static_cast<float>(value(Value::upperLimit)) - static_cast<float>(value(Value::lowerLimit));
                return range <= 0 ? moxStatusBadRange : 0;
            }
            case char(Check::buffer): {
                const bool used = value(Value::bitDither) == 3 ||
                                  (value(Value::dither) > 0 && (value(Value::dither) < 4 || value(Value::noise) > 0));
                return used && anyOf(Parameter::buffer, null) ? moxStatusNullPtr : 0;
            }
            case char(Check::oddSize):
                return size.width % e.cell.width || size.height % e.cell.height ? moxStatusOddSize : 0;
            case char(Value::levels):
                return value(Value::levels) < 2 || value(Value::levels) > e.mostLevels ? moxStatusBadLevels : 0;
            default: {
                const ValueKind& kind = valueKind(Value(test));
                return std::ranges::count(kind.bad, value(kind.value)) ? kind.otherwise : 0;
            }
        }
    };
    for (const char test : e.tests)
        if (const MoxStatus status = fails(Check(test))) return status;
    return moxStatusOk;
}

}  // namespace moxtest
