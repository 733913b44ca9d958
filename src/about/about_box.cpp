// The about box's construction, window, timer, painting and closing.
//
// A window property points to the box, so that several boxes may be open. The property is removed on WM_DESTROY and
// when the box is deleted, so that later messages to the window do not use a deleted box.
//
// A derived class may close its box in any virtual function, and a closed modeless box deletes itself. So after each
// virtual call, the box is used only if the window's property still points to it.
#include <cstddef>
#include <cstdlib>
#include <ctime>
#include <new>

#include "about/about_sprites.h"
#include "about/credits_text.h"
#include "about/drawing_handles.h"
#include "about/perspective.h"
#include "base/global_memory.h"
#include "base/module.h"
#include "tamrix32/about.h"

// All compilers of this library support offsetof for a class with virtual functions.
#pragma GCC diagnostic ignored "-Winvalid-offsetof"

/// The layout that compiled clients rely on.
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

/// Properties of the window. The last two are flags: their removal, unlike a change of their value, cannot fail and
/// leave a box that nobody can close.
constexpr char kBoxProperty[] = "Tamrix32 about box";               // the box's address
constexpr char kClosingProperty[] = "Tamrix32 about box: closing";  // the window is closing
constexpr char kAskingProperty[] = "Tamrix32 about box: asking";    // canClose is being called

CAboutQuillonAppleTalk* boxOf(HWND window) {
    return static_cast<CAboutQuillonAppleTalk*>(GetPropA(window, kBoxProperty));
}

void setFlag(HWND window, const char* property) {
    SetPropA(window, property, window);
}

bool hasFlag(HWND window, const char* property) {
    return GetPropA(window, property) != nullptr;
}

/// Values of `modal`.
constexpr int kModeless = 0;
constexpr int kModal = 1;

/// While showModeless runs, `modal` is the address of this struct, which is neither of the two values. A box that
/// closes during that time must not delete itself yet, but a derived class may still delete it.
struct Opening {
    bool hasClosed = false;
    bool isDeleted = false;

    static Opening* of(int modal) {
        return modal == kModeless || modal == kModal ? nullptr : reinterpret_cast<Opening*>(modal);
    }
};

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
    // If the string is missing, the face stays empty, which marks the construction as failed.
    LoadStringA(instance, kFaceStringId, creditsFace, sizeof creditsFace);
    std::srand(static_cast<unsigned>(std::time(nullptr)));
}

