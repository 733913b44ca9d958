// The registry values of one extension's mapping, read and restored byte for byte, even if they are incomplete or of
// other types.
#pragma once

#include <windows.h>

#include <array>
#include <optional>
#include <string>

namespace tamrix::client {

class StoredValues {
public:
    /// Reads the current values of an extension; nullopt if they cannot be read.
    static std::optional<StoredValues> of(const std::string& extension);

    /// Restores the values byte for byte. Removes the key if it did not exist and contains nothing else. False on
    /// failure.
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
