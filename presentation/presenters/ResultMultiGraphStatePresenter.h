#pragma once

#include "presentation/frame/PresenterBase.h"
#include "presentation/views/IResultMultiGraphStateView.h"

#include <vector>

namespace ZemTree {

class ResultMultiGraph;

// The verdicts of a graph result's curves, one row each. A result without curves still fills one row. A new
// output gets a new presenter.
class ResultMultiGraphStatePresenter : public Zem::PresenterBase<IResultMultiGraphStateView> {
public:
    // `result` may be null; it is read here only.
    explicit ResultMultiGraphStatePresenter(const ResultMultiGraph* result);
    ~ResultMultiGraphStatePresenter() override;

    // The item presenters in row order.
    std::vector<Zem::IPresenter*> getItems() const;

protected:
    std::unique_ptr<IResultMultiGraphStateView> _createDefaultView() override;
    void _onViewInited() override;

private:
    class Impl;
    std::unique_ptr<Impl> _impl;
};

} // namespace ZemTree
