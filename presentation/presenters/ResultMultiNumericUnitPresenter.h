#pragma once

#include "presentation/frame/PresenterBase.h"
#include "presentation/views/IResultMultiNumericUnitView.h"

namespace ZemTree {

class ResultMultiNumericUnit;
class ResultMultiNumericPresenter;

// A multi numeric result unit: its current result and its measure. The result is rebuilt on the GUI thread
// after each new output, however fast the test thread sets them.
class ResultMultiNumericUnitPresenter : public Zem::PresenterBase<IResultMultiNumericUnitView> {
public:
    // `unit` must outlive the presenter.
    explicit ResultMultiNumericUnitPresenter(ResultMultiNumericUnit* unit);
    ~ResultMultiNumericUnitPresenter() override;

    ResultMultiNumericPresenter& getResultPresenter();

protected:
    std::unique_ptr<IResultMultiNumericUnitView> _createDefaultView() override;
    void _onViewInited() override;

private:
    class Impl;
    std::unique_ptr<Impl> _impl;
};

} // namespace ZemTree
