// Dialogs in the configured font on the real platform: the library's own templates, and others in the test program.
#include <gmock/gmock.h>
#include <windows.h>

#include <cstring>

#include "dialogs/dialog_template.h"
#include "frame/settings.h"
#include "tamrix32/dialogs.h"
#include "template_builder.h"
#include "windows/call_watch.h"
#include "windows/import_hook.h"

namespace tamrix {
namespace {

using testing::ElementsAreArray;
using testing_support::Bytes;
using testing_support::ImportHook;
using testing_support::Units;

struct Control {
    unsigned id;
    std::uint16_t classOrdinal;
    Units text;
    std::uint32_t style;
    int x, y, cx, cy;
};

struct OwnDialog {
    int id;
    std::size_t size;
    Units title;
    int cx, cy;
    std::vector<Control> controls;
};

constexpr std::uint16_t kButton = 0x80, kEdit = 0x81, kStatic = 0x82, kListBox = 0x83;

const OwnDialog kOwnDialogs[] = {
    {410,
     540,
     u"Edit File Extension Mapping",
     310,
     108,
     {
         {360, kStatic, u"Creator:", 0x50020002, 5, 5, 30, 10},
         {380, kEdit, u"", 0x50000800, 40, 5, 30, 12},
         {359, kStatic, u"Type:", 0x50020002, 5, 17, 30, 10},
         {379, kEdit, u"", 0x50000800, 40, 17, 30, 12},
         {420, kStatic, u"Extension", 0x50020000, 5, 32, 35, 10},
         {421, kStatic, u"Comment", 0x50020000, 120, 32, 30, 10},
         {414, kListBox, u"", 0x50A11183, 5, 43, 300, 43},
         {417, kButton, u"&Help", 0x50010000, 5, 89, 40, 14},
         {415, kButton, u"&Add", 0x50010000, 48, 89, 75, 14},
         {416, kButton, u"&Remove", 0x50010000, 125, 89, 75, 14},
         {1, kButton, u"&OK", 0x50010000, 203, 89, 50, 14},
         {2, kButton, u"&Cancel", 0x50010001, 255, 89, 50, 14},
     }},
    {411,
     472,
     u"Add Filename Extension Mapping",
     180,
     82,
     {
         {360, kStatic, u"Creator:", 0x50020002, 5, 5, 30, 10},
         {380, kEdit, u"", 0x50000800, 40, 5, 30, 12},
         {359, kStatic, u"Type:", 0x50020002, 5, 19, 30, 10},
         {379, kEdit, u"", 0x50000800, 40, 19, 30, 12},
         {420, kStatic, u"E&xtension:", 0x50020002, 5, 33, 35, 10},
         {418, kEdit, u"", 0x50810080, 45, 32, 80, 12},
         {421, kStatic, u"Commen&t:", 0x50020002, 5, 47, 35, 10},
         {419, kEdit, u"", 0x50810080, 45, 46, 130, 12},
         {1, kButton, u"&OK", 0x50010000, 92, 63, 40, 14},
         {2, kButton, u"&Cancel", 0x50010001, 135, 63, 40, 14},
     }},
};

Bytes expectedBytes(const OwnDialog& dialog) {
    Bytes bytes;
    testing_support::put32(bytes, 0x90C820C0);
    testing_support::put32(bytes, 0);
    testing_support::put16(bytes, static_cast<unsigned>(dialog.controls.size()));
    for (const int place : {40, 40, dialog.cx, dialog.cy}) testing_support::put16(bytes, static_cast<unsigned>(place));
    for (const Units& name : {Units(), Units(), dialog.title}) testing_support::putName(bytes, name);
    testing_support::put16(bytes, 8);
    testing_support::putName(bytes, u"MS Sans Serif");
    for (const Control& control : dialog.controls) {
        while (bytes.size() % 4) bytes.push_back(0);
        testing_support::put32(bytes, control.style);
        testing_support::put32(bytes, 0);
        for (const int place : {control.x, control.y, control.cx, control.cy})
            testing_support::put16(bytes, static_cast<unsigned>(place));
        testing_support::put16(bytes, control.id);
        testing_support::putName(bytes, {0xFFFF, control.classOrdinal});
        testing_support::putName(bytes, control.text);
        testing_support::put16(bytes, 0);
    }
    return bytes;
}

TEST(OwnTemplates, HoldExactlyTheirControls) {
    for (const OwnDialog& dialog : kOwnDialogs) {
        SCOPED_TRACE(dialog.id);
        const HRSRC resource = FindResourceA(nullptr, MAKEINTRESOURCEA(dialog.id), RT_DIALOG);
        const auto* data = static_cast<const std::uint8_t*>(LockResource(LoadResource(nullptr, resource)));
        ASSERT_NE(data, nullptr);
        const Bytes bytes(data, data + SizeofResource(nullptr, resource));
        EXPECT_EQ(bytes.size(), dialog.size);
        EXPECT_THAT(bytes, ElementsAreArray(expectedBytes(dialog)));
    }
}

/// What the platform says about its stock fonts, while a test runs.
struct StockFonts {
    bool hasGuiFont = true;
    bool hasSystemFont = true;
    bool describesFonts = true;
    LONG height = -11;
    char face[LF_FACESIZE] = "Candidate";
} stockFonts;

decltype(&GetStockObject) realGetStockObject;

HGDIOBJ WINAPI fakeGetStockObject(int index) {
    if (index == DEFAULT_GUI_FONT && !stockFonts.hasGuiFont) return nullptr;
    if (index == SYSTEM_FONT && !stockFonts.hasSystemFont) return nullptr;
    return realGetStockObject(index);
}

int WINAPI fakeGetObject(HANDLE, int size, void* description) {
    if (!stockFonts.describesFonts || size != sizeof(LOGFONTA)) return 0;
    auto* const font = static_cast<LOGFONTA*>(description);
    *font = {};
    font->lfHeight = stockFonts.height;
    std::strcpy(font->lfFaceName, stockFonts.face);
    return size;
}

template <typename Function>
const void* addressOf(Function* function) {
    return reinterpret_cast<const void*>(function);
}

class LoadedTemplate : public testing::Test {
protected:
    LoadedTemplate() {
        EXPECT_TRUE(getStockObject.installed() && getObject.installed());
        stockFonts = StockFonts{};
        realGetStockObject = getStockObject.original<decltype(&GetStockObject)>();
    }
    ~LoadedTemplate() override {
        dialogFontSettings = {};
        expectNothingOpen();
    }

