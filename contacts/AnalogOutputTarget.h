#pragma once

#include "collections/IStructureChanged.h"
#include "core/common/ConvertionHelper.h"

#include <memory>
#include <sstream>
#include <string>

namespace ZemTree {

// The analog output group that one logical group of a test is redirected to: by its 1-based number, or by its
// path in the hardware tree when that is set. A value object; every setter that changes a field emits the
// structure signal.
//
// Text form: the path, or the number when the path is empty. Reading never fails: a text that begins with a
// digit and is a whole number gives that number; one that begins with a digit but is no whole number, like
// "12a", leaves the target as it was; any other text, the empty one included, becomes the path with number 1.
// Reading replaces the whole object, its signal included.
class AnalogOutputTarget : public IStructureChanged {
public:
    explicit AnalogOutputTarget(int number);
    // Number 1.
    explicit AnalogOutputTarget(const std::string& path);
    // A copy has no subscribers of its own; an assignment drops those of the target.
    AnalogOutputTarget(const AnalogOutputTarget& other);
    AnalogOutputTarget& operator=(const AnalogOutputTarget& other);

    int getNumber() const { return _number; }
    // Leaves the path as it is.
    void setNumber(int number);
    // The 0-based group index.
    int getIndex() const { return _number - 1; }
    const std::string& getPath() const { return _path; }
    void setPath(const std::string& path);

    void operator>>(std::ostringstream& stream) const;
    void operator<<(std::istringstream& stream);

private:
    int _number;
    std::string _path;
};

} // namespace ZemTree

namespace Zem {

// A target read from a text starts as number 1.
template <> struct ConvertionObjectFactory<ZemTree::AnalogOutputTarget> {
    static std::shared_ptr<ZemTree::AnalogOutputTarget> create()
    {
        return std::make_shared<ZemTree::AnalogOutputTarget>(1);
    }
};

} // namespace Zem
