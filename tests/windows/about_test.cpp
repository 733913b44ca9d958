// The about box as an old client shows it: modally, modelessly, and as a derived class that replaces every slot, closes
// itself and has neighbours that close it. With TAMRIX_SOAK set: 10,000 frames.
#include <thread>
#include <utility>

#include "windows/scenario.h"
#include "windows/soak.h"

namespace {

using namespace scenarios;
using shipped::dll;
using shipped::function;
using shipped::member;
using testing::ElementsAre;

enum { kDelete, kInvoke, kRevoke, kAnimate, kCanClose, kTimer, kDestroyed, kInit, kPaint, kSlots };
const char* const kSlotNames[] = {"deleted", "invoke",          "revoke",     "animate", "canClose",
                                  "doTimer", "dialogDestroyed", "initDialog", "paint"};

/// A box by the places of its fields, and its operations by their slots.
struct Box {
    template <int index, typename... Arguments>
    void call(Arguments... arguments) {
        reinterpret_cast<void(__thiscall*)(Box*, Arguments...)>(slots[index])(this, arguments...);
    }

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

/// What the derived class does after the library's own operation, and gives as its result.
std::function<int(Box*)> inSlot[kSlots];

template <int index, typename... Arguments>
int __thiscall derived(Box* box, Arguments... arguments) {
    noted.push_back(kSlotNames[index]);
    void* const own = function<void*>("??_7CAboutQuillonAppleTalk@@6B@")[index];
    const int result = reinterpret_cast<int(__thiscall*)(Box*, Arguments...)>(own)(box, arguments...);
    return inSlot[index] ? inSlot[index](box) : result;
}

/// Deletes the box and leaves nothing in its place that could be used.
int __thiscall deleted(Box* box, int) {
    noted.push_back("deleted");
    member("??1CAboutQuillonAppleTalk@@UAE@XZ", box);
    std::memset(static_cast<void*>(box), 0xEE, sizeof *box);
    reinterpret_cast<void(__cdecl*)(void*)>(calls::imported("free"))(box);
    return 0;
}

/// A new box of the derived class; null without memory. A modeless box frees itself, so its memory is the library's.
/// Its credits are this program's, but for those of the library when `hasOwnCredits` is false.
Box* newBox(bool hasOwnCredits = true) {
    static void* slots[] = {reinterpret_cast<void*>(deleted),
                            reinterpret_cast<void*>(derived<kInvoke, int>),
                            reinterpret_cast<void*>(derived<kRevoke>),
                            reinterpret_cast<void*>(derived<kAnimate>),
                            reinterpret_cast<void*>(derived<kCanClose>),
                            reinterpret_cast<void*>(derived<kTimer, int>),
                            reinterpret_cast<void*>(derived<kDestroyed>),
                            reinterpret_cast<void*>(derived<kInit, HWND>),
                            reinterpret_cast<void*>(derived<kPaint, HDC>)};
    const auto allocate = reinterpret_cast<void*(__cdecl*)(std::size_t)>(calls::imported("malloc"));
    auto* const box = static_cast<Box*>(allocate(sizeof(Box)));
    if (!box) return nullptr;
    void* const module = hasOwnCredits ? GetModuleHandleA(nullptr) : nullptr;
    member<void*>("??0CAboutQuillonAppleTalk@@QAE@HPAX@Z", box, hasOwnCredits ? 0x10000 + 601 : 0, module);
    box->slots = slots;
    return box;
}

int __cdecl steadyRand() {
    return 8;  // sends each walker off at once
}

int times(const char* note) {
    return static_cast<int>(std::count(noted.begin(), noted.end(), note));
}

class AboutBox : public testing::Test {
protected:
    AboutBox() {
        calls::replace("rand", reinterpret_cast<const void*>(steadyRand));
        for (auto& operation : inSlot) operation = nullptr;
        inSlot[kInit] = [this](Box* box) {
            window = box->window;
            EXPECT_TRUE(box->lines && box->frame && box->strip && box->text && box->flyers && box->walkers &&
                        box->creditsFace[0] && std::count(box->pictures, box->pictures + 4, nullptr) == 0);
            return 1;
        };
        inSlot[kCanClose] = [this](Box*) {
            for (const UINT message : {WM_KILLFOCUS, WM_LBUTTONDOWN, WM_CLOSE}) send(message);  // none is to ask again
            return closable;
        };
    }

