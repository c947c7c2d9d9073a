#pragma once

#include "collections/NotifyCollection.h"
#include "presentation/frame/NotifyCollectionPresenter.h"
#include "presentation/frame/PresenterBase.h"
#include "presentation/support/FakeViews.h"

#include <memory>
#include <string>

// Items, their presenters and a collection presenter over fake views.
namespace PresentationTest {

enum class ItemKind { Visible, Hidden, NoPresenter };

struct Item {
    std::string name;
    ItemKind kind = ItemKind::Visible;
};

class ItemPresenter : public Zem::PresenterBase<FakeTextView> {
public:
    explicit ItemPresenter(Item* item) : _item(item) {}
    Item* getItem() const { return _item; }

protected:
    std::unique_ptr<FakeTextView> _createDefaultView() override { return std::make_unique<FakeTextView>(); }
    void _onViewInited() override { _view->setText(_item->name); }

private:
    Item* _item;
};

// Answers null for items that have no presenter, as a factory does for a node it does not handle.
class ItemFactory : public Zem::IPresenterFactory<Item*> {
public:
    std::unique_ptr<Zem::IPresenter> createPresenter(Item* item) override
    {
        ++calls;
        if (item->kind == ItemKind::NoPresenter)
            return nullptr;
        return std::make_unique<ItemPresenter>(item);
    }
    int calls = 0;
};

class ItemCollectionPresenter : public Zem::NotifyCollectionPresenter<Item*> {
public:
    explicit ItemCollectionPresenter(ItemFactory& factory) : Zem::NotifyCollectionPresenter<Item*>(factory) {}

    FakeCollectionView* getFakeView() const { return static_cast<FakeCollectionView*>(_view.get()); }
    bool hasView() const { return _view != nullptr; }

    int addedHooks = 0;
    int removedHooks = 0;

protected:
    std::unique_ptr<Zem::IEditableCollectionView> _createDefaultView() override
    {
        return std::make_unique<FakeCollectionView>();
    }
    bool _isHidden(Item* item) const override { return item->kind == ItemKind::Hidden; }
    void _onChildAdded(Item*& /*item*/) override { ++addedHooks; }
    void _onChildRemoved(Item* const& /*item*/) override { ++removedHooks; }
};

// The names the view shows, in order: "-" for an empty place.
inline std::string describeShown(const FakeCollectionView& view)
{
    std::string text;
    for (Zem::IView* shown : view.shown) {
        if (!text.empty())
            text += ",";
        const auto* const textView = dynamic_cast<const FakeTextView*>(shown);
        text += textView != nullptr ? textView->text : std::string("-");
    }
    return text;
}

// The names of the children, in order: "-" for an empty place, "0" for a null child.
inline std::string describeChildren(const ItemCollectionPresenter& presenter)
{
    std::string text;
    for (const auto& child : presenter.getChildren()) {
        if (!text.empty())
            text += ",";
        if (!child)
            text += "0";
        else if (const auto* const item = dynamic_cast<const ItemPresenter*>(child.get()))
            text += item->getItem()->name;
        else
            text += "-";
    }
    return text;
}

// True when the view shows exactly the views of the non-null children, in their order.
inline bool viewMatchesChildren(ItemCollectionPresenter& presenter)
{
    std::vector<Zem::IView*> expected;
    for (const auto& child : presenter.getChildren()) {
        if (child)
            expected.push_back(child->getView());
    }
    return presenter.getFakeView() != nullptr && presenter.getFakeView()->shown == expected;
}

} // namespace PresentationTest
