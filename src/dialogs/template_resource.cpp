#include "dialogs/template_resource.h"

#include <iterator>

namespace tamrix {
namespace {

/// Some platforms return a value with all bits set on failure.
template <typename Handle>
bool isHandle(Handle handle) {
    return handle && reinterpret_cast<LONG_PTR>(handle) != -1;
}

}  // namespace

TemplateBytes dialogResource(HINSTANCE module, const char* name) {
    const HRSRC resource = FindResourceA(module, name, RT_DIALOG);
    if (!isHandle(resource)) return {};
    const HGLOBAL block = LoadResource(module, resource);
    if (!isHandle(block)) return {};
    const void* data = LockResource(block);
    if (!data) return {};
    return {static_cast<const std::uint8_t*>(data), SizeofResource(module, resource)};
}

TemplateBytes wideFace(const char* face, WideFace& buffer) {
    const int units = MultiByteToWideChar(CP_ACP, MB_PRECOMPOSED, face, -1, reinterpret_cast<LPWSTR>(buffer),
                                          static_cast<int>(std::size(buffer)));
    return {reinterpret_cast<const std::uint8_t*>(buffer), sizeof *buffer * static_cast<std::size_t>(units)};
}

}  // namespace tamrix
