#include "LanguageGuard.h"
#include "core/tree/Node.h"
#include "presentation/presenters/ResultMultiGraphUnitControlPresenter.h"
#include "presentation/support/MainLoopPump.h"
#include "presentation/views/ResultMultiGraphUnitControlView.h"
#include "results/ResultMultiGraphUnit.h"
#include "results/graph/ResultMultiGraph.h"

#include <gtkmm/box.h>
#include <gtkmm/window.h>

#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <string>
#include <vector>

using namespace PresentationTest;

namespace {

std::shared_ptr<ZemTree::ResultMultiGraph> oneCurve()
{
    return std::make_shared<ZemTree::ResultMultiGraph>(
        std::map<std::string, std::vector<Zem::Point>>{{"phase A", {{1.0, 1.0}, {2.0, 1.5}}}}, nullptr);
}

std::unique_ptr<ZemTree::ResultMultiGraphUnit> makeUnit(const std::string& id)
{
    return std::make_unique<ZemTree::ResultMultiGraphUnit>(id, ZemTree::LocalString(id), ZemTree::LocalString::Empty(),
                                                           oneCurve());
}

// Switches that the test flips as a user would, with or without Ctrl.
class FakeControlView : public ZemTree::IResultMultiGraphUnitControlView {
public:
    void setIsControlVisible(bool isVisible) override { isControlVisible = isVisible; }
    void setIsGraphVisible(bool isVisible) override { graph = isVisible; }
    bool getIsGraphVisible() const override { return graph; }
    void setIsTableVisible(bool isVisible) override { table = isVisible; }
    bool getIsTableVisible() const override { return table; }

    void clickGraph(bool withCtrl)
    {
        graph = !graph;
        signalIsGraphVisibleChanged.emit(withCtrl);
    }
    void clickTable(bool withCtrl)
    {
        table = !table;
        signalIsTableVisibleChanged.emit(withCtrl);
    }

    bool isControlVisible = false;
    bool graph = false;
    bool table = false;
};

class FakeControlPresenter : public ZemTree::ResultMultiGraphUnitControlPresenter {
public:
    using ZemTree::ResultMultiGraphUnitControlPresenter::ResultMultiGraphUnitControlPresenter;
    FakeControlView* fake = nullptr;

protected:
    std::unique_ptr<ZemTree::IResultMultiGraphUnitControlView> _createDefaultView() override
    {
        auto view = std::make_unique<FakeControlView>();
        fake = view.get();
        return view;
    }
};

// Two tests under one project: the clicked unit and a neighbour in the first, one unit in the second.
struct Project {
    Project()
    {
        ZemTree::Node* const first = root.add(std::make_unique<ZemTree::Node>("Test1"));
        ZemTree::Node* const second = root.add(std::make_unique<ZemTree::Node>("Test2"));
        clicked = first->add(makeUnit("A1"));
        units = {clicked, first->add(makeUnit("A2")), second->add(makeUnit("B1"))};
    }

