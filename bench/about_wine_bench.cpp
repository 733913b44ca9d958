// about_wine_bench DLL: compares the time of a frame of the shipped DLL's about box with that of its drawing calls
// alone, which use the same bitmaps, fonts and text. Also measures the processor time of an open box.
#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "table.h"

namespace {

constexpr double kLimit = 1.3;
constexpr double kShareLimit = 0.02;
constexpr DWORD kOpenMilliseconds = 20000;
constexpr int kRounds = 15;

struct Line {
    DWORD offset;
    LONG length;
};

/// The box's fields, in the layout that its clients rely on.
struct Box {
    void** slots;
    int before[8];
    Line* lines;
    void* window;
    HPALETTE palette;
    HBITMAP frame;
    HBITMAP strip;
    HBITMAP pictures[4];
    HGLOBAL text;
    int pictureIndex;
    int topLine;
    int lineCount;
    int rest[15];
};
static_assert(sizeof(Box) == 148);

using Construct = void*(__attribute__((thiscall)) *)(Box*, int, void*);
using Method = void(__attribute__((thiscall)) *)(Box*);
using Invoke = void(__attribute__((thiscall)) *)(Box*, int);
constexpr int kAnimateSlot = 3;

/// Only the platform calls that a frame needs, without any check.
class BareFrame {
public:
    BareFrame(const Box& box, HMODULE library) : box_(box) {
        const HGLOBAL text = box.text;
        text_ = static_cast<const char*>(GlobalLock(text));
        GlobalUnlock(text);
        for (int i = 0; i < 5; ++i) icons_[i] = LoadIconA(library, MAKEINTRESOURCEA(10 + i % 4));
    }

    void draw() {
        const HDC screen = GetDC(nullptr);
        const HDC frame = CreateCompatibleDC(screen);
        const HDC strip = CreateCompatibleDC(screen);
        const HGDIOBJ formerFrame = SelectObject(frame, box_.frame);
        const HGDIOBJ formerStrip = SelectObject(strip, box_.strip);
        IntersectClipRect(frame, 14, 14, 397, 397);
        drawCredits(frame, strip);
        const HDC source = CreateCompatibleDC(frame);
        const HGDIOBJ formerSource = SelectObject(source, box_.pictures[picture_]);
        BitBlt(frame, 14, 14, 383, 180, source, 0, 0, SRCCOPY);
        SelectObject(source, formerSource);
        DeleteDC(source);
        for (int i = 0; i < 5; ++i) DrawIcon(frame, 60 + 50 * i, 60, icons_[i]);
        SelectObject(strip, formerStrip);
        SelectObject(frame, formerFrame);
        DeleteDC(strip);
        DeleteDC(frame);
        ReleaseDC(nullptr, screen);
        if (picture_ % 2) top_ = (top_ + 1) % box_.lineCount;
        picture_ = (picture_ + 1) % 4;
    }

private:
    static HFONT font(int weight, DWORD italic, DWORD underlined) {
        return CreateFontA(33, 0, 0, 0, weight, italic, underlined, 0, DEFAULT_CHARSET, 0, 0, 0, 0, "Arial");
    }

    void drawCredits(HDC frame, HDC strip) const {
        const HFONT fonts[] = {font(400, 0, 0), font(700, 0, 0), font(400, 1, 0), font(400, 0, 1)};
        const HBRUSH brush = CreateSolidBrush(RGB(0, 128, 128));
        const RECT area = {14, 245, 397, 397};
        GlobalLock(box_.text);
        FillRect(frame, &area, brush);
        SetTextColor(strip, RGB(255, 255, 255));
        SetBkMode(strip, TRANSPARENT);
        int x = 137, y = 245, width = 137;
        for (int k = 0; k < 10; ++k) {
            RECT rect = {0, 0, 411, 33};
            FillRect(strip, &rect, brush);
            if (k <= top_) drawLine(strip, rect, box_.lines[top_ - k], fonts);
            SetStretchBltMode(frame, COLORONCOLOR);
            if (k < 5) SetStretchBltMode(frame, HALFTONE);
            for (int i = 0; i < 3; ++i, --x, y += k + 1, width += 2)
                StretchBlt(frame, x, y, width, k + 1, strip, 0, 11 * i, 411, 11, SRCCOPY);
            x -= 3 * k;
            width += 6 * k;
        }
        SetBkMode(strip, OPAQUE);
        SetTextColor(strip, 0);
        GlobalUnlock(box_.text);
        for (const HFONT made : fonts) DeleteObject(made);
        DeleteObject(brush);
    }

