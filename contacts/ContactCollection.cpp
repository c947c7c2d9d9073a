#include "contacts/ContactCollection.h"

#include "contacts/ContactMode.h"
#include "core/common/ConvertionHelper.h"

#include <locale>
#include <stdexcept>
#include <string>
#include <vector>

namespace ZemTree {

std::shared_ptr<ContactCollection> ContactCollection::clone() const
{
    const std::string text = Zem::convertToString<ContactCollection, true, true>(*this);
    std::shared_ptr<ContactCollection> copy;
    bool isRead = false;
    try {
        isRead = Zem::tryConvert<std::shared_ptr<ContactCollection>, true, true>(text, copy);
    }
    catch (const std::out_of_range&) {
        // An element whose name is empty once read, such as a normally open contact with the path "!".
        isRead = false;
    }
    if (!isRead || !copy)
        throw "ContactCollection clone exception";
    return copy;
}

void ContactCollection::operator>>(std::ostringstream& stream) const
{
    bool isFirst = true;
    for (const ContactElement* element : _items) {
        if (!isFirst)
            stream << '|';
        isFirst = false;
        *element >> stream;
    }
}

void ContactCollection::operator<<(std::istringstream& stream)
{
    reset();
    const std::string text = stream.str();
    if (text.empty())
        return;
    for (const std::string& part : Zem::splitConvert<std::string>(text, '|')) {
        ContactElement element(1, true, ContactMode::OFF, 0.0, 0.0);
        std::istringstream partStream(part);
        partStream.imbue(std::locale::classic());
        element << partStream;
        const bool isGood = !partStream.bad() && (part.empty() || !partStream.fail());
        if (!isGood) {
            stream.setstate(std::ios_base::badbit);
            return;
        }
        add(std::make_unique<ContactElement>(element));
    }
}

} // namespace ZemTree
