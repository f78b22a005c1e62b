#include "catalogue/export.h"

#include <fnmatch.h>

#include <algorithm>
#include <numeric>
#include <stdexcept>

#include "catalogue/call.h"
#include "moxcc/moxcc.h"

namespace catalogue {
namespace {

// ---- the tables -----------------------------------------------------------------------------------------------------
//
// Names are shell patterns; the first line that fits is the export's.

// The argument tests, a letter each: see Check and Value. What is not here tests NPS, and takes any size from 1 x 1.
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

// Which columns and rows are worked on. What is not here is cut to whole cells of its samplings.
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
    {"*422_Filter_8u_*P3R", {2, 8}, false},
};

// Destinations of four channels with alpha that do get a fourth: a 0.
constexpr const char* writesFourth[] = {"*_P3AC4R", "moxiRGBToYCbCr_8u_AC4R"};

// What steps count, where that is not bytes.
constexpr struct {
    const char* names;
    StepUnit unit;
} stepUnits[] = {
    {"moxi@(RGBToGray|ColorToGray)_@(16|32)*", StepUnit::roundedDown},
    {"*@(HLS|HSV|XYZ|YCC)*_@(16|32)*", StepUnit::roundedDown},
    {"*LUV*_16*", StepUnit::roundedDown},
    {"moxiLUVToRGB_32f_AC4R", StepUnit::roundedDown},
    {"moxiCFAToRGB_16u*", StepUnit::roundedDown},
    {"*@(VNG|AHD|ReduceBits|ToneMap)*", StepUnit::wholeSamples},
    {"*v210*", StepUnit::samples},
};

// Whose results depend on where the planes lie.
constexpr const char* addressDependent[] = {
    "moxiColorToGray_64f_*",     // pairs of columns start at an address on 16, and add in two orders
    "moxiRGBToYUV422_8u_C3P3*",  // planes and steps on 16 have a rule of their own
    "*YCrCb420_Filter*",         // as these
    "moxiToneMapMean*",          // the order of the sum follows the addresses of the rows
};

// Numbers that the exports take, by the order in which they take them: see Value.
constexpr struct {
    const char* names;
    const char* values;
} numbers[] = {
    {"*ReduceBitsGetBufferSize", "tnd"},
    {"*ReduceBits_8u1u*", "orrDh"},
    {"*ReduceBits*", "ndl"},
    {"*CFA*", "g"},
    {"*Demosaic*", "g"},
    {"*Filter*P2*", "m"},
    {"*Gamma*", "vV"},
    {"*", "a"},
};

const ValueKind valueKinds[] = {
    {Value::alpha, {0, 1, 100, 127}, {}, 0},
    {Value::dither, {0, 1, 2, 3, 4}, {-1, 5, INT_MAX}, moxStatusBadDitherType},
    {Value::bitDither, {0, 3}, {-1, 1, 2, 4}, moxStatusBadDitherType},
    {Value::grid, {0, 1, 2, 3}, {-1, 4, INT_MIN}, moxStatusBadArg},
    {Value::levels, {2, 3, 8, 255, 256}, {INT_MIN, -2, 0, 1, INT_MAX}, moxStatusBadLevels},
    {Value::slice, {moxSliceAll, moxSliceFirst, moxSliceMiddle, moxSliceLast, 5, 0, -1}, {}, 0},
    {Value::noise, {0, 1, 50, 100}, {-1, 101, INT_MIN}, moxStatusBadNoise},
    {Value::firstBit, {0, 1, 7, 8, 13, 21}, {-1, INT_MIN}, moxStatusBadSize},
    {Value::reserved, {0, -1, 77}, {}, 0},
    {Value::threshold, {0, 1, 100, 127, 255}, {}, 0},
    {Value::dataType, {1, 3, 4, 9}, {0, 2, 5, -1}, moxStatusBadDataType},
    {Value::lowerLimit, {0, -1, 0.25, 16}, {}, 0},
    {Value::upperLimit, {1, 17, 235, 1e30}, {}, 0},
};

// Where bands may begin so that they give the bytes of one call: at multiples of so many rows; not at all (0); or as
// the call has it, see Export::cuts().
constexpr int notSplit = 0, byCall = -1;
constexpr BandRule bands[] = {
    {"*ToneMap*", "tone mapping", notSplit, "not split",
     "the maximum or the mean of the whole picture is measured first"},
    {"*ReduceBitsGetBufferSize", nullptr, notSplit, "not split", "it converts nothing"},
    {"*ReduceBits_8u1u*", "moxiReduceBits_8u1u_C1R()", byCall, "any row with moxDitherNone, not split with diffusion",
     "errors run down the whole picture"},
    {"*ReduceBits*", "moxiReduceBits_8u_C1R() and its like", byCall,
     "any row with moxDitherNone; multiples of 4 with moxDitherBayer, of 512 if there is noise; not split with "
     "diffusion",
     "the matrix has four rows, the noise repeats after 512; errors run down the whole picture"},
    {"*_VNG_*", "moxiCFAToBGRA_VNG_8u_C1C4R_L() and 16u: the region, not the pointer, is the band", byCall,
     "any row, each band of 3 rows or more", "the two outermost rows repeat the third, which must be in their band"},
    {"*DemosaicAHD*", "moxiDemosaicAHD_8u_C1C3R() and 16u, likewise, each band with its own scratch memory", byCall,
     "rows that hold red sites: even ones of RGGB and GRBG, odd ones of BGGR and GBRG",
     "ties follow the pixel on the left, from where the work on a row starts; in the row below such a cut that is "
     "another column"},
    {"*CFA*", "moxiCFAToRGB_8u_C1C3R() and 16u: the region, not the pointer, is the band", 1, "any row",
     "a pixel depends on its place in the whole picture only"},
    {"*_Filter_8u_P2C2R", "moxiYCbCr420ToYCbCr422_Filter_8u_P2C2R()", notSplit, "not split: @ref slices",
     "the slice mode chooses the rounding"},
    {"*YCbCr420ToYCrCb420_Filter*", "moxiYCbCr420ToYCrCb420_Filter_8u_P2P3R()", notSplit, "not split: @ref slices",
     "the slice mode and the alignment choose the rounding"},
    {"*_Filter_8u_P3C4R", "moxiYCrCb420ToBGR_Filter_8u_P3C4R()", 2, "even rows", "chroma is filtered along the row"},
    {"*_Filter_*", "4:2:0 to 4:2:2 by four taps: moxiYCbCr420ToYCbCr422_Filter_8u_P3R() and its like", notSplit,
     "not split", "four chroma rows make one"},
    {"*420To*422_Interlace*", "interlaced 4:2:0 to 4:2:2: moxiYCbCr420To422_Interlace_8u_P3R() and its like", notSplit,
     "not split", "chroma rows lie between rows of both bands; the first and the last rows of a call are copies"},
    {"*_Interlace*", "interlaced 4:2:2 to 4:2:0: moxiYCbCr422To420_Interlace_8u_P3R() and its like", 4,
     "multiples of 4", "two rows of each field make one"},
    {"*@(420To411|1620To420)_8u_P3R", "moxiYCbCr420To411_8u_P3R(), moxiYCbCr1620To420_8u_P3R()", notSplit, "not split",
     "chroma rows are means of the rows above and below; the last is a copy"},
    {"*@(411To420|420To1620)_8u_P3R", "moxiYCbCr411To420_8u_P3R(), moxiYCbCr420To1620_8u_P3R()", 4, "multiples of 4",
     "heights are multiples of 4"},
    {"*YUV422*_8u_@(C3P3|P3C3|P3)", "functions without steps, 4:2:2", byCall,
     "any row if the width is odd; otherwise rows where `width * row` is a multiple of 16, each band of 256 pixels or "
     "more",
     "a picture of even width counts as one row, and the last columns of that row follow another recipe"},
    {"*420*", "other changes to and from 4:2:0, with steps and without", 2, "even rows",
     "a chroma row belongs to two rows of luma"},
    {"*@(422|411)*", "4:2:2 and 4:1:1 to and from each other and colour, also with filtered chroma; @ref v210", 1,
     "any row", "chroma is filtered along the row, or copied within it"},
    {"*",
     "@ref gray, @ref yuv, @ref ycbcr, @ref xyz, @ref luv, @ref lab, @ref hls, @ref hsv, @ref ycc, @ref ycocg, "
     "@ref gamma, @ref twist",
     1, "any row", "rows do not know of each other"},
};

// Pixel formats as the field calls them.
constexpr Format formatTable[] = {
    {"GRAY8", "Y8, Y800", "Gray", "C1", "8u", "Y"},
    {"GRAY16", "Y16", "Gray", "C1", "16u", "Y, 16 bits"},
    {"RGB24", "rgb24", "RGB", "C3", "8u", "R G B"},
    {"BGR24", "bgr24", "BGR", "C3", "8u", "B G R"},
    {"RGBA", "rgba; as a little-endian word ABGR", "RGB", "C4", "8u", "R G B A"},
    {"BGRA", "bgra; as a little-endian word ARGB", "BGR", "C4", "8u", "B G R A"},
    {"RGBx", "rgb0, RGBA whose alpha is left alone", "RGB", "AC4", "8u", "R G B x"},
    {"BGRx", "bgr0, BGRA whose alpha is left alone", "BGR", "AC4", "8u", "B G R x"},
    {"planar RGB", "", "RGB", "P3", "8u", "planes R, G, B"},
    {"RGB48", "rgb48le", "RGB", "C3", "16u", "R G B, 16 bits each"},
    {"BGRA64", "bgra64le", "BGR", "C4", "16u", "B G R A, 16 bits each"},
    {"RGBF32", "rgbf32le", "RGB", "C3", "32f", "R G B, floats"},
    {"NV12", "", "YCbCr420", "P2", "8u", "plane Y; plane of Cb Cr pairs, halved both ways"},
    {"NV21", "", "YCrCb420", "P2", "8u", "plane Y; plane of Cr Cb pairs, halved both ways"},
    {"I420", "IYUV, yuv420p", "YCbCr420", "P3", "8u", "planes Y, Cb, Cr; chroma halved both ways"},
    {"YV12", "", "YCrCb420", "P3", "8u", "planes Y, Cr, Cb; chroma halved both ways"},
    {"I422", "yuv422p", "YCbCr422", "P3", "8u", "planes Y, Cb, Cr; chroma halved across"},
    {"YUY2", "YUYV, yuyv422", "YCbCr422", "C2", "8u", "Y0 Cb Y1 Cr"},
    {"YVYU", "yvyu422", "YCrCb422", "C2", "8u", "Y0 Cr Y1 Cb"},
    {"UYVY", "uyvy422", "CbYCr422", "C2", "8u", "Cb Y0 Cr Y1"},
    {"I411", "yuv411p", "YCbCr411", "P3", "8u", "planes Y, Cb, Cr; chroma a quarter across"},
    {"NV11", "", "YCbCr411", "P2", "8u", "plane Y; plane of Cb Cr pairs, a quarter across"},
    {"YUV9", "yuv410p", "YCbCr1620", "P3", "8u", "planes Y, Cb, Cr; chroma a quarter both ways"},
    {"I444", "yuv444p", "YCbCr", "P3", "8u", "planes Y, Cb, Cr"},
    {"v210", "v210", "YUV422v210", "C1", "32u", "three samples of 10 bits in a 32-bit word, chroma halved across"},
    {"Bayer 8", "bayer_bggr8, bayer_rggb8, bayer_gbrg8, bayer_grbg8", "CFA", "C1", "8u", "one colour a pixel"},
    {"Bayer 16", "bayer_bggr16le and its like", "CFA", "C1", "16u", "one colour a pixel, 16 bits"},
    {"1 bit", "monob", "bits", "C1", "1u", "eight pixels a byte, the first in the top bit; 1 is white"},
};

// Sides that hold something else than the name says, or than nothing.
constexpr struct {
    const char* names;
    const char* holds[2];
} held[] = {
    {"moxiYCbCr420ToYCrCb420*_P2P3R", {"YCbCr420", "YCbCr420"}},  // the chroma is not exchanged
    {"*ReduceBits_8u1u*", {"Gray", "bits"}},
    {"*@(ReduceBits|ToneMap)*C1R", {"Gray", "Gray"}},
    {"*ReduceBits*", {"RGB", "RGB"}},
    {"*@(GammaFwd|GammaInv|Twist)*", {"RGB", "RGB"}},
    {"*ColorToGray*", {"RGB", "Gray"}},
    {"*DemosaicAHD*", {"CFA", "RGB"}},
    {"*CFAToBGRA*", {"CFA", "BGR"}},
    {"moxiYCbCr1620To420*", {"YCbCr1620", "YCbCr420"}},
    {"moxiYCbCr420To1620*", {"YCbCr420", "YCbCr1620"}},
    {"moxiYCbCr411To420*", {"YCbCr411", "YCbCr420"}},
    {"moxiYCbCr420To411*", {"YCbCr420", "YCbCr411"}},
    {"moxiYCbCr420To422*", {"YCbCr420", "YCbCr422"}},
    {"moxiYCbCr422To420*", {"YCbCr422", "YCbCr420"}},
    {"*v210ToGray*", {"YUV422v210", "Gray"}},
    {"*v210*", {"YUV422v210", "565"}},
    {"moxiRGBToCbYCr422Gamma*", {"RGB", "CbYCr422"}},
};

// ---- names and prototypes -------------------------------------------------------------------------------------------

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
                .floating = std::is_floating_point_v<Sample>,
                .isSigned = std::is_signed_v<Sample>};
    } else {
        return {.kind = Parameter::number,
                .bytes = sizeof(T),
                .floating = std::is_floating_point_v<T>,
                .isSigned = std::is_signed_v<T>};
    }
}

