#include "contract/form.h"

#include <fnmatch.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <stdexcept>

#include "moxcc/moxcc.h"

namespace moxtest {
namespace {

// ---- the tables -----------------------------------------------------------------------------------------------------

// The argument tests, a letter each; the first that fails decides:
//
//     N  pointers to images and plane arrays, and W, where weights are required, those too: NullPtr
//     P  pointers in plane arrays: NullPtr
//     A  step arrays: NullPtr
//     S  the least size: BadSize
//     s  a size of 1 x 1: BadSize
//     M  a size in whole cells: BadSize
//     T  steps above 0: BadStep
//     U  steps above 0: BadSize
//     R  an upper limit above the lower: BadRange
//     b  a buffer where one is used: NullPtr
//     O  no error, but pixels outside whole cells: OddSize
//
// and a number's own letter.
constexpr int any = INT_MIN;
constexpr struct {
    const char* names;
    const char* tests;
    MoxiSize least;
    MoxiSize cell;
} argumentTests[] = {
    {"*ReduceBitsGetBufferSize", "NStnd", {1, any}, {}},
    {"*ReduceBits_8u1u*", "NSoDb", {1, 1}, {}},
    {"*ReduceBits*", "NSnldb", {1, 1}, {}},
    {"*v210*", "NSU", {1, 1}, {}},
    {"*CFAToRGB*", "NSg", {2, 2}, {}},
    {"*@(VNG|AHD)*", "NSg", {5, 5}, {}},
    {"*Gamma???_32f*", "RNPST", {1, 1}, {}},
    {"*Gamma@(Fwd|Inv)_*", "NPST", {1, 1}, {}},
    {"*Twist*", "NWPST", {1, 1}, {}},
    {"*Lab*_P3R*", "NAPS", {1, 1}, {}},

    // Models at full resolution.
    {"moxi@(RGBToYUV|YUVToRGB)_8u_*", "NSP", {1, 1}, {}},
    {"moxi@(RGBToYCbCr|YCbCrToRGB)_8u_P3@(|C4)R", "NSP", {1, 1}, {}},
    {"moxiBGRToHLS_8u_AC4R", "NST", {1, 1}, {}},
    {"*BGR*HLS*", "NPTS", {1, 1}, {}},
    {"*HLSToBGR*", "NPTS", {1, 1}, {}},
    {"moxi@(BGRToYCoCg*_8u16s|SBGRToYCoCg_16s|YCoCgToSBGR_32s16s|RGBToYCoCg_8u)_*", "NPS", {1, 1}, {}},
    {"moxi@(SBGRToYCoCg@(|_Rev)_16s32s_C3P3R|YCoCgToSBGR_16s_P3C4R)", "NPS", {1, 1}, {}},
    {"*YCoCg*", "NPS", {any, any}, {}},

    // Encoders and decoders.
    {"moxiYUV420ToBGR*", "NSPO", {2, 2}, {}},
    {"*YUV420*", "NSPO", {1, 1}, {}},
    {"*YUV422*", "NSP", {1, 1}, {}},
    {"*YCbCrToBGR_709*", "NPS", {1, 1}, {}},
    {"*YCbCr420ToBGR_709*", "NSPO", {1, 1}, {}},
    {"*420_709*", "NPSO", {2, 2}, {}},
    {"*422_709*", "NS", {1, 1}, {}},
    {"*CbYCr422ToBGR*", "NS", {1, 1}, {}},
    {"moxiRGBToY*422_8u_P3C2R", "NSP", {1, 1}, {}},
    {"moxi@(BGRToYCbCr422_8u_*|RGBToYCbCr422_8u_C3P3R)", "NPS", {2, 1}, {}},
    {"moxiRGBToYCbCr420_8u_C3P3R", "NSPO", {1, 1}, {}},
    {"*BToYC*420_8u_*P2R", "NSO", {1, 1}, {}},
    {"*BToYC*420_8u_*P3R", "NPSO", {2, 2}, {}},
    {"*GRToYC*420_8u_*P2R", "NSO", {1, 1}, {}},
    {"*GRToYC*420_8u_*P3R", "NPSO", {2, 2}, {}},
    {"*BGRToYCbCr411*", "NPSO", {4, 1}, {}},
    {"moxiYCbCr422To@(BGR_8u_C2*|*_8u_P3C3R)", "NPS", {2, 1}, {}},
    {"*422ToRGB_8u_C2P3R", "NSP", {1, 1}, {}},
    {"*411ToBGR*", "NPS", {4, 1}, {}},
    {"moxiYCrCb420To*_8u_P2C4R", "SNO", {1, 1}, {}},
    {"*Filter*P3C4R", "NSPO", {1, 1}, {}},
    {"*420To@(RGB|BGR)_8u_*", "NSPO", {1, 1}, {}},

    // Samplings and layouts.
    {"*Interlace*", "NPSO", {2, 4}, {2, 4}},
    {"*Filter*P2C2R", "NS", {2, 2}, {}},
    {"*YCbCr420ToYCrCb420*_P2P3R", "NsPS", {2, 2}, {}},
    {"*Filter*", "NPS", {2, 8}, {}},
    {"*@(411To420|420To1620|1620To420)_*", "NPSM", {4, 4}, {4, 4}},
    {"*420To411_*", "NPSM", {4, 2}, {4, 2}},
    {"*411ToYC*420_*", "NPS", {4, 2}, {}},
    {"*420ToYC*411_*", "NPS", {4, 2}, {}},
    {"moxiYCbCr422ToYCbCr411_8u_C2P3R", "NPS", {4, 1}, {}},
    {"*411*", "NPS", {4, any}, {}},
    {"*420*", "NPS", {2, 2}, {}},
    {"moxiYCbCr422_8u_C2P3R", "NPAS", {2, 1}, {}},
    {"moxiYCbCr422ToYCrCb422*", "NPS", {2, any}, {}},
    {"moxi@(YCbCr422_*|C*422To*Y*422*|YC*422To*Y*422*)", "NPS", {2, 1}, {}},
};

// Which columns and rows count. What is not here is cut to whole cells of its samplings.
constexpr struct {
    const char* names;
    MoxiSize cut;
    bool incomplete;  // a cell of chroma for the columns that fill none
} cuts[] = {
    {"*YUV420*_@(C3P3|P3|P3C3)", {1, 2}, false},  // rows without gaps
    {"*YUV422*", {1, 1}, true},
    {"*C*422To@(RGB|BGR|Gray)*_C2*", {1, 1}, false},  // a last odd pixel
    {"*RGBToCbYCr422*", {1, 1}, false},               //
    {"*422*_8u_AC4C2R", {1, 1}, false},               //
    {"*422_709*", {1, 1}, false},                     //
    {"*411*_8u_AC4P3R", {1, 1}, false},               // its luma
    {"*411ToBGR*", {1, 1}, false},                    //
    {"*Interlace*", {2, 4}, false},
    {"*Filter*422_Filter_8u_*P3R", {2, 8}, false},
};

// Whose results depend on where the planes lie.
constexpr const char* addressDependent[] = {
    "moxiColorToGray_64f_*",     // pairs of columns start at an address on 16, and add in two orders
    "moxiRGBToYUV422_8u_C3P3*",  // planes and steps on 16 have a rule of their own
    "*YCrCb420_Filter*",         // as these
    "moxiToneMapMean*",          // the order of the sum follows the addresses of the rows
};

// Numbers that the exports take, by the order in which they take them.
constexpr struct {
    const char* names;
    const char* letters;
} numbers[] = {
    {"*ReduceBitsGetBufferSize", "tnd"},
    {"*ReduceBits_8u1u*", "orrDa"},
    {"*ReduceBits*", "ndl"},
    {"*CFA*", "g"},
    {"*Demosaic*", "g"},
    {"*Filter*P2*", "m"},
    {"*Gamma*", "vV"},
    {"*", "a"},
};

const NumberKind numberKinds[] = {
    {'a', {0, 1, 100, 127}, {}, 0},                                                      // a sample
    {'d', {0, 1, 2, 3, 4}, {-1, 5, INT_MAX}, moxStatusBadDitherType},                    // a dither method
    {'D', {0, 3}, {-1, 1, 2, 4}, moxStatusBadDitherType},                                // one to a bit
    {'g', {0, 1, 2, 3}, {-1, 4, INT_MIN}, moxStatusBadArg},                              // a Bayer grid
    {'l', {2, 3, 8, 255, 256}, {INT_MIN, -2, 0, 1, INT_MAX}, moxStatusBadLevels},        // levels
    {'m', {moxSliceAll, moxSliceFirst, moxSliceMiddle, moxSliceLast, 5, 0, -1}, {}, 0},  // slices
    {'n', {0, 1, 50, 100}, {-1, 101, INT_MIN}, moxStatusBadNoise},                       // per cent of noise
    {'o', {0, 1, 7, 8, 13, 21}, {-1, INT_MIN}, moxStatusBadSize},                        // bits to the first
    {'r', {0, -1, 77}, {}, 0},                                                           // read by nothing
    {'t', {1, 3, 4, 9}, {0, 2, 5, -1}, moxStatusBadDataType},                            // a data type
    {'v', {0, -1, 0.25, 16}, {}, 0},                                                     // a lower limit
    {'V', {1, 17, 235, 1e30}, {}, 0},                                                    // an upper limit
};

// ---- names and signatures -------------------------------------------------------------------------------------------

template <class T>
Parameter parameterOf() {
    if constexpr (std::is_same_v<T, MoxiSize>) {
        return {.kind = Parameter::size, .role = Parameter::region};
    } else if constexpr (std::is_same_v<T, MoxiRect>) {
        return {.kind = Parameter::rect, .role = Parameter::roi};
    } else if constexpr (std::is_same_v<T, const int32_t*>) {
        return {.kind = Parameter::stepArray, .role = Parameter::steps};
    } else if constexpr (std::is_pointer_v<T>) {
        using Target = std::remove_pointer_t<T>;
        constexpr bool array = std::is_pointer_v<Target>;
        using Sample = std::conditional_t<array, std::remove_pointer_t<Target>, Target>;
        return {.kind = array ? Parameter::pointerArray : Parameter::pointer,
                .constant = std::is_const_v<Sample>,
                .bytes = sizeof(Sample),
                .floating = std::is_floating_point_v<Sample>};
    } else {
        return {.kind = Parameter::number, .bytes = sizeof(T), .floating = std::is_floating_point_v<T>};
    }
}

template <class Signature>
struct Prototype;
template <class... P>
struct Prototype<MoxStatus(P...)> {
    static std::vector<Parameter> parameters() { return {parameterOf<P>()...}; }
    static MoxStatus call(void* function, std::span<const Argument> arguments) {
        return [&]<size_t... i>(std::index_sequence<i...>) {
            return reinterpret_cast<MoxStatus (*)(P...)>(function)(arguments[i].template as<P>()...);
        }
        (std::index_sequence_for<P...>());
    }
};
template <>
struct Prototype<const MoxLibraryVersion*()> {
    static std::vector<Parameter> parameters() { return {}; }
    static constexpr auto call = nullptr;
};

struct LayoutToken {
    char kind;  // P: planes, C: interleaved
    int count;
};

// C3P3R, IP3R, AC4R, P3 ...
std::vector<LayoutToken> layoutTokens(std::string_view name) {
    if (name.ends_with("_L")) name.remove_suffix(2);
    name.remove_prefix(name.rfind('_') + 1);
    std::vector<LayoutToken> tokens;
    for (size_t i = 0; i + 1 < name.size(); ++i)
        if (name[i] == 'C' || name[i] == 'P') tokens.push_back({name[i], name[i + 1] - '0'});
    if (tokens.size() == 1) tokens.push_back(tokens[0]);
    return tokens;
}

// Pixels that share a chroma sample.
MoxiSize samplingOf(std::string_view what) {
    const auto has = [&](const char* digits) { return what.find(digits) != std::string_view::npos; };
    return has("1620")  ? MoxiSize{4, 4}
           : has("420") ? MoxiSize{2, 2}
           : has("422") ? MoxiSize{2, 1}
           : has("411") ? MoxiSize{4, 1}
                        : MoxiSize{1, 1};
}

std::vector<PlaneShape> shapesOf(LayoutToken layout, MoxiSize cell, int bytes, bool whole) {
    const bool sampled = cell.width > 1;
    if (layout.kind == 'C') return {{layout.count * bytes, 1, 1, false}};
    std::vector<PlaneShape> shapes = {{bytes, 1, 1, false}};
    const int chroma = sampled && layout.count == 2 ? 2 * bytes : bytes;
    shapes.resize(static_cast<size_t>(layout.count), {chroma, cell.width, cell.height, whole});
    return shapes;
}

// A semi-planar side has two pointers, any other one.
size_t pointersOf(LayoutToken layout) { return layout.kind == 'P' && layout.count == 2 ? 2 : 1; }

void assignRoles(Form& form, const std::vector<LayoutToken>& layouts) {
    // In-place forms have destinations only.
    const size_t images[2] = {form.is("*_*I@(P3|)R") ? 0 : pointersOf(layouts[0]), pointersOf(layouts[1])};
    size_t seen[2] = {}, values = 0;
    const Parameter* last = nullptr;
    const char* const letters =
        std::ranges::find_if(numbers, [&](const auto& row) { return form.is(row.names); })->letters;
    for (Parameter& p : form.parameters) {
        const auto side = static_cast<size_t>(!p.constant);
        switch (p.kind) {
            case Parameter::pointerArray:
                p.role = Parameter::images, p.side = !p.constant, p.plane = -1, seen[side] = images[side];
                break;
            case Parameter::pointer:
                if (seen[side] < images[side])
                    p.role = Parameter::image, p.side = !p.constant, p.plane = static_cast<int>(seen[side]++);
                else
                    p.role = p.constant ? Parameter::weights : Parameter::buffer;
                break;
            case Parameter::stepArray:
                p.side = last->side;
                break;
            case Parameter::size:
                if (last && last->role == Parameter::roi) p.role = Parameter::sourceSize;
                break;
            case Parameter::number:
                if (last &&
                    (last->kind == Parameter::pointer || last->kind == Parameter::pointerArray ||
                     last->role == Parameter::sourceSize) &&
                    last->role != Parameter::weights)
                    p.role = Parameter::step, p.side = last->role == Parameter::buffer ? 2 : last->side,
                    p.plane = last->plane, p.bytes = last->bytes;
                else
                    p.letter = letters[values++];
                break;
            default:
                break;
        }
        last = &p;
    }
}

template <class Signature>
Form makeForm(const char* name) {
    Form form;
    form.name = name;
    form.parameters = Prototype<Signature>::parameters();
    form.call = Prototype<Signature>::call;
    if (!form.call) return form;
    const std::string_view whole = name;
    std::vector<LayoutToken> layouts = layoutTokens(whole);
    if (layouts.empty() || form.is("*v210*")) layouts = {{'C', 1}, {'C', 1}};
    assignRoles(form, layouts);

    const size_t to = whole.find("To");
    MoxiSize cells[2] = {samplingOf(whole.substr(0, to)), samplingOf(to < whole.size() ? whole.substr(to) : whole)};
    if (form.is("*v210*")) cells[0] = cells[1] = {1, 1};
    form.cut = {std::max(cells[0].width, cells[1].width), std::max(cells[0].height, cells[1].height)};
    form.cell = form.cut;
    bool incomplete = false;
    for (const auto& row : cuts) {
        if (!form.is(row.names)) continue;
        form.cut = row.cut, incomplete = row.incomplete;
        break;
    }
    int bytes[2] = {}, alike = 0;
    for (const Parameter& p : form.parameters)
        if (p.role == Parameter::image || p.role == Parameter::images) bytes[p.side] = p.bytes, alike |= 1 << p.side;
    for (const int side : {0, 1})
        if (alike & 1 << side)
            form.planes[side] = shapesOf(layouts[size_t(side)], cells[side], bytes[side], !incomplete);

    if (form.planes[1].empty()) throw std::logic_error(form.name);

    form.tests = "NPS";
    for (const auto& row : argumentTests) {
        if (!form.is(row.names)) continue;
        form.tests = row.tests, form.least = row.least;
        if (row.cell.width) form.cell = row.cell;
        break;
    }
    form.weights = form.is("*Twist*C4R") && !form.is("*AC4*") ? 16 : form.is("*Twist*") ? 12 : 3;
    form.dependsOnAddresses = std::ranges::any_of(addressDependent, [&](const char* names) { return form.is(names); });
    form.mostLevels = form.is("*8u_*") ? 256 : 65536;
    return form;
}

std::vector<Form> makeForms() {
    std::vector<Form> all;
#define MOX_NAME(name) all.push_back(makeForm<decltype(name)>(#name));
#include "exports.inc"
#undef MOX_NAME
    std::erase_if(all, [](const Form& form) { return !form.call; });
    return all;
}

}  // namespace

// ---- what a form is -------------------------------------------------------------------------------------------------

const std::vector<Form>& forms() {
    static const std::vector<Form> all = makeForms();
    return all;
}

const NumberKind& numberKind(char letter) {
    return *std::ranges::find_if(numberKinds, [&](const NumberKind& kind) { return kind.letter == letter; });
}

bool Form::is(const char* pattern) const { return fnmatch(pattern, name, FNM_EXTMATCH) == 0; }

bool Form::tested(char test) const { return std::strchr(tests, test) != nullptr; }

int Form::rowBytes(int side, size_t plane, int width) const {
    const PlaneShape& shape = planes[side][plane];
    if (is("*Size")) return shape.bytes;
    if (side == 0 && is("*v210*")) {  // words of three samples; the last ones only as far as they are looked at
        constexpr int partial[2][6] = {{0, 1, 2, 2, 3, 4}, {0, 1, 2, 3, 3, 4}};
        return width / 6 * 16 + 4 * partial[!is("*Gray*")][width % 6];
    }
    const int columns = std::max(width, 0) / cut.width * cut.width;
    return shape.bytes * (shape.whole ? columns / shape.width : columns / shape.width + (columns % shape.width != 0));
}

int Form::rows(int side, size_t plane, int height) const {
    const PlaneShape& shape = planes[side][plane];
    if (is("*Size")) return 1;
    const int count = std::max(height, 0) / cut.height * cut.height;
    return count / shape.height + (count % shape.height != 0);
}

std::vector<Fault> Form::faults() const {
    std::vector<Fault> all;
    const auto add = [&](char test, size_t parameter, double value = 0) {
        if (tested(test)) all.push_back({test, static_cast<int>(parameter), value});
    };
    for (size_t i = 0; i < parameters.size(); ++i) {
        const Parameter& p = parameters[i];
        if (p.role == Parameter::image || p.role == Parameter::images) add('N', i);
        if (p.role == Parameter::images)
            for (int plane = 0; plane < 3; ++plane) add('P', i, plane);
        if (p.role == Parameter::weights) add('W', i);
        if (p.role == Parameter::steps) add('A', i);
        if (p.role == Parameter::step && p.side < 2)
            for (const double step : {0, -1, INT_MIN}) add('T', i, step), add('U', i, step);
        if (p.role == Parameter::buffer) add('b', i);
        if (p.letter == 'V')
            for (const double limit : {-1e30, -1.0, 0.0}) add('R', i, limit);
        if (p.letter && tested(p.letter)) {
            for (const double bad : numberKind(p.letter).bad) add(p.letter, i, bad);
            if (p.letter == 'l') add('l', i, mostLevels + 1);
        }
        if (p.kind == Parameter::size) {
            for (const double width : {least.width - 1.0, 0.0, -1.0, double(INT_MIN)})
                if (least.width != any) add('S', i, width);
            for (const double height : {least.height - 1.0, 0.0, -1.0, double(INT_MIN)})
                if (least.height != any) add('S', i, height + 0.5);  // half: of the height
        }
    }
    return all;
}

void Form::inject(const Fault& fault, std::vector<Argument>& arguments) const {
    Argument& argument = arguments[static_cast<size_t>(fault.parameter)];
    const double floor = std::floor(fault.value);
    switch (fault.test) {
        case 'N':
        case 'W':
        case 'A':
        case 'b':
            argument.pointer = nullptr;
            break;
        case 'P':
            if (argument.pointer) static_cast<void**>(argument.pointer)[static_cast<size_t>(fault.value)] = nullptr;
            break;
        case 'S':
            (floor == fault.value ? argument.size.width : argument.size.height) = static_cast<int>(floor);
            break;
        default:
            argument.number = fault.value;
    }
}

double Form::number(char letter, std::span<const Argument> arguments) const {
    for (size_t i = 0; i < parameters.size(); ++i)
        if (parameters[i].letter == letter) return arguments[i].number;
    return 0;
}

MoxStatus Form::expected(std::span<const Argument> arguments) const {
    MoxiSize size = {};
    for (size_t i = 0; i < parameters.size(); ++i)
        if (parameters[i].kind == Parameter::size) size = arguments[i].size;
    const auto value = [&](char letter) { return number(letter, arguments); };
    const auto anyOf = [&](Parameter::Role role, const auto& condition) {
        for (size_t i = 0; i < parameters.size(); ++i)
            if (parameters[i].role == role && condition(arguments[i])) return true;
        return false;
    };
    const auto null = [](const Argument& a) { return !a.pointer; };
    const auto notPositive = [](const Argument& a) { return a.number < 1; };
    const auto planeNull = [](const Argument& a) {
        void* const* const array = static_cast<void* const*>(a.pointer);
        return !array[0] || !array[1] || !array[2];
    };
    const auto fails = [&](char test) -> MoxStatus {
        switch (test) {
            case 'N':
                return anyOf(Parameter::image, null) || anyOf(Parameter::images, null) ? moxStatusNullPtr : 0;
            case 'W':
                return anyOf(Parameter::weights, null) ? moxStatusNullPtr : 0;
            case 'P':
                return anyOf(Parameter::images, planeNull) ? moxStatusNullPtr : 0;
            case 'A':
                return anyOf(Parameter::steps, null) ? moxStatusNullPtr : 0;
            case 'S':
                return size.width < least.width || size.height < least.height ? moxStatusBadSize : 0;
            case 's':
                return size.width < 1 || size.height < 1 ? moxStatusBadSize : 0;
            case 'M':
                return size.width % cell.width || size.height % cell.height ? moxStatusBadSize : 0;
            case 'T':
                return anyOf(Parameter::step, notPositive) ? moxStatusBadStep : 0;
            case 'U':
                return anyOf(Parameter::step, notPositive) ? moxStatusBadSize : 0;
            case 'R': {
                const float range = static_cast<float>(value('V')) - static_cast<float>(value('v'));
                return range <= 0 ? moxStatusBadRange : 0;
            }
            case 'b': {
                const bool used = value('D') == 3 || (value('d') > 0 && (value('d') < 4 || value('n') > 0));
                return used && anyOf(Parameter::buffer, null) ? moxStatusNullPtr : 0;
            }
            case 'O':
                return size.width % cell.width || size.height % cell.height ? moxStatusOddSize : 0;
            case 'l':
                return value('l') < 2 || value('l') > mostLevels ? moxStatusBadLevels : 0;
            default: {
                const NumberKind& kind = numberKind(test);
                return std::ranges::count(kind.bad, value(test)) ? kind.otherwise : 0;
            }
        }
    };
    for (const char* test = tests; *test; ++test)
        if (const MoxStatus status = fails(*test)) return status;
    return moxStatusOk;
}

}  // namespace moxtest
