#include "magazzino/documents/DocumentRow.h"
#include "magazzino/fatturapa/Cifre.h"
#include "magazzino/fatturapa/Controlli.h"
#include "magazzino/fatturapa/Lettura.h"
#include "magazzino/fatturapa/Scrittura.h"
#include "magazzino/fatturapa/Testi.h"
#include "magazzino/reports/MMGStampe.h"
#include "tests/magazzino/fatture/InvoiceFile.h"
#include "tests/magazzino/fatture/PrintedInvoice.h"
#include "tests/report/Prints.h"
#include "tests/support/Documents.h"
#include "tests/support/TestMain.h"

#include <QCheckBox>
#include <QDialog>
#include <QFile>
#include <QLineEdit>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;
using fatturapa::Record;

namespace {

/// A change of the sound invoice: the value of a column in one of the records.
struct Change
{
    QString record;
    QString column;
    QVariant value;
};

fatturapa::Dati soundInvoice(const QList<Change> &changes = {})
{
    QHash<QString, QHash<QString, QVariant>> all = {
        {u"testata"_s,
         {{u"NUMERO"_s, 12},
          {u"ANNO"_s, 2026},
          {u"DATA"_s, QDate(2026, 3, 2)},
          {u"CLI_CODICE"_s, u"C1"_s},
          {u"CLI_RAGIONESOCIALE"_s, u"Rossi S.r.l."_s},
          {u"CLI_INDIRIZZO"_s, u"Via Roma, 1"_s},
          {u"CLI_CITTA"_s, u"Padova"_s},
          {u"CLI_CAP"_s, u"35121"_s},
          {u"CLI_PROVINCIA"_s, u"PD"_s},
          {u"CLI_PARTITAIVA"_s, u"00743110157"_s},
          {u"TIPO_TRASPORTO"_s, u"Vettore"_s},
          {u"CAUSALE_TRASPORTO"_s, u"Vendita"_s},
          {u"TOTALE_DOCUMENTO"_s, 24.4}}},
        {u"riga"_s,
         {{u"TIPO_RIGA"_s, u"Articolo"_s},
          {u"CODICE"_s, u"A1"_s},
          {u"DESCRIZIONE"_s, u"Vite"_s},
          {u"QUANTITA"_s, 2},
          {u"UM"_s, u"PZ"_s},
          {u"PREZZO"_s, 10},
          {u"IMPORTO"_s, 20},
          {u"IVA_IDALIQUOTA_IVA"_s, 1},
          {u"IVA_CODICE"_s, u"22"_s},
          {u"IVA_ALIQUOTA"_s, 22}}},
        {u"azienda"_s,
         {{u"RAGIONESOCIALE"_s, u"Bianchi S.p.A."_s},
          {u"INDIRIZZO"_s, u"Via Milano, 2"_s},
          {u"CITTA"_s, u"Vicenza"_s},
          {u"CAP"_s, u"36100"_s},
          {u"PROVINCIA"_s, u"VI"_s},
          {u"PARTITAIVA"_s, u"01234567897"_s},
          {u"REGIMEFISCALE"_s, u"RF01"_s}}},
        {u"cliente"_s, {{u"CODICE"_s, u"C1"_s}, {u"CODICEDESTINATARIO"_s, u"ABC1234"_s}}},
        {u"vettore"_s, {}},
        {u"pagamento"_s, {{u"MODALITA"_s, u"MP01"_s}}},
        {u"aliquota"_s, {{u"IDALIQUOTA_IVA"_s, 1}}},
        {u"opzioni"_s, {{u"suffisso"_s, u"/ACC"_s}}},
    };
    for (const Change &change : changes)
        all[change.record].insert(change.column, change.value);
    // The invoice says what the customer's record says, where nothing else is wanted.
    const QHash<QString, QVariant> header = all[u"testata"_s];
    for (auto column = header.begin(); column != header.end(); ++column) {
        if (column.key().startsWith(u"CLI_"_s) && !all[u"cliente"_s].contains(column.key().mid(4)))
            all[u"cliente"_s].insert(column.key().mid(4), column.value());
    }
    fatturapa::Dati data;
    data.testata = Record(all[u"testata"_s]);
    data.righe = {Record(all[u"riga"_s])};
    data.azienda = Record(all[u"azienda"_s]);
    data.cliente = Record(all[u"cliente"_s]);
    data.vettore = Record(all[u"vettore"_s]);
    data.tipoPagamento = Record(all[u"pagamento"_s]);
    data.aliquote = {{1, Record(all[u"aliquota"_s])}};
    data.opzioni.suffisso = all[u"opzioni"_s].value(u"suffisso"_s).toString();
    data.opzioni.naturaEsente = all[u"opzioni"_s].value(u"esente"_s, u"N4"_s).toString();
    data.opzioni.numerazioneUnica = all[u"opzioni"_s].value(u"unica"_s).toBool();
    data.numeroDoppio = all[u"opzioni"_s].value(u"doppio"_s).toBool();
    data.numeroInVendita = all[u"opzioni"_s].value(u"venduta"_s).toBool();
    data.oggi = QDate(2026, 3, 2);
    data.progressivo = u"00001"_s;
    return data;
}

QStringList found(const fatturapa::Composizione &composed)
{
    QStringList lines;
    for (const fatturapa::Riscontro &finding : composed.riscontri)
        lines.append((finding.blocca ? u"!"_s : u"?"_s) + finding.codice + u' ' + finding.campo);
    return lines;
}

} // namespace

