#include "contacts/Contact.h"

namespace ZemTree {

Contact::Contact(int number, bool isNormalOpen) : _number(number), _isNormalOpen(isNormalOpen) {}

Contact::Contact(const std::string& path, bool isNormalOpen) : _number(1), _isNormalOpen(isNormalOpen), _path(path) {}

Contact::Contact(const Contact& other)
    : IStructureChanged(), _number(other._number), _isNormalOpen(other._isNormalOpen), _path(other._path)
{
}

Contact& Contact::operator=(const Contact& other)
{
    if (this == &other)
        return *this;
    _number = other._number;
    _isNormalOpen = other._isNormalOpen;
    _path = other._path;
    // A whole replacement: the old subscribers belong to the object that was, and hear nothing of this.
    signalStructureChanged.clear();
    return *this;
}

void Contact::setNumber(int number)
{
    if (_number == number)
        return;
    _number = number;
    signalStructureChanged.emit();
}

void Contact::setPath(const std::string& path)
{
    if (_path == path)
        return;
    _path = path;
    signalStructureChanged.emit();
}

void Contact::setIsNormalOpen(bool isNormalOpen)
{
    if (_isNormalOpen == isNormalOpen)
        return;
    _isNormalOpen = isNormalOpen;
    signalStructureChanged.emit();
}

void Contact::operator>>(std::ostringstream& stream) const
{
    if (!_isNormalOpen)
        stream << '!';
    if (!_path.empty())
        stream << _path;
    else
        stream << Zem::convertToString<int, true>(_number);
}

void Contact::operator<<(std::istringstream& stream)
{
    const std::string text = stream.str();
    const bool isNormalOpen = text.empty() || text[0] != '!';
    const std::string name = isNormalOpen ? text : text.substr(1);
    if (name.empty()) {
        *this = Contact("", true);
        return;
    }
    if (name[0] >= '0' && name[0] <= '9') {
        int number = 0;
        *this = _tryReadNumber(name, number) ? Contact(number, isNormalOpen) : Contact("", true);
        return;
    }
    *this = Contact(name, isNormalOpen);
}

bool Contact::_tryReadNumber(const std::string& name, int& number)
{
    return Zem::tryConvert<int, true>(name, number);
}

} // namespace ZemTree
