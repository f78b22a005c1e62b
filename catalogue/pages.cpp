// moxcc_pages <folder>: writes what the documentation takes from the catalogue: bands.txt, where bands may begin, and
// formats.txt, which function is for which pixel format.
#include <cstdio>
#include <map>

#include "catalogue/export.h"

using namespace catalogue;

namespace {

struct File {
    File(const std::string& path) : file(std::fopen(path.c_str(), "w")) {
        if (!file) std::perror(path.c_str()), std::exit(1);
    }
    ~File() { std::fclose(file); }
    void line(const std::string& text) { std::fputs((text + "\n").c_str(), file); }
    std::FILE* file;
};

/// A row of a table.
std::string row(const std::vector<std::string>& cells) {
    std::string text = "|";
    for (const std::string& cell : cells) text += " " + cell + " |";
    return text;
}

void writeBands(File out) {
    for (const bool split : {true, false}) {
        out.line(split ? "| Functions | A band may begin at | Because |" : "\n| Not split | | Because |");
        out.line("|---|---|---|");
        for (const BandRule& rule : bandRules())
            if (rule.described && (rule.unit != 0) == split)
                out.line(row({rule.described, split ? rule.beginAt : "", rule.because}));
    }
}

std::string joined(const std::vector<std::string>& words) {
    std::string text;
    for (const std::string& word : words) text += (text.empty() ? "" : ", ") + word;
    return text;
}

/// What the other side of an export holds.
std::string otherSide(const Export& e, int side) {
    const std::vector<std::string> formats = e.formats(side);
    if (!formats.empty()) return formats[0];
    return e.sides[side].holds + " " + e.sides[side].layout + ", " + e.sides[side].depth;
}

void writeFormats(File out) {
    for (const Format& format : formats()) {
        const std::string name = format.name, others = format.otherNames;
        out.line("\n## " + name + "\n\n" + format.memory + (others.empty() ? "" : " (" + others + ")") + ".\n");
        for (const int side : {0, 1}) {
            std::map<std::string, std::vector<std::string>> functions;  // by what is on the other side
            for (const Export& e : exports())
                for (const std::string& each : e.formats(side))
                    if (each == name && !e.inPlace()) functions[otherSide(e, 1 - side)].push_back(e.name + "()");
            if (functions.empty()) continue;
            out.line((side == 0 ? "| From " + name + " to" : "\n| To " + name + " from") + " | Functions |\n|---|---|");
            for (const auto& [other, names] : functions) out.line(row({other, joined(names)}));
        }
    }
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fputs("usage: moxcc_pages <folder>\n", stderr);
        return 2;
    }
    writeBands(File(argv[1] + std::string("/bands.txt")));
    writeFormats(File(argv[1] + std::string("/formats.txt")));
}