class TestElectronicInvoice : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void texts_data();
    void texts();
    void findings_data();
    void findings();
    void fileNames();
    void demonstrationCustomersPass();
    void randomInvoices();

private:
    static void comparePrint(const test::Workplace &workplace, int id, const test::Element &invoice);
};

void TestElectronicInvoice::texts_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("written");
    QTest::addColumn<QString>("refused");
    QTest::newRow("Latin-1 stays") << u"Ø 8 × 30 – è «così»"_s << u"Ø 8 × 30 - è «così»"_s << QString();
    QTest::newRow("signs") << u"100 € “oggi” l’anno… •"_s << u"100 EUR \"oggi\" l'anno... -"_s << QString();
    QTest::newRow("accents that Latin-1 lacks") << u"Škoda Łódź ﬁne"_s << u"Skoda Lódz fine"_s << QString();
    QTest::newRow("accents typed apart") << u"perche\u0301"_s << u"perché"_s << QString();
    QTest::newRow("lines") << u" una\r\ndue\ntre\t "_s << u"una due tre"_s << QString();
    QTest::newRow("other scripts") << u"日本 A 日"_s << u"A"_s << u"日本"_s;
}

void TestElectronicInvoice::texts()
{
    QFETCH(QString, text);
    const fatturapa::TestoLatino written = fatturapa::latino(text);
    QTEST(written.testo, "written");
    QTEST(written.rifiutati, "refused");
    QVERIFY(!written.controllo);
    QVERIFY(fatturapa::latino(text + QChar(7)).controllo);
}

