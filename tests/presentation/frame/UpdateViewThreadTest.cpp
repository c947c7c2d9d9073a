#include "core/common/ConvertionHelper.h"
#include "presentation/frame/PresenterBase.h"
#include "presentation/frame/UpdateView.h"
#include "presentation/frame/UpdateViewGuard.h"
#include "presentation/support/CollectionFixtures.h"
#include "presentation/support/MainLoopPump.h"
#include "values/Value.h"
#include "values/ValueSource.h"

#include <atomic>
#include <chrono>
#include <deque>
#include <future>
#include <gtest/gtest.h>
#include <mutex>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

using namespace PresentationTest;

namespace {

// Shows a value as text the way value presenters do: the slot may run on the worker and posts a coalesced update
// that reads the value when it runs.
class ValueTextPresenter : public Zem::PresenterBase<FakeTextView> {
public:
    explicit ValueTextPresenter(ZemTree::Value<double>& value) : _value(value) {}
    ~ValueTextPresenter() override { _connection.disconnect(); }

    std::atomic<int> updates{0};

protected:
    std::unique_ptr<FakeTextView> _createDefaultView() override { return std::make_unique<FakeTextView>(); }
    void _onViewInited() override
    {
        _show();
        _connection = _value.signalValueOutChanged.connect([this] { _modelValueOutChanged(); });
    }

private:
    void _modelValueOutChanged()
    {
        _guard.safeBeginCoalescedUpdateView([this] {
            ++updates;
            _show();
        });
    }
    void _show() { _view->setText(Zem::convertToString<double, true>(_value.getValueOut().value)); }

