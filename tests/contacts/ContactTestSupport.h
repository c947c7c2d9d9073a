#pragma once

#include "collections/IStructureChanged.h"

#include <sigc++/connection.h>

#include <locale>
#include <sstream>
#include <string>

namespace ContactTestSupport {

// The text form of any object with the stream convention, written into a stream that speaks the global locale.
template <class T> std::string textOf(const T& object)
{
    std::ostringstream stream;
    object >> stream;
    return stream.str();
}

// Reads `text` into `object` and tells how the stream ended.
struct ReadState {
    bool bad;
    bool fail;
};

template <class T> ReadState readInto(T& object, const std::string& text)
{
    std::istringstream stream(text);
    object << stream;
    return ReadState{stream.bad(), stream.fail()};
}

// Counts the structure signals of one object for as long as it lives.
class StructureCounter {
public:
    explicit StructureCounter(ZemTree::IStructureChanged& source)
        : _connection(source.getSignalStructureChanged().connect([this] { ++count; }))
    {
    }
    ~StructureCounter() { _connection.disconnect(); }
    StructureCounter(const StructureCounter&) = delete;
    StructureCounter& operator=(const StructureCounter&) = delete;

    int count = 0;

private:
    sigc::connection _connection;
};

// A decimal comma and a thousands point, as in many European locales.
class CommaPunctuation : public std::numpunct<char> {
protected:
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

// Makes the comma locale the global one for the life of the guard.
class CommaLocaleGuard {
public:
    CommaLocaleGuard() : _saved(std::locale::global(std::locale(std::locale::classic(), new CommaPunctuation))) {}
    ~CommaLocaleGuard() { std::locale::global(_saved); }
    CommaLocaleGuard(const CommaLocaleGuard&) = delete;
    CommaLocaleGuard& operator=(const CommaLocaleGuard&) = delete;

private:
    std::locale _saved;
};

} // namespace ContactTestSupport
