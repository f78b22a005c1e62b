// What every export takes, known in one place: for each the parameters of its prototype, what its name tells of both
// sides, the order of its argument tests, what it writes, and where it may be cut into bands.
//
// Names read: moxi, what the source holds, "To", what the destination holds, depths, layouts of source and destination
// (one stands for both). Where an export is not as its name and prototype say, a table in export.cpp says how it is.
#pragma once

#include <climits>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "moxcc/types.h"

namespace catalogue {

// ---- arguments ------------------------------------------------------------------------------------------------------

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

/// What the numbers mean that are no steps.
enum class Value : char {
    none = 0,
    alpha = 'a',       // the value of the fourth channel
    dither = 'd',      // MoxDitherType
    bitDither = 'D',   // the two of them that reduce to a bit
    grid = 'g',        // MoxBayerGrid
    levels = 'l',      // of the destination
    slice = 'm',       // MoxSliceMode
    noise = 'n',       // per cent
    firstBit = 'o',    // bits before the first pixel
    reserved = 'r',    // read by nothing
    threshold = 'h',   // of the two levels of a bit
    dataType = 't',    // of the source, as moxiReduceBitsGetBufferSize() counts them
    lowerLimit = 'v',  // of floating-point samples
    upperLimit = 'V',
};

struct Parameter {
    enum Kind { pointer, pointerArray, stepArray, size, rect, number } kind;
    bool constant = false;  // what a pointer points to
    int bytes = 0;          // of a sample, or of the number
    bool floating = false;
    bool isSigned = false;
    enum Role { image, images, step, steps, region, sourceSize, roi, weights, buffer, result, value } role = value;
    int side = 0;   // 0: source, 1: destination, 2: buffer
    int plane = 0;  // of the side; -1: all
    Value meaning = Value::none;
    std::string name = {}, declaration = {};  // "srcStep", "int32_t srcStep"
};

/// The tests of the arguments. The first that fails decides the status.
enum class Check : char {
    pointers = 'N',    // to images and plane arrays: moxStatusNullPtr
    weights = 'W',     // to weights, where these are required: moxStatusNullPtr
    planes = 'P',      // in plane arrays: moxStatusNullPtr
    stepArrays = 'A',  // to steps: moxStatusNullPtr
    size = 'S',        // the least size: moxStatusBadSize
    anySize = 's',     // 1 x 1: moxStatusBadSize
    wholeCells = 'M',  // a size in whole cells: moxStatusBadSize
    steps = 'T',       // steps above 0: moxStatusBadStep
    rowLengths = 'U',  // the same: moxStatusBadSize
    range = 'R',       // an upper limit above the lower: moxStatusBadRange
    buffer = 'b',      // a buffer where one is used: moxStatusNullPtr
    oddSize = 'O',     // no error, but pixels outside whole cells: moxStatusOddSize
    // and a value's own: Check(Value::grid)
};

/// The good values of a number, and the bad ones.
struct ValueKind {
    Value value;
    std::vector<double> good, bad;
    MoxStatus otherwise;
};
const ValueKind& valueKind(Value value);

// ---- pictures -------------------------------------------------------------------------------------------------------

/// Cells of one plane: each holds `bytes` bytes for `width` x `height` pixels.
struct PlaneShape {
    int bytes, width, height;
    bool whole;  // an incomplete cell at the end of a row does not count
};

/// What an export reads or writes.
struct Side {
    std::string holds;   // "RGB", "YCbCr420", "CbYCr422", "CFA" ...; as the name has it
    std::string layout;  // "C3", "AC4", "P3", "P2" ...
    std::string depth;   // "8u", "16s", "32f" ...
    int sampleBytes = 0;
    bool floating = false;
    bool keepsFourth = false;        // what a destination holds in the fourth channel stays
    std::vector<PlaneShape> planes;  // none: the export works in place, and has a destination only
    MoxiSize cell = {1, 1};          // pixels that share a chroma sample

