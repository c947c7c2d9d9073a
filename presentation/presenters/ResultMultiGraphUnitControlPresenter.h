#pragma once

#include "presentation/frame/PresenterBase.h"
#include "presentation/views/IResultMultiGraphUnitControlView.h"

namespace ZemTree {

class ResultMultiGraphUnit;

// The diagram and table switches of a graph unit, bound to the unit's visual state. A switch asked for with Ctrl
// sets every graph unit of the tree.
class ResultMultiGraphUnitControlPresenter : public Zem::PresenterBase<IResultMultiGraphUnitControlView> {
public:
    // `unit` must outlive the presenter.
    explicit ResultMultiGraphUnitControlPresenter(ResultMultiGraphUnit* unit);
    ~ResultMultiGraphUnitControlPresenter() override;

protected:
    std::unique_ptr<IResultMultiGraphUnitControlView> _createDefaultView() override;
    void _onViewInited() override;

private:
    class Impl;
    std::unique_ptr<Impl> _impl;
};

} // namespace ZemTree
