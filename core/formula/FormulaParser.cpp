#include "core/formula/FormulaParser.h"

#include "core/tree/ValueErrors.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <exception>
#include <limits>
#include <system_error>
#include <utility>

namespace Formula {

namespace {

using Node = FormulaSyntaxNode;

// Thrown inside the parser only; `separate` turns it into the result's error.
struct SyntaxFailure {
    std::string message;
    std::size_t position;
};

struct FunctionInfo {
    const char* name;
    Node::Function function;
    std::size_t minArguments;
    std::size_t maxArguments;
};

const FunctionInfo functions[] = {
    {"abs", Node::Function::Abs, 1, 1},
    {"sqrt", Node::Function::Sqrt, 1, 1},
    {"exp", Node::Function::Exp, 1, 1},
    {"ln", Node::Function::Ln, 1, 1},
    {"log10", Node::Function::Log10, 1, 1},
    {"pow", Node::Function::Pow, 2, 2},
    {"min", Node::Function::Min, 1, std::numeric_limits<std::size_t>::max()},
    {"max", Node::Function::Max, 1, std::numeric_limits<std::size_t>::max()},
    {"sin", Node::Function::Sin, 1, 1},
    {"cos", Node::Function::Cos, 1, 1},
    {"tan", Node::Function::Tan, 1, 1},
    {"atan2", Node::Function::Atan2, 2, 2},
    {"round", Node::Function::Round, 1, 2},
};

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}
bool isLetter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}
bool isBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\v' || c == '\f';
}

std::string toLower(std::string text)
{
    for (char& c : text) {
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    }
    return text;
}

// A character as messages show it: printable ASCII as it is, anything else as a hex escape.
std::string describeCharacter(char c)
{
    const auto byte = static_cast<unsigned char>(c);
    if (byte >= 0x20 && byte < 0x7F)
        return std::string(1, c);
    char buffer[8];
    std::snprintf(buffer, sizeof(buffer), "\\x%02X", static_cast<unsigned>(byte));
    return buffer;
}

// Long pieces of the text are cut in messages.
std::string shorten(const std::string& text)
{
    const std::size_t limit = 32;
    return text.size() <= limit ? text : text.substr(0, limit) + "...";
}

// The value of a decimal literal that from_chars finds out of range: an infinity when it is too big, otherwise
// zero. The order of magnitude is the count of digits before the point (leading zeros not counted, or minus
// the zeros after the point) plus the exponent.
double outOfRangeValue(const std::string& literal)
{
    long long magnitude = 0;
    std::size_t i = 0;
    bool seenNonZero = false;
    for (; i < literal.size() && isDigit(literal[i]); ++i) {
        if (literal[i] != '0')
            seenNonZero = true;
        if (seenNonZero)
            ++magnitude;
    }
    if (i < literal.size() && literal[i] == '.') {
        for (++i; i < literal.size() && isDigit(literal[i]); ++i) {
            if (seenNonZero)
                break;
            if (literal[i] != '0')
                seenNonZero = true;
            else
                --magnitude;
        }
    }
    while (i < literal.size() && literal[i] != 'e' && literal[i] != 'E')
        ++i;
    long long exponent = 0;
    if (i < literal.size()) {
        ++i;
        const bool negative = i < literal.size() && literal[i] == '-';
        if (i < literal.size() && (literal[i] == '-' || literal[i] == '+'))
            ++i;
        for (; i < literal.size() && isDigit(literal[i]); ++i) {
            // Saturates: beyond this the answer is the same.
            if (exponent < 1000000000LL)
                exponent = exponent * 10 + (literal[i] - '0');
        }
        if (negative)
            exponent = -exponent;
    }
    return magnitude + exponent > 0 ? std::numeric_limits<double>::infinity() : 0.0;
}

struct Token {
    enum class Type { Number, Text, Reference, Name, Operator, Open, Close, Comma, End };
    Type type = Type::End;
    std::size_t position = 0;
    // The literal as written for a number and a name; the content for a text and a reference.
    std::string text;
    double number = 0.0;
    std::size_t referenceIndex = 0;
    char op = 0;
};

class Parser {
public:
    Parser(const std::string& text, std::vector<std::string>& references) : _text(text), _references(references) {}

