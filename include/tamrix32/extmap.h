/// @file
/// The store that maps file-name extensions to Macintosh file type and creator codes, kept in the registry: flat
/// functions over a plain record (usable from C), and a cursor class.
///
/// A mapping lives in the key of HKEY_CLASSES_ROOT named by the extension with its dot, in the REG_SZ values "Mac
/// Type", "Mac Creator" (4 bytes and the terminator each) and, optionally, "Mac Comment". Codes compare byte for byte.
/// An extension given without a dot gets one and is cut to 15 bytes at a character's boundary.
#ifndef TAMRIX32_EXTMAP_H
#define TAMRIX32_EXTMAP_H

#include "tamrix32/export.h"

/// One mapping. The record owns nothing: all buffers are the caller's. Set every field to zero to begin with (C++
/// does).
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
    unsigned int index;  ///< position of an enumeration; 0 starts it
    char* extension;     ///< input of AddExtMap and GetExtMap; output buffer of the enumerations, may be null there
    char* type;          ///< buffer of at least 5 bytes, or null where a function allows it
    char* creator;       ///< buffer of at least 5 bytes, or null where a function allows it
    char* comment;       ///< input of AddExtMap; output buffer of the others, may be null
    int extensionSize;   ///< bytes of the extension's output buffer; 0 means 16
    unsigned int commentSize;  ///< bytes of the comment's output buffer; 0 means 256
#ifdef __cplusplus
};
#else
} SExtensionMap;
#endif

/// Writes the mapping of `extension`; an absent comment leaves an existing one alone. 0, with nothing touched, unless
/// the extension is not empty and both codes are exactly 4 bytes; 0, with the extension's whole mapping removed, when a
/// code could not be written.
TAMRIX_FUNCTION int TAMRIX_CALL AddExtMap(SExtensionMap* map);
/// Fetches the next complete mapping from `index` on, each once; 0 at the end, and when the class root refuses sixteen
/// keys in a row. Extensions come without their dot, those over 15 bytes are passed over. After a 0, the buffers hold
/// whatever was examined last.
TAMRIX_FUNCTION int TAMRIX_CALL EnumExtMap(SExtensionMap* map);
/// As EnumExtMap, for the mappings whose codes equal the first 4 bytes of `type` and `creator`, which stay as they are.
TAMRIX_FUNCTION int TAMRIX_CALL EnumExtMapCT(SExtensionMap* map);
/// Fills `type` and `creator`, where present, with the configured default codes, or both with "TEXT" and "dosa".
TAMRIX_FUNCTION void TAMRIX_CALL GetDefaultExtMap(SExtensionMap* map);
/// Reads the mapping of `extension` into the buffers that are present. 0 when a code is missing or malformed (its
/// buffer is then undefined); a comment that cannot be read is empty.
TAMRIX_FUNCTION int TAMRIX_CALL GetExtMap(SExtensionMap* map);
/// Deletes the mapping, and the key when nothing else is left in it. Always 1.
TAMRIX_FUNCTION int TAMRIX_CALL RemoveExtMap(char* extension);

#ifdef __cplusplus

/// 1 when the extension has a complete mapping. Exported under its C++ name.
TAMRIX_IMPORT int TAMRIX_CALL HasExtMap(char* extension);

class RegKey;

/// A cursor that holds one mapping at a time in strings of its own, walks all mappings or those of one creator and
/// type, and writes or deletes the held one. It takes codes of any length. Handed-out strings live until the cursor
/// replaces them or is destroyed. One thread at a time.
class TAMRIX_CLASS CExtensionMap {
public:
    CExtensionMap();
    /// Copies the held strings, not a pass; the assigned cursor's own pass ends.
    /// @{
    CExtensionMap(const CExtensionMap& other);
    CExtensionMap& operator=(const CExtensionMap& other);
    /// @}
    ~CExtensionMap();
    /// Starts a pass over all mappings, or goes on with it; 1 when one was fetched. Extensions are held with their dot.
    /// @{
    int First();
    int Next();
    /// @}
    /// Starts a pass over the mappings with exactly this creator and type; 0 when either is null or longer than 4
    /// bytes. After every step the held codes are the wanted ones.
    int FirstCT(char* creator, char* type);
    /// Goes on to the next mapping with the held codes; 0 at the end.
    int NextCT();
    /// Loads creator and type of one extension, with or without its dot; 1 when it has both, else 0 with the held codes
    /// unchanged. Ends any pass. A missing extension's key is created and stays behind empty.
    int Find(char* extension);
    /// Replaces the held codes, where held, by the defaults.
    void Default();
    /// Writes the held mapping under the held extension, which needs its dot; removes the comment when none is held.
    int Create();
    /// Removes the held extension's values; its key stays (or is created). 0 when the key cannot be opened.
    int Delete();
    /// The held string, or null.
    /// @{
    char* Extension();
    char* Type();
    char* Creator();
    char* Comment();
    /// @}
    /// Holds a copy from now on; null holds none. Nothing is checked.
    /// @{
    void SetExtension(char* extension);
    void SetType(char* type);
    void SetCreator(char* creator);
    void SetComment(char* comment);
    /// @}

private:
    friend struct ExtensionMapLayout;
    // The fields of SExtensionMap, in its order; those that a cursor has no use for are always 0.
    TAMRIX_MAYBE_UNUSED unsigned int index;
    char* extension;
    char* type;
    char* creator;
    char* comment;
    TAMRIX_MAYBE_UNUSED int extensionSize;
    TAMRIX_MAYBE_UNUSED unsigned int commentSize;
    // Both held during a pass only.
    RegKey* rootKey;
    RegKey* childKey;
};

#endif
#endif
