// catalogue_data <header ...>: prints what the headers say of each export, for the catalogue:
//
//     MOX_EXPORTED(moxiRGBToGray_8u_C3C1R, "Converts ...", {"const Mox8u* src", "int32_t srcStep", ...})
//     MOX_CONSTANT(moxStatusOddSize, "The region holds ...")
#include <cstdio>

#include "prototypes.h"

namespace {

/// The first sentence of a paragraph of documentation.
std::string firstSentence(const std::string& comment) {
    std::string text = std::regex_replace(comment, std::regex("^/\\*\\*|\\*/$"), "");
    text = std::regex_replace(text, std::regex("\\n\\s*\\* ?"), "\n");
    text = std::regex_replace(text, std::regex("^\\s*@brief "), "");
    text = std::regex_replace(text, std::regex("^\\s*@name[^\\n]*\\n\\s*@\\{\\s*"), "");
    std::smatch match;
    if (!std::regex_search(text, match, std::regex("^[\\s]*([^]*?\\.)(\\s|$)")))
        throw std::runtime_error("no sentence in \"" + comment + "\"");
    return oneLine(match[1]);
}

std::string quoted(const std::string& text) {
    return "\"" + std::regex_replace(text, std::regex("[\"\\\\]"), "\\$&") + "\"";
}

/// The constants of the enumerations, each with the comment behind it.
void printConstants(const std::string& header) {
    static const std::regex constant("\\n\\s+(mox\\w+)\\s*= -?\\d+,?\\s*/\\*\\*<([^]*?)\\*/");
    for (std::sregex_iterator i(header.begin(), header.end(), constant), none; i != none; ++i)
        std::printf("MOX_CONSTANT(%s, %s)\n", (*i)[1].str().c_str(), quoted(oneLine((*i)[2])).c_str());
}

}  // namespace

int main(int argc, char** argv) {
    try {
        for (int i = 1; i < argc; ++i) {
            const std::string header = readFile(argv[i]);
            printConstants(header);
            for (const Prototype& p : prototypesOf(header)) {
                std::string parameters;
                for (const std::string& each : p.parameters)
                    parameters += (parameters.empty() ? "" : ", ") + quoted(each);
                std::printf("MOX_EXPORTED(%s, %s, {%s})\n", p.name.c_str(), quoted(firstSentence(p.comment)).c_str(),
                            parameters.c_str());
            }
        }
    } catch (const std::exception& error) {
        std::fprintf(stderr, "catalogue_data: %s\n", error.what());
        return 1;
    }
}
