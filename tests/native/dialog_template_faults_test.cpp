// Dialog templates as resources: what is refused, and what fails while calls fail by plan.
#include <gmock/gmock.h>
#include <standin.h>

#include "dialogs/dialog_template.h"
#include "template_builder.h"

namespace tamrix {
namespace {

using testing_support::BuiltFont;
using testing_support::BuiltTemplate;
using testing_support::Bytes;

class TemplateResource : public testing::Test {
protected:
    ~TemplateResource() override {
        standin::clearFaults();
        standin::clearResources();
    }

    void givenResource(const Bytes& bytes) { standin::addResource(nullptr, RT_DIALOG, MAKEINTRESOURCEA(500), bytes); }

    template <typename Template = CDialogTemplate>
    int loaded() {
        Template dialog;
        return dialog.load(nullptr, MAKEINTRESOURCEA(500));
    }

    const BuiltTemplate standard{.menu = u"M", .title = u"T", .font = BuiltFont{.face = u"A"}, .items = {{u"E", u"x"}}};
};

TEST_F(TemplateResource, IsLoadedWholeAndByTheClassOfItsFormatOnly) {
    EXPECT_EQ(loaded(), 0) << "missing";
    BuiltTemplate extended = standard;
    extended.extended = true;
    const struct {
        const char* reason;
        Bytes bytes;
        int asStandard, asExtended;
    } rows[] = {{"standard", standard.bytes(), 1, 0},
                {"extended", extended.bytes(), 0, 1},
                {"empty", Bytes(), 0, 0},
                {"one byte", Bytes(1), 0, 0},
                {"three bytes", Bytes(3), 0, 0},
                {"a byte short of a header", Bytes(17), 0, 0},
                {"the extended format's marks and no more", {1, 0, 0xFF, 0xFF}, 0, 0}};
    for (const auto& row : rows) {
        givenResource(row.bytes);
        EXPECT_EQ(loaded(), row.asStandard) << row.reason;
        EXPECT_EQ(loaded<CDialogTemplateEx>(), row.asExtended) << row.reason;
    }
}

TEST_F(TemplateResource, IsRefusedWhileAnyCallFails) {
    givenResource(standard.bytes());
    for (const auto kind : {standin::Kind::resource, standin::Kind::allocation}) {
        std::size_t failures = 0;
        for (bool failed = true; failed; ++failures) {
            standin::clearFaults();
            standin::failNth(kind, failures + 1);
            const int result = loaded();
            failed = standin::faultHit();
            EXPECT_EQ(result, failed ? 0 : 1) << "call " << failures + 1 << " of kind " << static_cast<int>(kind);
        }
        EXPECT_GE(failures, 4U);
    }
}

TEST_F(TemplateResource, LosesItsFontWhenTheFaceCannotBeKept) {
    givenResource(standard.bytes());
    for (const auto kind : {standin::Kind::conversion, standin::Kind::allocation}) {
        CDialogTemplate dialog;
        ASSERT_EQ(dialog.load(nullptr, MAKEINTRESOURCEA(500)), 1);
        const std::uint32_t style = dialog.style;
        standin::clearFaults();
        standin::failNth(kind, kind == standin::Kind::conversion ? 2 : 1);
        EXPECT_EQ(dialog.setFaceName("Arial"), 0);
        EXPECT_EQ(dialog.faceName, nullptr);
        EXPECT_EQ(dialog.hasFont, 0U);
        EXPECT_EQ(dialog.style, style & ~0x40U);
    }
}

}  // namespace
}  // namespace tamrix
