#include "results/graph/GraphManagerFactory.h"

namespace ZemTree {

Zem::UniversalFactory<IGraphManager>& GraphManagerFactory::getInstance()
{
    static Zem::UniversalFactory<IGraphManager> instance;
    return instance;
}

} // namespace ZemTree
