// YUV4MPEG2: uncompressed video of 8 bits with a line of text for each file and each frame.
#include <algorithm>
#include <cctype>
#include <sstream>

#include "cli/pictures/formats.h"

namespace pictures {
namespace {

constexpr struct Sampling {
    std::string_view tag;  // how the colour space word begins
    const char *holds, *layout;
} samplings[] = {
    {"420", "YCbCr420", "P3"}, {"422", "YCbCr422", "P3"}, {"411", "YCbCr411", "P3"},
    {"444alpha", "YUV", "P4"}, {"444", "YCbCr", "P3"},    {"mono", "Gray", "C1"},
};

std::string line(Input& input) {
    std::string text;
    int c;
    while ((c = input.get()) >= 0 && c != '\n') {
        text += char(c);
        if (text.size() > 4096) throw Error("a header that does not end");
    }
    if (c < 0) throw Error("truncated in its header");
    return text;
}

int side(const std::string& digits) {
    if (digits.empty() || digits.size() > 10 || digits.find_first_not_of("0123456789") != digits.npos)
        throw Error("'" + digits + "' in the header, where a number should be");
    return int(std::min<long long>(std::stoll(digits), INT32_MAX));
}

}  // namespace

Reader readY4m(Input& input) {
    std::istringstream words(line(input));
    MoxiSize size = {};
    std::string colours = "420", other, word;
    words >> word;
    while (words >> word) {
        if (word[0] == 'W')
            size.width = side(word.substr(1));
        else if (word[0] == 'H')
            size.height = side(word.substr(1));
        else if (word[0] == 'C')
            colours = word.substr(1);
        else
            other += " " + word;
    }
    checkSize(size.width, size.height);
    // Samples of more than 8 bits: 420p10 and the like. (420paldv and 420jpeg name chroma positions.)
    const size_t p = colours.find('p');
    const bool deep =
        (p != colours.npos && p + 1 < colours.size() && std::isdigit(static_cast<unsigned char>(colours[p + 1]))) ||
        colours == "mono16" || colours == "mono10" || colours == "mono12" || colours == "mono9";
    const Side* kind = nullptr;
    for (const Sampling& sampling : samplings)
        if (!deep && !kind && colours.starts_with(sampling.tag)) kind = &sideOf(sampling.holds, sampling.layout, "8u");
    if (!kind)
        throw Error("Y4M of a kind that this program does not read: " + colours +
                    " (it reads 8-bit 420, 422, 444, 444alpha, 411 and mono)");

    return [&input, frames = readRaw(input, {true, size, kind}), colours, other](Frame& frame) {
        if (input.atEnd()) return false;
        if (!line(input).starts_with("FRAME")) throw Error("no frame where one should begin");
        if (!frames(frame)) throw Error("truncated");
        frame.alpha = frame.planeCount() == 4;
        frame.video = other;
        frame.siting = colours;
        return true;
    };
}

Writer writeY4m(Output& output) {
    return [&output, raw = writeRaw(output), began = MoxiSize{}](const Frame& frame) mutable {
        if (began.width == 0) {
            std::string colours;
            for (const Sampling& sampling : samplings)
                if (frame.side.holds == sampling.holds && frame.side.layout == sampling.layout) colours = sampling.tag;
            // Where chroma lies, when the picture came with it.
            if (frame.siting.starts_with(colours) && !frame.siting.ends_with("alpha")) colours = frame.siting;
            output.write("YUV4MPEG2 W" + std::to_string(frame.size.width) + " H" + std::to_string(frame.size.height) +
                         (frame.video.empty() ? " F25:1 Ip A1:1" : frame.video) + " C" + colours + "\n");
            began = frame.size;
        } else if (began.width != frame.size.width || began.height != frame.size.height) {
            throw Error("frames of several sizes do not fit into one Y4M");
        }
        output.write("FRAME\n");
        raw(frame);
    };
}

}  // namespace pictures