template <class Signature>
struct Prototype {};
template <class... P>
struct Prototype<MoxStatus(P...)> {
    static std::vector<Parameter> parameters() { return {parameterOf<P>()...}; }
    static MoxStatus invoke(void* function, std::span<const Argument> arguments) {
        return [&]<size_t... i>(std::index_sequence<i...>) {
            return reinterpret_cast<MoxStatus (*)(P...)>(function)(arguments[i].template as<P>()...);
        }
        (std::index_sequence_for<P...>());
    }
};

struct LayoutToken {
    std::string text;  // "AC4"
    char kind = 'C';   // P: planes, C: interleaved
    int count = 1;
};

// C3P3R, IP3R, AC4R, P3 ...
std::vector<LayoutToken> layoutTokens(std::string_view name) {
    if (name.ends_with("_L")) name.remove_suffix(2);
    name.remove_prefix(name.rfind('_') + 1);
    std::vector<LayoutToken> tokens;
    for (size_t i = 0; i + 1 < name.size(); ++i) {
        if (name[i] != 'C' && name[i] != 'P') continue;
        const size_t from = i > 0 && name[i - 1] == 'A' ? i - 1 : i;
        tokens.push_back({std::string(name.substr(from, i + 2 - from)), name[i], name[i + 1] - '0'});
    }
    if (tokens.size() == 1) tokens.push_back(tokens[0]);
    return tokens;
}

