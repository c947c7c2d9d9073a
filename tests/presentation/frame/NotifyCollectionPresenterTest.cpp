#include "presentation/frame/EmptyViewPresenter.h"
#include "presentation/support/CollectionFixtures.h"

#include <deque>
#include <functional>
#include <gtest/gtest.h>
#include <stdexcept>
#include <vector>

using namespace PresentationTest;

namespace {

struct CollectionFixture {
    // Items live in a deque, so adding one does not move the others.
    Item* make(const std::string& name, ItemKind kind = ItemKind::Visible)
    {
        items.push_back(Item{name, kind});
        return &items.back();
    }

    std::deque<Item> items;
    Zem::NotifyCollection<Item*> collection;
    ItemFactory factory;
};

TEST(NotifyCollectionPresenterTest, CollectionSetBeforeTheViewIsAddedOnceByTheFirstGetView)
{
    CollectionFixture f;
    f.collection.add(f.make("a"));
    f.collection.add(f.make("h", ItemKind::Hidden));
    f.collection.add(f.make("b"));
    const int viewsBefore = FakeCollectionView::createdCount();
    ItemCollectionPresenter presenter(f.factory);
    presenter.setCollection(&f.collection);
    f.collection.add(f.make("c"));
    f.collection.move(0, 2);

    EXPECT_FALSE(presenter.hasView()) << "no step made the view";
    EXPECT_EQ(FakeCollectionView::createdCount(), viewsBefore);
    EXPECT_EQ(describeChildren(presenter), "-,b,a,c");

    presenter.getView();
    presenter.getView();
    const FakeCollectionView& view = *presenter.getFakeView();
    EXPECT_EQ(view.calls, (std::vector<std::string>{"add", "add", "add", "add"}));
    EXPECT_EQ(describeShown(view), "-,b,a,c");
}

TEST(NotifyCollectionPresenterTest, NullCollectionLeavesNoChildAndNoConnection)
{
    CollectionFixture f;
    f.collection.add(f.make("a"));
    f.collection.add(f.make("b"));
    ItemCollectionPresenter presenter(f.factory);
    presenter.setCollection(&f.collection);
    presenter.getView();
    std::vector<bool> emptySignals;
    presenter.signalIsEmptyChanged.connect([&](bool isEmpty) { emptySignals.push_back(isEmpty); });

    presenter.setCollection(nullptr);
    EXPECT_TRUE(presenter.getChildren().empty());
    EXPECT_TRUE(presenter.getFakeView()->shown.empty());
    EXPECT_EQ(presenter.getFakeView()->calls.back(), "clear");
    EXPECT_EQ(emptySignals, std::vector<bool>{true});

    const int factoryCalls = f.factory.calls;
    const std::size_t viewCalls = presenter.getFakeView()->calls.size();
    f.collection.add(f.make("c"));
    f.collection.remove(f.collection.at(0));
    EXPECT_EQ(f.factory.calls, factoryCalls) << "the old collection still reaches the presenter";
    EXPECT_EQ(presenter.getFakeView()->calls.size(), viewCalls);
    EXPECT_TRUE(presenter.getChildren().empty());
}

// Each step changes the collection; children and view must agree after it, with hidden items and null answers of
// the factory in between, and the empty signal must turn only with the first shown item and the last.
TEST(NotifyCollectionPresenterTest, ChildrenViewAndEmptySignalFollowEachChange)
{
    CollectionFixture f;
    ItemCollectionPresenter presenter(f.factory);
    presenter.setCollection(&f.collection);
    presenter.getView();
    std::vector<bool> emptySignals;
    presenter.signalIsEmptyChanged.connect([&](bool isEmpty) { emptySignals.push_back(isEmpty); });
    auto& c = f.collection;
    const auto at = [&](std::size_t i) { return c.at(i); };

    struct Step {
        const char* text;
        std::function<void()> change;
        const char* children;
        const char* shown;
        std::vector<bool> emptySignals;
    };
    const std::vector<Step> steps = {
        {"a hidden item is an empty place", [&] { c.add(f.make("h1", ItemKind::Hidden)); }, "-", "-", {}},
        {"a null answer shows nothing", [&] { c.add(f.make("n1", ItemKind::NoPresenter)); }, "-,0", "-", {}},
        {"the first shown item", [&] { c.add(f.make("a")); }, "-,0,a", "-,a", {false}},
        {"insert before a null child", [&] { c.insert(1, f.make("b")); }, "-,b,0,a", "-,b,a", {}},
        {"insert at the front", [&] { c.insert(0, f.make("c")); }, "c,-,b,0,a", "c,-,b,a", {}},
        {"move forward over a null child", [&] { c.move(0, 3); }, "-,b,0,c,a", "-,b,c,a", {}},
        {"move back to the front", [&] { c.move(4, 0); }, "a,-,b,0,c", "a,-,b,c", {}},
        {"remove a null child", [&] { c.remove(at(3)); }, "a,-,b,c", "a,-,b,c", {}},
        {"remove the middle", [&] { c.remove(at(2)); }, "a,-,c", "a,-,c", {}},
        {"remove one of two shown", [&] { c.remove(at(0)); }, "-,c", "-,c", {}},
        {"remove the last shown item", [&] { c.remove(at(1)); }, "-", "-", {true}},
        {"a shown item again", [&] { c.add(f.make("d")); }, "-,d", "-,d", {false}},
        {"remove all", [&] { c.reset(); }, "", "", {true}},
    };
    for (const Step& step : steps) {
        SCOPED_TRACE(step.text);
        emptySignals.clear();
        step.change();
        EXPECT_EQ(describeChildren(presenter), step.children);
        EXPECT_EQ(describeShown(*presenter.getFakeView()), step.shown);
        EXPECT_TRUE(viewMatchesChildren(presenter));
        EXPECT_EQ(emptySignals, step.emptySignals);
        EXPECT_EQ(presenter.getFakeView()->deadViewCalls, 0);
    }
    EXPECT_EQ(presenter.addedHooks, 6);
    EXPECT_EQ(presenter.removedHooks, 6);
}

TEST(NotifyCollectionPresenterTest, RemovedChildViewLeavesTheViewBeforeItIsDeleted)
{
    CollectionFixture f;
    f.collection.add(f.make("a"));
    f.collection.add(f.make("b"));
    ItemCollectionPresenter presenter(f.factory);
    presenter.setCollection(&f.collection);
    presenter.getView();
    Zem::IView* const removedView = presenter.getChildren()[0]->getView();

    f.collection.remove(f.collection.at(0));
    EXPECT_EQ(presenter.getFakeView()->calls.back(), "remove");
    EXPECT_EQ(presenter.getFakeView()->deadViewCalls, 0) << "remove got a deleted view";
    EXPECT_EQ(deadViews().count(removedView), 1u) << "the removed child was not deleted";
}

TEST(NotifyCollectionPresenterTest, CollectionWithOnlyHiddenItemsCountsAsEmpty)
{
    CollectionFixture f;
    f.collection.add(f.make("h", ItemKind::Hidden));
    f.collection.add(f.make("n", ItemKind::NoPresenter));
    ItemCollectionPresenter presenter(f.factory);
    std::vector<bool> emptySignals;
    presenter.signalIsEmptyChanged.connect([&](bool isEmpty) { emptySignals.push_back(isEmpty); });
    presenter.setCollection(&f.collection);
    EXPECT_TRUE(presenter.isEmpty());
    EXPECT_TRUE(emptySignals.empty());
    ASSERT_EQ(presenter.getChildren().size(), 2u);
    EXPECT_NE(dynamic_cast<Zem::EmptyViewPresenter*>(presenter.getChildren()[0].get()), nullptr);
    EXPECT_EQ(presenter.getChildren()[1], nullptr);
}

TEST(NotifyCollectionPresenterTest, IndexOutsideTheChildrenThrowsOutOfRange)
{
    CollectionFixture f;
    f.collection.add(f.make("a"));
    ItemCollectionPresenter presenter(f.factory);
    presenter.setCollection(&f.collection);
    presenter.getView();
    using Action = Zem::NotifyCollectionChangedAction;
    struct Row {
        const char* text;
        Action action;
        std::uint64_t index;
        std::uint64_t oldIndex;
    };
    const Row rows[] = {
        {"removal past the end", Action::Removed, 1, 0},
        {"move from past the end", Action::Moved, 0, 3},
        {"move to past the end", Action::Moved, 5, 0},
        {"insertion past the end", Action::Added, 2, 0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        Zem::NotifyCollectionChangedSignalArgs<Item*> args{row.action, f.collection.at(0), row.index, row.oldIndex};
        EXPECT_THROW(f.collection.signalCollectionChanged.emit(args), std::out_of_range);
        EXPECT_EQ(describeChildren(presenter), "a");
        EXPECT_TRUE(viewMatchesChildren(presenter));
    }
}

} // namespace
