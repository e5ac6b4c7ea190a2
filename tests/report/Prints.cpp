#include "tests/report/Prints.h"

#include "platform/core/Error.h"

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace test {

namespace {

constexpr int patience = 20'000; // milliseconds

QString outputOf(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished(patience) || process.exitCode() != 0)
        throw core::Error(u"%1: %2"_s.arg(program, QString::fromUtf8(process.readAllStandardError())));
    return QString::fromUtf8(process.readAllStandardOutput());
}

QVariantMap documentHeader(const QVariantMap &changes)
{
    const QString columns =
        u"NUMERO=12|ANNO=2026|DATA=2026-03-16|CLI_CODICE=CLI000007|CLI_RAGIONESOCIALE=Officine D'Amico & "
        "Figli|CLI_INDIRIZZO=Via Garibaldi 8|CLI_CITTA=Forlì|CLI_CAP=47121|CLI_PROVINCIA=FC|CLI_NAZIONE=Italia|"
        "CLI_CODICEFISCALE=DMCMRA70A01D704X|CLI_PARTITAIVA=01234567890|DEST_RAGIONESOCIALE=Cantiere "
        "nord|DEST_INDIRIZZO=Via Roma 12|DEST_CITTA=Cesena|DEST_CAP=47521|VETT_CODICE=VET000003|"
        "VETT_RAGIONESOCIALE=Trasporti Veloci S.r.l.|VETT_INDIRIZZO=Viale dei Trasporti "
        "5|VETT_CITTA=Padova|TIPO_TRASPORTO=A mezzo vettore|ASPETTO_BENI=Scatole di "
        "cartone|CAUSALE_TRASPORTO=Conto lavorazione|COLLI=14|PESO=1234.5|PESO_UM=KG|"
        "DATA_INIZIO_TRASPORTO=2026-03-17|ORA_INIZIO_TRASPORTO=08:45:00|NOTE=Consegnare entro venerdì"_s;
    QVariantMap header;
    for (const QString &column : columns.split(u'|'))
        header.insert(column.section(u'=', 0, 0), column.section(u'=', 1));
    header.insert(changes);
    return header;
}

QVariantMap row(int number, const QVariantMap &more)
{
    QVariantMap columns = {{u"CODICE"_s, u"ART-%1"_s.arg(number, 3, 10, QLatin1Char('0'))},
                           {u"DESCRIZIONE"_s, u"Articolo numero %1"_s.arg(number)},
                           {u"QUANTITA"_s, number},
                           {u"UM"_s, u"PZ"_s},
                           {u"TIPO_RIGA"_s, u"Articolo"_s}};
    columns.insert(more);
    return columns;
}

} // namespace

int insertNoteRow(data::Connection &connection, int note, const QVariantMap &columns)
{
    QVariantMap all = columns;
    all.insert(u"IDDDT_SCARICO"_s, note);
    return insertInto(connection, u"DDT_SCARICO_DETT"_s, all);
}

int insertInvoiceRow(data::Connection &connection, int invoice, const QVariantMap &columns)
{
    QVariantMap all = columns;
    all.insert(u"IDFATT_ACC"_s, invoice);
    return insertInto(connection, u"FATT_ACC_DETT"_s, all);
}

int insertNote(data::Connection &connection, int rows, const QVariantMap &header)
{
    const int note = insertInto(connection, u"DDT_SCARICO"_s, documentHeader(header));
    for (int number = 1; number <= rows; ++number)
        insertNoteRow(connection, note, row(number, {}));
    return note;
}

int insertInvoice(data::Connection &connection, int rows, const QVariantMap &header)
{
    QVariantMap all = {{u"TIPO_PAGAMENTO"_s, u"Ricevuta bancaria 30 gg"_s},
                       {u"SCADENZA_PAGAMENTO"_s, QDate(2026, 4, 30)},
                       {u"PAGATO"_s, u"False"_s},
                       {u"FC_ABILITATO"_s, u"False"_s},
                       {u"IVA_ESENTE"_s, u"False"_s},
                       {u"TOTALE_IMPONIBILE"_s, 10.0 * rows},
                       {u"TOTALE_IMPOSTA"_s, 2.2 * rows},
                       {u"TOTALE_DOCUMENTO"_s, 12.2 * rows}};
    all.insert(header);
    const int invoice = insertInto(connection, u"FATT_ACC"_s, documentHeader(all));
    for (int number = 1; number <= rows; ++number)
        insertInvoiceRow(connection, invoice,
                         row(number, {{u"PREZZO"_s, 12.5},
                                      {u"SCONTO"_s, 20},
                                      {u"QUANTITA"_s, 1},
                                      {u"IMPORTO"_s, 10},
                                      {u"IVA_IDALIQUOTA_IVA"_s, 1},
                                      {u"IVA_CODICE"_s, u"22"_s},
                                      {u"IVA_DESCRIZIONE"_s, u"Aliquota ordinaria"_s},
                                      {u"IVA_ALIQUOTA"_s, 22}}));
    return invoice;
}

QString outputFile(const QString &name)
{
    static const QTemporaryDir own;
    const QString kept = qEnvironmentVariable("MAGAZZINO_TEST_OUTPUT");
    return QDir(kept.isEmpty() ? own.path() : kept).absoluteFilePath(name);
}

QStringList pdfPages(const QString &file)
{
    QStringList pages = outputOf(u"pdftotext"_s, {u"-layout"_s, file, u"-"_s}).split(u'\f');
    pages.removeLast(); // what is behind the last page's end
    return pages;
}

QString rawPdfText(const QString &file)
{
    return outputOf(u"pdftotext"_s, {u"-raw"_s, file, u"-"_s});
}

QString pdfText(const QString &file)
{
    return outputOf(u"pdftotext"_s, {u"-layout"_s, file, u"-"_s}).simplified();
}

} // namespace test
