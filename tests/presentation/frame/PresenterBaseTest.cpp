#include "presentation/frame/PresenterBase.h"

#include "presentation/frame/UpdateViewGuard.h"
#include "presentation/support/FakeViews.h"
#include "presentation/support/MainLoopPump.h"

#include <gtest/gtest.h>
#include <memory>

using namespace PresentationTest;

namespace {

// Counts what the frame calls; the init hook may ask for the view itself, as a presenter filling its view does.
class CountingPresenter : public Zem::PresenterBase<FakeTextView> {
public:
    explicit CountingPresenter(bool isViewMade = true, bool isReentering = false)
        : _isViewMade(isViewMade), _isReentering(isReentering)
    {
    }

    int createdCount = 0;
    int initedCount = 0;
    Zem::IView* viewSeenInInit = nullptr;

protected:
    std::unique_ptr<FakeTextView> _createDefaultView() override
    {
        ++createdCount;
        return _isViewMade ? std::make_unique<FakeTextView>() : nullptr;
    }
    void _onViewInited() override
    {
        ++initedCount;
        if (_isReentering)
            viewSeenInInit = getView();
    }

private:
    bool _isViewMade;
    bool _isReentering;
};

TEST(PresenterBaseTest, ViewIsMadeAndInitedOnceWhateverTheCalls)
{
    struct Row {
        const char* text;
        bool isViewMade;
        bool isReentering;
        int calls;
        int expectedCreated;
        int expectedInited;
    };
    const Row rows[] = {
        {"two calls make one view and one init", true, false, 2, 1, 1},
        {"an init that asks for the view is not run again", true, true, 3, 1, 1},
        {"no view: each call tries anew and never inits", false, false, 2, 2, 0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        CountingPresenter presenter(row.isViewMade, row.isReentering);
        Zem::IView* first = nullptr;
        for (int i = 0; i < row.calls; ++i) {
            Zem::IView* const view = presenter.getView();
            if (i == 0)
                first = view;
            EXPECT_EQ(view, first) << "call " << i;
        }
        EXPECT_EQ(presenter.createdCount, row.expectedCreated);
        EXPECT_EQ(presenter.initedCount, row.expectedInited);
        EXPECT_EQ(first == nullptr, !row.isViewMade);
        if (row.isReentering) {
            EXPECT_EQ(presenter.viewSeenInInit, first);
        }
    }
}

// A presenter that posts view updates from a model slot.
class PostingPresenter : public Zem::PresenterBase<FakeTextView> {
public:
    explicit PostingPresenter(int* runs) : _runs(runs) {}

    void post()
    {
        _guard.safeBeginUpdateView([this] {
            ++*_runs;
            _view->setText("updated");
        });
    }

protected:
    std::unique_ptr<FakeTextView> _createDefaultView() override { return std::make_unique<FakeTextView>(); }

private:
    int* _runs;
    Zem::UpdateViewGuard _guard;
};

TEST(PresenterBaseTest, UpdateQueuedBeforeDeletionNeverRuns)
{
    int runs = 0;
    auto presenter = std::make_unique<PostingPresenter>(&runs);
    presenter->getView();
    presenter->post();
    presenter->post();
    presenter.reset();
    ASSERT_TRUE(pumpUntilIdle());
    EXPECT_EQ(runs, 0);

    PostingPresenter alive(&runs);
    alive.getView();
    alive.post();
    ASSERT_TRUE(pumpUntilIdle());
    EXPECT_EQ(runs, 1) << "the same road runs for a live presenter";
}

} // namespace
