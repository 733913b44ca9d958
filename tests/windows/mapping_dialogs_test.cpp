// The two dialogs that edit extension mappings, as a user uses them.
#include <algorithm>
#include <deque>

#include "registry_text.h"
#include "windows/scenario.h"

namespace {

using namespace scenarios;
using shipped::function;
using testing::ElementsAre;
using testing_support::registryText;

constexpr int kType = 379, kCreator = 380, kList = 414, kAdd = 415, kRemove = 416, kHelp = 417, kExtension = 418,
              kComment = 419;
constexpr char kEditor[] = "?FileExtMapEditDlg@@YAHPAXPAD1@Z", kAddDialog[] = "?AddExtMapDlg@@YAHPAXPAD1@Z";
using MappingDialog = int __cdecl(void* parent, char* creator, char* type);

const std::string kLongComment(150, 'l');  // more than the cursor reads: the editor lists the line without it

/// What the user types into add dialogs and answers to questions, in order.
std::deque<std::pair<std::string, std::string>> typed;
int answer;
bool isAgreed;

char codes[16];  // the caller's

int show(const char* dialog, const char* creator = "TmxC") {
    lstrcpyA(codes, creator);
    return function<MappingDialog>(dialog)(nullptr, codes, std::string("TmxT").data());
}

void givenMapping(const std::string& extension, const std::string& codes, const char* comment = nullptr) {
    const auto given = [&](const char* name, const std::string& text) {
        testing_support::givenValue(HKEY_CLASSES_ROOT, extension, name, REG_SZ, text + '\0');
    };
    given("Mac Type", codes.substr(0, 4));
    given("Mac Creator", codes.substr(5));
    if (comment) given("Mac Comment", comment);
}

/// "type creator comment" as the store holds them.
std::string mappingOf(const std::string& extension, testing_support::RegistryText text = registryText()) {
    const auto stored = [&](const char* name) {
        const std::string value = text["CLASSES\\" + extension + "|Mac " + name];
        return value.starts_with("1:") && value.ends_with('\0') ? value.substr(2, value.size() - 3) : value + "-";
    };
    return stored("Type") + ' ' + stored("Creator") + ' ' + stored("Comment");
}

LRESULT askList(HWND editor, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
    return SendDlgItemMessageA(editor, kList, message, wParam, lParam);
}

/// Notes the list with the selected line in brackets, and whether Remove can be pressed.
void noteList(HWND editor) {
    std::string text;
    for (LRESULT i = 0; i < askList(editor, LB_GETCOUNT); ++i) {
        std::string line(static_cast<std::size_t>(askList(editor, LB_GETTEXTLEN, static_cast<WPARAM>(i))), '\0');
        askList(editor, LB_GETTEXT, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(line.data()));
        text += i == askList(editor, LB_GETCURSEL) ? "[" + line + "] " : line + " ";
    }
    noted.push_back(text + (IsWindowEnabled(GetDlgItem(editor, kRemove)) ? "+" : "-"));
}

void remove(HWND editor, const char* line) {
    askList(editor, LB_SELECTSTRING, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(line));
    command(editor, kList, LBN_SELCHANGE);
    command(editor, kRemove);
    noteList(editor);
}

void add(HWND editor, const std::string& extension, const std::string& comment = "") {
    typed.push_back({extension, comment});
    command(editor, kAdd);
}

/// What a user does with an add dialog and with message boxes; `editor` deals with the editor.
Scenario scenario(
    std::function<void()> run, std::function<void(HWND)> editor = [](HWND) {}) {
    const auto user = [editor](HWND window) {
        if (GetDlgItem(window, kList)) return editor(window);
        if (GetDlgItem(window, kExtension)) {
            for (; !typed.empty(); typed.pop_front()) {
                SetDlgItemTextA(window, kExtension, typed.front().first.c_str());
                SetDlgItemTextA(window, kComment, typed.front().second.c_str());
                command(window, IDOK);
                if (IsWindowVisible(window)) noted.push_back("still " + textOf(GetDlgItem(window, kExtension)));
            }
            return;
        }
        const int defaultButton = GetDlgCtrlID(GetFocus());
        noted.push_back(textOf(window) + " " + textOf(GetDlgItem(window, 0xFFFF)) + std::to_string(defaultButton));
        isAgreed = answer == IDOK;
        command(window, answer);
    };
    return {[run] {
                testing_support::emptyRegistry();
                givenMapping(".a", "TmxT TmxC", "A files");
                givenMapping(".b", "TmxT TmxC", "B files");
                givenMapping(".k", "TmxT TmxC", kLongComment.c_str());
                givenMapping(".o", "TEXT ttxt", "other codes");
                isAgreed = false;
                typed.clear();
                answer = IDCANCEL;
                run();
            },
            user};
}

Scenario editing(std::function<void(HWND)> editor) {
    return scenario([] { EXPECT_EQ(show(kEditor), 0); }, editor);
}

constexpr char kQuestion[] = "Are You Sure? Are you sure you want to change your Orvedi file extension mappings?2";

TEST(MappingEditor, ChangesItsListAloneUntilTheUserAgrees) {
    play(editing([before = testing_support::RegistryText()](HWND editor) mutable {
        before = registryText();
        noted.push_back(textOf(GetDlgItem(editor, kCreator)) + textOf(GetDlgItem(editor, kType)));
        noteList(editor);
        remove(editor, ".b");
        for (const int button : {kAdd, kRemove, IDOK}) command(editor, button, BN_SETFOCUS);
        command(editor, kList, LBN_DBLCLK);
        remove(editor, ".k");
        add(editor, "z", "zebra");
        noteList(editor);
        remove(editor, ".a");
        command(editor, IDOK);
        EXPECT_EQ(GetFocus(), GetDlgItem(editor, IDCANCEL));
        EXPECT_EQ(LOWORD(SendMessageA(editor, DM_GETDEFID, 0, 0)), IDCANCEL);
        SetFocus(GetDlgItem(editor, kRemove));
        remove(editor, ".z");
        EXPECT_EQ(GetFocus(), GetDlgItem(editor, IDCANCEL)) << "the button that had it is disabled";
        command(editor, IDCANCEL);
        EXPECT_EQ(registryText(), before);
    }));
    EXPECT_THAT(noted, ElementsAre("TmxCTmxT", ".a\tA files .b\tB files .k -", ".a\tA files [.k] +", "[.a\tA files] +",
                                   ".a\tA files [.z\tzebra] +", "[.z\tzebra] +", kQuestion, "-"));
}

bool writes(const calls::Call& call) {
    return call.name == "RegSetValueExA" || call.name.starts_with("RegDelete") || call.name.starts_with("RegCreate");
}

void agree(HWND editor) {
    answer = IDOK;
    command(editor, IDOK);
}

TEST(MappingEditor, SavesTheDifferenceInItsOrderOnceTheUserHasAgreed) {
    const std::string longComment(255, 'c');
    Scenario saving = editing([&](HWND editor) {
        remove(editor, ".b");
        add(editor, "c", longComment + "cut");
        add(editor, ".0");
        add(editor, "o", "moved");
        add(editor, "A", "zebra");
        add(editor, "a", "ant");
        noted.clear();
        noteList(editor);
        agree(editor);
    });
    saving.look = [](const calls::Call& call) {
        const bool isRemoving = writes(call) && mappingOf(".b") != "TmxT TmxC B files";
        EXPECT_TRUE(!isRemoving || mappingOf(".o") == "TmxT TmxC moved") << "all is written before anything goes";
    };
    play(saving);
    EXPECT_THAT(noted,
                ElementsAre(".0\t .a\tA files [.a\tant] .A\tzebra .c\t" + longComment + " .k .o\tmoved +", kQuestion));
    EXPECT_EQ(mappingOf(".0") + ", " + mappingOf(".a") + ", " + mappingOf(".b") + ", " + mappingOf(".o"),
              "TmxT TmxC -, TmxT TmxC zebra, - - -, TmxT TmxC moved");
    EXPECT_EQ(mappingOf(".c"), "TmxT TmxC " + longComment);
    EXPECT_EQ(mappingOf(".k"), "TmxT TmxC " + kLongComment);

    saving = editing(agree);
    saving.look = [](const calls::Call& call) { EXPECT_FALSE(writes(call)) << call.name << " for an unchanged list"; };
    play(saving);
    EXPECT_THAT(noted, ElementsAre(kQuestion));
}

/// What others do while a dialog of the editor is open, and whether OK saves afterwards.
TEST(MappingEditor, TakesNoAnswerFromOthersAndKeepsWhatTheyWrite) {
    const struct {
        const char* reason;
        void (*act)(HWND editor);
        bool saves;
    } rows[] = {
        {"nobody is there", [](HWND) {}, true},
        {"the program quits", [](HWND) { PostQuitMessage(7); }, false},
        {"the editor is cancelled", [](HWND editor) { command(editor, IDCANCEL); }, false},
        {"the editor is ended", [](HWND editor) { EndDialog(editor, 1); }, false},
        {"the editor is hidden", [](HWND editor) { ShowWindow(editor, SW_HIDE); }, false},
        {"OK comes once more", [](HWND editor) { command(editor, IDOK); }, true},
        {"the codes are overwritten", [](HWND) { std::memset(codes, '#', 4); }, true},
        {"an installer writes",
         [](HWND) {
             givenMapping(".b", "INST prog");
             givenMapping(".i", "TmxT TmxC");
         },
         true},
    };
    for (std::size_t i = 0; i < 2 * std::size(rows); ++i) {
        const auto& row = rows[i / 2];
        const bool whileAdding = i % 2;  // or while the question is open
        SCOPED_TRACE(row.reason);
        HWND editor = nullptr;
        Scenario disturbed = editing([&](HWND dialog) {
            editor = dialog;
            add(editor, "n");
            remove(editor, ".b");
            agree(editor);
            EXPECT_TRUE(row.saves || !IsWindowVisible(editor) || GetFocus() == GetDlgItem(editor, IDCANCEL));
            EndDialog(editor, 0);
        });
        disturbed.user = [&, user = disturbed.user](HWND window) {
            if (editor && window != editor && whileAdding == (GetDlgItem(window, kExtension) != nullptr))
                row.act(editor);
            user(window);
        };
        play(disturbed);
        EXPECT_EQ(mappingOf(".n"), row.saves ? "TmxT TmxC -" : "- - -");
        const bool isInstallers = row.act == rows[7].act;
        EXPECT_EQ(mappingOf(".b"), isInstallers ? "INST prog B files" : row.saves ? "- - -" : "TmxT TmxC B files");
        EXPECT_EQ(mappingOf(".i"), isInstallers ? "TmxT TmxC -" : "- - -");
        EXPECT_EQ(std::ranges::count(noted, kQuestion), whileAdding && row.act == rows[5].act ? 2 : 1);
        EXPECT_EQ(noted.back() == "quit", row.act == rows[1].act) << "the quit stays for the program";
    }
}

TEST(MappingEditor, ListsAMappingOnceWhileOthersWrite) {
    int looked = 0;
    Scenario listing = editing(noteList);
    listing.look = [&](const calls::Call& call) {
        if (call.name == "RegEnumKeyExA" && ++looked == 3) givenMapping(".0", "INST prog");
    };
    play(listing);
    EXPECT_THAT(noted, ElementsAre(".a\tA files .b\tB files .k -"));
}

TEST(MappingEditor, HoldsMappingsOfFourByteCodesOnly) {
    EXPECT_EQ(function<MappingDialog>(kEditor)(nullptr, nullptr, codes), 0);
    EXPECT_EQ(function<MappingDialog>(kEditor)(nullptr, codes, nullptr), 0);
    play(scenario([] { show(kEditor, "TmxCreator"); },
                  [](HWND editor) {
                      add(editor, "n");
                      noteList(editor);
                      agree(editor);
                      EXPECT_EQ(registryText().count("CLASSES\\.n"), 0u);
                  }));
    EXPECT_THAT(noted, ElementsAre("[.n\t] +", kQuestion));
}

TEST(MappingEditor, GivesHelpOnItselfAndEachControl) {
    play(editing([](HWND editor) {
        const auto ask = [editor](int context, int control) {
            HELPINFO request = {sizeof request, context, control, nullptr, 0, {0, 0}};
            SendMessageA(editor, WM_HELP, 0, reinterpret_cast<LPARAM>(&request));
        };
        command(editor, kHelp);
        ask(HELPINFO_WINDOW, kComment);
        ask(HELPINFO_WINDOW, 0);
        ask(HELPINFO_MENUITEM, kList);
        EXPECT_TRUE(GetWindowLongA(editor, GWL_STYLE) & DS_CONTEXTHELP) << "question mark in the caption";
    }));
    EXPECT_THAT(noted, ElementsAre("help ATHELP.HLP 1 410", "help ATHELP.HLP 8 419"));
}

TEST(AddDialog, TakesExtensionsOfOneToFifteenBytes) {
    const std::string tooLong = "an extension longer than the buffer that measures it";
    const std::string refusal = "Error: The filename extension must be between 1 and 15 characters long.1";
    const std::string list = "..t\t .1\t [.123456789012345\t] .a\tA files .b\tB files .k ";
    play(editing([&](HWND editor) {
        for (const std::string typed : {"", "1234567890123456"}) add(editor, typed);
        add(editor, tooLong);
        noteList(editor);
        for (const char* typed : {"..t", "1", "123456789012345"}) add(editor, typed);
        noteList(editor);
    }));
    EXPECT_THAT(noted, ElementsAre(refusal, "still ", refusal, "still 1234567890123456", refusal, "still " + tooLong,
                                   ".a\tA files .b\tB files .k -", list + "+"));
    Scenario endedByOthers = editing([](HWND editor) {
        command(editor, kAdd);
        noteList(editor);
    });
    endedByOthers.user = [user = endedByOthers.user](HWND window) {
        GetDlgItem(window, kList) ? user(window) : static_cast<void>(EndDialog(window, 1));
    };
    play(endedByOthers);
    EXPECT_THAT(noted, ElementsAre(".a\tA files .b\tB files .k -"));
    constexpr int kFirstAdded = 4;  // three mappings are listed before
    play(editing([](HWND editor) {
             add(editor, "n");
             noteList(editor);
         }),
         {"SendMessageA", kFirstAdded, nullptr});
    EXPECT_THAT(noted, ElementsAre(".a\tA files .b\tB files .k -")) << "the list took no more";
    play(scenario([] {
        typed = {{"n", ""}};
        EXPECT_EQ(show(kAddDialog), 0) << "there is no list to take the line";
    }));
}

TEST(MappingEditor, LosesNothingWhicheverCallFailsAndWheneverTheProcessEnds) {
    bool changes = true;
    Scenario all = editing([&](HWND editor) {
        add(editor, "n");
        if (changes) add(editor, "b", "changed");
        remove(editor, ".a");
        command(editor, kHelp);
        agree(editor);
    });
    const auto check = [] {
        const auto text = registryText();
        EXPECT_EQ(mappingOf(".o", text), "TEXT ttxt other codes");
        EXPECT_EQ(mappingOf(".k", text), "TmxT TmxC " + kLongComment);
        EXPECT_TRUE(mappingOf(".n", text).ends_with(" -")) << "the user typed no comment";
        int incomplete = 0;
        for (const auto& [extension, before, after] : {std::tuple(".a", "TmxT TmxC A files", "- - -"),
                                                       {".b", "TmxT TmxC B files", "TmxT TmxC changed"},
                                                       {".n", "- - -", "TmxT TmxC -"}})
            incomplete += mappingOf(extension, text) != before && mappingOf(extension, text) != after;
        EXPECT_LE(incomplete, 1);
    };
    all.look = [check](const calls::Call& call) {
        if (isAgreed && call.name.starts_with("Reg")) check();  // as if the process ended here
    };
    play(all);
    changes = false;
    all.look = [](const calls::Call& call) { EXPECT_TRUE(isAgreed || !writes(call)) << call.name; };
    all.invariants = [check](const std::string&) { check(); };
    sweep(all);
}

}  // namespace
