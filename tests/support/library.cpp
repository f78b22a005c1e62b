#include "support/library.h"

#include <dlfcn.h>
#include <signal.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <stdexcept>

#include "support/float_env.h"

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/common_interface_defs.h>
#endif

namespace moxtest {
namespace {

constexpr int skipped = 77;  // the exit code that ctest is told to count as "skipped"

thread_local CallNote noted;

void printNote() {
    char text[256];
    const int length = std::snprintf(text, sizeof text, "\nFault in or after %s, %s file, %d x %d\n", noted.function,
                                     noted.library, noted.roi.width, noted.roi.height);
    if (write(STDERR_FILENO, text, static_cast<size_t>(length)) < 0) _exit(1);
}

// A fault at a guard page kills the program; say first what was being called.
void noteFaults() {
#if defined(__SANITIZE_ADDRESS__)
    __sanitizer_set_death_callback(printNote);
#else
    struct sigaction action = {};
    action.sa_handler = [](int) { printNote(); };
    action.sa_flags = static_cast<int>(SA_RESETHAND);  // then the instruction faults again, for the core file
    for (const int signal : {SIGSEGV, SIGBUS, SIGILL, SIGFPE}) sigaction(signal, &action, nullptr);
#endif
}

std::vector<Library> load() {
    noteFaults();
    const struct {
        const char *name, *path;
        bool runs;
    } files[] = {
#define LEVEL(level, name, path, runs) {name, path, runs},
#include "levels.inc"
#ifdef MOXCC_LIBRARY_STATIC
        {"static", MOXCC_LIBRARY_STATIC, true},
#endif
    };
    const char* const only = std::getenv("MOXCC_TEST_LIBRARY");
    std::vector<Library> libs;
    for (const auto& file : files)
        if (file.runs && (!only || std::strcmp(only, file.name) == 0)) libs.emplace_back(file.name, file.path);
    if (libs.empty()) {
        std::puts("No library file to test: this processor does not run it, or MOXCC_TEST_LIBRARY names no file");
        std::exit(skipped);
    }
    return libs;
}

}  // namespace

const CallNote& lastCall() { return noted; }

std::string describe(const CallNote& call) {
    return std::string(call.function) + ", " + call.library + " file, " + std::to_string(call.roi.width) + " x " +
           std::to_string(call.roi.height);
}

CallScope::CallScope(const CallNote& call) : mxcsr_(readMxcsr()), x87Control_(readX87Control()) { noted = call; }

CallScope::~CallScope() {
    if ((readMxcsr() ^ mxcsr_) & ~mxcsr::flags) ADD_FAILURE() << describe(noted) << ": changed the controls of MXCSR";
    if (readX87Control() != x87Control_) ADD_FAILURE() << describe(noted) << ": changed the x87 control word";
}

Library::Library(const char* name, const char* path)
    : name_(name), path_(path), handle_(dlopen(path, RTLD_NOW | RTLD_LOCAL)) {
    if (!handle_) throw std::runtime_error(dlerror());
}

void* Library::symbol(const char* name) const { return dlsym(handle_, name); }

void* Library::required(const char* name) const {
    if (void* const address = symbol(name)) return address;
    throw std::runtime_error(std::string(path_) + " does not export " + name);
}

const std::vector<Library>& libraries() {
    static const std::vector<Library> libs = load();
    return libs;
}

}  // namespace moxtest
