#include "core/formula/FormulaEvaluator.h"

#include "core/common/ConvertionHelper.h"
#include "core/common/TypeHelper.h"
#include "core/tree/ValueErrors.h"

#include <cmath>
#include <exception>
#include <limits>
#include <utility>
#include <vector>

namespace Formula {

namespace {

using Node = FormulaSyntaxNode;
using Kind = ValueExpression::Kind;

// Thrown inside an evaluation only; `calculate` turns it into the result's error.
struct EvaluationFailure {
    std::string message;
    std::size_t position;
};

// An intermediate value. Numbers and texts are held plainly so that arithmetic allocates nothing; `origin` keeps
// a reference's value as the resolver gave it, so that a formula of one reference can hand it on unchanged.
struct Operand {
    Kind kind = Kind::Number;
    double number = 0.0;
    std::string text;
    std::shared_ptr<ZemTree::IDataContainer> object;
    std::shared_ptr<ValueExpression> origin;

    static Operand fromNumber(double value)
    {
        Operand operand;
        operand.number = value;
        return operand;
    }
    static Operand fromText(std::string value)
    {
        Operand operand;
        operand.kind = Kind::Text;
        operand.text = std::move(value);
        return operand;
    }
};

std::string shorten(const std::string& text)
{
    const std::size_t limit = 32;
    return text.size() <= limit ? text : text.substr(0, limit) + "...";
}

double roundHalfAway(double value, double digits)
{
    if (std::isnan(digits) || !std::isfinite(value))
        return std::isnan(digits) ? std::numeric_limits<double>::quiet_NaN() : value;
    // Beyond these the scale is 0 or infinite; the answer no longer changes.
    const double whole = std::round(std::fmax(-400.0, std::fmin(400.0, digits)));
    if (whole >= 0.0) {
        const double scale = std::pow(10.0, whole);
        const double scaled = value * scale;
        if (!std::isfinite(scaled))
            return value;
        return std::round(scaled) / scale;
    }
    const double scale = std::pow(10.0, -whole);
    if (!std::isfinite(scale))
        return std::copysign(0.0, value);
    return std::round(value / scale) * scale;
}

class Evaluation {
public:
    Evaluation(const FormulaParserResult& parsed, const Resolver& resolver)
        : _parsed(parsed), _resolver(resolver), _resolved(parsed.references.size()),
          _isResolved(parsed.references.size(), false)
    {
    }

    Operand evaluate(const Node& node)
    {
        switch (node.kind) {
        case Node::Kind::Number:
            return Operand::fromNumber(node.number);
        case Node::Kind::Text:
            return Operand::fromText(node.text);
        case Node::Kind::Reference:
            return _reference(node);
        case Node::Kind::Negate:
            return Operand::fromNumber(-_toNumber(evaluate(*node.children[0]), "Operator '-'", node.position));
        case Node::Kind::Plus:
            return Operand::fromNumber(_toNumber(evaluate(*node.children[0]), "Operator '+'", node.position));
        case Node::Kind::Sum:
            return _sum(node);
        case Node::Kind::Product:
            return _product(node);
        case Node::Kind::Power: {
            const std::size_t position = node.operatorPositions[0];
            const double base = _toNumber(evaluate(*node.children[0]), "Operator '^'", position);
            const double exponent = _toNumber(evaluate(*node.children[1]), "Operator '^'", position);
            return Operand::fromNumber(std::pow(base, exponent));
        }
        case Node::Kind::Call:
            return _call(node);
        }
        throw EvaluationFailure{"Unknown kind of formula node", node.position};
    }

private:
    Operand _reference(const Node& node)
    {
        const std::size_t index = node.referenceIndex;
        if (index >= _resolved.size())
            throw EvaluationFailure{"Unknown reference '{" + shorten(node.text) + "}'", node.position};
        if (!_isResolved[index]) {
            if (_resolver) {
                try {
                    _resolved[index] = _resolver(_parsed.references[index]);
                }
                catch (const std::exception& error) {
                    throw EvaluationFailure{"Reference '{" + shorten(node.text) + "}' has no value: " + error.what(),
                                            node.position};
                }
            }
            _isResolved[index] = true;
        }
        const std::shared_ptr<ValueExpression>& value = _resolved[index];
        if (value == nullptr)
            throw EvaluationFailure{"Unresolved reference '{" + shorten(node.text) + "}'", node.position};

        Operand operand;
        operand.kind = value->getKind();
        switch (operand.kind) {
        case Kind::Number:
            operand.number = value->getNumber();
            break;
        case Kind::Text:
            operand.text = value->getText();
            break;
        case Kind::Object:
            operand.object = value->getDataContainer();
            break;
        }
        operand.origin = value;
        return operand;
    }

    // An object as a number or a text: a double or a text as it holds it, anything else through its text form.
    static Operand _plain(Operand operand, const char* user, std::size_t position)
    {
        if (operand.kind != Kind::Object)
            return operand;
        const std::type_info& type = operand.object->getType();
        if (type == typeid(double))
            return Operand::fromNumber(*static_cast<const double*>(operand.object->getData()));
        if (type == typeid(std::string))
            return Operand::fromText(*static_cast<const std::string*>(operand.object->getData()));
        std::string text;
        if (!operand.object->tryConvertToString(text))
            throw EvaluationFailure{std::string(user) + " cannot use a value of type '"
                                        + Zem::TypeHelper::getTypeName(type) + "'",
                                    position};
        return Operand::fromText(std::move(text));
    }

