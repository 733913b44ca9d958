// The shipped DLL's dialogs and about box with each of their calls of the platform failing in turn: the first, the
// second, ... of every import. Nothing crashes, all that was taken is given back, each dialog can be left, results are
// as stated, and only a refusal by the registry or of memory may cost a mapping.
#include <gmock/gmock.h>

#include <cstdio>
#include <functional>
#include <utility>

#include "extmap_store.h"
#include "windows/failing_imports.h"
#include "windows/mapping_dialog_user.h"
#include "windows/shipped_dll.h"

std::string shipped::dllPath;

namespace {

using namespace shipped;
using extmap_store::givenMapping;
using extmap_store::mappingOf;
using failing_imports::Import;
using failing_imports::Watch;
using namespace testing_support;

constexpr int kEditDialog = 410, kAddDialog = 411;
constexpr std::size_t kBoxSize = 148, kWindowOffset = 40;
constexpr char kAddedLine[] = ".tmx-n\tnew";
constexpr char kChosenFile[] = "D:\\Sub\\{Selecting a folder}";

void command(HWND dialog, int id, int code = 0) {
    SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(id, code), reinterpret_cast<LPARAM>(GetDlgItem(dialog, id)));
}

// Modal dialogs without a loop: real windows that are dealt with as soon as they are made.

struct Modal {
    bool hasEnded;
    INT_PTR result;
    bool wasAsked;
};
std::vector<Modal> modals;  // the innermost last
int modalsMade;

BOOL WINAPI endDialog(HWND, INT_PTR result) {
    modals.back().hasEnded = true;
    modals.back().result = result;
    return TRUE;
}

void useEditor(HWND dialog) {
    command(dialog, kAdd);
    const HWND list = item(dialog, kList);
    SendMessageA(list, LB_SELECTSTRING, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(".tmx-a"));
    command(dialog, kList, LBN_SELCHANGE);
    command(dialog, kRemove);
    command(dialog, kHelp);
    HELPINFO request = {sizeof request, HELPINFO_WINDOW, kList, list, 0, {0, 0}};
    SendMessageA(dialog, WM_HELP, 0, reinterpret_cast<LPARAM>(&request));
    command(dialog, IDOK);  // the user is not sure
    command(dialog, IDOK);
}

void useAddDialog(HWND dialog) {
    command(dialog, IDOK);  // refused, nothing was typed
    fill(dialog, kExtension, "tmx-n");
    fill(dialog, kComment, "new");
    command(dialog, IDOK);
}

void watchFrames(HWND box) {
    SendMessageA(box, WM_TIMER, 1, 0);
    UpdateWindow(box);
    SendMessageA(box, WM_LBUTTONDOWN, 0, 0);
}

void use(HWND dialog) {
    if (item(dialog, kList)) return useEditor(dialog);
    if (item(dialog, kExtension)) return useAddDialog(dialog);
    watchFrames(dialog);
}

INT_PTR dealtWith(HWND dialog) {
    if (dialog) {
        ++modalsMade;
        ShowWindow(dialog, SW_SHOWNA);
        for (int tries = 0; !modals.back().hasEnded && tries < 3; ++tries)
            tries ? command(dialog, IDCANCEL) : use(dialog);
        EXPECT_TRUE(modals.back().hasEnded) << "the dialog can't be left";
        DestroyWindow(dialog);
    }
    const INT_PTR result = dialog ? modals.back().result : -1;
    modals.pop_back();
    return result;
}

INT_PTR WINAPI dialogBox(HINSTANCE module, LPCSTR name, HWND parent, DLGPROC procedure, LPARAM param) {
    modals.push_back({});
    return dealtWith(CreateDialogParamA(module, name, parent, procedure, param));
}

INT_PTR WINAPI dialogBoxIndirect(HINSTANCE module, LPCDLGTEMPLATEA shape, HWND parent, DLGPROC procedure,
                                 LPARAM param) {
    modals.push_back({});
    return dealtWith(CreateDialogIndirectParamA(module, shape, parent, procedure, param));
}

int WINAPI messageBox(HWND, LPCSTR, LPCSTR, UINT) {
    return std::exchange(modals.back().wasAsked, true) ? IDOK : IDCANCEL;
}

BOOL WINAPI winHelp(HWND, LPCSTR, UINT, ULONG_PTR) {
    return TRUE;
}

UINT& browseHelpMessage() {
    return *function<UINT>("?m_HelpMessage@CBrowseDlg@@0IA");
}

