// The shipped DLL's dialogs through its exports, in a program that was linked with none of its code.
#include <gmock/gmock.h>

#include "extmap_store.h"
#include "windows/mapping_dialog_user.h"
#include "windows/shipped_dll.h"

namespace {

using namespace shipped;
using namespace testing_support;

using MappingDialog = int __cdecl(void* parent, char* creator, char* type);

class ShippedDialogs : public extmap_store::StoreTest {};

TEST_F(ShippedDialogs, EditTheStore) {
    extmap_store::givenMapping(".tmx-a", "TmxT", "TmxC", "A files");
    char creator[] = "TmxC", type[] = "TmxT";
    const auto show = [&] {
        return function<MappingDialog>("?FileExtMapEditDlg@@YAHPAXPAD1@Z")(nullptr, creator, type);
    };
    const auto replaceMapping = [](HWND dialog) {
        EXPECT_THAT(listOf(dialog), testing::ElementsAre(".tmx-a\tA files"));
        selectLine(dialog, 0);
        click(item(dialog, kRemove));
        EXPECT_TRUE(waitForLines(dialog, 0));
        addMapping(dialog, "tmx-b", "B files");
        confirm(dialog);
    };
    EXPECT_EQ(withUser(kEditCaption, replaceMapping, show), 0);
    EXPECT_EQ(extmap_store::mappingOf(".tmx-a"), "(none) (none) (none)");
    EXPECT_EQ(extmap_store::mappingOf(".tmx-b"), "TmxT TmxC B files");
}

INT_PTR CALLBACK endAtOnce(HWND dialog, UINT message, WPARAM, LPARAM param) {
    if (message == WM_INITDIALOG) EndDialog(dialog, GetDlgItem(dialog, 418) ? param : -2);
    return FALSE;
}

TEST_F(ShippedDialogs, AreShownFromTheirTemplates) {
    const auto modal = function<int __cdecl(HINSTANCE, const char*, DLGPROC, HWND, LPARAM)>("ATModalDialog");
    EXPECT_EQ(modal(dll(), MAKEINTRESOURCEA(411), endAtOnce, nullptr, 77), 77);
    EXPECT_EQ(modal(dll(), MAKEINTRESOURCEA(999), endAtOnce, nullptr, 77), -1);

    const auto load = function<void* __cdecl(HINSTANCE, const char*, int)>("LoadTemplateWithCorrectFont");
    const auto release = function<void __cdecl(void*)>("FreeTemplateWithCorrectFont");
    void* const block = load(dll(), MAKEINTRESOURCEA(410), 1);
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(static_cast<DLGTEMPLATE*>(block)->cdit, 12);
    release(block);
    release(nullptr);
}

}  // namespace
