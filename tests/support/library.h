// The library files, side by side, and typed calls into them.
#ifndef SUPPORT_LIBRARY_H
#define SUPPORT_LIBRARY_H

#include <gtest/gtest.h>

#include <string>
#include <type_traits>
#include <vector>

#include "moxcc/types.h"

/// An exported function as a value: Symbol<its signature>{its name}. The prototype is the header's, the code the
/// file's.
#define MOX_EXPORT(function) (::moxtest::Symbol<decltype(function)>{#function})

/// The export of one library file, to be called: MOX_CALL(lib, moxiX)(src, srcStep, ...).
#define MOX_CALL(lib, function) ((lib)(MOX_EXPORT(function)))

namespace moxtest {

template <class Signature>
struct Symbol {
    const char* name;
};

/// The last call into a library file that this thread made.
struct CallNote {
    const char* function = "no function called yet";
    const char* library = "";
    MoxiSize roi = {};
};
const CallNote& lastCall();
std::string describe(const CallNote& call);

/// Notes a call, for messages and for the note on a crash, and checks that it leaves the floating-point controls alone.
class CallScope {
  public:
    explicit CallScope(const CallNote& call);
    ~CallScope();
    CallScope(const CallScope&) = delete;
    CallScope& operator=(const CallScope&) = delete;

  private:
    uint32_t mxcsr_;
    uint16_t x87Control_;
};

template <class Signature>
class Function;

template <class Result, class... Args>
class Function<Result(Args...)> {
  public:
    Function(const char* name, const char* library, void* address)
        : name_(name), library_(library), function_(reinterpret_cast<Result (*)(Args...)>(address)) {}

    Result operator()(Args... args) const {
        MoxiSize roi = {};
        (noteSize(roi, args), ...);
        const CallScope scope({name_, library_, roi});
        return function_(args...);
    }

  private:
    template <class T>
    static void noteSize(MoxiSize& roi, const T& arg) {
        if constexpr (std::is_same_v<T, MoxiSize>) roi = arg;
    }

    const char* name_;
    const char* library_;
    Result (*function_)(Args...);
};

/// One library file, loaded.
class Library {
  public:
    /// Throws if the file cannot be loaded.
    Library(const char* name, const char* path);

    const char* name() const { return name_; }  ///< "SSE4.2" or another width's, or "static".
    const char* path() const { return path_; }
    void* symbol(const char* name) const;  ///< Null if the file does not export the name.

    /// Throws if the file does not export the function: the test fails.
    template <class Signature>
    Function<Signature> operator()(Symbol<Signature> function) const {
        return {function.name, name_, required(function.name)};
    }

  private:
    void* required(const char* name) const;

    const char* name_;
    const char* path_;
    void* handle_;
};

/// The files to test: all that this processor runs, and see MOXCC_TEST_LIBRARY in support.h.
const std::vector<Library>& libraries();

/// Calls body(const Library&) for each file; ends at the first failure.
template <class Body>
void forEachLibrary(const Body& body) {
    for (const Library& lib : libraries()) {
        if (!::testing::Test::HasFailure()) body(lib);
    }
}

}  // namespace moxtest

#endif
