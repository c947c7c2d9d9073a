#pragma once

#include "presentation/frame/NotifyCollectionBasePresenter.h"

namespace Zem {

// The collection presenter of a plain notify collection.
template <class T> class NotifyCollectionPresenter : public NotifyCollectionBasePresenter<T, NotifyCollection<T>> {
public:
    using NotifyCollectionBasePresenter<T, NotifyCollection<T>>::NotifyCollectionBasePresenter;
};

} // namespace Zem
