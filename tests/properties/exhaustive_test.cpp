// Holds one property, TAMRIX_PROPERTY, to each input of the sets that its header lists in exhaustive().
#include <gtest/gtest.h>

#include TAMRIX_PROPERTY

namespace {

void holdAll(const properties::Inputs& inputs) {
    properties::hold(inputs.prefix);
    if (inputs.most == 0) return;
    for (const char byte : inputs.alphabet) holdAll({inputs.prefix + byte, inputs.alphabet, inputs.most - 1});
}

TEST(Property, HoldsForEachInputOfItsSets) {
    for (const properties::Inputs& inputs : properties::exhaustive()) holdAll(inputs);
}

}  // namespace
