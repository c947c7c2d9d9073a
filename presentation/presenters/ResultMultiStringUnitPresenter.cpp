#include "presentation/presenters/ResultMultiStringUnitPresenter.h"

#include "core/common/ScopedConnection.h"
#include "presentation/frame/UpdateViewGuard.h"
#include "presentation/presenters/ResultMultiStringPresenter.h"
#include "presentation/views/ResultMultiStringUnitView.h"
#include "results/ResultMultiString.h"
#include "results/ResultMultiStringUnit.h"

#include <memory>

namespace ZemTree {

class ResultMultiStringUnitPresenter::Impl {
public:
    explicit Impl(ResultMultiStringUnit* unit_) : unit(unit_), shown(unit->getValueOut().value), result(shown.get()) {}

    // May run on the test thread: only posts. The posted rebuild reads the newest output when it runs.
    void _onValueOutChanged()
    {
        guard.safeBeginCoalescedUpdateView([this] {
            // The items copy what they show, but the output is kept until the next one replaces it.
            shown = unit->getValueOut().value;
            result.setResult(shown.get());
        });
    }

    ResultMultiStringUnit* unit;
    std::shared_ptr<ResultMultiString> shown;
    ResultMultiStringPresenter result;
    // Queued rebuilds do nothing once the guard is gone.
    Zem::UpdateViewGuard guard;
    // Last members: no slot can run into a half-destroyed presenter.
    Zem::ScopedConnection valueOutConnection;
};

ResultMultiStringUnitPresenter::ResultMultiStringUnitPresenter(ResultMultiStringUnit* unit)
    : _impl(std::make_unique<Impl>(unit))
{
}

ResultMultiStringUnitPresenter::~ResultMultiStringUnitPresenter() = default;

ResultMultiStringPresenter& ResultMultiStringUnitPresenter::getResultPresenter()
{
    return _impl->result;
}

std::unique_ptr<IResultMultiStringUnitView> ResultMultiStringUnitPresenter::_createDefaultView()
{
    return std::make_unique<ResultMultiStringUnitView>();
}

void ResultMultiStringUnitPresenter::_onViewInited()
{
    _view->fill(_impl->result.getView());
    Impl* const impl = _impl.get();
    _impl->valueOutConnection = _impl->unit->signalValueOutChanged.connect([impl] { impl->_onValueOutChanged(); });
}

} // namespace ZemTree
