#pragma once

#include "presentation/frame/IPresenterFactory.h"

namespace ZemTree {

class Node;

// Makes the presenter of a tree node.
class INodePresenterFactory : public Zem::IPresenterFactory<Node*> {};

} // namespace ZemTree
