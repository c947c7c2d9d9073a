#pragma once

#include "contacts/Contact.h"

#include <memory>
#include <sstream>
#include <string>

namespace ZemTree {

// A contact with what it does in a test sequence: a mode (one of the ContactMode texts, not checked) from a
// start time to a finish time.
//
// Text form: the contact, the mode, the start and the finish joined by ";", each time with at most 15 significant
// digits and 13 behind the point: "!3;SC;0.1;0.25"; "nan" and "inf" are times too. Reading replaces the whole object,
// its signal included. A text that is empty, has other than four fields or a time that does not convert sets
// the stream's badbit and leaves the element as it was; an empty contact name ("!;SC;0;0") throws
// std::out_of_range; a name that begins with a digit but is no whole number leaves the element as it was
// without a failure.
class ContactElement : public Contact {
public:
    ContactElement(int number, bool isNormalOpen, const std::string& mode, double start, double finish);
    ContactElement(const std::string& path, bool isNormalOpen, const std::string& mode, double start, double finish);
    ContactElement(const ContactElement& other) = default;
    ContactElement& operator=(const ContactElement& other) = default;

    const std::string& getMode() const { return _mode; }
    void setMode(const std::string& mode);
    double getStart() const { return _start; }
    // Compares exactly, so a NaN emits on every call.
    void setStart(double start);
    double getFinish() const { return _finish; }
    // Compares exactly, so a NaN emits on every call.
    void setFinish(double finish);

    void operator>>(std::ostringstream& stream) const;
    void operator<<(std::istringstream& stream);

private:
    std::string _mode;
    double _start;
    double _finish;
};

} // namespace ZemTree

namespace Zem {

// An element read from a text starts as number 1, normally open, off from 0 to 0.
template <> struct ConvertionObjectFactory<ZemTree::ContactElement> {
    static std::shared_ptr<ZemTree::ContactElement> create();
};

} // namespace Zem
