#pragma once
#include "platform/data/WordIndex.h"

#include <QDateTime>
#include <QList>

/// A column that records are offered with.
struct ColonnaRubrica
{
    QString column;
    bool isName = true; ///< the records are called so: what begins with the text typed goes before all others
};

/// A record as it is offered to somebody who types a part of what it is called.
struct VoceRubrica
{
    int id = -1;
    QStringList testi; ///< in the order of the columns
};

/// The records of a table that are chosen by name, code or number (customers, carriers, types), held in memory:
/// searching them by a key's stroke asks nobody.
class Rubrica
{
public:
    /// Of `table` with the key column `key`, in the order of the first column; empty until it is loaded.
    Rubrica(QString table, QString key, QList<ColonnaRubrica> columns);

    /// Reads them all, unless that was done a moment ago. Throws data::DatabaseError; what was read before stays.
    void refresh();
    /// At most `most` of those that have every word of `text`, see data::WordIndex::find(); the first ones for a text
    /// of blanks. When there are none they are read again, as one may have been made a moment ago: throws as refresh().
    QList<VoceRubrica> find(const QString &text, qsizetype most);

private:
    void read();
    QList<VoceRubrica> known(const QString &text, qsizetype most) const;

    QString table_;
    QString key_;
    QList<ColonnaRubrica> columns_;
    QList<VoceRubrica> voci_;
    data::WordIndex words_;
    QDateTime readAt_;
};
