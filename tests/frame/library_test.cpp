// What the library files are, apart from what their functions compute.
#include <gtest/gtest.h>
#include <stdlib.h>

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <set>
#include <sstream>
#include <string>

#include "moxcc/moxcc.h"
#include "support/support.h"

namespace moxtest {
namespace {

using Names = std::set<std::string>;

std::string readFile(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file) << path;
    return {std::istreambuf_iterator<char>(file), {}};
}

// The names before the argument lists of "MOX_API ... name(".
Names declaredFunctions() {
    Names names;
    for (const auto& header : std::filesystem::directory_iterator(MOXCC_HEADERS)) {
        const std::string text = readFile(header.path());
        for (size_t at = 0; (at = text.find("\nMOX_API ", at)) != std::string::npos;) {
            const size_t end = text.find('(', at);
            at = text.find_last_of(" *", end) + 1;
            names.insert(text.substr(at, end - at));
        }
    }
    return names;
}

// What a shell command prints.
std::string outputOf(const std::string& command) {
    std::string output;
    FILE* const pipe = popen(command.c_str(), "r");
    if (!pipe) return "cannot run " + command;
    for (int c; (c = std::fgetc(pipe)) != EOF;) output += static_cast<char>(c);
    EXPECT_EQ(pclose(pipe), 0) << command;
    return output;
}

// The lines that a shell command prints.
Names linesOf(const std::string& command) {
    Names lines;
    std::istringstream output(outputOf(command));
    for (std::string line; std::getline(output, line);) lines.insert(line);
    return lines;
}

// The entries of a library file's dynamic section that have the tag, as "Shared library: [libc.so.6]".
Names dynamicEntries(const Library& lib, const std::string& tag) {
    return linesOf("readelf -dW '" + std::string(lib.path()) + "' | sed -n 's/.*(" + tag + ").*\\[\\(.*\\)\\]$/\\1/p'");
}

TEST(Library, HasTheVersionRecordInBothFiles) {
    forEachLibrary([](const Library& lib) {
        const MoxLibraryVersion* const record = MOX_CALL(lib, moxccGetLibVersion)();
        EXPECT_EQ(record, MOX_CALL(lib, moxccGetLibVersion)());
        EXPECT_EQ(record->major, 2019);
        EXPECT_EQ(record->minor, 0);
        EXPECT_EQ(record->revision, 0);
        EXPECT_EQ(record->build, 59881);
        EXPECT_EQ(std::memcmp(record->targetCode, "q4\0\0", 4), 0);
        EXPECT_STREQ(record->name, "moxCC SSE4.2 (q4)");
        EXPECT_STREQ(record->version, "2019.0.0 Gold (r59881)");
        EXPECT_STREQ(record->buildDate, "Jul 12 2018");
    });
}

TEST(Library, DeclaresTheListedFunctions) {
    std::ifstream list(MOXCC_EXPORT_LIST);
    const Names listed(std::istream_iterator<std::string>(list), {});
    EXPECT_EQ(declaredFunctions(), listed);
}

TEST(Library, TellsEveryStatusInTheWordsOfItsDescription) {
    const std::string types = readFile(std::filesystem::path(MOXCC_HEADERS) / "types.h");
    const std::regex status("(moxStatus\\w+) = (-?\\d+),? */\\*\\*< (.*)\\. \\*/");
    int count = 0;
    for (std::sregex_iterator i(types.begin(), types.end(), status), none; i != none; ++i, ++count)
        EXPECT_EQ(moxStatusText(std::stoi((*i)[2])), (*i)[3].str()) << (*i)[1];
    EXPECT_EQ(count, 13);
    EXPECT_STREQ(moxStatusText(1234), "An unknown status");
}

TEST(Library, HasOneHeaderThatIncludesAll) {
    const std::filesystem::path folder = MOXCC_HEADERS;
    const std::string all = readFile(folder / "moxcc.h");
    for (const auto& header : std::filesystem::directory_iterator(folder)) {
        const std::string name = header.path().filename();
        if (name == "moxcc.h") continue;
        EXPECT_NE(all.find("#include \"moxcc/" + name + "\"\n"), std::string::npos) << name;
    }
}

// Sanitizers add their own symbols and libraries, and their run-time wants to be loaded in its own way.
class ReleasedFile : public ::testing::Test {
  protected:
    void SetUp() override {
        if (*MOXCC_SANITIZED) GTEST_SKIP() << "not of a build with sanitizers";
    }

