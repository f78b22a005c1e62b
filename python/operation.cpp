#include "operation.h"

#include <pybind11/stl.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <map>

#include "moxcc/moxcc.h"

namespace moxpy {
namespace {

using catalogue::Parameter, catalogue::Value, catalogue::Values;

// ---- keywords -------------------------------------------------------------------------------------------------------

constexpr struct Keyword {
    const char* name;
    const char* annotation;
    const char* documentation;
    Value value = Value::none;
    const char* enumeration = nullptr;  // what the names of its constants start with
    bool needed = false;
    void (*set)(Values&, double) = nullptr;
} keywordTable[] = {
    {"alpha", "float", "the value of the fourth channel", Value::alpha, nullptr, true,
     [](Values& v, double d) { v.alpha = d; }},
    {"dither", "str | int", "the method", Value::dither, "moxDither", false,
     [](Values& v, double d) { v.dither = int(d); }},
    {"grid", "str | int", "the pattern of the first two rows", Value::grid, "moxBayerGrid", true,
     [](Values& v, double d) { v.grid = int(d); }},
    {"levels", "int", "how many levels a channel keeps", Value::levels, nullptr, true,
     [](Values& v, double d) { v.levels = int(d); }},
    {"slice", "str | int", "which part of the picture this is", Value::slice, "moxSlice", false,
     [](Values& v, double d) { v.slice = int(d); }},
    {"noise", "int", "noise in per cent", Value::noise, nullptr, false, [](Values& v, double d) { v.noise = int(d); }},
    {"first_bit", "int", "bits before the first pixel of a row", Value::firstBit, nullptr, false,
     [](Values& v, double d) { v.firstBit = int(d); }},
    {"threshold", "int", "samples above it are white", Value::threshold, nullptr, true,
     [](Values& v, double d) { v.threshold = int(d); }},
    {"data_type", "int", "the source's type: 1 for 8u, 3 for 16u, 4 for 16s, 9 for 32f", Value::dataType, nullptr, true,
     [](Values& v, double d) { v.dataType = int(d); }},
    {"lower", "float", "the lower limit of the samples, 0 if not given", Value::lowerLimit, nullptr, false,
     [](Values& v, double d) { v.lowerLimit = float(d); }},
    {"upper", "float", "the upper limit of the samples, 1 if not given", Value::upperLimit, nullptr, false,
     [](Values& v, double d) { v.upperLimit = float(d); }},
    {"weights", "ArrayLike", "the matrix, or the weights of the channels"},
    {"region", "tuple[int, int, int, int]", "x, y, width and height of the part of the source to convert"},
    {"width", "int", "the picture's width in pixels, where rows are padded"},
};
constexpr size_t keywordCount = std::size(keywordTable), weightsAt = 11, regionAt = 12, widthAt = 13;

constexpr struct {
    const char *name, *annotation, *documentation;
} commonKeywords[] = {
    {"layout", "str", "of the result (\"P3\"), or all that an export's name says of layouts (\"C3P3R\")"},
    {"dtype", "DTypeLike", "of the result's samples"},
    {"threads", "int", "how many work on bands of the picture; the same bytes"},
};

size_t placeOf(Value value) {
    if (value == Value::bitDither) value = Value::dither;
    return size_t(std::ranges::find(keywordTable, value, &Keyword::value) - keywordTable);
}

std::string lower(std::string text) {
    std::ranges::transform(text, text.begin(), [](unsigned char c) { return char(std::tolower(c)); });
    return text;
}

/// The names of an enumeration's constants, without what all start with.
std::vector<std::pair<std::string, int>> namesOf(const char* enumeration) {
    std::vector<std::pair<std::string, int>> names;
    for (const catalogue::Constant& c : catalogue::constants())
        if (const std::string_view name = c.name; name.starts_with(enumeration))
            names.emplace_back(lower(std::string(name.substr(std::string_view(enumeration).size()))), c.value);
    return names;
}

template <class T>
std::string listed(const T& names) {
    std::string text;
    for (const auto& [name, value] : names) text += (text.empty() ? "" : ", ") + name;
    return text;
}

/// A Python value as T; what is none names the argument.
template <class T>
T get(const std::string& name, py::handle value, const std::string& expected) {
    try {
        return value.cast<T>();
    } catch (const py::cast_error&) {
        throw py::type_error(name + ": expected " + expected + ", not " + py::repr(value).cast<std::string>());
    }
}

double number(const Keyword& keyword, py::handle value) {
    if (keyword.enumeration && py::isinstance<py::str>(value)) {
        const auto names = namesOf(keyword.enumeration);
        const auto found =
            std::ranges::find(names, lower(value.cast<std::string>()), &std::pair<std::string, int>::first);
        if (found == names.end())
            throw py::value_error(std::string(keyword.name) + ": expected one of " + listed(names) + ", not " +
                                  py::repr(value).cast<std::string>());
        return found->second;
    }
    return get<double>(keyword.name, value, "a number");
}

// ---- a call ---------------------------------------------------------------------------------------------------------

struct Request {
    Request(const std::string& operation, py::handle source, py::handle output, const py::dict& options) {
        src = Arrays("src", source);
        if ((hasOut = !output.is_none())) out = Arrays("out", output);
        read(operation, options);
    }
    Request(const std::string& operation, const py::dict& options) { read(operation, options); }

