#pragma once

#include "presentation/frame/PresenterBase.h"
#include "presentation/views/IResultMultiGraphUnitView.h"

namespace ZemTree {

class ResultMultiGraphUnit;
class ResultMultiGraphStatePresenter;

// A graph result unit in the value column: the verdicts of its current output, replaced on the GUI thread after
// new outputs from the test thread, coalesced.
class ResultMultiGraphUnitPresenter : public Zem::PresenterBase<IResultMultiGraphUnitView> {
public:
    // `unit` must outlive the presenter.
    explicit ResultMultiGraphUnitPresenter(ResultMultiGraphUnit* unit);
    ~ResultMultiGraphUnitPresenter() override;

    // Null before the view is made.
    ResultMultiGraphStatePresenter* getStatePresenter();

protected:
    std::unique_ptr<IResultMultiGraphUnitView> _createDefaultView() override;
    void _onViewInited() override;

private:
    class Impl;
    std::unique_ptr<Impl> _impl;
};

} // namespace ZemTree
