// Dialog templates as bytes: taken apart, given another font, written again.
#include "dialogs/dialog_template.h"

#include <gmock/gmock.h>

#include <memory>
#include <string>

#include "dialogs/font_choice.h"
#include "template_builder.h"

namespace tamrix {
namespace {

using testing::ElementsAreArray;
using testing_support::BuiltFont;
using testing_support::BuiltItem;
using testing_support::BuiltTemplate;
using testing_support::Bytes;

const std::u16string kButton = u"\xFFFF\x0080";

std::unique_ptr<CDialogTemplate> newTemplate(bool extended) {
    if (extended) return std::make_unique<CDialogTemplateEx>();
    return std::make_unique<CDialogTemplate>();
}

/// Parses a copy that ends where its block ends, so that a sanitizer sees the first byte read too far.
int parsed(CDialogTemplate& dialog, const Bytes& bytes, std::size_t length) {
    const auto copy = std::make_unique<std::uint8_t[]>(length);
    std::copy_n(bytes.begin(), length, copy.get());
    dialog.dataSize = static_cast<std::uint32_t>(length);
    return dialog.parse(copy.get());
}

Bytes written(CDialogTemplate& dialog) {
    Bytes bytes(static_cast<std::size_t>(dialog.write(nullptr, 0)));
    EXPECT_EQ(dialog.write(bytes.data(), static_cast<int>(bytes.size())), static_cast<int>(bytes.size()));
    return bytes;
}

/// A name as it is stored: an ordinal has no terminator.
std::u16string withEnd(const std::u16string& name) {
    return name[0] == 0xFFFF ? name : name + u'\0';
}

void expectFields(CDialogTemplate& dialog, const BuiltTemplate& built, const Bytes& bytes) {
    EXPECT_EQ(dialog.style, built.font ? 0x90C820C0U : 0x90C82080U) << "DS_SETFONT where there is a font";
    EXPECT_EQ(dialog.exStyle, 0x00010000U);
    EXPECT_THAT((std::vector{dialog.x, dialog.y, dialog.cx, dialog.cy}), testing::ElementsAre(40, -40, 180, 82));
    EXPECT_EQ(std::u16string(dialog.menu, dialog.menuLength), withEnd(built.menu));
    EXPECT_EQ(std::u16string(dialog.windowClass, dialog.classLength), withEnd(built.windowClass));
    EXPECT_EQ(std::u16string(dialog.title), built.title);
    ASSERT_EQ(dialog.hasFont != 0, built.font.has_value());
    if (built.font) {
        EXPECT_EQ(dialog.pointSize, built.font->points);
        EXPECT_EQ(std::u16string(dialog.faceName), built.font->face);
    }
    ASSERT_EQ(dialog.itemCount, built.items.size());
    if (!built.items.empty()) {
        EXPECT_THAT(Bytes(dialog.items, dialog.items + dialog.itemsSize),
                    ElementsAreArray(bytes.end() - dialog.itemsSize, bytes.end()));
    }
    if (!built.extended) return;
    auto& extended = static_cast<CDialogTemplateEx&>(dialog);
    EXPECT_EQ(extended.version, 1);
    EXPECT_EQ(extended.signature, 0xFFFF);
    EXPECT_EQ(extended.helpId, 410U);
    if (built.font) {
        EXPECT_EQ(extended.weight, built.font->weight);
        EXPECT_EQ(extended.italicAndCharset, built.font->italicAndCharset);
    }
}

std::vector<std::pair<const char*, BuiltTemplate>> templateRows(bool extended) {
    const BuiltFont sans{8, 400, 0x0001, u"MS Sans Serif"};
    std::vector<std::pair<const char*, BuiltTemplate>> rows = {
        {"nothing but a header", {}},
        {"a title, so that the header ends off a boundary with nothing after it", {.title = u"a"}},
        {"menu and class by name", {.menu = u"MAIN", .windowClass = u"Frame", .title = u"T", .font = sans}},
        {"menu and class by ordinal", {.menu = u"\xFFFF\x0007", .windowClass = u"\xFFFF\x8002", .font = sans}},
        {"an ordinal of zero is no terminator", {.menu = std::u16string(u"\xFFFF\0", 2), .title = u"T"}},
        {"one control, header off a boundary", {.title = u"a", .items = {{kButton, u"OK", {}}}}},
        {"one control, header on a boundary", {.title = u"ab", .items = {{kButton, u"OK", {}}}}},
        {"control class and title by name, title by ordinal, no title",
         {.font = sans, .items = {{u"Spin", u"&Up", {}}, {u"Spin", u"\xFFFF\x0003", {}}, {kButton, u"", {}}}}},
        {"creation data of odd and even length, last record odd",
         {.items = {{kButton, u"a", {1}}, {kButton, u"ab", {1, 2, 3, 4}}, {u"X", u"", {0xFF, 0xFF, 0}}}}},
        {"forty controls", {.font = sans, .items = std::vector<BuiltItem>(40, {u"Edit", u"text", {9, 9}})}},
    };
    for (auto& [reason, built] : rows) built.extended = extended;
    return rows;
}

class EachFormat : public testing::TestWithParam<bool> {};
INSTANTIATE_TEST_SUITE_P(DialogTemplate, EachFormat, testing::Bool(),
                         [](const auto& param) { return param.param ? "Extended" : "Standard"; });

TEST_P(EachFormat, IsWrittenAsItWasReadButForTheFontAndSizeItWasGiven) {
    const auto dialog = newTemplate(GetParam());
    for (const auto& [reason, built] : templateRows(GetParam())) {
        SCOPED_TRACE(reason);
        const Bytes bytes = built.bytes();
        const int size = static_cast<int>(bytes.size());
        for (std::size_t length = 0; length < bytes.size(); ++length)
            EXPECT_EQ(parsed(*newTemplate(GetParam()), bytes, length), 0) << "cut at " << length << " of " << size;
        ASSERT_EQ(parsed(*dialog, bytes, bytes.size()), 1) << "into the object of the row before";
        expectFields(*dialog, built, bytes);
        EXPECT_THAT(written(*dialog), ElementsAreArray(bytes));

        Bytes buffer(bytes.size() + 1, 0xCC);
        EXPECT_EQ(dialog->write(buffer.data(), size - 1), 0);
        EXPECT_EQ(dialog->write(buffer.data(), -1), 0) << "sizes are signed";
        EXPECT_THAT(buffer, testing::Each(0xCC));
        EXPECT_EQ(dialog->write(buffer.data(), 0x7FFFFFFF), size);
        EXPECT_EQ(buffer.back(), 0xCC);

        BuiltTemplate wanted = built;
        wanted.font = BuiltFont{10, 700, 0x0201, u"Arial"};
        wanted.cx = -32768;
        wanted.cy = 12;
        EXPECT_EQ(dialog->setFaceName("Arial"), 6);
        dialog->setPointSize(10);
        dialog->setWeight(700);
        dialog->setItalicAndCharset(0x0201);
        dialog->setWidth(-32768);
        dialog->setHeight(12);
        EXPECT_THAT(written(*dialog), ElementsAreArray(wanted.bytes()));

        EXPECT_EQ(dialog->setFaceName(nullptr), 0) << "a face that does not convert";
        EXPECT_EQ(dialog->faceName, nullptr);
        wanted.font.reset();
        EXPECT_THAT(written(*dialog), ElementsAreArray(wanted.bytes()));
        dialog->setFaceName("Arial");  // for the next row to give back
    }
}

TEST_P(EachFormat, LeavesThePaddingBeforeTheControlsAsItIs) {
    const BuiltTemplate built{.extended = GetParam(), .title = u"a", .items = {{kButton, u"", {}}}};
    const Bytes bytes = built.bytes();
    const auto dialog = newTemplate(GetParam());
    ASSERT_EQ(parsed(*dialog, bytes, bytes.size()), 1);
    Bytes buffer(bytes.size(), 0xCC);
    ASSERT_EQ(dialog->write(buffer.data(), static_cast<int>(buffer.size())), static_cast<int>(bytes.size()));
    Bytes wanted = bytes;
    const std::size_t items = bytes.size() - dialog->itemsSize;
    wanted[items - 1] = wanted[items - 2] = 0xCC;
    EXPECT_THAT(buffer, ElementsAreArray(wanted));
}

TEST(DialogTemplate, TakesTheStandardFormatApart) {
    const Bytes bytes = {
        0xC0, 0x20, 0xC8, 0x90,                                                  // style, DS_SETFONT among it
        0x01, 0x00, 0x02, 0x00,                                                  // extended style
        0x01, 0x00,                                                              // controls
        0xFE, 0xFF, 0x28, 0x00,                                                  // x -2, y 40
        0xB4, 0x00, 0x52, 0x00,                                                  // 180 by 82
        0xFF, 0xFF, 0x07, 0x00,                                                  // menu 7
        0x00, 0x00,                                                              // the default class
        0x48, 0x00, 0x69, 0x00, 0x00, 0x00,                                      // "Hi"
        0x08, 0x00, 0x41, 0x00, 0x00, 0x00,                                      // 8 points, "A"
        0x00, 0x00, 0x01, 0x50, 0x00, 0x00, 0x00, 0x00, 0x5C, 0x00, 0x3F, 0x00,  // a control on the next boundary
        0x28, 0x00, 0x0E, 0x00, 0x01, 0x00, 0xFF, 0xFF, 0x80, 0x00, 0x00, 0x00,  // a button without a title
        0x03, 0x00, 0x77,                                                        // one byte of creation data
    };
    CDialogTemplate dialog;
    ASSERT_EQ(parsed(dialog, bytes, bytes.size()), 1);
    EXPECT_EQ(dialog.style, 0x90C820C0U);
    EXPECT_EQ(dialog.exStyle, 0x00020001U);
    EXPECT_EQ(dialog.itemCount, 1);
    EXPECT_THAT((std::vector{dialog.x, dialog.y, dialog.cx, dialog.cy}), testing::ElementsAre(-2, 40, 180, 82));
    EXPECT_EQ(std::u16string(dialog.menu, dialog.menuLength), u"\xFFFF\x0007");
    EXPECT_EQ(std::u16string(dialog.windowClass, dialog.classLength), std::u16string(1, u'\0'));
    EXPECT_EQ(std::u16string(dialog.title), u"Hi");
    EXPECT_NE(dialog.hasFont, 0U);
    EXPECT_EQ(dialog.pointSize, 8);
    EXPECT_EQ(std::u16string(dialog.faceName), u"A");
    EXPECT_THAT(Bytes(dialog.items, dialog.items + dialog.itemsSize),
                ElementsAreArray(bytes.begin() + 36, bytes.end()));
    EXPECT_THAT(written(dialog), ElementsAreArray(bytes));
}

TEST(DialogTemplate, EndsARecordInsideItsWordWhenTheDataCountsOneByte) {
    Bytes bytes = BuiltTemplate{.items = {{kButton, u"", {}}}}.bytes();
    bytes[bytes.size() - 2] = 1;
    CDialogTemplate dialog;
    ASSERT_EQ(parsed(dialog, bytes, bytes.size()), 1);
    EXPECT_EQ(dialog.itemsSize, 25U) << "18 bytes, class ordinal, empty title and half a word";
}

TEST(DialogTemplateEx, TakesTheExtendedFormatApart) {
    const Bytes bytes = {
        0x01, 0x00, 0xFF, 0xFF,                                      // version, signature
        0x9A, 0x01, 0x00, 0x00,                                      // help id 410
        0x00, 0x04, 0x00, 0x00,                                      // extended style first
        0x48, 0x00, 0xC8, 0x80,                                      // style
        0x01, 0x00,                                                  // controls
        0x01, 0x00, 0x02, 0x00, 0x03, 0x00, 0x04, 0x00,              // place and size
        0x00, 0x00, 0x43, 0x00, 0x00, 0x00, 0x00, 0x00,              // no menu, class "C", no title
        0x0A, 0x00, 0xBC, 0x02, 0x01, 0x80, 0x41, 0x00, 0x00, 0x00,  // 10 points, bold, italic, Shift-JIS, "A"
        0x2C, 0x01, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x01, 0x50,  // a control's help id and styles
        0x05, 0x00, 0x06, 0x00, 0x07, 0x00, 0x08, 0x00, 0x70, 0x11, 0x01, 0x00,  // its place and 32-bit id
        0x58, 0x00, 0x00, 0x00, 0xFF, 0xFF, 0x02, 0x00, 0x01, 0x00, 0x77,        // class "X", title 2, one byte of data
    };
    CDialogTemplateEx dialog;
    ASSERT_EQ(parsed(dialog, bytes, bytes.size()), 1);
    EXPECT_EQ(dialog.version, 1);
    EXPECT_EQ(dialog.signature, 0xFFFF);
    EXPECT_EQ(dialog.helpId, 410U);
    EXPECT_EQ(dialog.exStyle, 0x400U);
    EXPECT_EQ(dialog.style, 0x80C80048U);
    EXPECT_EQ(dialog.weight, 700);
    EXPECT_EQ(dialog.italicAndCharset, 0x8001);
    EXPECT_EQ(std::u16string(dialog.windowClass, dialog.classLength), std::u16string(u"C\0", 2));
    EXPECT_EQ(dialog.itemsSize, 35U);
    EXPECT_THAT(written(dialog), ElementsAreArray(bytes));
}

TEST(FontChoice, GoesFromConfiguredToDefaultToWhatTheTemplateCarries) {
    const FontChoice gui = {"Tahoma", 9};
    const FontChoice none = {nullptr, 0};
    const struct {
        const char* reason;
        const char* configuredFace;
        std::uint32_t configuredPoints;
        TemplateFont carried;
        FontChoice candidate;
        const char* face;  // null: the template keeps what it has
        std::uint16_t points;
        bool sizeMayFollow;
    } rows[] = {
        {"configured, over the authored font", "Arial", 10, {u"MS Sans Serif", 8}, gui, "Arial", 10, true},
        {"configured, over any other font", "Arial", 10, {u"Courier", 12}, gui, "Arial", 10, true},
        {"configured, over no font", "Arial", 10, {nullptr, 0}, none, "Arial", 10, true},
        {"low 16 bits of the configured size", "Arial", 10 + 65536, {u"Courier", 12}, gui, "Arial", 10, true},
        {"a size whose low 16 bits are zero is still one", "Arial", 65536, {nullptr, 0}, gui, "Arial", 0, true},
        {"configured face without a size", "Arial", 0, {u"MS Sans Serif", 8}, gui, "Tahoma", 9, true},
        {"configured size without a face", nullptr, 10, {u"Courier", 12}, gui, nullptr, 0, false},
        {"authored font", nullptr, 0, {u"MS Sans Serif", 8}, gui, "Tahoma", 9, true},
        {"authored font, no candidate", nullptr, 0, {u"MS Sans Serif", 8}, none, nullptr, 0, true},
        {"authored face in another size", nullptr, 0, {u"MS Sans Serif", 10}, gui, nullptr, 0, false},
        {"authored face in another case", nullptr, 0, {u"ms sans serif", 8}, gui, nullptr, 0, false},
        {"longer face", nullptr, 0, {u"MS Sans Serif X", 8}, gui, nullptr, 0, false},
        {"another face", nullptr, 0, {u"Arial", 8}, gui, nullptr, 0, false},
        {"no font", nullptr, 0, {nullptr, 0}, gui, "Tahoma", 9, true},
        {"no font, no candidate", nullptr, 0, {nullptr, 0}, none, nullptr, 0, true},
    };
    for (const auto& row : rows) {
        const FontDecision decision = chooseFont(row.configuredFace, row.configuredPoints, row.carried, row.candidate);
        EXPECT_STREQ(decision.font.face, row.face) << row.reason;
        EXPECT_EQ(decision.font.face ? decision.font.points : 0, row.points) << row.reason;
        EXPECT_EQ(decision.sizeMayFollow, row.sizeMayFollow) << row.reason;
    }
}

TEST(FontChoice, ScalesTheSizeByTheTwoFontsMetrics) {
    const struct {
        const char* reason;
        DialogSize size;
        FontMetrics newFont, reference;
        DialogSize wanted;
    } rows[] = {
        {"one pixel narrower: the added pixel keeps the width", {310, 108}, {6, 13}, {7, 13}, {310, 108}},
        {"wider and higher", {310, 108}, {8, 20}, {6, 13}, {465, 166}},
        {"cut toward zero", {100, 100}, {5, 10}, {7, 13}, {85, 76}},
        {"cut toward zero below zero too", {-100, -100}, {5, 10}, {7, 13}, {-85, -76}},
        {"low 16 bits", {30000, 30000}, {20, 30}, {7, 10}, {24464, 24464}},
        {"a reference without width", {310, 108}, {8, 20}, {0, 13}, {310, 108}},
        {"a reference without height", {310, 108}, {8, 20}, {6, 0}, {310, 108}},
        {"the largest metrics", {32767, 32767}, {0x7FFFFFFF, 0x7FFFFFFF}, {1, 1}, {0, -32767}},
    };
    for (const auto& row : rows) {
        const DialogSize size = adjustedSize(row.size, row.newFont, row.reference);
        EXPECT_EQ(size.cx, row.wanted.cx) << row.reason;
        EXPECT_EQ(size.cy, row.wanted.cy) << row.reason;
    }
}

}  // namespace
}  // namespace tamrix
