// The about box as an old client shows it, modally, modelessly and as a derived class that has replaced every slot.
#include "windows/scenario.h"

namespace {

using namespace scenarios;
using shipped::dll;
using shipped::function;
using shipped::member;
using shipped::slot;

/// A box by the places of its fields.
struct Box {
    void** slots;
    int flyerCount, walkerCount, textTop, lineHeight;
    UINT timerId, timerPeriod;
    COLORREF textColor, backColor;
    void* lines;
    HWND window;
    HPALETTE palette;
    HBITMAP frame, strip, pictures[4];
    HGLOBAL text;
    int pictureIndex, topLine, lineCount, modal;
    RECT frameRect;
    char creditsFace[32];
    void *flyers, *walkers;
};
static_assert(sizeof(Box) == 148);

enum Slot {
    kDestructor,
    kInvoke,
    kRevoke,
    kAnimate,
    kCanClose,
    kDoTimer,
    kDialogDestroyed,
    kInitDialog,
    kPaint,
    kParseText
};
const char* const kSlotNames[] = {"deleted", "invoke",          "revoke",     "animate", "canClose",
                                  "doTimer", "dialogDestroyed", "initDialog", "paint",   "parseText"};
/// What the derived class does after the library's own operation, and gives as its result.
std::map<int, std::function<int(Box*)>> inSlot;

template <int index, typename... Arguments>
int __thiscall derivedSlot(Box* box, Arguments... arguments) {
    noted.push_back(kSlotNames[index]);
    void* const own = function<void*>("??_7CAboutQuillonAppleTalk@@6B@")[index];
    const int result = reinterpret_cast<int(__thiscall*)(Box*, Arguments...)>(own)(box, arguments...);
    const auto derived = inSlot.find(index);
    return derived == inSlot.end() ? result : derived->second(box);
}

/// A new box of the derived class; null without memory. A modeless box frees itself, so its memory is the library's.
Box* newBox(int textId = 0, HMODULE module = nullptr) {
    static void* slots[] = {
        reinterpret_cast<void*>(derivedSlot<kDestructor, int>), reinterpret_cast<void*>(derivedSlot<kInvoke, int>),
        reinterpret_cast<void*>(derivedSlot<kRevoke>),          reinterpret_cast<void*>(derivedSlot<kAnimate>),
        reinterpret_cast<void*>(derivedSlot<kCanClose>),        reinterpret_cast<void*>(derivedSlot<kDoTimer, int>),
        reinterpret_cast<void*>(derivedSlot<kDialogDestroyed>), reinterpret_cast<void*>(derivedSlot<kInitDialog, HWND>),
        reinterpret_cast<void*>(derivedSlot<kPaint, HDC>),      reinterpret_cast<void*>(derivedSlot<kParseText>)};
    const auto allocate = reinterpret_cast<void*(__cdecl*)(std::size_t)>(calls::imported("malloc"));
    auto* const box = static_cast<Box*>(allocate(sizeof(Box)));
    if (!box) return nullptr;
    member<void*>("??0CAboutQuillonAppleTalk@@QAE@HPAX@Z", box, textId, static_cast<void*>(module));
    box->slots = slots;
    return box;
}

void invoke(Box* box, int modal) {
    slot<void __thiscall(Box*, int)>(box, kInvoke)(box, modal);
}
void deleteBox(Box* box) {
    slot<void __thiscall(Box*, int)>(box, kDestructor)(box, 1);
}
void animate(Box* box) {
    slot<void __thiscall(Box*)>(box, kAnimate)(box);
}

int __cdecl steadyRand() {
    return 8;  // sends each walker off at once, so that all frames make the same calls
}

class AboutBox : public testing::Test {
protected:
    AboutBox() {
        inSlot.clear();
        calls::hook(dll());
        calls::replace("rand", reinterpret_cast<const void*>(steadyRand));
        inSlot[kInitDialog] = [this](Box* box) {
            window = box->window;
            EXPECT_TRUE(box->lines && box->frame && box->strip && box->text && box->flyers && box->walkers &&
                        box->creditsFace[0] && std::count(box->pictures, box->pictures + 4, nullptr) == 0);
            return 1;
        };
        inSlot[kCanClose] = [this](Box*) { return closable; };
    }

