#include "presentation/presenters/ResultMultiGraphUnitPresenter.h"

#include "core/common/ScopedConnection.h"
#include "presentation/frame/UpdateViewGuard.h"
#include "presentation/presenters/ResultMultiGraphStatePresenter.h"
#include "presentation/views/ResultMultiGraphUnitView.h"
#include "results/ResultMultiGraphUnit.h"
#include "results/graph/ResultMultiGraph.h"

#include <memory>

namespace ZemTree {

class ResultMultiGraphUnitPresenter::Impl {
public:
    explicit Impl(ResultMultiGraphUnit* unit_) : unit(unit_) {}

    // GUI thread. The new rows go in before the old ones are deleted, so the area is never empty.
    void _setResult(IResultMultiGraphUnitView& view)
    {
        auto next = unit->getValueOut().value;
        auto presenter = std::make_unique<ResultMultiGraphStatePresenter>(next.get());
        view.setStateArea(presenter->getView());
        state = std::move(presenter);
        shown = std::move(next);
    }

    // May run on the test thread: only posts. The posted step reads the newest output when it runs.
    void _onValueOutChanged(IResultMultiGraphUnitView* view)
    {
        guard.safeBeginCoalescedUpdateView([this, view] { _setResult(*view); });
    }

    ResultMultiGraphUnit* unit;
    // The output the rows were made from, kept while they exist.
    std::shared_ptr<ResultMultiGraph> shown;
    std::unique_ptr<ResultMultiGraphStatePresenter> state;
    // Queued steps do nothing once the guard is gone.
    Zem::UpdateViewGuard guard;
    // Last member: no slot can run into a half-destroyed presenter.
    Zem::ScopedConnection valueOutConnection;
};

ResultMultiGraphUnitPresenter::ResultMultiGraphUnitPresenter(ResultMultiGraphUnit* unit)
    : _impl(std::make_unique<Impl>(unit))
{
}

ResultMultiGraphUnitPresenter::~ResultMultiGraphUnitPresenter() = default;

ResultMultiGraphStatePresenter* ResultMultiGraphUnitPresenter::getStatePresenter()
{
    return _impl->state.get();
}

std::unique_ptr<IResultMultiGraphUnitView> ResultMultiGraphUnitPresenter::_createDefaultView()
{
    return std::make_unique<ResultMultiGraphUnitView>();
}

void ResultMultiGraphUnitPresenter::_onViewInited()
{
    IResultMultiGraphUnitView* const view = _view.get();
    _impl->_setResult(*view);
    Impl* const impl = _impl.get();
    _impl->valueOutConnection =
        _impl->unit->signalValueOutChanged.connect([impl, view] { impl->_onValueOutChanged(view); });
}

} // namespace ZemTree
