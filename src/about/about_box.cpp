// The about box's life: construction, window, timer, painting, closing.
//
// A window finds its box by the pointer it keeps, so that several boxes may be open. The pointer goes with WM_DESTROY:
// messages that a window still gets while it vanishes reach no box that has deleted itself.
#include <cstddef>
#include <cstdlib>
#include <ctime>
#include <new>

#include "about/about_sprites.h"
#include "about/credits_text.h"
#include "about/perspective.h"
#include "frame/gdi_handles.h"
#include "frame/global_memory.h"
#include "frame/settings.h"
#include "tamrix32/about.h"

// Every compiler of this library places the fields of a class with virtual operations as it does those of a plain one.
#pragma GCC diagnostic ignored "-Winvalid-offsetof"

/// What clients compiled into their own classes and objects.
struct AboutLayout {
    using Box = CAboutQuillonAppleTalk;
    static_assert(sizeof(Box) == 148 && sizeof(AboutLine) == 8);
    static_assert(sizeof(CFlyingSprite) == 28 && sizeof(CWalkingSprite) == 28);
    static_assert(offsetof(Box, flyerCount) == 4 && offsetof(Box, walkerCount) == 8 && offsetof(Box, textTop) == 12);
    static_assert(offsetof(Box, lineHeight) == 16 && offsetof(Box, timerId) == 20 && offsetof(Box, timerPeriod) == 24);
    static_assert(offsetof(Box, textColor) == 28 && offsetof(Box, backColor) == 32 && offsetof(Box, lines) == 36);
    static_assert(offsetof(Box, window) == 40 && offsetof(Box, palette) == 44 && offsetof(Box, frameBitmap) == 48);
    static_assert(offsetof(Box, stripBitmap) == 52 && offsetof(Box, pictures) == 56 && offsetof(Box, text) == 72);
    static_assert(offsetof(Box, pictureIndex) == 76 && offsetof(Box, topLine) == 80 && offsetof(Box, lineCount) == 84);
    static_assert(offsetof(Box, modal) == 88 && offsetof(Box, frameRect) == 92 && offsetof(Box, creditsFace) == 108);
    static_assert(offsetof(Box, flyers) == 140 && offsetof(Box, walkers) == 144);
};

namespace {

using namespace tamrix;

constexpr int kDialogId = 1;
constexpr int kIconId = 1;
constexpr int kFaceStringId = 10;
constexpr int kFrameBitmapId = 1;
constexpr int kFirstPictureId = 10;
constexpr int kDefaultTextId = 1;
constexpr int kFlyerCount = 3;
constexpr int kWalkerCount = 3;

/// Set beside the box in its window once it is being closed. Boxes lie at even addresses.
constexpr LONG kClosing = 1;

LONG keptBy(HWND window) {
    return GetWindowLongA(window, DWL_USER);
}

bool isClosing(HWND window) {
    return (keptBy(window) & kClosing) != 0;
}

CAboutQuillonAppleTalk* boxOf(HWND window) {
    return reinterpret_cast<CAboutQuillonAppleTalk*>(keptBy(window) & ~kClosing);
}

}  // namespace

CAboutQuillonAppleTalk::CAboutQuillonAppleTalk(int textId, void* module)
    : flyerCount(kFlyerCount),
      walkerCount(kWalkerCount),
      textTop(245),
      lineHeight(33),
      timerId(1),
      timerPeriod(333),
      textColor(RGB(255, 255, 255)),
      backColor(RGB(0, 128, 128)),
      lines(nullptr),
      window(nullptr),
      palette(nullptr),
      frameBitmap(nullptr),
      stripBitmap(nullptr),
      pictures{},
      text(nullptr),
      pictureIndex(0),
      topLine(0),
      lineCount(0),
      modal(0),
      frameRect{},
      creditsFace{},
      flyers(new (std::nothrow) CFlyingSprite[kFlyerCount]),
      walkers(new (std::nothrow) CWalkingSprite[kWalkerCount]) {
    palette = createOurPalette(kFrameBitmapId);
    frameBitmap = createOurBitmap(kFrameBitmapId, &frameRect);
    RECT strip = {0, 0, frameRect.right, lineHeight};
    if (frameBitmap) stripBitmap = createOurBitmap(0, &strip);
    bool complete = flyers && walkers && frameBitmap && stripBitmap;
    for (int i = 0; i < kPictureCount; ++i) {
        pictures[i] = createOurBitmap(kFirstPictureId + i, nullptr);
        complete = complete && pictures[i];
    }
    text = createOurText(module ? static_cast<HINSTANCE>(module) : instance, textId ? textId : kDefaultTextId);
    if (!complete || !text || !CAboutQuillonAppleTalk::parseText()) return;
    // Without the string the face stays empty, which marks the construction as failed.
    LoadStringA(instance, kFaceStringId, creditsFace, sizeof creditsFace);
    std::srand(static_cast<unsigned>(std::time(nullptr)));
}

CAboutQuillonAppleTalk::~CAboutQuillonAppleTalk() {
    if (window && boxOf(window) == this) {
        // Its timer and its messages must not reach for a box that is gone.
        SetWindowLongA(window, DWL_USER, 0);
        DestroyWindow(window);
    }
    delete[] flyers;
    delete[] walkers;
    delete[] lines;
    const BitmapHandle frame(frameBitmap);
    const BitmapHandle strip(stripBitmap);
    for (const HBITMAP picture : pictures) const BitmapHandle ended(picture);
    const PaletteHandle colours(palette);
    const GlobalBlock credits(text);
}

