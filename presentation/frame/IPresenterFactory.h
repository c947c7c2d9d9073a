#pragma once

#include "presentation/frame/IPresenter.h"

#include <memory>

namespace Zem {

// Makes the presenter of one model object; may answer null for an object it does not handle.
template <class T> class IPresenterFactory {
public:
    virtual ~IPresenterFactory() = default;
    virtual std::unique_ptr<IPresenter> createPresenter(T item) = 0;
};

} // namespace Zem
