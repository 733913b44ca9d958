#include <algorithm>
#include <cstdint>
#include <cstring>
#include <new>
#include <utility>

#include "strings/copied_string.h"
#include "tamrix32/registry.h"

namespace {

/// The data that a value stores: `size` bytes at `bytes`. `bytes` is null if there is no data or memory ran out.
struct DataCopy {
    unsigned char* bytes = nullptr;
    unsigned long size = 0;
};

/// Allocates `size` zero bytes, at least one.
unsigned char* zeroedBytes(unsigned long size) {
    if (size == 0) size = 1;
    auto* bytes = new (std::nothrow) unsigned char[size];
    if (bytes) std::memset(bytes, 0, size);
    return bytes;
}

DataCopy copyOfString(const char* text, unsigned long length) {
    if (!text) text = "";
    const auto needed = static_cast<unsigned long>(std::strlen(text)) + 1;
    if (length < needed) length = needed;
    unsigned char* bytes = zeroedBytes(length);
    if (!bytes) return {};
    std::memcpy(bytes, text, needed);
    return {bytes, length};
}

DataCopy copyOfBytes(const unsigned char* source, unsigned long length) {
    if (!source) return {};
    unsigned char* bytes = zeroedBytes(length);
    if (!bytes) return {};
    std::memcpy(bytes, source, length);
    return {bytes, length};
}

/// Copies four bytes of the source to a block of `length` bytes, at least four; the rest is zero.
DataCopy copyOfNumber(const unsigned char* source, unsigned long length) {
    if (!source) return {};
    unsigned char* bytes = zeroedBytes(std::max<unsigned long>(length, sizeof(std::uint32_t)));
    if (!bytes) return {};
    std::memcpy(bytes, source, sizeof(std::uint32_t));
    return {bytes, length};
}

DataCopy copyOf(RegValType type, const unsigned char* source, unsigned long length) {
    switch (type) {
        case RegValString:
            return copyOfString(reinterpret_cast<const char*>(source), length);
        case RegValBinary:
            return copyOfBytes(source, length);
        case RegValDword:
            return copyOfNumber(source, length);
    }
    return {nullptr, length};
}

bool saysYes(const unsigned char* text) {
    switch (text[0]) {
        case '1':
        case 'y':
        case 'Y':
        case 't':
        case 'T':
            return true;
        case 'o':
        case 'O':
            return text[1] == 'n' || text[1] == 'N';
        default:
            return false;
    }
}

}  // namespace

RegValue::RegValue() : name(nullptr), type(RegValType{}), dataLength(0), data(nullptr) {}

RegValue::RegValue(RegValType newType, const char* newName, unsigned char* newData, unsigned long length)
    : name(tamrix::copiedString(newName)), type(newType), dataLength(length), data(nullptr) {
    SetData(newType, newData);
}

RegValue::~RegValue() {
    delete[] name;
    delete[] data;
}

void RegValue::SetName(const char* newName) {
    // `newName` may point into the old name, so the copy is made before the old name is freed.
    delete[] std::exchange(name, tamrix::copiedString(newName));
}

void RegValue::SetData(RegValType newType, unsigned char* newData) {
    const DataCopy copy = copyOf(newType, newData, dataLength);
    delete[] std::exchange(data, copy.bytes);
    dataLength = copy.size;
    type = newType;
}

void RegValue::SetDataLength(unsigned long length) {
    dataLength = length;
}

unsigned long RegValue::DataLen() {
    return dataLength;
}

char* RegValue::Name() {
    return name;
}

unsigned long RegValue::NameLen() {
    return name ? static_cast<unsigned long>(std::strlen(name)) : 0;
}

RegValType RegValue::Type() {
    return type;
}

char* RegValue::String() {
    return reinterpret_cast<char*>(data);
}

unsigned char* RegValue::Buffer() {
    return data;
}

unsigned long RegValue::Value() {
    std::uint32_t number = 0;
    if (type == RegValDword && data) std::memcpy(&number, data, sizeof number);
    return number;
}

int RegValue::BoolValue() {
    if (!data) return 0;
    switch (type) {
        case RegValString:
            return saysYes(data);
        case RegValBinary:
            return data[0] != 0;
        case RegValDword:
            return Value() != 0;
    }
    return 0;
}
