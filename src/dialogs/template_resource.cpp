// What a dialog template takes from the platform: its resource, and its typeface converted from the ANSI code page.
#include <windows.h>

#include <new>

#include "dialogs/dialog_template.h"
#include "dialogs/dialog_template_format.h"

namespace tamrix {
namespace {

/// Some platforms fail with all ones.
template <typename Handle>
bool isHandle(Handle handle) {
    return handle && reinterpret_cast<LONG_PTR>(handle) != -1;
}

/// The bytes of a dialog resource, which stay mapped as long as the module; empty when there is none.
std::span<const std::uint8_t> dialogResource(HINSTANCE module, const char* name) {
    const HRSRC resource = FindResourceA(module, name, RT_DIALOG);
    if (!isHandle(resource)) return {};
    const HGLOBAL block = LoadResource(module, resource);
    if (!isHandle(block)) return {};
    const void* data = LockResource(block);
    if (!data) return {};
    return {static_cast<const std::uint8_t*>(data), SizeofResource(module, resource)};
}

}  // namespace

int CDialogTemplate::loadFormat(void* module, const char* name, bool extended) {
    const auto bytes = dialogResource(static_cast<HINSTANCE>(module), name);
    if (bytes.empty() || marksExtended(bytes) != extended) return 0;
    dataSize = static_cast<std::uint32_t>(bytes.size());
    return parse(bytes.data());
}

int CDialogTemplate::load(void* module, const char* name) {
    return loadFormat(module, name, false);
}

int CDialogTemplateEx::load(void* module, const char* name) {
    return loadFormat(module, name, true);
}

int CDialogTemplate::setFaceName(const char* name) {
    delete[] faceName;
    faceName = nullptr;
    int converted = 0;
    const int needed = MultiByteToWideChar(CP_ACP, MB_PRECOMPOSED, name, -1, nullptr, 0);
    if (needed > 0) {
        faceName = new (std::nothrow) char16_t[static_cast<std::size_t>(needed)];
        if (faceName)
            converted =
                MultiByteToWideChar(CP_ACP, MB_PRECOMPOSED, name, -1, reinterpret_cast<LPWSTR>(faceName), needed);
        if (converted == needed) {
            style |= kSetFontStyle;
            hasFont = 1;
            return needed;
        }
    }
    delete[] faceName;
    faceName = nullptr;
    style &= ~kSetFontStyle;
    hasFont = 0;
    return converted;
}

}  // namespace tamrix
