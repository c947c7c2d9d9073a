#include "presentation/widgets/SharedSizeGroup.h"

#include "presentation/widgets/SharedSizeGroupOwner.h"

#include <glibmm/main.h>

#include <algorithm>
#include <map>
#include <memory>

namespace Zem {

SharedSizeGroup& SharedSizeGroup::get(const std::string& key)
{
    // Never destroyed: owners may outlive static destruction order at program exit.
    static auto* const groups = new std::map<std::string, SharedSizeGroup*>();
    auto found = groups->find(key);
    if (found == groups->end())
        found = groups->emplace(key, new SharedSizeGroup()).first;
    return *found->second;
}

SharedSizeGroup::~SharedSizeGroup()
{
    _pendingRequeue.disconnect();
}

void SharedSizeGroup::join(SharedSizeGroupOwner* owner)
{
    _owners.push_back(owner);
}

void SharedSizeGroup::leave(SharedSizeGroupOwner* owner)
{
    _owners.erase(std::remove(_owners.begin(), _owners.end(), owner), _owners.end());
    if (owner->_ownNatural == _natural || owner->_ownMinimum == _minimum) {
        const int oldMinimum = _minimum;
        const int oldNatural = _natural;
        _recompute();
        if (_minimum != oldMinimum || _natural != oldNatural)
            _scheduleRequeue();
    }
    if (_owners.empty())
        _pendingRequeue.disconnect();
}

void SharedSizeGroup::report(SharedSizeGroupOwner* owner, int minimum, int natural, int& groupMinimum,
                             int& groupNatural)
{
    const int oldOwnMinimum = owner->_ownMinimum;
    const int oldOwnNatural = owner->_ownNatural;
    owner->_ownMinimum = minimum;
    owner->_ownNatural = natural;
    if (minimum != oldOwnMinimum || natural != oldOwnNatural) {
        const int oldMinimum = _minimum;
        const int oldNatural = _natural;
        // Growing needs no scan; a shrinking widest member does.
        if (minimum >= _minimum && natural >= _natural) {
            _minimum = minimum;
            _natural = natural;
        }
        else if (oldOwnMinimum == _minimum || oldOwnNatural == _natural || minimum > _minimum || natural > _natural) {
            _recompute();
        }
        if (_minimum != oldMinimum || _natural != oldNatural)
            _scheduleRequeue();
    }
    groupMinimum = _minimum;
    groupNatural = _natural;
    owner->_reportedNatural = _natural;
}

void SharedSizeGroup::_recompute()
{
    _minimum = 0;
    _natural = 0;
    for (const SharedSizeGroupOwner* owner : _owners) {
        _minimum = std::max(_minimum, owner->_ownMinimum);
        _natural = std::max(_natural, owner->_ownNatural);
    }
}

void SharedSizeGroup::_scheduleRequeue()
{
    // Queueing a resize while GTK measures is not allowed, and one pass after many changes is enough.
    if (_pendingRequeue.connected())
        return;
    _pendingRequeue = Glib::signal_idle().connect(sigc::mem_fun(*this, &SharedSizeGroup::_requeue));
}

bool SharedSizeGroup::_requeue()
{
    for (SharedSizeGroupOwner* owner : _owners) {
        if (owner->_reportedNatural != _natural)
            owner->queue_resize();
    }
    return false;
}

} // namespace Zem
