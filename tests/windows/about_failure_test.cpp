// Boxes whose parts are missing, and what they and healthy boxes give back.
#include <gmock/gmock.h>

#include <functional>
#include <memory>

#include "windows/about_probe.h"
#include "windows/call_watch.h"
#include "windows/soak.h"

namespace {

using testing_support::AboutProbe;
using testing_support::ImportHook;

/// Everything that a box takes from the platform, and whether it was given back.
class Balance {
public:
    void expectEven() const {
        EXPECT_EQ(watchCreateCompatibleDC.succeeded(), watchDeleteDC.succeeded());
        EXPECT_EQ(watchGetDC.succeeded(), watchReleaseDC.succeeded());
        EXPECT_EQ(watchCreateCompatibleBitmap.succeeded() + watchCreateFontA.succeeded() +
                      watchCreateSolidBrush.succeeded() + watchCreatePalette.succeeded() +
                      watchCreateDIBSection.succeeded(),
                  watchDeleteObject.succeeded());
        EXPECT_EQ(watchGlobalAlloc.succeeded(), watchGlobalFree.calls());
        EXPECT_EQ(watchGlobalLock.succeeded(), watchGlobalUnlock.calls());
        EXPECT_EQ(watchLoadResource.succeeded(), watchFreeResource.calls());
        EXPECT_EQ(watchSetTimer.succeeded(), watchKillTimer.succeeded());
    }
    int windows() const { return watchDialogBoxParamA.calls() + watchCreateDialogParamA.calls(); }

