// Dialogs in the configured font, measured and shown by the real platform.
#include <gmock/gmock.h>

#include "dialogs/dialog_template.h"
#include "frame/settings.h"
#include "tamrix32/dialogs.h"
#include "windows/import_hook.h"

namespace {

using namespace tamrix;

const char* const kNoFont = MAKEINTRESOURCEA(500);
const char* const kAuthored = MAKEINTRESOURCEA(501);
const char* const kArial = MAKEINTRESOURCEA(502);

decltype(&GetStockObject) realStockObject;
int firstMissing;  // of the stock objects' numbers

HGDIOBJ WINAPI stockObject(int index) {
    return index < firstMissing ? realStockObject(index) : nullptr;
}

std::string described(const std::string& face, int points, int cx, int cy) {
    return face + " " + std::to_string(points) + " " + std::to_string(cx) + " x " + std::to_string(cy);
}

/// The font and size with which a template comes out.
std::string loaded(const char* name, bool adjustSize) {
    auto* const block = static_cast<std::uint8_t*>(LoadTemplateWithCorrectFont(nullptr, name, adjustSize));
    CDialogTemplate standard;
    CDialogTemplateEx extended;
    CDialogTemplate& dialog = marksExtended({block, 4}) ? extended : standard;
    dialog.dataSize = 4096;
    EXPECT_EQ(dialog.parse(block), 1);
    FreeTemplateWithCorrectFont(block);
    const std::u16string face = dialog.faceName ? dialog.faceName : u"";
    return described({face.begin(), face.end()}, face.empty() ? 0 : dialog.pointSize, dialog.cx, dialog.cy);
}

/// What the platform says of a font of 200 x 100 dialog units, taken by the test itself.
std::string measured(const char* face, int points, int referenceStock) {
    const HDC screen = GetDC(nullptr);
    const int height = -MulDiv(points, GetDeviceCaps(screen, LOGPIXELSY), 72);
    const HFONT font = CreateFontA(height, 0, 0, 0, 0, 0, 0, 0, DEFAULT_CHARSET, 0, 0, 0, 0, face);
    TEXTMETRICA ours, reference;
    const HGDIOBJ former = SelectObject(screen, font);
    GetTextMetricsA(screen, &ours);
    SelectObject(screen, GetStockObject(referenceStock));
    GetTextMetricsA(screen, &reference);
    SelectObject(screen, former);
    DeleteObject(font);
    ReleaseDC(nullptr, screen);
    return described(face, points, 200 * (ours.tmAveCharWidth + 1) / reference.tmAveCharWidth,
                     100 * ours.tmHeight / reference.tmHeight);
}

INT_PTR CALLBACK dialogProc(HWND dialog, UINT message, WPARAM, LPARAM lParam) {
    if (message == WM_INITDIALOG && lParam) EndDialog(dialog, lParam);
    return FALSE;
}

TEST(DialogFont, IsTheConfiguredOneThenTheDefaultAndTheSizeFollows) {
    LOGFONTA gui = {};
    GetObjectA(GetStockObject(DEFAULT_GUI_FONT), sizeof gui, &gui);
    const std::string standard = described(gui.lfFaceName, -gui.lfHeight * 72 / 96, 200, 100);
    for (const char* name : {kNoFont, kAuthored, "NAMED"}) EXPECT_EQ(loaded(name, false), standard);
    EXPECT_EQ(loaded(kArial, true), "Arial 8 200 x 100") << "a font of its own";
    char face[] = "Courier New";
    dialogFontSettings = {face, 20};
    for (const char* name : {kNoFont, "NAMED", kArial}) {
        EXPECT_EQ(loaded(name, false), "Courier New 20 200 x 100");
        EXPECT_EQ(loaded(name, true), measured(face, 20, DEFAULT_GUI_FONT));
    }
    const std::string bySystemFont = measured(face, 20, SYSTEM_FONT);
    const testing_support::ImportHook hook(nullptr, "gdi32.dll", "GetStockObject",
                                           reinterpret_cast<const void*>(stockObject));
    realStockObject = hook.original<decltype(realStockObject)>();
    firstMissing = DEFAULT_GUI_FONT;
    EXPECT_EQ(loaded(kArial, true), bySystemFont);
    firstMissing = SYSTEM_FONT;
    EXPECT_EQ(loaded(kArial, true), "Courier New 20 200 x 100") << "nothing to measure against";
    dialogFontSettings = {};
    EXPECT_EQ(loaded(kAuthored, true), "MS Sans Serif 8 200 x 100") << "no default font";
    EXPECT_EQ(loaded(kNoFont, true), " 0 200 x 100");
}

TEST(DialogFont, IsSeenOnTheScreen) {
    const HWND parent = CreateWindowA("STATIC", "", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr, nullptr, nullptr);
    char face[] = "Liberation Mono";
    dialogFontSettings = {face, 13};
    const HWND dialog = ATNonModalDialog(nullptr, kArial, dialogProc, parent, 0);
    dialogFontSettings = {};
    EXPECT_EQ(GetWindow(dialog, GW_OWNER), parent);
    LOGFONTA font = {};
    GetObjectA(reinterpret_cast<HGDIOBJ>(SendDlgItemMessageA(dialog, IDCANCEL, WM_GETFONT, 0, 0)), sizeof font, &font);
    EXPECT_STREQ(font.lfFaceName, "Liberation Mono");
    DestroyWindow(parent);
    EXPECT_EQ(ATModalDialog(nullptr, "NAMED", dialogProc, nullptr, -5), -5);
    EXPECT_EQ(ATModalDialog(nullptr, MAKEINTRESOURCEA(999), dialogProc, nullptr, -5), -1);
    EXPECT_EQ(ATNonModalDialog(nullptr, MAKEINTRESOURCEA(999), dialogProc, nullptr, 0), nullptr);
}

}  // namespace
