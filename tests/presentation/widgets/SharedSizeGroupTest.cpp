#include "presentation/widgets/SharedSizeGroup.h"

#include "presentation/support/MainLoopPump.h"
#include "presentation/widgets/MakeManaged.h"
#include "presentation/widgets/ResultStateView.h"
#include "presentation/widgets/SharedSizeGroupOwner.h"

#include <gtkmm/box.h>
#include <gtkmm/label.h>
#include <gtkmm/window.h>

#include <algorithm>
#include <chrono>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <vector>

using namespace PresentationTest;

namespace {

// Rows of two cells, each cell an owner holding a label; rows are separate boxes, so only the groups align them.
struct CellWindow {
    CellWindow(const std::string& prefix, const std::vector<std::string>& firstTexts)
    {
        for (const std::string& text : firstTexts) {
            auto* const row = Zem::make_managed<Gtk::Box>(Gtk::ORIENTATION_HORIZONTAL, 0);
            auto* const first = Zem::make_managed<Zem::SharedSizeGroupOwner>(prefix + "First");
            auto* const second = Zem::make_managed<Zem::SharedSizeGroupOwner>(prefix + "Second");
            auto* const label = Zem::make_managed<Gtk::Label>(text);
            first->add(*label);
            second->add(*Zem::make_managed<Gtk::Label>("x"));
            row->pack_start(*first, Gtk::PACK_SHRINK);
            row->pack_start(*second, Gtk::PACK_SHRINK);
            column.pack_start(*row, Gtk::PACK_SHRINK);
            firsts.push_back(first);
            seconds.push_back(second);
            labels.push_back(label);
        }
        window.add(column);
        window.show_all();
    }

    // Distinct allocated widths of the owners; one entry when they line up.
    static std::vector<int> widths(const std::vector<Zem::SharedSizeGroupOwner*>& owners)
    {
        std::vector<int> result;
        for (const auto* owner : owners) {
            const int width = owner->get_allocated_width();
            if (std::find(result.begin(), result.end(), width) == result.end())
                result.push_back(width);
        }
        return result;
    }

    Gtk::Window window;
    Gtk::Box column{Gtk::ORIENTATION_VERTICAL, 0};
    std::vector<Zem::SharedSizeGroupOwner*> firsts;
    std::vector<Zem::SharedSizeGroupOwner*> seconds;
    std::vector<Gtk::Label*> labels;
};

// Layout runs on the frame clock, not at once: pump until the owners agree on a width that `isWanted`, or a limit.
std::vector<int> settle(const std::vector<Zem::SharedSizeGroupOwner*>& owners, const std::function<bool(int)>& isWanted)
{
    pumpUntil(
        [&] {
            const std::vector<int> widths = CellWindow::widths(owners);
            return widths.size() == 1 && isWanted(widths[0]);
        },
        std::chrono::seconds(3));
    return CellWindow::widths(owners);
}

int naturalWidth(Gtk::Label& label)
{
    int minimum = 0;
    int natural = 0;
    label.get_preferred_width(minimum, natural);
    return natural;
}

TEST(SharedSizeGroupTest, CellsOfOneKeyShareTheWidestWidthAcrossRows)
{
    struct Row {
        const char* name;
        std::vector<std::string> texts;
        std::size_t widest;
    };
    const Row rows[] = {
        {"widest first", {"a much longer setting text", "b", "cc"}, 0},
        {"widest last", {"b", "cc", "the widest text comes last"}, 2},
        {"single row", {"alone"}, 0},
    };
    int index = 0;
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        CellWindow cells("sharedTest" + std::to_string(index++), row.texts);
        ASSERT_TRUE(pumpUntilIdle());
        const std::vector<int> firstWidths = CellWindow::widths(cells.firsts);
        ASSERT_EQ(firstWidths.size(), 1u);
        EXPECT_GE(firstWidths[0], naturalWidth(*cells.labels[row.widest]));
        EXPECT_EQ(CellWindow::widths(cells.seconds).size(), 1u);
        // The second column starts at one x in every row.
        for (const auto* second : cells.seconds)
            EXPECT_EQ(second->get_allocation().get_x(), cells.seconds[0]->get_allocation().get_x());
    }
}

TEST(SharedSizeGroupTest, FollowsContentGrowingShrinkingAndOwnersLeaving)
{
    CellWindow cells("sharedFollow", {"short", "mid text", "x"});
    ASSERT_TRUE(pumpUntilIdle());
    const int before = cells.firsts[0]->get_allocated_width();

    cells.labels[2]->set_text("now this row holds by far the widest text of all");
    const std::vector<int> grown = settle(cells.firsts, [&](int width) { return width > before; });
    ASSERT_EQ(grown.size(), 1u);
    EXPECT_GT(grown[0], before);
    EXPECT_GE(grown[0], naturalWidth(*cells.labels[2]));

    cells.labels[2]->set_text("y");
    const std::vector<int> shrunk = settle(cells.firsts, [&](int width) { return width == before; });
    ASSERT_EQ(shrunk.size(), 1u);
    EXPECT_EQ(shrunk[0], before);

    // The widest owner goes: the group narrows to what the rest ask for.
    const std::size_t sizeBefore = Zem::SharedSizeGroup::get("sharedFollowFirst").getSize();
    auto* const widestRow = cells.firsts[1]->get_parent();
    cells.column.remove(*widestRow);
    delete widestRow;
    cells.firsts.erase(cells.firsts.begin() + 1);
    EXPECT_EQ(Zem::SharedSizeGroup::get("sharedFollowFirst").getSize(), sizeBefore - 1);
    const std::vector<int> left = settle(cells.firsts, [&](int width) { return width < before; });
    ASSERT_EQ(left.size(), 1u);
    EXPECT_LT(left[0], before);
    EXPECT_GE(left[0], naturalWidth(*cells.labels[0]));
}

TEST(SharedSizeGroupTest, GroupOutlivesNoOwner)
{
    {
        CellWindow cells("sharedGone", {"one", "two"});
        ASSERT_TRUE(pumpUntilIdle());
        EXPECT_EQ(Zem::SharedSizeGroup::get("sharedGoneFirst").getSize(), 2u);
        cells.labels[0]->set_text("a longer text that re-queues the group");
    }
    // A re-queue scheduled for destroyed owners must not touch them.
    EXPECT_EQ(Zem::SharedSizeGroup::get("sharedGoneFirst").getSize(), 0u);
    EXPECT_TRUE(pumpUntilIdle());
}

TEST(ResultStateViewTest, OneVerdictClassAtATime)
{
    struct Row {
        const char* name;
        Zem::Nullable<bool> state;
        const char* expected;
    };
    const Row rows[] = {
        {"ok", Zem::Nullable<bool>(true), Zem::ResultStateView::okClass},
        {"not ok", Zem::Nullable<bool>(false), Zem::ResultStateView::notOkClass},
        {"not tested", Zem::Nullable<bool>(), Zem::ResultStateView::notTestedClass},
    };
    for (const Row& previous : rows) {
        for (const Row& row : rows) {
            SCOPED_TRACE(std::string(previous.name) + " then " + row.name);
            Zem::ResultStateView view;
            view.setState(previous.state);
            view.setState(row.state);
            const auto context = view.get_style_context();
            for (const char* name : {Zem::ResultStateView::okClass, Zem::ResultStateView::notOkClass,
                                     Zem::ResultStateView::notTestedClass})
                EXPECT_EQ(context->has_class(name), std::string(name) == row.expected) << name;
        }
    }
}

} // namespace
