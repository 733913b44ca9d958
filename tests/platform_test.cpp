// The stand-in itself: the registry's file, the code pages, the fault plan, global memory and resources. Its registry
// calls are held to the platform's contract in registry_contract_test.cpp.
#include <gtest/gtest.h>
#include <standin.h>
#include <sys/stat.h>

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <new>
#include <random>
#include <sstream>

#include "registry_home.h"

namespace {

using namespace std::string_literals;

using standin::Kind;
using testing_support::givenValue;

// A folder of its own for each test; a clean stand-in before and after.
class Standin : public testing::Test {
protected:
    void SetUp() override {
        reset();
        folder = std::filesystem::temp_directory_path() / ("standin." + std::to_string(std::random_device{}()));
        std::filesystem::create_directory(folder);
        file = folder / "registry.reg";
    }

    void TearDown() override {
        EXPECT_EQ(standin::openKeys(), 0u);
        std::filesystem::remove_all(folder);
        reset();
    }

    static void reset() {
        standin::clearRegistry();
        standin::clearFaults();
        standin::setCodePages(1252, 437);
    }

    standin::FileResult loadText(const std::string& text) {
        std::ofstream(file, std::ios::binary) << text;
        return standin::loadRegistry(file);
    }

    std::filesystem::path folder;
    std::string file;
};

// Everything below a key in a form that compares: each level's names, types and bytes.
void describe(HKEY key, const std::string& indent, std::ostream& out) {
    char name[256];
    BYTE data[256];
    DWORD nameSize = sizeof name, type = 0, size = sizeof data;
    for (DWORD i = 0; RegEnumValueA(key, i, name, &nameSize, nullptr, &type, data, &size) == ERROR_SUCCESS; ++i) {
        out << indent << name << '=' << type << ':' << std::string(reinterpret_cast<char*>(data), size) << '\n';
        nameSize = sizeof name;
        size = sizeof data;
    }
    for (DWORD i = 0; RegEnumKeyA(key, i, name, sizeof name) == ERROR_SUCCESS; ++i) {
        out << indent << '[' << name << "]\n";
        HKEY child = nullptr;
        if (RegOpenKeyExA(key, name, 0, KEY_READ, &child) != ERROR_SUCCESS) continue;
        describe(child, indent + ' ', out);
        RegCloseKey(child);
    }
}

std::string wholeRegistry() {
    std::ostringstream out;
    for (const HKEY root : {HKEY_CLASSES_ROOT, HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE, HKEY_USERS}) {
        out << "root\n";
        describe(root, "", out);
    }
    return out.str();
}

std::string contentOf(const std::string& path) {
    std::ostringstream content;
    content << std::ifstream(path, std::ios::binary).rdbuf();
    return content.str();
}

TEST_F(Standin, SavesTheFormatThatTheRegistryEditorWrites) {
    givenValue(HKEY_CLASSES_ROOT, ".txt", "", REG_SZ, "txtfile\0"s);
    givenValue(HKEY_CLASSES_ROOT, ".txt", "a \"b\" \\c", REG_SZ, "\x80\\\"\0"s);
    givenValue(HKEY_CLASSES_ROOT, ".txt", "n", REG_DWORD, "\x2A\0\0\x80"s);
    givenValue(HKEY_CLASSES_ROOT, ".txt", "open", REG_SZ, "ab");
    givenValue(HKEY_CLASSES_ROOT, ".txt", "line", REG_SZ, "\r\n\0"s);
    givenValue(HKEY_LOCAL_MACHINE, "Software\\Deep", "long", REG_BINARY, std::string(25, '\xFE'));
    ASSERT_TRUE(standin::saveRegistry(file).ok);
    std::string longRow = "\"long\"=hex:fe";
    for (int i = 1; i < 24; ++i) longRow += ",fe";
    EXPECT_EQ(contentOf(file),
              "REGEDIT4\r\n\r\n[HKEY_CLASSES_ROOT]\r\n\r\n[HKEY_CLASSES_ROOT\\.txt]\r\n@=\"txtfile\"\r\n"
              "\"a \\\"b\\\" \\\\c\"=\"\x80\\\\\\\"\"\r\n\"n\"=dword:8000002a\r\n\"open\"=hex(1):61,62\r\n"
              "\"line\"=hex(1):0d,0a,00\r\n\r\n[HKEY_LOCAL_MACHINE]\r\n\r\n[HKEY_LOCAL_MACHINE\\Software]\r\n\r\n"
              "[HKEY_LOCAL_MACHINE\\Software\\Deep]\r\n" +
                  longRow + ",\\\r\n  fe\r\n\r\n");
}

TEST_F(Standin, LoadsWhatAPersonWroteIntoWhatIsThere) {
    givenValue(HKEY_CLASSES_ROOT, ".txt", "kept", REG_SZ, "1\0"s);
    const auto result = loadText(
        "REGEDIT4\n; mine\n[hkey_classes_root\\.TXT]\n  \"b\" = hex(7): 61,\\\n\t 00 , 0\n"
        "@=\"x\"  \n\n[HKEY_LOCAL_MACHINE\\a]b\\c]\n\"d\"=dword:1");
    ASSERT_TRUE(result.ok) << result.line << ' ' << result.message;
    EXPECT_EQ(wholeRegistry(),
              "root\n[.txt]\n kept=1:1\0\n b=7:a\0\0\n =1:x\0\nroot\nroot\n[a]b]\n [c]\n"
              "  d=4:\1\0\0\0\nroot\n"s);
}

TEST_F(Standin, RefusesAMalformedFileWholeAndNamesTheLine) {
    givenValue(HKEY_CURRENT_USER, "Before", "v", REG_SZ, "x");
    const std::string before = wholeRegistry();
    std::string deep;
    for (int depth = 1; depth <= 512; ++depth) deep += "\\k";
    const struct {
        const char* reason;
        std::string line;        // the fourth, behind a key and a value that are well-formed
        std::size_t number = 4;  // of the line that is named
    } rows[] = {
        {"an open bracket", "[HKEY_CURRENT_USER\\x"},
        {"an unknown root", "[HKEY_NOBODY\\x]"},
        {"a deletion", "[-HKEY_CURRENT_USER\\x]"},
        {"too long a name", "[HKEY_CURRENT_USER\\" + std::string(256, 'k') + "]"},
        {"an open string", "\"c\"=\"d"},
        {"an unknown escape", R"("c"="d\n")"},
        {"text behind the string", R"("c"="d" e)"},
        {"no data", "\"c\""},
        {"a value's deletion", "\"c\"=-"},
        {"no number", "\"c\"=dword:xyz"},
        {"too long a number", "\"c\"=dword:123456789"},
        {"no byte, in a second line", "\"c\"=hex:01,\\\n  0g", 5},
        {"a second line that isn't there", "\"c\"=hex:01,\\"},
        {"keys too deep to walk through", "[HKEY_CURRENT_USER\\k" + deep + "]"},
        {"no type", "\"c\"=hex(:01"},
        {"a zero byte", "\"c\0\"=\"d\""s},
    };
    const auto expectRefused = [&](const std::string& text, std::size_t line, const char* reason) {
        const auto result = loadText(text);
        EXPECT_TRUE(!result.ok && !result.message.empty()) << reason;
        EXPECT_EQ(result.line, line) << reason << ": " << result.message;
        EXPECT_EQ(wholeRegistry(), before) << reason;
    };
    expectRefused("", 0, "an empty file");
    expectRefused("Windows Registry Editor Version 5.00\n", 1, "another format");
    expectRefused("REGEDIT4\n\"a\"=\"b\"\n", 2, "a value without a key");
    for (const auto& row : rows)
        expectRefused("REGEDIT4\n[HKEY_CURRENT_USER\\New]\n\"a\"=\"b\"\n" + row.line + "\n", row.number, row.reason);
    EXPECT_TRUE(standin::loadRegistry(folder / "none").missing);
}

// Names and data of any bytes, in every code page: a saved registry comes back byte for byte, and a name that the
// format can't hold stops the save instead of changing.
TEST_F(Standin, RandomTreesComeBackFromTheFile) {
    std::mt19937 random(11);
    const auto bytes = [&random](std::size_t longest, const char* instead) {
        const std::string_view traps = "\\\"]=;@ \x83\x5C\x81\xFE\x22[-\r\n";
        std::string text;
        for (auto size = random() % longest + 1; size > 0; --size)
            text += random() % 2 ? traps[random() % traps.size()] : static_cast<char>(random() % 255 + 1);
        for (char& byte : text)
            if (*instead && (byte == '\r' || byte == '\n')) byte = *instead;
        return text;
    };
    const UINT pages[] = {1252, 932, 936, 949, 950};
    int saved = 0;
    for (int round = 0; round < 200; ++round) {
        standin::setCodePages(pages[round % 5], 437);
        standin::clearRegistry();
        for (int i = 0; i < 12; ++i) {
            const std::string data = bytes(40, "") + std::string(random() % 2, '\0');
            const HKEY root = random() % 2 ? HKEY_CLASSES_ROOT : HKEY_LOCAL_MACHINE;
            const std::string name = random() % 3 ? bytes(6, "x") : "";
            givenValue(root, 'k' + bytes(6, "x"), name.c_str(), static_cast<DWORD>(random() % 8), data);
        }
        const std::string before = wholeRegistry();
        const auto result = standin::saveRegistry(file);
        EXPECT_EQ(result.message.find("can't hold") == std::string::npos, result.ok) << result.message;
        if (!result.ok) continue;
        ++saved;
        standin::clearRegistry();
        ASSERT_TRUE(standin::loadRegistry(file).ok);
        EXPECT_EQ(wholeRegistry(), before) << round;
    }
    EXPECT_GT(saved, 60);
}

// Code page 932: katakana so is 83 5C, with a backslash as trail byte; 83 alone is half a character.
TEST_F(Standin, TrailBytesAreNoBackslashesAndHalfCharactersSwallowNothing) {
    standin::setCodePages(932, 932);
    givenValue(HKEY_CLASSES_ROOT, "\x83\x5C\\b", "a\x83", REG_SZ, "\x83\x5C\0"s);
    EXPECT_EQ(wholeRegistry(), "root\n[\x83\x5C]\n [b]\n  a\x83=1:\x83\x5C\0\nroot\nroot\nroot\n"s);
    ASSERT_TRUE(standin::saveRegistry(file).ok);

    HKEY half = nullptr, below = nullptr;
    RegCreateKeyA(HKEY_CLASSES_ROOT, "a\x83", &half);
    RegCreateKeyA(half, "b", &below);
    RegCloseKey(below);
    RegCloseKey(half);
    EXPECT_FALSE(standin::saveRegistry(file).ok) << "written, the two names would read as one";
}

TEST_F(Standin, ASaveCutAnywhereLeavesTheOldFileOrTheNew) {
    givenValue(HKEY_CLASSES_ROOT, ".old", "v", REG_SZ, "1\0"s);
    ASSERT_TRUE(standin::saveRegistry(file).ok);
    ASSERT_EQ(chmod(file.c_str(), 0640), 0);
    const std::string old = contentOf(file);
    givenValue(HKEY_CLASSES_ROOT, ".new", "v", REG_SZ, "2\0"s);
    std::size_t cuts = 0, replaced = 0;
    for (std::size_t n = 1;; ++n) {
        std::ofstream(file, std::ios::binary) << old;
        standin::clearFaults();
        standin::failNth(Kind::fileStep, n);
        const auto result = standin::saveRegistry(file);
        const std::string now = contentOf(file);
        if (result.ok) {
            EXPECT_EQ(standin::calls(Kind::fileStep), now.size() + 4) << "open, bytes, flush, rename, flush the folder";
            EXPECT_NE(now, old);
            break;
        }
        ++cuts;
        replaced += now != old;
        ASSERT_TRUE(standin::faultHit());
        standin::clearRegistry();
        ASSERT_TRUE(standin::loadRegistry(file).ok) << "cut at step " << n;
        givenValue(HKEY_CLASSES_ROOT, ".new", "v", REG_SZ, "2\0"s);
    }
    EXPECT_EQ(replaced, 1u) << "only the cut behind the rename finds the new file";
    EXPECT_GT(cuts, old.size());
    struct stat status {};
    ASSERT_EQ(stat(file.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777u, 0640u);
    EXPECT_NE(standin::saveRegistry(folder / "none/registry.reg").message, "");
}

TEST_F(Standin, ADeniedKeyCanNotBeOpenedButWhatIsBelowCan) {
    givenValue(HKEY_CLASSES_ROOT, ".no\\below", "v", REG_SZ, "x");
    EXPECT_TRUE(standin::denyAccess(HKEY_CLASSES_ROOT, ".NO"));
    EXPECT_FALSE(standin::denyAccess(HKEY_CLASSES_ROOT, ".none"));
    HKEY key = nullptr;
    EXPECT_EQ(RegOpenKeyExA(HKEY_CLASSES_ROOT, ".no", 0, KEY_READ, &key), ERROR_ACCESS_DENIED);
    EXPECT_EQ(RegCreateKeyA(HKEY_CLASSES_ROOT, ".no", &key), ERROR_ACCESS_DENIED);
    ASSERT_EQ(RegOpenKeyExA(HKEY_CLASSES_ROOT, ".no\\below", 0, KEY_READ, &key), ERROR_SUCCESS);
    EXPECT_EQ(standin::openKeys(), 1u);
    RegCloseKey(key);
}

TEST_F(Standin, CodePagesConvertAndFoldAsPublished) {
    const struct {
        UINT page;
        std::string bytes;
        WCHAR unit;
        std::string upper;
        const char* reason;
    } rows[] = {
        {1252, "\x80", 0x20AC, "\x80", "the euro sign"},
        {1252, "\xFF", 0x00FF, "\x9F", "y diaeresis, whose capital lies elsewhere"},
        {1252, "\x81", 0x0081, "\x81", "an undefined byte is a control"},
        {1252, "\xB5", 0x00B5, "\xB5", "the micro sign is no letter"},
        {850, "\xD5", 0x0131, "\xD5", "the dotless i, which is no partner of I"},
        {1251, "\xFF", 0x044F, "\xDF", "Cyrillic ya"},
        {932, "\x81\x60", 0xFF5E, "\x81\x60", "the wave dash, the platform's way"},
        {932, "\xB1", 0xFF71, "\xB1", "half-width katakana a is a single byte"},
        {932, "\xF0\x40", 0xE000, "\xF0\x40", "the first character of the user's own"},
        {949, "\xB0\xA1", 0xAC00, "\xB0\xA1", "the first Hangul syllable"},
        {950, "\xF9\xF9", 0x2550, "\xF9\xF9", "of two double lines, the one that comes back"},
    };
    for (const auto& row : rows) {
        ASSERT_TRUE(standin::setCodePages(row.page, row.page));
        SCOPED_TRACE(std::to_string(row.page) + ": " + row.reason);
        const int size = static_cast<int>(row.bytes.size());
        WCHAR unit = 0;
        std::string back(row.bytes), upper(back), lower(back);
        EXPECT_EQ(IsDBCSLeadByte(static_cast<BYTE>(row.bytes[0])), size == 2);
        EXPECT_EQ(MultiByteToWideChar(CP_ACP, MB_PRECOMPOSED, row.bytes.data(), size, &unit, 1), 1);
        EXPECT_EQ(unit, row.unit);
        EXPECT_EQ(WideCharToMultiByte(CP_ACP, 0, &unit, 1, back.data(), size, nullptr, nullptr), size);
        EXPECT_EQ(back, row.bytes);
        EXPECT_EQ(LCMapStringA(LOCALE_SYSTEM_DEFAULT, LCMAP_UPPERCASE, row.bytes.data(), size, upper.data(), 2), size);
        EXPECT_EQ(upper, row.upper);
        EXPECT_EQ(LCMapStringA(LOCALE_SYSTEM_DEFAULT, LCMAP_LOWERCASE, row.upper.data(), size, lower.data(), 2), size);
        EXPECT_EQ(lower, row.bytes);
    }
    EXPECT_FALSE(standin::setCodePages(1234, 437));
    EXPECT_EQ(GetACP(), 950u);
}

TEST_F(Standin, ConversionsKeepToTheirBuffers) {
    standin::setCodePages(932, 932);
    WCHAR wide[4] = {1, 1, 1, 1};
    EXPECT_EQ(MultiByteToWideChar(CP_ACP, 0, "a\x82\xA0", -1, nullptr, 0), 3) << "the terminator counts";
    EXPECT_EQ(MultiByteToWideChar(CP_ACP, 0, "a\x82\xA0", -1, wide, 2), 0);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_INSUFFICIENT_BUFFER});
    EXPECT_EQ(wide[2], 1);
    EXPECT_EQ(MultiByteToWideChar(CP_ACP, 0, "a\x82", -1, wide, 4), 3) << "a lone lead byte leaves the terminator";
    EXPECT_EQ(std::u16string(wide), u"a\u30FB");
    EXPECT_EQ(MultiByteToWideChar(CP_ACP, MB_ERR_INVALID_CHARS, "\x81\x20", 2, wide, 4), 0);
    char text[4];
    BOOL missing = FALSE;
    EXPECT_EQ(WideCharToMultiByte(CP_ACP, 0, u"\u00E9", -1, text, 4, nullptr, &missing), 2);
    EXPECT_STREQ(text, "?");
    EXPECT_TRUE(missing);
}

