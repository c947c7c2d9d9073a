#pragma once

#include "presentation/frame/PresenterBase.h"
#include "presentation/views/IResultMultiStringItemView.h"
#include "results/ResultString.h"

#include <string>
#include <utility>

namespace ZemTree {

// One item of a multi string result: its key and its result row. Holds its own copy of the item.
class ResultMultiStringItemPresenter : public Zem::PresenterBase<IResultMultiStringItemView> {
public:
    explicit ResultMultiStringItemPresenter(const std::pair<std::string, ResultString>& item);
    ~ResultMultiStringItemPresenter() override;

protected:
    std::unique_ptr<IResultMultiStringItemView> _createDefaultView() override;
    void _onViewInited() override;

private:
    class Impl;
    std::unique_ptr<Impl> _impl;
};

} // namespace ZemTree
