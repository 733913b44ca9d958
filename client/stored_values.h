// What the registry holds of one extension, whatever it is: a mapping, a part of one, or values of other types.
#pragma once

#include <windows.h>

#include <array>
#include <optional>
#include <string>

namespace tamrix::client {

class StoredValues {
public:
    /// What the key of an extension holds now; nothing when the registry does not tell.
    static std::optional<StoredValues> of(const std::string& extension);

    /// Makes the key hold the same again, byte for byte; takes it away where there was none and nothing else is in it.
    /// False when the registry refuses.
    bool restore() const;

    bool operator==(const StoredValues&) const = default;

private:
    struct Value {
        DWORD type = 0;
        std::string bytes;
        bool operator==(const Value&) const = default;
    };

    bool read(HKEY key);
    void write(HKEY key) const;

    std::string extension_;
    bool hasKey_ = false;
    std::array<std::optional<Value>, 3> values_;  // of kValueNames
};

}  // namespace tamrix::client
