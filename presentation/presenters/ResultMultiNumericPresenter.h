#pragma once

#include "presentation/frame/PresenterBase.h"
#include "presentation/views/IResultMultiNumericView.h"

namespace ZemTree {

class ResultMultiNumeric;

// The items of a multi numeric result, one row each. A result without items still fills one row, so that an
// untested unit keeps its place in the columns.
class ResultMultiNumericPresenter : public Zem::PresenterBase<IResultMultiNumericView> {
public:
    // `result` may be null; it is read here only.
    explicit ResultMultiNumericPresenter(const ResultMultiNumeric* result);
    ~ResultMultiNumericPresenter() override;

    // Replaces the shown result and rebuilds the rows. GUI thread.
    void setResult(const ResultMultiNumeric* result);

    // The item presenters in row order; valid until the next setResult.
    std::vector<Zem::IPresenter*> getItems() const;

protected:
    std::unique_ptr<IResultMultiNumericView> _createDefaultView() override;
    void _onViewInited() override;

private:
    class Impl;
    std::unique_ptr<Impl> _impl;
};

} // namespace ZemTree
