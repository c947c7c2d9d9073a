#pragma once

#include "core/common/ScopedConnection.h"
#include "core/tree/EnumLimiter.h"
#include "core/tree/LocalString.h"
#include "core/tree/Node.h"
#include "values/Unit.h"

#include <sigc++/connection.h>
#include <sigc++/functors/mem_fun.h>
#include <sigc++/signal.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <utility>

namespace ZemTree {

// A unit whose value is limited to a list of allowed values. The list is either the unit's own (a property child,
// made when no limiter is given) or an external one that other units may share. A change of the list in force
// renews the value out, since what the value means may depend on it.
template <class T> class EnumLimitedUnit : public Unit<T> {
public:
    // A null `limiter` gives the unit its own limiter, which it keeps for good.
    EnumLimitedUnit(const std::string& id, const LocalString& description, const LocalString& secondText, Node* limiter)
        : Unit<T>(id, description, secondText, T{})
    {
        if (limiter == nullptr)
            _initInternalLimiter();
        else
            _setExternalLimiter(limiter);
    }

    // The unit keeps `limiter` alive; a null one gives the unit its own limiter.
    EnumLimitedUnit(const std::string& id, const LocalString& description, const LocalString& secondText,
                    std::shared_ptr<EnumLimiter> limiter)
        : EnumLimitedUnit(id, description, secondText, static_cast<Node*>(limiter.get()))
    {
        _externalLimiterHolder = std::move(limiter);
    }

    bool hasExternalLimiter() const { return _externalLimiter != nullptr; }

    // The external limiter when one is in force, else the unit's own.
    EnumLimiter* getLimiter() const
    {
        return dynamic_cast<EnumLimiter*>(_externalLimiter != nullptr ? _externalLimiter : _internalLimiter);
    }

    // Replaces an external limiter by another that somebody else owns. Throws std::runtime_error for a unit
    // with its own limiter or for a null limiter.
    void setExternalLimiter(Node* limiter)
    {
        _checkExternalLimiter(limiter);
        _setExternalLimiter(limiter);
        // The holder may be what keeps the limiter in force alive.
        if (_externalLimiterHolder.get() != limiter)
            _externalLimiterHolder.reset();
    }

    // Replaces an external limiter by another that the unit keeps alive. Throws as above.
    void setExternalLimiter(std::shared_ptr<EnumLimiter> limiter)
    {
        _checkExternalLimiter(limiter.get());
        _setExternalLimiter(limiter.get());
        _externalLimiterHolder = std::move(limiter);
    }

    // Fires when the limiter in force is replaced.
    sigc::signal<void> signalLimiterChanged;

protected:
    // The unit's own limiter is fixed together with the unit.
    void _onSystemLocked() override
    {
        Unit<T>::_onSystemLocked();
        if (_internalLimiter != nullptr)
            Node::_lockChildContainer(_internalLimiter);
    }

    void _initInternalLimiter()
    {
        auto limiter = std::make_unique<EnumLimiter>();
        EnumLimiter* const added = static_cast<EnumLimiter*>(Node::_addPropertyInner(std::move(limiter)));
        _internalLimiter = added;
        _limiterConnection =
            added->getSignalChanged().connect(sigc::mem_fun(*this, &EnumLimitedUnit::_onLimiterChanged));
    }

    void _setExternalLimiter(Node* limiter)
    {
        if (limiter == _externalLimiter)
            return;
        _limiterConnection.disconnect();
        _externalLimiter = limiter;
        signalLimiterChanged.emit();
        this->_onValueOutChanged();
        // Tracked: the limiter may outlive the unit.
        if (auto* enumLimiter = dynamic_cast<EnumLimiter*>(limiter))
            _limiterConnection =
                enumLimiter->getSignalChanged().connect(sigc::mem_fun(*this, &EnumLimitedUnit::_onLimiterChanged));
    }

    // Replacing a limiter changes an existing external binding; a unit born with its own limiter keeps it.
    void _checkExternalLimiter(Node* limiter) const
    {
        if (!hasExternalLimiter() || limiter == nullptr)
            throw std::runtime_error("EnumLimited unit - incorrect external limiter setter");
    }

private:
    void _onLimiterChanged() { this->_onValueOutChanged(); }

    Node* _internalLimiter = nullptr;
    std::shared_ptr<EnumLimiter> _externalLimiterHolder;
    Node* _externalLimiter = nullptr;
    Zem::ScopedConnection _limiterConnection;
};

} // namespace ZemTree