void TestElectronicInvoice::findings_data()
{
    QTest::addColumn<QList<Change>>("changes");
    QTest::addColumn<QString>("finding");
    const auto row = [](const char *name, const QList<Change> &changes, const QString &finding) {
        QTest::newRow(name) << changes << finding;
    };
    row("sound", {}, {});
    row("no regime", {{u"azienda"_s, u"REGIMEFISCALE"_s, {}}}, u"! txtRegimeFiscale"_s);
    row("regime that is none", {{u"azienda"_s, u"REGIMEFISCALE"_s, u"RF03"_s}}, u"! txtRegimeFiscale"_s);
    row("our VAT number", {{u"azienda"_s, u"PARTITAIVA"_s, u"01234567890"_s}}, u"!00301 txtPartitaIVA"_s);
    row("REA without its state", {{u"azienda"_s, u"REAUFFICIO"_s, u"VI"_s}, {u"azienda"_s, u"REANUMERO"_s, u"1"_s}},
        u"! txtStatoLiquidazione"_s);
    row("neither tax code", {{u"testata"_s, u"CLI_PARTITAIVA"_s, {}}}, u"!00417 txtPartitaIVA"_s);
    row("their VAT number", {{u"testata"_s, u"CLI_PARTITAIVA"_s, u"00743110158"_s}}, u"!00305 txtPartitaIVA"_s);
    row("their tax code", {{u"testata"_s, u"CLI_CODICEFISCALE"_s, u"RSSMRA85T10A562T"_s}},
        u"!00306 txtCodiceFiscale"_s);
    row("recipient", {{u"cliente"_s, u"CODICEDESTINATARIO"_s, u"ABC123"_s}}, u"!00427 txtCodiceDestinatario"_s);
    row("no recipient", {{u"cliente"_s, u"CODICEDESTINATARIO"_s, {}}}, u"? txtCodiceDestinatario"_s);
    row("mail", {{u"cliente"_s, u"CODICEDESTINATARIO"_s, {}}, {u"cliente"_s, u"PEC"_s, u"rossi"_s}}, u"! txtPec"_s);
    row("ourselves", {{u"testata"_s, u"CLI_PARTITAIVA"_s, u"01234567897"_s}}, u"!00471 txtPartitaIVA"_s);
    row("postcode", {{u"testata"_s, u"CLI_CAP"_s, u"3512"_s}}, u"! txtCap"_s);
    row("postcode that the customer's record has right",
        {{u"testata"_s, u"CLI_CAP"_s, u"3512"_s}, {u"cliente"_s, u"CAP"_s, u"35121"_s}}, u"! cmdSelezionaCliente"_s);
    row("recipient of other countries", {{u"cliente"_s, u"CODICEDESTINATARIO"_s, u"XXXXXXX"_s}},
        u"! txtCodiceDestinatario"_s);
    row("unknown recipient that was typed", {{u"cliente"_s, u"CODICEDESTINATARIO"_s, u"0000000"_s}},
        u"? txtCodiceDestinatario"_s);
    row("our tax code", {{u"azienda"_s, u"CODICEFISCALE"_s, u"00743110157"_s}}, u"!00471 txtPartitaIVA"_s);
    row("before the format", {{u"testata"_s, u"DATA"_s, QDate(1969, 12, 31)}}, u"! txtData"_s);
    row("number twice", {{u"opzioni"_s, u"doppio"_s, true}}, u"!00404 txtNumero"_s);
    row("number of a sale, one sequence", {{u"opzioni"_s, u"unica"_s, true}, {u"opzioni"_s, u"venduta"_s, true}},
        u"!00404 txtNumero"_s);
    row("suffix of digits", {{u"opzioni"_s, u"suffisso"_s, u"1"_s}}, u"!00404 FATT_XML_SUFFISSO"_s);
    row("rate that is a share", {{u"riga"_s, u"IVA_ALIQUOTA"_s, 0.22}, {u"testata"_s, u"TOTALE_DOCUMENTO"_s, 20.04}},
        u"!00424 txtAliquota"_s);
    row("nature of the option",
        {{u"testata"_s, u"IVA_ESENTE"_s, u"True"_s},
         {u"testata"_s, u"TOTALE_DOCUMENTO"_s, 20},
         {u"opzioni"_s, u"esente"_s, u"N2"_s}},
        u"!00445 FATT_XML_NATURA_ESENTE"_s);
    row("country", {{u"testata"_s, u"CLI_NAZIONE"_s, u"Freedonia"_s}}, u"! txtNazioneIso"_s);
    row("future", {{u"testata"_s, u"DATA"_s, QDate(2026, 3, 3)}}, u"!00403 txtData"_s);
    row("same number", {{u"opzioni"_s, u"suffisso"_s, u""_s}, {u"opzioni"_s, u"venduta"_s, true}},
        u"!00404 FATT_XML_SUFFISSO"_s);
    row("number that may come again", {{u"opzioni"_s, u"suffisso"_s, u""_s}}, u"?00404 FATT_XML_SUFFISSO"_s);
    row("no rate", {{u"riga"_s, u"IVA_IDALIQUOTA_IVA"_s, {}}}, u"!00400 gridRigheFattura"_s);
    row("no nature", {{u"riga"_s, u"IVA_ALIQUOTA"_s, 0}, {u"testata"_s, u"TOTALE_DOCUMENTO"_s, 20}},
        u"!00400 txtNatura"_s);
    row("nature that is refused",
        {{u"riga"_s, u"IVA_ALIQUOTA"_s, 0},
         {u"aliquota"_s, u"NATURA"_s, u"N3"_s},
         {u"testata"_s, u"TOTALE_DOCUMENTO"_s, 20}},
        u"!00445 txtNatura"_s);
    row("amount", {{u"riga"_s, u"IMPORTO"_s, 21}}, u"!00423 gridRigheFattura"_s);
    row("total", {{u"testata"_s, u"TOTALE_DOCUMENTO"_s, 24.46}}, u"! gridRigheFattura"_s);
    row("sign", {{u"riga"_s, u"DESCRIZIONE"_s, u"日本"_s}}, u"! gridRigheFattura"_s);
    row("discount", {{u"riga"_s, u"SCONTO"_s, 101}}, u"! gridRigheFattura"_s);
    row("no method", {{u"pagamento"_s, u"MODALITA"_s, {}}}, u"? txtModalita"_s);
    row("transfer without account", {{u"pagamento"_s, u"MODALITA"_s, u"MP05"_s}}, u"? txtIban"_s);
    row("carrier without number", {{u"testata"_s, u"VETT_RAGIONESOCIALE"_s, u"Verdi"_s}}, u"? txtPartitaIVA"_s);
    row("weight", {{u"testata"_s, u"PESO"_s, 10000}}, u"? txtPeso"_s);
    row("parcels", {{u"testata"_s, u"COLLI"_s, 10000}}, u"? txtColli"_s);
    row("destination", {{u"testata"_s, u"DEST_CITTA"_s, u"Lecce"_s}}, u"? txtDestIndirizzo"_s);
}

