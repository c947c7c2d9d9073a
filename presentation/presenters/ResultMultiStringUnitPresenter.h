#pragma once

#include "presentation/frame/PresenterBase.h"
#include "presentation/views/IResultMultiStringUnitView.h"

namespace ZemTree {

class ResultMultiStringUnit;
class ResultMultiStringPresenter;

// A multi string result unit: its current result, rebuilt on the GUI thread after each new output, however fast
// the test thread sets them.
class ResultMultiStringUnitPresenter : public Zem::PresenterBase<IResultMultiStringUnitView> {
public:
    // `unit` must outlive the presenter.
    explicit ResultMultiStringUnitPresenter(ResultMultiStringUnit* unit);
    ~ResultMultiStringUnitPresenter() override;

    ResultMultiStringPresenter& getResultPresenter();

protected:
    std::unique_ptr<IResultMultiStringUnitView> _createDefaultView() override;
    void _onViewInited() override;

private:
    class Impl;
    std::unique_ptr<Impl> _impl;
};

} // namespace ZemTree