    static double _toNumber(Operand operand, const char* user, std::size_t position)
    {
        const Operand plain = _plain(std::move(operand), user, position);
        if (plain.kind == Kind::Number)
            return plain.number;
        double number = 0.0;
        if (Zem::tryConvert<double, true>(plain.text, number))
            return number;
        throw EvaluationFailure{std::string(user) + " needs numbers, got the text \"" + shorten(plain.text) + "\"",
                                position};
    }

    Operand _sum(const Node& node)
    {
        Operand total = evaluate(*node.children[0]);
        for (std::size_t i = 0; i < node.operators.size(); ++i) {
            const char op = node.operators[i];
            const std::size_t position = node.operatorPositions[i];
            const char* const user = op == '+' ? "Operator '+'" : "Operator '-'";
            Operand left = _plain(std::move(total), user, position);
            Operand right = _plain(evaluate(*node.children[i + 1]), user, position);
            if (op == '+' && left.kind == Kind::Text && right.kind == Kind::Text) {
                left.text += right.text;
                left.origin.reset();
                total = std::move(left);
                continue;
            }
            const double a = _toNumber(std::move(left), user, position);
            const double b = _toNumber(std::move(right), user, position);
            total = Operand::fromNumber(op == '+' ? a + b : a - b);
        }
        return total;
    }

    Operand _product(const Node& node)
    {
        const char* const times = "Operator '*'";
        const char* const divide = "Operator '/'";
        double product = _toNumber(evaluate(*node.children[0]), node.operators[0] == '*' ? times : divide,
                                   node.operatorPositions[0]);
        for (std::size_t i = 0; i < node.operators.size(); ++i) {
            const bool isTimes = node.operators[i] == '*';
            const double factor =
                _toNumber(evaluate(*node.children[i + 1]), isTimes ? times : divide, node.operatorPositions[i]);
            product = isTimes ? product * factor : product / factor;
        }
        return Operand::fromNumber(product);
    }

    Operand _call(const Node& node)
    {
        const std::string user = "Function '" + node.text + "'";
        std::vector<double> arguments;
        arguments.reserve(node.children.size());
        for (const std::unique_ptr<Node>& child : node.children)
            arguments.push_back(_toNumber(evaluate(*child), user.c_str(), node.position));

        const double x = arguments[0];
        switch (node.function) {
        case Node::Function::Abs:
            return Operand::fromNumber(std::fabs(x));
        case Node::Function::Sqrt:
            return Operand::fromNumber(std::sqrt(x));
        case Node::Function::Exp:
            return Operand::fromNumber(std::exp(x));
        case Node::Function::Ln:
            return Operand::fromNumber(std::log(x));
        case Node::Function::Log10:
            return Operand::fromNumber(std::log10(x));
        case Node::Function::Pow:
            return Operand::fromNumber(std::pow(x, arguments[1]));
        case Node::Function::Min:
        case Node::Function::Max: {
            // NaN wins, so that a missing number is not hidden by the others.
            const bool isMin = node.function == Node::Function::Min;
            double result = x;
            for (const double value : arguments) {
                if (std::isnan(value) || std::isnan(result))
                    result = std::numeric_limits<double>::quiet_NaN();
                else if (isMin ? value < result : value > result)
                    result = value;
            }
            return Operand::fromNumber(result);
        }
        case Node::Function::Sin:
            return Operand::fromNumber(std::sin(x));
        case Node::Function::Cos:
            return Operand::fromNumber(std::cos(x));
        case Node::Function::Tan:
            return Operand::fromNumber(std::tan(x));
        case Node::Function::Atan2:
            return Operand::fromNumber(std::atan2(x, arguments[1]));
        case Node::Function::Round:
            return Operand::fromNumber(arguments.size() == 1 ? std::round(x) : roundHalfAway(x, arguments[1]));
        }
        throw EvaluationFailure{"Unknown function '" + node.text + "'", node.position};
    }

    const FormulaParserResult& _parsed;
    const Resolver& _resolver;
    std::vector<std::shared_ptr<ValueExpression>> _resolved;
    std::vector<bool> _isResolved;
};

} // namespace

Zem::Out<std::shared_ptr<ValueExpression>> FormulaEvaluator::calculate(FormulaParserResult* parsed,
                                                                       const Resolver& resolver)
{
    Zem::Out<std::shared_ptr<ValueExpression>> out;
    try {
        if (parsed == nullptr) {
            out.error = std::make_shared<const ZemTree::FormulaError>("No formula to calculate", 0);
            return out;
        }
        if (parsed->error != nullptr) {
            out.error = parsed->error;
            return out;
        }
        if (parsed->root == nullptr) {
            out.error = std::make_shared<const ZemTree::FormulaError>("Empty formula", 0);
            return out;
        }
        Evaluation evaluation(*parsed, resolver);
        Operand result = evaluation.evaluate(*parsed->root);
        if (result.origin != nullptr)
            out.value = std::move(result.origin);
        else if (result.kind == Kind::Number)
            out.value = ValueExpression::number(result.number);
        else if (result.kind == Kind::Text)
            out.value = ValueExpression::text(std::move(result.text));
        else
            out.value = ValueExpression::object(std::move(result.object));
    }
    catch (const EvaluationFailure& failure) {
        out.value.reset();
        out.error = std::make_shared<const ZemTree::FormulaError>(failure.message, failure.position);
    }
    catch (const std::exception& error) {
        // Only a lack of memory or a faulty data container gets here; it is the formula's error all the same.
        out.value.reset();
        out.error = std::make_shared<const ZemTree::FormulaError>(
            std::string("The formula cannot be calculated: ") + error.what(), 0);
    }
    return out;
}

} // namespace Formula
