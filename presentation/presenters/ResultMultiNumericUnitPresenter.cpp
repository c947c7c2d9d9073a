#include "presentation/presenters/ResultMultiNumericUnitPresenter.h"

#include "core/common/ScopedConnection.h"
#include "core/tree/Measure.h"
#include "core/tree/MeasureObject.h"
#include "presentation/frame/UpdateViewGuard.h"
#include "presentation/presenters/ResultMultiNumericPresenter.h"
#include "presentation/views/ResultMultiNumericUnitView.h"
#include "results/ResultMultiNumeric.h"
#include "results/ResultMultiNumericUnit.h"

#include <memory>

namespace ZemTree {

class ResultMultiNumericUnitPresenter::Impl {
public:
    explicit Impl(ResultMultiNumericUnit* unit_) : unit(unit_), shown(unit->getValueOut().value), result(shown.get()) {}

    // May run on the test thread: only posts. The posted rebuild reads the newest output when it runs.
    void _onValueOutChanged()
    {
        guard.safeBeginCoalescedUpdateView([this] {
            // The items copy what they show, but the output is kept until the next one replaces it.
            shown = unit->getValueOut().value;
            result.setResult(shown.get());
        });
    }

    void _updateViewMeasure(IResultMultiNumericUnitView& view)
    {
        const Measure* const measure = unit->getMeasureData()->getMeasureValue();
        view.setMeasure(measure ? measure->getDescription() : std::string());
    }

    ResultMultiNumericUnit* unit;
    std::shared_ptr<ResultMultiNumeric> shown;
    ResultMultiNumericPresenter result;
    // Queued rebuilds do nothing once the guard is gone.
    Zem::UpdateViewGuard guard;
    // Last members: no slot can run into a half-destroyed presenter.
    Zem::ScopedConnection valueOutConnection;
    Zem::ScopedConnection measureConnection;
};

ResultMultiNumericUnitPresenter::ResultMultiNumericUnitPresenter(ResultMultiNumericUnit* unit)
    : _impl(std::make_unique<Impl>(unit))
{
}

ResultMultiNumericUnitPresenter::~ResultMultiNumericUnitPresenter() = default;

ResultMultiNumericPresenter& ResultMultiNumericUnitPresenter::getResultPresenter()
{
    return _impl->result;
}

std::unique_ptr<IResultMultiNumericUnitView> ResultMultiNumericUnitPresenter::_createDefaultView()
{
    return std::make_unique<ResultMultiNumericUnitView>();
}

void ResultMultiNumericUnitPresenter::_onViewInited()
{
    _view->fill(_impl->result.getView());
    Impl* const impl = _impl.get();
    _impl->valueOutConnection = _impl->unit->signalValueOutChanged.connect([impl] { impl->_onValueOutChanged(); });
    IResultMultiNumericUnitView* const view = _view.get();
    _impl->_updateViewMeasure(*view);
    _impl->measureConnection = _impl->unit->getMeasureData()->getSignalMeasureChanged().connect(
        [impl, view] { impl->_updateViewMeasure(*view); });
}

} // namespace ZemTree
