#include "presentation/frame/CollectionBoxView.h"

#include "presentation/frame/EmptyView.h"
#include "presentation/presenters/TextPresenter.h"
#include "presentation/support/CollectionFixtures.h"
#include "presentation/views/TextView.h"

#include <deque>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

using namespace PresentationTest;

namespace {

// The texts of the box's widgets in box order.
std::string describeBox(Gtk::Box& box)
{
    std::string text;
    for (Gtk::Widget* child : box.get_children()) {
        if (!text.empty())
            text += ",";
        auto* const label = dynamic_cast<Gtk::Label*>(child);
        text += label != nullptr ? std::string(label->get_text()) : std::string("?");
    }
    return text;
}

TEST(CollectionBoxViewTest, BoxOrderFollowsIndexesWithEmptyPlacesBetween)
{
    std::deque<ZemTree::TextView> labels;
    const auto label = [&](const char* text) {
        labels.emplace_back(false);
        labels.back().setText(text);
        return static_cast<Zem::IView*>(&labels.back());
    };
    Zem::EmptyView empty1;
    Zem::EmptyView empty2;
    Zem::CollectionBoxView box;
    Zem::IView* const a = label("a");
    Zem::IView* const b = label("b");
    Zem::IView* const c = label("c");

    struct Step {
        const char* text;
        std::function<void()> change;
        const char* boxOrder;
        std::size_t viewCount;
    };
    const std::vector<Step> steps = {
        {"add", [&] { box.add(a); }, "a", 1},
        {"an empty place adds no widget", [&] { box.add(&empty1); }, "a", 2},
        {"insert after the empty place", [&] { box.insert(2, b); }, "a,b", 3},
        {"insert at the front", [&] { box.insert(0, &empty2); }, "a,b", 4},
        {"insert between", [&] { box.insert(2, c); }, "a,c,b", 5},
        {"move a widget last", [&] { box.move(4, a); }, "c,b,a", 5},
        {"move an empty place", [&] { box.move(4, &empty1); }, "c,b,a", 5},
        {"move a widget first", [&] { box.move(0, b); }, "b,c,a", 5},
        {"remove an empty place", [&] { box.remove(&empty2); }, "b,c,a", 4},
        {"remove a widget", [&] { box.remove(c); }, "b,a", 3},
        {"a view not shown is ignored", [&] { box.remove(c); }, "b,a", 3},
        {"clear", [&] { box.clear(); }, "", 0},
        {"an index past the end appends", [&] { box.insert(7, c); }, "c", 1},
    };
    for (const Step& step : steps) {
        SCOPED_TRACE(step.text);
        step.change();
        EXPECT_EQ(describeBox(box), step.boxOrder);
        EXPECT_EQ(box.getViewCount(), step.viewCount);
    }
}

TEST(CollectionBoxViewTest, ChildDeletedWhileShownLeavesTheBoxConsistent)
{
    auto a = std::make_unique<ZemTree::TextView>(false);
    a->setText("a");
    ZemTree::TextView b(false);
    b.setText("b");
    ZemTree::TextView c(false);
    c.setText("c");
    auto box = std::make_unique<Zem::CollectionBoxView>();
    box->add(a.get());
    box->add(&b);
    a.reset();
    EXPECT_EQ(describeBox(*box), "b");
    EXPECT_EQ(box->getViewCount(), 1u);
    box->insert(1, &c);
    EXPECT_EQ(describeBox(*box), "b,c");
    box.reset();
    EXPECT_EQ(b.get_parent(), nullptr) << "a child is still inside a deleted box";
}

TEST(CollectionBoxViewTest, PresenterSetsTheOrientationOfItsBox)
{
    struct Row {
        const char* text;
        bool isSet;
        Zem::CollectionOrientation orientation;
        Gtk::Orientation expected;
    };
    const Row rows[] = {
        {"a column by default", false, Zem::CollectionOrientation::Horizontal, Gtk::ORIENTATION_VERTICAL},
        {"a row when asked", true, Zem::CollectionOrientation::Horizontal, Gtk::ORIENTATION_HORIZONTAL},
        {"a column when asked", true, Zem::CollectionOrientation::Vertical, Gtk::ORIENTATION_VERTICAL},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        ItemFactory factory;
        Zem::NotifyCollectionPresenter<Item*> presenter(factory);
        if (row.isSet)
            presenter.setOrientation(row.orientation);
        auto* const box = dynamic_cast<Gtk::Box*>(presenter.getView());
        ASSERT_NE(box, nullptr);
        EXPECT_EQ(box->get_orientation(), row.expected);
    }
}

// A collection of text presenters in a real box: the children's widgets are deleted by their presenters while the
// box still shows others, and the box goes last; any GTK critical on the way ends the run.
TEST(CollectionBoxViewTest, RealChildrenComeAndGoWithoutCriticals)
{
    class TextFactory : public Zem::IPresenterFactory<Item*> {
    public:
        std::unique_ptr<Zem::IPresenter> createPresenter(Item* item) override
        {
            return std::make_unique<ZemTree::TextPresenter>(item->name, false);
        }
    } factory;
    std::deque<Item> items{{"one"}, {"two"}, {"three"}};
    Zem::NotifyCollection<Item*> collection;
    collection.add(&items[0]);
    auto presenter = std::make_unique<Zem::NotifyCollectionPresenter<Item*>>(factory);
    presenter->setCollection(&collection);
    auto* const box = dynamic_cast<Gtk::Box*>(presenter->getView());
    ASSERT_NE(box, nullptr);
    collection.add(&items[1]);
    collection.insert(0, &items[2]);
    EXPECT_EQ(describeBox(*box), "three,one,two");
    collection.move(0, 2);
    EXPECT_EQ(describeBox(*box), "one,two,three");
    collection.remove(&items[1]);
    EXPECT_EQ(describeBox(*box), "one,three");
    presenter.reset();
}

} // namespace
