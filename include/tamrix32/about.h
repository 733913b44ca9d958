/// @file
/// Raw resources with a lock count, and the animated about box. Longer than most headers, because clients that derive
/// from these classes need them completely.
#ifndef TAMRIX32_ABOUT_H
#define TAMRIX32_ABOUT_H

#include <windows.h>

#include "tamrix32/export.h"

/// Shows the library's about box modally and returns when it is closed. Shows nothing if the box could not be created.
TAMRIX_FUNCTION void TAMRIX_CALL DoQuillonAboutBox(void);

#ifdef __cplusplus

/// One resource of a module. The first lock loads it, the last unlock releases it. Name and type are strings or integer
/// ids in pointer form; strings must outlive the object. An object may be used by one thread at a time.
class TAMRIX_CLASS CCustomResource {
public:
    /// The low 16 bits of `id` are the resource's integer id.
    CCustomResource(void* module, int id, char* type);
    /// Stores both pointers, not copies. If any argument is null, every lock fails.
    CCustomResource(void* module, char* name, char* type);
    /// Copies the lock count too, so copy only unlocked objects.
    /// @{
    CCustomResource(const CCustomResource&) TAMRIX_DEFAULTED;
    CCustomResource& operator=(const CCustomResource&) TAMRIX_DEFAULTED;
    /// @}
    /// Releases any remaining locks.
    virtual ~CCustomResource();
    /// Returns a moveable global memory block with a copy of the resource (one zero byte if the resource is empty). The
    /// caller owns the block and frees it with GlobalFree. Null if the resource or the memory is not available. Leaves
    /// the lock count unchanged.
    virtual void* copyData();
    /// Adds a lock; the first one loads the resource. Returns 1 if it is now locked, otherwise 0 with nothing changed.
    virtual int lock();
    /// Removes a lock; removing the last one releases the data. Returns 1 while the resource is still locked, otherwise
    /// 0.
    virtual int unlock();
    /// The resource's data; null while unlocked. Valid until the last unlock.
    unsigned char* getAddress();
    /// Size of the resource in bytes; 0 before the first lock. Keeps its value after the last unlock.
    long getSize();
    /// 1 while there is at least one lock, otherwise 0.
    int isLocked();

protected:
    /// Leaves all fields uninitialized; a derived class must call initCustomResource before anything else.
    CCustomResource();
    /// Sets module, name and type and clears the other fields. Releases nothing.
    void initCustomResource(void* module, char* name, char* type);

private:
    friend struct CustomResourceLayout;
    long dataSize;
    unsigned char* dataAddress;
    char* resourceType;
    char* resourceName;
    int lockCount;
    void* module;
    void* resourceData;
};

/// Keeps a resource locked for the duration of a scope. Call the resource's isLocked() to learn whether the lock
/// succeeded.
class TAMRIX_CLASS AutoCustomResource {
public:
    /// Locks the resource, which must outlive this object; the destructor unlocks it once.
    AutoCustomResource(CCustomResource& resource);
    ~AutoCustomResource();
    /// Copies the reference without adding a lock, although each copy's destructor removes one.
    /// @{
    AutoCustomResource(const AutoCustomResource&) TAMRIX_DEFAULTED;
    AutoCustomResource& operator=(const AutoCustomResource&) TAMRIX_DEFAULTED;
    /// @}

private:
    CCustomResource* resource;
};

struct AboutLine;
class CFlyingSprite;
class CWalkingSprite;

