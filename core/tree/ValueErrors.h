#pragma once

#include <cstddef>
#include <exception>
#include <memory>
#include <string>
#include <utility>

namespace ZemTree {

// The error of a value out whose element (a hardware channel, a group) is not there. One shared instance.
class MissingElementError : public std::exception {
public:
    static const std::shared_ptr<const MissingElementError>& getInstance();
    const char* what() const noexcept override;

private:
    MissingElementError() = default;
};

// The error of a value out whose data cannot be had in the value's type (a failed formula or conversion).
// One shared instance.
class DataConvertionError : public std::exception {
public:
    static const std::shared_ptr<const DataConvertionError>& getInstance();
    const char* what() const noexcept override;

private:
    DataConvertionError() = default;
};

// The error of a number outside the bounds its unit allows, with the number and the bounds in its text.
class OutOfRangeError : public std::exception {
public:
    explicit OutOfRangeError(std::string message) : _message(std::move(message)) {}

    const char* what() const noexcept override { return _message.c_str(); }

private:
    std::string _message;
};

// The error of a formula that cannot be parsed or evaluated, with the position in its text where it was found.
class FormulaError : public std::exception {
public:
    FormulaError(std::string message, std::size_t position);

    const std::string& getMessage() const { return _message; }
    std::size_t getPosition() const { return _position; }
    // The problem and where it is: "Unknown function 'foo' at position 3".
    const char* what() const noexcept override { return _what.c_str(); }

private:
    std::string _message;
    std::size_t _position;
    std::string _what;
};

} // namespace ZemTree