    void expectNothingOpen() const {
        EXPECT_EQ(watchGetDC.succeeded(), watchReleaseDC.succeeded());
        EXPECT_EQ(watchCreateFontA.succeeded(), watchDeleteObject.succeeded());
    }

    void givenConfiguredFont(const char* face, std::uint32_t points) {
        std::strcpy(configuredFace, face);
        dialogFontSettings = {configuredFace, points};
    }

    /// The font and size that a template comes out with, as "face points cx x cy".
    std::string loaded(const char* name, bool adjustSize = false) {
        void* const block = LoadTemplateWithCorrectFont(nullptr, name, adjustSize);
        if (!block) return "missing";
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(block) % 4, 0U);
        CDialogTemplate standard;
        CDialogTemplateEx extended;
        CDialogTemplate& dialog = marksExtended({static_cast<std::uint8_t*>(block), 4}) ? extended : standard;
        dialog.dataSize = 4096;
        EXPECT_EQ(dialog.parse(block), 1);
        FreeTemplateWithCorrectFont(block);
        std::string text = "no font";
        if (dialog.faceName) {
            text.clear();
            for (const char16_t* unit = dialog.faceName; *unit; ++unit) text += static_cast<char>(*unit);
            text += " " + std::to_string(dialog.pointSize);
        }
        return text + " " + std::to_string(dialog.cx) + " x " + std::to_string(dialog.cy);
    }

