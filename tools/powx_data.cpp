// Writes the source of the power kernel's logarithm table: for each of 65 points from 1 to 2 a reciprocal of few bits,
// and minus the logarithm of that reciprocal in two pieces.
#include <cmath>
#include <cstdio>

int main() {
    std::puts("#include \"math/powx_data.h\"\n\nnamespace q4 {\n\nconst PowxRow vspowx_data[65] = {");
    for (int k = 0; k <= 64; ++k) {
        const double rcp = std::nearbyint(256 / (1 + k / 64.0)) / 256;
        const long double log = 0 - std::log(static_cast<long double>(rcp));
        const long double logHi = std::floor(log * 0x1p14L) * 0x1p-14L;
        std::printf("    {%af, %af, %af, 0},\n", double(logHi), double(float(log - logHi)), rcp);
    }
    std::puts("};\n\n}  // namespace q4");
}