// "8u", "16s" ...: one or two of them behind an underscore.
std::vector<std::string> depthsOf(std::string_view name) {
    std::vector<std::string> depths;
    for (size_t i = name.find('_'); i < name.size(); i = name.find('_', i + 1)) {
        depths.clear();
        size_t j = i + 1;
        while (j < name.size() && std::isdigit(static_cast<unsigned char>(name[j]))) {
            size_t k = j;
            while (k < name.size() && std::isdigit(static_cast<unsigned char>(name[k]))) ++k;
            if (k == name.size() || std::string_view("usf").find(name[k]) == std::string_view::npos) break;
            depths.emplace_back(name.substr(j, k + 1 - j));
            j = k + 1;
        }
        if (!depths.empty() && (j == name.size() || name[j] == '_')) break;
    }
    if (depths.size() == 1) depths.push_back(depths[0]);
    return depths;
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

std::vector<PlaneShape> shapesOf(const LayoutToken& layout, MoxiSize cell, int bytes, bool whole) {
    const bool sampled = cell.width > 1;
    if (layout.kind == 'C') return {{layout.count * bytes, 1, 1, false}};
    std::vector<PlaneShape> shapes = {{bytes, 1, 1, false}};
    const int chroma = sampled && layout.count == 2 ? 2 * bytes : bytes;
    shapes.resize(static_cast<size_t>(layout.count), {chroma, cell.width, cell.height, whole});
    return shapes;
}

// A semi-planar side has two pointers, any other one.
size_t pointersOf(const LayoutToken& layout) { return layout.kind == 'P' && layout.count == 2 ? 2 : 1; }

void assignRoles(Export& e, const std::vector<LayoutToken>& layouts) {
    // In-place forms have destinations only.
    const size_t images[2] = {e.is("*_*I@(P3|)R") ? 0 : pointersOf(layouts[0]), pointersOf(layouts[1])};
    size_t seen[2] = {}, values = 0;
    const Parameter* last = nullptr;
    const char* const letters = std::ranges::find_if(numbers, [&](const auto& row) { return e.is(row.names); })->values;
    for (Parameter& p : e.parameters) {
        const auto side = static_cast<size_t>(!p.constant);
        switch (p.kind) {
            case Parameter::pointerArray:
                p.role = Parameter::images, p.side = !p.constant, p.plane = -1, seen[side] = images[side];
                break;
            case Parameter::pointer:
                if (seen[side] < images[side])
                    p.role = e.is("*Size") ? Parameter::result : Parameter::image, p.side = !p.constant,
                    p.plane = static_cast<int>(seen[side]++);
                else
                    p.role = p.constant ? Parameter::weights : Parameter::buffer, p.side = 2;
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
                    p.meaning = Value(letters[values++]);
                break;
            default:
                break;
        }
        last = &p;
    }
}

void describe(Export& e, const char* documentation, std::initializer_list<const char*> declarations) {
    e.documentation = documentation;
    size_t i = 0;
    for (const char* declaration : declarations) {
        Parameter& p = e.parameters[i++];
        p.declaration = declaration;
        const size_t end = p.declaration.find('['), name = p.declaration.find_last_of(" *", end);
        p.name = p.declaration.substr(name + 1, end - name - 1);
    }
}

template <class Signature>
void add(std::vector<Export>& all, const char* name, void* function, const char* documentation,
         std::initializer_list<const char*> declarations) {
    if constexpr (requires { Prototype<Signature>::parameters(); }) {
        Export e;
        e.name = name;
        e.function = function;
        e.parameters = Prototype<Signature>::parameters();
        e.invoke = Prototype<Signature>::invoke;
        describe(e, documentation, declarations);
        all.push_back(std::move(e));
    }
}

/// The rest of what is known of an export, from its name, its parameters and the tables.
void derive(Export& e) {
    const std::string_view whole = e.name;
    std::vector<LayoutToken> layouts = layoutTokens(whole);
    if (layouts.empty() || e.is("*v210*")) layouts = {{"C1"}, {"C1"}};
    assignRoles(e, layouts);

    const size_t to = whole.find("To");
    MoxiSize cells[2] = {samplingOf(whole.substr(0, to)), samplingOf(to < whole.size() ? whole.substr(to) : whole)};
    if (e.is("*v210*")) cells[0] = cells[1] = {1, 1};
    e.cut = {std::max(cells[0].width, cells[1].width), std::max(cells[0].height, cells[1].height)};
    e.cell = e.cut;
    bool incomplete = false;
    for (const auto& row : cuts) {
        if (!e.is(row.names)) continue;
        e.cut = row.cut, incomplete = row.incomplete;
        break;
    }

    const std::vector<std::string> depths = depthsOf(whole);
    e.operation = whole.substr(4, depths.empty() ? whole.npos : whole.find("_" + depths[0]) - 4);
    const std::string_view models = whole.substr(0, whole.find('_'));
    const auto holding = std::ranges::find_if(held, [&](const auto& row) { return e.is(row.names); });
    for (const int i : {0, 1}) {
        const auto p = std::ranges::find_if(e.parameters, [&](const Parameter& q) {
            return q.side == i && (q.role == Parameter::image || q.role == Parameter::images);
        });
        if (p == e.parameters.end() || depths.empty()) continue;
        Side& side = e.sides[i];
        side.sampleBytes = p->bytes, side.floating = p->floating;
        side.layout = layouts[size_t(i)].text;
        side.depth = depths[size_t(i)];
        side.cell = cells[i];
        side.keepsFourth =
            side.layout == "AC4" && std::ranges::none_of(writesFourth, [&](const char* names) { return e.is(names); });
        side.planes = shapesOf(layouts[size_t(i)], cells[i], p->bytes, !incomplete);
        if (holding != std::end(held))
            side.holds = holding->holds[i];
        else
            side.holds = to > models.size() ? models.substr(4)
                         : i == 0           ? models.substr(4, to - 4)
                                            : models.substr(to + 2);
    }

    e.tests = "NPS";
    for (const auto& row : argumentTests) {
        if (!e.is(row.names)) continue;
        e.tests = row.tests, e.least = row.least;
        if (row.cell.width) e.cell = row.cell;
        break;
    }
    e.weights = e.is("*Twist*C4R") && !e.is("*AC4*") ? 16 : e.is("*Twist*") ? 12 : 3;
    e.needsWeights = e.tested(Check::weights) || e.is("*64f_AC4*");
    for (const auto& row : stepUnits)
        if (e.is(row.names)) e.steps = row.unit;
    e.dependsOnAddresses = std::ranges::any_of(addressDependent, [&](const char* names) { return e.is(names); });
    e.mayOverwriteSource = e.is("*@(GammaFwd|GammaInv|ReduceBits)_*") && e.sides[0].depth == e.sides[1].depth;
    e.bands = &*std::ranges::find_if(bands, [&](const BandRule& rule) { return e.is(rule.names); });
    e.mostLevels = e.is("*8u_*") ? 256 : 65536;
}

std::vector<Export> makeExports() {
    std::vector<Export> all;
#ifdef MOXCC_TABLE_ONLY  // for programs that call nothing, and are built before the library
#define MOX_ADDRESS(name) nullptr
#else
#define MOX_ADDRESS(name) reinterpret_cast<void*>(&name)
#endif
#define MOX_EXPORTED(name, ...) add<decltype(name)>(all, #name, MOX_ADDRESS(name), __VA_ARGS__);
#define MOX_CONSTANT(...)
#include "exports.inc"
#undef MOX_EXPORTED
#undef MOX_CONSTANT
    for (Export& e : all) derive(e);
    std::ranges::sort(all, {}, &Export::name);
    return all;
}

}  // namespace