    char configuredFace[LF_FACESIZE];
    ImportHook getStockObject{nullptr, "gdi32.dll", "GetStockObject", addressOf(fakeGetStockObject)};
    ImportHook getObject{nullptr, "gdi32.dll", "GetObjectA", addressOf(fakeGetObject)};
    TAMRIX_WATCH("user32.dll", GetDC);
    TAMRIX_WATCH("user32.dll", ReleaseDC);
    TAMRIX_WATCH("gdi32.dll", CreateFontA);
    TAMRIX_WATCH("gdi32.dll", DeleteObject);
};

const char* const kNoFont = MAKEINTRESOURCEA(500);
const char* const kAuthored = MAKEINTRESOURCEA(501);
const char* const kArial = MAKEINTRESOURCEA(502);

TEST_F(LoadedTemplate, GetsTheConfiguredFontOrTheDefaultForNoneOfItsOwn) {
    const char* const names[] = {kNoFont, kAuthored, "NAMED", kArial};
    for (const char* name : names)
        EXPECT_EQ(loaded(name), name == kArial ? "Arial 8 200 x 100" : "Candidate 8 200 x 100")
            << "11 pixels of 96 to the inch are 8.25 points";
    stockFonts.height = 16;
    EXPECT_EQ(loaded(kNoFont), "Candidate 12 200 x 100") << "a height with leading counts the same";
    givenConfiguredFont("Courier New", 10 + 65536);
    for (const char* name : names) EXPECT_EQ(loaded(name), "Courier New 10 200 x 100");
    givenConfiguredFont("Courier New", 0);
    EXPECT_EQ(loaded(kArial), "Arial 8 200 x 100");
}

TEST_F(LoadedTemplate, KeepsWhatItHasWhenThereIsNoDefaultFont) {
    for (const StockFonts& fonts : {StockFonts{.describesFonts = false}, StockFonts{.hasGuiFont = false},
                                    StockFonts{.hasGuiFont = false, .hasSystemFont = false}}) {
        stockFonts = fonts;
        const bool adjust = !fonts.hasSystemFont;
        EXPECT_EQ(loaded(kAuthored, adjust), "MS Sans Serif 8 200 x 100") << "the system font only measures";
        EXPECT_EQ(loaded(kNoFont, adjust), "no font 200 x 100");
    }
}

/// The size that the platform's own metrics ask for, taken with a font and a device context of the test.
std::string sizeFor(const char* face, int points, int referenceStock) {
    const HDC screen = GetDC(nullptr);
    const int height = -MulDiv(points, GetDeviceCaps(screen, LOGPIXELSY), 72);
    const HFONT font = CreateFontA(height, 0, 0, 0, 0, 0, 0, 0, DEFAULT_CHARSET, 0, 0, 0, 0, face);
    TEXTMETRICA newMetrics, reference;
    const HGDIOBJ former = SelectObject(screen, font);
    GetTextMetricsA(screen, &newMetrics);
    SelectObject(screen, realGetStockObject(referenceStock));
    GetTextMetricsA(screen, &reference);
    SelectObject(screen, former);
    DeleteObject(font);
    ReleaseDC(nullptr, screen);
    return std::to_string(200 * (newMetrics.tmAveCharWidth + 1) / reference.tmAveCharWidth) + " x " +
           std::to_string(100 * newMetrics.tmHeight / reference.tmHeight);
}

TEST_F(LoadedTemplate, FollowsItsNewFontInSizeWhenAsked) {
    givenConfiguredFont("Arial", 20);
    EXPECT_EQ(loaded(kArial, true), "Arial 20 " + sizeFor("Arial", 20, DEFAULT_GUI_FONT));
    EXPECT_NE(loaded(kArial, true), "Arial 20 200 x 100");
    EXPECT_EQ(loaded(kArial, false), "Arial 20 200 x 100");
    stockFonts.hasGuiFont = false;
    EXPECT_EQ(loaded(kArial, true), "Arial 20 " + sizeFor("Arial", 20, SYSTEM_FONT));
    stockFonts.hasSystemFont = false;
    EXPECT_EQ(loaded(kArial, true), "Arial 20 200 x 100") << "nothing to measure against";
    dialogFontSettings = {};
    stockFonts = {};
    EXPECT_EQ(loaded(kArial, true), "Arial 8 200 x 100") << "a font of its own";
}

TEST_F(LoadedTemplate, KeepsItsSizeWhereTheFontsCannotBeMeasured) {
    TAMRIX_WATCH("gdi32.dll", GetTextMetricsA);
    TAMRIX_WATCH("kernel32.dll", WideCharToMultiByte);
    givenConfiguredFont("Arial", 20);
    const auto expectKept = [this](auto& watch, int call, const char* reason) {
        ASSERT_TRUE(watch.installed()) << reason;
        watch.failNth(call);
        EXPECT_EQ(loaded(kArial, true), "Arial 20 200 x 100") << reason;
        EXPECT_TRUE(watch.failed()) << reason;
        expectNothingOpen();
    };
    expectKept(watchGetDC, 2, "no screen to measure on; the first one is for the default font's size");
    expectKept(watchWideCharToMultiByte, 1, "the face's length");
    expectKept(watchWideCharToMultiByte, 2, "the face");
    expectKept(watchCreateFontA, 1, "no font");
    expectKept(watchGetTextMetricsA, 1, "the new font");
    expectKept(watchGetTextMetricsA, 2, "the reference font");
    EXPECT_NE(loaded(kArial, true), "Arial 20 200 x 100") << "with nothing failing";
}

TEST_F(LoadedTemplate, IsTheSameEachTimeAndLeavesNothingOpen) {
    givenConfiguredFont("Tahoma", 11);  // a name of that length leaves padding behind it
    for (int round = 0; round < 200; ++round) {
        void* const one = LoadTemplateWithCorrectFont(nullptr, MAKEINTRESOURCEA(410), 1);
        void* const other = LoadTemplateWithCorrectFont(nullptr, MAKEINTRESOURCEA(410), 1);
        CDialogTemplate dialog;
        dialog.dataSize = 4096;
        ASSERT_EQ(dialog.parse(one), 1);
        ASSERT_EQ(dialog.itemsSize, 432U);
        ASSERT_EQ(std::memcmp(one, other, static_cast<std::size_t>(dialog.write(nullptr, 0))), 0);
        FreeTemplateWithCorrectFont(one);
        FreeTemplateWithCorrectFont(other);
    }
    FreeTemplateWithCorrectFont(nullptr);
}

/// Ends with the number that it is started with.
INT_PTR CALLBACK endingProc(HWND dialog, UINT message, WPARAM, LPARAM lParam) {
    if (message == WM_INITDIALOG) EndDialog(dialog, lParam);
    return FALSE;
}

INT_PTR CALLBACK stayingProc(HWND dialog, UINT message, WPARAM, LPARAM lParam) {
    if (message == WM_INITDIALOG) SetWindowLongA(dialog, GWL_USERDATA, lParam);
    return FALSE;
}

TEST(ShownTemplate, RunsModallyAndGivesItsResult) {
    EXPECT_EQ(ATModalDialog(nullptr, kArial, endingProc, nullptr, 77), 77);
    EXPECT_EQ(ATModalDialog(nullptr, "NAMED", endingProc, nullptr, -5), -5);
    EXPECT_EQ(ATModalDialog(nullptr, MAKEINTRESOURCEA(999), endingProc, nullptr, 77), -1);
    EXPECT_EQ(ATNonModalDialog(nullptr, MAKEINTRESOURCEA(999), stayingProc, nullptr, 0), nullptr);
}

TEST(ShownTemplate, IsOwnedByItsParentAndInTheConfiguredFont) {
    const HWND parent = CreateWindowA("STATIC", "", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr, nullptr, nullptr);
    char face[] = "Liberation Mono";
    dialogFontSettings = {face, 13};
    const HWND dialog = ATNonModalDialog(nullptr, kArial, stayingProc, parent, 4711);
    dialogFontSettings = {};
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(GetWindow(dialog, GW_OWNER), parent);
    EXPECT_EQ(GetWindowLongA(dialog, GWL_USERDATA), 4711);
    LOGFONTA font = {};
    GetObjectA(reinterpret_cast<HGDIOBJ>(SendDlgItemMessageA(dialog, IDCANCEL, WM_GETFONT, 0, 0)), sizeof font, &font);
    EXPECT_STREQ(font.lfFaceName, "Liberation Mono");
    DestroyWindow(dialog);
    DestroyWindow(parent);
}

}  // namespace
}  // namespace tamrix