    void read(const std::string& operation, const py::dict& options) {
        for (const auto& [key, value] : options) {
            const auto name = key.cast<std::string_view>();
            if (value.is_none()) continue;
            if (name == "layout") {
                layout = get<std::string>("layout", value, "a string");
            } else if (name == "dtype") {
                const auto type = py::dtype::from_args(py::reinterpret_borrow<py::object>(value));
                dtype = {type.kind(), int(type.itemsize())};
            } else if (name == "threads") {
                threads = get<int>("threads", value, "a number");
                if (threads < 1) throw py::value_error("threads: expected 1 or more");
            } else {
                const auto place = size_t(std::ranges::find(keywordTable, name, &Keyword::name) - keywordTable);
                if (place == keywordCount) throw py::type_error(operation + "() has no keyword " + std::string(name));
                given |= 1u << place;
                if (place == weightsAt)
                    weights = value;
                else if (place == regionAt)
                    region = get<std::array<int, 4>>("region", value, "x, y, width and height");
                else if (place == widthAt)
                    width = get<int>("width", value, "a number");
                else
                    keywordTable[place].set(values, numbers[place] = number(keywordTable[place], value));
            }
        }
    }

    Arrays src, out;
    bool hasOut = false;
    std::string layout;
    Sample dtype;
    int threads = 1;
    uint32_t given = 0;  // keywords
    double numbers[keywordCount] = {};
    Values values;
    py::handle weights;
    std::array<int, 4> region = {};
    int width = 0;
};

std::string listOf(const std::vector<const Form*>& forms) {
    std::string text;
    for (const Form* form : forms) text += "\n  " + form->line();
    return text;
}

/// Keeps what fits; all, if nothing does. Tells whether something did.
template <class Fits>
bool keep(std::vector<const Form*>& forms, Fits fits) {
    const auto end = std::stable_partition(forms.begin(), forms.end(), fits);
    if (end == forms.begin()) return false;
    forms.erase(end, forms.end());
    return true;
}

std::string keywordsIn(uint32_t set) {
    std::string text;
    for (size_t i = 0; i < keywordCount; ++i)
        if (set >> i & 1) text += (text.empty() ? "" : ", ") + std::string(keywordTable[i].name) + "=";
    return text;
}

const Form& choose(const Operation& operation, const Request& r) {
    std::vector<const Form*> forms = operation.forms;
    if (!keep(forms, [&](const Form* f) { return r.src.fit(f->patterns[0]); })) {
        const std::string what = "src: " + r.src.describe() + " does not fit " + operation.name + "(), which takes";
        const bool typeFits = keep(forms, [&](const Form* f) {
            return !r.src.planes.empty() && r.src.planes[0].native &&
                   r.src.planes[0].sample == f->patterns[0][0].sample;
        });
        if (typeFits) throw py::value_error(what + listOf(forms));
        throw py::type_error(what + listOf(forms));
    }
    if (!r.layout.empty() &&
        !keep(forms, [&](const Form* f) { return r.layout == f->e->sides[1].layout || r.layout == f->layouts; }))
        throw py::value_error("layout: " + r.layout + " is none of" + listOf(forms));
    if (r.dtype.kind && !keep(forms, [&](const Form* f) { return r.dtype == f->patterns[1][0].sample; }))
        throw py::type_error("dtype: " + r.dtype.name() + " is given by none of" + listOf(forms));
    if (r.hasOut && !keep(forms, [&](const Form* f) { return r.out.fit(f->patterns[1]); }))
        throw py::value_error("out: " + r.out.describe() + " does not fit" + listOf(forms));
    if (operation.forms.size() > 1) {
        const bool same = r.hasOut && r.out.sameAs(r.src);
        keep(forms, [&](const Form* f) { return f->e->inPlace() == same; });
    }
    if (!keep(forms, [&](const Form* f) { return !(f->needs & ~r.given) && !(r.given & ~f->takes); })) {
        const uint32_t missing = forms[0]->needs & ~r.given, surplus = r.given & ~forms[0]->takes;
        throw py::type_error(operation.name + "() " +
                             (missing ? "needs " + keywordsIn(missing) : "does not take " + keywordsIn(surplus)) +
                             " here" + listOf(forms));
    }
    if (forms.size() > 1) keep(forms, [](const Form* f) { return !f->e->takesNoSteps(1); });
    if (forms.size() > 1) keep(forms, [](const Form* f) { return !f->e->name.ends_with("_L"); });
    if (forms.size() > 1)
        throw py::value_error(operation.name + "(): layout=, dtype=, out= or another keyword must tell which of" +
                              listOf(forms));
    return *forms[0];
}

/// Refuses integers that the export's parameter cannot hold.
void checkNumbers(const Export& e, const Request& r) {
    for (const Parameter& p : e.parameters) {
        const size_t place = placeOf(p.meaning);
        if (p.role != Parameter::value || place >= weightsAt || !(r.given >> place & 1) || p.floating) continue;
        const double most = std::ldexp(1.0, 8 * p.bytes - (p.isSigned ? 1 : 0)) - 1, least = p.isSigned ? -most - 1 : 0;
        const double value = r.numbers[place];
        if (value == std::floor(value) && value >= least && value <= most) continue;
        throw py::value_error(std::string(keywordTable[place].name) + ": expected a whole number from " +
                              std::to_string(int64_t(least)) + " to " + std::to_string(int64_t(most)));
    }
}

/// Weights as the export takes them. They must outlive the call.
py::array weightsFor(const Export& e, py::handle given) {
    const Parameter& p = *e.parameter(Parameter::weights);
    const auto array = py::module_::import("numpy").attr("ascontiguousarray")(given, p.bytes == 4 ? "f4" : "f8");
    const auto weights = array.cast<py::array>();
    if (weights.size() != e.weights)
        throw py::value_error("weights: " + e.name + " takes " + std::to_string(e.weights) + ", not " +
                              std::to_string(weights.size()));
    return weights;
}

/// The width of a picture in words that hold parts of pixels: as the output has it, or as much as the words can hold.
int widthOf(const Export& e, const Request& r) {
    if (r.width) return r.width;
    if (r.hasOut) return r.out.size().width;
    const int words = r.src.size().width;
    int width = words / 4 * 6;
    while (e.rowBytes(0, 0, width + 1) <= 4 * words) ++width;
    return width;
}

std::string explained(const Export& e, MoxStatus status) {
    const auto all = catalogue::constants();
    const auto constant = std::ranges::find_if(all, [&](const catalogue::Constant& c) {
        return c.value == status && std::string_view(c.name).starts_with("moxStatus");
    });
    std::string text = e.name + ": ";
    if (constant == all.end()) return text + "status " + std::to_string(status);
    text += std::string(constant->name) + ". " + constant->documentation;
    if (status == moxStatusBadSize && e.least.width > 1)
        text += " The least size is " + std::to_string(e.least.width) + " x " + std::to_string(e.least.height) + ".";
    if (status == moxStatusOddSize && !e.oddSizes().empty()) text += " Left out: " + e.oddSizes() + ".";
    return text;
}

void report(const Export& e, MoxStatus status) {
    if (status == moxStatusOk) return;
    const std::string text = explained(e, status);
    if (status > 0) {
        if (PyErr_WarnEx(categories().warning, text.c_str(), 2) != 0) throw py::error_already_set();
        return;
    }
    const auto error = py::reinterpret_borrow<py::object>(categories().error)(text);
    error.attr("status") = status;
    error.attr("export") = e.name;
    PyErr_SetObject(categories().error, error.ptr());
    throw py::error_already_set();
}

py::object bufferSize(const Export& e, py::handle size, const Request& r) {
    const auto [width, height] = get<std::pair<int, int>>("src", size, "width and height");
    checkNumbers(e, r);
    int32_t bytes = 0;
    report(e, moxiReduceBitsGetBufferSize(r.values.dataType, {width, height}, r.values.noise, r.values.dither, &bytes));
    return py::int_(bytes);
}

}  // namespace

// ---- exports --------------------------------------------------------------------------------------------------------

Form::Form(const Export& exported) : e(&exported) {
    patterns[1] = patternsOf(e->sides[1]);
    patterns[0] = e->inPlace() ? patterns[1] : patternsOf(e->sides[0]);
    std::string_view name = e->name;
    if (name.ends_with("_L")) name.remove_suffix(2);
    layouts = name.substr(name.rfind('_') + 1);
    for (const Parameter& p : e->parameters) {
        if (p.role == Parameter::weights) takes |= 1u << weightsAt, needs |= uint32_t(e->needsWeights) << weightsAt;
        const size_t place = placeOf(p.meaning);
        if (p.role != Parameter::value || place >= weightsAt) continue;
        takes |= 1u << place, needs |= uint32_t(keywordTable[place].needed) << place;
    }
    if (e->takesRegion()) takes |= 1u << regionAt;
    if (packsWords(*e)) takes |= 1u << widthAt;
}

std::string Form::line() const {
    std::string text = e->name + ": ";
    if (!e->converts()) return text + "(width, height) -> int";
    text += describe(patterns[0]) + (e->inPlace() ? " in place" : " -> " + describe(patterns[1]));
    return takes ? text + ", " + keywordsIn(takes) : text;
}

py::object Operation::operator()(py::handle src, py::handle out, const py::dict& options) const {
    if (!forms[0]->e->converts()) return bufferSize(*forms[0]->e, src, Request(name, options));

    Request r(name, src, out, options);
    const Form& form = choose(*this, r);
    const Export& e = *form.e;
    checkNumbers(e, r);
    py::array weights;
    if (r.given >> weightsAt & 1) r.values.weights = (weights = weightsFor(e, r.weights)).data();

    MoxiSize size = r.src.size();
    if (packsWords(e)) size.width = widthOf(e, r);
    const MoxiSize whole = size;
    if (r.given >> regionAt & 1) {
        const auto [x, y, width, height] = r.region;
        if (x < 0 || y < 0 || width < 1 || height < 1 || width > size.width - x || height > size.height - y)
            throw py::value_error("region: must lie in the source, of " + std::to_string(size.width) + " x " +
                                  std::to_string(size.height));
        r.values.region = {x, y, width, height};
        size = {width, height};
    }

    Picture from = {.size = whole}, to;
    Arrays made;
    if (e.inPlace()) {
        if (r.hasOut && !r.out.sameAs(r.src)) throw py::value_error("out: " + e.name + " works in place, on src");
        to = pictureIn(r.src, e, 1, size, 0);
    } else {
        from = pictureIn(r.src, e, 0, whole, 0);
        if (r.hasOut)
            refuseOverlap(r.out, r.src, e.mayOverwriteSource);
        else
            made = allocate(e, form.patterns[1], size, r.values.firstBit);
        to = pictureIn(r.hasOut ? r.out : made, e, 1, size, r.values.firstBit);
    }

    MoxStatus status;
    {
        const py::gil_scoped_release release;
        status = r.threads > 1 ? catalogue::callInBands(e, from, to, r.values, r.threads)
                               : catalogue::call(e, from, to, r.values);
    }
    if (status == moxStatusNoOperation)
        for (const Arrays::Array& a : made.planes) a.object.attr("fill")(0);
    report(e, status);

    if (e.inPlace()) return py::reinterpret_borrow<py::object>(src);
    if (r.hasOut) return py::reinterpret_borrow<py::object>(out);
    if (!made.sequence) return made.planes[0].object;
    py::tuple result(made.planes.size());
    for (size_t i = 0; i < made.planes.size(); ++i) result[i] = made.planes[i].object;
    return result;
}

std::vector<std::tuple<std::string, std::string, bool>> Operation::keywords() const {
    std::vector<std::tuple<std::string, std::string, bool>> all;
    uint32_t takes = 0, needs = ~0u;
    for (const Form* form : forms) takes |= form->takes, needs &= form->needs;
    for (size_t i = 0; i < keywordCount; ++i)
        if (takes >> i & 1) all.emplace_back(keywordTable[i].name, keywordTable[i].annotation, needs >> i & 1);
    if (forms[0]->e->converts())
        for (const auto& k : commonKeywords) all.emplace_back(k.name, k.annotation, false);
    return all;
}

std::string Operation::documentation() const {
    std::string text = forms.size() == 1 ? forms[0]->e->documentation
                                         : "Calls the one of " + std::to_string(forms.size()) +
                                               " exports that the arrays and keywords fit.";
    text += "\n";
    for (const auto& [keyword, annotation, needed] : keywords()) {
        text += "\n" + keyword + ": ";
        for (const Keyword& k : keywordTable)
            if (k.name == keyword)
                text += k.documentation + (k.enumeration ? ": " + listed(namesOf(k.enumeration)) : std::string());
        for (const auto& k : commonKeywords)
            if (k.name == keyword) text += k.documentation;
    }
    text += "\n";
    text += "\nExports:\n\n";
    for (const Form* form : forms) text += form->line() + "\n    " + form->e->documentation + "\n";
    return text;
}

const std::vector<Form>& forms() {
    static const auto& all = *new std::vector<Form>(catalogue::exports().begin(), catalogue::exports().end());
    return all;
}

const std::vector<Operation>& operations() {
    static const auto& all = *[] {
        std::map<std::string, std::vector<const Form*>> byName;
        for (const Form& form : forms()) byName[form.e->operation].push_back(&form);
        auto* list = new std::vector<Operation>;
        for (auto& [name, members] : byName) list->push_back({name, members});
        return list;
    }();
    return all;
}

Categories& categories() {
    static Categories all = {};
    return all;
}

}  // namespace moxpy
