// What a user does in the mapping dialogs.
#pragma once

#include <gtest/gtest.h>

#include "windows/user.h"

namespace testing_support {

inline constexpr char kEditCaption[] = "Edit File Extension Mapping";
inline constexpr char kAddCaption[] = "Add Filename Extension Mapping";
inline constexpr char kConfirmation[] = "Are You Sure?";
inline constexpr char kError[] = "Error:";

enum Item { kList = 414, kAdd, kRemove, kHelp, kExtension, kComment, kCreator = 380, kType = 379 };

inline HWND item(HWND dialog, int id) {
    return GetDlgItem(dialog, id);
}

inline bool isEnabled(HWND dialog, int id) {
    return IsWindowEnabled(item(dialog, id)) != FALSE;
}

inline std::vector<std::string> listOf(HWND dialog) {
    return linesOf(item(dialog, kList));
}

inline bool waitForLines(HWND dialog, std::size_t count) {
    return waitUntil([&] { return listOf(dialog).size() == count; });
}

inline LRESULT selection(HWND dialog) {
    return SendMessageA(item(dialog, kList), LB_GETCURSEL, 0, 0);
}

inline HWND focusOf(HWND dialog) {
    GUITHREADINFO info = {};
    info.cbSize = sizeof info;
    GetGUIThreadInfo(GetWindowThreadProcessId(dialog, nullptr), &info);
    return info.hwndFocus;
}

inline void selectLine(HWND dialog, int index) {
    RECT line;
    SendMessageA(item(dialog, kList), LB_GETITEMRECT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&line));
    clickAt(item(dialog, kList), line.left + 10, (line.top + line.bottom) / 2);
    EXPECT_TRUE(waitUntil([&] { return selection(dialog) == index; }));
}

inline void fill(HWND dialog, int id, const std::string& text) {
    SendMessageA(item(dialog, id), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str()));
}

/// Clicks a button that closes its dialog.
inline void clickAway(HWND dialog, int id) {
    click(item(dialog, id));
    EXPECT_TRUE(waitUntilGone(dialog));
}

inline HWND openAddDialog(HWND dialog) {
    click(item(dialog, kAdd));
    return waitForWindow(kAddCaption);
}

inline void addMapping(HWND dialog, const std::string& extension, const std::string& comment) {
    const HWND add = openAddDialog(dialog);
    fill(add, kExtension, extension);
    fill(add, kComment, comment);
    clickAway(add, IDOK);
}

inline void confirm(HWND dialog) {
    click(item(dialog, IDOK));
    const HWND question = waitForWindow(kConfirmation);
    clickAway(question, IDOK);
    EXPECT_TRUE(waitUntilGone(dialog));
}

}  // namespace testing_support