BOOL WINAPI chooseFile(OPENFILENAMEA* record) {
    if (record->hwndOwner) SendMessageA(record->hwndOwner, browseHelpMessage(), 0, 0);
    lstrcpyA(record->lpstrFile, kChosenFile);
    return TRUE;
}

const std::map<std::string, void*>& standIns() {
    static const std::map<std::string, void*> functions = {
        {"EndDialog", reinterpret_cast<void*>(endDialog)},
        {"DialogBoxParamA", reinterpret_cast<void*>(dialogBox)},
        {"DialogBoxIndirectParamA", reinterpret_cast<void*>(dialogBoxIndirect)},
        {"MessageBoxA", reinterpret_cast<void*>(messageBox)},
        {"WinHelpA", reinterpret_cast<void*>(winHelp)},
        {"GetOpenFileNameA", reinterpret_cast<void*>(chooseFile)},
        {"GetSaveFileNameA", reinterpret_cast<void*>(chooseFile)},
    };
    return functions;
}

// Wine takes an exception in a window procedure for handled. Errors of the platform's own have codes like this one.
LONG CALLBACK endOnError(EXCEPTION_POINTERS* exception) {
    const DWORD code = exception->ExceptionRecord->ExceptionCode;
    if (code >> 28 != EXCEPTION_ACCESS_VIOLATION >> 28) return EXCEPTION_CONTINUE_SEARCH;
    const auto* const address = static_cast<char*>(exception->ExceptionRecord->ExceptionAddress);
    std::printf("error %#lx at %#x from the DLL's start while %s fails\n", code,
                static_cast<unsigned>(address - reinterpret_cast<char*>(dll())), failing_imports::failure().c_str());
    std::fflush(stdout);
    TerminateProcess(GetCurrentProcess(), 99);
    return EXCEPTION_CONTINUE_SEARCH;
}

std::set<std::string> failedImports;  // of which a call has failed

/// Runs over a class root of its own, so that a pass over it is short.
class EveryFailure : public testing::Test {
protected:
    EveryFailure() {
        EXPECT_EQ(RegCreateKeyA(HKEY_CURRENT_USER, kRoot, &root_), ERROR_SUCCESS);
        EXPECT_EQ(RegOverridePredefKey(HKEY_CLASSES_ROOT, root_), ERROR_SUCCESS);
        handler_ = AddVectoredExceptionHandler(1, endOnError);
    }
    ~EveryFailure() override {
        RemoveVectoredExceptionHandler(handler_);
        extmap_store::removeOurKeys();
        RegOverridePredefKey(HKEY_CLASSES_ROOT, nullptr);
        RegCloseKey(root_);
        RegDeleteKeyA(HKEY_CURRENT_USER, kRoot);
    }

    /// Runs `operation` once for each call that it makes, which fails, and once without a failure.
    template <typename Operation, typename Check>
    void sweep(Operation operation, Check check) {
        Watch watch(dll(), standIns());
        int injected = 0;
        for (const Import& import : failing_imports::all()) {
            for (int nth = 1;; ++nth) {
                watch.start(&import, nth);
                const auto result = operation();
                const auto kept = watch.kept();
                const bool failed = watch.hasFailed();
                watch.start();
                SCOPED_TRACE(std::string(import.name) + ", call " + std::to_string(nth));
                EXPECT_TRUE(kept.empty()) << "thing " << static_cast<int>(kept.begin()->first) << ": "
                                          << kept.begin()->second << " more taken than given back";
                check(result, failed ? &import : nullptr);
                if (!failed || HasFailure()) break;
                failedImports.insert(import.name);
                ++injected;
            }
            if (HasFailure()) break;
        }
        std::printf("%6d faults injected\n", injected);
        EXPECT_GT(injected, 0);
    }

private:
    static constexpr char kRoot[] = "Software\\Tamrix every failure test";
    HKEY root_;
    void* handler_;
};

bool isRegistry(const Import* import) {
    return import && std::string_view(import->library) == "advapi32.dll";
}

bool isReading(const Import& import) {
    const std::string_view name = import.name;
    return name == "RegOpenKeyExA" || name == "RegEnumKeyExA" || name == "RegQueryValueExA";
}

