#pragma once

#include "core/formula/FormulaSyntaxNode.h"

#include <memory>
#include <string>
#include <vector>

namespace ZemTree {
class FormulaError;
}

namespace Formula {

// A parsed formula: parse once, evaluate many times. Either `root` holds the syntax tree, or `error` says why
// the text is no formula. Read-only once built, so several evaluations may share it.
struct FormulaParserResult {
    std::string text;
    std::unique_ptr<FormulaSyntaxNode> root;
    std::shared_ptr<const ZemTree::FormulaError> error;
    // The distinct references of the text (the paths inside "{...}"), in the order of their first appearance.
    // Filled also when the text has a syntax error, as far as the scan went.
    std::vector<std::string> references;

    bool isValid() const { return root != nullptr && error == nullptr; }
};

} // namespace Formula
