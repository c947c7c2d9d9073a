#include "contacts/AnalogOutputTarget.h"

namespace ZemTree {

AnalogOutputTarget::AnalogOutputTarget(int number) : _number(number) {}

AnalogOutputTarget::AnalogOutputTarget(const std::string& path) : _number(1), _path(path) {}

AnalogOutputTarget::AnalogOutputTarget(const AnalogOutputTarget& other)
    : IStructureChanged(), _number(other._number), _path(other._path)
{
}

AnalogOutputTarget& AnalogOutputTarget::operator=(const AnalogOutputTarget& other)
{
    if (this == &other)
        return *this;
    _number = other._number;
    _path = other._path;
    // A whole replacement: the old subscribers belong to the object that was, and hear nothing of this.
    signalStructureChanged.clear();
    return *this;
}

void AnalogOutputTarget::setNumber(int number)
{
    if (_number == number)
        return;
    _number = number;
    signalStructureChanged.emit();
}

void AnalogOutputTarget::setPath(const std::string& path)
{
    if (_path == path)
        return;
    _path = path;
    signalStructureChanged.emit();
}

void AnalogOutputTarget::operator>>(std::ostringstream& stream) const
{
    if (!_path.empty())
        stream << _path;
    else
        stream << Zem::convertToString<int, true>(_number);
}

void AnalogOutputTarget::operator<<(std::istringstream& stream)
{
    const std::string text = stream.str();
    if (!text.empty() && text[0] >= '0' && text[0] <= '9') {
        int number = 0;
        // "12a" is neither a number nor a path: the target stays as it was.
        if (Zem::tryConvert<int, true>(text, number))
            *this = AnalogOutputTarget(number);
        return;
    }
    *this = AnalogOutputTarget(text);
}

} // namespace ZemTree
