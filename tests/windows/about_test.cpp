// The about box as an old client shows it: modally, modelessly, and as a derived class that replaces every slot, while
// it is used, is closed from anywhere, or a call fails. Its frames are compared with frames that the test draws.
#include <optional>
#include <thread>

#include "windows/scenario.h"

namespace {

using namespace scenarios;
using shipped::dll;
using shipped::function;
using shipped::member;
using testing::ElementsAre;

enum { kDelete, kInvoke, kRevoke, kAnimate, kCanClose, kTimer, kDestroyed, kInit, kPaint, kParse };
const char* const kNames[] = {"deleted", "invoke",          "revoke",     "animate", "canClose",
                              "doTimer", "dialogDestroyed", "initDialog", "paint",   "parseText"};

// The places of a box's fields, and of those that it can't be shown without.
constexpr std::size_t kSize = 148, kWindow = 40, kPalette = 44, kFrame = 48;
constexpr std::size_t kParts[] = {36, kFrame, 52, 56, 60, 64, 68, 72, 108, 140, 144};

std::optional<shipped::Storage<kSize>> box;
HWND window;   // the box's, also when it is gone
int refusals;  // of canClose, before it agrees
/// Is called before each call of the platform and after each operation of the box, with their names.
using Meanwhile = std::function<void(const std::string& place)>;
Meanwhile meanwhile;

/// Calls an operation through its slot.
template <int index, typename... Arguments>
int operate(Arguments... arguments) {
    return shipped::slot<int __thiscall(void*, Arguments...)>(*box, index)(*box, arguments...);
}

/// The derived class's function for each slot: it calls the library's and notes that.
template <int index, typename... Arguments>
int __thiscall derived(void* self, Arguments... arguments) {
    noted.push_back(kNames[index]);
    if constexpr (index == kInit) {
        window = reinterpret_cast<HWND>((arguments, ...));
        for (const std::size_t part : kParts) EXPECT_NE(box->at<void*>(part), nullptr) << part;
    }
    if constexpr (index == kDelete) {
        member("??1CAboutQuillonAppleTalk@@UAE@XZ", self);
        std::memset(self, 0xEE, kSize);  // so that using the deleted box fails
        return 0;
    }
    void* const own = function<void*>("??_7CAboutQuillonAppleTalk@@6B@")[index];
    const int result = reinterpret_cast<int(__thiscall*)(void*, Arguments...)>(own)(self, arguments...);
    if (meanwhile) meanwhile(kNames[index]);
    return index == kCanClose ? --refusals < 0 : result;
}

int random = 8;  // which sends each walker off at once; 1 does not

int __cdecl steadyRand() {
    return random;
}

template <int index, typename... Arguments>
void* const kSlot = reinterpret_cast<void*>(derived<index, Arguments...>);

/// A box of the derived class with this program's credits.
void makeBox() {
    static void* slots[] = {kSlot<kDelete, int>, kSlot<kInvoke, int>, kSlot<kRevoke>,    kSlot<kAnimate>,
                            kSlot<kCanClose>,    kSlot<kTimer, int>,  kSlot<kDestroyed>, kSlot<kInit, int>,
                            kSlot<kPaint, int>,  kSlot<kParse>};
    calls::replace("rand", reinterpret_cast<const void*>(steadyRand));
    window = nullptr;
    refusals = 0;
    box.emplace();
    void* const module = GetModuleHandleA(nullptr);
    member("??0CAboutQuillonAppleTalk@@QAE@HPAX@Z", *box, 0x10000 + 601, module);
    box->at<void**>(0) = slots;
}

int times(const char* note) {
    return static_cast<int>(std::count(noted.begin(), noted.end(), note));
}

void tick(HWND shown) {
    for (const WPARAM timer : {2, 1}) {  // the first one is somebody else's
        SendMessageA(shown, WM_TIMER, timer, 0);
        UpdateWindow(shown);
    }
}

std::pair<UINT, WPARAM> closing{WM_LBUTTONDOWN, 0};  // what a user does to close a modeless box

void useModeless() {
    makeBox();
    if (member<int>("?showModeless@CAboutQuillonAppleTalk@@QAEHXZ", *box) != 1) operate<kDelete>(1);
    tick(window);
    refusals = 1;
    for (int i = 0; i < 2; ++i) SendMessageA(window, closing.first, closing.second, 0);
    EXPECT_FALSE(IsWindow(window)) << "the box can't be closed";
}

void useModal() {
    makeBox();
    operate<kInvoke>(1);
    EXPECT_EQ(box->at<HWND>(kWindow), nullptr);
    operate<kDelete>(1);
}

std::vector<std::vector<int>> icons;  // places and handles of those that were drawn

void lookOn(const calls::Call& call) {
    const auto* const arguments = reinterpret_cast<const int*>(call.arguments);
    if (call.name == "DrawIcon") icons.emplace_back(arguments + 1, arguments + 4);
    EXPECT_TRUE(call.name != "SetTimer" || (arguments[1] == 1 && arguments[2] == 333 && !arguments[3]));
    if (meanwhile) meanwhile(call.name);
}

/// A box that is used in one of these ways; `happening` acts meanwhile.
Scenario showing(void (*use)(), const Meanwhile& happening = nullptr) {
    return {[=] { meanwhile = happening, use(); }, tick, lookOn};
}

TEST(AboutBox, OpensInTheMiddleTicksAndIsAskedBeforeItGoes) {
    const Scenario refusing = showing(useModeless, [](const std::string& place) {
        for (const UINT message : {WM_KILLFOCUS, WM_LBUTTONDOWN, WM_CLOSE})
            if (place == "canClose") SendMessageA(window, message, 0, 0);  // none may ask again
        if (place != "doTimer") return;
        POINT corners[2];
        GetClientRect(window, reinterpret_cast<RECT*>(corners));
        MapWindowPoints(window, nullptr, corners, 2);
        const LONG left = (GetSystemMetrics(SM_CXSCREEN) - 411) / 2, top = (GetSystemMetrics(SM_CYSCREEN) - 411) / 2;
        EXPECT_THAT(std::vector(&corners->x, &corners->x + 4), ElementsAre(left, top, left + 411, top + 411));
        EXPECT_TRUE(IsWindowVisible(window) && GetFocus() == window);
        for (const int size : {ICON_BIG, ICON_SMALL}) EXPECT_TRUE(SendMessageA(window, WM_GETICON, size, 0));
    });
    for (const auto& way : {std::pair(WM_KEYDOWN, 'A'), {WM_COMMAND, 7}, {WM_KILLFOCUS, 0}, {WM_LBUTTONDOWN, 0}}) {
        closing = way;
        auto counts = play(refusing);
        EXPECT_TRUE(counts["srand"] == 1 && counts["SetTimer"] == 1 && counts["KillTimer"] == 1);
        EXPECT_THAT(noted, ElementsAre("initDialog", "animate", "doTimer", "paint", "doTimer", "animate", "paint",
                                       "canClose", "canClose", "revoke", "dialogDestroyed", "deleted"));
    }
}

TEST(AboutBox, EndsOnceWhateverClosesItMeanwhile) {
    const std::pair<std::string, int> places[] = {
        {"MoveWindow", 1},     {"SendMessageA", 1},  {"SetTimer", 1},   {"ShowWindow", 1},
        {"InvalidateRect", 1}, {"BeginPaint", 1},    {"EndPaint", 1},   {"KillTimer", 1},
        {"EndDialog", 1},      {"DestroyWindow", 1}, {"initDialog", 1}, {"animate", 1},
        {"animate", 2},        {"doTimer", 1},       {"canClose", 1},   {"paint", 1}};
    void (*const deletes)() = [] {  // a modeless box that is not closing yet
        if (!times("invoke") && !times("revoke")) operate<kDelete>(1);
    };
    void (*const deeds[])() = {[] { operate<kRevoke>(); },
                               [] { SendMessageA(window, WM_LBUTTONDOWN, 0, 0); },
                               [] { PostMessageA(window, WM_CLOSE, 0, 0); },
                               [] { DestroyWindow(window); },
                               [] { PostQuitMessage(0); },
                               deletes};
    for (const auto deed : deeds)
        for (const auto& [place, nth] : places)
            for (const auto use : {useModeless, useModal}) {
                play(showing(use, [&, visits = 0](const std::string& at) mutable {
                    if (at != place || ++visits != nth) return;
                    deed();
                    EXPECT_TRUE(place != "initDialog" || deed == deletes || !times("deleted")) << "while it opens";
                }));
                std::erase(noted, "quit");
                EXPECT_TRUE(times("deleted") == 1 && noted.back() == "deleted") << place << nth;
            }
}

TEST(AboutBox, CanBeDeletedByAnotherThread) {
    meanwhile = nullptr;
    makeBox();
    operate<kInvoke>(0);
    std::thread([] { operate<kDelete>(1); }).join();
    for (MSG message; PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE);) DispatchMessageA(&message);
    EXPECT_FALSE(IsWindow(window));
}

