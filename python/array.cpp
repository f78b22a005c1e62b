#include "array.h"

#include <algorithm>
#include <climits>
#include <cstring>

namespace moxpy {
namespace {

std::string tuple(const py::ssize_t* values, py::ssize_t count) {
    std::string text;
    for (py::ssize_t i = 0; i < count; ++i) text.append(i ? ", " : "(").append(std::to_string(values[i]));
    return text + (count == 1 ? ",)" : ")");
}

Arrays::Array read(const char* argument, py::handle object) {
    if (!py::isinstance<py::array>(object))
        throw py::type_error(std::string(argument) + ": expected a numpy array or a sequence of them, not " +
                             Py_TYPE(object.ptr())->tp_name + "; numpy.asarray() makes arrays of pictures");
    const auto array = py::reinterpret_borrow<py::array>(object);
    const auto type = py::reinterpret_borrow<py::dtype>(py::detail::array_proxy(array.ptr())->descr);
    Arrays::Array plane = {.object = array,
                           .data = static_cast<uint8_t*>(const_cast<void*>(array.data())),
                           .sample = {type.kind(), int(type.itemsize())},
                           .native = type.byteorder() != '>',
                           .writeable = array.writeable(),
                           .dimensions = array.ndim()};
    for (py::ssize_t i = 0; i < std::min<py::ssize_t>(plane.dimensions, 3); ++i)
        plane.shape[i] = array.shape(i), plane.strides[i] = array.strides(i);
    return plane;
}

/// The bytes from the first that a plane touches to behind the last.
std::pair<const uint8_t*, const uint8_t*> span(const Arrays::Array& a) {
    const uint8_t *from = a.data, *to = a.data + a.sample.bytes;
    for (py::ssize_t i = 0; i < a.dimensions; ++i) {
        if (a.shape[i] == 0) return {from, from};
        (a.strides[i] < 0 ? from : to) += (a.shape[i] - 1) * a.strides[i];
    }
    return {from, to};
}

bool overlap(const Arrays::Array& a, const Arrays::Array& b) {
    const auto [from, to] = span(a);
    const auto [otherFrom, otherTo] = span(b);
    if (from >= otherTo || otherFrom >= to) return false;
    return py::module_::import("numpy").attr("shares_memory")(a.object, b.object).cast<bool>();
}

}  // namespace

std::string Sample::name() const {
    return (kind == 'u' ? "uint" : kind == 'i' ? "int" : "float") + std::to_string(8 * bytes);
}

std::vector<Pattern> patternsOf(const Side& side) {
    std::vector<Pattern> patterns;
    const char kind = side.floating ? 'f' : side.depth.ends_with('s') ? 'i' : 'u';
    for (const PlaneShape& shape : side.planes) {
        Pattern p = {.sample = {kind, side.sampleBytes}, .channels = shape.bytes / side.sampleBytes};
        p.dtype = py::dtype(p.sample.name());
        p.flat = p.channels == 2 && shape.width > 1;
        const auto part = [](const char* whole, int count) {
            return count > 1 ? std::string(whole) + "/" + std::to_string(count) : whole;
        };
        const std::string columns = side.holds.ends_with("v210") ? "words" : side.depth == "1u" ? "bytes" : "w";
        p.text = p.sample.name() + " (" + part("h", shape.height) + ", " + part(columns.c_str(), shape.width) +
                 (p.channels > 1 ? ", " + std::to_string(p.channels) : "") + ")";
        patterns.push_back(p);
    }
    return patterns;
}

std::string describe(const std::vector<Pattern>& patterns) {
    std::string text;
    for (const Pattern& p : patterns) text += (text.empty() ? "" : ", ") + p.text;
    return patterns.size() > 1 ? "[" + text + "]" : text;
}

Arrays::Arrays(const char* argument, py::handle object) : name(argument) {
    sequence = PyTuple_Check(object.ptr()) || PyList_Check(object.ptr());
    if (!sequence) {
        planes.push_back(read(argument, object));
        return;
    }
    for (const py::handle each : py::reinterpret_borrow<py::sequence>(object)) planes.push_back(read(argument, each));
}

std::string Arrays::nameOf(size_t plane) const {
    return sequence ? std::string(name) + "[" + std::to_string(plane) + "]" : name;
}

std::string Arrays::describe() const {
    std::string text;
    for (const Array& a : planes) {
        text += text.empty() ? "" : ", ";
        text += py::str(py::reinterpret_borrow<py::array>(a.object).dtype()).cast<std::string>() + " ";
        text += a.dimensions > 3 ? "of " + std::to_string(a.dimensions) + " dimensions" : tuple(a.shape, a.dimensions);
    }
    return sequence ? "[" + text + "]" : text;
}

bool Arrays::fit(const std::vector<Pattern>& patterns) const {
    if (planes.size() != patterns.size()) return false;
    for (size_t i = 0; i < planes.size(); ++i) {
        const Array& a = planes[i];
        const Pattern& p = patterns[i];
        if (a.sample != p.sample || !a.native) return false;
        if (a.dimensions == 2 ? p.channels > 1 && !p.flat
                              : a.dimensions != 3 || a.shape[2] != p.channels || p.channels == 1)
            return false;
    }
    return true;
}

bool Arrays::sameAs(const Arrays& other) const {
    return std::ranges::equal(planes, other.planes, [](const Array& a, const Array& b) {
        return a.data == b.data && a.sample == b.sample && a.dimensions == b.dimensions &&
               std::ranges::equal(a.shape, b.shape) && std::ranges::equal(a.strides, b.strides);
    });
}

MoxiSize Arrays::size() const {
    for (const py::ssize_t length : {planes[0].shape[0], planes[0].shape[1]})
        if (length > INT_MAX) throw py::value_error(nameOf(0) + ": too large");
    return {int32_t(planes[0].shape[1]), int32_t(planes[0].shape[0])};
}

Extent extentOf(const Export& e, int side, size_t plane, MoxiSize size, int firstBit) {
    const PlaneShape& shape = e.sides[side].planes[plane];
    const bool packed = e.sides[side].depth == "1u" || (side == 0 && packsWords(e));
    if (!packed && shape.width == 1 && shape.height == 1) return {size.height, size.width, size.height, size.width};
    const py::ssize_t rows = e.rows(side, plane, size.height);
    const py::ssize_t columns = e.rowBytes(side, plane, size.width, firstBit) / shape.bytes;
    if (packed) return {rows, columns, rows, INT_MAX};
    const auto up = [](int length, int unit) { return (py::ssize_t(length) + unit - 1) / unit; };
    return {rows, columns, up(size.height, shape.height), up(size.width, shape.width)};
}

Picture pictureIn(const Arrays& arrays, const Export& e, int side, MoxiSize size, int firstBit) {
    Picture picture = {.size = size};
    const catalogue::Parameter* step = e.parameter(catalogue::Parameter::step, side);
    const bool together = step && step->plane < 0;
    bool shared = false;  // whether a plane has decided the step of all
    for (size_t i = 0; i < arrays.planes.size(); ++i) {
        const Arrays::Array& a = arrays.planes[i];
        const PlaneShape& shape = e.sides[side].planes[i];
        const Extent extent = extentOf(e, side, i, size, firstBit);
        const bool flat = a.dimensions == 2 && shape.bytes > a.sample.bytes;
        const py::ssize_t columns = flat ? a.shape[1] / 2 : a.shape[1], rows = a.shape[0];
        const auto refuse = [&](const std::string& why) { throw py::value_error(arrays.nameOf(i) + ": " + why); };

        if (rows < extent.rows || rows > extent.mostRows || columns < extent.columns || columns > extent.mostColumns) {
            const py::ssize_t fitting[] = {extent.rows, flat ? 2 * extent.columns : extent.columns, a.shape[2]};
            refuse("is " + tuple(a.shape, a.dimensions) + " where " + tuple(fitting, a.dimensions) +
                   " belongs to a picture of " + std::to_string(size.width) + " x " + std::to_string(size.height));
        }
        py::ssize_t packed = a.sample.bytes;
        for (py::ssize_t d = a.dimensions - 1; d > 0; packed *= a.shape[d--])
            if (a.shape[d] > 1 && a.strides[d] != packed)
                refuse(
                    "samples of a row must lie one after another, as numpy.ascontiguousarray() lays them; this is a "
                    "reversed, transposed or strided view");
        py::ssize_t distance = a.strides[0];
        const auto rowBytes = py::ssize_t(columns) * shape.bytes;
        if (rows <= 1) distance = i > 0 && together ? picture.planes[0].step : rowBytes;
        if (distance != int32_t(distance)) refuse("rows lie more than 2 GiB apart");
        if (reinterpret_cast<uintptr_t>(a.data) % size_t(a.sample.bytes) || distance % a.sample.bytes)
            refuse("samples are not aligned; copy() aligns them");
        if (rows > 1) {
            if (distance <= 0 && (e.tested(catalogue::Check::steps) || packsWords(e)))
                refuse("rows must lead downwards in memory: " + e.name + " takes steps above 0 only");
            if (e.takesNoSteps(side) && distance != e.rowBytes(side, i, size.width))
                refuse("rows must lie without gaps: " + e.name + " takes no steps");
            if (together && shared && distance != picture.planes[0].step)
                refuse("must have the row step of the other planes: " + e.name + " takes one step for all");
            if (side == 1 && std::abs(distance) < rowBytes) refuse("rows lie over each other");
            if (together && !shared) {
                for (catalogue::Plane& before : picture.planes) before.step = int32_t(distance);
                shared = true;
            }
        }
        if (side == 1 && !a.writeable) refuse("is read-only");
        picture.planes[i] = {a.data, int32_t(distance)};
    }
    return picture;
}

Arrays allocate(const Export& e, const std::vector<Pattern>& patterns, MoxiSize size, int firstBit) {
    Arrays arrays;
    arrays.name = "out";
    const Side& side = e.sides[1];
    arrays.sequence = patterns.size() > 1;
    constexpr int wholeCells = 8;  // no rule leaves out what is a multiple
    const bool gaps = side.keepsFourth || side.depth == "1u" || size.width % wholeCells || size.height % wholeCells;
    for (size_t i = 0; i < patterns.size(); ++i) {
        const Extent extent = extentOf(e, 1, i, size, firstBit);
        std::vector<py::ssize_t> shape = {extent.rows, extent.columns};
        if (patterns[i].channels > 1) shape.push_back(patterns[i].channels);
        py::array array(patterns[i].dtype, shape);
        if (gaps) std::memset(array.mutable_data(), 0, size_t(array.nbytes()));
        arrays.planes.push_back(read("out", array));
    }
    return arrays;
}

void refuseOverlap(const Arrays& out, const Arrays& src, bool mayBeSource) {
    if (mayBeSource && out.sameAs(src)) return;
    for (size_t i = 0; i < out.planes.size(); ++i) {
        for (const Arrays::Array& plane : src.planes)
            if (overlap(out.planes[i], plane))
                throw py::value_error(
                    out.nameOf(i) + ": lies over the source" +
                    (mayBeSource ? " but is not the same picture" : "; it must be memory of its own"));
        for (size_t j = 0; j < i; ++j)
            if (overlap(out.planes[i], out.planes[j]))
                throw py::value_error(out.nameOf(i) + ": lies over " + out.nameOf(j));
    }
}

}  // namespace moxpy
