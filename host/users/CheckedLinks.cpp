#include "host/users/CheckedLinks.h"

#include "platform/data/SqlText.h"

using namespace Qt::StringLiterals;

namespace host {

CheckedLinks::CheckedLinks(const CheckedLinksSpec &spec, QWidget *parent)
    : QListWidget(parent)
    , spec_(spec)
{
    setObjectName(u"list"_s);
    connect(this, &QListWidget::itemChanged, this, &CheckedLinks::edited);
}

void CheckedLinks::fill(data::Connection &connection)
{
    const QSignalBlocker quiet(this);
    clear();
    const data::Rows rows = connection.select(spec_.itemsSql);
    for (qsizetype row = 0; row < rows.size(); ++row) {
        auto *item = new QListWidgetItem(rows.text(row, u"TESTO"), this);
        item->setData(Qt::UserRole, rows.integer(row, u"ID"));
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
        item->setCheckState(Qt::Unchecked);
    }
}

void CheckedLinks::load(const QVariant &owner, data::Connection &connection)
{
    fill(connection);
    const data::Rows rows = connection.run(
        u"SELECT %1 AS ID FROM %2 WHERE UPPER(%3) = "_s.arg(spec_.itemColumn, spec_.linkTable, spec_.ownerColumn) +
            data::inCapitals(),
        {data::searchedText(owner.toString())});
    QList<int> keys;
    for (qsizetype row = 0; row < rows.size(); ++row)
        keys.append(rows.integer(row, u"ID"));
    setChecked(QVariant::fromValue(keys));
}

void CheckedLinks::setChecked(const QVariant &keys)
{
    const QSignalBlocker quiet(this);
    const auto wanted = keys.value<QList<int>>();
    for (int i = 0; i < count(); ++i)
        item(i)->setCheckState(wanted.contains(item(i)->data(Qt::UserRole).toInt()) ? Qt::Checked : Qt::Unchecked);
}

void CheckedLinks::write(const QVariant &owner, data::Connection &connection) const
{
    connection.run(u"DELETE FROM %1 WHERE UPPER(%2) = "_s.arg(spec_.linkTable, spec_.ownerColumn) + data::inCapitals(),
                   {data::searchedText(owner.toString())});
    for (const int key : checkedKeys())
        connection.run(
            u"INSERT INTO %1(%2, %3) VALUES(?, ?)"_s.arg(spec_.linkTable, spec_.ownerColumn, spec_.itemColumn),
            {owner, key});
}

QList<int> CheckedLinks::checkedKeys() const
{
    QList<int> keys;
    for (int i = 0; i < count(); ++i) {
        if (item(i)->checkState() == Qt::Checked)
            keys.append(item(i)->data(Qt::UserRole).toInt());
    }
    return keys;
}

} // namespace host
