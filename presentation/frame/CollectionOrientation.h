#pragma once

#include "presentation/frame/IEditableCollectionView.h"

#include <memory>

namespace Zem {

// How a collection view lines up its children: a column by default, a row for contacts and analog targets.
enum class CollectionOrientation { Vertical, Horizontal };

// A new Zem::CollectionBoxView, for presenters whose headers stay free of widget classes.
std::unique_ptr<IEditableCollectionView> createCollectionBoxView(CollectionOrientation orientation);

} // namespace Zem
