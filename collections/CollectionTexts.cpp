#include "collections/CollectionTexts.h"

#include <atomic>

namespace Zem {

namespace {

std::atomic<CollectionTexts::Source> readOnlySource{nullptr};

} // namespace

std::string CollectionTexts::readOnlyText()
{
    const Source source = readOnlySource.load(std::memory_order_acquire);
    return source != nullptr ? std::string(source()) : std::string("The collection is read-only");
}

void CollectionTexts::setReadOnlyTextSource(Source source)
{
    readOnlySource.store(source, std::memory_order_release);
}

} // namespace Zem