void TestElectronicInvoice::findings()
{
    QFETCH(QList<Change>, changes);
    QFETCH(QString, finding);
    const fatturapa::Composizione composed = fatturapa::esamina(soundInvoice(changes));
    const QStringList lines = found(composed);
    QVERIFY2(finding.isEmpty() ? lines.isEmpty() : lines.contains(finding), qPrintable(lines.join(u'\n')));
    QCOMPARE(fatturapa::ammette(composed.riscontri), !finding.startsWith(u'!'));
    for (const fatturapa::Riscontro &one : composed.riscontri)
        QVERIFY(one.testo.size() > 10);
}

void TestElectronicInvoice::fileNames()
{
    const fatturapa::Fattura invoice = fatturapa::esamina(soundInvoice()).fattura;
    const QString name = fatturapa::nomeFile(invoice);
    QCOMPARE(name, u"IT01234567897_00001.xml"_s);
    QVERIFY(fatturapa::controllaFile(name, false, 5'000'000).isEmpty());
    QCOMPARE(fatturapa::controllaFile(name, true, 5'000'001).size(), 2);
    QCOMPARE(fatturapa::controllaFile(u"IT01234567897_000001.xml"_s, false, 1).value(0).codice, u"00001"_s);
}

// Whatever is chosen for an invoice in the demonstration firm, nothing is missing.
void TestElectronicInvoice::demonstrationCustomersPass()
{
    const test::Workplace workplace;
    const auto rows = [&](const QString &table) { return workplace.database().select(u"SELECT * FROM "_s + table); };
    const auto records = [&](const QString &table) { return fatturapa::recordDi(rows(table)); };
    const data::Rows customers = rows(u"CLIENTI"_s);
    const QList<Record> payments = records(u"TIPI_PAGAMENTO"_s);
    const QList<Record> carriers = records(u"VETTORI"_s);
    const QList<Record> rates = records(u"ALIQUOTE_IVA"_s);
    fatturapa::Dati data = soundInvoice();
    data.azienda = records(u"AZIENDA"_s).value(0);
    data.righe.clear();
    for (const Record &rate : rates) {
        data.aliquote.insert(rate.intero(u"IDALIQUOTA_IVA"_s), rate);
        data.righe.append(Record({{u"TIPO_RIGA"_s, u"Articolo"_s},
                                  {u"DESCRIZIONE"_s, u"Vite"_s},
                                  {u"QUANTITA"_s, 1},
                                  {u"PREZZO"_s, 100},
                                  {u"IMPORTO"_s, 100},
                                  {u"IVA_IDALIQUOTA_IVA"_s, rate.intero(u"IDALIQUOTA_IVA"_s)},
                                  {u"IVA_ALIQUOTA"_s, rate.numero(u"ALIQUOTA"_s)}}));
    }
    for (qsizetype i = 0; i < customers.size(); ++i) {
        QHash<QString, QVariant> header = {{u"NUMERO"_s, 1},
                                           {u"DATA"_s, data.oggi},
                                           {u"VETT_RAGIONESOCIALE"_s, u"Vettore"_s},
                                           {u"TOTALE_DOCUMENTO"_s, 436}};
        for (const data::Column &column : customers.columns())
            header.insert(u"CLI_"_s + column.name, customers.at(i, column.name));
        data.testata = Record(header);
        data.cliente = fatturapa::recordDi(customers)[i];
        data.tipoPagamento = payments[i % payments.size()];
        data.vettore = carriers[i % carriers.size()];
        const fatturapa::Composizione composed = fatturapa::esamina(data);
        QVERIFY2(fatturapa::ammette(composed.riscontri),
                 qPrintable(data.cliente.testo(u"RAGIONESOCIALE"_s) + found(composed).join(u", "_s)));
    }
}

