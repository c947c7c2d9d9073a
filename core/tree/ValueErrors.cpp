#include "core/tree/ValueErrors.h"

#include <utility>

namespace ZemTree {

const std::shared_ptr<const MissingElementError>& MissingElementError::getInstance()
{
    static const std::shared_ptr<const MissingElementError> instance(new MissingElementError());
    return instance;
}

const char* MissingElementError::what() const noexcept
{
    return "The element is missing";
}

const std::shared_ptr<const DataConvertionError>& DataConvertionError::getInstance()
{
    static const std::shared_ptr<const DataConvertionError> instance(new DataConvertionError());
    return instance;
}

const char* DataConvertionError::what() const noexcept
{
    return "The data cannot be converted";
}

FormulaError::FormulaError(std::string message, std::size_t position)
    : _message(std::move(message)), _position(position), _what(_message + " at position " + std::to_string(position))
{
}

} // namespace ZemTree
