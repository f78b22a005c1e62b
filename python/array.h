// numpy arrays as planes of the catalogue's pictures.
#pragma once

#include <pybind11/numpy.h>

#include "catalogue/call.h"

namespace moxpy {

namespace py = pybind11;
using catalogue::Export, catalogue::Picture, catalogue::PlaneShape, catalogue::Side;

/// Type of a sample, as numpy writes it: 'u', 'i' or 'f', and the bytes.
struct Sample {
    char kind = 0;
    int bytes = 0;
    bool operator==(const Sample&) const = default;
    std::string name() const;  // "uint8"
};

/// What a plane's array looks like.
struct Pattern {
    Sample sample;
    int channels = 1;       // of a pixel; more than 1: the last dimension
    bool flat = false;      // pairs may also lie in rows of single samples
    std::string text = {};  // "uint8 (h, w, 3)"
    py::dtype dtype = {};
};
std::vector<Pattern> patternsOf(const Side& side);
std::string describe(const std::vector<Pattern>& patterns);

/// Whether a row of the source is words that hold parts of pixels.
inline bool packsWords(const Export& e) { return e.steps == catalogue::StepUnit::samples; }

/// The arrays of a picture, read once: a single one, or a sequence of planes.
struct Arrays {
    struct Array {
        py::object object;
        uint8_t* data = nullptr;
        Sample sample;
        bool native = true, writeable = true;
        py::ssize_t dimensions = 0, shape[3] = {}, strides[3] = {};
    };
    const char* name = "src";  // of the argument
    bool sequence = false;
    std::vector<Array> planes;

    Arrays() = default;
    Arrays(const char* argument, py::handle object);

    std::string nameOf(size_t plane) const;  // "src", or "src[1]"
    std::string describe() const;            // "uint8 (480, 640, 3)"
    bool fit(const std::vector<Pattern>& patterns) const;
    /// Whether they are the same memory, read in the same way.
    bool sameAs(const Arrays& other) const;
    /// Width and height of the first plane.
    MoxiSize size() const;
};

/// Rows and columns of a plane: those that the export touches, and with the incomplete cells that it leaves out.
struct Extent {
    py::ssize_t rows = 0, columns = 0, mostRows = 0, mostColumns = 0;
};
Extent extentOf(const Export& e, int side, size_t plane, MoxiSize size, int firstBit);

/// The picture in those arrays; throws what does not fit.
Picture pictureIn(const Arrays& arrays, const Export& e, int side, MoxiSize size, int firstBit);
/// New arrays for a picture. Where the export may leave samples out they are 0.
Arrays allocate(const Export& e, const std::vector<Pattern>& patterns, MoxiSize size, int firstBit);
/// Throws if the planes of an output lie over each other, or over a source that is not the same picture.
void refuseOverlap(const Arrays& out, const Arrays& src, bool mayBeSource);

}  // namespace moxpy
