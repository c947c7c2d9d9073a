#pragma once

#include "presentation/frame/PresenterBase.h"
#include "presentation/views/IResultStringView.h"

namespace ZemTree {

class ResultString;

// One string result as setting, measurement and state. Results are immutable, so everything is read
// at construction and nothing is listened to; a new result gets a new presenter.
class ResultStringPresenter : public Zem::PresenterBase<IResultStringView> {
public:
    // `result` may be null, read here only.
    explicit ResultStringPresenter(const ResultString* result);
    ~ResultStringPresenter() override;

protected:
    std::unique_ptr<IResultStringView> _createDefaultView() override;
    void _onViewInited() override;

private:
    class Impl;
    std::unique_ptr<Impl> _impl;
};

} // namespace ZemTree
