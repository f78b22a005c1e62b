// Writes the source of the gamma tables: entry i is the curve at i / N, times N, rounded to single precision and then
// to an integer, both to nearest with ties to even. The first rounding can bring a value on a tie, so it is part of the
// rule.
#include <cmath>
#include <cstdio>

namespace {

double forward(double x) { return x < 0.018 ? 4.5 * x : 1.099 * std::pow(x, 0.45) - 0.099; }
double inverse(double y) { return y < 0.0812 ? y / 4.5 : std::pow((y + 0.099) / 1.099, 1 / 0.45); }

void table(const char* type, const char* name, double (*curve)(double), int top) {
    std::printf("alignas(64) const %s %s[%d] = {", type, name, top + 1);
    for (int i = 0; i <= top; ++i) {
        const float scaled = float(curve(double(i) / top) * top);
        std::printf("%s%d,", i % 16 == 0 ? "\n    " : " ", int(std::nearbyint(scaled)));
    }
    std::puts("\n};");
}

}  // namespace

int main() {
    std::puts("#include \"math/gamma_tables.h\"\n\nnamespace q4 {\n");
    table("Mox8u", "tableFwd8u", forward, 255);
    table("Mox8u", "tableInv8u", inverse, 255);
    table("Mox16u", "tableFwd16u", forward, 65535);
    table("Mox16u", "tableInv16u", inverse, 65535);
    std::puts("\n}  // namespace q4");
}