/// The animated about box: four pictures in turn, credits that scroll towards the viewer in perspective, sprites on
/// top. The caller owns a modal box. A modeless box must be allocated with new and shown with showModeless(); it
/// deletes itself when its window is destroyed. Until then its thread must run a message loop and the library must stay
/// loaded. A derived class may close the box with revoke() in any virtual function that it overrides.
class TAMRIX_CLASS CAboutQuillonAppleTalk {
public:
    /// The credits come from the "TEXT" resource `textId` of `module`. `textId` 0 means 1, and only its low 16 bits are
    /// used; a null `module` means this library.
    CAboutQuillonAppleTalk(int textId = 0, void* module = 0);  // NOLINT(modernize-use-nullptr): C++98 has none
    /// Destroys the window if it is still open. If another thread owns the window, that thread destroys it when it
    /// handles its next message.
    virtual ~CAboutQuillonAppleTalk();
    /// Shows the box: modally if `modal` is nonzero, otherwise as showModeless() does, but without a result. Does
    /// nothing if the box could not be created or is already open.
    virtual void invoke(int modal);
    /// Closes the box. A modeless box is deleted; if showModeless() is still running, the box is deleted at its end.
    virtual void revoke();
    /// Shows the box modelessly. Returns 1 if a window was created: the box now owns itself and may already be deleted,
    /// so do not use it unless you know that nothing has closed it. Returns 0 if no window was created; the caller
    /// still owns the box.
    int showModeless();
    /// 1 while the box has a window, otherwise 0. Do not call it on a box that may have deleted itself.
    int isOpen();
    /// The dialog procedure.
    static int CALLBACK dialogProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    CAboutQuillonAppleTalk(const CAboutQuillonAppleTalk&) TAMRIX_DELETED;
    CAboutQuillonAppleTalk& operator=(const CAboutQuillonAppleTalk&) TAMRIX_DELETED;

protected:
    /// Draws the next frame into the frame bitmap.
    virtual void animate();
    /// Called when a click, a key, a command or the loss of focus would close the box. Returns 1, which closes it; a
    /// derived class returns 0 to leave it open. Not called again while a call is in progress.
    virtual int canClose();
    /// Handles timer `id`, which fires every 333 milliseconds: draws and shows the next frame.
    virtual void doTimer(unsigned int id);
    /// Called when the window is being destroyed: stops the timer. A modeless box deletes itself here.
    virtual void dialogDestroyed();
    /// Centres the new window `dialog` (an HWND) on the screen, draws the first frame and starts the timer.
    virtual void initDialog(void* dialog);
    /// Copies the frame bitmap to the device context `dc` (an HDC).
    virtual void paint(void* dc);
    /// Splits the credits text into lines. Returns 1, or 0 if memory runs out.
    virtual int parseText();

    /// @name Objects that the box draws with. The caller owns each result; null on failure.
    /// @{

    /// A palette with the colours of a bitmap resource of the library. Also null if the screen has more than 8 bits per
    /// pixel.
    HPALETTE createOurPalette(int bitmapId);
    /// Loads a bitmap resource of the library as a screen bitmap; `rect`, if not null, receives its size in pixels. A
    /// `bitmapId` of 0 creates a blank bitmap of the size of `rect`.
    HBITMAP createOurBitmap(int bitmapId, RECT* rect);
    /// A copy of a "TEXT" resource with a terminating zero byte, in a moveable global memory block.
    HGLOBAL createOurText(HINSTANCE module, int textId);
    /// The credits font, 33 pixels high; a nonzero argument turns its style on.
    HFONT createOurFont(int bold, int italic, int underline);
    /// @}

private:
    friend struct AboutLayout;
    friend struct AboutMessages;
    int flyerCount;
    int walkerCount;
    int textTop;
    int lineHeight;
    unsigned int timerId;
    unsigned int timerPeriod;
    COLORREF textColor;
    COLORREF backColor;
    AboutLine* lines;
    HWND window;
    HPALETTE palette;
    HBITMAP frameBitmap;
    HBITMAP stripBitmap;
    HBITMAP pictures[4];
    HGLOBAL text;
    int pictureIndex;
    int topLine;
    int lineCount;
    int modal;
    RECT frameRect;
    char creditsFace[32];
    CFlyingSprite* flyers;
    CWalkingSprite* walkers;
};

#endif
#endif