    std::unique_ptr<Node> parse()
    {
        _advance();
        if (_token.type == Token::Type::End)
            throw SyntaxFailure{"Empty formula", _token.position};
        std::unique_ptr<Node> root = _parseSum();
        if (_token.type != Token::Type::End)
            _throwUnexpected();
        return root;
    }

private:
    // Counts the nesting of the text on the way down, so that no text can exhaust the stack.
    class DepthGuard {
    public:
        DepthGuard(std::size_t& depth, std::size_t position) : _depth(depth)
        {
            if (_depth >= FormulaParser::MaxDepth)
                throw SyntaxFailure{"The formula is nested too deeply (more than "
                                        + std::to_string(FormulaParser::MaxDepth) + " levels)",
                                    position};
            ++_depth;
        }
        ~DepthGuard() { --_depth; }
        DepthGuard(const DepthGuard&) = delete;
        DepthGuard& operator=(const DepthGuard&) = delete;

    private:
        std::size_t& _depth;
    };

    bool _isOperator(char op) const { return _token.type == Token::Type::Operator && _token.op == op; }

    std::unique_ptr<Node> _parseSum()
    {
        std::unique_ptr<Node> first = _parseProduct();
        if (!_isOperator('+') && !_isOperator('-'))
            return first;
        auto chain = std::make_unique<Node>();
        chain->kind = Node::Kind::Sum;
        chain->position = first->position;
        chain->children.push_back(std::move(first));
        while (_isOperator('+') || _isOperator('-')) {
            chain->operators.push_back(_token.op);
            chain->operatorPositions.push_back(_token.position);
            _advance();
            chain->children.push_back(_parseProduct());
        }
        return chain;
    }

    std::unique_ptr<Node> _parseProduct()
    {
        std::unique_ptr<Node> first = _parseUnary();
        if (!_isOperator('*') && !_isOperator('/'))
            return first;
        auto chain = std::make_unique<Node>();
        chain->kind = Node::Kind::Product;
        chain->position = first->position;
        chain->children.push_back(std::move(first));
        while (_isOperator('*') || _isOperator('/')) {
            chain->operators.push_back(_token.op);
            chain->operatorPositions.push_back(_token.position);
            _advance();
            chain->children.push_back(_parseUnary());
        }
        return chain;
    }

    // Every level of nesting passes here: parentheses and arguments through the sum, signs and exponents
    // directly.
    std::unique_ptr<Node> _parseUnary()
    {
        const DepthGuard guard(_depth, _token.position);
        if (_isOperator('-') || _isOperator('+')) {
            auto node = std::make_unique<Node>();
            node->kind = _token.op == '-' ? Node::Kind::Negate : Node::Kind::Plus;
            node->position = _token.position;
            _advance();
            node->children.push_back(_parseUnary());
            return node;
        }
        return _parsePower();
    }

    std::unique_ptr<Node> _parsePower()
    {
        std::unique_ptr<Node> base = _parsePrimary();
        if (!_isOperator('^'))
            return base;
        auto node = std::make_unique<Node>();
        node->kind = Node::Kind::Power;
        node->position = base->position;
        node->operators.push_back('^');
        node->operatorPositions.push_back(_token.position);
        _advance();
        node->children.push_back(std::move(base));
        node->children.push_back(_parseUnary());
        return node;
    }

    std::unique_ptr<Node> _parsePrimary()
    {
        auto node = std::make_unique<Node>();
        node->position = _token.position;
        switch (_token.type) {
        case Token::Type::Number:
            node->kind = Node::Kind::Number;
            node->number = _token.number;
            _advance();
            return node;
        case Token::Type::Text:
            node->kind = Node::Kind::Text;
            node->text = std::move(_token.text);
            _advance();
            return node;
        case Token::Type::Reference:
            node->kind = Node::Kind::Reference;
            node->text = std::move(_token.text);
            node->referenceIndex = _token.referenceIndex;
            _advance();
            return node;
        case Token::Type::Name:
            return _parseName();
        case Token::Type::Open: {
            const std::size_t open = _token.position;
            _advance();
            std::unique_ptr<Node> inner = _parseSum();
            if (_token.type == Token::Type::End)
                throw SyntaxFailure{"Unbalanced parentheses: '(' is not closed", open};
            if (_token.type != Token::Type::Close)
                _throwUnexpected();
            _advance();
            return inner;
        }
        case Token::Type::End:
            throw SyntaxFailure{"Missing value", _token.position};
        default:
            _throwUnexpected();
        }
        return node;
    }