namespace {

/// Invoices of all kinds, made through the program's own form; equal in every run.
class RandomInvoices
{
public:
    explicit RandomInvoices(test::Workplace &workplace)
        : workplace_(workplace)
        , invoice_(workplace, test::accompanyingInvoice())
        , random_(20261121)
    {
        prepareRegisters();
    }

    /// Saves one; `refused` tells whether it must not become a file.
    int save(bool &refused)
    {
        refused = false;
        invoice_.trigger(u"actNuovo"_s);
        invoice_.fillHeader();
        invoice_.choose(u"actSelezionaCliente"_s, test::choosing(customers_[pick(customers_.size())]));
        if (pick(2) == 0)
            invoice_.choose(u"cmdSelezionaVettore"_s, test::choosing(carrier_, carrier_.left(1)));
        exempt_ = pick(8) == 0;
        tick(u"chkIVAEsente"_s, exempt_);
        tick(u"chkInizioTrasporto"_s, pick(2) == 0);
        enterDestination();
        enter(u"txtColli"_s, QStringList{u"0"_s, u"1"_s, u"12"_s, u"9999"_s, u"10000"_s}[pick(5)]);
        enter(u"txtPeso"_s, QStringList{u"0"_s, u"12,50"_s, u"9999,99"_s, u"10000"_s, u"0,01"_s}[pick(5)]);
        enter(u"txtAspettoBeni"_s, QStringList{u"Scatole"_s, u"Colli « ø »"_s, u"A vista – 2 €"_s}[pick(3)]);
        QList<DocumentRow> rows;
        const int count = 1 + pick(8);
        for (int i = 0; i < count; ++i)
            rows.append(makeRow(refused));
        rows.append(article(u"Ultima riga"_s, 1));
        invoice_.grid()->rowsModel().setRows(rows);
        invoice_.form().DataChanged();
        invoice_.save();
        return invoice_.form().IdRecord();
    }

private:
    int pick(qsizetype count) { return random_.bounded(static_cast<int>(count)); }

    // One address of each kind; what they lack is never what an invoice needs.
    void prepareRegisters()
    {
        data::Connection &database = workplace_.database();
        const auto set = [&](const QString &name, const QString &columns) {
            database.execute(u"UPDATE CLIENTI SET %1 WHERE RAGIONESOCIALE = '%2'"_s.arg(columns, name));
            customers_.append(name);
        };
        set(u"Arredo Bagno Alpi S.r.l."_s, u"CODICEDESTINATARIO = NULL, PEC = NULL"_s);
        set(u"Azzurra Casalinghi S.n.c."_s, u"NAZIONE = 'Germania', NAZIONEISO = 'DE', PARTITAIVA = 'DE123456788', "
                                            "CODICEFISCALE = NULL, CAP = '8033', PROVINCIA = NULL"_s);
        set(u"Agostini Lucia"_s, u"CODICEFISCALE = 'rssmra85t10a562s'"_s);
        for (const auto &[code, rate, nature] :
             {std::tuple{u"20"_s, 20.0, QString()},
              {u"2S"_s, 20.0, QString()}, // shares its summary in the file, and has its own on paper
              {u"E1"_s, 0.0, u"N3.1"_s},
              {u"ZZ"_s, 0.0, QString()}})
            rates_.append(test::insertInto(
                database, u"ALIQUOTE_IVA"_s,
                {{u"CODICE"_s, code}, {u"DESCRIZIONE"_s, code}, {u"ALIQUOTA"_s, rate}, {u"NATURA"_s, nature}}));
        withoutNature_ = rates_.takeLast();
        for (const QString &line :
             workplace_.lines(u"SELECT IDALIQUOTA_IVA FROM ALIQUOTE_IVA WHERE CODICE IN ('22', '10', '04', 'ES')"_s))
            rates_.append(line.toInt());
        carrier_ = workplace_.lines(u"SELECT RAGIONESOCIALE FROM VETTORI ORDER BY 1"_s).value(0);
        unit_ = workplace_.lines(u"SELECT IDUM FROM UM WHERE UM = 'PZ'"_s).value(0).toInt();
    }

