// What a call of an export takes, and what it promises: for each export the parameters of its prototype, the planes
// that its name tells of, and the order of its argument tests.
//
// Names read: moxi, what the source holds, "To", what the destination holds, depths, layouts of source and destination
// (one stands for both). Where an export is not as its name and signature say, a table in form.cpp says how it is.
#ifndef CONTRACT_FORM_H
#define CONTRACT_FORM_H

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "moxcc/types.h"

namespace moxtest {

/// An argument before it has its parameter's type.
struct Argument {
    void* pointer = nullptr;
    double number = 0;
    MoxiSize size = {};
    MoxiRect rect = {};

    template <class T>
    T as() const {
        if constexpr (std::is_pointer_v<T>)
            return static_cast<T>(pointer);
        else if constexpr (std::is_same_v<T, MoxiSize>)
            return size;
        else if constexpr (std::is_same_v<T, MoxiRect>)
            return rect;
        else if constexpr (std::is_floating_point_v<T>)
            return static_cast<T>(number);
        else
            return static_cast<T>(static_cast<int64_t>(number));
    }
};

struct Parameter {
    enum Kind { pointer, pointerArray, stepArray, size, rect, number } kind;
    bool constant = false;  // what a pointer points to
    int bytes = 0;          // of a sample
    bool floating = false;
    enum Role { image, images, step, steps, region, sourceSize, roi, weights, buffer, value } role = value;
    int side = 0;     // 0: source, 1: destination
    int plane = 0;    // of the side; -1: all
    char letter = 0;  // of a value: see form.cpp
};

/// Cells of one plane: each holds `bytes` bytes for `width` x `height` pixels.
struct PlaneShape {
    int bytes, width, height;
    bool whole;  // an incomplete cell at the end of a row does not count
};

/// A way to make the arguments of a call fail a test.
struct Fault {
    char test;
    int parameter;
    double value = 0;  // which plane, or the value
};

struct Form {
    const char* name = nullptr;
    std::vector<Parameter> parameters;
    MoxStatus (*call)(void* function, std::span<const Argument>) = nullptr;

    std::vector<PlaneShape> planes[2];  // source, destination; in-place forms have no source
    MoxiSize cut = {1, 1};              // columns and rows beyond whole multiples are not touched
    const char* tests = "";             // a letter each, in their order: see form.cpp
    MoxiSize least = {1, 1};
    MoxiSize cell = {1, 1};  // of test O
    int weights = 0;
    int mostLevels = 0;
    bool dependsOnAddresses = false;

    bool is(const char* pattern) const;  ///< Whether the name fits a shell pattern.
    bool tested(char test) const;
    bool sourceRegion() const { return parameters.size() > 1 && parameters[1].role == Parameter::roi; }

    int rowBytes(int side, size_t plane, int width) const;
    int rows(int side, size_t plane, int height) const;

    double number(char letter, std::span<const Argument> arguments) const;  ///< 0 if it takes none of the letter.
    std::vector<Fault> faults() const;
    void inject(const Fault& fault, std::vector<Argument>& arguments) const;
    MoxStatus expected(std::span<const Argument> arguments) const;
};

/// All exports that convert images or tell a buffer's size: all but the version's.
const std::vector<Form>& forms();

/// The good values of a number, and the bad ones; a fitting one of the good.
struct NumberKind {
    char letter;
    std::vector<double> good, bad;
    MoxStatus otherwise;
};
const NumberKind& numberKind(char letter);

}  // namespace moxtest

#endif
