#pragma once

#include "core/tree/Node.h"

#include <cstddef>
#include <string>

namespace ZemDevice {

// A node of the virtual channel tree: a section, a group or a channel. It knows the text it is shown by, which
// follows the current language unless the host named it.
class HardwareNode : public ZemTree::Node {
public:
    // `displayKey` is a key of lng::Tree; a `number` above 0 is written behind its text. A non-empty `name`
    // replaces both.
    HardwareNode(const std::string& id, const std::string& displayKey, std::size_t number, const std::string& name);

    // The text shown for this node in the current language, such as "Input 3".
    std::string getDisplayName() const;
    // The 1-based place among its kind, 0 for a section.
    std::size_t getNumber() const { return _number; }

private:
    std::string _displayKey;
    std::size_t _number;
    std::string _name;
};

} // namespace ZemDevice