const std::vector<Export>& exports() {
    static const std::vector<Export> all = makeExports();
    return all;
}

const Export* find(std::string_view name) {
    const std::string whole = name.starts_with("mox") ? std::string(name) : "moxi" + std::string(name);
    const auto at = std::ranges::lower_bound(exports(), whole, {}, &Export::name);
    return at != exports().end() && at->name == whole ? &*at : nullptr;
}

const Side* findSide(std::string_view holds, std::string_view layout, std::string_view depth) {
    for (const Export& e : exports())
        for (const Side& side : e.sides)
            if (!side.planes.empty() && side.holds == holds && side.layout == layout && side.depth == depth)
                return &side;
    return nullptr;
}

const ValueKind& valueKind(Value value) { return *std::ranges::find(valueKinds, value, &ValueKind::value); }

std::span<const Constant> constants() {
    static constexpr Constant all[] = {
#define MOX_EXPORTED(...)
#define MOX_CONSTANT(name, documentation) {#name, name, documentation},
#include "exports.inc"
#undef MOX_EXPORTED
#undef MOX_CONSTANT
    };
    return all;
}

std::span<const BandRule> bandRules() { return bands; }
std::span<const Format> formats() { return formatTable; }

// ---- what an export is ----------------------------------------------------------------------------------------------

