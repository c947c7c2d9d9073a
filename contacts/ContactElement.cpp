#include "contacts/ContactElement.h"

#include "contacts/ContactMode.h"
#include "core/common/StringHelper.h"

#include <vector>

namespace ZemTree {

namespace {

// Digits behind the point that the text of a time gives up of the 15 significant ones.
const int timePrecision = 2;

} // namespace

ContactElement::ContactElement(int number, bool isNormalOpen, const std::string& mode, double start, double finish)
    : Contact(number, isNormalOpen), _mode(mode), _start(start), _finish(finish)
{
}

ContactElement::ContactElement(const std::string& path, bool isNormalOpen, const std::string& mode, double start,
                               double finish)
    : Contact(path, isNormalOpen), _mode(mode), _start(start), _finish(finish)
{
}

void ContactElement::setMode(const std::string& mode)
{
    if (_mode == mode)
        return;
    _mode = mode;
    signalStructureChanged.emit();
}

void ContactElement::setStart(double start)
{
    if (_start == start)
        return;
    _start = start;
    signalStructureChanged.emit();
}

void ContactElement::setFinish(double finish)
{
    if (_finish == finish)
        return;
    _finish = finish;
    signalStructureChanged.emit();
}

void ContactElement::operator>>(std::ostringstream& stream) const
{
    Contact::operator>>(stream);
    stream << ';' << _mode << ';' << Zem::convertToString<double, true>(_start, timePrecision) << ';'
           << Zem::convertToString<double, true>(_finish, timePrecision);
}

void ContactElement::operator<<(std::istringstream& stream)
{
    const std::string text = stream.str();
    if (text.empty()) {
        stream.setstate(std::ios_base::badbit);
        return;
    }
    const std::vector<std::string> parts = Zem::StringHelper::split(text, ';');
    if (parts.size() != 4) {
        stream.setstate(std::ios_base::badbit);
        return;
    }
    double start = 0.0;
    double finish = 0.0;
    if (!Zem::tryConvert<double, true>(parts[2], start) || !Zem::tryConvert<double, true>(parts[3], finish)) {
        stream.setstate(std::ios_base::badbit);
        return;
    }
    const bool isNormalOpen = text[0] != '!';
    const std::string name = isNormalOpen ? parts[0] : parts[0].substr(1);
    const std::string& mode = parts[1];
    // An empty name has no first character: at() throws std::out_of_range.
    const char first = name.at(0);
    if (first >= '0' && first <= '9') {
        int number = 0;
        // A name such as "2 Input" is no number and no path: the element stays as it was.
        if (_tryReadNumber(name, number))
            *this = ContactElement(number, isNormalOpen, mode, start, finish);
        return;
    }
    *this = ContactElement(name, isNormalOpen, mode, start, finish);
}

} // namespace ZemTree

namespace Zem {

std::shared_ptr<ZemTree::ContactElement> ConvertionObjectFactory<ZemTree::ContactElement>::create()
{
    return std::make_shared<ZemTree::ContactElement>(1, true, ZemTree::ContactMode::OFF, 0.0, 0.0);
}

} // namespace Zem
