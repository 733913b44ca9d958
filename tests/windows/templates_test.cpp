// Templates in the configured font, which the DLL found when it was loaded: Liberation Mono in 11 points.
#include "windows/scenario.h"

namespace {

using namespace scenarios;
using shipped::dll;
using shipped::function;

const char* const kEditDialog = MAKEINTRESOURCEA(410);
constexpr int kWidth = 310, kHeight = 108;  // as in the resource, in dialog units

INT_PTR CALLBACK keepAndEnd(HWND dialog, UINT message, WPARAM, LPARAM param) {
    if (message == WM_INITDIALOG) SetWindowLongA(dialog, GWL_USERDATA, param);
    if (message == WM_COMMAND) EndDialog(dialog, GetWindowLongA(dialog, GWL_USERDATA));
    return FALSE;
}

int showModally(const char* name) {
    return function<int(HINSTANCE, const char*, DLGPROC, HWND, LPARAM)>("ATModalDialog")(dll(), name, keepAndEnd,
                                                                                         nullptr, 77);
}

HWND showModelessly(const char* name, HWND parent) {
    return function<HWND(HINSTANCE, const char*, DLGPROC, HWND, LPARAM)>("ATNonModalDialog")(dll(), name, keepAndEnd,
                                                                                             parent, 4711);
}

const Scenario shown{[] {
    noted.push_back(std::to_string(showModally(kEditDialog)));
    const HWND parent = CreateWindowA("STATIC", "", WS_POPUP, 0, 0, 9, 9, nullptr, nullptr, nullptr, nullptr);
    if (const HWND dialog = showModelessly(kEditDialog, parent)) {
        EXPECT_EQ(GetWindow(dialog, GW_OWNER), parent);
        EXPECT_EQ(GetWindowLongA(dialog, GWL_USERDATA), 4711);
        LOGFONTA font = {};
        GetObjectA(reinterpret_cast<HGDIOBJ>(SendMessageA(dialog, WM_GETFONT, 0, 0)), sizeof font, &font);
        noted.push_back(font.lfFaceName + std::to_string(font.lfHeight));
    }
    DestroyWindow(parent);
    const HWND unowned = showModelessly(kEditDialog, parent);
    if (unowned) noted.push_back(GetWindow(unowned, GW_OWNER) ? "owned" : "unowned");
    DestroyWindow(unowned);
    void* const block =
        function<void*(HINSTANCE, const char*, int)>("LoadTemplateWithCorrectFont")(dll(), kEditDialog, 1);
    const auto* const loaded = static_cast<DLGTEMPLATE*>(block);
    if (loaded) noted.push_back(std::to_string(loaded->cx) + " x " + std::to_string(loaded->cy));
    function<void(void*)>("FreeTemplateWithCorrectFont")(block);
}};

/// The size that the platform's own metrics of both fonts ask for.
std::string adjustedSize() {
    const HDC screen = GetDC(nullptr);
    const HFONT font = CreateFontA(-15, 0, 0, 0, 0, 0, 0, 0, DEFAULT_CHARSET, 0, 0, 0, 0, "Liberation Mono");
    TEXTMETRICA wanted, reference;
    const HGDIOBJ former = SelectObject(screen, font);
    GetTextMetricsA(screen, &wanted);
    SelectObject(screen, GetStockObject(DEFAULT_GUI_FONT));
    GetTextMetricsA(screen, &reference);
    SelectObject(screen, former);
    DeleteObject(font);
    ReleaseDC(nullptr, screen);
    return std::to_string(kWidth * (wanted.tmAveCharWidth + 1) / reference.tmAveCharWidth) + " x " +
           std::to_string(kHeight * wanted.tmHeight / reference.tmHeight);
}

TEST(Templates, AreShownInTheConfiguredFont) {
    play(shown);
    EXPECT_THAT(noted, testing::ElementsAre("77", "Liberation Mono-15", "unowned", adjustedSize()));
    EXPECT_EQ(showModally(MAKEINTRESOURCEA(999)), -1);
    EXPECT_EQ(showModelessly(MAKEINTRESOURCEA(999), nullptr), nullptr);
}

TEST(Templates, AreGivenBackWhicheverCallFails) {
    sweep(shown);
}

}  // namespace