CAboutQuillonAppleTalk::~CAboutQuillonAppleTalk() {
    if (Opening* const opening = Opening::of(modal)) opening->isDeleted = true;
    if (boxOf(window) == this) {
        // Timer and other messages must not use the deleted box.
        RemovePropA(window, kBoxProperty);
        // Only its own thread can destroy a window.
        if (!DestroyWindow(window)) PostMessageA(window, WM_CLOSE, 0, 0);
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
    if (!asModal) {
        showModeless();
        return;
    }
    if (!creditsFace[0] || isOpen() || Opening::of(modal)) return;
    modal = kModal;
    DialogBoxParamA(instance, MAKEINTRESOURCEA(kDialogId), nullptr, dialogProc, reinterpret_cast<LPARAM>(this));
}

int CAboutQuillonAppleTalk::showModeless() {
    if (!creditsFace[0] || isOpen() || Opening::of(modal)) return 0;
    Opening opening;
    modal = reinterpret_cast<int>(&opening);
    const HWND made =
        CreateDialogParamA(instance, MAKEINTRESOURCEA(kDialogId), nullptr, dialogProc, reinterpret_cast<LPARAM>(this));
    // The window that had the focus may take it back, which closes the box.
    if (!opening.isDeleted && boxOf(made) == this && window) ShowWindow(made, SW_SHOWNORMAL);
    if (opening.isDeleted) return 1;
    modal = kModeless;
    if (!opening.hasClosed) return boxOf(made) == this;
    delete this;
    return 1;
}

void CAboutQuillonAppleTalk::revoke() {
    const HWND closed = window;
    if (!closed || hasFlag(closed, kClosingProperty)) return;
    // Closing the window removes its focus, which would close the box again.
    setFlag(closed, kClosingProperty);
    const BOOL done = modal == kModal ? EndDialog(closed, 0) : DestroyWindow(closed);
    // This box may have been deleted. A window of another thread is still open and must remain closable.
    if (!done) RemovePropA(closed, kClosingProperty);
}

int CAboutQuillonAppleTalk::isOpen() {
    return window != nullptr;
}

int CALLBACK CAboutQuillonAppleTalk::dialogProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_INITDIALOG) {
        auto* const shown = reinterpret_cast<CAboutQuillonAppleTalk*>(lParam);
        if (SetPropA(window, kBoxProperty, shown))
            shown->initDialog(window);
        else  // without the property the window cannot find its box; the caller still owns the box
            DestroyWindow(window);
        return boxOf(window) ? 1 : 0;  // a destroyed window must not get the focus
    }
    CAboutQuillonAppleTalk* const box = boxOf(window);
    if (message == WM_DESTROY)
        for (const char* property : {kBoxProperty, kClosingProperty, kAskingProperty}) RemovePropA(window, property);
    if (!box) {
        // Another thread deleted the box but could not destroy the window.
        if (message == WM_CLOSE) DestroyWindow(window);
        return message == WM_CLOSE;
    }
    switch (message) {
        case WM_PAINT: {
            PAINTSTRUCT area;
            const HDC dc = BeginPaint(window, &area);
            if (boxOf(window) == box) box->paint(dc);
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
            if (hasFlag(window, kClosingProperty) || hasFlag(window, kAskingProperty)) return 0;
            setFlag(window, kAskingProperty);
            if (const int mayClose = box->canClose(); boxOf(window) == box) {
                RemovePropA(window, kAskingProperty);
                if (mayClose) box->revoke();
            }
            return 0;
        case WM_GETDLGCODE:
            // Otherwise a modal dialog's loop would process the Tab and arrow keys; here any key closes the box.
            SetWindowLongA(window, DWL_MSGRESULT, DLGC_WANTALLKEYS);
            return 1;
        case WM_DESTROY:
            box->dialogDestroyed();
            return 0;
        default:
            return 0;
    }
}

void CAboutQuillonAppleTalk::initDialog(void* dialog) {
    const HWND opened = static_cast<HWND>(dialog);
    window = opened;
    const int width = frameRect.right;
    const int height = frameRect.bottom;
    // Shifting rounds down, so that a box that is larger than the screen is centred too.
    MoveWindow(opened, (GetSystemMetrics(SM_CXSCREEN) - width) >> 1, (GetSystemMetrics(SM_CYSCREEN) - height) >> 1,
               width, height, TRUE);
    if (const HICON icon = LoadIconA(instance, MAKEINTRESOURCEA(kIconId))) {
        SendMessageA(opened, WM_SETICON, ICON_BIG, reinterpret_cast<LPARAM>(icon));
        SendMessageA(opened, WM_SETICON, ICON_SMALL, reinterpret_cast<LPARAM>(icon));
    }
    if (boxOf(opened) != this) return;
    animate();
    if (boxOf(opened) == this) SetTimer(opened, timerId, timerPeriod, nullptr);
}

void CAboutQuillonAppleTalk::doTimer(unsigned int id) {
    if (id != timerId) return;
    const HWND shown = window;
    animate();
    if (boxOf(shown) == this) InvalidateRect(shown, nullptr, FALSE);
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
    if (Opening* const opening = Opening::of(modal))
        opening->hasClosed = true;  // showModeless deletes the box when no member function is running any more
    else if (modal == kModeless)
        delete this;
}

void TAMRIX_CALL DoQuillonAboutBox() {
    CAboutQuillonAppleTalk box;
    box.invoke(1);
}