TEST(AboutBox, ModalGoesByTabAndArrowsAndStaysItsOwners) {
    for (const BYTE key : {VK_TAB, VK_DOWN}) {
        meanwhile = [key](const std::string& place) {
            for (const DWORD flags : {0, KEYEVENTF_KEYUP})
                if (place == "paint") keybd_event(key, 0, flags, 0);
        };
        noted.clear();
        useModal();
        EXPECT_THAT(noted, ElementsAre("invoke", "initDialog", "animate", "paint", "canClose", "revoke",
                                       "dialogDestroyed", "deleted"));
    }
    meanwhile = nullptr;
    play({function<void()>("DoQuillonAboutBox"), [](HWND) { noted.push_back("shown"); }});
    EXPECT_THAT(noted, ElementsAre("shown"));
}

TEST(AboutBox, RealisesThePaletteOfItsFrameWhereverItDraws) {
    auto counts = play(showing(useModeless));
    EXPECT_EQ(counts["RealizePalette"], hasPalette ? 13 : 0)
        << "five bitmaps; twice the frame's and the strip's contexts, and the window's and its memory context";
    EXPECT_EQ(counts["SetStretchBltMode"], hasPalette ? 20 : 30) << "ten lines a frame, the far five to be averaged";
    makeBox();
    RGBQUAD entries[257] = {};
    const UINT count = GetPaletteEntries(box->at<HPALETTE>(kPalette), 0, 257, reinterpret_cast<PALETTEENTRY*>(entries));
    EXPECT_EQ(count, hasPalette ? 256u : 0);
    for (RGBQUAD& entry : entries) std::swap(entry.rgbRed, entry.rgbBlue);
    const auto* bitmap = static_cast<BYTE*>(LoadResource(dll(), FindResourceA(dll(), MAKEINTRESOURCEA(1), RT_BITMAP)));
    EXPECT_EQ(std::memcmp(entries, bitmap + sizeof(BITMAPINFOHEADER), count * sizeof *entries), 0);
    operate<kDelete>(1);
}

