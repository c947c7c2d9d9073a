#include "evaluation/ITestContainer.h"

namespace ZemTree {

// Out of line, so that the type's identity lives in the library and casts across libraries agree on it.
ITestContainer::~ITestContainer() = default;

} // namespace ZemTree
