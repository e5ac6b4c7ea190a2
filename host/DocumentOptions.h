#pragma once
#include <QString>

/// The options of the database about what is printed of a document, filed and sent. Their names end in the documents'
/// table where each kind has its own.
namespace host {

/// A row of OPZIONI and what counts until it is stored.
struct DocumentOption
{
    QString name;
    QString initial;
};

/// How many copies are printed, 1 to 9.
inline DocumentOption copiesOption(const QString &table)
{
    return {QStringLiteral("STAMPA_COPIE_") + table, QStringLiteral("1")};
}

/// Their labels, separated by semicolons. A single copy has none.
inline DocumentOption labelsOption(const QString &table)
{
    return {QStringLiteral("STAMPA_DICITURE_") + table,
            QStringLiteral("Copia per il destinatario; Copia per il vettore; Copia per il mittente")};
}

/// Are prices printed on documents that can do without?
inline DocumentOption pricesOption(const QString &table)
{
    return {QStringLiteral("STAMPA_PREZZI_") + table, QStringLiteral("False")};
}

/// The text of the message that a document is sent with.
inline DocumentOption mailOption(const QString &table)
{
    return {QStringLiteral("POSTA_TESTO_") + table,
            QStringLiteral("Buongiorno,\nin allegato {documento} n. {numero} del {data}.\nCordiali saluti\n{azienda}")};
}

/// The folder in which everything that is printed is filed; nothing is while it is empty.
inline DocumentOption archiveOption()
{
    return {QStringLiteral("ARCHIVIO_STAMPE"), {}};
}

/// So many characters its path may have: year and name of a file are added, and the database keeps 255 of the whole.
constexpr int longestArchive = 180;

} // namespace host