    ZemTree::Value<double>& _value;
    sigc::connection _connection;
    Zem::UpdateViewGuard _guard;
};

bool isReady(std::future<void>& done)
{
    return done.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
}

TEST(UpdateViewThreadTest, WorkerSettingValueNeverBlocksAndViewEndsOnTheLastValue)
{
    constexpr int changes = 10000;
    ZemTree::ValueSource<double> source;
    ZemTree::Value<double> value(nullptr, &source);
    ValueTextPresenter presenter(value);
    presenter.getView();
    auto* const view = dynamic_cast<FakeTextView*>(presenter.getView());
    ASSERT_NE(view, nullptr);

    // While the GUI thread pumps.
    std::future<void> done = std::async(std::launch::async, [&] {
        for (int i = 1; i <= changes; ++i)
            value.setData(i);
    });
    ASSERT_TRUE(pumpUntil([&] { return isReady(done); }));
    done.get();
    EXPECT_EQ(view->text, "10000");
    EXPECT_GE(presenter.updates.load(), 1);
    EXPECT_LT(presenter.updates.load(), changes / 2) << "updates did not coalesce";

    // While the GUI thread does nothing: the worker still ends, and the burst is one update.
    const int updatesBefore = presenter.updates.load();
    std::future<void> second = std::async(std::launch::async, [&] {
        for (int i = 1; i <= changes; ++i)
            value.setData(-i);
    });
    ASSERT_EQ(second.wait_for(std::chrono::seconds(60)), std::future_status::ready) << "the worker blocked";
    second.get();
    ASSERT_TRUE(pumpUntilIdle());
    EXPECT_EQ(presenter.updates.load() - updatesBefore, 1);
    EXPECT_EQ(view->text, "-10000");
}

TEST(UpdateViewThreadTest, WorkerChangingShownCollectionKeepsChildrenAndViewAgreed)
{
    std::deque<Item> items;
    for (int i = 0; i < 40; ++i)
        items.push_back(Item{"i" + std::to_string(i), i % 7 == 3 ? ItemKind::Hidden : ItemKind::Visible});
    Zem::NotifyCollection<Item*> collection;
    ItemFactory factory;
    ItemCollectionPresenter presenter(factory);
    presenter.setCollection(&collection);
    presenter.getView();

    std::atomic<int> mismatches{0};
    std::atomic<int> steps{0};
    std::future<void> done = std::async(std::launch::async, [&] {
        // A fixed walk: grow to all items with inserts at changing places, then shrink from the middle.
        for (std::size_t i = 0; i < items.size(); ++i) {
            collection.insert((i * 5) % (collection.size() + 1), &items[i]);
            Zem::waitUpdateView([&] { mismatches += viewMatchesChildren(presenter) ? 0 : 1; });
            ++steps;
        }
        while (!collection.empty()) {
            collection.remove(collection.at(collection.size() / 2));
            Zem::waitUpdateView([&] { mismatches += viewMatchesChildren(presenter) ? 0 : 1; });
            ++steps;
        }
    });
    ASSERT_TRUE(pumpUntil([&] { return isReady(done); }));
    done.get();
    EXPECT_EQ(steps.load(), 80);
    EXPECT_EQ(mismatches.load(), 0);
    EXPECT_TRUE(presenter.getChildren().empty());
    EXPECT_EQ(presenter.getFakeView()->deadViewCalls, 0);
}

TEST(UpdateViewThreadTest, FunctionsRunOnTheGuiThreadInTheOrderPosted)
{
    std::vector<int> order;
    std::vector<bool> onGuiThread;
    const auto record = [&](int n) {
        return [&, n] {
            order.push_back(n);
            onGuiThread.push_back(Zem::isUpdateViewThread());
        };
    };
    std::future<void> done = std::async(std::launch::async, [&] {
        Zem::beginUpdateView(record(1));
        Zem::beginUpdateView(record(2));
        Zem::waitUpdateView(record(3));
        Zem::beginUpdateView(record(4));
        Zem::waitUpdateView(record(5));
    });
    ASSERT_TRUE(pumpUntil([&] { return isReady(done); }));
    done.get();
    EXPECT_EQ(order, (std::vector<int>{1, 2, 3, 4, 5}));
    EXPECT_EQ(onGuiThread, std::vector<bool>(5, true));
}

TEST(UpdateViewThreadTest, WaitOnTheGuiThreadRunsAtOnceAheadOfTheQueue)
{
    std::vector<int> order;
    Zem::beginUpdateView([&] { order.push_back(1); });
    Zem::waitUpdateView([&] { order.push_back(2); });
    EXPECT_EQ(order, std::vector<int>{2});
    ASSERT_TRUE(pumpUntilIdle());
    EXPECT_EQ(order, (std::vector<int>{2, 1}));
}

TEST(UpdateViewThreadTest, ExceptionOfTheFunctionReachesTheWaitingThread)
{
    std::future<std::string> caught = std::async(std::launch::async, [] {
        try {
            Zem::waitUpdateView([] { throw std::runtime_error("view refused"); });
        }
        catch (const std::runtime_error& error) {
            return std::string(error.what());
        }
        return std::string("nothing thrown");
    });
    ASSERT_TRUE(pumpUntil([&] { return caught.wait_for(std::chrono::seconds(0)) == std::future_status::ready; }));
    EXPECT_EQ(caught.get(), "view refused");

    bool isRun = false;
    std::future<void> after = std::async(std::launch::async, [&] { Zem::waitUpdateView([&] { isRun = true; }); });
    ASSERT_TRUE(pumpUntil([&] { return isReady(after); }));
    EXPECT_TRUE(isRun) << "the queue works on after an exception";
}

TEST(UpdateViewThreadTest, ShutdownReleasesABlockedWorkerAndDropsTheQueue)
{
    std::atomic<bool> isRun{false};
    Zem::beginUpdateView([&] { isRun = true; });
    std::future<void> worker = std::async(std::launch::async, [&] { Zem::waitUpdateView([&] { isRun = true; }); });
    // The worker is queued once the count reaches two; nothing pumps.
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (Zem::getPendingUpdateViewCount() < 2 && std::chrono::steady_clock::now() < deadline)
        std::this_thread::yield();
    ASSERT_EQ(Zem::getPendingUpdateViewCount(), 2u);
    EXPECT_FALSE(isReady(worker));

    Zem::shutdownUpdateView();
    EXPECT_EQ(worker.wait_for(std::chrono::seconds(10)), std::future_status::ready) << "the worker still waits";
    Zem::beginUpdateView([&] { isRun = true; });
    std::async(std::launch::async, [&] { Zem::waitUpdateView([&] { isRun = true; }); }).get();
    Zem::initUpdateView();
    ASSERT_TRUE(pumpUntilIdle());
    EXPECT_FALSE(isRun) << "a dropped or late function ran";
}

} // namespace
