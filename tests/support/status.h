// The order of an export's argument tests, from a table.
//
// A row changes the arguments of a call that would succeed, and names the status that the changed call gives. Rows name
// arguments by their place, so one table serves all exports of a family, whatever their sample types:
//
//     const StatusTable pointersThenSize = {
//         {"source before size", {null(0), size(0, 0)}, moxStatusNullPtr},
//         {"destination before size", {null(2), size(0, 0)}, moxStatusNullPtr},
//         {"width", {size(0, 1)}, moxStatusBadSize},
//         {"height", {size(1, -1)}, moxStatusBadSize},
//         {"any step", {value(1, 0), value(3, -5)}, moxStatusOk},
//     };
//     expectStatuses(MOX_EXPORT(moxiX), {src.data(), src.step(), dst.data(), dst.step(), roi}, {&dst},
//     pointersThenSize);
//
// The planes named after the arguments are the outputs: a call with a negative status must leave every byte of them.
#ifndef SUPPORT_STATUS_H
#define SUPPORT_STATUS_H

#include <functional>
#include <initializer_list>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "support/library.h"
#include "support/plane.h"

namespace moxtest {

/// One change to the arguments of a call; made by the functions below.
struct Change {
    enum class Kind { null, nullPlane, size, value } kind;
    int argument = 0;  // place of the argument, from 0
    int plane = 0;
    MoxiSize roi = {};
    double number = 0;
};

/// The pointer argument is null.
inline Change null(int argument) { return {.kind = Change::Kind::null, .argument = argument}; }
/// One pointer in an array of plane pointers is null. (The array that the test passes must be writable.)
inline Change nullPlane(int argument, int plane) {
    return {.kind = Change::Kind::nullPlane, .argument = argument, .plane = plane};
}
/// The region's size.
inline Change size(int width, int height) { return {.kind = Change::Kind::size, .roi = {width, height}}; }
/// The number argument has this value (a step, a level count, an alpha value).
inline Change value(int argument, double number) {
    return {.kind = Change::Kind::value, .argument = argument, .number = number};
}

struct StatusRow {
    std::string what;
    std::vector<Change> changes;
    MoxStatus expected;
};
using StatusTable = std::vector<StatusRow>;

namespace detail {

template <class T>
inline constexpr bool isPlaneArray = false;
template <class T>
inline constexpr bool isPlaneArray<T* const*> = true;
template <class T>
inline constexpr bool isPlaneArray<T**> = true;

/// Makes a change if it concerns the argument at a place; says whether it did. Adds what undoes a change outside it.
template <class T>
bool apply(const Change& change, int place, T& argument, std::vector<std::function<void()>>& undo) {
    if (change.kind == Change::Kind::size) {
        if constexpr (std::is_same_v<T, MoxiSize>) return argument = change.roi, true;
        return false;
    }
    if (place != change.argument) return false;
    if constexpr (isPlaneArray<T>) {
        if (change.kind == Change::Kind::nullPlane) {
            auto* const plane = const_cast<std::remove_const_t<std::remove_pointer_t<T>>*>(argument) + change.plane;
            undo.push_back([plane, saved = *plane] { *plane = saved; });
            return *plane = nullptr, true;
        }
    }
    if constexpr (std::is_pointer_v<T>) {
        if (change.kind == Change::Kind::null) return argument = nullptr, true;
    } else if constexpr (std::is_arithmetic_v<T>) {
        if (change.kind == Change::Kind::value) return argument = static_cast<T>(change.number), true;
    }
    return false;
}

/// Calls the function with the row's changes to the good arguments.
template <class... Args>
MoxStatus callChanged(const Function<MoxStatus(Args...)>& function, std::tuple<Args...> args, const StatusRow& row) {
    std::vector<std::function<void()>> undo;
    for (const Change& change : row.changes) {
        bool made = false;
        int place = 0;
        std::apply([&](auto&... arg) { ((made |= apply(change, place++, arg, undo)), ...); }, args);
        EXPECT_TRUE(made) << row.what << ": the row changes an argument that the export does not have";
    }
    const MoxStatus status = std::apply(function, args);
    for (const auto& restore : undo) restore();
    return status;
}

}  // namespace detail

/// Calls the export of each library file with the good arguments changed as each row says. The good arguments
/// themselves must give a status that is no error.
template <class... Args>
void expectStatuses(Export<MoxStatus(Args...)> function, const std::type_identity_t<std::tuple<Args...>>& good,
                    std::initializer_list<const PlaneBytes*> outputs, const StatusTable& table) {
    forEachLibrary([&](const Library& lib) {
        for (const StatusRow& row : table) {
            std::vector<PlaneBytes> before;
            before.reserve(outputs.size());
            for (const PlaneBytes* const output : outputs) before.push_back(*output);
            EXPECT_EQ(detail::callChanged(lib(function), good, row), row.expected)
                << describe(lastCall()) << ": " << row.what;
            if (row.expected >= 0) continue;
            for (size_t i = 0; i < before.size(); ++i) {
                EXPECT_TRUE(bytesEqual(*outputs.begin()[i], before[i]))
                    << describe(lastCall()) << ": " << row.what << ": wrote to output " << i;
            }
        }
        EXPECT_GE(std::apply(lib(function), good), 0) << describe(lastCall()) << ": the unchanged arguments";
    });
}

}  // namespace moxtest

#endif
