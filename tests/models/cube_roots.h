// The table that cube roots of floats start from.
#ifndef MODELS_CUBE_ROOTS_H
#define MODELS_CUBE_ROOTS_H

#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace moxtest {

/// Cube roots and reciprocals of the middles of 128 intervals, of which the last four may have a scale of their own.
struct CubeRoots {
    float c[128], w[128];

    explicit CubeRoots(double lastScale = 127.99805) {
        for (int k = 0; k < 128; ++k) {
            const double y = (k + 1.0128) / (k < 124 ? 127.99805 : lastScale);
            c[k] = decimal(std::cbrt(y)), w[k] = decimal(1 / y);
        }
    }

  private:
    // With the six decimals that the entries have.
    static float decimal(double v) {
        char text[32];
        std::snprintf(text, sizeof text, "%.6f", v);
        return std::strtof(text, nullptr);
    }
};

}  // namespace moxtest

#endif
