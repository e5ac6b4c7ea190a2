#pragma once
#include "magazzino/documents/RowColumn.h"

#include <QDate>

/// What tells one document of a kind from the others.
struct DocumentHead
{
    int id = -1; ///< key of the header
    int numero = 0;
    QDate data;
};

/// A total of a document.
struct DocumentTotal
{
    QString column;  ///< of the header's table
    QString control; ///< name of the label that shows it under the rows
    QString caption; ///< beside it; a total without one is not shown
    double (*value)(const DocumentTotals &totals) = nullptr;
};

/// The stock movement that an article row makes.
struct MovementRule
{
    QString type;               ///< TIPO_MOVIMENTO
    int sign = 1;               ///< 1 for goods in, -1 for goods out
    UnitPrice price = nullptr;  ///< of the row, stored with the movement; 0 without one
    bool atAverageCost = false; ///< booked at the article's average cost at the document's date, else at the row's cost
    QString note;               ///< before the document's number
};

/// How a kind of document is printed.
struct DocumentPrint
{
    QString routine;      ///< that errors carry
    QString report;       ///< of the report project; while empty such documents are not printed
    QString exemptReport; ///< of documents without VAT; none while empty
    QString pricedReport; ///< with prices, for who wants them; none where prices are always or never printed
    QString vatQuery;     ///< of the print data module, by the header's key; none while empty
};

/// Captions of the row commands; a command with an empty caption does not exist.
struct RowCommandCaptions
{
    QString articolo;
    QString servizio;
    QString testo;
    QString nonImponibile;
    QString elimina;
    QString su;
    QString giu;
};

/// Captions of a kind's entry form and list that do not follow from its names.
struct DocumentCaptions
{
    QString shortName; ///< before a document's number, where there is little room
    QString generalPage;
    QString rowsPage;
    QString notesPage;
    QString rowsGrid; ///< control name
    RowCommandCaptions rows;
    QString newHint;
    QString editHint;
};

/// Everything in which one kind of stock document differs from another, but for the fields of its header: form, list,
/// checks, numbering, deletion, movements, prints, data sets and indexes are made from it.
struct DocumentKind
{
    QString name;         ///< RIF_DOC_TIPO of its movements; PDF files are named after it
    QString plural;       ///< inside a sentence
    QString table;        ///< rows are in the table of this name with "_DETT"
    QString key;          ///< the rows' key is this name with "_DETT", generators begin with "GN_"
    QString dataName;     ///< "DdTScarico" stands for the data sets adsDdTScarico and adsDdTScaricoDett
    QString formName;     ///< "DdTScarico" stands for the actions actInserimentoDdTScarico and actRicercaDdTScarico
    QString counterpart;  ///< what the columns of its customer or supplier begin with
    QString numbersTable; ///< sales invoices, where these share their numbers with them; none while empty

    QString checkRoutine;                ///< that errors of the number's check carry; none while empty
    QString deletionRoutine;             ///< the same of a deletion
    bool (*canDelete)(int id) = nullptr; ///< always while null
    QString keptText;                    ///< what is told when it cannot be deleted
    QString viewRight;                   ///< named rights, not needed while empty
    QString editRight;
    QString deleteRight;

    UnitPrice unitPrice = nullptr; ///< the price that is typed: cost of a receipt, sale price of an issue
    MovementRule movement;
    DocumentPrint print;
    DocumentCaptions captions;
    QList<DocumentTotal> totals;
    QList<RowColumn> storedColumns; ///< of its rows
    QList<RowColumn> shownColumns;  ///< of its rows grid, from left to right

    /// What follows from these names, alike for every kind.
    ///@{
    QString rowTable() const { return table + QStringLiteral("_DETT"); }
    QString rowKey() const { return key + QStringLiteral("_DETT"); }
    QString rowGenerator() const { return QStringLiteral("GN_") + rowKey(); }
    QString dataSet() const { return QStringLiteral("ads") + dataName; }
    QString rowsDataSet() const { return dataSet() + QStringLiteral("Dett"); }
    QString entryCaption() const { return QStringLiteral("Inserimento / Modifica ") + plural; }
    QString entryMenu() const { return QStringLiteral(">Inserimento %1<").arg(plural); }
    QString listCaption() const { return QStringLiteral("Gestione ") + plural; }
    QString listMenu() const { return u'>' + plural.left(1).toUpper() + plural.mid(1) + u'<'; }
    QString entryAction() const { return QStringLiteral("actInserimento") + formName; }
    ///@}
};

/// Rows as values by the names of their columns, all that a row holds but its key, and back.
///@{
QVariantList valuesOf(const QList<DocumentRow> &rows);
QList<DocumentRow> rowsOf(const QVariantList &values);
///@}

/// The kinds, each made once.
///@{
const DocumentKind &bollaCarico();
const DocumentKind &ddtScarico();
const DocumentKind &fatturaAccompagnatoria();
///@}

/// The three of them, in this order.
const QList<const DocumentKind *> &documentKinds();
