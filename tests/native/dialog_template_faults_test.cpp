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

    template <typename Template>
    int loaded() {
        Template dialog;
        return dialog.load(nullptr, MAKEINTRESOURCEA(500));
    }
};

Bytes standardTemplate() {
    return BuiltTemplate{.menu = u"M", .title = u"T", .font = BuiltFont{.face = u"A"}, .items = {{u"Edit", u"x", {}}}}
        .bytes();
}

Bytes extendedTemplate() {
    BuiltTemplate built{.extended = true, .title = u"T", .font = BuiltFont{.face = u"A"}, .items = {{u"E", u"x", {}}}};
    return built.bytes();
}

TEST_F(TemplateResource, IsLoadedByTheClassOfItsFormatOnly) {
    givenResource(standardTemplate());
    EXPECT_EQ(loaded<CDialogTemplate>(), 1);
    EXPECT_EQ(loaded<CDialogTemplateEx>(), 0);
    givenResource(extendedTemplate());
    EXPECT_EQ(loaded<CDialogTemplate>(), 0);
    EXPECT_EQ(loaded<CDialogTemplateEx>(), 1);
}

TEST_F(TemplateResource, IsRefusedWhenMissingOrShort) {
    EXPECT_EQ(loaded<CDialogTemplate>(), 0);
    for (const std::size_t length : {0u, 1u, 3u, 17u}) {
        givenResource(Bytes(length));
        EXPECT_EQ(loaded<CDialogTemplate>(), 0) << length;
        EXPECT_EQ(loaded<CDialogTemplateEx>(), 0) << length;
    }
    givenResource({1, 0, 0xFF, 0xFF});
    EXPECT_EQ(loaded<CDialogTemplateEx>(), 0) << "the marks of the extended format and no more";
}

TEST_F(TemplateResource, IsRefusedWhileAnyCallFails) {
    givenResource(standardTemplate());
    for (const auto kind : {standin::Kind::resource, standin::Kind::allocation}) {
        std::size_t failures = 0;
        for (bool failed = true; failed; ++failures) {
            standin::clearFaults();
            standin::failNth(kind, failures + 1);
            const int result = loaded<CDialogTemplate>();
            failed = standin::faultHit();
            EXPECT_EQ(result, failed ? 0 : 1) << "call " << failures + 1 << " of kind " << static_cast<int>(kind);
        }
        EXPECT_GE(failures, 4U);
    }
}

TEST_F(TemplateResource, LosesItsFontWhenTheFaceCannotBeKept) {
    givenResource(standardTemplate());
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