    /// Shows a new box modelessly; where no window is made it is deleted.
    void showModelessly() {
        window = nullptr;
        Box* const box = newBox();
        if (box && !member<int>("?showModeless@CAboutQuillonAppleTalk@@QAEHXZ", box)) box->call<kDelete>(1);
    }
    void showAndClose() {
        showModelessly();
        for (int i = 0; i < 2; ++i) {
            send(WM_TIMER, 1);
            UpdateWindow(window);
        }
        for (int i = 0; i < 2 && IsWindow(window); ++i) send(WM_LBUTTONDOWN);
        EXPECT_FALSE(IsWindow(window)) << "the box can't be closed";
    }
    void send(UINT message, WPARAM parameter = 0) { SendMessageA(window, message, parameter, 0); }
    template <typename Condition>
    void pumpUntil(Condition condition) {
        const DWORD start = GetTickCount();
        for (MSG message; !condition() && GetTickCount() - start < 5000; Sleep(5))
            while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageA(&message);
        EXPECT_TRUE(condition());
    }

    HWND window = nullptr;
    int closable = 1;
};

TEST_F(AboutBox, ModelessIsAskedBeforeItGoesAndDeletesItselfOnce) {
    const std::pair<UINT, WPARAM> ways[] = {{WM_KEYDOWN, 'A'}, {WM_LBUTTONDOWN, 0}, {WM_COMMAND, 7}, {WM_KILLFOCUS, 0}};
    for (const auto& way : ways) {
        play({[&] {
            closable = 0;
            newBox()->call<kInvoke>(0);
            send(way.first, way.second);
            closable = 1;
            send(way.first, way.second);
        }});
        EXPECT_THAT(noted, ElementsAre("invoke", "initDialog", "animate", "canClose", "canClose", "revoke",
                                       "dialogDestroyed", "deleted"))
            << way.first;
    }
}

int WINAPI smallScreen(int index) {
    return index == SM_CXSCREEN ? 400 : index == SM_CYSCREEN ? 300 : 0;
}

TEST_F(AboutBox, OpensInTheMiddleAndShowsAFrameAtEachTick) {
    calls::replace("GetSystemMetrics", reinterpret_cast<const void*>(smallScreen));
    const auto look = [](const calls::Call& call) { EXPECT_TRUE(call.name != "SetTimer" || call.arguments[2] == 333); };
    const auto open = [&] {
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
        pumpUntil([] { return times("paint") == 2; });
        EXPECT_THAT(noted, ElementsAre("doTimer", "animate", "paint", "doTimer", "animate", "paint"));
        DestroyWindow(window);
    };
    EXPECT_EQ(play({open, nullptr, look}).at("KillTimer"), 1);
    calls::replace("GetSystemMetrics", reinterpret_cast<const void*>(GetSystemMetrics));
    EXPECT_TRUE(times("deleted") == 1 && times("dialogDestroyed") == 1);
}

TEST_F(AboutBox, ClosesItselfInEachOfItsOperationsAndIsLeftAlone) {
    const auto look = [](const calls::Call& call) {
        const bool isOnWindow = call.name == "SetTimer" || call.name == "InvalidateRect";
        EXPECT_TRUE(!isOnWindow || IsWindow(reinterpret_cast<HWND>(call.arguments[0]))) << call.name;
    };
    for (const int operation : {kInit, kAnimate, kAnimate, kTimer, kCanClose, kPaint}) {
        static int turn = 0;  // the first frame closes the box, then the second
        int calls = operation == kAnimate ? ++turn : 1;
        const auto own = std::exchange(inSlot[operation], [&](Box* box) {
            if (operation == kInit) window = box->window;
            if (--calls == 0) box->call<kRevoke>();
            EXPECT_TRUE(times("doTimer") || times("paint") || times("canClose") || !times("deleted"))
                << "while it opens";
            return 1;
        });
        play({[this] { showAndClose(); }, nullptr, look});
        EXPECT_TRUE(times("deleted") == 1 && noted.back() == "deleted") << kSlotNames[operation];
        inSlot[operation] = own;
    }
}

TEST_F(AboutBox, EndsOnceWhateverANeighbourDoesMeanwhile) {
    void (*const deeds[])(HWND) = {[](HWND box) { SendMessageA(box, WM_LBUTTONDOWN, 0, 0); },
                                   [](HWND box) { PostMessageA(box, WM_CLOSE, 0, 0); },
                                   [](HWND box) { DestroyWindow(box); }, [](HWND) { PostQuitMessage(0); }};
    for (const auto deed : deeds)
        for (const char* const name : {"MoveWindow", "SendMessageA", "SetTimer", "ShowWindow", "InvalidateRect",
                                       "BeginPaint", "EndPaint", "KillTimer", "DestroyWindow", "EndDialog"}) {
            bool isDone = false;
            const auto look = [&](const calls::Call& call) {
                if (call.name == "MoveWindow") window = reinterpret_cast<HWND>(call.arguments[0]);
                if (call.name == name && !std::exchange(isDone, true)) deed(window);
            };
            play({[this] { showAndClose(); }, nullptr, look});
            EXPECT_EQ(times("deleted"), 1) << name;
            isDone = false;
            play({function<void()>("DoQuillonAboutBox"), [](HWND box) { UpdateWindow(box); }, look});
        }
}

TEST_F(AboutBox, TakesAWindowOfAnotherThreadAlong) {
    Box* const box = newBox();
    box->call<kInvoke>(0);
    std::thread([box] { box->call<kDelete>(1); }).join();
    pumpUntil([this] { return !IsWindow(window); });
}

BYTE pressed;
void CALLBACK press(HWND, UINT, UINT_PTR timer, DWORD) {
    KillTimer(nullptr, timer);
    keybd_event(pressed, 0, 0, 0);
    keybd_event(pressed, 0, KEYEVENTF_KEYUP, 0);
}

TEST_F(AboutBox, ModalGoesByTabAndArrowsAndStaysItsOwners) {
    for (const BYTE key : {VK_TAB, VK_DOWN}) {
        pressed = key;
        SetTimer(nullptr, 0, 50, press);
        Box* const box = newBox();
        noted.clear();
        box->call<kInvoke>(1);
        std::erase(noted, "paint");
        EXPECT_THAT(noted, ElementsAre("invoke", "initDialog", "animate", "canClose", "revoke", "dialogDestroyed"));
        EXPECT_EQ(box->window, nullptr);
        box->call<kDelete>(1);
    }
}

TEST_F(AboutBox, SurvivesEachFailure) {
    const auto counts = play({function<void()>("DoQuillonAboutBox")});  // also loads the icons, which stay
    EXPECT_TRUE(counts.at("SetTimer") == 1 && counts.at("srand") == 1);
    sweep({[this] { showAndClose(); }});
    sweep({function<void()>("DoQuillonAboutBox")});
}

TEST_F(AboutBox, RealisesThePaletteOfItsFrameWhereverItDraws) {
    const HDC screen = GetDC(nullptr);
    const bool hasPalette = GetDeviceCaps(screen, BITSPIXEL) <= 8;
    ReleaseDC(nullptr, screen);
    const auto counts = play({[this] { showAndClose(); }});
    EXPECT_EQ(counts.count("RealizePalette") ? counts.at("RealizePalette") : 0, hasPalette ? 15 : 0)
        << "five bitmaps; the frame's and the strip's contexts three times; the window's and its memory context twice";
    EXPECT_EQ(counts.at("SetStretchBltMode"), hasPalette ? 30 : 45) << "ten lines a frame, the far five to be averaged";
    Box* const box = newBox();
    RGBQUAD entries[257] = {};
    EXPECT_EQ(GetPaletteEntries(box->palette, 0, 257, reinterpret_cast<PALETTEENTRY*>(entries)), hasPalette ? 256u : 0);
    for (RGBQUAD& entry : entries) std::swap(entry.rgbRed, entry.rgbBlue);
    const auto* bitmap = static_cast<BYTE*>(LoadResource(dll(), FindResourceA(dll(), MAKEINTRESOURCEA(1), RT_BITMAP)));
    EXPECT_TRUE(!hasPalette || !std::memcmp(entries, bitmap + sizeof(BITMAPINFOHEADER), 256 * sizeof *entries));
    box->call<kDelete>(1);
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

Pixels resource(int id) {
    void* const bitmap = LoadImageA(dll(), MAKEINTRESOURCEA(id), IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION);
    const Pixels pixels = pixelsOf(bitmap);
    DeleteObject(bitmap);
    return pixels;
}

/// How many pixels of an area differ from those of another picture whose corner is at (left, top).
int differing(const Pixels& pixels, const RECT& area, const Pixels& other, int left = 0, int top = 0) {
    int count = 0;
    for (int y = area.top; y < area.bottom; ++y)
        for (int x = area.left; x < area.right; ++x)
            count += pixels[y * kSide + x] != other[(y - top) * kSide + x - left];
    return count;
}

bool drawsIcons;
std::vector<int> places;  // of icons
BOOL WINAPI noteIcon(HDC dc, int x, int y, HICON icon) {
    places.insert(places.end(), {x, y});
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
    }

    Pixels nextFrame() {
        noted.clear();
        box->call<kAnimate>();
        noted.erase(noted.begin());
        return pixelsOf(box->frame);
    }

    Box* box = nullptr;
};

TEST_F(AboutFrame, KeepsBorderAndBandAndShowsThePicturesInTurnWithSpritesOnTop) {
    const Pixels fixed = resource(1), pictures[] = {resource(10), resource(11), resource(12), resource(13)};
    play({[&] {
        box = newBox(false);
        EXPECT_EQ(pixelsOf(box->frame), fixed);
        for (int i = 0; i < 40; ++i) {
            drawsIcons = i % 2;
            places.clear();
            const Pixels frame = nextFrame();
            EXPECT_TRUE(i || (places[0] == 50 + 8 && places[1] == 10 + 8 - 1)) << "where a flyer begins, one step on";
            for (const RECT& area : {RECT{0, 0, 14, kSide},
                                     {397, 0, kSide, kSide},
                                     {0, 0, kSide, 14},
                                     {0, 397, kSide, kSide},
                                     {0, 194, kSide, 245}})
                EXPECT_TRUE(!differing(frame, area, fixed) || (drawsIcons && area.top == 194)) << i << " " << area.top;
            const int others = differing(frame, {14, 14, 397, 194}, pictures[i % 4], 14, 14);
            EXPECT_TRUE(drawsIcons ? others > 0 && others < 3 * 32 * 32 : !others) << others << " in frame " << i;
        }
        for (int i = testing_support::soakRounds(0, 10000); i > 0; --i) box->call<kAnimate>();
        box->call<kDelete>(1);
    }});
}

TEST_F(AboutFrame, MovesTheCreditsOnByOneLineEverySecondFrame) {
    const std::vector<std::string> lines = {"b:Title 6.1",  ":plain & 1995-97", "i:slanted", "",
                                            "u:under 100%", ": *text",          ""};
    // Where the title is as the k-th line: rows of the frame.
    const std::pair<int, int> places[] = {{245, 248}, {248, 254}, {254, 263}, {263, 275},
                                          {275, 290}, {290, 308}, {308, 329}};
    const Pixels teal(kSide * kSide, 0x008080);
    std::vector<std::string> expected;
    drawsIcons = false;
    box = newBox();
    for (std::size_t top = 0; top < lines.size(); ++top) {
        if (!lines[top].empty()) expected.insert(expected.begin(), lines[top]);
        nextFrame();
        EXPECT_EQ(noted, expected);
        const Pixels frame = nextFrame();
        EXPECT_EQ(noted, expected);
        const auto [first, end] = places[top];
        int left = kSide, right = 0, lit = 0, dark = 0;
        for (int y = first; y < end; ++y)
            for (int x = 14; x < 397; ++x) {
                dark += (frame[y * kSide + x] & 0xFF) < 0x70;
                if ((frame[y * kSide + x] & 0xFF) > 0xB0) left = std::min(left, x), right = std::max(right, x), ++lit;
            }
        EXPECT_TRUE(lit > 15 && !dark) << lit << " pixels of white letters survive being made smaller, on teal";
        EXPECT_NEAR(left + right, 410, 6) << "centred";
        EXPECT_EQ(differing(frame, {14, end, 397, 397}, teal), 0) << "blank";
    }
    nextFrame();
    EXPECT_THAT(noted, ElementsAre(lines[0])) << "starts over";
    for (int i = 0; i < 4; ++i) nextFrame();
    EXPECT_EQ(member<int>("?parseText@CAboutQuillonAppleTalk@@MAEHXZ", box), 1);
    nextFrame();
    EXPECT_THAT(noted, ElementsAre(lines[0])) << "a new table begins at its first line";
    box->call<kDelete>(1);
}

TEST_F(AboutFrame, LeavesOutWhatNeedsAMissingFontOrBrush) {
    const struct {
        const char* failing;
        int nth;
        std::vector<std::string> drawn;
    } rows[] = {{"CreateFontA", 5, {}},
                {"CreateSolidBrush", 2, {}},
                {"CreateFontA", 6, {":*Title 6.1"}},
                {"CreateFontA", 7, {"b:Title 6.1"}}};
    for (const auto& row : rows)
        play({[&] {
                 box = newBox();
                 const Pixels first = nextFrame(), second = nextFrame();
                 EXPECT_EQ(noted, row.drawn) << row.failing << row.nth;
                 EXPECT_TRUE(!row.drawn.empty() || !differing(second, {14, 245, 397, 397}, first));
                 nextFrame();
                 EXPECT_EQ(noted.size(), row.drawn.empty() ? 1u : 2u) << "credits that are not drawn stand still";
                 box->call<kDelete>(1);
             }},
             {row.failing, row.nth, nullptr});
}

}  // namespace