TEST_F(Standin, ThePlanFailsTheNthCallAndNoOther) {
    const BYTE byte = 1;
    standin::addResource(nullptr, "plan", "plan", {&byte, 1});
    const struct {
        const char* reason;
        Kind kind;
        bool (*call)();
    } rows[] = {
        {"new", Kind::allocation, [] { return std::unique_ptr<int>(new (std::nothrow) int) != nullptr; }},
        {"new[]", Kind::allocation, [] { return std::unique_ptr<int[]>(new (std::nothrow) int[2]) != nullptr; }},
        {"conversion", Kind::conversion, [] { return MultiByteToWideChar(CP_ACP, 0, "a", 1, nullptr, 0) == 1; }},
        {"block", Kind::globalMemory, [] { return GlobalFree(GlobalAlloc(0, 1)) == nullptr && !standin::faultHit(); }},
        {"resource", Kind::resource, [] { return FindResourceA(nullptr, "plan", "plan") != nullptr; }},
        {"key", Kind::registry, [] { return RegDeleteKeyA(HKEY_USERS, "none") == ERROR_FILE_NOT_FOUND; }},
    };
    for (const auto& row : rows) {
        standin::clearFaults();
        standin::failNth(row.kind, 2);
        EXPECT_TRUE(row.call() && !standin::faultHit()) << row.reason;
        EXPECT_FALSE(row.call()) << row.reason;
        EXPECT_TRUE(standin::faultHit() && (row.kind == Kind::globalMemory || row.call())) << row.reason;
    }
    standin::clearResources();
}