bool Export::is(const char* pattern) const { return fnmatch(pattern, name.c_str(), FNM_EXTMATCH) == 0; }

const Parameter* Export::parameter(Parameter::Role role, int side) const {
    for (const Parameter& p : parameters)
        if (p.role == role && (side < 0 || p.side == side)) return &p;
    return nullptr;
}

const Parameter* Export::parameter(Value value) const {
    for (const Parameter& p : parameters)
        if (p.meaning == value) return &p;
    return nullptr;
}

int Export::rowBytes(int side, size_t plane, int width, int firstBit) const {
    const PlaneShape& shape = sides[side].planes[plane];
    if (side == 0 &&
        steps == StepUnit::samples) {  // words of three samples; the last ones only as far as they are looked at
        constexpr int partial[2][6] = {{0, 1, 2, 2, 3, 4}, {0, 1, 2, 3, 3, 4}};
        return width / 6 * 16 + 4 * partial[!is("*Gray*")][width % 6];
    }
    if (sides[side].depth == "1u") return (width + firstBit + 7) / 8;
    const int columns = std::max(width, 0) / cut.width * cut.width;
    return shape.bytes * (shape.whole ? columns / shape.width : columns / shape.width + (columns % shape.width != 0));
}

int Export::rows(int side, size_t plane, int height) const {
    const PlaneShape& shape = sides[side].planes[plane];
    const int count = std::max(height, 0) / cut.height * cut.height;
    return count / shape.height + (count % shape.height != 0);
}

