// The portable pictures: PBM, PGM, PPM, PAM, and PFM for floats. Their files may hold one after the other.
#include <algorithm>
#include <bit>
#include <cctype>
#include <cstdlib>
#include <cstring>

#include "cli/pictures/formats.h"

namespace pictures {
namespace {

// Words between white space, with comments.
std::string word(Input& input) {
    int c = input.get();
    while (c == '#' || (c >= 0 && std::isspace(c))) {
        if (c == '#')
            while (c >= 0 && c != '\n') c = input.get();
        else
            c = input.get();
    }
    std::string text;
    while (c >= 0 && !std::isspace(c) && text.size() < 64) text += char(c), c = input.get();
    if (c < 0) throw Error("truncated in its header");
    return text;
}

int number(Input& input, int highest) {
    const std::string text = word(input);
    if (text.empty() || text.size() > 10 || text.find_first_not_of("0123456789") != text.npos)
        throw Error("'" + text + "' in the header, where a number should be");
    const long long value = std::atoll(text.c_str());
    if (value < 1 || value > highest) throw Error(text + " in the header, out of range");
    return int(value);
}

struct Header {
    char kind = 0;  // of P1 to P7
    int width = 0, height = 0, channels = 1, highest = 1;
};

Header readHeader(Input& input) {
    Header h;
    const std::string magic = word(input);
    if (magic.size() != 2 || magic[0] != 'P' || magic[1] < '1' || magic[1] > '7')
        throw Error("'" + magic + "' where a picture should begin");
    h.kind = magic[1];
    if (h.kind == '7') {
        for (std::string key = word(input); key != "ENDHDR"; key = word(input)) {
            if (key == "WIDTH")
                h.width = number(input, INT32_MAX);
            else if (key == "HEIGHT")
                h.height = number(input, INT32_MAX);
            else if (key == "DEPTH")
                h.channels = number(input, 4);
            else if (key == "MAXVAL")
                h.highest = number(input, 65535);
            else
                word(input);  // TUPLTYPE
        }
    } else {
        h.width = number(input, INT32_MAX);
        h.height = number(input, INT32_MAX);
        if (h.kind != '1' && h.kind != '4') h.highest = number(input, 65535);
        h.channels = h.kind == '3' || h.kind == '6' ? 3 : 1;
    }
    checkSize(h.width, h.height);
    return h;
}

// Gray with alpha has no layout of its own: it becomes RGB with alpha.
template <class T>
void storeRow(const std::vector<unsigned>& samples, int channels, unsigned highest, bool inverted, uint8_t* row) {
    constexpr unsigned full = T(-1);
    T* to = reinterpret_cast<T*>(row);
    const auto put = [&](unsigned sample) {
        const unsigned inRange = std::min(sample, highest);
        *to++ = T(((inverted ? highest - inRange : inRange) * uint64_t(full) + highest / 2) / highest);
    };
    for (size_t i = 0; i < samples.size(); ++i) {
        put(samples[i]);
        if (channels == 2 && i % 2 == 0) put(samples[i]), put(samples[i]);
    }
}

void readPicture(Input& input, Frame& frame) {
    const Header h = readHeader(input);
    const size_t count = size_t(h.width) * size_t(h.channels);
    const bool text = h.kind <= '3', bits = h.kind == '1' || h.kind == '4', wide = h.highest > 255;
    const size_t bytes = h.kind == '4' ? (count + 7) / 8 : count * (wide ? 2 : 1);
    input.expect(int64_t(bytes) * h.height);  // text has a character a sample at least
    const int channels = h.channels == 2 ? 4 : h.channels;
    frame.shape(pictureSide(channels, wide ? "16u" : "8u"), {h.width, h.height});
    frame.alpha = channels == 4;

    std::vector<unsigned> samples(count);
    std::vector<uint8_t> row(text ? 0 : bytes);
    for (int y = 0; y < h.height; ++y) {
        if (!text) input.need(row.data(), bytes);
        if (text) {
            for (unsigned& sample : samples) {
                int c = input.get();
                while (c == '#' || (c >= 0 && std::isspace(c))) {
                    while (c == '#' && (c = input.get()) >= 0 && c != '\n') c = '#';
                    c = input.get();
                }
                for (sample = 0; c >= '0' && c <= '9'; c = bits ? ' ' : input.get())
                    sample = std::min(sample * 10 + unsigned(c - '0'), 65535u);
                if (c < 0 && (y + 1 < h.height || &sample != &samples.back())) throw Error("truncated");
                if (c >= 0 && !std::isspace(c)) throw Error("letters among its samples");
            }
        } else if (bits) {
            for (size_t i = 0; i < count; ++i) samples[i] = row[i / 8] >> (7 - i % 8) & 1;
        } else if (wide) {
            for (size_t i = 0; i < count; ++i) samples[i] = unsigned(row[2 * i]) << 8 | row[2 * i + 1];
        } else if (h.highest == 255 && h.channels != 2) {
            std::memcpy(frame.row(0, y), row.data(), bytes);
            continue;
        } else {
            std::ranges::copy(row, samples.begin());
        }
        (wide ? storeRow<uint16_t> : storeRow<uint8_t>)(samples, h.channels, unsigned(h.highest), bits,
                                                        frame.row(0, y));
    }
}

std::string sizeWords(const Frame& frame) {
    return std::to_string(frame.size.width) + " " + std::to_string(frame.size.height);
}

void writeRows(Output& output, const Frame& frame) {
    std::vector<uint8_t> row(size_t(frame.rowBytes[0]));
    for (int y = 0; y < frame.size.height; ++y) {
        std::memcpy(row.data(), frame.row(0, y), row.size());
        if (frame.side.depth == "1u") {
            for (uint8_t& byte : row) byte = uint8_t(~byte);  // 1 is black in the file
            if (frame.size.width % 8) row.back() &= uint8_t(0xff00 >> frame.size.width % 8);
        }
        if (frame.side.sampleBytes == 2)  // big-endian in the file
            for (size_t i = 0; i + 1 < row.size(); i += 2) std::swap(row[i], row[i + 1]);
        output.write(row.data(), row.size());
    }
}

}  // namespace

Reader readPnm(Input& input) {
    return [&input](Frame& frame) {
        while (!input.atEnd() && std::isspace(input.peek(1)[0])) input.get();
        if (input.atEnd()) return false;
        readPicture(input, frame);
        return true;
    };
}

Writer writePnm(Output& output) {
    return [&output](const Frame& frame) {
        const bool bits = frame.side.depth == "1u";
        output.write((bits                         ? "P4\n"
                      : frame.side.channels() == 1 ? "P5\n"
                                                   : "P6\n") +
                     sizeWords(frame) +
                     (bits                          ? "\n"
                      : frame.side.sampleBytes == 2 ? "\n65535\n"
                                                    : "\n255\n"));
        writeRows(output, frame);
    };
}

Writer writePam(Output& output) {
    return [&output](const Frame& frame) {
        const int channels = frame.side.channels();
        output.write("P7\nWIDTH " + std::to_string(frame.size.width) + "\nHEIGHT " + std::to_string(frame.size.height) +
                     "\nDEPTH " + std::to_string(channels) + "\nMAXVAL " +
                     (frame.side.sampleBytes == 2 ? "65535" : "255") + "\nTUPLTYPE " +
                     (channels == 1   ? "GRAYSCALE"
                      : channels == 3 ? "RGB"
                                      : "RGB_ALPHA") +
                     "\nENDHDR\n");
        writeRows(output, frame);
    };
}

Reader readPfm(Input& input) {
    return [&input](Frame& frame) {
        while (!input.atEnd() && std::isspace(input.peek(1)[0])) input.get();
        if (input.atEnd()) return false;
        const std::string magic = word(input);
        if (magic != "PF" && magic != "Pf") throw Error("'" + magic + "' where a picture should begin");
        const int channels = magic == "Pf" ? 1 : 3;
        const int width = number(input, INT32_MAX), height = number(input, INT32_MAX);
        const bool swapped =
            (std::strtod(word(input).c_str(), nullptr) > 0) == (std::endian::native == std::endian::little);
        checkSize(width, height);
        input.expect(int64_t(width) * height * channels * int64_t(sizeof(float)));
        frame.shape(pictureSide(channels, "32f"), {width, height});
        frame.alpha = false;
        for (int y = height - 1; y >= 0; --y) {  // the last row comes first
            uint8_t* row = frame.row(0, y);
            input.need(row, size_t(frame.rowBytes[0]));
            for (int64_t i = 0; swapped && i < frame.rowBytes[0]; i += 4) std::reverse(row + i, row + i + 4);
        }
        return true;
    };
}

Writer writePfm(Output& output) {
    return [&output](const Frame& frame) {
        const char* const scale = std::endian::native == std::endian::little ? "\n-1.0\n" : "\n1.0\n";
        output.write((frame.side.channels() == 1 ? "Pf\n" : "PF\n") + sizeWords(frame) + scale);
        for (int y = frame.size.height - 1; y >= 0; --y) output.write(frame.row(0, y), size_t(frame.rowBytes[0]));
    };
}

}  // namespace pictures