    void tick(const QString &name, bool checked)
    {
        if (invoice_.control<QCheckBox>(name)->isChecked() != checked)
            QTest::keyClick(invoice_.control<QCheckBox>(name), Qt::Key_Space);
    }

    // None, one that the file leaves out, and whole ones.
    void enterDestination()
    {
        const QList<QStringList> all = {{},
                                        {u"Cantiere"_s, u"Via Nord – 1"_s},
                                        {u"Cantiere"_s, u"Località Łęka"_s, u"Forlì"_s, u"47121"_s, u"FC"_s},
                                        {u"Lager"_s, u"Straße 5"_s, u"Köln"_s, u"50667"_s, {}, u"Germania"_s}};
        const QStringList names = {u"RagioneSociale"_s, u"Indirizzo"_s, u"Citta"_s, u"Cap"_s,
                                   u"Provincia"_s,      u"Nazione"_s};
        const QStringList texts = all[pick(all.size())];
        for (qsizetype i = 0; i < texts.size(); ++i)
            enter(u"txtDest"_s + names[i], texts[i]);
    }

    void enter(const QString &name, const QString &text)
    {
        auto *edit = invoice_.control<QLineEdit>(name);
        QTest::keyClick(edit, Qt::Key_A, Qt::ControlModifier);
        test::type(edit, text);
    }

    double cents(int most) { return pick(most) / 100.0; }

