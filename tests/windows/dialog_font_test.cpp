// The font and size of a dialog where no font is configured, by the real platform's stock fonts and without them.
#include <gmock/gmock.h>
#include <windows.h>

#include "dialogs/dialog_template.h"
#include "tamrix32/dialogs.h"
#include "windows/import_hook.h"

namespace {

decltype(&GetStockObject) realStockObject;
int firstMissing;  // of the stock objects' numbers

HGDIOBJ WINAPI stockObject(int index) {
    return index < firstMissing ? realStockObject(index) : nullptr;
}

decltype(&GetTextMetricsA) realTextMetrics;
int failing;  // the call from now on that fails

BOOL WINAPI textMetrics(HDC context, TEXTMETRICA* metrics) {
    return --failing != 0 && realTextMetrics(context, metrics);
}

/// A template as it comes out, "face points width x height". Those of the test are 200 x 100.
std::string loaded(const char* name, bool adjustSize) {
    const auto* const block = static_cast<std::uint8_t*>(LoadTemplateWithCorrectFont(nullptr, name, adjustSize));
    const tamrix::DialogTemplate dialog = *tamrix::parseTemplate({block, 4096});
    std::string text;
    for (std::size_t i = 0; i + 2 < dialog.face.size(); i += 2) text += static_cast<char>(dialog.face[i]);
    FreeTemplateWithCorrectFont(const_cast<std::uint8_t*>(block));
    return text + ' ' + std::to_string(dialog.pointSize) + ' ' + std::to_string(dialog.cx) + " x " +
           std::to_string(dialog.cy);
}

TEST(DialogFont, IsTheDefaultWhereATemplateHasNoneOfItsOwn) {
    const char* const none = MAKEINTRESOURCEA(500);
    const char* const authored = MAKEINTRESOURCEA(501);
    LOGFONTA gui = {};
    GetObjectA(GetStockObject(DEFAULT_GUI_FONT), sizeof gui, &gui);
    const std::string standard = gui.lfFaceName + std::string(" ") + std::to_string(-gui.lfHeight * 72 / 96);
    for (const char* name : {none, authored, "NAMED"}) EXPECT_EQ(loaded(name, false), standard + " 200 x 100");
    EXPECT_EQ(loaded(MAKEINTRESOURCEA(502), true), "Arial 8 200 x 100") << "a font of its own";

    const testing_support::ImportHook hook(nullptr, "gdi32.dll", "GetStockObject",
                                           reinterpret_cast<const void*>(stockObject));
    realStockObject = hook.original<decltype(realStockObject)>();
    firstMissing = DEFAULT_GUI_FONT;
    EXPECT_EQ(loaded(authored, false), "MS Sans Serif 8 200 x 100") << "the system font is for measuring only";
    EXPECT_NE(loaded(authored, true), "MS Sans Serif 8 200 x 100");
    EXPECT_EQ(loaded(none, true), " 0 200 x 100");
    const testing_support::ImportHook metricsHook(nullptr, "gdi32.dll", "GetTextMetricsA",
                                                  reinterpret_cast<const void*>(textMetrics));
    realTextMetrics = metricsHook.original<decltype(realTextMetrics)>();
    for (const int call : {1, 2}) {
        failing = call;
        EXPECT_EQ(loaded(authored, true), "MS Sans Serif 8 200 x 100") << "only one font can be measured";
    }
    firstMissing = SYSTEM_FONT;
    EXPECT_EQ(loaded(authored, true), "MS Sans Serif 8 200 x 100") << "nothing to measure against";
}

}  // namespace
