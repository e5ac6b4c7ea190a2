#include "platform/core/Error.h"
#include "platform/core/Translation.h"
#include "platform/report/ExpressionNode.h"

#include <QRegularExpression>
#include <QScopeGuard>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace report {

namespace {

using Node = ExpressionNode;

// Reading, evaluating and destroying a node goes through the ones below it: beyond any depth that somebody writes, the
// stack would end before the expression does.
constexpr int deepestNesting = 200;

void append(Node &node, Node argument)
{
    node.depth = std::max(node.depth, argument.depth + 1);
    if (node.depth > deepestNesting)
        throw core::Error(core::tr("espressione annidata troppo in profondità"));
    node.arguments.push_back(std::move(argument));
}

// Functions whose first argument is the name of a connection.
bool takesConnection(const QString &function)
{
    return function == u"sum"_s || function == u"count"_s;
}

// Recursive descent; operators of one level bind tighter than those of the level before.
class Parser
{
public:
    explicit Parser(const QString &text)
    {
        static const QRegularExpression shape(
            u"\\s*(?:(\\d+(?:\\.\\d+)?)|'((?:[^']|'')*)'|([A-Za-z_]\\w*(?:\\.\\w+)?)|(\\|\\||<>|<=|>=|[=<>+\\-*/(),]))"_s);
        qsizetype position = 0;
        const QString trimmed = text.trimmed();
        while (position < trimmed.size()) {
            const auto match = shape.match(trimmed, position, QRegularExpression::NormalMatch,
                                           QRegularExpression::AnchorAtOffsetMatchOption |
                                               QRegularExpression::DontCheckSubjectStringMatchOption);
            if (!match.hasMatch())
                throw core::Error(core::tr("espressione non valida presso \"%1\"").arg(trimmed.mid(position, 20)));
            tokens_.append(tokenOf(match));
            position = match.capturedEnd();
        }
    }

    Node parse()
    {
        Node node = level(0);
        if (next_ < tokens_.size())
            unexpected();
        return node;
    }
    const QSet<QString> &connections() const { return connections_; }

private:
    enum class Kind
    {
        Number,
        Text,
        Name,
        Symbol,
        End
    };
    struct Token
    {
        Kind kind = Kind::End;
        QString text;
    };

    static Token tokenOf(const QRegularExpressionMatch &match)
    {
        if (match.hasCaptured(1))
            return {Kind::Number, match.captured(1)};
        if (match.hasCaptured(2))
            return {Kind::Text, match.captured(2).replace(u"''"_s, u"'"_s)};
        if (match.hasCaptured(3))
            return {Kind::Name, match.captured(3)};
        return {Kind::Symbol, match.captured(4)};
    }

    Token peek() const { return tokens_.value(next_); }
    Token take() { return tokens_.value(next_++); }
    bool takeSymbol(const QString &symbol)
    {
        const Token token = peek();
        if (token.kind == Kind::Text || token.text != symbol)
            return false;
        ++next_;
        return true;
    }
    void require(const QString &symbol)
    {
        if (!takeSymbol(symbol))
            unexpected();
    }
    [[noreturn]] void unexpected() const
    {
        const Token token = peek();
        throw core::Error(token.kind == Kind::End ? core::tr("espressione incompleta")
                                                  : core::tr("\"%1\" inatteso nell'espressione").arg(token.text));
    }

    Node level(int depth)
    {
        static const QList<QStringList> operators = {
            {u"or"_s}, {u"and"_s},       {u"="_s, u"<>"_s, u"<"_s, u"<="_s, u">"_s, u">="_s},
            {u"||"_s}, {u"+"_s, u"-"_s}, {u"*"_s, u"/"_s}};
        if (depth == operators.size())
            return unary();
        Node left = level(depth + 1);
        while (peek().kind != Kind::Text && operators[depth].contains(peek().text)) {
            Node node{.kind = Node::Kind::Operator, .name = take().text};
            append(node, std::move(left));
            append(node, level(depth + 1));
            left = std::move(node);
        }
        return left;
    }

    // All recursion comes through here.
    Node unary()
    {
        if (++nesting_ > deepestNesting)
            throw core::Error(core::tr("espressione annidata troppo in profondità"));
        const auto leave = qScopeGuard([this] { --nesting_; });
        for (const QString &symbol : {u"not"_s, u"-"_s}) {
            if (takeSymbol(symbol)) {
                Node node{.kind = Node::Kind::Operator, .name = symbol};
                append(node, unary());
                return node;
            }
        }
        return operand();
    }

    Node operand()
    {
        if (takeSymbol(u"("_s)) {
            Node node = level(0);
            require(u")"_s);
            return node;
        }
        const Token token = peek();
        if (token.kind == Kind::End || token.kind == Kind::Symbol)
            unexpected();
        ++next_;
        if (token.kind == Kind::Number)
            return {.value = token.text.toDouble()};
        if (token.kind == Kind::Text)
            return {.value = token.text};
        if (takeSymbol(u"("_s))
            return call(token.text);
        return named(token.text);
    }

    Node named(const QString &text)
    {
        static const QHash<QString, Node::Kind> words = {{u"page"_s, Node::Kind::Page},
                                                         {u"pages"_s, Node::Kind::Pages},
                                                         {u"row"_s, Node::Kind::Row},
                                                         {u"copy"_s, Node::Kind::Copy},
                                                         {u"now"_s, Node::Kind::Now}};
        if (const auto word = words.constFind(text); word != words.constEnd())
            return {.kind = *word};
        const QString connection = text.section(u'.', 0, -2);
        const QString name = text.section(u'.', -1);
        if (connection == u"param"_s)
            return {.kind = Node::Kind::Parameter, .name = name};
        if (!connection.isEmpty())
            connections_.insert(connection);
        return {.kind = Node::Kind::Column, .name = name, .connection = connection};
    }

    Node call(const QString &function)
    {
        const auto [fewest, most] = functionArity(function);
        if (most == 0)
            throw core::Error(core::tr("la funzione \"%1\" non esiste").arg(function));
        Node node{.kind = Node::Kind::Call, .name = function};
        if (takesConnection(function)) {
            node.connection = take().text;
            connections_.insert(node.connection);
            if (peek().text != u")"_s)
                require(u","_s);
        }
        while (!takeSymbol(u")"_s)) {
            append(node, level(0));
            if (peek().text != u")"_s)
                require(u","_s);
        }
        const int given = static_cast<int>(node.arguments.size()) + (takesConnection(function) ? 1 : 0);
        if (given < fewest || given > most)
            throw core::Error(core::tr("numero di argomenti errato per \"%1\"").arg(function));
        return node;
    }

    QList<Token> tokens_;
    qsizetype next_ = 0;
    int nesting_ = 0;
    QSet<QString> connections_;
};

} // namespace

Expression Expression::parse(const QString &text)
{
    Parser parser(text);
    Expression result;
    result.root_ = std::make_shared<const ExpressionNode>(parser.parse());
    result.connections_ = parser.connections();
    return result;
}

Expression Expression::literal(const QString &text)
{
    Expression result;
    result.root_ = std::make_shared<const ExpressionNode>(ExpressionNode{.value = text});
    return result;
}

QVariant Expression::evaluate(const Scope &scope) const
{
    return root_ ? report::evaluate(*root_, scope) : QVariant();
}

bool Expression::holds(const Scope &scope) const
{
    return !root_ || isTrue(evaluate(scope));
}

} // namespace report
