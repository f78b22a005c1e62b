// moxcc_demo [picture ...]: converts pictures, or a built-in scene, by the functions of the library.

#include <dlfcn.h>

#include <cstdio>
#include <new>
#include <set>

#include "demo.h"
#include "progress.h"
#include "sheet.h"

namespace demo {
namespace {

namespace fs = std::filesystem;

const fs::path kOut = "demo-out";

void printLibrary() {
    const MoxLibraryVersion* version = moxccGetLibVersion();
    Dl_info file{};
    dladdr(version, &file);
    std::printf("%s, version %s\n%s\n", version->name, version->version, file.dli_fname ? file.dli_fname : "");
}

void convert(const std::string& name, Source source, Sheet& sheet) {
    fs::create_directories(kOut / name);
    progress("");
    std::printf("\n%s, %d x %d\n", name.c_str(), source.size().width, source.size().height);
    Demo demo(name, std::move(source), kOut / name, sheet);
    sheet.heading(name);
    demo.show("source", "The picture as it is", demo.source().rgb8());
    for (const Section& section : sections) {
        demo.section(section.title);
        section.run(demo);
    }
}

// What is wrong with a picture that could not be converted, or nothing.
std::string tryConvert(const std::string& file, const std::string& name, Sheet& sheet) {
    try {
        progress("reading " + file);
        convert(name, readPicture(file), sheet);
        return "";
    } catch (const Error& error) {
        return error.what();
    } catch (const std::bad_alloc&) {
        return "too large for this machine's memory";
    }
}

// A folder name for a picture's results: its file's name, made unique.
std::string nameFor(const std::string& file, std::set<std::string>& taken) {
    std::string stem = fs::path(file).stem();
    if (stem.find_first_not_of('.') == stem.npos) stem = "picture";
    std::string name = stem;
    for (int i = 2; !taken.insert(name).second; ++i) (name = stem).append("-").append(std::to_string(i));
    return name;
}

int run(const std::vector<std::string>& files) {
    printLibrary();
    Sheet sheet;
    if (files.empty()) convert("scene", syntheticScene(1280), sheet);

    bool failed = false;
    std::set<std::string> names;
    for (const std::string& file : files) {
        const std::string problem = tryConvert(file, nameFor(file, names), sheet);
        if (problem.empty()) continue;
        progress("");
        std::fprintf(stderr, "demo: %s: %s\n", file.c_str(), problem.c_str());
        failed = true;
    }
    fs::create_directories(kOut);
    if (const int pages = sheet.write(kOut)) {
        std::printf("\n%d contact sheet%s: %s\n", pages, pages > 1 ? "s" : "", (kOut / "contact-sheet.png").c_str());
    }
    return failed ? 1 : 0;
}

}  // namespace
}  // namespace demo

int main(int argc, char** argv) {
    if (argc > 1 && (std::string_view(argv[1]) == "-h" || std::string_view(argv[1]) == "--help")) {
        std::puts("usage: moxcc_demo [picture ...], with results in demo-out/; ./demo.sh --help tells more");
        return 0;
    }
    try {
        return demo::run({argv + 1, argv + argc});
    } catch (const std::exception& error) {
        demo::progress("");
        std::fprintf(stderr, "demo: %s\n", error.what());
        return 1;
    }
}
