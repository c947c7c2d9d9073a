#pragma once

#include "core/common/UniversalFactory.h"
#include "results/graph/IGraphManager.h"

namespace ZemTree {

// The one registry of graph managers, by the type name that a result saves in its "Manager" element
// (Zem::TypeHelper::getTypeName of the manager's dynamic type). The managers of this library register themselves
// when the library is loaded; the libraries of concrete tests may add their own the same way.
class GraphManagerFactory {
public:
    GraphManagerFactory() = delete;

    // Made on first use, under the language's one-time initialisation of statics.
    static Zem::UniversalFactory<IGraphManager>& getInstance();
};

} // namespace ZemTree
