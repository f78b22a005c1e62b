// What every export promises, tested of every export.
#include "contract/contract.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <barrier>
#include <thread>

#include "support/support.h"

namespace moxtest {
namespace {

class Contract : public ::testing::TestWithParam<size_t> {
  protected:
    static const Export& form() { return exports()[GetParam()]; }
};

TEST_P(Contract, HoldsForAnyCall) {
    for (unsigned seed = 0; seed < 100; ++seed) {
        Random random(seed);
        const std::string told = breach(form(), random);
        ASSERT_TRUE(told.empty()) << told << " (seed " << seed << ")";
    }
}

// Each argument test by itself, and against each other one.
TEST_P(Contract, TestsArgumentsInOrder) {
    Random random(1);
    const Inputs inputs(form(), random);
    const std::vector<Fault> faults = faultsOf(form());
    Scene scene(inputs, random);
    for (const Library& lib : libraries()) {
        for (const Fault& a : faults) {
            for (const Fault& b : faults) {
                scene.restore();
                inject(a, scene.arguments);
                inject(b, scene.arguments);
                const MoxStatus status = call(lib, form(), scene.arguments);
                ASSERT_EQ(status, expectedStatus(form(), scene.arguments))
                    << describe(lastCall()) << ": tests " << char(a.test) << " of argument " << a.parameter << " and "
                    << char(b.test) << " of argument " << b.parameter;
                ASSERT_EQ(scene.strayWrites(status < 0), "") << describe(lastCall());
            }
        }
    }
}

// Rows may lie on each other, unless steps are tested.
TEST_P(Contract, TakesStepsOfZero) {
    if (form().tested(Check::steps) || form().tested(Check::rowLengths)) return;
    Random random(2);
    const Inputs inputs(form(), random);
    Scene scene(inputs, random);
    scene.restore();
    for (size_t i = 0; i < scene.arguments.size(); ++i) {
        const Parameter& p = form().parameters[i];
        if (p.role == Parameter::step && p.side < 2) scene.arguments[i].number = 0;
        if (p.role == Parameter::steps) std::fill_n(static_cast<int32_t*>(scene.arguments[i].pointer), 3, 0);
    }
    for (const Library& lib : libraries()) {
        EXPECT_GE(call(lib, form(), scene.arguments), 0) << describe(lastCall());
        EXPECT_EQ(scene.strayWrites(false), "") << describe(lastCall());
    }
}

INSTANTIATE_TEST_SUITE_P(, Contract, ::testing::Range(size_t(0), exports().size()),
                         [](const auto& index) { return exports()[index.param].name; });

// Each thread has its own destination; all call the same export at the same time.
TEST(ContractOfAll, HoldsInEightThreadsAtOnce) {
    constexpr int threads = 8;
    for (const Library& lib : libraries()) {
        std::barrier together(threads);
        std::atomic<int> different = 0;
        const auto run = [&] {
            for (const Export& form : exports()) {
                Random random(3);
                const Inputs inputs(form, random);
                Scene scene(inputs, random);
                std::vector<uint8_t> first;
                for (int i = 0; i < 4; ++i) {
                    scene.restore();
                    if (i > 0) together.arrive_and_wait();
                    call(lib, form, scene.arguments);
                    if (i == 0) first = scene.result();
                    if (!sameResult(form, scene.result(), first)) ++different;
                }
            }
        };
        std::vector<std::jthread> running;
        for (int i = 0; i < threads; ++i) running.emplace_back(run);
        running.clear();
        EXPECT_EQ(different, 0) << lib.name();
    }
}

}  // namespace
}  // namespace moxtest
