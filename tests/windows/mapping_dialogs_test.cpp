// The two dialogs that edit extension mappings, as a user uses them.
#include "registry_text.h"
#include "windows/scenario.h"

namespace {

using namespace scenarios;
using shipped::function;

constexpr int kList = 414, kAdd = 415, kRemove = 416, kHelp = 417, kExtension = 418, kComment = 419;

int asked;

void useEditor(HWND dialog) {
    command(dialog, kAdd);
    const HWND list = GetDlgItem(dialog, kList);
    SendMessageA(list, LB_SELECTSTRING, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(".a"));
    command(dialog, kList, LBN_SELCHANGE);
    command(dialog, kRemove);
    command(dialog, kHelp);
    HELPINFO request = {sizeof request, HELPINFO_WINDOW, kList, list, 0, {0, 0}};
    SendMessageA(dialog, WM_HELP, 0, reinterpret_cast<LPARAM>(&request));
    command(dialog, IDOK);
    command(dialog, IDOK);
}

void useAddDialog(HWND dialog) {
    command(dialog, IDOK);
    SetDlgItemTextA(dialog, kExtension, "n");
    SetDlgItemTextA(dialog, kComment, "new");
    command(dialog, IDOK);
}

void use(HWND window) {
    const std::string title = textOf(window);
    noted.push_back(title);
    if (title == "Are You Sure?") return command(window, asked++ ? IDOK : IDCANCEL);
    if (GetDlgItem(window, kList)) return useEditor(window);
    if (GetDlgItem(window, kExtension)) return useAddDialog(window);
    command(window, IDOK);
}

void givenMapping(const char* extension, const std::string& type, const std::string& creator, const char* comment) {
    const auto given = [&](const char* name, const std::string& text) {
        testing_support::givenValue(HKEY_CLASSES_ROOT, extension, name, REG_SZ, text + '\0');
    };
    given("Mac Type", type);
    given("Mac Creator", creator);
    given("Mac Comment", comment);
}

TEST(MappingEditor, Sweep) {
    const Scenario scenario{[] {
                                asked = 0;
                                testing_support::emptyRegistry();
                                givenMapping(".a", "TmxT", "TmxC", "A files");
                                givenMapping(".k", "TmxT", "TmxC", "kept");
                                givenMapping(".o", "TEXT", "ttxt", "other");
                                char creator[] = "TmxC", type[] = "TmxT";
                                function<int(void*, char*, char*)>("?FileExtMapEditDlg@@YAHPAXPAD1@Z")(nullptr, creator,
                                                                                                       type);
                            },
                            use};
    play(scenario);
    EXPECT_THAT(noted, testing::ElementsAre("Edit File Extension Mapping", "Add Filename Extension Mapping",
                                            "Error:", "help ATHELP.HLP 1 410", "help ATHELP.HLP 8 414", "Are You Sure?",
                                            "Are You Sure?"));
    sweep(scenario);
}

}  // namespace
