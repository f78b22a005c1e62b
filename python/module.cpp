// The extension below the package: the catalogue, and calls of its exports.
#include <dlfcn.h>
#include <pybind11/stl.h>

#include "moxcc/moxcc.h"
#include "operation.h"

namespace {

namespace py = pybind11;
using namespace py::literals;
using moxpy::Form, moxpy::Operation;

py::object call(const Operation& operation, py::handle src, py::handle out, const py::dict& options) {
    return operation(src, out, options);
}

/// A side as a dictionary; none where an export has none.
py::object sideOf(const Form& form, int side) {
    const catalogue::Side& s = form.e->sides[side];
    if (s.planes.empty()) return py::none();
    return py::dict("holds"_a = s.holds, "layout"_a = s.layout, "depth"_a = s.depth,
                    "arrays"_a = moxpy::describe(form.patterns[side]), "formats"_a = form.e->formats(side));
}

std::vector<py::tuple> shapesOf(const Form& form, const std::string& side, int width, int height) {
    if (side != "src" && side != "out") throw py::value_error("side: expected \"src\" or \"out\"");
    const int at = side == "out" || form.e->inPlace();
    std::vector<py::tuple> shapes;
    for (size_t i = 0; i < form.patterns[at].size(); ++i) {
        const moxpy::Extent extent = moxpy::extentOf(*form.e, at, i, {width, height}, 0);
        const int channels = form.patterns[at][i].channels;
        shapes.push_back(channels > 1 ? py::make_tuple(extent.rows, extent.columns, channels)
                                      : py::make_tuple(extent.rows, extent.columns));
    }
    return shapes;
}

std::string prototypeOf(const catalogue::Export& e) {
    std::string text;
    for (const catalogue::Parameter& p : e.parameters) text += (text.empty() ? "" : ", ") + p.declaration;
    return "MoxStatus " + e.name + "(" + text + ")";
}

py::dict version() {
    const MoxLibraryVersion& v = *moxccGetLibVersion();
    return py::dict("major"_a = v.major, "minor"_a = v.minor, "revision"_a = v.revision, "build"_a = v.build,
                    "target_code"_a = std::string(v.targetCode, strnlen(v.targetCode, sizeof v.targetCode)),
                    "name"_a = v.name, "version"_a = v.version, "build_date"_a = v.buildDate);
}

std::string libraryPath() {
    Dl_info info = {};
    dladdr(moxpy::forms()[0].e->function, &info);
    return info.dli_fname ? info.dli_fname : "";
}

/// An exception class that lives as long as the interpreter.
PyObject* addClass(py::module_& m, const char* name, PyObject* base, const char* documentation) {
    PyObject* made = PyErr_NewExceptionWithDoc((std::string("moxcc.") + name).c_str(), documentation, base, nullptr);
    m.add_object(name, py::reinterpret_borrow<py::object>(made));
    return made;
}

}  // namespace

PYBIND11_MODULE(_moxcc, m) {
    moxpy::categories() = {
        addClass(m, "Error", PyExc_RuntimeError,
                 "An export refused its arguments and wrote nothing: `status` is its status, `export` its name."),
        addClass(m, "StatusWarning", PyExc_UserWarning,
                 "An export did what could be done: it left out what fills no whole cells of chroma."),
    };

    py::class_<Operation>(m, "Operation")
        .def("__call__", &call)
        .def_readonly("name", &Operation::name)
        .def_property_readonly("keywords", &Operation::keywords)
        .def_property_readonly("documentation", &Operation::documentation)
        .def_property_readonly("exports", [](const Operation& o) {
            std::vector<std::string> names;
            for (const Form* form : o.forms) names.push_back(form->e->name);
            return names;
        });

    py::class_<Form>(m, "Export", "An export of the library. Called, it takes the arguments of its operation.")
        .def(
            "__call__",
            [](const Form& form, py::handle src, py::handle out, const py::kwargs& options) {
                return Operation{form.e->name, {&form}}(src, out, options);
            },
            "src"_a, "out"_a = py::none())
        .def("__repr__", [](const Form& form) { return "<" + form.line() + ">"; })
        .def("shapes", &shapesOf, "side"_a, "width"_a, "height"_a,
             "Shapes of the arrays of a side, \"src\" or \"out\", for a picture of this size.")
        .def_property_readonly("name", [](const Form& f) { return f.e->name; })
        .def_property_readonly("operation", [](const Form& f) { return f.e->operation; })
        .def_property_readonly("documentation", [](const Form& f) { return f.e->documentation; })
        .def_property_readonly("prototype", [](const Form& f) { return prototypeOf(*f.e); })
        .def_property_readonly(
            "src", [](const Form& f) { return sideOf(f, 0); }, "None: it works in place.")
        .def_property_readonly("out", [](const Form& f) { return sideOf(f, 1); })
        .def_property_readonly("keywords",
                               [](const Form& f) {
                                   return Operation{f.e->name, {&f}}.keywords();
                               })
        .def_property_readonly(
            "least_size",
            [](const Form& f) { return py::make_tuple(std::max(f.e->least.width, 1), std::max(f.e->least.height, 1)); })
        .def_property_readonly(
            "weights", [](const Form& f) { return f.e->parameter(catalogue::Parameter::weights) ? f.e->weights : 0; })
        .def_property_readonly(
            "bands", [](const Form& f) { return py::make_tuple(f.e->bands->beginAt, f.e->bands->because); },
            "Rows where bands may begin, and why.");

    m.def("version", &version);
    m.def("library_path", &libraryPath);
    const py::dict exports, operations;
    for (const Form& form : moxpy::forms())
        exports[form.e->name.c_str()] = py::cast(&form, py::return_value_policy::reference);
    for (const Operation& operation : moxpy::operations())
        operations[operation.name.c_str()] = py::cast(&operation, py::return_value_policy::reference);
    m.attr("exports") = exports;
    m.attr("operations") = operations;
}
