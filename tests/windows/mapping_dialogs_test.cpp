// The two dialogs that edit extension mappings, as a user uses them.
#include <process.h>

#include <sstream>

#include "registry_text.h"
#include "windows/scenario.h"

namespace {

using namespace scenarios;
using testing::ElementsAre;

constexpr int kType = 379, kCreator = 380, kList = 414, kAdd = 415, kRemove = 416, kHelp = 417, kExtension = 418,
              kComment = 419;
constexpr char kQuestion[] = "Are You Sure? Are you sure you want to change your Orvedi file extension mappings?2";
constexpr char kRefusal[] = "Error: The filename extension must be between 1 and 15 characters long.1";
const auto editMappings = [](auto... arguments) {
    return shipped::function<int(void*, char*, char*)>("?FileExtMapEditDlg@@YAHPAXPAD1@Z")(nullptr, arguments...);
};

/// What is stored for each extension: "comment;creator;type;", without those that are missing.
using Mappings = std::map<std::string, std::string>;
const std::string kLongComment(150, 'l');  // more than the cursor reads: the editor lists the line without it
const Mappings kBefore = {{".a", "A files;TmxC;TmxT;"},
                          {".b", "B files;TmxC;TmxT;"},
                          {".k", kLongComment + ";TmxC;TmxT;"},
                          {".o", "other codes;ttxt;TEXT;"}};

void give(const std::string& extension, const std::string& mapping) {
    constexpr const char* kNames[] = {"Mac Comment", "Mac Creator", "Mac Type"};
    std::istringstream values(mapping);
    auto i = 3 - std::count(mapping.begin(), mapping.end(), ';');
    for (std::string value; std::getline(values, value, ';'); ++i)
        testing_support::givenValue(HKEY_CLASSES_ROOT, extension, kNames[i], REG_SZ, value + '\0');
}

Mappings stored() {
    Mappings mappings;
    constexpr std::string_view kBelow = "CLASSES\\";
    for (const auto& [place, value] : testing_support::registryText())
        if (const auto bar = place.find("|Mac "); bar < place.npos)
            mappings[place.substr(kBelow.size(), bar - kBelow.size())] += value.substr(2, value.size() - 3) + ';';
    return mappings;
}

// What the user does.

std::pair<std::string, std::string> typed;  // into the next add dialog: extension and comment
constexpr char kEnded[] = "another program ends it";
int answer;  // to message boxes
bool isAgreed;
char codes[16];  // the caller's

std::string codesIn(HWND dialog) {
    return textOf(GetDlgItem(dialog, kCreator)) + textOf(GetDlgItem(dialog, kType));
}

LRESULT askList(HWND editor, UINT message, LRESULT index = 0, const char* text = nullptr) {
    return SendDlgItemMessageA(editor, kList, message, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(text));
}

/// Notes the list with the selected line in brackets, and whether Remove can be pressed.
void noteList(HWND editor) {
    std::string text;
    for (LRESULT i = 0; i < askList(editor, LB_GETCOUNT); ++i) {
        char line[300];
        askList(editor, LB_GETTEXT, i, line);
        text += i == askList(editor, LB_GETCURSEL) ? "[" + std::string(line) + "] " : std::string(line) + " ";
    }
    noted.push_back(text + (IsWindowEnabled(GetDlgItem(editor, kRemove)) ? "+" : "-"));
}

void remove(HWND editor, const char* line) {
    askList(editor, LB_SELECTSTRING, -1, line);
    command(editor, kList, LBN_SELCHANGE);
    command(editor, kRemove);
    noteList(editor);
}

void add(HWND editor, const std::string& extension, const std::string& comment = "") {
    typed = {extension, comment};
    command(editor, kAdd);
}

void agree(HWND editor) {
    answer = IDOK;
    command(editor, IDOK);
}

/// Uses the add dialog, or a message box, whose text and default button it notes.
void useOther(HWND dialog) {
    if (!GetDlgItem(dialog, kExtension)) {
        const int button = GetDlgCtrlID(GetFocus());
        noted.push_back(textOf(dialog) + " " + textOf(GetDlgItem(dialog, 0xFFFF)) + std::to_string(button));
        isAgreed = answer == IDOK;
        return command(dialog, answer);
    }
    if (typed.first == kEnded) return static_cast<void>(EndDialog(dialog, 1));
    SetDlgItemTextA(dialog, kExtension, typed.first.c_str());
    SetDlgItemTextA(dialog, kComment, typed.second.c_str());
    command(dialog, IDOK);
    if (IsWindowVisible(dialog)) noted.push_back(codesIn(dialog) + textOf(GetDlgItem(dialog, kExtension)));
}

bool writes(const calls::Call& call) {
    return call.name == "RegSetValueExA" || call.name.starts_with("RegDelete") || call.name.starts_with("RegCreate");
}

/// Opens the editor on a store and uses it. Nothing may be written before the user has agreed.
Scenario editing(std::function<void(HWND)> use, const Mappings& before = kBefore, const char* creator = "TmxC") {
    return {[=] {
                testing_support::emptyRegistry();
                for (const auto& [extension, mapping] : before) give(extension, mapping);
                isAgreed = false;
                answer = IDCANCEL;
                EXPECT_EQ(editMappings(lstrcpyA(codes, creator), std::string("TmxT").data()), 0);
            },
            [=](HWND window) { GetDlgItem(window, kList) ? use(window) : useOther(window); },
            [](const calls::Call& call) { EXPECT_TRUE(isAgreed || !writes(call)) << call.name; }};
}

TEST(MappingEditor, ChangesItsListAloneUntilTheUserAgrees) {
    Scenario listing = editing([](HWND editor) {
        HELPINFO request = {sizeof request, HELPINFO_WINDOW, kComment, nullptr, 0, {0, 0}};
        for (const auto& [context, control] :
             {std::pair(HELPINFO_WINDOW, kComment), {HELPINFO_WINDOW, 0}, {HELPINFO_MENUITEM, kList}}) {
            request.iContextType = context, request.iCtrlId = control;
            SendMessageA(editor, WM_HELP, 0, reinterpret_cast<LPARAM>(&request));
        }
        command(editor, kHelp);
        EXPECT_TRUE(GetWindowLongA(editor, GWL_STYLE) & DS_CONTEXTHELP) << "question mark in the caption";
        noted.push_back(codesIn(editor));
        noteList(editor);
        remove(editor, ".b");
        for (const int button : {kAdd, kRemove, IDOK}) command(editor, button, BN_SETFOCUS);
        command(editor, kList, LBN_DBLCLK);
        remove(editor, ".k");
        for (const char* const extension : {"", "an extension longer than the buffer", kEnded, "123456789012345"})
            add(editor, extension, "added");
        remove(editor, ".a");
        command(editor, IDOK);
        EXPECT_EQ(GetFocus(), GetDlgItem(editor, IDCANCEL));
        EXPECT_EQ(LOWORD(SendMessageA(editor, DM_GETDEFID, 0, 0)), IDCANCEL);
        SetFocus(GetDlgItem(editor, kRemove));
        remove(editor, ".1");
        EXPECT_EQ(GetFocus(), GetDlgItem(editor, IDCANCEL)) << "the button that had it is disabled";
        typed = {"n", ""};
        EXPECT_EQ(shipped::function<int(void*, char*, char*)>("?AddExtMapDlg@@YAHPAXPAD1@Z")(nullptr, codes, codes), 0);
    });
    int enumerated = 0;
    listing.look = [&](const calls::Call& call) {
        // Another program's key, before the others, makes the enumeration give one of them twice.
        if (call.name == "RegEnumKeyExA" && ++enumerated == 3) give(".0", "prog;INST;");
    };
    play(listing);
    EXPECT_THAT(noted, ElementsAre("help ATHELP.HLP 8 419", "help ATHELP.HLP 1 410", "TmxCTmxT",
                                   ".a\tA files .b\tB files .k -", ".a\tA files [.k] +", "[.a\tA files] +", kRefusal,
                                   "TmxCTmxT", kRefusal, "TmxCTmxTan extension longer than the buffer",
                                   "[.123456789012345\tadded] +", kQuestion, "-"));
    Mappings after = kBefore;
    after[".0"] = "prog;INST;";
    EXPECT_EQ(stored(), after);
}

// Saving, also while something goes wrong.

const std::string kLongest(255, 'c');
const Mappings kAfter = {
    {".b", kLongest + ";TmxC;TmxT;"}, *kBefore.find(".k"), {".n", "TmxC;TmxT;"}, {".o", "moved;TmxC;TmxT;"}};

void change(HWND editor) {
    add(editor, "n");
    EXPECT_TRUE(!IsWindowEnabled(GetDlgItem(editor, kRemove)) || askList(editor, LB_FINDSTRING, -1, ".n") >= 0);
    add(editor, "o", "moved");
    add(editor, "B", kLongest + "cut");
    remove(editor, ".a");
    agree(editor);
}

/// Each mapping is the old or the new one, except for at most one that was just being written or removed.
void expectOldOrNew() {
    Mappings now = stored(), before = kBefore, after = kAfter;
    int incomplete = 0;
    for (const char* const touched : {".a", ".b", ".n", ".o"}) {
        incomplete += now[touched] != before[touched] && now[touched] != after[touched];
        now.erase(touched);
        before.erase(touched);
    }
    EXPECT_LE(incomplete, 1);
    EXPECT_EQ(now, before) << "what the user did not touch";
}

TEST(MappingEditor, LosesNothingAtWhicheverWriteTheProcessEnds) {
    constexpr char kVariable[] = "TAMRIX_ENDS_AT";  // the number of that write, in a process of its own
    if (const char* const endsAt = std::getenv(kVariable)) {
        Scenario saving = editing(change);
        saving.look = [left = std::atoi(endsAt)](const calls::Call& call) mutable {
            if (writes(call) && --left == 0) TerminateProcess(GetCurrentProcess(), 1);
        };
        play(saving);
        TerminateProcess(GetCurrentProcess(), 0);
    }
    intptr_t code = 1;
    int writeNumber = 0;
    while (code == 1) {
        SCOPED_TRACE(++writeNumber);
        testing_support::emptyRegistry();
        SetEnvironmentVariableA(kVariable, std::to_string(writeNumber).c_str());
        code =
            _spawnl(_P_WAIT, _pgmptr, _pgmptr, shipped::dllPath.c_str(), "--gtest_filter=*AtWhicheverWrite*", nullptr);
        expectOldOrNew();
        Mappings now = stored();
        EXPECT_TRUE(now[".a"] == kBefore.at(".a") || now[".o"] == kAfter.at(".o")) << "all is written before it goes";
    }
    EXPECT_EQ(code, 0) << "of the process that reached its end";
    EXPECT_GT(writeNumber, 12) << "three mappings of three values, and one that goes";
    EXPECT_EQ(stored(), kAfter);
}

TEST(MappingEditor, WritesNothingThatTheUserDidNotChange) {
    Mappings many = kBefore;
    for (int i = 0; i < 50; ++i) many[".m" + std::to_string(i)] = "TmxC;TmxT;";
    Scenario unchanged = editing(agree, many);
    unchanged.look = [](const calls::Call& call) { EXPECT_FALSE(writes(call)) << call.name; };
    play(unchanged);
    EXPECT_THAT(noted, ElementsAre(kQuestion));
    play(editing(change, kBefore, "TmxCreator"));
    EXPECT_EQ(stored(), kBefore) << "codes have at most four bytes";
    EXPECT_EQ(editMappings(nullptr, codes) + editMappings(codes, nullptr), 0);
}

TEST(MappingEditor, TakesNoAnswerFromOthersAndKeepsWhatTheyWrite) {
    Mappings installed = kAfter;
    installed.insert({{".a", "A files;prog;INST;"}, {".i", "TmxC;TmxT;"}});
    // What happens while a dialog of the editor is open, and what is stored in the end.
    const std::pair<void (*)(HWND editor), const Mappings&> rows[] = {
        {[](HWND) { PostQuitMessage(7); }, kBefore},
        {[](HWND editor) { EndDialog(editor, 1); }, kBefore},
        {[](HWND editor) { command(editor, IDOK); }, kAfter},
        {[](HWND) { std::memset(codes, '#', 4); }, kAfter},
        {[](HWND) { give(".a", "prog;INST;"), give(".i", "TmxC;TmxT;"); }, installed},
    };
    for (const auto& row : rows)
        for (const int control : {kExtension, 0xFFFF}) {  // of the add dialog, of the question
            SCOPED_TRACE(&row - rows);
            HWND editor = nullptr;
            Scenario disturbed = editing([&](HWND dialog) { change(editor = dialog); });
            disturbed.user = [&, user = disturbed.user](HWND window) {
                if (editor && GetDlgItem(window, control)) row.first(editor);
                user(window);
            };
            play(disturbed);
            EXPECT_EQ(stored(), row.second);
            EXPECT_EQ(noted.back() == "quit", &row == rows) << "which stays for the program";
        }
}

}  // namespace

Scenario scenarios::savingMappings() {
    Scenario saving = editing([](HWND editor) { command(editor, kHelp), change(editor); });
    saving.run = [run = saving.run] { run(), expectOldOrNew(); };
    return saving;
}