int64_t Export::bufferBytes(MoxiSize size, const Values& values) const {
    if (operation == "DemosaicAHD") return int64_t(30) * (std::max(size.width, 6) + 8) * sides[0].sampleBytes;
    if (!parameter(Parameter::buffer) || !converts()) return 0;
    int32_t bytes = 0;
    const auto tell =
        reinterpret_cast<decltype(&moxiReduceBitsGetBufferSize)>(find("moxiReduceBitsGetBufferSize")->function);
    tell(1, size, values.noise, values.dither, &bytes);
    return bytes;
}

Cuts Export::cuts(MoxiSize size, const Values& values) const {
    Cuts result = {.least = std::max(least.height, 1)};
    result.unit = bands->unit;
    if (result.unit != byCall) return result;
    result.unit = 1;
    if (is("*_VNG_*")) {
        result.least = 3;
    } else if (is("*DemosaicAHD*")) {
        result.least = 1, result.unit = 2;
        const int redRow = values.grid == moxBayerGridRGGB || values.grid == moxBayerGridGRBG ? 0 : 1;
        result.phase = (redRow + values.region.y) % 2;
    } else if (is("*ReduceBits*")) {
        const bool bayer = values.dither == moxDitherBayer && !is("*8u1u*");
        result.unit = values.dither == moxDitherNone ? 1 : !bayer ? notSplit : values.noise > 0 ? 512 : 4;
    } else if (size.width % 2 == 0 && int64_t(size.width) * size.height >= 256) {
        result.unit = 16 / std::gcd(16, size.width);
        result.least = (256 + size.width - 1) / size.width;
    }
    return result;
}

std::string Export::oddSizes() const {
    std::string text;
    const auto left = [&](int count, const char* one, const char* many) {
        if (count > 1)
            text += (text.empty() ? "" : " and ") +
                    (count == 2 ? std::string(one) : "up to " + std::to_string(count - 1) + many);
    };
    left(cut.width, "the last column of an odd width", " columns beyond a multiple");
    left(cut.height, "the last row of an odd height", " rows beyond a multiple");
    return text;
}

std::vector<std::string> Export::formats(int side) const {
    std::vector<std::string> found;
    for (const Format& f : formatTable)
        if (sides[side].holds == f.holds && sides[side].layout == f.layout && sides[side].depth == f.depth)
            found.emplace_back(f.name);
    return found;
}

}  // namespace catalogue
