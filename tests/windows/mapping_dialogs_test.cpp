// The two dialogs that edit extension mappings, as a user uses them.
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

/// What the user types into add dialogs and answers to questions, in order.
std::deque<std::pair<std::string, std::string>> typed;
std::deque<int> answers;
bool isAgreed;

int show(const char* dialog, std::string creator = "TmxC", std::string type = "TmxT") {
    return function<MappingDialog>(dialog)(nullptr, creator.data(), type.data());
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
std::string mappingOf(const std::string& extension) {
    auto text = registryText();
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
        if (answers.empty()) return;
        isAgreed = answers.front() == IDOK;
        command(window, answers.front());
        answers.pop_front();
    };
    return {[run] {
                testing_support::emptyRegistry();
                givenMapping(".a", "TmxT TmxC", "A files");
                givenMapping(".b", "TmxT TmxC", "B files");
                givenMapping(".k", "TmxT TmxC");
                givenMapping(".o", "TEXT ttxt", "other codes");
                isAgreed = false;
                typed.clear();
                answers.clear();
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
        command(editor, kAdd, BN_SETFOCUS);
        command(editor, kRemove, BN_SETFOCUS);
        command(editor, IDOK, BN_SETFOCUS);
        command(editor, kList, LBN_DBLCLK);
        remove(editor, ".k");
        add(editor, "z", "zebra");
        noteList(editor);
        remove(editor, ".a");
        command(editor, IDOK);
        EXPECT_EQ(GetFocus(), GetDlgItem(editor, IDCANCEL));
        EXPECT_EQ(LOWORD(SendMessageA(editor, DM_GETDEFID, 0, 0)), IDCANCEL);
        remove(editor, ".z");
        command(editor, IDCANCEL);
        EXPECT_EQ(registryText(), before);
    }));
    EXPECT_THAT(noted, ElementsAre("TmxCTmxT", ".a\tA files .b\tB files .k -", ".a\tA files [.k] +", "[.a\tA files] +",
                                   ".a\tA files [.z\tzebra] +", "[.z\tzebra] +", kQuestion, "-"));
}

TEST(MappingEditor, WritesItsLinesInTheirOrderOnceTheUserHasAgreed) {
    const std::string longComment(255, 'c');
    play(editing([&](HWND editor) {
        remove(editor, ".b");
        add(editor, "c", longComment + "cut");
        add(editor, ".0");
        add(editor, "o", "moved");
        add(editor, "a", "zebra");
        add(editor, "a", "ant");
        noted.clear();
        noteList(editor);
        answers = {IDOK};
        command(editor, IDOK);
    }));
    EXPECT_THAT(noted,
                ElementsAre(".0\t .a\tA files [.a\tant] .a\tzebra .c\t" + longComment + " .k .o\tmoved +", kQuestion));
    for (const auto& [extension, mapping] : {std::pair<std::string, std::string>{".0", "TmxT TmxC -"},
                                             {".a", "TmxT TmxC zebra"},
                                             {".b", "- - -"},
                                             {".c", "TmxT TmxC " + longComment},
                                             {".k", "TmxT TmxC -"},
                                             {".o", "TmxT TmxC moved"}})
        EXPECT_EQ(mappingOf(extension), mapping) << extension;
}

TEST(MappingEditor, HoldsMappingsOfFourByteCodesOnly) {
    EXPECT_EQ(function<MappingDialog>(kEditor)(nullptr, nullptr, std::string("TmxT").data()), 0);
    EXPECT_EQ(function<MappingDialog>(kEditor)(nullptr, std::string("TmxC").data(), nullptr), 0);
    play(scenario([] { show(kEditor, "TmxCreator"); },
                  [](HWND editor) {
                      add(editor, "n");
                      noteList(editor);
                      answers = {IDOK};
                      command(editor, IDOK);
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
    const std::string refusal = "Error: The filename extension must be between 1 and 15 characters long.1";
    int accepted = -1;
    const auto run = [&](const std::string& extension) {
        play(scenario([&] {
            typed = {{extension, ""}};
            accepted = show(kAddDialog);
        }));
    };
    for (const std::string wrong : {"", "1234567890123456", "an extension longer than the buffer that measures it"}) {
        run(wrong);
        EXPECT_THAT(noted, ElementsAre(refusal, "still " + wrong));
        EXPECT_EQ(accepted, 0);
    }
    play(editing([](HWND editor) {
        for (const char* extension : {"..t", "1", "123456789012345"}) add(editor, extension);
        command(editor, kAdd);
        noteList(editor);
    }));
    EXPECT_THAT(noted, ElementsAre("..t\t .1\t [.123456789012345\t] .a\tA files .b\tB files .k +"));
}

TEST(MappingEditor, LosesNothingWhicheverCallFails) {
    Scenario all = editing([](HWND editor) {
        add(editor, "n", "new");
        remove(editor, ".a");
        command(editor, kHelp);
        answers = {IDOK};
        command(editor, IDOK);
    });
    all.look = [](const calls::Call& call) {
        EXPECT_TRUE(isAgreed || (call.name != "RegSetValueExA" && !call.name.starts_with("RegDelete"))) << call.name;
    };
    all.invariants = [](const std::string&) { EXPECT_EQ(mappingOf(".o"), "TEXT ttxt other codes"); };
    sweep(all);
}

}  // namespace
