#include "tests/report/Prints.h"

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
    QVariantMap header = fields(columns);
    header.insert(changes);
    return header;
}

QVariantMap row(int number, const QVariantMap &more)
{
    const QString text = u"CODICE=ART-%1|DESCRIZIONE=Articolo numero %2|QUANTITA=%2|UM=PZ|TIPO_RIGA=Articolo"_s;
    QVariantMap columns = fields(text.arg(number, 3, 10, QLatin1Char('0')).arg(number));
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
    QVariantMap all = fields(u"TIPO_PAGAMENTO=Ricevuta bancaria 30 gg|SCADENZA_PAGAMENTO=2026-04-30|PAGATO=False|"
                             "FC_ABILITATO=False|IVA_ESENTE=False|TOTALE_IMPONIBILE=%1|TOTALE_IMPOSTA=%2|"
                             "TOTALE_DOCUMENTO=%3"_s.arg(10.0 * rows)
                                 .arg(2.2 * rows)
                                 .arg(12.2 * rows));
    all.insert(header);
    const int invoice = insertInto(connection, u"FATT_ACC"_s, documentHeader(all));
    for (int number = 1; number <= rows; ++number)
        insertInvoiceRow(
            connection, invoice,
            row(number, fields(u"PREZZO=12.5|SCONTO=20|QUANTITA=1|IMPORTO=10|IVA_IDALIQUOTA_IVA=1|IVA_CODICE=22|"
                               "IVA_DESCRIZIONE=Aliquota ordinaria|IVA_ALIQUOTA=22"_s)));
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
    return pdfPages(file).join(u' ').simplified();
}

} // namespace test
