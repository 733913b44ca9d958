// Templates in the configured font, Liberation Mono in 11 points, and without a configured font in the platform's, as
// far as it is available. The test replaces the fonts' metrics, so that the adjusted sizes are the same on every
// system.
#include "windows/scenario.h"

namespace {

using namespace scenarios;
using shipped::dll;
using shipped::function;

const char* const kEditDialog = MAKEINTRESOURCEA(410);

/// Fixed metrics for stock fonts; for others the length of the face's name and the requested height.
BOOL WINAPI metricsOf(HDC context, TEXTMETRICA* metrics) {
    const HGDIOBJ font = GetCurrentObject(context, OBJ_FONT);
    const bool isStock = font == GetStockObject(DEFAULT_GUI_FONT), isSystem = font == GetStockObject(SYSTEM_FONT);
    LOGFONTA made = {};
    GetObjectA(font, sizeof made, &made);
    metrics->tmAveCharWidth = isStock ? 4 : isSystem ? 2 : lstrlenA(made.lfFaceName);
    metrics->tmHeight = isStock || isSystem ? 10 : -made.lfHeight;
    return TRUE;
}

/// The loaded template as "face points width x height".
std::string loaded(HMODULE module, const char* name, int adjustSize) {
    void* const block =
        function<void*(HINSTANCE, const char*, int)>("LoadTemplateWithCorrectFont")(module, name, adjustSize);
    std::string text;
    if (const auto* const words = static_cast<WCHAR*>(block)) {
        const WCHAR* const points = words + 11 + lstrlenW(words + 11) + 1;  // after the title; no menu, no class
        if (*words & DS_SETFONT)
            text = std::string(points + 1, points + 1 + lstrlenW(points + 1)) + ' ' + std::to_string(*points) + ' ';
        text += std::to_string(words[7]) + " x " + std::to_string(words[8]);
    }
    function<void(void*)>("FreeTemplateWithCorrectFont")(block);
    return text;
}

INT_PTR CALLBACK keepAndEnd(HWND dialog, UINT message, WPARAM, LPARAM param) {
    if (message == WM_INITDIALOG) SetWindowLongA(dialog, GWL_USERDATA, param);
    if (message == WM_COMMAND) EndDialog(dialog, GetWindowLongA(dialog, GWL_USERDATA));
    return FALSE;
}

template <typename Result>
Result show(const char* way, const char* name, HWND parent) {
    using Show = Result(HINSTANCE, const char*, DLGPROC, HWND, LPARAM);
    return function<Show>(way)(dll(), name, keepAndEnd, parent, 77);
}

void showTemplates() {
    noted.push_back(std::to_string(show<int>("ATModalDialog", kEditDialog, nullptr)));
    const HWND parent = CreateWindowA("STATIC", "", WS_POPUP, 0, 0, 9, 9, nullptr, nullptr, nullptr, nullptr);
    for (int i = 0; i < 2; ++i, DestroyWindow(parent)) {  // the second time there is no parent any more
        const HWND dialog = show<HWND>("ATNonModalDialog", kEditDialog, parent);
        LOGFONTA made = {};
        GetObjectA(reinterpret_cast<HGDIOBJ>(SendMessageA(dialog, WM_GETFONT, 0, 0)), sizeof made, &made);
        noted.push_back(made.lfFaceName + std::to_string(made.lfHeight) + ' ' +
                        std::to_string(GetWindowLongA(dialog, GWL_USERDATA)) +
                        (GetWindow(dialog, GW_OWNER) ? " owned" : ""));
        DestroyWindow(dialog);
    }
    noted.push_back(loaded(dll(), kEditDialog, 1));
}

TEST(Templates, AreShownInTheConfiguredFont) {
    calls::replace("GetTextMetricsA", reinterpret_cast<const void*>(metricsOf));
    play({showTemplates});
    EXPECT_THAT(noted, testing::ElementsAre("77", "Liberation Mono-15 77 owned", "Liberation Mono-15 77",
                                            "Liberation Mono 11 1240 x 162"));
    EXPECT_EQ(show<int>("ATModalDialog", MAKEINTRESOURCEA(999), nullptr), -1);
    EXPECT_EQ(show<HWND>("ATNonModalDialog", MAKEINTRESOURCEA(999), nullptr), nullptr);
}

// The last of these tests: the process has no font configured from then on.
TEST(Templates, AreInTheDefaultFontWhereTheyHaveNoneOfTheirOwn) {
    const int none = 500, authored = 501, own = 502;
    LOGFONTA gui = {};
    GetObjectA(GetStockObject(DEFAULT_GUI_FONT), sizeof gui, &gui);
    const std::string standard = gui.lfFaceName + std::string(" ") + std::to_string(-gui.lfHeight * 72 / 96);
    const std::tuple<const char*, int, int, int, std::string> rows[] = {
        // the call that fails, the dialog, whether its size is adjusted, the expected template
        {"", 0, none, 0, standard + " 200 x 100"},
        {"", 0, authored, 0, standard + " 200 x 100"},
        {"", 0, own, 1, "Arial 8 200 x 100"},
        {"GetTextMetricsA", 1, authored, 1, standard + " 200 x 100"},  // only one font can be measured
        {"GetTextMetricsA", 2, authored, 1, standard + " 200 x 100"},
        {"CreateFontA", 1, authored, 1, standard + " 200 x 100"},
        {"GetStockObject", 1, authored, 0, "MS Sans Serif 8 200 x 100"},  // the system font only measures
        {"GetStockObject", 1, authored, 1, "MS Sans Serif 8 1400 x 110"},
        {"GetStockObject", 1, none, 1, "200 x 100"},
    };
    play({[] { shipped::enter(DLL_PROCESS_ATTACH); }}, {"RegOpenKeyExA", 2, nullptr});
    for (const auto& [failing, nth, dialog, adjustSize, expected] : rows) {
        play({[&] { noted.push_back(loaded(nullptr, MAKEINTRESOURCEA(dialog), adjustSize)); }},
             {failing, nth, nullptr});
        EXPECT_THAT(noted, testing::ElementsAre(expected)) << failing << nth;
    }
}

}  // namespace

Scenario scenarios::showingTemplates() {
    return {showTemplates};
}
