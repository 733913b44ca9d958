/// @file
/// Registry keys and values as objects, over the ANSI forms of the platform's registry functions.
///
/// A key is named by an ancestor handle and a path below it. Results are 1 for success and 0 (or null) for failure; the
/// registry's own codes are not passed on. Every stored string is a copy; a string handed out points into its object
/// and lives until the object replaces it or is destroyed. Walks read names of at most 127 bytes, and walks and
/// ValueByName read data of at most 128 bytes: longer ones are failures. Keys are opened with the rights to read,
/// write, create subkeys, enumerate, notify and delete (0x1001F), also where they are only read. An object serves one
/// thread at a time.
#ifndef TAMRIX32_REGISTRY_H
#define TAMRIX32_REGISTRY_H

#ifdef __cplusplus

#include <windows.h>

#include "tamrix32/export.h"

/// The registry's own value type codes, carried through unchanged; those named here are the ones whose data is kept.
enum RegValType TAMRIX_INT_ENUM { RegValString = REG_SZ, RegValBinary = REG_BINARY, RegValDword = REG_DWORD };

/// One value as read from a key: name, type, data and the data's length.
class TAMRIX_CLASS RegValue {
public:
    RegValue();
    /// Copies `name` (may be null) and `length` bytes of `data` by SetData's rules.
    RegValue(RegValType type, const char* name, unsigned char* data, unsigned long length);
    /// Copies `name`; null sets none.
    void SetName(const char* name);
    /// Replaces type and data. REG_SZ: a copy of the string at `data` (null is empty), and the data length becomes at
    /// least its bytes with the terminator. REG_BINARY: as many bytes as the data length says. REG_DWORD: 4 bytes, with
    /// zeros after them where the data length is larger. Any other type: no data, the length stays. Call SetDataLength
    /// first.
    void SetData(RegValType type, unsigned char* data);
    /// Sets how many bytes the next SetData of REG_BINARY copies, and at least keeps of REG_SZ.
    void SetDataLength(unsigned long length);
    /// Bytes of data; for a string at least its length with the terminator.
    unsigned long DataLen();
    /// Null when there is none.
    char* Name();
    /// Bytes of the name without its terminator, 0 when there is none.
    unsigned long NameLen();
    /// The registry's code, also of types whose data is not kept.
    RegValType Type();
    /// The data, seen as a string or as bytes: one pointer, null when there is no data.
    /// @{
    char* String();
    unsigned char* Buffer();
    /// @}
    /// The number of a REG_DWORD; 0 for any other type.
    unsigned long Value();
    /// The value read as a setting: a string that begins with 1, y, Y, t, T or with "on" in any case, a byte run whose
    /// first byte is not zero, a number other than zero.
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

/// One key, its handle, and the positions of two walks: over its values and over its subkeys.
class TAMRIX_CLASS RegKey {
public:
    RegKey();
    /// Wraps an open handle and owns it from now on.
    RegKey(HKEY handle);
    /// Opens the key, creating it first where it is missing. With a null argument the key stays empty.
    /// @{
    RegKey(HKEY ancestor, const char* path);
    RegKey(RegKey* parent, const char* path);
    /// @}
    /// Zeroes all fields without closing or freeing what they held.
    void Init();
    /// Replaces the path (null is empty); an open handle stays open. Always 1. A key without a path, whether it never
    /// got one or memory ran out, is not opened, created or found until it gets one.
    int SetRelPath(const char* path);
    /// Replaces the ancestor of the next open; an open handle stays open. A key is not opened below its own handle,
    /// which is closed first.
    void SetAncestor(HKEY ancestor);
    /// 1 when the key can be opened. The key is closed afterwards whatever the answer; an empty path never exists.
    /// @{
    int Exists();
    int Exists(HKEY ancestor, const char* path);
    /// @}
    /// Closes what is open, then opens the key and starts both walks over. On failure the description stays.
    /// @{
    int Open();
    int Open(HKEY ancestor, const char* path);
    /// @}
    /// As Open, creating the key and any missing key on its path first.
    /// @{
    int Create();
    int Create(HKEY ancestor, const char* path);
    /// @}
    /// Always 1, also when nothing is open.
    int Close();
    /// 1 while a handle is held. Answers 0 through a null pointer too, as old callers rely on.
    int Opened();
    /// The open handle, which the key keeps owning; null when closed.
    HKEY Handle();
    /// Walks the values; 0 at the end and at a value that is too large, which every later call stops at again.
    /// @{
    int FirstValue(RegValue* value);
    int NextValue(RegValue* value);
    /// @}
    /// Reads one value into `value`, named as asked for (null reads the unnamed value). 0 leaves `value` as it was.
    int ValueByName(const char* name, RegValue* value);
    /// Deletes one value; 0 also when there is none.
    int RemoveValue(const char* name);
    /// Writes `text` with its terminator as REG_SZ; 0, with nothing written, when `text` is null.
    int SetString(const char* name, const char* text);
    /// Writes `number` as REG_DWORD.
    int SetDword(const char* name, unsigned long number);
    /// Walks the subkeys, opening each in `child`. Returns the child's own copy of the subkey's name, null at the end;
    /// a child that could not be opened reports Opened() 0 and the walk goes on behind it.
    /// @{
    char* FirstSubKey(RegKey* child);
    char* NextSubKey(RegKey* child);
    /// @}
    /// Walks the subkeys on the same position; `name` must hold 128 bytes and is left alone when the result is 0.
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
