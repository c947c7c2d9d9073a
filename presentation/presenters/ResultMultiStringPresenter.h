#pragma once

#include "presentation/frame/PresenterBase.h"
#include "presentation/views/IResultMultiStringView.h"

namespace ZemTree {

class ResultMultiString;

// The items of a multi string result, one row each. A result without items still fills one row, so that an
// untested unit keeps its place in the columns.
class ResultMultiStringPresenter : public Zem::PresenterBase<IResultMultiStringView> {
public:
    // `result` may be null; it is read here only.
    explicit ResultMultiStringPresenter(const ResultMultiString* result);
    ~ResultMultiStringPresenter() override;

    // Replaces the shown result and rebuilds the rows. GUI thread.
    void setResult(const ResultMultiString* result);

    // The item presenters in row order; valid until the next setResult.
    std::vector<Zem::IPresenter*> getItems() const;

protected:
    std::unique_ptr<IResultMultiStringView> _createDefaultView() override;
    void _onViewInited() override;

private:
    class Impl;
    std::unique_ptr<Impl> _impl;
};

} // namespace ZemTree
