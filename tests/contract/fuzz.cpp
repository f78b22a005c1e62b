// Calls drawn by a fuzzer, each held to the contract.
#include <cstdio>
#include <cstdlib>
#include <string>

#include "contract/contract.h"

using namespace moxtest;

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    libraries();  // loaded, so that the fuzzer knows their code before the first call
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    Random random({data, size});
    const Export& form = exports()[random.bits() % exports().size()];
    const std::string told = breach(form, random);
    if (told.empty() && !::testing::Test::HasFailure()) return 0;
    std::fprintf(stderr, "%s\n", told.c_str());
    std::abort();
}