void CAboutQuillonAppleTalk::invoke(int asModal) {
    if (!creditsFace[0] || isOpen()) return;
    modal = asModal;
    const auto argument = reinterpret_cast<LPARAM>(this);
    if (modal) {
        DialogBoxParamA(instance, MAKEINTRESOURCEA(kDialogId), nullptr, dialogProc, argument);
        return;
    }
    const HWND made = CreateDialogParamA(instance, MAKEINTRESOURCEA(kDialogId), nullptr, dialogProc, argument);
    // A derived class may have closed the box, and so deleted it, while the window was being made.
    if (made && boxOf(made) == this && window) ShowWindow(window, SW_SHOWNORMAL);
}

void CAboutQuillonAppleTalk::revoke() {
    const HWND closed = window;
    if (!closed || isClosing(closed)) return;
    // Vanishing takes the focus away, which asks to close once more.
    const LONG kept = keptBy(closed);
    SetWindowLongA(closed, DWL_USER, kept | kClosing);
    const BOOL done = modal ? EndDialog(closed, 0) : DestroyWindow(closed);
    // This box may be gone by now. A window of another thread stays, and so stays open to its own closing.
    if (!done) SetWindowLongA(closed, DWL_USER, kept);
}

int CAboutQuillonAppleTalk::isOpen() {
    return window != nullptr;
}

int CALLBACK CAboutQuillonAppleTalk::dialogProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_INITDIALOG) {
        SetWindowLongA(window, DWL_USER, static_cast<LONG>(lParam));
        auto* const box = reinterpret_cast<CAboutQuillonAppleTalk*>(lParam);
        if (boxOf(window) == box)
            box->initDialog(window);
        else  // nothing would reach the box that the window shows; it stays its owner's
            box->modal ? EndDialog(window, 0) : DestroyWindow(window);
        return boxOf(window) ? 1 : 0;  // a window that is gone gets no focus
    }
    CAboutQuillonAppleTalk* const box = boxOf(window);
    if (!box) return 0;
    switch (message) {
        case WM_PAINT: {
            PAINTSTRUCT area;
            const HDC dc = BeginPaint(window, &area);
            box->paint(dc);
            if (dc) EndPaint(window, &area);
            return 1;
        }
        case WM_TIMER:
            box->doTimer(static_cast<unsigned int>(wParam));
            return 1;
        case WM_KEYDOWN:
        case WM_LBUTTONDOWN:
        case WM_COMMAND:
        case WM_KILLFOCUS:
            if (!isClosing(window) && box->canClose()) box->revoke();
            return 0;
        case WM_GETDLGCODE:
            // A modal dialog's loop would keep the Tab and arrow keys to itself; any key closes this one.
            SetWindowLongA(window, DWL_MSGRESULT, DLGC_WANTALLKEYS);
            return 1;
        case WM_DESTROY:
            SetWindowLongA(window, DWL_USER, 0);
            box->dialogDestroyed();
            return 0;
        default:
            return 0;
    }
}

void CAboutQuillonAppleTalk::initDialog(void* dialog) {
    window = static_cast<HWND>(dialog);
    const int width = frameRect.right;
    const int height = frameRect.bottom;
    // Shifting rounds down, so that a box larger than the screen is centred too.
    MoveWindow(window, (GetSystemMetrics(SM_CXSCREEN) - width) >> 1, (GetSystemMetrics(SM_CYSCREEN) - height) >> 1,
               width, height, TRUE);
    if (const HICON icon = LoadIconA(instance, MAKEINTRESOURCEA(kIconId))) {
        SendMessageA(window, WM_SETICON, ICON_BIG, reinterpret_cast<LPARAM>(icon));
        SendMessageA(window, WM_SETICON, ICON_SMALL, reinterpret_cast<LPARAM>(icon));
    }
    animate();
    SetTimer(window, timerId, timerPeriod, nullptr);
}

void CAboutQuillonAppleTalk::doTimer(unsigned int id) {
    if (id != timerId) return;
    animate();
    InvalidateRect(window, nullptr, FALSE);
}

void CAboutQuillonAppleTalk::paint(void* dc) {
    const HDC target = static_cast<HDC>(dc);
    if (!frameBitmap) return;
    const MemoryContext memory(target);
    if (!memory) return;
    const SelectedObject selected(memory.get(), frameBitmap);
    const SelectedPalette targetColours(target, palette);
    const SelectedPalette memoryColours(memory.get(), palette);
    BitBlt(target, 0, 0, frameRect.right, frameRect.bottom, memory.get(), 0, 0, SRCCOPY);
}

int CAboutQuillonAppleTalk::canClose() {
    return 1;
}

void CAboutQuillonAppleTalk::dialogDestroyed() {
    KillTimer(window, timerId);
    window = nullptr;
    if (!modal) delete this;
}

void TAMRIX_CALL DoQuillonAboutBox() {
    CAboutQuillonAppleTalk box;
    box.invoke(1);
}