    template <class Body>
    static void forEachSharedFile(const Body& body) {
        forEachLibrary([&](const Library& lib) {
            if (std::string(lib.name()) != "static") body(lib);
        });
    }
};

TEST_F(ReleasedFile, ExportsExactlyTheDeclaredFunctions) {
    forEachSharedFile([](const Library& lib) {
        EXPECT_EQ(linesOf("nm -D --defined-only --format=just-symbols '" + std::string(lib.path()) + "'"),
                  declaredFunctions());
    });
}

TEST_F(ReleasedFile, HasTheVersionInItsNameAndNeedsTheCLibraryAndTheCoreLibraryOnly) {
    forEachSharedFile([](const Library& lib) {
        EXPECT_EQ(dynamicEntries(lib, "SONAME"), Names{"libmoxccq4.so.2019"});
        for (const std::string& name : dynamicEntries(lib, "NEEDED")) {
            EXPECT_TRUE(name == "libc.so.6" || name == "libmoxcore.so.2019") << lib.path() << " needs " << name;
        }
    });
}

TEST_F(ReleasedFile, HasNoWritableDataAndRunsNothingAtLoad) {
    forEachSharedFile([](const Library& lib) {
        const std::string path = "'" + std::string(lib.path()) + "'";
        // Those left out are the compiler's start-up code's, as is the 8 bytes' one function to run.
        EXPECT_EQ(linesOf("objdump -t " + path + " | sed -nE '/\\s\\.t?(data|bss)\t/s/.* //p'" +
                          " | sed -E '/^(\\..*|__dso_handle|__TMC_END__|completed\\..*)$/d'"),
                  Names{});
        EXPECT_EQ(
            linesOf("readelf -SW " + path + " | sed -nE 's/.*\\.init_array +INIT_ARRAY +\\w+ +\\w+ +(\\w+) .*/\\1/p'"),
            Names{"000008"});
    });
}

#ifdef MOXCC_STATIC
TEST_F(ReleasedFile, HasNoNamesInTheStaticLibraryThatCouldMeetOthers) {
    Names want;
    for (const std::string& name : declaredFunctions())
        for (const std::string level : {"", MOXCC_LEVEL_SUFFIXES}) want.insert("T " + name + level);
    EXPECT_EQ(linesOf("nm -g --defined-only " MOXCC_STATIC " | sed -nE 's/.* (. \\w+)$/\\1/p'"), want);

    for (const std::string& name : linesOf("nm -gu " MOXCC_STATIC " | sed -nE 's/.* U (\\w+)$/\\1/p'")) {
        const Names ofTheCompilerAndTheCLibrary = {
            "_GLOBAL_OFFSET_TABLE_", "__cpu_indicator_init", "__cpu_model", "memcpy", "memmove", "memset", "sysconf",
            "__memcpy_chk",          "__stack_chk_fail"};  // of a hardened build
        EXPECT_TRUE(want.contains("T " + name) || ofTheCompilerAndTheCLibrary.contains(name)) << name;
    }
}
#endif

#ifdef MOXCC_DYNAMIC_LINKER
TEST_F(ReleasedFile, IsChosenByTheDynamicLinker) {
    const std::string linker = MOXCC_DYNAMIC_LINKER;
    const std::string levels = outputOf(linker + " --help"), usual = outputOf(MOXCC_WHICH_LIBRARY);
    std::string best;
    const std::string built = MOXCC_BUILT_LEVELS;
    for (const std::string level : {"x86-64-v3", "x86-64-v4"})
        if (levels.find(level + " (supported") != std::string::npos && built.find(level.substr(7)) != std::string::npos)
            best = "glibc-hwcaps/" + level + "/";
    if (best.empty())
        EXPECT_EQ(usual.find("glibc-hwcaps"), std::string::npos) << usual;
    else
        EXPECT_NE(usual.find(best), std::string::npos) << usual;
    const std::string reference = outputOf(linker + " --glibc-hwcaps-mask x86-64-v2 " MOXCC_WHICH_LIBRARY);
    EXPECT_EQ(reference.find("glibc-hwcaps"), std::string::npos) << reference;
}
#endif

}  // namespace
}  // namespace moxtest
