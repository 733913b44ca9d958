// The format of a stored mapping. Its values are in the subkey of HKEY_CLASSES_ROOT whose name is the extension with
// its dot. The system stores other values in the same key.
//
//   "Mac Type"     REG_SZ  the type code's 4 bytes and a terminator
//   "Mac Creator"  REG_SZ  the creator code's 4 bytes and a terminator
//   "Mac Comment"  REG_SZ  free text, optional
//
// The default codes are in the settings key, in the same format.
#pragma once

namespace tamrix {

inline constexpr char kTypeValue[] = "Mac Type";
inline constexpr char kCreatorValue[] = "Mac Creator";
inline constexpr char kCommentValue[] = "Mac Comment";
inline constexpr char kDefaultTypeValue[] = "Default Mac Type";
inline constexpr char kDefaultCreatorValue[] = "Default Mac Creator";

inline constexpr int kCodeLength = 4;              // bytes
inline constexpr int kCodeSize = kCodeLength + 1;  // bytes with the terminator

inline constexpr int kExtensionSize = 16;  // an extension with its terminator, without its dot
inline constexpr unsigned kCommentSize = 256;

/// A buffer for a code and its terminator.
using CodeBuffer = char[kCodeSize];

}  // namespace tamrix
