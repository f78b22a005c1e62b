// A Python function of an operation: finds the export that the arguments fit, and calls it.
#pragma once

#include "array.h"

namespace moxpy {

/// An export as Python sees it.
struct Form {
    explicit Form(const Export& e);

    const Export* e;
    std::vector<Pattern> patterns[2];
    std::string layouts;            // "C3C1R"
    uint32_t takes = 0, needs = 0;  // keywords, by their place in the table

    std::string line() const;  // "moxiRGBToGray_8u_C3C1R: uint8 (h, w, 3) -> uint8 (h, w)"
};

/// All exports that convert in one way; or one export alone.
struct Operation {
    std::string name;
    std::vector<const Form*> forms;

    py::object operator()(py::handle src, py::handle out, const py::dict& options) const;

    /// Keyword, annotation, and whether it must be given.
    std::vector<std::tuple<std::string, std::string, bool>> keywords() const;
    std::string documentation() const;
};

/// All of them, by name.
const std::vector<Form>& forms();
const std::vector<Operation>& operations();

/// The classes of what Python raises and warns of.
struct Categories {
    PyObject *error, *warning;
};
Categories& categories();

}  // namespace moxpy
