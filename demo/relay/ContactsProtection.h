#pragma once

#include "relay/ProtectionContainer.h"

namespace ZemTree {
class NumericUnit;
}

namespace ZemDemo {

// The contact that follows a binary output: `Delay` (s).
class ContactsProtection : public ProtectionContainer {
public:
    ContactsProtection();
    ContactsProtection(const std::string& id, const ZemTree::LocalString& description);

    ZemTree::NumericUnit* getDelay() const { return _delay; }

protected:
    void _fillTemplate() override;

private:
    ZemTree::NumericUnit* _delay = nullptr;
};

} // namespace ZemDemo
