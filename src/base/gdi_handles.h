// Owners of drawing handles. Each gives back what it holds in the way that kind of handle asks for; a selected object's
// owner carries the device context and puts the former object back. Declare them in the order of use, so that a font is
// deselected before it is deleted.
#pragma once

#include <windows.h>

#include "base/unique_handle.h"

namespace tamrix {

template <typename Object>
struct GdiObjectTraits {
    using Handle = Object;
    static constexpr Handle kNone = nullptr;
    static void close(Handle handle) { DeleteObject(handle); }
};

/// A font, brush, bitmap or palette of ours. Stock objects belong to the platform and never come in here.
template <typename Object>
using GdiObject = UniqueHandle<GdiObjectTraits<Object>>;

using FontHandle = GdiObject<HFONT>;

/// The device context of a window, or of the whole screen.
class WindowContext {
public:
    explicit WindowContext(HWND window = nullptr) : window_(window), context_(GetDC(window)) {}
    ~WindowContext() {
        if (context_) ReleaseDC(window_, context_);
    }
    WindowContext(const WindowContext&) = delete;
    WindowContext& operator=(const WindowContext&) = delete;

    HDC get() const { return context_; }
    explicit operator bool() const { return context_ != nullptr; }

private:
    HWND window_;
    HDC context_;
};

/// An object selected into a device context for as long as this lives. A null object selects nothing.
class SelectedObject {
public:
    SelectedObject(HDC context, HGDIOBJ object)
        : context_(context), former_(object ? SelectObject(context, object) : nullptr) {}
    ~SelectedObject() {
        if (former_) SelectObject(context_, former_);
    }
    SelectedObject(const SelectedObject&) = delete;
    SelectedObject& operator=(const SelectedObject&) = delete;

    explicit operator bool() const { return former_ != nullptr; }

private:
    HDC context_;
    HGDIOBJ former_;
};

}  // namespace tamrix
