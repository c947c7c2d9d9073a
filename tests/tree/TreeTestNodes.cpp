#include "TreeTestNodes.h"

#include "core/tree/NodeFactory.h"

#include <stdexcept>

namespace TreeTest {

namespace {

[[maybe_unused]] const bool groupRegistered = ZemTree::NodeFactory::registerType<TestGroup>();
[[maybe_unused]] const bool itemRegistered = ZemTree::NodeFactory::registerType<TestItem>();
[[maybe_unused]] const bool forbiddenRegistered = ZemTree::NodeFactory::registerType<TestForbidden>();

} // namespace

bool TestGroup::canContains(ZemTree::Node* item)
{
    return dynamic_cast<TestForbidden*>(item) == nullptr;
}

} // namespace TreeTest
