#include "presentation/presenters/TextPresenter.h"

#include "LanguageGuard.h"
#include "core/tree/Node.h"
#include "presentation/presenters/NodeDescriptorPresenter.h"
#include "presentation/views/TextView.h"

#include <gtest/gtest.h>

namespace {

TEST(TextPresenterTest, WrappingChoiceAndTextBeforeAndAfterTheView)
{
    struct Row {
        const char* text;
        bool isWrapped;
        bool expectWrap;
        Pango::EllipsizeMode expectEllipsize;
        const char* expectTooltip;
    };
    const Row rows[] = {
        {"wrapped", true, true, Pango::ELLIPSIZE_NONE, ""},
        {"single line", false, false, Pango::ELLIPSIZE_END, "later"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        ZemTree::TextPresenter presenter("first", row.isWrapped);
        presenter.setText("second");
        auto* const label = dynamic_cast<ZemTree::TextView*>(presenter.getView());
        ASSERT_NE(label, nullptr);
        EXPECT_EQ(label->get_text(), "second");
        presenter.setText("later");
        EXPECT_EQ(label->get_text(), "later");
        EXPECT_EQ(label->get_line_wrap(), row.expectWrap);
        EXPECT_EQ(label->get_ellipsize(), row.expectEllipsize);
        EXPECT_EQ(label->get_tooltip_text(), row.expectTooltip);
    }
}

TEST(NodeDescriptorPresenterTest, DescriptionInTheLanguageAndFollowingChanges)
{
    ZemTree::Node node("Node", ZemTree::LocalString::create("Pickup", "Срабатывание"));
    for (int language : {0, 1}) {
        SCOPED_TRACE(language);
        ZemTreeTest::LanguageGuard guard(language);
        ZemTree::NodeDescriptorPresenter presenter(&node);
        auto* const label = dynamic_cast<Gtk::Label*>(presenter.getView());
        ASSERT_NE(label, nullptr);
        EXPECT_EQ(label->get_text(), language == 0 ? "Pickup" : "Срабатывание");
    }
    ZemTree::NodeDescriptorPresenter presenter(&node);
    auto* const label = dynamic_cast<Gtk::Label*>(presenter.getView());
    ASSERT_NE(label, nullptr);
    node.setDescription(ZemTree::LocalString::create("Trip time", "Время срабатывания"));
    EXPECT_EQ(label->get_text(), "Trip time");

    ZemTree::NodeDescriptorPresenter none(nullptr);
    auto* const empty = dynamic_cast<Gtk::Label*>(none.getView());
    ASSERT_NE(empty, nullptr);
    EXPECT_EQ(empty->get_text(), "");
}

} // namespace