constexpr int kSide = 411;

/// A bitmap of the library's to draw on. It stays until the program ends.
HDC canvas(int id) {
    const HDC dc = CreateCompatibleDC(nullptr);
    SelectObject(dc, LoadImageA(dll(), MAKEINTRESOURCEA(id), IMAGE_BITMAP, 0, 0, 0));
    return dc;
}

std::vector<DWORD> pixelsOf(HGDIOBJ bitmap) {
    std::vector<DWORD> pixels(kSide * kSide);
    GetBitmapBits(static_cast<HBITMAP>(bitmap), kSide * kSide * sizeof(DWORD), pixels.data());
    return pixels;
}

const std::string kMarkers = "*/_";
const HBRUSH kTeal = CreateSolidBrush(RGB(0, 128, 128));

/// Draws a line of the credits as the k-th from the farthest on. Other markers than these are text.
void drawLine(HDC frame, int k, const std::string& line, const std::string& markers) {
    static const HDC strip = canvas(1);  // of which the top is used
    const bool isMarked = !line.empty() && markers.find(line[0]) != std::string::npos;
    const char* const text = line.c_str() + isMarked;
    const char marker = isMarked ? line[0] : ' ';
    if (!*text) return;
    RECT area = {0, 0, kSide, 33};
    FillRect(strip, &area, kTeal);
    SetTextColor(strip, RGB(255, 255, 255));
    SetBkMode(strip, TRANSPARENT);
    const HGDIOBJ former =
        SelectObject(strip, CreateFontA(33, 0, 0, 0, marker == '*' ? FW_BOLD : FW_NORMAL, marker == '/', marker == '_',
                                        0, DEFAULT_CHARSET, 0, 0, 0, 0, "Arial"));
    DrawTextA(strip, text, -1, &area, DT_CENTER | DT_SINGLELINE | DT_NOPREFIX);
    DeleteObject(SelectObject(strip, former));
    SetStretchBltMode(frame, k < 5 ? HALFTONE : COLORONCOLOR);
    for (int slice = 0; slice < 3; ++slice) {
        const int width = kSide / 3 + 3 * k * (k + 1) + 2 * slice, top = 245 + 3 * k * (k + 1) / 2 + slice * (k + 1);
        StretchBlt(frame, (kSide - width) / 2, top, width, k + 1, strip, 0, 11 * slice, kSide, 11, SRCCOPY);
    }
}

