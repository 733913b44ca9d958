// The about box's construction, window, timer, painting and closing.
//
// A window property points to the box, so that several boxes may be open. The property is removed on WM_DESTROY and
// when the box is deleted, so that later messages to the window do not use a deleted box.
//
// A derived class may close its box in any virtual function, and a closed modeless box deletes itself. So after each
// virtual call, the box is used only if the window's property still points to it.
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

/// Properties of the window. The last two are flags, which are set while the property exists. Changing a property's
/// value can fail, but removing it cannot, so a box can always be closed again.
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

/// Values of `modal`, except during showModeless.
constexpr int kModeless = 0;
constexpr int kModal = 1;

/// While showModeless runs, `modal` is the address of this struct, which differs from both values. A box that closes
/// during that time must not delete itself yet, but a derived class may still delete it.
struct Opening {
    bool hasClosed = false;
    bool isDeleted = false;

    static Opening* of(int modal) {
        return modal == kModeless || modal == kModal ? nullptr : reinterpret_cast<Opening*>(modal);
    }
};

}  // namespace

/// The handlers of the dialog's messages. Each returns the result of the dialog procedure.
struct AboutMessages {
    using Box = CAboutQuillonAppleTalk;

    static int open(HWND window, Box* box) {
        if (SetPropA(window, kBoxProperty, box))
            box->initDialog(window);
        else  // without the property the window cannot find its box; the caller still owns the box
            DestroyWindow(window);
        return boxOf(window) ? 1 : 0;  // a destroyed window must not get the focus
    }

    /// A window has no box if another thread deleted the box. That thread could not destroy the window and posted
    /// WM_CLOSE.
    static int handleWithoutBox(HWND window, UINT message) {
        if (message != WM_CLOSE) return 0;
        DestroyWindow(window);
        return 1;
    }

    static int paint(HWND window, Box* box) {
        PAINTSTRUCT area;
        const HDC dc = BeginPaint(window, &area);
        // BeginPaint sends messages to the window, so the box may have been deleted.
        if (boxOf(window) == box) box->paint(dc);
        if (dc) EndPaint(window, &area);
        return 1;
    }

    static int askToClose(HWND window, Box* box) {
        if (hasFlag(window, kClosingProperty) || hasFlag(window, kAskingProperty)) return 0;
        setFlag(window, kAskingProperty);
        const int mayClose = box->canClose();
        if (boxOf(window) != box) return 0;
        RemovePropA(window, kAskingProperty);
        if (mayClose) box->revoke();
        return 0;
    }

    /// Otherwise a modal dialog's loop would process the Tab and arrow keys; here any key closes the box.
    static int requestAllKeys(HWND window) {
        SetWindowLongA(window, DWL_MSGRESULT, DLGC_WANTALLKEYS);
        return 1;
    }

    static void removeProperties(HWND window) {
        for (const char* property : {kBoxProperty, kClosingProperty, kAskingProperty}) RemovePropA(window, property);
    }
};

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
    // The owners release the handles at the end of their scope.
    const BitmapHandle frame(frameBitmap);
    const BitmapHandle strip(stripBitmap);
    for (const HBITMAP picture : pictures) const BitmapHandle owner(picture);
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
    if (message == WM_INITDIALOG) return AboutMessages::open(window, reinterpret_cast<CAboutQuillonAppleTalk*>(lParam));
    CAboutQuillonAppleTalk* const box = boxOf(window);
    if (message == WM_DESTROY) AboutMessages::removeProperties(window);
    if (!box) return AboutMessages::handleWithoutBox(window, message);
    switch (message) {
        case WM_PAINT:
            return AboutMessages::paint(window, box);
        case WM_TIMER:
            box->doTimer(static_cast<unsigned int>(wParam));
            return 1;
        case WM_KEYDOWN:
        case WM_LBUTTONDOWN:
        case WM_COMMAND:
        case WM_KILLFOCUS:
            return AboutMessages::askToClose(window, box);
        case WM_GETDLGCODE:
            return AboutMessages::requestAllKeys(window);
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