    ZemTree::Node root{"Project"};
    ZemTree::ResultMultiGraphUnit* clicked = nullptr;
    std::vector<ZemTree::ResultMultiGraphUnit*> units;
};

TEST(ResultGraphControlTest, CtrlClickReachesEveryGraphUnitAndAPlainClickOnlyItsOwn)
{
    ZemTreeTest::LanguageGuard language(0);
    struct Row {
        const char* name;
        bool isTable;
        bool withCtrl;
        std::vector<bool> expectedChanged;
    };
    const Row rows[] = {
        {"graph, plain", false, false, {true, false, false}},
        {"graph, with Ctrl", false, true, {true, true, true}},
        {"table, plain", true, false, {true, false, false}},
        {"table, with Ctrl", true, true, {true, true, true}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        Project project;
        FakeControlPresenter presenter(project.clicked);
        presenter.getView();
        ASSERT_NE(presenter.fake, nullptr);
        EXPECT_TRUE(presenter.fake->isControlVisible);
        // The other units show real buttons: a switch set by the model must not come back as a request.
        std::vector<std::unique_ptr<ZemTree::ResultMultiGraphUnitControlPresenter>> others;
        int requests = 0;
        for (std::size_t i = 1; i < project.units.size(); ++i) {
            others.push_back(std::make_unique<ZemTree::ResultMultiGraphUnitControlPresenter>(project.units[i]));
            auto* const view = dynamic_cast<ZemTree::IResultMultiGraphUnitControlView*>(others.back()->getView());
            view->getSignalIsGraphVisibleChanged().connect([&requests](bool) { ++requests; });
            view->getSignalIsTableVisibleChanged().connect([&requests](bool) { ++requests; });
        }
        std::vector<int> changes(project.units.size(), 0);
        for (std::size_t i = 0; i < project.units.size(); ++i) {
            auto& visual = project.units[i]->getVisual();
            (row.isTable ? visual.signalIsTableVisibleChanged : visual.signalIsGraphVisibleChanged)
                .connect([&changes, i] { ++changes[i]; });
        }

        if (row.isTable)
            presenter.fake->clickTable(row.withCtrl);
        else
            presenter.fake->clickGraph(row.withCtrl);

        EXPECT_EQ(requests, 0) << "a button set by the model raised a request";
        for (std::size_t i = 0; i < project.units.size(); ++i) {
            SCOPED_TRACE(project.units[i]->getId());
            EXPECT_EQ(changes[i], row.expectedChanged[i] ? 1 : 0);
            const auto& visual = project.units[i]->getVisual();
            EXPECT_EQ(row.isTable ? visual.getIsTableVisible() : visual.getIsGraphVisible(), !row.expectedChanged[i]);
            if (i > 0) {
                auto* const view = dynamic_cast<ZemTree::ResultMultiGraphUnitControlView*>(others[i - 1]->getView());
                EXPECT_EQ(row.isTable ? view->getIsTableVisible() : view->getIsGraphVisible(), !row.expectedChanged[i]);
            }
        }
    }
}

TEST(ResultGraphControlTest, EyesFromTheFirstDisplayAndNoButtonsWithoutData)
{
    ZemTreeTest::LanguageGuard language(0);
    const auto eyeOf = [](Gtk::ToggleButton& button) {
        auto* const content = dynamic_cast<Gtk::Box*>(button.get_child());
        const auto children = content->get_children();
        const auto context = children.back()->get_style_context();
        return std::string(context->has_class("EyeImage") ? "open" : "")
               + (context->has_class("EyeDisabledImage") ? "closed" : "") + "/" + std::to_string(children.size());
    };
    Project project;
    project.clicked->getVisual().setIsTableVisible(false);
    ZemTree::ResultMultiGraphUnitControlPresenter presenter(project.clicked);
    auto& view = *dynamic_cast<ZemTree::ResultMultiGraphUnitControlView*>(presenter.getView());
    EXPECT_EQ(eyeOf(view.getGraphButton()), "open/2");
    EXPECT_EQ(eyeOf(view.getTableButton()), "closed/2");
    // A user's click moves the eye and the model.
    view.getGraphButton().clicked();
    EXPECT_EQ(eyeOf(view.getGraphButton()), "closed/2");
    EXPECT_FALSE(project.clicked->getVisual().getIsGraphVisible());
    // The model moves it back.
    project.clicked->getVisual().setIsGraphVisible(true);
    EXPECT_EQ(eyeOf(view.getGraphButton()), "open/2");

    // No data, no buttons, also through a parent's show_all; data brings them.
    auto* const empty = project.root.add(std::make_unique<ZemTree::ResultMultiGraphUnit>(
        "Empty", ZemTree::LocalString("Empty"), ZemTree::LocalString::Empty(), nullptr));
    ZemTree::ResultMultiGraphUnitControlPresenter emptyPresenter(empty);
    auto& emptyView = *dynamic_cast<ZemTree::ResultMultiGraphUnitControlView*>(emptyPresenter.getView());
    Gtk::Window window;
    Gtk::Box box(Gtk::ORIENTATION_VERTICAL);
    box.pack_start(emptyView);
    window.add(box);
    window.show_all();
    EXPECT_FALSE(emptyView.get_visible());
    empty->setData(oneCurve());
    ASSERT_TRUE(pumpUntilIdle());
    EXPECT_TRUE(emptyView.get_visible());
    box.remove(emptyView);
}

} // namespace
