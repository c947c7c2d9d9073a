#include "core/tree/NodeTemplateActivatorCollection.h"

#include "core/common/TypeHelper.h"
#include "core/tree/Node.h"
#include "core/tree/NodeTemplateActivator.h"

#include <algorithm>
#include <filesystem>
#include <stdexcept>
#include <system_error>
#include <typeinfo>
#include <vector>

namespace ZemTree {

namespace fs = std::filesystem;

NodeTemplateActivatorCollection::NodeTemplateActivatorCollection() = default;

NodeTemplateActivatorCollection::~NodeTemplateActivatorCollection() = default;

NodeTemplateActivatorCollection& NodeTemplateActivatorCollection::instance()
{
    // Never destroyed: trees that are still alive at exit keep pointing into it.
    static NodeTemplateActivatorCollection* const collection = new NodeTemplateActivatorCollection();
    return *collection;
}

std::size_t NodeTemplateActivatorCollection::loadFolder(const std::string& folder)
{
    std::error_code error;
    std::vector<fs::path> files;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        if (entry->path().extension() == ".xml" && entry->is_regular_file(error))
            files.push_back(entry->path());
    }
    // Directory order is arbitrary; sorting makes "first one wins" the same on every machine.
    std::sort(files.begin(), files.end());

    std::size_t added = 0;
    for (const fs::path& file : files) {
        const std::string name = file.stem().string();
        if (name.empty() || _activators.count(name) != 0)
            continue;
        add(name, file.string());
        ++added;
    }
    return added;
}

NodeTemplateActivator* NodeTemplateActivatorCollection::add(const std::string& name, const std::string& path)
{
    if (name.empty())
        throw std::logic_error("A template needs a name");
    if (_activators.count(name) != 0)
        throw std::logic_error("A template named '" + name + "' is already known");
    auto activator = std::make_unique<NodeTemplateActivator>(this, name, path);
    NodeTemplateActivator* const result = activator.get();
    _activators.emplace(name, std::move(activator));
    return result;
}

NodeTemplateActivator* NodeTemplateActivatorCollection::find(const std::string& name) const
{
    auto found = _activators.find(name);
    if (found == _activators.end()) {
        const std::string stem = fs::path(name).stem().string();
        if (stem.empty() || stem == name)
            return nullptr;
        found = _activators.find(stem);
        if (found == _activators.end())
            return nullptr;
    }
    return found->second.get();
}

NodeTemplateActivator* NodeTemplateActivatorCollection::getAssociatedSystemActivator(Node* node,
                                                                                     const std::string& name) const
{
    return _findFor(node, name);
}

NodeTemplateActivator* NodeTemplateActivatorCollection::getAssociatedUserActivator(Node* node,
                                                                                   const std::string& name) const
{
    return _findFor(node, name);
}

NodeTemplateActivator* NodeTemplateActivatorCollection::_findFor(const Node* node, const std::string& name) const
{
    NodeTemplateActivator* const activator = find(name);
    if (activator == nullptr || node == nullptr)
        return activator;
    const std::string& templateClass = activator->getRootClassName();
    if (!templateClass.empty() && templateClass != Zem::TypeHelper::getTypeName(typeid(*node)))
        return nullptr;
    return activator;
}

} // namespace ZemTree
