#include "dialogs/font_settings.h"

#include <windows.h>

#include <algorithm>
#include <cstring>

#include "base/settings_key.h"
#include "tamrix32/registry.h"

namespace tamrix {

DialogFontSettings dialogFontSettings;

void loadDialogFontSettings() {
    dialogFontSettings = {};
    RegKey key;
    RegValue face;
    RegValue size;
    if (!key.Open(HKEY_LOCAL_MACHINE, kSettingsPath)) return;
    if (!key.ValueByName("DialogFont", &face) || face.Type() != RegValString || !face.String()) return;
    if (!key.ValueByName("DialogFontSize", &size) || size.Type() != RegValDword) return;
    dialogFontSettings.isConfigured = true;
    dialogFontSettings.pointSize = static_cast<std::uint32_t>(size.Value());
    const std::size_t length = std::min(std::strlen(face.String()), sizeof dialogFontSettings.faceName - 1);
    std::memcpy(dialogFontSettings.faceName, face.String(), length);
}

}  // namespace tamrix
