// contract_sums [calls]: for each export, a sum over the results of calls, the same on every processor. Two machines'
// outputs are compared by diff.
#include <cinttypes>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "contract/contract.h"
#include "support/float_env.h"

using namespace moxtest;

namespace {

/// FNV-1a.
class Sum {
  public:
    template <class T>
    void add(T x) {
        uint8_t bytes[sizeof x];
        std::memcpy(bytes, &x, sizeof x);
        for (const uint8_t byte : bytes) value_ = (value_ ^ byte) * 0x100000001B3;
    }
    uint64_t value() const { return value_; }

  private:
    uint64_t value_ = 0xCBF29CE484222325;
};

/// All samples of a result; any NaN for any NaN.
template <class T>
void add(Sum& sum, const std::vector<uint8_t>& result) {
    for (size_t at = 0; at < result.size(); at += sizeof(T)) {
        T x;
        std::memcpy(&x, &result[at], sizeof x);
        if constexpr (std::is_floating_point_v<T>)
            if (std::isnan(x)) x = std::numeric_limits<T>::quiet_NaN();
        sum.add(x);
    }
}

}  // namespace

int main(int argc, char** argv) {
    const unsigned calls = argc > 1 ? static_cast<unsigned>(std::atoi(argv[1])) : 20;
    for (const catalogue::Export& form : catalogue::exports()) {
        int bytes = 1;
        for (const catalogue::Parameter& p : form.parameters)
            if (p.side == 1 && p.floating && p.kind != catalogue::Parameter::number) bytes = p.bytes;
        Sum sum;
        for (unsigned seed = 0; seed < calls; ++seed) {
            Random random(seed);
            // FPCR flushes denormals on both sides of an operation or on none.
            const uint32_t control = random.oneOf({mxcsr::usual, mxcsr::down, mxcsr::up, mxcsr::towardZero,
                                                   mxcsr::usual | mxcsr::flushToZero | mxcsr::denormalsAreZero});
            const Inputs inputs(form, random);
            Scene scene(inputs, random);
            scene.restore();
            MoxStatus status = 0;
            underMxcsr(control, [&] { status = call(libraries()[0], form, scene.arguments); });
            sum.add(status);
            const std::vector<uint8_t> result = scene.result();
            bytes == 4 ? add<float>(sum, result) : bytes == 8 ? add<double>(sum, result) : add<uint8_t>(sum, result);
        }
        std::printf("%-60s %016" PRIx64 "\n", form.name.c_str(), sum.value());
    }
}
