// Owner types for drawing handles. Each releases its handle with the function for that kind of handle. The destructor
// of a SelectedObject selects the previous object again. Declare an object's owner before its SelectedObject:
// destructors run in reverse order, so the object is no longer selected when it is deleted.
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

/// A font, brush, bitmap or palette that we created. Not for stock objects, which belong to the platform.
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

/// Selects an object into a device context for its own lifetime. A null object selects nothing.
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