    void drawLine(HDC strip, RECT rect, const Line& line, const HFONT* fonts) const {
        const char* const text = text_ + line.offset;
        const char* const marker = line.length ? std::strchr("*/_", *text) : nullptr;
        const int shown = marker ? 1 : 0;
        const HGDIOBJ former = SelectObject(strip, fonts[marker ? 1 + (*marker == '/') + 2 * (*marker == '_') : 0]);
        DrawTextA(strip, text + shown, line.length - shown, &rect, DT_CENTER | DT_SINGLELINE | DT_NOPREFIX);
        SelectObject(strip, former);
    }

    const Box& box_;
    const char* text_;
    HICON icons_[5];
    int picture_ = 0;
    int top_ = 0;
};

/// Milliseconds per frame, over one cycle of the credits.
template <typename Draw>
double milliseconds(int frames, Draw draw) {
    LARGE_INTEGER frequency, begin, end;
    QueryPerformanceFrequency(&frequency);
    QueryPerformanceCounter(&begin);
    for (int i = 0; i < frames; ++i) draw();
    GdiFlush();
    QueryPerformanceCounter(&end);
    return static_cast<double>(end.QuadPart - begin.QuadPart) * 1e3 / static_cast<double>(frequency.QuadPart) / frames;
}

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

/// The processor time of this process so far, in nanoseconds, without that of the X server and the Wine server.
double processorTime() {
    FILETIME created, ended, kernel, user;
    GetProcessTimes(GetCurrentProcess(), &created, &ended, &kernel, &user);
    const auto units = [](FILETIME time) { return time.dwHighDateTime * 4294967296.0 + time.dwLowDateTime; };
    return 100 * (units(kernel) + units(user));
}

/// Keeps a modeless box open. Returns its processor time per second, or a negative number if it did not stay open.
double openBox(Construct construct, HMODULE library) {
    const auto invoke = reinterpret_cast<Invoke>(
        reinterpret_cast<void*>(GetProcAddress(library, "?invoke@CAboutQuillonAppleTalk@@UAEXH@Z")));
    const auto revoke = reinterpret_cast<Method>(
        reinterpret_cast<void*>(GetProcAddress(library, "?revoke@CAboutQuillonAppleTalk@@UAEXXZ")));
    const auto box = static_cast<Box*>(std::malloc(sizeof(Box)));  // deletes itself from the same heap
    construct(box, 0, nullptr);
    invoke(box, 0);
    int frames = 0;
    const double before = processorTime();
    const DWORD begin = GetTickCount();
    for (DWORD passed; (passed = GetTickCount() - begin) < kOpenMilliseconds;) {
        MsgWaitForMultipleObjects(0, nullptr, FALSE, kOpenMilliseconds - passed, QS_ALLINPUT);
        for (MSG message; PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE); DispatchMessageA(&message))
            frames += message.message == WM_TIMER;
    }
    const double taken = processorTime() - before;
    if (frames < 50) return -1;
    revoke(box);
    return taken * 1000 / kOpenMilliseconds;
}

}  // namespace

int main(int argc, char** argv) {
    const HMODULE library = argc > 1 ? LoadLibraryA(argv[1]) : nullptr;
    const auto construct = reinterpret_cast<Construct>(
        reinterpret_cast<void*>(library ? GetProcAddress(library, "??0CAboutQuillonAppleTalk@@QAE@HPAX@Z") : nullptr));
    if (!construct) {
        std::fprintf(stderr, "about_wine_bench: can't load %s\n", argc > 1 ? argv[1] : "(name the DLL)");
        return 2;
    }
    static Box box;
    construct(&box, 0, nullptr);
    if (!box.lines) {
        std::fputs("about_wine_bench: the box could not be built\n", stderr);
        return 2;
    }
    const auto animate = reinterpret_cast<Method>(box.slots[kAnimateSlot]);
    BareFrame bare(box, library);
    const int cycle = 4 * box.lineCount;
    std::vector<double> bareTimes, ratios;
    for (int round = 0; round <= kRounds; ++round) {
        const double ours = milliseconds(cycle, [&] { animate(&box); });
        const double theirs = milliseconds(cycle, [&] { bare.draw(); });
        if (round == 0) continue;  // the first round also renders the glyphs
        bareTimes.push_back(theirs);
        ratios.push_back(ours / theirs);
    }
    // The median of the rounds' ratios, because other load on the machine affects both halves of a round equally.
    const double bareFrame = median(bareTimes) * 1e6;
    const bool fast = printRow({"animate", median(ratios) * bareFrame, 0, "bare drawing calls", bareFrame, kLimit});
    const double taken = openBox(construct, library);
    if (taken < 0) {
        std::fputs("about_wine_bench: the box did not stay open\n", stderr);
        return 2;
    }
    return printRow({"open box, a second", taken, 0, "a core, a second", 1e9, kShareLimit}) && fast ? 0 : 1;
}