TEST_F(EveryFailure, OfTheMappingEditor) {
    const auto edit = function<int __cdecl(void*, char*, char*)>("?FileExtMapEditDlg@@YAHPAXPAD1@Z");
    const auto editStore = [edit] {
        extmap_store::removeOurKeys();
        givenMapping(".tmx-a", "TmxT", "TmxC", "A files");
        givenMapping(".tmx-k", "TmxT", "TmxC", "kept");
        givenMapping(".tmx-o", "TEXT", "ttxt", "other codes");
        char creator[] = "TmxC", type[] = "TmxT";
        return edit(nullptr, creator, type);
    };
    constexpr char kNothing[] = "(none) (none) (none)";
    sweep(editStore, [&](int result, const Import* failing) {
        EXPECT_EQ(result, 0);
        EXPECT_EQ(mappingOf(".tmx-o"), "TEXT ttxt other codes");
        if (!failing) {
            EXPECT_EQ(mappingOf(".tmx-a"), kNothing);
            EXPECT_EQ(mappingOf(".tmx-n"), "TmxT TmxC new");
        }
        if (isRegistry(failing)) {
            // What could not be read is not listed; what could not be written is one mapping.
            EXPECT_TRUE(isReading(*failing) || mappingOf(".tmx-k") == "TmxT TmxC kept" ||
                        mappingOf(".tmx-n") == "TmxT TmxC new");
            return;
        }
        // Where memory runs out a pass over the store ends or comes without a comment, and what was not listed is not
        // written again.
        const bool lacksMemory = failing && std::string_view(failing->name) == "malloc";
        if (lacksMemory)
            EXPECT_THAT(mappingOf(".tmx-k"), testing::AnyOf("TmxT TmxC kept", "TmxT TmxC (none)", kNothing));
        else
            EXPECT_EQ(mappingOf(".tmx-k"), "TmxT TmxC kept");
        EXPECT_THAT(mappingOf(".tmx-a"), testing::AnyOf("TmxT TmxC A files", kNothing));
        EXPECT_THAT(mappingOf(".tmx-n"), testing::AnyOf("TmxT TmxC new", "TmxT TmxC (none)", kNothing));
    });
}

TEST_F(EveryFailure, OfTheAddDialog) {
    const auto add = function<int __cdecl(void*, char*, char*)>("?AddExtMapDlg@@YAHPAXPAD1@Z");
    const auto addLine = [add] {
        const HWND editor = CreateWindowExA(0, "#32770", "", WS_POPUP, 0, 0, 9, 9, nullptr, nullptr, nullptr, nullptr);
        const HWND list = CreateWindowExA(0, "LISTBOX", "", WS_CHILD | LBS_HASSTRINGS, 0, 0, 9, 9, editor,
                                          reinterpret_cast<HMENU>(kList), nullptr, nullptr);
        char creator[] = "TmxC", type[] = "TmxT";
        const int result = add(editor, creator, type);
        char line[64] = "";
        SendMessageA(list, LB_GETTEXT, 0, reinterpret_cast<LPARAM>(line));
        DestroyWindow(editor);
        return std::pair(result, std::string(line));
    };
    sweep(addLine, [](const std::pair<int, std::string>& result, const Import* failing) {
        EXPECT_TRUE(failing || result == std::pair(1, std::string(kAddedLine)));
        EXPECT_THAT(result.second, testing::AnyOf(kAddedLine, ".tmx-n\t", ""));
        EXPECT_TRUE(result.first == 1 || result.second.empty()) << result.first;
    });
}

TEST_F(EveryFailure, OfTheFolderBrowser) {
    for (const bool asksForFolder : {true, false}) {
        const auto browse = [asksForFolder] {
            UnregisterClassA("browseHelper", dll());
            browseHelpMessage() = 0;
            char file[] = "help.hlp", path[260] = "before", initial[] = "D:\\";
            Storage<24> dialog;
            member("??0CBrowseDlg@@QAE@HHPAXHHHPAD@Z", dialog, 0, int{asksForFolder}, static_cast<void*>(dll()), 223,
                   224, 41, static_cast<char*>(file));
            const int result = member<int>("?invoke@CBrowseDlg@@UAEHPAXPAD1@Z", dialog, static_cast<void*>(nullptr),
                                           static_cast<char*>(path), static_cast<char*>(initial));
            member("??1CBrowseDlg@@UAE@XZ", dialog);
            return std::pair(result, std::string(path));
        };
        const std::string chosen = asksForFolder ? "D:\\Sub" : kChosenFile;
        sweep(browse, [&](const std::pair<int, std::string>& result, const Import* failing) {
            EXPECT_TRUE(failing || result == std::pair(1, chosen));
            EXPECT_TRUE(!result.first || result.second.starts_with(chosen));
        });
    }
}

INT_PTR CALLBACK endAtOnce(HWND, UINT message, WPARAM, LPARAM param) {
    if (message == WM_INITDIALOG) endDialog(nullptr, param);
    return FALSE;
}

INT_PTR CALLBACK doNothing(HWND, UINT, WPARAM, LPARAM) {
    return FALSE;
}

