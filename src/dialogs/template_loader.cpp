// Dialog templates in the configured font: gets fonts and metrics from the platform, applies the rules in
// font_choice.h, and shows the dialog.
#include <windows.h>

#include <cstdlib>
#include <memory>
#include <new>
#include <optional>

#include "base/gdi_handles.h"
#include "dialogs/font_choice.h"
#include "dialogs/font_settings.h"
#include "dialogs/template_resource.h"
#include "tamrix32/dialogs.h"

namespace tamrix {
namespace {

using BlockPointer = std::unique_ptr<std::uint8_t[]>;

/// The stock font with whose metrics a new font is compared: the default GUI font, or the system font if that is
/// missing. Only the default GUI font is also the candidate for a template's font.
struct ReferenceFont {
    HGDIOBJ font;
    LOGFONTA description;
    FontChoice candidate;
};

void fetchReferenceFont(ReferenceFont& reference) {
    reference.font = GetStockObject(DEFAULT_GUI_FONT);
    reference.candidate = {nullptr, 0};
    const bool usable = reference.font != nullptr;
    if (!usable) reference.font = GetStockObject(SYSTEM_FONT);
    if (!usable || !GetObjectA(reference.font, sizeof reference.description, &reference.description)) return;
    const WindowContext screen;
    if (!screen) return;
    const int points = MulDiv(std::abs(reference.description.lfHeight), 72, GetDeviceCaps(screen.get(), LOGPIXELSY));
    reference.candidate = {reference.description.lfFaceName, static_cast<std::uint16_t>(points)};
}

std::optional<FontMetrics> measure(HDC context, HGDIOBJ font) {
    TEXTMETRICA metrics;
    const SelectedObject selected(context, font);
    if (!selected || !GetTextMetricsA(context, &metrics)) return std::nullopt;
    return FontMetrics{metrics.tmAveCharWidth, metrics.tmHeight};
}

/// The face in the ANSI code page; null if it cannot be converted.
std::unique_ptr<char[]> ansiFace(TemplateBytes face) {
    const auto wide = reinterpret_cast<LPCWSTR>(face.data());
    const int size = WideCharToMultiByte(CP_ACP, 0, wide, -1, nullptr, 0, nullptr, nullptr);
    if (size <= 0) return nullptr;
    std::unique_ptr<char[]> ansi(new (std::nothrow) char[static_cast<std::size_t>(size)]);
    if (!ansi || WideCharToMultiByte(CP_ACP, 0, wide, -1, ansi.get(), size, nullptr, nullptr) <= 0) return nullptr;
    return ansi;
}

FontHandle createFont(HDC context, const DialogTemplate& dialog) {
    const auto face = ansiFace(dialog.face);
    if (!face) return FontHandle();
    const int height = -MulDiv(dialog.pointSize, GetDeviceCaps(context, LOGPIXELSY), 72);
    return FontHandle(CreateFontA(height, 0, 0, 0, FW_DONTCARE, 0, 0, 0, DEFAULT_CHARSET, OUT_DEFAULT_PRECIS,
                                  CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY, DEFAULT_PITCH | FF_DONTCARE, face.get()));
}

void adjustSizeToFont(DialogTemplate& dialog, HGDIOBJ referenceFont) {
    const WindowContext screen;
    if (!screen) return;
    const FontHandle font = createFont(screen.get(), dialog);
    const auto newFont = measure(screen.get(), font.get());
    if (!newFont) return;
    const auto reference = measure(screen.get(), referenceFont);
    if (!reference) return;
    const DialogSize size = adjustedSize({dialog.cx, dialog.cy}, *newFont, *reference);
    dialog.cx = size.cx;
    dialog.cy = size.cy;
}

/// Sets the template's font and, if requested, adjusts its size. `buffer` stores the face and must outlive the
/// template.
void setFont(DialogTemplate& dialog, WideFace& buffer, bool adjustSize) {
    ReferenceFont reference;
    fetchReferenceFont(reference);
    const FontDecision decision =
        chooseFont(dialogFontSettings.face(), dialogFontSettings.pointSize, dialog, reference.candidate);
    if (decision.font.face) {
        dialog.face = wideFace(decision.font.face, buffer);
        dialog.pointSize = decision.font.points;
    }
    if (adjustSize && decision.mayAdjustSize && !dialog.face.empty()) adjustSizeToFont(dialog, reference.font);
}

/// The rewritten template in a new block, which is 32-bit aligned like every block from the allocator. Its padding is
/// zero, so that the same template always results in the same bytes. The block has one extra byte: a creation data
/// size of 1 includes only the first byte of its own word. A template can end there, but the platform reads the whole
/// word.
BlockPointer templateWithCorrectFont(HINSTANCE module, const char* name, bool adjustSize) {
    std::optional<DialogTemplate> dialog = parseTemplate(dialogResource(module, name));
    if (!dialog) return nullptr;
    WideFace face;
    setFont(*dialog, face, adjustSize);
    const std::size_t size = writeTemplate(*dialog, {});
    BlockPointer block(new (std::nothrow) std::uint8_t[size + 1]());
    if (block) writeTemplate(*dialog, {block.get(), size});
    return block;
}

LPCDLGTEMPLATEA asTemplate(const BlockPointer& block) {
    return reinterpret_cast<LPCDLGTEMPLATEA>(block.get());
}

}  // namespace
}  // namespace tamrix

using namespace tamrix;

void* TAMRIX_CALL LoadTemplateWithCorrectFont(HINSTANCE module, const char* templateName, int adjustSize) {
    return templateWithCorrectFont(module, templateName, adjustSize != 0).release();
}

void TAMRIX_CALL FreeTemplateWithCorrectFont(void* dialogTemplate) {
    BlockPointer(static_cast<std::uint8_t*>(dialogTemplate)).reset();
}

int TAMRIX_CALL ATModalDialog(HINSTANCE module, const char* templateName, DLGPROC dialogProc, HWND parent,
                              LPARAM initParam) {
    const BlockPointer block = templateWithCorrectFont(module, templateName, false);
    if (!block) return -1;
    return static_cast<int>(DialogBoxIndirectParamA(module, asTemplate(block), parent, dialogProc, initParam));
}

HWND TAMRIX_CALL ATNonModalDialog(HINSTANCE module, const char* templateName, DLGPROC dialogProc, HWND parent,
                                  LPARAM initParam) {
    const BlockPointer block = templateWithCorrectFont(module, templateName, false);
    if (!block) return nullptr;
    const HWND owner = IsWindow(parent) ? parent : nullptr;
    return CreateDialogIndirectParamA(module, asTemplate(block), owner, dialogProc, initParam);
}
