#include "magazzino/documents/DocumentRow.h"
#include "magazzino/fatturapa/Cifre.h"
#include "magazzino/fatturapa/Controlli.h"
#include "magazzino/fatturapa/Lettura.h"
#include "magazzino/fatturapa/Scrittura.h"
#include "magazzino/fatturapa/Testi.h"
#include "tests/magazzino/fatture/InvoiceFile.h"
#include "tests/magazzino/fatture/PrintedInvoice.h"
#include "tests/report/Prints.h"

using fatturapa::Record;

namespace {

const QString general = u"FatturaElettronicaBody/DatiGenerali/DatiGeneraliDocumento/"_s;
using Values = QHash<QString, QVariant>;

Values fields(const QString &text)
{
    const QVariantMap values = test::fields(text);
    return {values.keyValueBegin(), values.keyValueEnd()};
}

// With `changes` as "RECORD.COLUMN=value|..."; a column without "=" is NULL.
fatturapa::Dati soundInvoice(const QString &changes = {})
{
    QHash<QString, Values> all = {
        {u"testata"_s, fields(u"NUMERO=12|ANNO=2026|DATA=2026-03-02|CLI_CODICE=C1|CLI_RAGIONESOCIALE=Rossi S.r.l.|"
                              "CLI_INDIRIZZO=Via Roma, 1|CLI_CITTA=Padova|CLI_CAP=35121|CLI_PROVINCIA=PD|"
                              "CLI_PARTITAIVA=00743110157|TIPO_TRASPORTO=Vettore|CAUSALE_TRASPORTO=Vendita|"
                              "TOTALE_DOCUMENTO=24.4"_s)},
        {u"riga"_s, fields(u"TIPO_RIGA=Articolo|CODICE=A1|DESCRIZIONE=Vite|QUANTITA=2|UM=PZ|PREZZO=10|IMPORTO=20|"
                           "IVA_IDALIQUOTA_IVA=1|IVA_CODICE=22|IVA_ALIQUOTA=22"_s)},
        {u"azienda"_s, fields(u"RAGIONESOCIALE=Bianchi S.p.A.|INDIRIZZO=Via Milano, 2|CITTA=Vicenza|CAP=36100|"
                              "PROVINCIA=VI|PARTITAIVA=01234567897|REGIMEFISCALE=RF01"_s)},
        {u"cliente"_s, fields(u"CODICE=C1|CODICEDESTINATARIO=ABC1234"_s)},
        {u"pagamento"_s, fields(u"MODALITA=MP01"_s)},
        {u"aliquota"_s, fields(u"IDALIQUOTA_IVA=1"_s)},
        {u"opzioni"_s, fields(u"suffisso=/ACC"_s)}};
    for (const QString &change : changes.split(u'|', Qt::SkipEmptyParts)) {
        const QString column = change.section(u'.', 1).section(u'=', 0, 0);
        const QVariant value = change.contains(u'=') ? change.section(u'=', 1) : QVariant();
        all[change.section(u'.', 0, 0)].insert(column, value);
    }
    // The invoice says what the customer's record says, where nothing else is wanted.
    const Values header = all[u"testata"_s];
    for (auto column = header.begin(); column != header.end(); ++column) {
        if (column.key().startsWith(u"CLI_"_s) && !all[u"cliente"_s].contains(column.key().mid(4)))
            all[u"cliente"_s].insert(column.key().mid(4), column.value());
    }
    const Values options = all[u"opzioni"_s];
    fatturapa::Dati data;
    data.testata = Record(all[u"testata"_s]);
    data.righe = {Record(all[u"riga"_s])};
    data.azienda = Record(all[u"azienda"_s]);
    data.cliente = Record(all[u"cliente"_s]);
    data.tipoPagamento = Record(all[u"pagamento"_s]);
    data.aliquote = {{1, Record(all[u"aliquota"_s])}};
    data.opzioni.suffisso = options.value(u"suffisso"_s).toString();
    data.opzioni.naturaEsente = options.value(u"esente"_s, u"N4"_s).toString();
    data.opzioni.numerazioneUnica = options.value(u"unica"_s).toBool();
    data.numeroDoppio = options.value(u"doppio"_s).toBool();
    data.numeroInVendita = options.value(u"venduta"_s).toBool();
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
        for (int left = 1 + pick(8); left > 0; --left)
            rows.append(makeRow(refused));
        rows.append(article(u"Ultima riga"_s, 1));
        invoice_.grid()->rowsModel().setRows(rows);
        invoice_.saveAgain();
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
        for (const QString &rate : {u"CODICE=20|ALIQUOTA=20"_s,
                                    u"CODICE=2S|ALIQUOTA=20"_s, // shares its summary in the file, not on paper
                                    u"CODICE=E1|ALIQUOTA=0|NATURA=N3.1"_s, u"CODICE=ZZ|ALIQUOTA=0"_s})
            rates_.append(test::insertInto(database, u"ALIQUOTE_IVA"_s, rate));
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
        const int kind = pick(60);
        if (kind < 5) {
            row = {};
            row.tipo = tipoRiga::testo;
            row.descrizione = texts[pick(texts.size())];
        } else if (kind < 9) {
            row.tipo = tipoRiga::nonImponibile;
            row.codice.clear();
            row.um.clear();
            row.idUM.reset();
            row.idAliquotaIVA.reset();
        } else if (kind == 9) {
            row.descrizione = u"Articolo 日本"_s;
            refused = true;
        } else if (kind < 12) {
            row.idAliquotaIVA = kind == 10 ? std::nullopt : std::optional(withoutNature_);
            refused |= !exempt_;
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

} // namespace

class TestElectronicInvoice : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void texts_data()
    {
        test::table<QString, QString, QString>(
            {{"Latin-1 stays", u"Ø 8 × 30 – è «così»"_s, u"Ø 8 × 30 - è «così»"_s, {}},
             {"signs", u"100 € “oggi” l’anno… •"_s, u"100 EUR \"oggi\" l'anno... -"_s, {}},
             {"accents that Latin-1 lacks", u"Škoda Łódź ﬁne"_s, u"Skoda Lódz fine"_s, {}},
             {"accents typed apart", u"perche\u0301"_s, u"perché"_s, {}},
             {"lines", u" una\r\ndue\ntre\t "_s, u"una due tre"_s, {}},
             {"other scripts", u"日本 A 日"_s, u"A"_s, u"日本"_s}});
    }

    void texts()
    {
        const auto [text, written, refused] = test::row<QString, QString, QString>();
        const fatturapa::TestoLatino latin = fatturapa::latino(text);
        QCOMPARE(latin.testo, written);
        QCOMPARE(latin.rifiutati, refused);
        QVERIFY(!latin.controllo);
        QVERIFY(fatturapa::latino(text + QChar(7)).controllo);
    }

    void findings_data()
    {
        test::table<QString, QString>(
            {{"sound", {}, {}},
             {"no regime", u"azienda.REGIMEFISCALE"_s, u"! txtRegimeFiscale"_s},
             {"regime that is none", u"azienda.REGIMEFISCALE=RF03"_s, u"! txtRegimeFiscale"_s},
             {"our VAT number", u"azienda.PARTITAIVA=01234567890"_s, u"!00301 txtPartitaIVA"_s},
             {"REA without its state", u"azienda.REAUFFICIO=VI|azienda.REANUMERO=1"_s, u"! txtStatoLiquidazione"_s},
             {"neither tax code", u"testata.CLI_PARTITAIVA"_s, u"!00417 txtPartitaIVA"_s},
             {"their VAT number", u"testata.CLI_PARTITAIVA=00743110158"_s, u"!00305 txtPartitaIVA"_s},
             {"their tax code", u"testata.CLI_CODICEFISCALE=RSSMRA85T10A562T"_s, u"!00306 txtCodiceFiscale"_s},
             {"recipient", u"cliente.CODICEDESTINATARIO=ABC123"_s, u"!00427 txtCodiceDestinatario"_s},
             {"no recipient", u"cliente.CODICEDESTINATARIO"_s, u"? txtCodiceDestinatario"_s},
             {"mail", u"cliente.CODICEDESTINATARIO|cliente.PEC=rossi"_s, u"! txtPec"_s},
             {"ourselves", u"testata.CLI_PARTITAIVA=01234567897"_s, u"!00471 txtPartitaIVA"_s},
             {"postcode", u"testata.CLI_CAP=3512"_s, u"! txtCap"_s},
             {"postcode that the customer's record has right", u"testata.CLI_CAP=3512|cliente.CAP=35121"_s,
              u"! cmdSelezionaCliente"_s},
             {"recipient of other countries", u"cliente.CODICEDESTINATARIO=XXXXXXX"_s, u"! txtCodiceDestinatario"_s},
             {"unknown recipient that was typed", u"cliente.CODICEDESTINATARIO=0000000"_s,
              u"? txtCodiceDestinatario"_s},
             {"our tax code", u"azienda.CODICEFISCALE=00743110157"_s, u"!00471 txtPartitaIVA"_s},
             {"before the format", u"testata.DATA=1969-12-31"_s, u"! txtData"_s},
             {"number twice", u"opzioni.doppio=true"_s, u"!00404 txtNumero"_s},
             {"number of a sale, one sequence", u"opzioni.unica=true|opzioni.venduta=true"_s, u"!00404 txtNumero"_s},
             {"suffix of digits", u"opzioni.suffisso=1"_s, u"!00404 FATT_XML_SUFFISSO"_s},
             {"rate that is a share", u"riga.IVA_ALIQUOTA=0.22|testata.TOTALE_DOCUMENTO=20.04"_s,
              u"!00424 txtAliquota"_s},
             {"nature of the option", u"testata.IVA_ESENTE=True|testata.TOTALE_DOCUMENTO=20|opzioni.esente=N2"_s,
              u"!00445 FATT_XML_NATURA_ESENTE"_s},
             {"country", u"testata.CLI_NAZIONE=Freedonia"_s, u"! txtNazioneIso"_s},
             {"future", u"testata.DATA=2026-03-03"_s, u"!00403 txtData"_s},
             {"same number", u"opzioni.suffisso=|opzioni.venduta=true"_s, u"!00404 FATT_XML_SUFFISSO"_s},
             {"number that may come again", u"opzioni.suffisso="_s, u"?00404 FATT_XML_SUFFISSO"_s},
             {"no rate", u"riga.IVA_IDALIQUOTA_IVA"_s, u"!00400 gridRigheFattura"_s},
             {"no nature", u"riga.IVA_ALIQUOTA=0|testata.TOTALE_DOCUMENTO=20"_s, u"!00400 txtNatura"_s},
             {"nature that is refused", u"riga.IVA_ALIQUOTA=0|aliquota.NATURA=N3|testata.TOTALE_DOCUMENTO=20"_s,
              u"!00445 txtNatura"_s},
             {"amount", u"riga.IMPORTO=21"_s, u"!00423 gridRigheFattura"_s},
             {"total", u"testata.TOTALE_DOCUMENTO=24.46"_s, u"! gridRigheFattura"_s},
             {"sign", u"riga.DESCRIZIONE=日本"_s, u"! gridRigheFattura"_s},
             {"discount", u"riga.SCONTO=101"_s, u"! gridRigheFattura"_s},
             {"no method", u"pagamento.MODALITA"_s, u"? txtModalita"_s},
             {"transfer without account", u"pagamento.MODALITA=MP05"_s, u"? txtIban"_s},
             {"carrier without number", u"testata.VETT_RAGIONESOCIALE=Verdi"_s, u"? txtPartitaIVA"_s},
             {"weight", u"testata.PESO=10000"_s, u"? txtPeso"_s},
             {"parcels", u"testata.COLLI=10000"_s, u"? txtColli"_s},
             {"destination", u"testata.DEST_CITTA=Lecce"_s, u"? txtDestIndirizzo"_s}});
    }

    void findings()
    {
        const auto [changes, finding] = test::row<QString, QString>();
        const fatturapa::Composizione composed = fatturapa::esamina(soundInvoice(changes));
        const QStringList lines = found(composed);
        QVERIFY2(finding.isEmpty() ? lines.isEmpty() : lines.contains(finding), qPrintable(lines.join(u'\n')));
        QCOMPARE(fatturapa::ammette(composed.riscontri), !finding.startsWith(u'!'));
        for (const fatturapa::Riscontro &one : composed.riscontri)
            QVERIFY(one.testo.size() > 10);
    }

    void fileNames()
    {
        const fatturapa::Fattura invoice = fatturapa::esamina(soundInvoice()).fattura;
        const QString name = fatturapa::nomeFile(invoice);
        QCOMPARE(name, u"IT01234567897_00001.xml"_s);
        QVERIFY(fatturapa::controllaFile(name, false, 5'000'000).isEmpty());
        QCOMPARE(fatturapa::controllaFile(name, true, 5'000'001).size(), 2);
        QCOMPARE(fatturapa::controllaFile(u"IT01234567897_000001.xml"_s, false, 1).value(0).codice, u"00001"_s);
    }

    // Whatever is chosen for an invoice in the demonstration firm, nothing is missing.
    void demonstrationCustomersPass()
    {
        const test::Workplace workplace;
        const auto rows = [&](const QString &table) {
            return workplace.database().select(u"SELECT * FROM "_s + table);
        };
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
            Values row = fields(u"TIPO_RIGA=Articolo|DESCRIZIONE=Vite|QUANTITA=1|PREZZO=100|IMPORTO=100"_s);
            row.insert(u"IVA_IDALIQUOTA_IVA"_s, rate.intero(u"IDALIQUOTA_IVA"_s));
            row.insert(u"IVA_ALIQUOTA"_s, rate.numero(u"ALIQUOTA"_s));
            data.righe.append(Record(row));
        }
        for (qsizetype i = 0; i < customers.size(); ++i) {
            Values header = fields(u"NUMERO=1|VETT_RAGIONESOCIALE=Vettore|TOTALE_DOCUMENTO=436"_s);
            header.insert(u"DATA"_s, data.oggi);
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

    // MAGAZZINO_INVOICES says how many; the thousand takes minutes.
    void randomInvoices()
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
            const fatturapa::Dati data = fatturapa::leggi(id, u"%1"_s.arg(i, 5, 36, QChar(u'0')));
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
            QCOMPARE(
                workplace.lines(u"SELECT CAST(TOTALE_DOCUMENTO AS VARCHAR(20)) FROM FATT_ACC WHERE IDFATT_ACC = "_s +
                                QString::number(id)),
                QStringList(invoice.first(general + u"ImportoTotaleDocumento"_s)));
            // Every fifth is printed, too.
            if (i % 5 == 0)
                comparePrint(workplace, id, invoice);
            files.append(folder.filePath(fatturapa::nomeFile(composed.fattura)));
            core::saveFile(files.last(), bytes);
        }
        qInfo("%d invoices: %d files, %d refused", count, static_cast<int>(files.size()), refusals);
        QVERIFY(files.size() > count / 2 && (count < 50 || refusals > 0));
        const QString schemas = qEnvironmentVariable("FATTURAPA_SCHEMA_DIR");
        if (schemas.isEmpty())
            QSKIP(
                "FATTURAPA_SCHEMA_DIR does not name the folder with the official schema: THE FILES WERE NOT VALIDATED");
        QCOMPARE(test::schemaFaults(files, schemas), QStringList());
        const QStringList otherReader = test::otherReaderFaults(files);
        if (otherReader.value(0) == test::noOtherReader)
            QSKIP("python3-a38 is not installed: NO SECOND READER HAS SEEN THE FILES");
        QVERIFY2(otherReader.isEmpty(), qPrintable(otherReader.join(u'\n')));
    }

private:
    // Paper, file and database say the same: figures, and the rows' texts but for the signs that the file writes out.
    static void comparePrint(const test::Workplace &workplace, int id, const test::Element &invoice)
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
        for (const test::Element *reason : invoice.all(general + u"Causale"_s))
            written += reason->text;
        written = dense(written);
        for (const QString &text :
             workplace.lines(u"SELECT DESCRIZIONE FROM FATT_ACC_DETT WHERE IDFATT_ACC = %1"_s.arg(id))) {
            QVERIFY2(printed.contains(dense(text)), qPrintable(text));
            QVERIFY2(written.contains(dense(fatturapa::latino(text).testo)), qPrintable(text));
        }
    }
};

static const test::Registered<TestElectronicInvoice> registered;
#include "test_electronic_invoice.moc"