TEST_F(EveryFailure, OfTemplatesInTheConfiguredFont) {
    const auto load = function<void* __cdecl(HINSTANCE, const char*, int)>("LoadTemplateWithCorrectFont");
    const auto release = function<void __cdecl(void*)>("FreeTemplateWithCorrectFont");
    const auto loadAndFree = [=] {
        void* const block = load(dll(), MAKEINTRESOURCEA(kEditDialog), 1);
        const int controls = block ? static_cast<DLGTEMPLATE*>(block)->cdit : -1;
        release(block);
        return controls;
    };
    sweep(loadAndFree, [](int controls, const Import* failing) {
        EXPECT_TRUE(controls == 12 || (failing && controls == -1)) << controls;
    });

    const auto modal = function<int __cdecl(HINSTANCE, const char*, DLGPROC, HWND, LPARAM)>("ATModalDialog");
    sweep([=] { return modal(dll(), MAKEINTRESOURCEA(kAddDialog), endAtOnce, nullptr, 77); },
          [](int result, const Import* failing) { EXPECT_TRUE(result == 77 || (failing && result == -1)) << result; });

    const auto modeless = function<HWND __cdecl(HINSTANCE, const char*, DLGPROC, HWND, LPARAM)>("ATNonModalDialog");
    sweep([=] { return DestroyWindow(modeless(dll(), MAKEINTRESOURCEA(kAddDialog), doNothing, nullptr, 0)); },
          [](BOOL shown, const Import* failing) { EXPECT_TRUE(shown || failing); });
}

TEST_F(EveryFailure, OfTheAboutBox) {
    sweep(
        [] {
            const int before = modalsMade;
            function<void __cdecl()>("DoQuillonAboutBox")();
            return modalsMade > before;
        },
        [](bool shown, const Import* failing) { EXPECT_TRUE(shown || failing); });
}

TEST_F(EveryFailure, OfAModelessAboutBox) {
    // A modeless box frees itself, so its memory is the library's own.
    const auto memory = [](const char* name) { return imported(dll(), "msvcrt.dll", name); };
    const auto show = [memory] {
        void* const box = reinterpret_cast<void* __cdecl (*)(std::size_t)>(memory("malloc"))(kBoxSize);
        if (!box) return false;
        member<void*>("??0CAboutQuillonAppleTalk@@QAE@HPAX@Z", box, 0, static_cast<void*>(nullptr));
        member("?invoke@CAboutQuillonAppleTalk@@UAEXH@Z", box, 0);
        if (!member<int>("?isOpen@CAboutQuillonAppleTalk@@QAEHXZ", box)) {
            member("??1CAboutQuillonAppleTalk@@UAE@XZ", box);
            reinterpret_cast<void __cdecl (*)(void*)>(memory("free"))(box);
            return false;
        }
        const HWND window = *reinterpret_cast<HWND*>(static_cast<char*>(box) + kWindowOffset);
        watchFrames(window);
        if (IsWindow(window)) command(window, IDCANCEL);
        EXPECT_FALSE(IsWindow(window)) << "the box can't be closed";
        return true;
    };
    sweep(show, [](bool shown, const Import* failing) { EXPECT_TRUE(shown || failing); });
}

/// Functions that no dialog and no box calls; the suites of their modules fail them.
bool isWindowless(const std::string& name) {
    static const std::set<std::string> names = {"LCMapStringA", "RegCreateKeyA", "RegDeleteKeyA",
                                                "RegEnumKeyA",  "RegEnumValueA", "RegQueryValueA"};
    return names.count(name) != 0;
}

/// Functions that are called where the screen has a palette.
bool servesPalettes(const std::string& name) {
    return name.find("Palette") != std::string::npos;
}

bool screenHasPalette() {
    const HDC screen = GetDC(nullptr);
    const bool hasPalette = GetDeviceCaps(screen, BITSPIXEL) <= 8;
    ReleaseDC(nullptr, screen);
    return hasPalette;
}

TEST(Imports, HaveAllBeenFailedByNowOrCannotFail) {
    if (failedImports.empty()) GTEST_SKIP() << "to be run behind the others";
    for (const std::string& name : importedBy(dll()))
        EXPECT_TRUE(failedImports.count(name) || failing_imports::isInfallible(name) || isWindowless(name) ||
                    (servesPalettes(name) && !screenHasPalette()))
            << name;
}

}  // namespace

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    if (argc < 2) return std::fputs("usage: every_failure DLL\n", stderr), 2;
    shipped::dllPath = argv[1];
    return RUN_ALL_TESTS();
}
