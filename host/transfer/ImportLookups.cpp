#include "host/transfer/ImportLookups.h"

#include "platform/core/Format.h"
#include "platform/core/Lists.h"
#include "platform/core/NumberReader.h"
#include "platform/data/Catalogue.h"
#include "platform/data/SqlText.h"

using namespace Qt::StringLiterals;

namespace host {

namespace {

constexpr int several = -1;

// "22", "22,00" and "22%" are the same number.
QString numberName(double number)
{
    return u'#' + core::formatNumber(number, 4);
}

std::optional<double> percent(QString text)
{
    text = text.trimmed();
    if (text.endsWith(u'%'))
        text = text.chopped(1).trimmed();
    const std::optional<core::WrittenNumber> number = core::readNumber(text);
    return number ? std::optional(number->value) : std::nullopt;
}

void add(QHash<QString, int> &keys, const QString &name, int key)
{
    const auto it = keys.constFind(name);
    keys.insert(name, it == keys.constEnd() || *it == key ? key : several);
}

QStringList namesIn(const QString &path)
{
    QStringList names = path.split(u'/');
    for (QString &name : names)
        name = name.trimmed();
    return names;
}

// The names of a row's ancestors and its own, "A/B"; a chain that comes back to itself ends there.
QString pathOf(int key, const QHash<int, std::pair<QString, int>> &tree)
{
    QString path;
    for (int depth = 0; depth < 100 && tree.contains(key); ++depth) {
        const auto &[name, parent] = tree[key];
        path = path.isEmpty() ? name : name + u'/' + path;
        key = parent;
    }
    return path;
}

} // namespace

ImportLookups::Keys ImportLookups::keysOf(data::Connection &connection, const ImportLookup &lookup)
{
    QStringList columns = {lookup.key + u" AS CHIAVE"_s, lookup.column + u" AS NOME"_s};
    if (!lookup.number.isEmpty())
        columns.append(lookup.number + u" AS NUMERO"_s);
    if (!lookup.parent.isEmpty())
        columns.append(lookup.parent + u" AS PADRE"_s);
    const data::Rows rows = connection.select(u"SELECT %1 FROM %2"_s.arg(columns.join(u", "_s), lookup.table));
    Keys keys;
    QHash<int, std::pair<QString, int>> tree;
    for (qsizetype row = 0; row < rows.size(); ++row) {
        const int key = rows.integer(row, u"CHIAVE");
        const QString name = data::capitalsOf(rows.text(row, u"NOME").trimmed());
        add(keys, name, key);
        if (!lookup.number.isEmpty())
            add(keys, numberName(rows.number(row, u"NUMERO")), key);
        if (!lookup.parent.isEmpty())
            tree.insert(key, {name, rows.integer(row, u"PADRE")});
    }
    // Whole paths win over names: a category at the top is found although its name stands elsewhere, too.
    QHash<QString, int> paths;
    for (auto it = tree.keyBegin(); it != tree.keyEnd(); ++it)
        add(paths, pathOf(*it, tree), *it);
    keys.insert(paths);
    return keys;
}

ImportLookups::ImportLookups(data::Connection &connection, const ImportTarget &target)
    : identity_(target.identity)
    , records_(
          keysOf(connection, {.table = target.table, .key = target.key, .column = target.fields.constFirst().column}))
{
    // The code as it is spelled goes first, should two spellings be there.
    const Keys spelled = records_;
    for (auto it = spelled.cbegin(); it != spelled.cend(); ++it) {
        if (const QString identity = identity_(it.key()); !records_.contains(identity))
            records_.insert(identity, *it);
    }
    for (const ImportField &field : target.fields)
        fields_.append(field.lookup.table.isEmpty() ? Keys() : keysOf(connection, field.lookup));
}

std::optional<int> ImportLookups::record(const QString &code) const
{
    auto it = records_.constFind(data::capitalsOf(code));
    if (it == records_.constEnd())
        it = records_.constFind(identity_(code));
    return it == records_.constEnd() ? std::nullopt : std::optional(*it);
}

std::optional<int> ImportLookups::find(qsizetype field, const QString &text) const
{
    const std::optional<int> found = entry(field, text);
    return found == several ? std::nullopt : found;
}

std::optional<MissingCategory> ImportLookups::missing(qsizetype field, const QString &path) const
{
    const QStringList names = namesIn(path);
    if (names.contains(QString()))
        return {};
    // The longest beginning that is there.
    for (qsizetype length = names.size(); length > 0; --length) {
        const std::optional<int> found = entry(field, names.first(length).join(u'/'));
        if (found == several)
            return {};
        if (found)
            return MissingCategory{*found, names.mid(length)};
    }
    return MissingCategory{0, names};
}

std::optional<int> ImportLookups::entry(qsizetype field, const QString &text) const
{
    const Keys &keys = fields_[field];
    const QString capitals = data::capitalsOf(text);
    auto it = keys.constFind(capitals);
    if (it == keys.constEnd())
        it = keys.constFind(namesIn(capitals).join(u'/'));
    if (it == keys.constEnd()) {
        if (const std::optional<double> number = percent(text))
            it = keys.constFind(numberName(*number));
    }
    return it == keys.constEnd() ? std::nullopt : std::optional(*it);
}

QList<ImportTarget> availableTargets(data::Connection &connection)
{
    return core::filtered(importTargets(), [&connection](const ImportTarget &target) {
        return data::hasTable(connection, target.table);
    });
}

} // namespace host
