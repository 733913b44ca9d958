// The exported classes of the shipped DLL, used through their decorated names and virtual tables.
#include "windows/shipped_dll.h"

namespace {

using namespace shipped;

constexpr char kScratch[] = "Software\\Tamrix Test\\shipped";

struct ScratchKey {
    ~ScratchKey() {
        RegDeleteKeyA(HKEY_CURRENT_USER, kScratch);
        RegDeleteKeyA(HKEY_CURRENT_USER, "Software\\Tamrix Test");
    }
};

TEST(RegKey, CreatesWritesReadsAndCloses) {
    ScratchKey scratch;
    Storage<24> key;
    member("??0RegKey@@QAE@XZ", key);
    for (std::size_t offset = 0; offset < 24; offset += 4) EXPECT_EQ(key.at<LONG>(offset), 0) << "at " << offset;
    EXPECT_EQ(member<int>("?Create@RegKey@@QAEHPAUHKEY__@@PBD@Z", key, HKEY_CURRENT_USER, kScratch), 1);
    EXPECT_EQ(key.at<HKEY>(0), HKEY_CURRENT_USER);
    EXPECT_STREQ(key.at<char*>(4), kScratch);
    EXPECT_NE(key.at<HKEY>(8), nullptr);
    EXPECT_EQ(key.at<int>(20), 1);
    EXPECT_EQ(member<int>("?SetString@RegKey@@QAEHPBD0@Z", key, "Greeting", "hello"), 1);
    EXPECT_EQ(member<int>("?SetDword@RegKey@@QAEHPBDK@Z", key, "Number", 77ul), 1);

    Storage<16> value;
    member("??0RegValue@@QAE@XZ", value);
    EXPECT_EQ(member<int>("?ValueByName@RegKey@@QAEHPBDPAVRegValue@@@Z", key, "Greeting", static_cast<void*>(value)),
              1);
    EXPECT_STREQ(value.at<char*>(0), "Greeting");
    EXPECT_EQ(value.at<DWORD>(4), REG_SZ);
    EXPECT_EQ(value.at<DWORD>(8), 6u);
    EXPECT_STREQ(member<char*>("?String@RegValue@@QAEPADXZ", value), "hello");
    EXPECT_EQ(member<int>("?ValueByName@RegKey@@QAEHPBDPAVRegValue@@@Z", key, "Number", static_cast<void*>(value)), 1);
    EXPECT_EQ(member<unsigned long>("?Value@RegValue@@QAEKXZ", value), 77u);
    member("??1RegValue@@QAE@XZ", value);

    EXPECT_EQ(member<int>("?Opened@RegKey@@QAEHXZ", nullptr), 0) << "old clients ask a null key";
    EXPECT_EQ(member<int>("?Close@RegKey@@QAEHXZ", key), 1);
    EXPECT_EQ(key.at<HKEY>(8), nullptr);
    member("??1RegKey@@QAE@XZ", key);
    EXPECT_TRUE(key.guardIntact());
    EXPECT_TRUE(value.guardIntact());
}

TEST(CExtensionMap, WritesFindsAndDeletesAMapping) {
    Storage<36> map;
    char extension[] = ".tamrix-shipped", type[] = "TEXT", creator[] = "tmrx";
    member("??0CExtensionMap@@QAE@XZ", map);
    member("?SetExtension@CExtensionMap@@QAEXPAD@Z", map, static_cast<char*>(extension));
    member("?SetType@CExtensionMap@@QAEXPAD@Z", map, static_cast<char*>(type));
    member("?SetCreator@CExtensionMap@@QAEXPAD@Z", map, static_cast<char*>(creator));
    EXPECT_STREQ(map.at<char*>(4), extension);
    EXPECT_STREQ(map.at<char*>(8), type);
    EXPECT_STREQ(map.at<char*>(12), creator);
    EXPECT_EQ(member<int>("?Create@CExtensionMap@@QAEHXZ", map), 1);
    EXPECT_EQ(function<int(char*)>("?HasExtMap@@YAHPAD@Z")(extension), 1);
    EXPECT_EQ(
        member<int>("?FirstCT@CExtensionMap@@QAEHPAD0@Z", map, static_cast<char*>(creator), static_cast<char*>(type)),
        1);
    EXPECT_STREQ(member<char*>("?Extension@CExtensionMap@@QAEPADXZ", map), extension);
    EXPECT_EQ(member<int>("?NextCT@CExtensionMap@@QAEHXZ", map), 0);
    EXPECT_EQ(member<int>("?Delete@CExtensionMap@@QAEHXZ", map), 1);
    EXPECT_EQ(function<int(char*)>("?HasExtMap@@YAHPAD@Z")(extension), 0);
    member("??1CExtensionMap@@QAE@XZ", map);
    EXPECT_TRUE(map.guardIntact());
    RegDeleteKeyA(HKEY_CLASSES_ROOT, extension);
}

int lockCalls;
int __thiscall countedLock(void* resource) {
    ++lockCalls;
    return member<int>("?lock@CCustomResource@@UAEHXZ", resource);
}

TEST(CCustomResource, CallsLockThroughItsSlot) {
    Storage<32> resource;
    char type[] = "TEXT";
    member("??0CCustomResource@@QAE@PAXHPAD@Z", resource, static_cast<void*>(dll()), 0x10001, static_cast<char*>(type));
    EXPECT_EQ(resource.at<long>(4), 0);
    EXPECT_EQ(resource.at<DWORD>(16), 1u) << "the low 16 bits name the resource";

    // What a derived class of an old client does: a table of its own with one slot replaced.
    void** const table = resource.at<void**>(0);
    void* derived[4] = {table[0], table[1], reinterpret_cast<void*>(countedLock), table[3]};
    resource.at<void**>(0) = derived;
    lockCalls = 0;
    const HGLOBAL copy = slot<void* __thiscall(void*)>(resource, 1)(resource);
    EXPECT_NE(copy, nullptr);
    EXPECT_EQ(lockCalls, 1);
    EXPECT_EQ(member<int>("?isLocked@CCustomResource@@QAEHXZ", resource), 0);
    EXPECT_EQ(GlobalSize(copy) > 0, true);
    GlobalFree(copy);

    Storage<4> guard;
    member("??0AutoCustomResource@@QAE@AAVCCustomResource@@@Z", guard, static_cast<void*>(resource));
    EXPECT_EQ(lockCalls, 2);
    EXPECT_EQ(member<int>("?isLocked@CCustomResource@@QAEHXZ", resource), 1);
    member("??1AutoCustomResource@@QAE@XZ", guard);
    EXPECT_EQ(member<int>("?isLocked@CCustomResource@@QAEHXZ", resource), 0);
    member("??1CCustomResource@@UAE@XZ", resource);
    EXPECT_TRUE(resource.guardIntact());
    EXPECT_TRUE(guard.guardIntact());
}

TEST(CBrowseDlg, HoldsItsSettingsInTheStatedPlaces) {
    Storage<24> dialog;
    char help[] = "ATHELP.HLP";
    member("??0CBrowseDlg@@QAE@HHPAXHHHPAD@Z", dialog, 0, 1, static_cast<void*>(dll()), 11, 12, 13,
           static_cast<char*>(help));
    EXPECT_EQ(dialog.at<HMODULE>(4), dll());
    EXPECT_EQ(dialog.at<int>(8), 11);
    EXPECT_EQ(dialog.at<int>(12), 12);
    EXPECT_EQ(dialog.at<int>(16), 1) << "a folder is always picked by the save dialog";
    EXPECT_EQ(dialog.at<int>(20), 1);
    EXPECT_EQ(*function<int>("?m_nHelpID@CBrowseDlg@@0HA"), 13);
    EXPECT_STREQ(*function<char*>("?m_pcHelpFile@CBrowseDlg@@0PADA"), help);
    EXPECT_EQ(*function<UINT>("?m_HelpMessage@CBrowseDlg@@0IA"), RegisterWindowMessageA("commdlg_help"));
    member("??1CBrowseDlg@@UAE@XZ", dialog);
    EXPECT_TRUE(dialog.guardIntact());
}

int __thiscall refuseToClose(void*) {
    return 0;
}

TEST(CAboutQuillonAppleTalk, OpensAndAsksItsSlotBeforeClosing) {
    // The table, 22 fields of 4 bytes, the rectangle, the face, and the two arrays of sprites.
    constexpr std::size_t kModal = 88, kFace = 108, kSize = 148;
    Storage<kSize> box;
    member("??0CAboutQuillonAppleTalk@@QAE@HPAX@Z", box, 0, static_cast<void*>(nullptr));
    EXPECT_EQ(box.at<int>(4), 3);
    EXPECT_EQ(box.at<int>(12), 245);
    EXPECT_EQ(box.at<UINT>(24), 333u);
    EXPECT_STREQ(&box.at<char>(kFace), "Arial");
    EXPECT_TRUE(box.guardIntact());
    void** const table = box.at<void**>(0);
    void* derived[10];
    std::memcpy(derived, table, sizeof derived);
    derived[4] = reinterpret_cast<void*>(refuseToClose);
    box.at<void**>(0) = derived;

    // Marked as modal, so that it stays this test's when its window goes; a modeless box deletes itself.
    box.at<int>(kModal) = 1;
    const auto procedure = function<INT_PTR CALLBACK(HWND, UINT, WPARAM, LPARAM)>(
        "?dialogProc@CAboutQuillonAppleTalk@@SGHPAUHWND__@@IIJ@Z");
    const HWND window = CreateDialogParamA(dll(), MAKEINTRESOURCEA(1), nullptr, procedure,
                                           reinterpret_cast<LPARAM>(static_cast<void*>(box)));
    ASSERT_NE(window, nullptr);
    RECT place;
    GetWindowRect(window, &place);
    EXPECT_EQ(place.right - place.left, 411);
    EXPECT_EQ(place.bottom - place.top, 411);
    EXPECT_EQ(place.left, (GetSystemMetrics(SM_CXSCREEN) - 411) >> 1);
    SendMessageA(window, WM_LBUTTONDOWN, 0, 0);
    EXPECT_TRUE(IsWindow(window)) << "the derived slot refuses";
    DestroyWindow(window);
    box.at<void**>(0) = table;
    member("??1CAboutQuillonAppleTalk@@UAE@XZ", box);
    EXPECT_TRUE(box.guardIntact());
}

}  // namespace
