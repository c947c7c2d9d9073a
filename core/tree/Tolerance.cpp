#include "core/tree/Tolerance.h"

#include "core/common/ConvertionHelper.h"

#include <memory>
#include <vector>

namespace ZemTree {

Tolerance::~Tolerance() = default;

bool Tolerance::isEqualTo(const Tolerance& other) const
{
    if (size() != other.size())
        return false;
    for (std::size_t index = 0; index < size(); ++index) {
        if (!at(index)->isEqualTo(*other.at(index)))
            return false;
    }
    return true;
}

void Tolerance::operator>>(std::ostringstream& stream) const
{
    bool isFirst = true;
    for (const ToleranceItem* item : *this) {
        if (!isFirst)
            stream << ' ';
        *item >> stream;
        isFirst = false;
    }
}

void Tolerance::operator<<(std::istringstream& stream)
{
    const std::string text = stream.str();
    std::vector<std::unique_ptr<ToleranceItem>> items;
    if (!text.empty()) {
        // Every piece must be an item: a doubled, leading or trailing blank is malformed.
        for (const std::string& piece : Zem::splitConvert<std::string>(text, ' ')) {
            std::unique_ptr<ToleranceItem> item = ToleranceItem::tryParse(piece);
            if (!item) {
                stream.setstate(std::ios_base::badbit);
                return;
            }
            items.push_back(std::move(item));
        }
    }
    reset();
    for (std::unique_ptr<ToleranceItem>& item : items)
        add(std::move(item));
}

} // namespace ZemTree