    std::unique_ptr<Node> _parseName()
    {
        const std::size_t position = _token.position;
        const std::string written = _token.text;
        const std::string name = toLower(written);
        _advance();
        if (_token.type != Token::Type::Open) {
            auto node = std::make_unique<Node>();
            node->kind = Node::Kind::Number;
            node->position = position;
            if (name == "nan")
                node->number = std::numeric_limits<double>::quiet_NaN();
            else if (name == "inf" || name == "infinity")
                node->number = std::numeric_limits<double>::infinity();
            else
                throw SyntaxFailure{"Unknown name '" + shorten(written) + "'", position};
            return node;
        }

        const FunctionInfo* info = nullptr;
        for (const FunctionInfo& candidate : functions) {
            if (name == candidate.name)
                info = &candidate;
        }
        if (info == nullptr)
            throw SyntaxFailure{"Unknown function '" + shorten(written) + "'", position};

        auto node = std::make_unique<Node>();
        node->kind = Node::Kind::Call;
        node->position = position;
        node->function = info->function;
        node->text = info->name;
        const std::size_t open = _token.position;
        _advance();
        if (_token.type == Token::Type::Close) {
            _advance();
        }
        else {
            while (true) {
                node->children.push_back(_parseSum());
                if (_token.type == Token::Type::Comma) {
                    _advance();
                    continue;
                }
                if (_token.type == Token::Type::Close) {
                    _advance();
                    break;
                }
                if (_token.type == Token::Type::End)
                    throw SyntaxFailure{"Unbalanced parentheses: '(' of function '" + std::string(info->name)
                                            + "' is not closed",
                                        open};
                _throwUnexpected();
            }
        }
        const std::size_t count = node->children.size();
        if (count < info->minArguments || count > info->maxArguments)
            throw SyntaxFailure{"Function '" + std::string(info->name) + "' takes " + _describeArity(*info) + ", "
                                    + std::to_string(count) + " given",
                                position};
        return node;
    }

    static std::string _describeArity(const FunctionInfo& info)
    {
        if (info.maxArguments == std::numeric_limits<std::size_t>::max())
            return "at least " + std::to_string(info.minArguments)
                   + (info.minArguments == 1 ? " argument" : " arguments");
        if (info.minArguments == info.maxArguments)
            return std::to_string(info.minArguments) + (info.minArguments == 1 ? " argument" : " arguments");
        return std::to_string(info.minArguments) + " or " + std::to_string(info.maxArguments) + " arguments";
    }

    [[noreturn]] void _throwUnexpected() const
    {
        std::string what;
        switch (_token.type) {
        case Token::Type::Number:
            what = "number '" + shorten(_token.text) + "'";
            break;
        case Token::Type::Text:
            what = "text \"" + shorten(_token.text) + "\"";
            break;
        case Token::Type::Reference:
            what = "reference '{" + shorten(_token.text) + "}'";
            break;
        case Token::Type::Name:
            what = "name '" + shorten(_token.text) + "'";
            break;
        case Token::Type::Operator:
            what = std::string("'") + _token.op + "'";
            break;
        case Token::Type::Open:
            what = "'('";
            break;
        case Token::Type::Close:
            throw SyntaxFailure{"Unbalanced parentheses: unexpected ')'", _token.position};
        case Token::Type::Comma:
            what = "','";
            break;
        case Token::Type::End:
            throw SyntaxFailure{"Missing value", _token.position};
        }
        throw SyntaxFailure{"Unexpected " + what, _token.position};
    }

    void _advance()
    {
        std::size_t i = _next;
        while (i < _text.size() && isBlank(_text[i]))
            ++i;
        _token = Token();
        _token.position = i;
        if (i >= _text.size()) {
            _token.type = Token::Type::End;
            _next = i;
            return;
        }
        const char c = _text[i];
        if (isDigit(c) || (c == '.' && i + 1 < _text.size() && isDigit(_text[i + 1]))) {
            _next = _lexNumber(i);
            return;
        }
        if (isLetter(c)) {
            std::size_t end = i + 1;
            while (end < _text.size() && (isLetter(_text[end]) || isDigit(_text[end])))
                ++end;
            _token.type = Token::Type::Name;
            _token.text = _text.substr(i, end - i);
            _next = end;
            return;
        }
        switch (c) {
        case '"':
            _next = _lexText(i);
            return;
        case '{': {
            const std::size_t close = _text.find('}', i + 1);
            if (close == std::string::npos)
                throw SyntaxFailure{"Unterminated reference: '{' without '}'", i};
            _token.type = Token::Type::Reference;
            _token.text = _text.substr(i + 1, close - i - 1);
            const auto known = std::find(_references.begin(), _references.end(), _token.text);
            _token.referenceIndex = static_cast<std::size_t>(known - _references.begin());
            if (known == _references.end())
                _references.push_back(_token.text);
            _next = close + 1;
            return;
        }
        case '+':
        case '-':
        case '*':
        case '/':
        case '^':
            _token.type = Token::Type::Operator;
            _token.op = c;
            break;
        case '(':
            _token.type = Token::Type::Open;
            break;
        case ')':
            _token.type = Token::Type::Close;
            break;
        case ',':
            _token.type = Token::Type::Comma;
            break;
        default:
            throw SyntaxFailure{"Unexpected character '" + describeCharacter(c) + "'", i};
        }
        _next = i + 1;
    }

