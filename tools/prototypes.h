// The prototypes of the exports, read from the public headers: what stands behind MOX_API, and the comment before it.
#pragma once

#include <fstream>
#include <iterator>
#include <regex>
#include <stdexcept>
#include <string>
#include <vector>

struct Prototype {
    std::string result;                   // "MoxStatus"
    std::string name;                     // "moxiRGBToGray_8u_C3C1R"
    std::vector<std::string> parameters;  // "const Mox8u* src", "int32_t srcStep" ...; none for (void)
    std::string comment;                  // the paragraph of documentation before it, as it stands
};

inline std::string readFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) throw std::runtime_error(path + " cannot be read");
    return {std::istreambuf_iterator<char>(file), {}};
}

inline std::string oneLine(const std::string& text) {
    const std::string spaced = std::regex_replace(text, std::regex("\\s+"), " ");
    return std::regex_replace(spaced, std::regex("^ | $"), "");
}

/// The name that a parameter's declaration ends with: srcPlanes of "const Mox8u* const srcPlanes[3]".
inline std::string parameterName(const std::string& declaration) {
    std::smatch match;
    if (!std::regex_search(declaration, match, std::regex("(\\w+)(\\[\\d*\\])?$")))
        throw std::runtime_error("no name in the parameter \"" + declaration + "\"");
    return match[1];
}

/// Every prototype behind MOX_API in a header, in its order.
inline std::vector<Prototype> prototypesOf(const std::string& header) {
    static const std::regex declaration("\\nMOX_API ([^;(]*?)(\\w+)\\(([^)]*)\\);");
    std::vector<Prototype> all;
    auto end = header.cbegin();
    for (std::sregex_iterator i(header.begin(), header.end(), declaration), none; i != none; ++i) {
        const std::smatch& match = *i;
        Prototype prototype = {oneLine(match[1]), match[2], {}, ""};
        const std::string list = oneLine(match[3]);
        for (size_t from = 0; list != "void" && from < list.size();) {
            const size_t comma = std::min(list.find(',', from), list.size());
            prototype.parameters.push_back(oneLine(list.substr(from, comma - from)));
            from = comma + 1;
        }
        const std::string before(end, match[0].first);
        const size_t open = before.rfind("/**"), close = before.rfind("*/");
        if (open != std::string::npos && close != std::string::npos && open < close)
            prototype.comment = before.substr(open, close + 2 - open);
        all.push_back(prototype);
        end = match[0].second;
    }
    return all;
}
