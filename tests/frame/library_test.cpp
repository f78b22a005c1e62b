// What the library files are, apart from what their functions compute.
#include <elf.h>
#include <gtest/gtest.h>
#include <stdlib.h>

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>
#include <vector>

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

// The sections and symbols of a library file.
class ElfFile {
  public:
    explicit ElfFile(const char* path) : bytes_(readFile(path)) {
        const auto header = at<Elf64_Ehdr>(0);
        for (int i = 0; i < header.e_shnum; ++i) {
            sections_.push_back(at<Elf64_Shdr>(header.e_shoff + static_cast<size_t>(i) * header.e_shentsize));
        }
        nameTable_ = sections_.at(header.e_shstrndx).sh_offset;
    }

    std::string sectionName(size_t index) const {
        return index < sections_.size() ? text(nameTable_ + sections_[index].sh_name) : "";
    }

    size_t sectionSize(const std::string& name) const {
        size_t size = 0;
        for (size_t i = 0; i < sections_.size(); ++i) size += sectionName(i) == name ? sections_[i].sh_size : 0;
        return size;
    }

    Names exported() const {
        Names names;
        forEach<Elf64_Sym>(SHT_DYNSYM, [&](const Elf64_Sym& symbol, const std::string& name) {
            if (symbol.st_shndx != SHN_UNDEF) names.insert(name);
        });
        return names;
    }

    Names writableObjects() const {
        Names names;
        forEach<Elf64_Sym>(SHT_SYMTAB, [&](const Elf64_Sym& symbol, const std::string& name) {
            const Names writable = {".data", ".bss", ".tdata", ".tbss"};
            const bool object = ELF64_ST_TYPE(symbol.st_info) == STT_OBJECT || ELF64_ST_TYPE(symbol.st_info) == STT_TLS;
            if (object && writable.contains(sectionName(symbol.st_shndx))) names.insert(name);
        });
        return names;
    }

    Names needed() const {
        Names names;
        for (const Elf64_Shdr& section : sections_) {
            if (section.sh_type != SHT_DYNAMIC) continue;
            const size_t strings = sections_.at(section.sh_link).sh_offset;
            for (size_t i = 0; i < section.sh_size / sizeof(Elf64_Dyn); ++i) {
                const auto entry = at<Elf64_Dyn>(section.sh_offset + i * sizeof(Elf64_Dyn));
                if (entry.d_tag == DT_NEEDED) names.insert(text(strings + entry.d_un.d_val));
            }
        }
        return names;
    }

  private:
    template <class T>
    T at(size_t offset) const {
        T value = {};
        EXPECT_LE(offset + sizeof(T), bytes_.size());
        if (offset + sizeof(T) <= bytes_.size()) std::memcpy(&value, bytes_.data() + offset, sizeof(T));
        return value;
    }

    std::string text(size_t offset) const { return bytes_.c_str() + offset; }

    template <class Entry, class Body>
    void forEach(uint32_t type, const Body& body) const {
        for (const Elf64_Shdr& section : sections_) {
            if (section.sh_type != type) continue;
            const size_t strings = sections_.at(section.sh_link).sh_offset;
            for (size_t i = 1; i < section.sh_size / sizeof(Entry); ++i) {
                const auto entry = at<Entry>(section.sh_offset + i * sizeof(Entry));
                body(entry, text(strings + entry.st_name));
            }
        }
    }

    std::string bytes_;
    std::vector<Elf64_Shdr> sections_;
    size_t nameTable_ = 0;
};

// What a shell command prints.
std::string outputOf(const std::string& command) {
    std::string output;
    FILE* const pipe = popen(command.c_str(), "r");
    if (!pipe) return "cannot run " + command;
    for (int c; (c = std::fgetc(pipe)) != EOF;) output += static_cast<char>(c);
    EXPECT_EQ(pclose(pipe), 0) << command;
    return output;
}

TEST(Library, HasTheVersionRecordInEachFile) {
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
};

TEST_F(ReleasedFile, ExportsExactlyTheDeclaredFunctions) {
    forEachLibrary([](const Library& lib) { EXPECT_EQ(ElfFile(lib.path()).exported(), declaredFunctions()); });
}

TEST_F(ReleasedFile, NeedsTheCLibraryAndTheCoreLibraryOnly) {
    forEachLibrary([](const Library& lib) {
        for (const std::string& name : ElfFile(lib.path()).needed()) {
            EXPECT_TRUE(name == "libc.so.6" || name == "libmoxcore.so") << lib.path() << " needs " << name;
        }
    });
}

TEST_F(ReleasedFile, HasNoWritableDataAndRunsNothingAtLoad) {
    forEachLibrary([](const Library& lib) {
        const ElfFile file(lib.path());
        for (const std::string& name : file.writableObjects()) {
            const bool startup = name == "__dso_handle" || name == "__TMC_END__" || name.starts_with("completed.");
            EXPECT_TRUE(startup) << lib.path() << ": " << name;  // those are the compiler's start-up code's
        }
        EXPECT_LE(file.sectionSize(".init_array"), sizeof(void*)) << lib.path();  // its frame_dummy
    });
}

TEST_F(ReleasedFile, IsChosenByTheDynamicLinker) {
    const std::string linker = MOXCC_DYNAMIC_LINKER;
    const std::string levels = outputOf(linker + " --help"), usual = outputOf(MOXCC_WHICH_LIBRARY);
    const auto supports = [&](const std::string& level) {
        return levels.find(level + " (supported") != std::string::npos;
    };
    const std::string best = supports("x86-64-v4") ? "x86-64-v4" : supports("x86-64-v3") ? "x86-64-v3" : "";
    EXPECT_EQ(usual.find("glibc-hwcaps/" + best + "/") != std::string::npos, !best.empty()) << usual;
    const std::string reference = outputOf(linker + " --glibc-hwcaps-mask x86-64-v2 " MOXCC_WHICH_LIBRARY);
    EXPECT_EQ(reference.find("glibc-hwcaps"), std::string::npos) << reference;
}

}  // namespace
}  // namespace moxtest
