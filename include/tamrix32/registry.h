/// @file
/// Registry keys and values as objects, based on the ANSI versions of the Win32 registry functions.
///
/// A key is identified by an ancestor handle and a path below it. Functions return 1 for success and 0 (or null) for
/// failure; the registry's error codes are not available. Every string passed in is copied. A returned string points
/// into its object and is valid until the object replaces it or is destroyed. Enumerations read names of at most 127
/// bytes; enumerations and ValueByName read data of at most 128 bytes. Longer names and data count as failures. Every
/// key is opened with the rights to read, write, create subkeys, enumerate, notify and delete (0x1001F), even if it is
/// only read. An object may be used by one thread at a time.
#ifndef TAMRIX32_REGISTRY_H
#define TAMRIX32_REGISTRY_H

#ifdef __cplusplus

#include <windows.h>

#include "tamrix32/export.h"

/// The registry's value type codes. Other codes are possible too, but only values of these three types store data.
enum RegValType TAMRIX_INT_ENUM { RegValString = REG_SZ, RegValBinary = REG_BINARY, RegValDword = REG_DWORD };

/// One registry value: name, type, data and data length.
class TAMRIX_CLASS RegValue {
public:
    RegValue();
    /// Copies `name` (may be null) and `length` bytes of `data`, by the rules of SetData.
    RegValue(RegValType type, const char* name, unsigned char* data, unsigned long length);
    /// Copies `name`; null removes the name.
    void SetName(const char* name);
    /// Replaces type and data; call SetDataLength first. REG_SZ copies the string at `data` (null counts as empty) and
    /// raises the data length to at least the string's size with the terminator. REG_BINARY copies as many bytes as the
    /// data length. REG_DWORD copies 4 bytes and adds zeros if the data length is larger. Other types store no data and
    /// leave the data length unchanged. If memory runs out, or if `data` is null for REG_BINARY or REG_DWORD, the value
    /// has no data and length 0.
    void SetData(RegValType type, unsigned char* data);
    /// Sets the data length in bytes: what the next SetData copies of a REG_BINARY and the minimum length for a REG_SZ.
    void SetDataLength(unsigned long length);
    /// The data length in bytes; for a string at least its length with the terminator.
    unsigned long DataLen();
    /// The name, or null if there is none.
    char* Name();
    /// Length of the name in bytes without the terminator; 0 if there is none.
    unsigned long NameLen();
    /// The registry's type code, also for types that store no data.
    RegValType Type();
    /// The data as a string or as bytes: the same pointer, null if there is no data.
    /// @{
    char* String();
    unsigned char* Buffer();
    /// @}
    /// The number of a REG_DWORD; 0 for any other type.
    unsigned long Value();
    /// The value as a Boolean setting. 1 for a string that begins with 1, y, Y, t, T or with "on" in any case, for
    /// binary data whose first byte is not zero, and for a nonzero number; otherwise 0.
    int BoolValue();
    ~RegValue();

    RegValue(const RegValue&) TAMRIX_DELETED;
    RegValue& operator=(const RegValue&) TAMRIX_DELETED;

private:
    friend struct RegistryLayout;
    char* name;
    RegValType type;
    unsigned long dataLength;
    unsigned char* data;
};

/// One key, its handle, and the positions of two enumerations: of its values and of its subkeys.
class TAMRIX_CLASS RegKey {
public:
    RegKey();
    /// Takes ownership of an open handle.
    RegKey(HKEY handle);
    /// Opens the key, creating it if it is missing. If an argument is null, the object describes no key and stays
    /// closed.
    /// @{
    RegKey(HKEY ancestor, const char* path);
    RegKey(RegKey* parent, const char* path);
    /// @}
    /// Zeroes all fields. Does not close the handle or free the path.
    void Init();
    /// Replaces the path (null counts as empty); an open handle stays open. Always returns 1. An object that has no
    /// path, because none was set or memory ran out, cannot open, create or find a key.
    int SetRelPath(const char* path);
    /// Sets the ancestor for the next open; an open handle stays open. A key cannot be opened below its own handle,
    /// because opening closes that handle first.
    void SetAncestor(HKEY ancestor);
    /// 1 if the key can be opened, otherwise 0. Always leaves this object closed. An empty path never exists.
    /// @{
    int Exists();
    int Exists(HKEY ancestor, const char* path);
    /// @}
    /// Closes an open handle, then opens the key and restarts both enumerations. On failure, ancestor and path stay
    /// set.
    /// @{
    int Open();
    int Open(HKEY ancestor, const char* path);
    /// @}
    /// Like Open, but first creates the key and any missing key on its path.
    /// @{
    int Create();
    int Create(HKEY ancestor, const char* path);
    /// @}
    /// Closes the handle, if open. Always returns 1.
    int Close();
    /// 1 while the key is open, otherwise 0. Also returns 0 if called through a null pointer, which old callers rely
    /// on.
    int Opened();
    /// The open handle, still owned by this object; null if closed.
    HKEY Handle();
    /// Read the first or next value. Return 0 at the end and for a value that is too large; later calls fail at the
    /// same value.
    /// @{
    int FirstValue(RegValue* value);
    int NextValue(RegValue* value);
    /// @}
    /// Reads the value called `name` (null: the unnamed value) into `value`, which then has that name. Returns 0 on
    /// failure and leaves `value` unchanged.
    int ValueByName(const char* name, RegValue* value);
    /// Deletes one value. Returns 0 on failure and if there is none.
    int RemoveValue(const char* name);
    /// Writes `text` with its terminator as REG_SZ. Returns 0, with nothing written, if `text` is null.
    int SetString(const char* name, const char* text);
    /// Writes `number` as REG_DWORD.
    int SetDword(const char* name, unsigned long number);
    /// Open the first or next subkey in `child`. Return the name of the subkey, as stored in `child`, or null at the
    /// end. If the subkey could not be opened, `child->Opened()` returns 0 and the enumeration continues after it.
    /// @{
    char* FirstSubKey(RegKey* child);
    char* NextSubKey(RegKey* child);
    /// @}
    /// Copy the name of the first or next subkey to `name`, a buffer of 128 bytes. Share their position with the two
    /// functions above. Return 0 at the end, with `name` unchanged.
    /// @{
    int FirstSubKey(char* name);
    int NextSubKey(char* name);
    /// @}
    /// Does nothing and returns null.
    char* SubKeyByName(const char* name, RegKey* child);
    ~RegKey();

    RegKey(const RegKey&) TAMRIX_DELETED;
    RegKey& operator=(const RegKey&) TAMRIX_DELETED;

private:
    friend struct RegistryLayout;
    HKEY ancestor;
    char* relativePath;
    HKEY handle;
    unsigned long subKeyPosition;
    unsigned long valuePosition;
    int opened;
};

#endif
#endif
