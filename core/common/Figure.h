#pragma once

#include "core/common/IBorderable.h"

namespace Zem {

// A thing that can be drawn on a pair of axes; owned by std::unique_ptr<Figure>. What is drawn, and how, is told
// by the derived class; a drawer skips the kinds it does not know but still makes room for their range.
class Figure : public IBorderable {};

} // namespace Zem
