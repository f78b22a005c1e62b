// The floating-point controls of the thread. The compiler does not know that they change results: put the code that is
// to run under other controls into a lambda for underMxcsr(), which no operation crosses, or change them around calls
// only. On 64-bit ARM the words stand for those of FPCR, and there is no x87 unit.
#ifndef SUPPORT_FLOAT_ENV_H
#define SUPPORT_FLOAT_ENV_H

#include <cstdint>
#include <functional>

namespace moxtest {

namespace mxcsr {
inline constexpr uint32_t flags = 0x003F;  // sticky exception flags
inline constexpr uint32_t denormalsAreZero = 0x0040;
inline constexpr uint32_t usual = 0x1F80;  // to nearest, all exceptions masked
inline constexpr uint32_t down = usual | 0x2000;
inline constexpr uint32_t up = usual | 0x4000;
inline constexpr uint32_t towardZero = usual | 0x6000;
inline constexpr uint32_t flushToZero = 0x8000;
inline constexpr uint32_t roundings[] = {usual, down, up, towardZero};
}  // namespace mxcsr

/// What the message calls a value of MXCSR: "rounding down" and the like.
const char* roundingName(uint32_t mxcsr);

/// Sets MXCSR for the length of a scope.
class MxcsrScope {
  public:
    explicit MxcsrScope(uint32_t value);
    ~MxcsrScope();
    MxcsrScope(const MxcsrScope&) = delete;
    MxcsrScope& operator=(const MxcsrScope&) = delete;

  private:
    uint32_t saved_;
};

/// Sets the x87 control word for the length of a scope (0x037F is the usual one, 0x027F double precision).
class X87Scope {
  public:
    explicit X87Scope(uint16_t value);
    ~X87Scope();
    X87Scope(const X87Scope&) = delete;
    X87Scope& operator=(const X87Scope&) = delete;

  private:
    uint16_t saved_;
};

uint32_t readMxcsr();
uint16_t readX87Control();

/// Runs the body under a value of MXCSR, as a call that the compiler cannot look into.
void underMxcsr(uint32_t value, const std::function<void()>& body);

}  // namespace moxtest

#endif
