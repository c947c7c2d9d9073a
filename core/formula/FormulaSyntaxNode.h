#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace Formula {

// One node of a parsed formula. Chains of operators of one precedence are kept flat (an operand list with the
// operators between them), so that the depth of the tree follows the nesting of the text, which the parser
// limits, and not its length.
struct FormulaSyntaxNode {
    enum class Kind {
        Number,    // `number`
        Text,      // `text`
        Reference, // `text` is the path inside the braces, `referenceIndex` its place in the result's list
        Negate,    // unary minus of children[0]
        Plus,      // unary plus of children[0]: the operand as a number
        Sum,       // children joined by `operators` '+' and '-', left to right
        Product,   // children joined by `operators` '*' and '/', left to right
        Power,     // children[0] ^ children[1]
        Call       // the function `function` applied to the children
    };
    enum class Function { Abs, Sqrt, Exp, Ln, Log10, Pow, Min, Max, Sin, Cos, Tan, Atan2, Round };

    Kind kind = Kind::Number;
    // Where the node starts in the text; for an operator chain, the places of the operators are in
    // `operatorPositions`.
    std::size_t position = 0;
    double number = 0.0;
    std::string text;
    std::size_t referenceIndex = 0;
    Function function = Function::Abs;
    std::vector<char> operators;
    std::vector<std::size_t> operatorPositions;
    std::vector<std::unique_ptr<FormulaSyntaxNode>> children;
};

} // namespace Formula
