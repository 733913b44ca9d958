// Dialog templates of one format: no read outside the input, and what is written parses to the same bytes again.
#pragma once

#include <memory>
#include <vector>

#include "dialogs/dialog_template.h"
#include "fuzz_input.h"

namespace fuzzing {

inline std::vector<std::uint8_t> written(tamrix::CDialogTemplate& dialog) {
    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(dialog.write(nullptr, 0)));
    const int size = static_cast<int>(bytes.size());
    require(dialog.write(bytes.data(), size - 1) == 0);
    require(dialog.write(bytes.data(), size) == size);
    return bytes;
}

/// Parses a copy that ends where its block ends.
inline bool parses(tamrix::CDialogTemplate& dialog, const std::uint8_t* data, std::size_t size) {
    const std::unique_ptr<std::uint8_t[]> copy(new std::uint8_t[size]);
    for (std::size_t i = 0; i < size; ++i) copy[i] = data[i];
    require(!tamrix::marksExtended({copy.get(), size}) || size >= 4);
    dialog.dataSize = static_cast<std::uint32_t>(size);
    return dialog.parse(copy.get()) == 1;
}

template <typename Template>
void rewriteTwice(const std::uint8_t* data, std::size_t size, bool otherFont) {
    Template dialog;
    if (!parses(dialog, data, size)) return;
    if (otherFont) {
        require(dialog.setFaceName("Arial") == 6);
        dialog.setPointSize(10);
    }
    const std::vector<std::uint8_t> once = written(dialog);
    require(otherFont || once.size() <= size);
    // A last record that ends inside the word that says so (its creation data counts one byte) is written without the
    // word's other half.
    std::vector<std::uint8_t> spared = once;
    spared.push_back(0);
    Template again;
    require(parses(again, spared.data(), spared.size()));
    require(again.itemCount == dialog.itemCount && again.pointSize == dialog.pointSize);
    require(written(again) == once);
}

}  // namespace fuzzing