    /// Interleaved samples a pixel, where there is one plane.
    int channels() const { return planes.empty() ? 0 : planes[0].bytes / sampleBytes; }
};

/// What steps may be: any number of bytes; any, of which whole samples count; whole samples; or numbers of samples.
enum class StepUnit { bytes, roundedDown, wholeSamples, samples };

/// Where bands may begin: at rows phase, phase + unit, phase + 2 * unit ... of the picture; and how high one must be.
struct Cuts {
    int unit = 1, phase = 0, least = 1;
    bool mayBeSplit() const { return unit > 0; }
};

// ---- exports --------------------------------------------------------------------------------------------------------

struct Values;
struct BandRule;

struct Export {
    std::string name;           // "moxiRGBToGray_8u_C3C1R"
    std::string operation;      // "RGBToGray": what comes before the first depth
    std::string documentation;  // its first sentence
    std::vector<Parameter> parameters;
    void* function = nullptr;  // of the library that the catalogue is linked with
    MoxStatus (*invoke)(void* function, std::span<const Argument>) = nullptr;

    Side sides[2];          // source, destination
    MoxiSize cut = {1, 1};  // columns and rows beyond whole multiples are not touched
    std::string tests;      // in their order, a Check each
    MoxiSize least = {1, 1};
    MoxiSize cell = {1, 1};  // of the tests wholeCells and oddSize
    int weights = 0;         // how many, if it takes any
    bool needsWeights = false;
    int mostLevels = 0;
    StepUnit steps = StepUnit::bytes;
    bool dependsOnAddresses = false;
    bool mayOverwriteSource = false;  // the destination may be the source, row for row, though it takes both
    const BandRule* bands = nullptr;

    /// Whether the name fits a shell pattern.
    bool is(const char* pattern) const;
    bool tested(Check test) const { return tests.find(char(test)) != std::string::npos; }
    const Parameter* parameter(Parameter::Role role, int side = -1) const;
    const Parameter* parameter(Value value) const;
    /// Whether it has no source of its own.
    bool inPlace() const { return converts() && sides[0].planes.empty(); }
    /// Whether it reads a region of a larger source: the Bayer reconstructions.
    bool takesRegion() const { return parameter(Parameter::roi); }
    /// All but the version and the buffer's size.
    bool converts() const { return !sides[1].planes.empty(); }
    /// Whether pixels go without gaps from row to row, so that it takes no steps.
    bool takesNoSteps(int side) const {
        return !parameter(Parameter::step, side) && !parameter(Parameter::steps, side);
    }

    /// The bytes of a plane's row that a call may touch, and the plane's rows.
    int rowBytes(int side, size_t plane, int width, int firstBit = 0) const;
    int rows(int side, size_t plane, int height) const;
    /// The bytes of scratch memory that a call needs.
    int64_t bufferBytes(MoxiSize size, const Values& values) const;
    /// Where a call may be cut.
    Cuts cuts(MoxiSize size, const Values& values) const;
    /// What it leaves out at sizes that are no whole cells; empty: nothing.
    std::string oddSizes() const;
    /// The names of the field's pixel formats that a side takes: "NV12", "RGB24" ...
    std::vector<std::string> formats(int side) const;
};

/// All exports but the version's, by name.
const std::vector<Export>& exports();
/// Null if there is none of this name; "moxi" may be missing.
const Export* find(std::string_view name);
/// What an export reads or writes that holds this; null if none does.
const Side* findSide(std::string_view holds, std::string_view layout, std::string_view depth);

/// A constant of the headers: a status, a grid, a dither ...
struct Constant {
    const char* name;  // "moxStatusOddSize"
    int value;
    const char* documentation;
};
std::span<const Constant> constants();

// ---- pages ----------------------------------------------------------------------------------------------------------

/// A line of the table of bands: the exports that fit the pattern, where bands may begin, and why.
struct BandRule {
    const char* names;
    const char* described;
    int unit;  // rows; see export.cpp
    const char* beginAt;
    const char* because;
};
std::span<const BandRule> bandRules();

struct Format {
    const char* name;
    const char* otherNames;
    const char* holds;   // what names say: "YCbCr420"
    const char* layout;  // "P2"
    const char* depth;
    const char* memory;  // in words
};
std::span<const Format> formats();

}  // namespace catalogue
