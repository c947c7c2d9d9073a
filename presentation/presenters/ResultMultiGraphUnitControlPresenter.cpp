#include "presentation/presenters/ResultMultiGraphUnitControlPresenter.h"

#include "core/common/ScopedConnection.h"
#include "core/tree/NodeTreeTraversal.h"
#include "presentation/frame/UpdateViewGuard.h"
#include "presentation/views/ResultMultiGraphUnitControlView.h"
#include "results/ResultMultiGraphUnit.h"
#include "results/graph/ResultMultiGraph.h"

namespace ZemTree {

class ResultMultiGraphUnitControlPresenter::Impl {
public:
    explicit Impl(ResultMultiGraphUnit* unit_) : unit(unit_) {}

    // GUI thread.
    void _updateState()
    {
        const auto result = unit->getValueOut().value;
        view->setIsControlVisible(result && !result->isEmpty());
        view->setIsGraphVisible(unit->getVisual().getIsGraphVisible());
        view->setIsTableVisible(unit->getVisual().getIsTableVisible());
    }

    // May run on the test thread: only posts.
    void _onValueOutChanged()
    {
        guard.safeBeginCoalescedUpdateView([this] { _updateState(); });
    }

    // The units the user's click reaches: this one, or with Ctrl every graph unit of the tree.
    template <class Set> void _applyToUnits(bool applyToAll, Set set)
    {
        Node* const start = applyToAll ? unit->getRoot() : unit;
        for (Node* node : NodeTreeTraversal(start, false)) {
            if (auto* const graphUnit = dynamic_cast<ResultMultiGraphUnit*>(node))
                set(graphUnit->getVisual());
        }
    }

    void _onViewIsGraphVisibleChanged(bool applyToAll)
    {
        const bool isVisible = view->getIsGraphVisible();
        _applyToUnits(applyToAll,
                      [isVisible](ResultMultiGraphUnitVisual& visual) { visual.setIsGraphVisible(isVisible); });
    }

    void _onViewIsTableVisibleChanged(bool applyToAll)
    {
        const bool isVisible = view->getIsTableVisible();
        _applyToUnits(applyToAll,
                      [isVisible](ResultMultiGraphUnitVisual& visual) { visual.setIsTableVisible(isVisible); });
    }

    ResultMultiGraphUnit* unit;
    IResultMultiGraphUnitControlView* view = nullptr;
    Zem::UpdateViewGuard guard;
    // Last members: no slot can run into a half-destroyed presenter.
    Zem::ScopedConnection valueOutConnection;
    Zem::ScopedConnection graphVisibleConnection;
    Zem::ScopedConnection tableVisibleConnection;
};

ResultMultiGraphUnitControlPresenter::ResultMultiGraphUnitControlPresenter(ResultMultiGraphUnit* unit)
    : _impl(std::make_unique<Impl>(unit))
{
}

ResultMultiGraphUnitControlPresenter::~ResultMultiGraphUnitControlPresenter() = default;

std::unique_ptr<IResultMultiGraphUnitControlView> ResultMultiGraphUnitControlPresenter::_createDefaultView()
{
    return std::make_unique<ResultMultiGraphUnitControlView>();
}

void ResultMultiGraphUnitControlPresenter::_onViewInited()
{
    Impl* const impl = _impl.get();
    impl->view = _view.get();
    impl->_updateState();
    impl->valueOutConnection = impl->unit->signalValueOutChanged.connect([impl] { impl->_onValueOutChanged(); });
    // The visual changes on the GUI thread, from the buttons of this or another unit.
    impl->graphVisibleConnection =
        impl->unit->getVisual().signalIsGraphVisibleChanged.connect([impl] { impl->_updateState(); });
    impl->tableVisibleConnection =
        impl->unit->getVisual().signalIsTableVisibleChanged.connect([impl] { impl->_updateState(); });
    // The view's signals die with the view, which the presenter outlives.
    impl->view->getSignalIsGraphVisibleChanged().connect(
        [impl](bool applyToAll) { impl->_onViewIsGraphVisibleChanged(applyToAll); });
    impl->view->getSignalIsTableVisibleChanged().connect(
        [impl](bool applyToAll) { impl->_onViewIsTableVisibleChanged(applyToAll); });
}

} // namespace ZemTree
