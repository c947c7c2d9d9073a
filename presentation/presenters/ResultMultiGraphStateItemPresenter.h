#pragma once

#include "presentation/frame/PresenterBase.h"
#include "presentation/views/IResultMultiGraphStateItemView.h"
#include "results/graph/ResultGraph.h"

#include <string>
#include <utility>

namespace ZemTree {

// The verdict of one curve of a graph result, under its key. Holds its own copy of the curve.
class ResultMultiGraphStateItemPresenter : public Zem::PresenterBase<IResultMultiGraphStateItemView> {
public:
    explicit ResultMultiGraphStateItemPresenter(const std::pair<std::string, ResultGraph>& item);
    ~ResultMultiGraphStateItemPresenter() override;

protected:
    std::unique_ptr<IResultMultiGraphStateItemView> _createDefaultView() override;
    void _onViewInited() override;

private:
    class Impl;
    std::unique_ptr<Impl> _impl;
};

} // namespace ZemTree
