// Counts the blocks that the library allocates: those that come from the nothrow forms of new, which tests do not use.
#pragma once

#include <cstddef>

namespace testing_support {

/// Blocks from the nothrow forms of new that have not been freed.
std::size_t openBlocks();

}  // namespace testing_support
