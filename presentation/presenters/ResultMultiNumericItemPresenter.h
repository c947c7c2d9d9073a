#pragma once

#include "presentation/frame/PresenterBase.h"
#include "presentation/views/IResultMultiNumericItemView.h"
#include "results/ResultNumeric.h"

#include <string>
#include <utility>

namespace ZemTree {

// One item of a multi numeric result: its key and its result row. Holds its own copy of the item.
class ResultMultiNumericItemPresenter : public Zem::PresenterBase<IResultMultiNumericItemView> {
public:
    explicit ResultMultiNumericItemPresenter(const std::pair<std::string, ResultNumeric>& item);
    ~ResultMultiNumericItemPresenter() override;

protected:
    std::unique_ptr<IResultMultiNumericItemView> _createDefaultView() override;
    void _onViewInited() override;

private:
    class Impl;
    std::unique_ptr<Impl> _impl;
};

} // namespace ZemTree
