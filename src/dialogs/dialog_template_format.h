// The two formats of dialog templates, which the platform documents as DLGTEMPLATE with DLGITEMTEMPLATE (standard) and
// DLGTEMPLATEEX with DLGITEMTEMPLATEEX (extended). All integers are little-endian.
//
//   standard                                      extended
//   u32 style, u32 exStyle                        u16 version (1), u16 signature (0xFFFF), u32 helpId
//   u16 itemCount, i16 x, y, cx, cy               u32 exStyle, u32 style, u16 itemCount, i16 x, y, cx, cy
//   menu, window class                            the same
//   title: string                                 the same
//   only with DS_SETFONT in style:                only with DS_SETFONT in style:
//     u16 pointSize, face: string                   u16 pointSize, u16 weight, u8 italic, u8 charset, face: string
//   itemCount times, each from a 32-bit boundary: itemCount times, each from a 32-bit boundary:
//     18 bytes fixed part                           24 bytes fixed part
//     window class, title                           the same
//     u16 size of the creation data, which          u16 size of the creation data, which
//       counts itself unless it is 0                  does not count itself
//
// A string consists of 16-bit units and ends with a zero unit. Menu, window class and a control's title are each a name
// or an ordinal: either 0xFFFF and the ordinal, or a string; an empty string means none. Boundaries are relative to the
// template's start, which is aligned itself.
#pragma once

#include <cstddef>
#include <cstdint>

namespace tamrix {

inline constexpr std::uint16_t kExtendedVersion = 1;
inline constexpr std::uint16_t kExtendedSignature = 0xFFFF;
inline constexpr std::uint16_t kOrdinalMark = 0xFFFF;
inline constexpr std::uint32_t kSetFontStyle = 0x40;  // DS_SETFONT

inline constexpr std::size_t kTemplateAlignment = 4;
inline constexpr std::size_t kStandardItemSize = 18;
inline constexpr std::size_t kExtendedItemSize = 24;

}  // namespace tamrix
