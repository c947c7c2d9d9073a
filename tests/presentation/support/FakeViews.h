#pragma once

#include "presentation/frame/IEditableCollectionView.h"
#include "presentation/views/ITextView.h"

#include <algorithm>
#include <set>
#include <string>
#include <vector>

// Views that record what their presenters do to them, for presenter tests without a display.
namespace PresentationTest {

// Addresses of deleted fake views, so that a collection view can tell whether it is handed a view that is gone.
// A new view at a reused address leaves the set.
inline std::set<const Zem::IView*>& deadViews()
{
    static std::set<const Zem::IView*> views;
    return views;
}

class FakeView : public virtual Zem::IView {
public:
    FakeView() { deadViews().erase(this); }
    ~FakeView() override { deadViews().insert(this); }
    FakeView(const FakeView&) = delete;
    FakeView& operator=(const FakeView&) = delete;
};

class FakeTextView : public FakeView, public ZemTree::ITextView {
public:
    void setText(const std::string& newText) override
    {
        text = newText;
        ++setTextCount;
    }

    std::string text;
    int setTextCount = 0;
};

// Keeps the shown views in order and a log of calls; records a call made with a view that is already deleted.
class FakeCollectionView : public FakeView, public Zem::IEditableCollectionView {
public:
    FakeCollectionView() { ++createdCount(); }

    static int& createdCount()
    {
        static int count = 0;
        return count;
    }

    void clear() override
    {
        calls.push_back("clear");
        shown.clear();
    }
    void add(Zem::IView* view) override
    {
        _check(view);
        calls.push_back("add");
        shown.push_back(view);
    }
    void insert(std::size_t index, Zem::IView* view) override
    {
        _check(view);
        calls.push_back("insert " + std::to_string(index));
        shown.insert(shown.begin() + static_cast<std::ptrdiff_t>(std::min(index, shown.size())), view);
    }
    void remove(Zem::IView* view) override
    {
        _check(view);
        calls.push_back("remove");
        shown.erase(std::remove(shown.begin(), shown.end(), view), shown.end());
    }
    void move(std::size_t index, Zem::IView* view) override
    {
        _check(view);
        calls.push_back("move " + std::to_string(index));
        shown.erase(std::remove(shown.begin(), shown.end(), view), shown.end());
        shown.insert(shown.begin() + static_cast<std::ptrdiff_t>(std::min(index, shown.size())), view);
    }

    std::vector<Zem::IView*> shown;
    std::vector<std::string> calls;
    int deadViewCalls = 0;

private:
    void _check(Zem::IView* view)
    {
        if (deadViews().count(view) != 0)
            ++deadViewCalls;
    }
};

} // namespace PresentationTest
