// Every conversion as the program runs it, beside the C call: the same bytes.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <random>

#include "cli/pictures/formats.h"

namespace {

using catalogue::Export;
using catalogue::Value;
using pictures::Frame;

std::string bytesOf(const Frame& frame) {
    std::string bytes;
    for (size_t i = 0; i < frame.planeCount(); ++i)
        bytes.append(reinterpret_cast<const char*>(frame.row(i, 0)), size_t(frame.rowBytes[i]) * size_t(frame.rows[i]));
    return bytes;
}

// Any bits, but floats of 0 to 1.
void fill(Frame& frame, std::mt19937& random) {
    for (size_t i = 0; i < frame.planeCount(); ++i) {
        uint8_t* const at = frame.row(i, 0);
        const size_t bytes = size_t(frame.rowBytes[i]) * size_t(frame.rows[i]);
        for (size_t j = 0; j < bytes; j += size_t(frame.side.sampleBytes)) {
            const auto word = uint32_t(random());
            const double unit = word / 4294967296.0;
            const auto single = float(unit);
            if (!frame.side.floating)
                std::memcpy(at + j, &word, size_t(frame.side.sampleBytes));
            else if (frame.side.sampleBytes == 4)
                std::memcpy(at + j, &single, sizeof single);
            else
                std::memcpy(at + j, &unit, sizeof unit);
        }
    }
}

// The same arguments for the call and for the command line.
struct Arguments {
    explicit Arguments(const Export& e) {
        const auto give = [&](bool taken, const char* option) {
            if (taken) text.append(" ").append(option);
            return taken;
        };
        values.threshold = 127;
        if (give(e.parameter(Value::alpha), "--alpha 0.5")) values.alpha = 0.5;
        if (give(e.parameter(Value::grid), "--grid gbrg")) values.grid = moxBayerGridGBRG;
        if (give(e.parameter(Value::levels), "--levels 5")) values.levels = 5;
        if (give(e.parameter(Value::dither), "--dither jj")) values.dither = moxDitherJj;
        if (give(e.parameter(Value::bitDither), "--dither st")) values.dither = moxDitherSt;
        if (give(e.parameter(Value::noise), "--noise 10")) values.noise = 10;
        if (give(e.parameter(Value::firstBit), "--first-bit 3")) values.firstBit = 3;
        if (give(e.parameter(Value::slice), "--slice first")) values.slice = moxSliceFirst;
        values.slice = e.parameter(Value::slice) ? moxSliceFirst : moxSliceAll;
        if (const catalogue::Parameter* p = e.parameter(catalogue::Parameter::weights)) {
            text += " --weights ";
            for (int i = 0; i < e.weights; ++i) {
                doubles.push_back((i % 5) * 0.125), floats.push_back(float(doubles.back()));
                text.append(i ? "," : "").append(std::to_string(doubles.back()));
            }
            values.weights = p->bytes == 8 ? static_cast<const void*>(doubles.data()) : floats.data();
        }
    }
    catalogue::Values values;
    std::string text;

  private:
    std::vector<double> doubles;
    std::vector<float> floats;
};

TEST(Cli, RunsEveryConversionAsTheCallDoes) {
    char folderName[] = "/tmp/moxcc-cli-XXXXXX";
    const std::filesystem::path folder = mkdtemp(folderName);
    std::mt19937 random(17);
    int runs = 0;
    for (const Export& e : catalogue::exports()) {
        if (!e.converts()) continue;
        SCOPED_TRACE(e.name);
        const MoxiSize size = e.tested(catalogue::Check::wholeCells) ? MoxiSize{48, 16} : MoxiSize{37, 13};
        Frame picture, source, expected;
        picture.shape(e.sides[e.inPlace()], size);
        fill(picture, random);
        std::ofstream(folder / "in.raw", std::ios::binary) << bytesOf(picture);

        const Arguments arguments(e);
        expected.shape(e, 1, size, arguments.values.firstBit);
        if (e.inPlace()) {
            pictures::repack(picture, expected);
        } else {
            source.shape(e, 0, size);
            // As it lies in memory, but where rows are without gaps.
            for (size_t i = 0; i < picture.planeCount(); ++i)
                for (int y = 0; y < picture.rows[i]; ++y)
                    std::memcpy(source.row(i, y), picture.row(i, y), size_t(source.rowBytes[i]));
            if (e.sides[1].keepsFourth) pictures::repackAlpha(picture, expected);
        }
        ASSERT_GE(catalogue::call(e, source.picture(), expected.picture(), arguments.values), 0);

        const std::string command = std::string(MOXCC_PROGRAM) + " run -q " + e.name + " " +
                                    (folder / "in.raw").string() + " --size " + std::to_string(size.width) + "x" +
                                    std::to_string(size.height) + " --threads 2 --raw -o " +
                                    (folder / "out.raw").string() + arguments.text;
        ASSERT_EQ(std::system(command.c_str()), 0) << command;
        std::ifstream file(folder / "out.raw", std::ios::binary);
        const std::string result{std::istreambuf_iterator<char>(file), {}};
        EXPECT_TRUE(result == bytesOf(expected)) << command;
        ++runs;
    }
    EXPECT_EQ(runs, 439);
    std::filesystem::remove_all(folder);
}

}  // namespace
