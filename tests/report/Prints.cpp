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
    QVariantMap header = {{u"NUMERO"_s, 12},
                          {u"ANNO"_s, 2026},
                          {u"DATA"_s, QDate(2026, 3, 16)},
                          {u"CLI_CODICE"_s, u"CLI000007"_s},
                          {u"CLI_RAGIONESOCIALE"_s, u"Officine D'Amico & Figli"_s},
                          {u"CLI_INDIRIZZO"_s, u"Via Garibaldi 8"_s},
                          {u"CLI_CITTA"_s, u"Forlì"_s},
                          {u"CLI_CAP"_s, u"47121"_s},
                          {u"CLI_PROVINCIA"_s, u"FC"_s},
                          {u"CLI_NAZIONE"_s, u"Italia"_s},
                          {u"CLI_CODICEFISCALE"_s, u"DMCMRA70A01D704X"_s},
                          {u"CLI_PARTITAIVA"_s, u"01234567890"_s},
                          {u"DEST_RAGIONESOCIALE"_s, u"Cantiere nord"_s},
                          {u"DEST_INDIRIZZO"_s, u"Via Roma 12"_s},
                          {u"DEST_CITTA"_s, u"Cesena"_s},
                          {u"DEST_CAP"_s, u"47521"_s},
                          {u"VETT_CODICE"_s, u"VET000003"_s},
                          {u"VETT_RAGIONESOCIALE"_s, u"Trasporti Veloci S.r.l."_s},
                          {u"VETT_INDIRIZZO"_s, u"Viale dei Trasporti 5"_s},
                          {u"VETT_CITTA"_s, u"Padova"_s},
                          {u"TIPO_TRASPORTO"_s, u"A mezzo vettore"_s},
                          {u"ASPETTO_BENI"_s, u"Scatole di cartone"_s},
                          {u"CAUSALE_TRASPORTO"_s, u"Conto lavorazione"_s},
                          {u"COLLI"_s, 14},
                          {u"PESO"_s, 1234.5},
                          {u"PESO_UM"_s, u"KG"_s},
                          {u"DATA_INIZIO_TRASPORTO"_s, QDate(2026, 3, 17)},
                          {u"ORA_INIZIO_TRASPORTO"_s, QTime(8, 45)},
                          {u"NOTE"_s, u"Consegnare entro venerdì"_s}};
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

QString pdfText(const QString &file)
{
    return outputOf(u"pdftotext"_s, {u"-layout"_s, file, u"-"_s}).simplified();
}

QString pdfFacts(const QString &program, const QString &file)
{
    return outputOf(program, {file}).simplified();
}

} // namespace test
