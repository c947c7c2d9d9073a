#include "contacts/AnalogOutputRedirectCollection.h"

#include "core/common/ConvertionHelper.h"

#include <locale>
#include <string>

namespace ZemTree {

std::shared_ptr<AnalogOutputRedirectCollection> AnalogOutputRedirectCollection::clone() const
{
    const std::string text = Zem::convertToString<AnalogOutputRedirectCollection, true, true>(*this);
    std::shared_ptr<AnalogOutputRedirectCollection> copy;
    if (!Zem::tryConvert<std::shared_ptr<AnalogOutputRedirectCollection>, true, true>(text, copy) || !copy)
        throw "AnalogOutputRedirectCollection clone exception";
    return copy;
}

void AnalogOutputRedirectCollection::operator>>(std::ostringstream& stream) const
{
    bool isFirst = true;
    for (const AnalogOutputTarget* target : _items) {
        if (!isFirst)
            stream << ';';
        isFirst = false;
        *target >> stream;
    }
}

void AnalogOutputRedirectCollection::operator<<(std::istringstream& stream)
{
    reset();
    const std::string text = stream.str();
    if (text.empty())
        return;
    for (const std::string& part : Zem::splitConvert<std::string>(text, ';')) {
        AnalogOutputTarget target(1);
        std::istringstream partStream(part);
        partStream.imbue(std::locale::classic());
        target << partStream;
        const bool isGood = !partStream.bad() && (part.empty() || !partStream.fail());
        if (!isGood) {
            stream.setstate(std::ios_base::badbit);
            return;
        }
        add(std::make_unique<AnalogOutputTarget>(target));
    }
}

} // namespace ZemTree
