#pragma once

namespace ZemTree {

class NodeTemplateActivator;

// A node that remembers the template it was built from.
class ITemplateActivatorContainer {
public:
    virtual ~ITemplateActivatorContainer() = default;
    virtual void setTemplateActivator(NodeTemplateActivator* activator) = 0;
    virtual NodeTemplateActivator* getTemplateActivator() = 0;
};

} // namespace ZemTree