    /// Shows a new box modelessly; where no window is made it is deleted.
    void showModelessly() {
        window = nullptr;
        Box* const box = newBox();
        if (!box) return;
        invoke(box, 0);
        if (!box->window) deleteBox(box);
    }
    void send(UINT message, WPARAM parameter = 0) { SendMessageA(window, message, parameter, 0); }
    void pump(DWORD milliseconds) {
        const DWORD start = GetTickCount();
        for (MSG message; GetTickCount() - start < milliseconds; Sleep(5))
            while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageA(&message);
    }

    HWND window = nullptr;
    int closable = 1;
};

using testing::ElementsAre;

TEST_F(AboutBox, ModelessIsAskedBeforeItGoesAndDeletesItselfOnce) {
    const std::pair<UINT, WPARAM> ways[] = {{WM_KEYDOWN, 'A'}, {WM_LBUTTONDOWN, 0}, {WM_COMMAND, 7}, {WM_KILLFOCUS, 0}};
    for (const auto& [message, parameter] : ways) {
        play({[&, message = message, parameter = parameter] {
            closable = 0;
            showModelessly();
            send(message, parameter);
            closable = 1;
            send(message, parameter);
        }});
        EXPECT_THAT(noted, ElementsAre("invoke", "initDialog", "animate", "canClose", "canClose", "revoke",
                                       "dialogDestroyed", "deleted"))
            << message;
    }
}

int WINAPI smallScreen(int index) {
    return index == SM_CXSCREEN ? 400 : index == SM_CYSCREEN ? 300 : 0;
}

TEST_F(AboutBox, OpensInTheMiddleAndShowsAFrameThreeTimesASecond) {
    calls::replace("GetSystemMetrics", reinterpret_cast<const void*>(smallScreen));
    const auto counts = play({[&] {
        showModelessly();
        RECT place, inside;
        GetWindowRect(window, &place);
        GetClientRect(window, &inside);
        EXPECT_EQ(std::vector<LONG>(&place.left, &place.left + 4), (std::vector<LONG>{-6, -56, 405, 355}));
        EXPECT_TRUE(inside.right == 411 && inside.bottom == 411 && IsWindowVisible(window) && GetFocus() == window);
        EXPECT_TRUE(SendMessageA(window, WM_GETICON, ICON_BIG, 0) && SendMessageA(window, WM_GETICON, ICON_SMALL, 0));
        UpdateWindow(window);
        send(WM_TIMER, 2);  // somebody else's
        EXPECT_FALSE(GetUpdateRect(window, nullptr, FALSE));
        noted.clear();
        pump(1150);
        EXPECT_THAT(noted, ElementsAre("doTimer", "animate", "paint", "doTimer", "animate", "paint", "doTimer",
                                       "animate", "paint"));
        DestroyWindow(window);
    }});
    calls::replace("GetSystemMetrics", reinterpret_cast<const void*>(GetSystemMetrics));
    EXPECT_EQ(counts.at("KillTimer"), 1);
    EXPECT_EQ(std::count(noted.begin(), noted.end(), "deleted"), 1);
    EXPECT_EQ(std::count(noted.begin(), noted.end(), "dialogDestroyed"), 1);
}

BYTE pressed;
void CALLBACK press(HWND, UINT, UINT_PTR timer, DWORD) {
    KillTimer(nullptr, timer);
    keybd_event(pressed, 0, 0, 0);
    keybd_event(pressed, 0, KEYEVENTF_KEYUP, 0);
}
void CALLBACK giveUp(HWND, UINT, UINT_PTR timer, DWORD) {
    KillTimer(nullptr, timer);
    ADD_FAILURE() << "the box stays open";
    TerminateProcess(GetCurrentProcess(), 97);
}

TEST_F(AboutBox, ModalGoesByTabAndArrowsAndStaysItsOwners) {
    for (const BYTE key : {VK_TAB, VK_DOWN}) {
        pressed = key;
        SetTimer(nullptr, 0, 50, press);
        const UINT_PTR patience = SetTimer(nullptr, 0, 5000, giveUp);
        Box* const box = newBox();
        noted.clear();
        invoke(box, 1);
        KillTimer(nullptr, patience);
        std::erase(noted, "paint");
        EXPECT_THAT(noted, ElementsAre("invoke", "initDialog", "animate", "canClose", "revoke", "dialogDestroyed"));
        EXPECT_EQ(box->window, nullptr);
        deleteBox(box);
    }
}

using Pixels = std::vector<DWORD>;  // 0x00RRGGBB, from the top
constexpr int kSide = 411;

Pixels pixelsOf(void* bitmap) {
    BITMAPINFO info{};
    info.bmiHeader = {sizeof info.bmiHeader, kSide, -kSide, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    Pixels pixels(kSide * kSide);
    const HDC screen = GetDC(nullptr);
    GetDIBits(screen, static_cast<HBITMAP>(bitmap), 0, kSide, pixels.data(), &info, DIB_RGB_COLORS);
    ReleaseDC(nullptr, screen);
    return pixels;
}

/// How many pixels of an area differ from what is expected there.
template <typename Expected>
int differing(const Pixels& pixels, const RECT& area, Expected expected) {
    int count = 0;
    for (int y = area.top; y < area.bottom; ++y)
        for (int x = area.left; x < area.right; ++x) count += pixels[y * kSide + x] != expected(x, y);
    return count;
}

std::vector<POINT> icons;
bool drawsIcons;
BOOL WINAPI noteIcon(HDC dc, int x, int y, HICON icon) {
    icons.push_back({x, y});
    return !drawsIcons || DrawIcon(dc, x, y, icon);
}

/// Bold, italic or underlined, and the text.
int WINAPI noteText(HDC dc, LPCSTR text, int length, LPRECT place, UINT flags) {
    LOGFONTA font{};
    GetObjectA(GetCurrentObject(dc, OBJ_FONT), sizeof font, &font);
    EXPECT_TRUE(flags == 0x821 && font.lfHeight == 33 && font.lfCharSet == DEFAULT_CHARSET &&
                !std::strcmp(font.lfFaceName, "Arial") && GetTextColor(dc) == 0xFFFFFF && GetBkMode(dc) == TRANSPARENT);
    const char* const style = font.lfWeight == 700 ? "b:" : font.lfItalic ? "i:" : font.lfUnderline ? "u:" : ":";
    noted.push_back(style + std::string(text, static_cast<std::size_t>(length)));
    return DrawTextA(dc, text, length, place, flags);
}

class AboutFrame : public AboutBox {
protected:
    AboutFrame() {
        calls::replace("DrawIcon", reinterpret_cast<const void*>(noteIcon));
        calls::replace("DrawTextA", reinterpret_cast<const void*>(noteText));
        drawsIcons = false;
    }
    ~AboutFrame() override { calls::replace("DrawTextA", reinterpret_cast<const void*>(DrawTextA)); }

    Pixels nextFrame() {
        icons.clear();
        noted.clear();
        animate(box);
        noted.erase(noted.begin());
        return pixelsOf(box->frame);
    }

    Box* box = newBox(601, GetModuleHandleA(nullptr));
};

TEST_F(AboutFrame, KeepsBorderAndBandAndShowsThePicturesInTurnWithTheSpritesOnTop) {
    const auto loaded = [](int id) {
        return pixelsOf(LoadImageA(dll(), MAKEINTRESOURCEA(id), IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION));
    };
    const Pixels border = loaded(1);
    EXPECT_EQ(pixelsOf(box->frame), border);
    for (int i = 0; i < 40; ++i) {
        drawsIcons = i % 2;
        const Pixels frame = nextFrame(), picture = loaded(10 + i % 4);
        const auto fixed = [&](int x, int y) { return border[y * kSide + x]; };
        EXPECT_EQ(differing(frame, {0, 0, 14, kSide}, fixed) + differing(frame, {397, 0, kSide, kSide}, fixed), 0);
        EXPECT_EQ(differing(frame, {0, 0, kSide, 14}, fixed) + differing(frame, {0, 397, kSide, kSide}, fixed), 0);
        const auto shown = [&](int x, int y) { return picture[(y - 14) * kSide + x - 14]; };
        const int others = differing(frame, {14, 14, 397, 194}, shown);
        EXPECT_TRUE(drawsIcons ? others > 0 && others < 3 * 32 * 32 : !others) << others << " in frame " << i;
        EXPECT_GE(icons.size(), 3u);
    }
    deleteBox(box);
}

TEST_F(AboutFrame, MovesTheCreditsOnByOneLineEverySecondFrame) {
    const std::vector<std::string> lines = {"b:Title 6.1",  ":plain & 1995-97", "i:slanted", ":",
                                            "u:under 100%", ": *text",          "b:"};
    // Where the title is as the k-th line: rows of the frame.
    const std::map<std::size_t, std::pair<int, int>> places = {
        {0, {245, 248}}, {1, {248, 254}}, {4, {275, 290}}, {6, {308, 329}}};
    std::vector<std::string> expected;
    for (std::size_t top = 0; top < lines.size(); ++top) {
        expected.insert(expected.begin(), lines[top]);
        nextFrame();
        EXPECT_EQ(noted, expected);
        const Pixels frame = nextFrame();
        EXPECT_EQ(noted, expected);
        const auto place = places.find(top);
        if (place == places.end()) continue;
        const auto [first, end] = place->second;
        int left = kSide, right = 0, lit = 0;
        for (int y = first; y < end; ++y)
            for (int x = 14; x < 397; ++x)
                if ((frame[y * kSide + x] & 0xFF) > 0xB0) left = std::min(left, x), right = std::max(right, x), ++lit;
        EXPECT_GT(lit, 15) << "white letters survive being made smaller";
        EXPECT_NEAR(left + right, 410, 6) << "centred";
        EXPECT_EQ(differing(frame, {14, end, 397, 397}, [](int, int) { return 0x008080u; }), 0) << "blank";
    }
    nextFrame();
    EXPECT_THAT(noted, ElementsAre(lines[0])) << "starts over";
    deleteBox(box);
}

bool hasPalette() {
    const HDC screen = GetDC(nullptr);
    const int depth = GetDeviceCaps(screen, BITSPIXEL);
    ReleaseDC(nullptr, screen);
    return depth <= 8;
}

TEST_F(AboutBox, RealisesItsPaletteWhereverItDraws) {
    const auto counts = play({[&] {
        showModelessly();
        UpdateWindow(window);
        send(WM_LBUTTONDOWN);
    }});
    EXPECT_EQ(counts.count("RealizePalette") ? counts.at("RealizePalette") : 0, hasPalette() ? 9 : 0)
        << "in five bitmaps, the frame's and the strip's contexts, the window's and its memory context";
    Box* const box = newBox();
    PALETTEENTRY entries[256] = {};
    EXPECT_EQ(GetPaletteEntries(box->palette, 0, 256, entries), hasPalette() ? 256u : 0u);
    const auto* const table =
        static_cast<BYTE*>(LockResource(LoadResource(dll(), FindResourceA(dll(), MAKEINTRESOURCEA(1), RT_BITMAP)))) +
        40;
    for (int i = 0; i < 256 && hasPalette(); ++i)
        EXPECT_EQ(RGB(entries[i].peRed, entries[i].peGreen, entries[i].peBlue),
                  RGB(table[4 * i + 2], table[4 * i + 1], table[4 * i]));
    deleteBox(box);
}

TEST_F(AboutBox, SurvivesEachFailure) {
    sweep({[&] {
        showModelessly();
        if (!window) return;
        send(WM_TIMER, 1);
        UpdateWindow(window);
        for (int i = 0; i < 2 && IsWindow(window); ++i) send(WM_LBUTTONDOWN);
        EXPECT_FALSE(IsWindow(window)) << "the box can't be closed";
    }});
}

TEST_F(AboutBox, SurvivesEachFailureModally) {
    sweep({function<void()>("DoQuillonAboutBox")});
}

}  // namespace
