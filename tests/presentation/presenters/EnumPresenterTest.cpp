// The shared list of allowed values and the selectors over it, against fake views.

#include "presentation/presenters/EnumPresenter.h"

#include "presentation/presenters/ExternalEnumLimiterPresenter.h"
#include "presentation/support/FakeViews.h"

#include <cstddef>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

using namespace PresentationTest;

namespace {

// The rows as a store would hold them, and the calls that made them.
class FakeStorageView : public FakeView, public ZemTree::IEnumStorageView {
public:
    void insertValue(const std::string& value, const std::string& text, const std::string& /*icon*/,
                     std::size_t position) override
    {
        const std::size_t index = position >= rows.size() ? rows.size() : position;
        rows.insert(rows.begin() + static_cast<std::ptrdiff_t>(index), value + "=" + text);
    }
    void removeValue(const std::string& value) override
    {
        for (auto row = rows.begin(); row != rows.end(); ++row) {
            if (row->rfind(value + "=", 0) == 0) {
                rows.erase(row);
                return;
            }
        }
    }
    void clearValues() override { rows.clear(); }

    std::vector<std::string> rows;
};

class FakeLimiter : public ZemTree::ExternalEnumLimiterPresenter {
protected:
    std::unique_ptr<ZemTree::IEnumStorageView> _createDefaultView() override
    {
        return std::make_unique<FakeStorageView>();
    }
};

class FakeEnumView : public FakeView, public ZemTree::IEnumView {
public:
    void setStorage(ZemTree::IEnumStorageView* newStorage) override { storage = newStorage; }
    void showValue(const std::string& value, bool isMissing) override
    {
        shown = value;
        missing = isMissing;
        ++showCount;
    }

    ZemTree::IEnumStorageView* storage = nullptr;
    std::string shown;
    bool missing = false;
    int showCount = 0;
};

class FakeEnumPresenter : public ZemTree::EnumPresenter {
public:
    FakeEnumView* view() { return dynamic_cast<FakeEnumView*>(getView()); }

protected:
    std::unique_ptr<ZemTree::IEnumView> _createDefaultView() override { return std::make_unique<FakeEnumView>(); }
};

std::vector<std::string> valuesOf(const ZemTree::ExternalEnumLimiterPresenter& limiter)
{
    std::vector<std::string> values;
    for (const auto& item : limiter.getItems())
        values.push_back(item.value);
    return values;
}

TEST(EnumPresenterTest, LimiterRowsGoWhereTheirPositionSaysInTheListAndInItsView)
{
    const std::size_t last = static_cast<std::size_t>(-1);
    const struct {
        const char* text;
        const char* value;
        std::size_t position;
        std::vector<std::string> expected;
    } rows[] = {
        {"0 prepends", "x", 0, {"x", "a", "b", "c"}},
        {"past the end appends", "y", 99, {"a", "b", "c", "y"}},
        {"-1 appends", "y", last, {"a", "b", "c", "y"}},
        {"any other after the row before it", "y", 2, {"a", "b", "y", "c"}},
        {"a value there already keeps its place", "b", 0, {"a", "b", "c"}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        for (const bool isViewFirst : {false, true}) {
            SCOPED_TRACE(isViewFirst ? "view made first" : "view made last");
            FakeLimiter limiter;
            if (isViewFirst)
                limiter.getView();
            for (const char* value : {"a", "b", "c"})
                limiter.addLimiterValue(value, std::string("text ") + value, last);
            limiter.addLimiterValue(row.value, "new", row.position);
            EXPECT_EQ(row.expected, valuesOf(limiter));
            auto* const view = dynamic_cast<FakeStorageView*>(limiter.getView());
            ASSERT_EQ(row.expected.size(), view->rows.size());
            for (std::size_t i = 0; i < row.expected.size(); ++i)
                EXPECT_EQ(row.expected[i] + "=" + limiter.getDescription(row.expected[i]), view->rows[i]);
        }
    }
}

TEST(EnumPresenterTest, AValueTheListLacksStaysAndIsMarkedUntilTheUserChooses)
{
    auto limiter = std::make_shared<FakeLimiter>();
    limiter->addLimiterValue("In 1", "Input 1", static_cast<std::size_t>(-1));
    limiter->addLimiterValue("In 2", "Input 2", static_cast<std::size_t>(-1));
    FakeEnumPresenter selector;
    int changes = 0;
    selector.signalDataChanged.connect([&changes] { ++changes; });
    selector.setExternalLimiter(limiter);
    selector.setData("In 9");
    FakeEnumView* const view = selector.view();
    EXPECT_EQ(limiter->getView(), view->storage);

    const struct {
        const char* text;
        void (*act)(FakeEnumPresenter&, FakeLimiter&, FakeEnumView&);
        const char* data;
        bool missing;
        int changes;
    } steps[] = {
        {"a stale value is shown as it is", [](FakeEnumPresenter&, FakeLimiter&, FakeEnumView&) {}, "In 9", true, 0},
        {"the list gaining it makes it good",
         [](FakeEnumPresenter&, FakeLimiter& l, FakeEnumView&) { l.addLimiterValue("In 9", "Input 9", 0); }, "In 9",
         false, 0},
        {"the list losing it marks it again",
         [](FakeEnumPresenter&, FakeLimiter& l, FakeEnumView&) { l.removeLimiterValue("In 9"); }, "In 9", true, 0},
        {"the model setting data raises nothing",
         [](FakeEnumPresenter& s, FakeLimiter&, FakeEnumView&) { s.setData("In 1"); }, "In 1", false, 0},
        {"the user choosing raises once",
         [](FakeEnumPresenter&, FakeLimiter&, FakeEnumView& v) { v.signalValueChosen.emit("In 2"); }, "In 2", false, 1},
        {"choosing the same again raises nothing",
         [](FakeEnumPresenter&, FakeLimiter&, FakeEnumView& v) { v.signalValueChosen.emit("In 2"); }, "In 2", false, 1},
        {"without a list nothing is missing",
         [](FakeEnumPresenter& s, FakeLimiter&, FakeEnumView&) {
             s.setExternalLimiter(nullptr);
             s.setData("In 9");
         },
         "In 9", false, 1},
    };
    for (const auto& step : steps) {
        SCOPED_TRACE(step.text);
        step.act(selector, *limiter, *view);
        EXPECT_EQ(step.data, selector.getData());
        EXPECT_EQ(step.data, view->shown);
        EXPECT_EQ(step.missing, view->missing);
        EXPECT_EQ(step.missing, selector.isValueMissing());
        EXPECT_EQ(step.changes, changes);
    }
    EXPECT_EQ(nullptr, view->storage);
}

} // namespace
