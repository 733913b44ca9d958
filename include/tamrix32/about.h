/// @file
/// Counted access to raw resources, and the animated about box.
#ifndef TAMRIX32_ABOUT_H
#define TAMRIX32_ABOUT_H

#include <windows.h>

#include "tamrix32/export.h"

/// Shows the library's about box modally; returns once it is closed. Shows nothing when it could not be built.
TAMRIX_FUNCTION void TAMRIX_CALL DoQuillonAboutBox(void);

#ifdef __cplusplus

/// One resource of a module. Nothing is loaded before the first lock; the last unlock releases it. Name and type are
/// strings or integer ids in pointer form and must outlive the object. One thread at a time.
class TAMRIX_CLASS CCustomResource {
public:
    /// The low 16 bits of `id` name the resource.
    CCustomResource(void* module, int id, char* type);
    /// Keeps both pointers; a null argument makes every lock fail.
    CCustomResource(void* module, char* name, char* type);
    /// Copies the locks with the rest: copy unlocked objects only.
    /// @{
    CCustomResource(const CCustomResource&) TAMRIX_DEFAULTED;
    CCustomResource& operator=(const CCustomResource&) TAMRIX_DEFAULTED;
    /// @}
    /// Releases what is still locked.
    virtual ~CCustomResource();
    /// A moveable global block with a copy of the bytes (one zero byte for an empty resource), owned by the caller who
    /// frees it with GlobalFree; null when the resource or the memory cannot be had. The lock count ends as it began.
    virtual void* copyData();
    /// Counts one more lock, loading the resource for the first; 1 when it is locked now, else 0 and nothing changed.
    virtual int lock();
    /// Counts one lock less, releasing the data with the last; 1 while it is still locked.
    virtual int unlock();
    /// The bytes; null while unlocked.
    unsigned char* getAddress();
    /// Bytes of the resource; 0 before the first lock, kept after the last unlock.
    long getSize();
    /// 1 while at least one lock is held.
    int isLocked();

protected:
    /// Leaves every field undefined; a derived class calls initCustomResource next.
    CCustomResource();
    /// Sets module, name and type and clears the rest without releasing anything.
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

/// Holds a resource locked for the length of a block; ask the resource's isLocked() whether it worked.
class TAMRIX_CLASS AutoCustomResource {
public:
    /// Locks the resource, which must outlive this object; the destructor unlocks it once.
    AutoCustomResource(CCustomResource& resource);
    ~AutoCustomResource();
    /// Copies the reference and locks nothing, while each copy's destructor unlocks.
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

/// The animated about box: four pictures in turn, credits that travel towards the viewer, sprites on top. A modal box
/// belongs to its owner. A modeless box is allocated with new, shown with showModeless(), and deletes itself when its
/// window goes; its thread runs a message loop until then, and the library stays loaded. A derived class may close its
/// box, with revoke(), in any of the operations that it replaces.
class TAMRIX_CLASS CAboutQuillonAppleTalk {
public:
    /// The credits are the "TEXT" resource `textId` (0 means 1, low 16 bits count) of `module` (null: the library).
    CAboutQuillonAppleTalk(int textId = 0, void* module = 0);
    /// Takes a window that is still open along; on another thread than the window's, as soon as that thread gets its
    /// next message.
    virtual ~CAboutQuillonAppleTalk();
    /// Shows the box; modally when `modal` is nonzero, else as showModeless() does, without saying whether it worked.
    /// Does nothing when the box could not be built or is open.
    virtual void invoke(int modal);
    /// Closes the box. A modeless box is deleted, but while showModeless() runs only at its end.
    virtual void revoke();
    /// Shows the box modelessly. 1 when a window was made: from then on the box belongs to itself, and it may be gone
    /// already, so leave it alone unless you know that nothing has closed it. 0 when none was made, and the box is
    /// still its owner's.
    int showModeless();
    /// 1 while the box has a window. Only a box that is known to be alive may be asked.
    int isOpen();
    /// The dialog procedure.
    static int CALLBACK dialogProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    CAboutQuillonAppleTalk(const CAboutQuillonAppleTalk&) TAMRIX_DELETED;
    CAboutQuillonAppleTalk& operator=(const CAboutQuillonAppleTalk&) TAMRIX_DELETED;

protected:
    /// Composes the next frame into the frame bitmap.
    virtual void animate();
    /// 1 lets a click, a key, a command or the loss of focus close the box. Not asked again while it is being asked.
    virtual int canClose();
    /// The timer `id` fired, every 333 milliseconds: composes and shows the next frame.
    virtual void doTimer(unsigned int id);
    /// The window is going: stops the timer; a modeless box deletes itself here.
    virtual void dialogDestroyed();
    /// Centres the new window `dialog` (an HWND) on the screen, composes the first frame and starts the timer.
    virtual void initDialog(void* dialog);
    /// Copies the frame bitmap to `dc` (an HDC).
    virtual void paint(void* dc);
    /// Builds the line table from the credits text; 0 when memory runs out.
    virtual int parseText();

    /// @name What the box draws with: each result is the caller's, and null on failure.
    /// @{

    /// The colours of a bitmap resource of the library; null as well where the screen has more than 8 bits a pixel.
    HPALETTE createOurPalette(int bitmapId);
    /// A bitmap resource of the library, its size written to `rect` where given; 0 makes a blank one of that size.
    HBITMAP createOurBitmap(int bitmapId, RECT* rect);
    /// A copy of a "TEXT" resource, terminated by a zero byte.
    HGLOBAL createOurText(HINSTANCE module, int textId);
    /// The credits' face, 33 pixels high, in one of its four forms.
    HFONT createOurFont(int bold, int italic, int underline);
    /// @}

private:
    friend struct AboutLayout;
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
