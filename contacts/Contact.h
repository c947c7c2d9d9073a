#pragma once

#include "collections/IStructureChanged.h"
#include "core/common/ConvertionHelper.h"

#include <memory>
#include <sstream>
#include <string>

namespace ZemTree {

// One binary channel that a relay is wired to: by its 1-based number, or by its path in the hardware tree when
// that is set, and whether the contact is normally open. A value object; every setter that changes a field
// emits the structure signal.
//
// Text form (object on the left): "!" for a normally closed contact, then the path, or the number when the path
// is empty: "3", "!3", "!Binary/Input 2". Reading replaces the whole object, its signal included, so a reader
// fills a fresh object and never one that somebody listens to. A text that begins with a digit but is no whole
// number, like "2 Input", reads as the default contact: number 1, normally open, no path.
class Contact : public IStructureChanged {
public:
    Contact(int number, bool isNormalOpen);
    // Number 1.
    Contact(const std::string& path, bool isNormalOpen);
    // A copy has no subscribers of its own; an assignment drops those of the target.
    Contact(const Contact& other);
    Contact& operator=(const Contact& other);

    int getNumber() const { return _number; }
    // Leaves the path as it is.
    void setNumber(int number);
    // The 0-based channel index.
    int getIndex() const { return _number - 1; }
    const std::string& getPath() const { return _path; }
    void setPath(const std::string& path);
    bool getIsNormalOpen() const { return _isNormalOpen; }
    void setIsNormalOpen(bool isNormalOpen);
    // 0 for a normally open contact, 1 for a normally closed one.
    int getType() const { return _isNormalOpen ? 0 : 1; }

    void operator>>(std::ostringstream& stream) const;
    void operator<<(std::istringstream& stream);

protected:
    // Reads a whole decimal int from a name that begins with a digit; false when anything is left over.
    static bool _tryReadNumber(const std::string& name, int& number);

private:
    int _number;
    bool _isNormalOpen;
    std::string _path;
};

} // namespace ZemTree

namespace Zem {

// A contact read from a text starts as number 1, normally open.
template <> struct ConvertionObjectFactory<ZemTree::Contact> {
    static std::shared_ptr<ZemTree::Contact> create() { return std::make_shared<ZemTree::Contact>(1, true); }
};

} // namespace Zem
