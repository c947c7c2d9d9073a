#pragma once

#include <cstdint>

namespace ZemTree {

// How a container presents its units: as settings, as parameters, or not at all on its own.
enum class ContainerHierarchicalMode : std::int32_t { None = 0, Settings = 1, Parameters = 2 };

} // namespace ZemTree
