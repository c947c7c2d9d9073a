#pragma once

#include "presentation/frame/IPresenter.h"

#include <memory>

namespace Zem {

// The lazy view of a presenter: made on the first getView(), inited once, owned here.
template <class V> class PresenterBase : public virtual IPresenter {
public:
    PresenterBase() = default;
    PresenterBase(const PresenterBase&) = delete;
    PresenterBase& operator=(const PresenterBase&) = delete;

    // The flag is set before the hook, so `_onViewInited` may call getView() again and gets the view.
    IView* getView() override
    {
        if (!_view) {
            _view = _createDefaultView();
            if (!_view)
                return nullptr;
        }
        if (!_isViewInited) {
            _isViewInited = true;
            _onViewInited();
        }
        return _view.get();
    }

    ~PresenterBase() override = default;

protected:
    // The only place where a presenter names a widget class.
    virtual std::unique_ptr<V> _createDefaultView() = 0;
    // Fills the new view and connects to it; runs once, on the GUI thread.
    virtual void _onViewInited() {}

    // The typed view; null before the first getView().
    V* _getTypedView() const { return _view.get(); }
    bool _getIsViewInited() const { return _isViewInited; }

    std::unique_ptr<V> _view;
    bool _isViewInited = false;
};

} // namespace Zem
