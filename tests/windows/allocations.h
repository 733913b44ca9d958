// Counts the blocks that the library allocates, and refuses them: those that come from the nothrow forms of new, which
// tests do not use.
#pragma once

#include <cstddef>

namespace testing_support {

/// Blocks from the nothrow forms of new that have not been freed.
std::size_t openBlocks();

/// Makes the nothrow forms of new fail, or work again.
void failAllocations(bool fail);

}  // namespace testing_support
