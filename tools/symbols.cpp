// symbols <folder> <header ...> -- <source ...>
//
// Writes the C symbols of the exports, for each source into <folder>/<its name>.inc: the functions that the headers
// declare, each a call of the line that the source's table has for it. A declared export without a line, or with two,
// is an error; so is a line that no header declares. <folder>/slots.inc lists all exports, for frame/slots.cpp.
#include <cstdio>
#include <filesystem>
#include <map>

#include "prototypes.h"

namespace {

std::map<std::string, Prototype> declaredIn(const std::vector<std::string>& headers) {
    std::map<std::string, Prototype> all;
    for (const std::string& header : headers)
        for (const Prototype& p : prototypesOf(readFile(header)))
            if (!all.emplace(p.name, p).second) throw std::runtime_error(p.name + " is declared twice");
    return all;
}

/// MoxStatus moxiX(const Mox8u* src, ...) { return q4::entry<moxiX>(src, ...); }
std::string symbol(const Prototype& p) {
    std::string parameters, arguments;
    for (const std::string& each : p.parameters) {
        parameters += (parameters.empty() ? "" : ", ") + each;
        arguments += (arguments.empty() ? "" : ", ") + parameterName(each);
    }
    return p.result + " " + p.name + "(" + parameters + ") { return q4::entry<" + p.name + ">(" + arguments + "); }\n";
}

void writeIfOther(const std::filesystem::path& path, const std::string& text) {
    if (std::filesystem::exists(path) && readFile(path) == text) return;
    std::ofstream(path, std::ios::binary) << text;
}

void run(const std::string& folder, const std::vector<std::string>& headers, const std::vector<std::string>& sources) {
    const std::map<std::string, Prototype> declared = declaredIn(headers);
    std::map<std::string, std::string> lines;  // of each export, the source that has it
    for (const std::string& source : sources) {
        const std::string text = readFile(source);
        std::string symbols;
        static const std::regex line("template <>\\s+constexpr auto entry<(\\w+)>");
        for (std::sregex_iterator i(text.begin(), text.end(), line), none; i != none; ++i) {
            const std::string name = (*i)[1];
            if (!declared.contains(name)) throw std::runtime_error(source + ": no header declares " + name);
            if (!lines.emplace(name, source).second)
                throw std::runtime_error(source + ": " + lines[name] + " has a line for " + name + ", too");
            symbols += symbol(declared.at(name));
        }
        writeIfOther(std::filesystem::path(folder) / (std::filesystem::path(source).stem().string() + ".inc"), symbols);
    }
    std::string slots;
    for (const auto& [name, prototype] : declared) {
        if (!lines.contains(name)) throw std::runtime_error("no table has a line for " + name);
        slots += "SLOT(" + name + ")\n";
    }
    writeIfOther(std::filesystem::path(folder) / "slots.inc", slots);
}

}  // namespace

int main(int argc, char** argv) {
    std::vector<std::string> lists[2];
    for (int i = 2, list = 0; i < argc; ++i) {
        if (std::string(argv[i]) == "--")
            list = 1;
        else
            lists[list].push_back(argv[i]);
    }
    try {
        if (lists[1].empty()) throw std::runtime_error("usage: symbols <folder> <header ...> -- <source ...>");
        run(argv[1], lists[0], lists[1]);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "symbols: %s\n", error.what());
        return 1;
    }
}
