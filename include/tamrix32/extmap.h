/// @file
/// The registry store that maps file-name extensions to Macintosh file type and creator codes: flat functions on a
/// plain record, usable from C, and a cursor class.
///
/// A mapping is stored in a subkey of HKEY_CLASSES_ROOT whose name is the extension with its dot. It consists of the
/// REG_SZ values "Mac Type" and "Mac Creator" (4 bytes and the terminator each) and, optionally, "Mac Comment". Codes
/// are compared byte by byte. The flat functions accept an extension with or without its dot; without a dot, it is
/// truncated to 15 bytes at a character boundary.
#ifndef TAMRIX32_EXTMAP_H
#define TAMRIX32_EXTMAP_H

#include "tamrix32/export.h"

/// One mapping. The record owns nothing: the caller owns all buffers. Set every field to zero before use; the C++
/// constructor does so.
#if defined(TAMRIX_INLINE_RECORD) && defined(__cplusplus)
struct SExtensionMap
#elif defined(__cplusplus)
struct TAMRIX_CLASS SExtensionMap
#else
typedef struct SExtensionMap
#endif
{
#if defined(TAMRIX_INLINE_RECORD) && defined(__cplusplus)
    SExtensionMap() : index(0), extension(0), type(0), creator(0), comment(0), extensionSize(0), commentSize(0) {}
#elif defined(__cplusplus)
    SExtensionMap();
    /// Copies the pointers, not the buffers.
    /// @{
    SExtensionMap(const SExtensionMap&) TAMRIX_DEFAULTED;
    SExtensionMap& operator=(const SExtensionMap&) TAMRIX_DEFAULTED;
    /// @}
#endif
    unsigned int index;  ///< position in an enumeration; 0 starts it
    char* extension;     ///< input of AddExtMap and GetExtMap; output buffer of the enumerations, where it may be null
    char* type;          ///< 4 bytes and the terminator; may be null in EnumExtMap, GetExtMap and GetDefaultExtMap
    char* creator;       ///< as for `type`
    char* comment;       ///< input of AddExtMap; output buffer of the other functions; may be null
    int extensionSize;   ///< size of the extension's output buffer in bytes; 0 means 16
    unsigned int commentSize;  ///< size of the comment's output buffer in bytes; 0 means 256
#ifdef __cplusplus
};
#else
} SExtensionMap;
#endif

/// Writes the mapping of `extension` and returns 1, even if the comment cannot be written. A null comment leaves an
/// existing comment unchanged. Returns 0, with nothing changed, if the extension is null or empty, if a code is null or
/// not exactly 4 bytes long, or if the key cannot be created. Also returns 0 if a code cannot be written; the
/// extension's whole mapping is then removed.
TAMRIX_FUNCTION int TAMRIX_CALL AddExtMap(SExtensionMap* map);
/// Reads the next complete mapping from position `index` on and advances `index`; each mapping is returned once.
/// Returns 1, or 0 at the end or after sixteen consecutive keys of the class root that cannot be read. Extensions are
/// returned without their dot; those longer than 15 bytes are skipped. After a 0, the buffers contain whatever was read
/// last.
TAMRIX_FUNCTION int TAMRIX_CALL EnumExtMap(SExtensionMap* map);
/// Like EnumExtMap, but only returns mappings whose codes equal the first 4 bytes of `type` and `creator`, which are
/// input here and are not changed. Returns 0 if either is null.
TAMRIX_FUNCTION int TAMRIX_CALL EnumExtMapCT(SExtensionMap* map);
/// Copies the configured default codes to `type` and `creator`, if these are not null. If one of the requested defaults
/// is not configured, neither is used: the codes are then "TEXT" and "dosa".
TAMRIX_FUNCTION void TAMRIX_CALL GetDefaultExtMap(SExtensionMap* map);
/// Reads the mapping of `extension` into the buffers that are not null. Returns 1, or 0 if a requested code is missing
/// or malformed; that code's buffer is then undefined. A comment that cannot be read becomes empty. If the extension
/// has no key, the result is 0 and no buffer is changed.
TAMRIX_FUNCTION int TAMRIX_CALL GetExtMap(SExtensionMap* map);
/// Deletes the mapping, and the key too if it is then empty. Always returns 1.
TAMRIX_FUNCTION int TAMRIX_CALL RemoveExtMap(char* extension);

#ifdef __cplusplus

/// 1 if the extension has a complete mapping, otherwise 0. Exported under its C++ name.
TAMRIX_IMPORT int TAMRIX_CALL HasExtMap(char* extension);

class RegKey;

/// A cursor over the mappings. It stores one mapping in strings of its own, enumerates all mappings or those of one
/// creator and type, and writes or deletes the current mapping. Its codes may have any length. Returned strings are
/// valid until the cursor replaces them or is destroyed. A cursor may be used by one thread at a time.
class TAMRIX_CLASS CExtensionMap {
public:
    CExtensionMap();
    /// Copies the strings but not the enumeration. Assignment ends the enumeration of the cursor on its left side.
    /// @{
    CExtensionMap(const CExtensionMap& other);
    CExtensionMap& operator=(const CExtensionMap& other);
    /// @}
    ~CExtensionMap();
    /// Starts or continues an enumeration of all mappings. Returns 1 if a mapping was read, 0 at the end. Extensions
    /// include their dot.
    /// @{
    int First();
    int Next();
    /// @}
    /// Starts an enumeration of the mappings with exactly this creator and type and reads the first one. Returns 0 if
    /// there is none, or if either code is null or longer than 4 bytes. After every step the cursor's codes are the
    /// requested ones.
    int FirstCT(char* creator, char* type);
    /// Reads the next mapping with the cursor's codes, which it truncates to 4 bytes; 0 at the end.
    int NextCT();
    /// Reads creator and type of one extension, with or without its dot. Returns 1 if both exist, otherwise 0 with the
    /// cursor's codes unchanged. Ends an enumeration in progress. Creates the extension's key if it is missing, and
    /// leaves it empty.
    int Find(char* extension);
    /// Replaces each code that the cursor has with the default code.
    void Default();
    /// Writes the cursor's mapping; its extension must include the dot. Removes the stored comment if the cursor has
    /// none. Returns 0 if the key cannot be opened or a code is not set or cannot be written.
    int Create();
    /// Removes the values of the cursor's extension. The key remains, and is created if it is missing. Returns 0 if the
    /// key cannot be opened.
    int Delete();
    /// The cursor's string, or null if it is not set.
    /// @{
    char* Extension();
    char* Type();
    char* Creator();
    char* Comment();
    /// @}
    /// Stores a copy; null clears the string. The text is not checked.
    /// @{
    void SetExtension(char* extension);
    void SetType(char* type);
    void SetCreator(char* creator);
    void SetComment(char* comment);
    /// @}

private:
    friend struct ExtensionMapLayout;
    // The fields of SExtensionMap, in its order; those that a cursor does not use are always 0.
    TAMRIX_MAYBE_UNUSED unsigned int index;
    char* extension;
    char* type;
    char* creator;
    char* comment;
    TAMRIX_MAYBE_UNUSED int extensionSize;
    TAMRIX_MAYBE_UNUSED unsigned int commentSize;
    // Set during an enumeration only.
    RegKey* rootKey;
    RegKey* childKey;
};

#endif
#endif
