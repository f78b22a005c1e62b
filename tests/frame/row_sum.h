// The sum of a picture's samples in plain code.
#ifndef FRAME_ROW_SUM_H
#define FRAME_ROW_SUM_H

#include <cstdint>
#include <vector>

namespace moxtest {

/// A row's sum in the order that its address decides, added to the total.
inline void addRow(const std::vector<float>& row, uintptr_t address, long double& total) {
    float A[4] = {}, B[4] = {}, C[4] = {}, D[4] = {};
    const int n = static_cast<int>(row.size());
    int i = 0;
    const auto four = [&](float* to) {
        for (int k = 0; k < 4; ++k) to[k] += row[size_t(i++)];
    };
    const int a = static_cast<int>(address % 16);
    if (a % 4 != 0) {
        while (n - i >= 4) four(A);
    } else {
        const int k = a == 0 ? 0 : 4 - a / 4;
        if (n >= k && k > 0) {
            if (k == 2 || k == 3) A[0] += row[size_t(i++)], A[1] += row[size_t(i++)];
            if (k == 1 || k == 3) B[0] += row[size_t(i++)];
        }
        while (n - i >= 16) four(A), four(B), four(C), four(D);
        if (n - i >= 8) four(A), four(B);
        if (n - i >= 4) four(C);
    }
    if (n - i >= 2) D[0] += row[size_t(i++)], D[1] += row[size_t(i++)];
    if (n - i >= 1) C[0] += row[size_t(i++)];
    float V[4];
    for (int k = 0; k < 4; ++k) V[k] = (A[k] + B[k]) + (C[k] + D[k]);
    total += V[0] + V[2];
    total += V[1] + V[3];
}

}  // namespace moxtest

#endif
