#pragma once

#include "presentation/frame/PresenterBase.h"
#include "presentation/presenters/IDataPresenter.h"

#include <utility>

namespace ZemTree {

// The data presenter frame: the view logic of PresenterBase and the data held as a member.
template <class T, class V> class DataPresenter : public Zem::PresenterBase<V>, public IDataPresenter<T> {
public:
    DataPresenter() = default;
    explicit DataPresenter(T data) : _data(std::move(data)) {}

    void setData(T data) override { _data = std::move(data); }
    T getData() override { return _data; }
    // Nothing here; a presenter whose view has a menu of its own overrides it.
    void setContextMenu(Zem::IView* /*menu*/) override {}

protected:
    T _data{};
};

} // namespace ZemTree
