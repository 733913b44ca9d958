// Tests one property, TAMRIX_PROPERTY, with each input of the sets that its header lists in exhaustive().
#include <gtest/gtest.h>

#include TAMRIX_PROPERTY

namespace {

void holdAll(const properties::Inputs& inputs) {
    properties::hold(inputs.prefix);
    if (inputs.maxBytes == 0) return;
    for (const char byte : inputs.alphabet) holdAll({inputs.prefix + byte, inputs.alphabet, inputs.maxBytes - 1});
}

TEST(Property, HoldsForEachInputOfItsSets) {
    for (const properties::Inputs& inputs : properties::exhaustive()) holdAll(inputs);
}

}  // namespace
