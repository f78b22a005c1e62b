// Arguments that fail a test of an export, and the status that must follow.
#ifndef CONTRACT_FAULTS_H
#define CONTRACT_FAULTS_H

#include "catalogue/export.h"

namespace moxtest {

using namespace catalogue;

/// A way to make the arguments of a call fail a test.
struct Fault {
    Check test;
    int parameter;
    double value = 0;  // which plane, or the value
};

std::vector<Fault> faultsOf(const Export& e);
void inject(const Fault& fault, std::vector<Argument>& arguments);
/// The status that the arguments ask for.
MoxStatus expectedStatus(const Export& e, std::span<const Argument> arguments);
/// 0 if it takes none.
double number(const Export& e, Value value, std::span<const Argument> arguments);

}  // namespace moxtest

#endif