/// The next frame is the border, lines of the credits from the farthest on, a picture, and on top the library's icons.
void expectNextFrame(int picture, const std::vector<std::string>& lines, const std::string& markers = kMarkers) {
    static const HDC frame = canvas(1), pictures[] = {canvas(10), canvas(11), canvas(12), canvas(13)};
    const RECT area = {14, 245, 397, 397};
    icons.clear();
    operate<kAnimate>();
    IntersectClipRect(frame, 14, 14, 397, 397);
    FillRect(frame, &area, kTeal);
    for (std::size_t k = 0; k < lines.size(); ++k) drawLine(frame, static_cast<int>(k), lines[k], markers);
    BitBlt(frame, 14, 14, 383, 180, pictures[picture], 0, 0, SRCCOPY);
    for (const auto& icon : icons) DrawIcon(frame, icon[0], icon[1], reinterpret_cast<HICON>(icon[2]));
    EXPECT_TRUE(pixelsOf(box->at<HBITMAP>(kFrame)) == pixelsOf(GetCurrentObject(frame, OBJ_BITMAP)))
        << picture << markers << testing::PrintToString(lines);
}

std::vector<int> iconAt(int x, int y, int id) {
    return {x, y, static_cast<int>(reinterpret_cast<LONG_PTR>(LoadIconA(dll(), MAKEINTRESOURCEA(id))))};
}

TEST(AboutFrame, ShowsCreditsPicturesAndSpritesInTheirTurnsButNotWhatNeedsAMissingFont) {
    const std::vector<std::string> credits = {"*",        " *text",          "_under 100%", "",
                                              "/slanted", "plain & 1995-97", "*Title 6.1"};
    const int steps[] = {20, 21, 22, 23, 32, 33, 34, 35, 36, 37};  // of a walker that plays
    // The regular font and the brush fail in the second frame, the others in the last that has all lines.
    const std::tuple<const char*, int, std::string> failures[] = {
        {"", 0, kMarkers},       {"CreateFontA", 5, kMarkers}, {"CreateSolidBrush", 2, kMarkers},
        {"CreateFontA", 54, ""}, {"CreateFontA", 55, "*"},     {"CreateFontA", 56, "*/"}};
    for (const auto& [failing, nth, markers] : failures)
        play({[&, nth = nth, markers = markers] {
                  random = nth ? 1 : 8;  // walkers would stay on text that is not drawn
                  makeBox();
                  for (int i = 0; i < 17; ++i) {
                      const bool isLate =
                          i > 1 && nth && markers == kMarkers;  // credits that are not drawn stand still
                      const int count = (i / 2 - isLate) % 7 + 1;
                      expectNextFrame(i % 4, {credits.end() - count, credits.end()}, i == 13 ? markers : kMarkers);
                      EXPECT_TRUE(nth || i || icons[0] == iconAt(58, 17, 11)) << "where a flyer begins, one step on";
                      EXPECT_TRUE(nth || i > 9 || icons.back() == iconAt(58, 253, steps[i])) << i;
                  }
                  EXPECT_EQ(operate<kParse>(), 1);
                  expectNextFrame(1, {credits.back()});  // a new table begins at its first line
                  const HDC shown = canvas(1);
                  operate<kPaint>(shown);
                  EXPECT_TRUE(pixelsOf(GetCurrentObject(shown, OBJ_BITMAP)) == pixelsOf(box->at<HBITMAP>(kFrame)));
                  operate<kDelete>(1);
              },
              nullptr, lookOn},
             {failing, nth, nullptr});
}

}  // namespace

Scenario scenarios::showingAboutBox(bool isModal) {
    makeBox();  // loads the icons, which stay
    operate<kDelete>(1);
    return showing(isModal ? useModal : useModeless);
}
