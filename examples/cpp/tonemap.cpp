// Paints a light source of high dynamic range, maps it to 8 bits and writes a PGM file: tonemap light.pgm
#include <cmath>
#include <fstream>
#include <iostream>
#include <vector>

#include "moxcc/moxcc.h"

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: tonemap FILE.pgm\n";
        return 2;
    }
    const MoxiSize size = {320, 240};
    std::vector<float> light;
    for (int y = 0; y < size.height; ++y) {
        for (int x = 0; x < size.width; ++x) {
            const float distance = std::hypot(static_cast<float>(x) - 160.0f, static_cast<float>(y) - 120.0f);
            light.push_back(1000.0f / (1.0f + 0.1f * distance));
        }
    }
    std::vector<Mox8u> image(light.size());

    const auto step = static_cast<int32_t>(size.width * sizeof(float));
    const MoxStatus status = moxiToneMapMean_32f8u_C1R(light.data(), step, image.data(), size.width, size);
    if (status != moxStatusOk) {
        std::cerr << moxStatusText(status) << '\n';
        return 1;
    }

    std::ofstream file(argv[1], std::ios::binary);
    file << "P5\n" << size.width << ' ' << size.height << "\n255\n";
    file.write(reinterpret_cast<const char*>(image.data()), static_cast<std::streamsize>(image.size()));
    file.close();
    if (!file) {
        std::cerr << "cannot write " << argv[1] << '\n';
        return 1;
    }
    std::cout << moxccGetLibVersion()->name << ": wrote " << argv[1] << '\n';
}
