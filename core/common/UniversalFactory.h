#pragma once

#include "core/common/TypeHelper.h"

#include <map>
#include <memory>
#include <string>
#include <typeinfo>
#include <vector>

namespace Zem {

// A registry of named makers of objects derived from T, so that an object can be rebuilt from the type name
// saved in a file. Registration happens at library start on one thread; afterwards the registry is only read,
// which may happen on any thread.
template <class T> class UniversalFactory {
public:
    // Makes a new object; the caller owns it.
    using Creator = std::unique_ptr<T> (*)();

    UniversalFactory() = default;
    UniversalFactory(const UniversalFactory&) = delete;
    UniversalFactory& operator=(const UniversalFactory&) = delete;
    virtual ~UniversalFactory() = default;

    // Registers U, made by its default constructor, under TypeHelper::getTypeName(typeid(U)). A name that is
    // already registered keeps its first maker. Always true, so that it can initialise a static flag.
    template <class U> bool registerType()
    {
        return registerType(TypeHelper::getTypeName(typeid(U)), &_createDefault<U>);
    }

    // Registers a maker under an explicit name; the first registration of a name wins. Always true.
    bool registerType(const std::string& name, Creator creator)
    {
        if (creator != nullptr)
            _creators.emplace(name, creator);
        return true;
    }

    // A new object of the type registered under `name`, or null when the name is unknown.
    std::unique_ptr<T> create(const std::string& name) const
    {
        const auto found = _creators.find(name);
        if (found == _creators.end())
            return nullptr;
        return found->second();
    }

    bool isRegistered(const std::string& name) const { return _creators.count(name) != 0; }

    // The registered names in ascending order.
    std::vector<std::string> getTypeNames() const
    {
        std::vector<std::string> names;
        names.reserve(_creators.size());
        for (const auto& entry : _creators)
            names.push_back(entry.first);
        return names;
    }

private:
    template <class U> static std::unique_ptr<T> _createDefault() { return std::unique_ptr<T>(new U()); }

    std::map<std::string, Creator> _creators;
};

} // namespace Zem
