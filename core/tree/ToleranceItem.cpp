#include "core/tree/ToleranceItem.h"

#include "core/tree/ToleranceReducedTypeConverter.h"

namespace ZemTree {

ToleranceItem::ToleranceItem(const RangeStructure& argument, const Zem::Nullable<RangeStructure>& relative,
                             const Zem::Nullable<RangeStructure>& absolute)
    : _argument(argument), _relative(relative), _absolute(absolute)
{
}

void ToleranceItem::setArgument(const RangeStructure& argument)
{
    if (_argument == argument)
        return;
    _argument = argument;
    signalStructureChanged.emit();
}

void ToleranceItem::setRelative(const Zem::Nullable<RangeStructure>& relative)
{
    if (_relative == relative)
        return;
    _relative = relative;
    signalStructureChanged.emit();
}

void ToleranceItem::setAbsolute(const Zem::Nullable<RangeStructure>& absolute)
{
    if (_absolute == absolute)
        return;
    _absolute = absolute;
    signalStructureChanged.emit();
}

std::unique_ptr<ToleranceItem> ToleranceItem::clone() const
{
    return std::make_unique<ToleranceItem>(_argument, _relative, _absolute);
}

bool ToleranceItem::isEqualTo(const ToleranceItem& other) const
{
    return _argument == other._argument && _relative == other._relative && _absolute == other._absolute;
}

void ToleranceItem::operator>>(std::ostringstream& stream) const
{
    _argument >> stream;
    stream << ':' << ToleranceReducedTypeConverter::toStringData(getReduced());
}

void ToleranceItem::operator<<(std::istringstream& stream)
{
    const std::unique_ptr<ToleranceItem> read = tryParse(stream.str());
    if (!read) {
        stream.setstate(std::ios_base::badbit);
        return;
    }
    // One signal for the whole replacement, and none when nothing changes.
    if (isEqualTo(*read))
        return;
    _argument = read->_argument;
    _relative = read->_relative;
    _absolute = read->_absolute;
    signalStructureChanged.emit();
}

std::unique_ptr<ToleranceItem> ToleranceItem::tryParse(const std::string& text)
{
    const std::size_t separator = text.find(':');
    if (separator == std::string::npos)
        return nullptr;
    RangeStructure argument;
    ToleranceReduced reduced;
    if (!RangeStructure::tryParse(text.substr(0, separator), argument)
        || !ToleranceReducedTypeConverter::fromStringData(text.substr(separator + 1), reduced))
        return nullptr;
    return std::make_unique<ToleranceItem>(argument, reduced.relative(), reduced.absolute());
}

} // namespace ZemTree
