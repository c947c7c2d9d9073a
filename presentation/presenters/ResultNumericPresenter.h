#pragma once

#include "presentation/frame/PresenterBase.h"
#include "presentation/views/IResultNumericView.h"

namespace ZemTree {

class ResultNumeric;

// One numeric result as setting, measurement, deviation and state. Results are immutable, so everything is read
// at construction and nothing is listened to; a new result gets a new presenter.
class ResultNumericPresenter : public Zem::PresenterBase<IResultNumericView> {
public:
    // `result` may be null, read here only.
    explicit ResultNumericPresenter(const ResultNumeric* result);
    ~ResultNumericPresenter() override;

protected:
    std::unique_ptr<IResultNumericView> _createDefaultView() override;
    void _onViewInited() override;

private:
    class Impl;
    std::unique_ptr<Impl> _impl;
};

} // namespace ZemTree