    TAMRIX_WATCH("gdi32.dll", CreateCompatibleDC);
    TAMRIX_WATCH("gdi32.dll", DeleteDC);
    TAMRIX_WATCH("user32.dll", GetDC);
    TAMRIX_WATCH("user32.dll", ReleaseDC);
    TAMRIX_WATCH("gdi32.dll", CreateCompatibleBitmap);
    TAMRIX_WATCH("gdi32.dll", CreateFontA);
    TAMRIX_WATCH("gdi32.dll", CreateSolidBrush);
    TAMRIX_WATCH("gdi32.dll", CreatePalette);
    TAMRIX_WATCH("gdi32.dll", CreateDIBSection);  // what a painted frame is captured in
    TAMRIX_WATCH("gdi32.dll", DeleteObject);
    TAMRIX_WATCH("kernel32.dll", GlobalAlloc);
    TAMRIX_WATCH("kernel32.dll", GlobalReAlloc);
    TAMRIX_WATCH("kernel32.dll", GlobalFree);
    TAMRIX_WATCH("kernel32.dll", GlobalLock);
    TAMRIX_WATCH("kernel32.dll", GlobalUnlock);
    TAMRIX_WATCH("kernel32.dll", LoadResource);
    TAMRIX_WATCH("kernel32.dll", FreeResource);
    TAMRIX_WATCH("user32.dll", LoadStringA);
    TAMRIX_WATCH("user32.dll", LoadIconA);
    TAMRIX_WATCH("user32.dll", SetTimer);
    TAMRIX_WATCH("user32.dll", KillTimer);
    TAMRIX_WATCH("user32.dll", DialogBoxParamA);
    TAMRIX_WATCH("user32.dll", CreateDialogParamA);
};

/// Whether a box that is built now can be shown; it is closed again.
bool canBeShown(Balance& balance) {
    const int before = balance.windows();
    auto box = std::make_unique<AboutProbe>();
    box->invoke(0);
    const bool open = box->isOpen() != 0;
    EXPECT_EQ(balance.windows() > before, open) << "where nothing is shown no window is asked for";
    box->frame();
    if (open) box.release()->revoke();
    return open;
}

/// The resource that is not found while a test says so.
const char* hiddenType;
int hiddenId;
decltype(&FindResourceA) findResource;
HRSRC WINAPI hidingFindResource(HMODULE module, LPCSTR name, LPCSTR type) {
    const bool sameType =
        IS_INTRESOURCE(hiddenType) || IS_INTRESOURCE(type) ? type == hiddenType : lstrcmpiA(type, hiddenType) == 0;
    return sameType && name == MAKEINTRESOURCEA(hiddenId) ? nullptr : findResource(module, name, type);
}

TEST(AboutFailure, EachMissingPartLeavesABoxThatShowsNothing) {
    Balance balance;
    {
        const ImportHook hook(nullptr, "kernel32.dll", "FindResourceA",
                              reinterpret_cast<const void*>(hidingFindResource));
        findResource = hook.original<decltype(&FindResourceA)>();
        for (const auto& [type, id] : std::initializer_list<std::pair<const char*, int>>{
                 {RT_BITMAP, 1}, {RT_BITMAP, 10}, {RT_BITMAP, 11}, {RT_BITMAP, 12}, {RT_BITMAP, 13}, {"TEXT", 1}}) {
            hiddenType = type;
            hiddenId = id;
            EXPECT_FALSE(canBeShown(balance)) << id;
        }
    }
    balance.watchLoadStringA.failNth(1);
    EXPECT_FALSE(canBeShown(balance)) << "the face of the credits";
    balance.watchLoadStringA.failNth(1);
    DoQuillonAboutBox();
    EXPECT_EQ(balance.windows(), 0);
    EXPECT_TRUE(canBeShown(balance));
    balance.expectEven();
}

TEST(AboutFailure, EachCallThatFailsWhileTheBoxIsBuiltLeavesItUnshown) {
    Balance balance;
    const int forPalette = testing_support::screenHasPalette() ? 1 : 0;  // which may be missing
    // How many calls of each kind building a box takes; each of them fails in turn.
    for (int nth = 1; nth <= 6; ++nth) {
        balance.watchCreateCompatibleBitmap.failNth(nth);
        EXPECT_FALSE(canBeShown(balance)) << "bitmap " << nth;
    }
    for (int nth = 1; nth <= 5; ++nth) {
        balance.watchCreateCompatibleDC.failNth(nth);
        EXPECT_FALSE(canBeShown(balance)) << "memory context " << nth;
        balance.watchLoadResource.failNth(nth + forPalette);
        EXPECT_FALSE(canBeShown(balance)) << "resource " << nth;
    }
    for (int nth = 2; nth <= 7; ++nth) {
        balance.watchGetDC.failNth(nth);
        EXPECT_FALSE(canBeShown(balance)) << "screen " << nth << "; the first asks for a palette";
    }
    balance.watchGlobalAlloc.failNth(1);
    EXPECT_FALSE(canBeShown(balance));
    balance.watchGlobalReAlloc.failNth(1);
    EXPECT_FALSE(canBeShown(balance)) << "a text without its terminator";
    for (int nth = 1; nth <= 2; ++nth) {
        balance.watchGlobalLock.failNth(nth);
        EXPECT_FALSE(canBeShown(balance)) << "lock " << nth;
    }
    EXPECT_TRUE(canBeShown(balance));
    balance.expectEven();
}

int heapFailure;
decltype(&std::malloc) heap;
void* __cdecl failingHeap(std::size_t size) {
    return --heapFailure == 0 ? nullptr : heap(size);
}

TEST(AboutFailure, EachAllocationThatFailsLeavesABoxThatShowsNothing) {
    Balance balance;
    const ImportHook hook(nullptr, "msvcrt.dll", "malloc", reinterpret_cast<const void*>(failingHeap));
    ASSERT_TRUE(hook.installed());
    heap = hook.original<decltype(&std::malloc)>();
    for (const int nth : {1, 2, 3}) {
        // Where memory is short an exception of the standard library's own takes some, too.
        heapFailure = nth;
        AboutProbe box;
        heapFailure = 0;
        box.invoke(1);
        box.animate();
        EXPECT_EQ(box.isOpen(), 0) << "flyers, walkers, lines: allocation " << nth;
    }
    EXPECT_EQ(balance.windows(), 0);
    balance.expectEven();
}

TEST(AboutFailure, WhatIsNotNeededMayBeMissing) {
    Balance balance;
    for (const auto& [name, fail] : std::initializer_list<std::pair<const char*, std::function<void()>>>{
             {"icon", [&] { balance.watchLoadIconA.failNth(1); }},
             {"timer", [&] { balance.watchSetTimer.failNth(1); }},
             {"font", [&] { balance.watchCreateFontA.failNth(1); }},
             {"brush", [&] { balance.watchCreateSolidBrush.failNth(1); }},
             {"palette's screen", [&] { balance.watchGetDC.failNth(1); }}}) {
        fail();
        EXPECT_TRUE(canBeShown(balance)) << name;
    }
    balance.expectEven();
}

TEST(AboutFailure, AWindowThatCannotBeMadeLeavesTheBoxToItsOwner) {
    Balance balance;
    {
        AboutProbe box;
        balance.watchCreateDialogParamA.failNth(1);
        box.invoke(0);
        EXPECT_EQ(box.isOpen(), 0);
        box.revoke();
    }
    balance.expectEven();
}

TEST(AboutBalance, ManyFramesAndBoxesLeaveNothingBehind) {
    Balance balance;
    const int frames = testing_support::soakRounds(500, 10000), boxes = testing_support::soakRounds(100, 1000);
    {
        AboutProbe box;
        for (int i = 0; i < frames; ++i) box.animate();
    }
    balance.expectEven();
    EXPECT_EQ(balance.watchCreateFontA.succeeded(), 4 * frames) << "four fonts a frame";
    for (int i = 0; i < boxes; ++i) EXPECT_TRUE(canBeShown(balance));
    balance.expectEven();
    EXPECT_EQ(balance.watchSetTimer.succeeded(), boxes);
}

}  // namespace