    std::size_t _lexNumber(std::size_t start)
    {
        std::size_t i = start;
        while (i < _text.size() && isDigit(_text[i]))
            ++i;
        if (i < _text.size() && _text[i] == '.') {
            ++i;
            while (i < _text.size() && isDigit(_text[i]))
                ++i;
        }
        if (i < _text.size() && (_text[i] == 'e' || _text[i] == 'E')) {
            std::size_t j = i + 1;
            if (j < _text.size() && (_text[j] == '+' || _text[j] == '-'))
                ++j;
            if (j >= _text.size() || !isDigit(_text[j]))
                throw SyntaxFailure{"Malformed number: the exponent has no digits", start};
            while (j < _text.size() && isDigit(_text[j]))
                ++j;
            i = j;
        }
        if (i < _text.size() && (isLetter(_text[i]) || _text[i] == '.'))
            throw SyntaxFailure{"Malformed number '" + shorten(_text.substr(start, i - start + 1)) + "'", start};

        _token.type = Token::Type::Number;
        _token.text = _text.substr(start, i - start);
        const char* const first = _token.text.data();
        const char* const last = first + _token.text.size();
        const std::from_chars_result result = std::from_chars(first, last, _token.number);
        if (result.ec == std::errc::result_out_of_range)
            _token.number = outOfRangeValue(_token.text);
        else if (result.ec != std::errc() || result.ptr != last)
            throw SyntaxFailure{"Malformed number '" + shorten(_token.text) + "'", start};
        return i;
    }

    std::size_t _lexText(std::size_t start)
    {
        std::string content;
        std::size_t i = start + 1;
        while (i < _text.size()) {
            const char c = _text[i];
            if (c == '"') {
                _token.type = Token::Type::Text;
                _token.text = std::move(content);
                return i + 1;
            }
            if (c == '\\') {
                if (i + 1 >= _text.size())
                    break;
                const char escaped = _text[i + 1];
                if (escaped != '"' && escaped != '\\')
                    throw SyntaxFailure{"Unknown escape '\\" + describeCharacter(escaped) + "' in a text", i};
                content += escaped;
                i += 2;
                continue;
            }
            content += c;
            ++i;
        }
        throw SyntaxFailure{"Unterminated text: '\"' without a closing '\"'", start};
    }

    const std::string& _text;
    std::vector<std::string>& _references;
    std::size_t _next = 0;
    std::size_t _depth = 0;
    Token _token;
};

} // namespace

std::shared_ptr<FormulaParserResult> FormulaParser::separate(std::string text)
{
    auto result = std::make_shared<FormulaParserResult>();
    result->text = std::move(text);
    try {
        Parser parser(result->text, result->references);
        result->root = parser.parse();
    }
    catch (const SyntaxFailure& failure) {
        result->root.reset();
        result->error = std::make_shared<const ZemTree::FormulaError>(failure.message, failure.position);
    }
    catch (const std::exception& error) {
        // Only a lack of memory gets here; the formula is then no formula, which its users can handle.
        result->root.reset();
        result->error = std::make_shared<const ZemTree::FormulaError>(
            std::string("The formula cannot be parsed: ") + error.what(), 0);
    }
    return result;
}

std::string FormulaParser::replaceReferences(const std::string& text,
                                             const std::function<std::string(const std::string&)>& replace)
{
    std::string out;
    out.reserve(text.size());
    std::size_t i = 0;
    while (i < text.size()) {
        const char c = text[i];
        if (c == '"') {
            std::size_t end = i + 1;
            while (end < text.size() && text[end] != '"')
                end += text[end] == '\\' ? 2 : 1;
            end = std::min(end + 1, text.size());
            out.append(text, i, end - i);
            i = end;
            continue;
        }
        if (c == '{') {
            const std::size_t close = text.find('}', i + 1);
            if (close == std::string::npos) {
                out.append(text, i, std::string::npos);
                break;
            }
            out += '{';
            out += replace(text.substr(i + 1, close - i - 1));
            out += '}';
            i = close + 1;
            continue;
        }
        out += c;
        ++i;
    }
    return out;
}

} // namespace Formula