    DocumentRow article(const QString &text, qsizetype rate)
    {
        DocumentRow row;
        row.tipo = tipoRiga::servizio;
        row.codice = u"S-1"_s;
        row.descrizione = text;
        row.prezzo = pick(20) == 0 ? 99'999.99 : cents(100'000);
        row.sconto = pick(3) == 0 ? cents(10'001) : 0;
        row.quantita = pick(4) == 0 ? 1 : cents(30'000);
        row.idAliquotaIVA = rates_[rate % rates_.size()];
        row.idUM = unit_;
        row.um = u"PZ"_s;
        return row;
    }

    DocumentRow makeRow(bool &refused)
    {
        const QStringList texts = {u"Vite Ø 8 × 30 – zincata"_s, u"Riga con €, “virgolette” & <segni>"_s,
                                   u"Due\nrighe\r\ndi testo"_s, u"È così, perché no?"_s, QString(950, u'x')};
        DocumentRow row = article(texts[pick(texts.size())], pick(rates_.size()));
        switch (pick(60)) {
        case 0:
        case 1:
        case 2:
        case 8:
        case 9:
            row = {};
            row.tipo = tipoRiga::testo;
            row.descrizione = texts[pick(texts.size())];
            break;
        case 3:
        case 4:
        case 10:
        case 11:
            row.tipo = tipoRiga::nonImponibile;
            row.codice.clear();
            row.um.clear();
            row.idUM.reset();
            row.idAliquotaIVA.reset();
            break;
        case 5:
            row.descrizione = u"Articolo 日本"_s;
            refused = true;
            break;
        case 6:
            row.idAliquotaIVA.reset();
            refused |= !exempt_;
            break;
        case 7:
            row.idAliquotaIVA = withoutNature_;
            refused |= !exempt_;
            break;
        default:
            break;
        }
        return row;
    }

    test::Workplace &workplace_;
    test::Document invoice_;
    QRandomGenerator random_;
    QStringList customers_;
    QString carrier_;
    QList<int> rates_;
    int withoutNature_ = -1;
    int unit_ = -1;
    bool exempt_ = false;
};

QString progressive(int number)
{
    return u"%1"_s.arg(number, 5, 36, QChar(u'0'));
}

} // namespace

// Paper, file and database say the same: figures, and the rows' texts but for the signs that the file writes out.
void TestElectronicInvoice::comparePrint(const test::Workplace &workplace, int id, const test::Element &invoice)
{
    const QString pdf = test::outputFile(u"fattura.pdf"_s);
    StampaFatturaAccompagnatoria(id, pdf, TKxReportDestination::FilePDF);
    const QStringList faults = test::printFaults(test::pdfPages(pdf).join(u'\n'), invoice);
    QVERIFY2(faults.isEmpty(), qPrintable(faults.join(u'\n')));
    const auto dense = [](QString text) { return text.remove(QRegularExpression(u"\\s"_s)); };
    const QString printed = dense(test::rawPdfText(pdf));
    QString written;
    for (const test::Element *row : invoice.all(u"FatturaElettronicaBody/DatiBeniServizi/DettaglioLinee"_s))
        written += row->first(u"Descrizione"_s);
    for (const test::Element *reason :
         invoice.all(u"FatturaElettronicaBody/DatiGenerali/DatiGeneraliDocumento/Causale"_s))
        written += reason->text;
    written = dense(written);
    for (const QString &text :
         workplace.lines(u"SELECT DESCRIZIONE FROM FATT_ACC_DETT WHERE IDFATT_ACC = %1"_s.arg(id))) {
        QVERIFY2(printed.contains(dense(text)), qPrintable(text));
        QVERIFY2(written.contains(dense(fatturapa::latino(text).testo)), qPrintable(text));
    }
}

// MAGAZZINO_INVOICES says how many; the thousand takes minutes.
void TestElectronicInvoice::randomInvoices()
{
    const int count = std::max(1, qEnvironmentVariable("MAGAZZINO_INVOICES", u"100"_s).toInt());
    test::Workplace workplace;
    RandomInvoices random(workplace);
    const QTemporaryDir folder;
    QStringList files;
    int refusals = 0;
    for (int i = 1; i <= count; ++i) {
        bool mustBeRefused = false;
        const int id = random.save(mustBeRefused);
        const fatturapa::Dati data = fatturapa::leggi(id, progressive(i));
        const fatturapa::Composizione composed = fatturapa::esamina(data);
        QVERIFY2(fatturapa::ammette(composed.riscontri) != mustBeRefused,
                 qPrintable(u"invoice %1: "_s.arg(i) + found(composed).join(u", "_s)));
        if (mustBeRefused) {
            ++refusals;
            continue;
        }
        const QByteArray bytes = fatturapa::scrivi(composed.fattura);
        const test::Element invoice = test::readXml(bytes);
        QCOMPARE(test::sumFaults(invoice), QStringList());
        const QString total =
            workplace
                .lines(u"SELECT CAST(TOTALE_DOCUMENTO AS VARCHAR(20)) FROM FATT_ACC WHERE IDFATT_ACC = %1"_s.arg(id))
                .value(0);
        QCOMPARE(invoice.first(u"FatturaElettronicaBody/DatiGenerali/DatiGeneraliDocumento/ImportoTotaleDocumento"_s),
                 total);
        // Every fifth is printed, too.
        if (i % 5 == 0)
            comparePrint(workplace, id, invoice);
        files.append(folder.filePath(fatturapa::nomeFile(composed.fattura)));
        QFile file(files.last());
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    }
    qInfo("%d invoices: %d files, %d refused", count, static_cast<int>(files.size()), refusals);
    QVERIFY(files.size() > count / 2 && (count < 50 || refusals > 0));
    const QString schemas = qEnvironmentVariable("FATTURAPA_SCHEMA_DIR");
    if (schemas.isEmpty())
        QSKIP("FATTURAPA_SCHEMA_DIR does not name the folder with the official schema: THE FILES WERE NOT VALIDATED");
    QCOMPARE(test::schemaFaults(files, schemas), QStringList());
    const QStringList otherReader = test::otherReaderFaults(files);
    if (otherReader.value(0) == test::noOtherReader)
        QSKIP("python3-a38 is not installed: NO SECOND READER HAS SEEN THE FILES");
    QVERIFY2(otherReader.isEmpty(), qPrintable(otherReader.join(u'\n')));
}

static const test::Registered<TestElectronicInvoice> registered;
#include "test_electronic_invoice.moc"