TEST_F(Standin, AMoveableBlockIsNotItsAddressAndMoves) {
    const HGLOBAL block = GlobalAlloc(GHND, 2);
    auto* first = static_cast<char*>(GlobalLock(block));
    ASSERT_NE(first, nullptr);
    EXPECT_NE(static_cast<void*>(first), block);
    EXPECT_EQ(std::string(first, 2), std::string(2, '\0'));
    first[0] = 'a';
    EXPECT_EQ(GlobalReAlloc(block, 9, 0), nullptr) << "locked, so it may not move";
    EXPECT_EQ(GlobalUnlock(block), FALSE);
    EXPECT_EQ(GlobalReAlloc(block, 9, GMEM_ZEROINIT), block);
    auto* second = static_cast<char*>(GlobalLock(block));
    EXPECT_NE(first, second);
    EXPECT_EQ(std::string(second, 9), "a\0\0\0\0\0\0\0\0"s);
    EXPECT_EQ(GlobalSize(block), 9u);
    GlobalUnlock(block);
    EXPECT_EQ(standin::openGlobalBlocks(), 1u);
    EXPECT_EQ(GlobalFree(block), nullptr);
    EXPECT_EQ(GlobalFree(block), block) << "freed already";
}

TEST_F(Standin, ResourcesAreFoundByModuleTypeAndName) {
    const BYTE bytes[] = {1, 2, 3};
    const HINSTANCE module = standin::fakeModule(1);
    standin::addResource(module, RT_DIALOG, MAKEINTRESOURCEA(410), bytes);
    standin::addResource(module, "text", "Credits", {});
    const HRSRC found = FindResourceA(module, "#410", RT_DIALOG);
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(found, FindResourceA(module, MAKEINTRESOURCEA(410), "#5"));
    EXPECT_EQ(FindResourceA(nullptr, MAKEINTRESOURCEA(410), RT_DIALOG), nullptr) << "another module";
    EXPECT_EQ(FindResourceA(module, MAKEINTRESOURCEA(410), RT_BITMAP), nullptr) << "another type";
    EXPECT_NE(FindResourceA(module, "CREDITS", "TEXT"), nullptr);
    EXPECT_EQ(SizeofResource(module, found), 3u);
    const HGLOBAL data = LoadResource(module, found);
    EXPECT_EQ(std::memcmp(LockResource(data), bytes, 3), 0);
    EXPECT_EQ(standin::lockedResources(), 1u);
    EXPECT_EQ(FreeResource(data), FALSE);
    EXPECT_EQ(standin::lockedResources(), 0u);
    standin::clearResources();
}

}  // namespace
