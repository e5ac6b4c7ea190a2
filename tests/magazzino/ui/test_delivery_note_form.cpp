#include "tests/support/Fixtures.h"

class TestDeliveryNoteForm : public test::AtDocument
{
    Q_OBJECT
    Q_CLASSINFO("kind", "note")

private Q_SLOTS:
    void missingTaxDataIsAskedFor_data()
    {
        test::table<QString, bool, core::Answer, bool>(
            {{"neither, No", u"Agostini Lucia"_s, true, core::Answer::No, false},
             {"neither, Yes", u"Agostini Lucia"_s, true, core::Answer::Yes, true},
             {"tax code only", u"Arredo Bagno Alpi S.r.l."_s, false, core::Answer::No, true}});
    }

    void missingTaxDataIsAskedFor()
    {
        const auto [customer, asks, answer, saved] = test::row<QString, bool, core::Answer, bool>();
        database().execute(u"UPDATE CLIENTI SET PARTITAIVA = '' WHERE RAGIONESOCIALE STARTING WITH 'Arredo'"_s);
        database().execute(u"UPDATE CLIENTI SET CODICEFISCALE = NULL WHERE RAGIONESOCIALE = 'Agostini Lucia'"_s);
        note().fillHeader();
        note().choose(u"actSelezionaCliente"_s, test::choosing(customer));
        const QStringList before = note().stored();
        if (asks)
            place().messages.expectQuestion(u"Non sono stati indicati nè il codice fiscale, nè la partita IVA,\n\r"
                                            "proseguire comunque?"_s,
                                            answer);
        note().save();
        QCOMPARE(note().flags(), saved ? u"stored"_s : u"new modified"_s);
        QCOMPARE(note().stored() == before, !saved);
    }

    void supplierOutlivesChangesOfItsMasterRecord()
    {
        const QString columns = u"CODICE, RAGIONESOCIALE, INDIRIZZO, CITTA, CAP, PROVINCIA, NAZIONE, CODICEFISCALE, "
                                "PARTITAIVA"_s;
        const QString name = u"Acciaierie Brentane S.p.A."_s;
        const QStringList copied =
            lines(u"SELECT %1, 1 FROM FORNITORI WHERE RAGIONESOCIALE = '%2'"_s.arg(columns, name));
        const QString stored =
            u"SELECT CLI_"_s + QString(columns).replace(u", "_s, u", CLI_"_s) + u", TIPO_ANAGRAFICA FROM DDT_SCARICO"_s;
        note().fillHeader();
        note().choose(u"actSelezionaFornitore"_s, test::choosing(name));
        note().save();
        QCOMPARE(lines(stored), copied);
        database().execute(u"UPDATE FORNITORI SET INDIRIZZO = 'Altrove', CITTA = NULL"_s);
        const int id = note().form().IdRecord();
        note().trigger(u"actNuovo"_s);
        QCOMPARE(note().control<QGroupBox>(u"grpAnagrafica"_s)->title(), u" Cliente "_s);
        note().form().ApriRecord(id);
        QCOMPARE(note().control<QGroupBox>(u"grpAnagrafica"_s)->title(), u" Fornitore "_s);
        note().saveAgain();
        QCOMPARE(lines(stored), copied);
        // Other programs leave names empty; the column takes no NULL.
        database().execute(u"UPDATE DDT_SCARICO SET CLI_RAGIONESOCIALE = ''"_s);
        note().form().ApriRecord(id);
        note().saveAgain();
        QCOMPARE(note().flags(), u"stored"_s);
    }

    void saveWritesTheHeader()
    {
        note().fillHeader();
        note().control<ui::IntegerEdit>(u"txtNumero"_s)->setValue(12);
        test::type(note().control<QLineEdit>(u"txtDestRagioneSociale"_s), u"Cantiere d'Adda"_s);
        test::type(note().control<QLineEdit>(u"txtDestCap"_s), u"i-3606199"_s);
        test::type(note().control<QLineEdit>(u"txtDestProvincia"_s), u"vic"_s);
        test::type(note().control<QLineEdit>(u"txtDestNazione"_s), u"Italia"_s);
        test::type(note().control<QLineEdit>(u"txtAspettoBeni"_s), u"Scatole di cartone rigido"_s);
        note().control<ui::IntegerEdit>(u"txtColli"_s)->setValue(2);
        note().control<ui::DecimalEdit>(u"txtPeso"_s)->setValue(11.25);
        note().choose(u"cmdSelezionaPesoUM"_s, test::choosing(u"KG"_s));
        note().control<QPlainTextEdit>(u"txtNote"_s)->setPlainText(u"è urgente"_s);
        note().addArticle(u"TRA-0018"_s, u"7,90"_s, u"5"_s);
        // Saved from within the field.
        note().showPage(0);
        test::retype(note().control<QWidget>(u"txtData"_s), u"31/12/25"_s);
        note().save();
        QCOMPARE(lines(u"SELECT NUMERO, DATA, ANNO, DEST_RAGIONESOCIALE, DEST_INDIRIZZO, DEST_CITTA, DEST_CAP, "
                       "DEST_PROVINCIA, DEST_NAZIONE, ASPETTO_BENI, TIPO_TRASPORTO, CAUSALE_TRASPORTO, COLLI, PESO, "
                       "PESO_UM, TOTALE_IMPONIBILE, TOTALE_IMPOSTA, TOTALE_DOCUMENTO, NOTE FROM DDT_SCARICO"_s),
                 QStringList({u"12|2025-12-31|2025|Cantiere d'Adda|||I-360|VI|Italia|Scatole di cartone "
                              "r|Mittente|Vendita|2|11.25|KG|0|0|0|è urgente"_s}));
        QCOMPARE(
            lines(u"SELECT COUNT(*) FROM DDT_SCARICO D JOIN UM ON UM.IDUM = D.PESO_IDUM AND UM.UM = D.PESO_UM JOIN "
                  "TIPI_TRASPORTO T ON T.IDTIPO_TRASPORTO = D.IDTIPO_TRASPORTO AND T.TIPO_TRASPORTO = 'Mittente' "
                  "JOIN CAUSALI_TRASPORTO C ON C.IDCAUSALE_TRASPORTO = D.IDCAUSALE_TRASPORTO AND "
                  "C.CAUSALE_TRASPORTO = 'Vendita'"_s),
            QStringList(u"1"_s));
    }

    void issueIsValuedAtTheAverageCost()
    {
        receive(10, 2);
        receive(10, 4);
        note().enter(u"7,90"_s, u"5"_s);
        const QString mine =
            u"SELECT M.QUANTITA, M.VALORE, M.VALORE_IMPORTO, M.PREZZO, M.COSTO - A.COSTO, M.TIPO_MOVIMENTO, "
            "M.IDCAUSALE_MAGA, M.DATA_MOVIMENTO, M.NOTE FROM MOVI_MAGA M JOIN ANA_MAGA A ON A.CODICE = M.CODICE "
            "WHERE M.RIF_DOC_TIPO = 'D.d.T. di scarico' ORDER BY M.IDMOVI_MAGA"_s;
        const QString stock = u"SELECT SUM(QUANTITA), SUM(VALORE_IMPORTO) FROM MOVI_MAGA"_s;
        for (int i = 0; i < 3; ++i) {
            note().saveAgain();
            QCOMPARE(lines(mine),
                     QStringList(u"-5|3|-15|7.9|0|Scarico|2|2026-03-16|D.d.T. di scarico n. 1 del 16/03/2026"_s));
            QCOMPARE(lines(stock), QStringList(u"15|45"_s));
        }
        QCOMPARE(lines(u"SELECT D.IDDDT_SCARICO FROM MOVI_MAGA M JOIN DDT_SCARICO_DETT D ON D.IDDDT_SCARICO_DETT = "
                       "M.RIF_DOC_IDRIGA AND D.IDDDT_SCARICO = M.RIF_DOC_ID"_s),
                 QStringList({QString::number(note().form().IdRecord())}));
        // Before anything was received the average cost is 0.
        note().control<ui::DateEdit>(u"txtData"_s)->setDate(QDate(2026, 1, 9));
        note().save();
        QCOMPARE(lines(mine),
                 QStringList(u"-5|0|0|7.9|0|Scarico|2|2026-01-09|D.d.T. di scarico n. 1 del 09/01/2026"_s));
    }

    void costOutlivesOpeningAndSaving()
    {
        database().execute(u"UPDATE ANA_MAGA SET COSTO = 1.23 WHERE CODICE = 'TRA-0018'"_s);
        database().execute(u"UPDATE ANA_MAGA SET COSTO = 4.56 WHERE CODICE = 'TRA-0012'"_s);
        note().enter(u"7,90"_s, u"5"_s);
        note().addArticle(u"TRA-0012"_s, u"8"_s, u"1"_s);
        note().save();
        database().execute(u"UPDATE ANA_MAGA SET COSTO = 99"_s);
        const int id = note().form().IdRecord();
        for (int i = 0; i < 2; ++i) {
            note().trigger(u"actNuovo"_s);
            note().form().ApriRecord(id);
            note().showPage(1);
            note().grid()->select(0, &DocumentRow::prezzo);
            note().trigger(u"actSpostaRigaGiu"_s);
            note().save();
        }
        QCOMPARE(lines(u"SELECT CODICE, COSTO FROM MOVI_MAGA ORDER BY IDMOVI_MAGA"_s),
                 QStringList({u"TRA-0018|1.23"_s, u"TRA-0012|4.56"_s}));
    }

    void vanishedRecordsChangeNothing()
    {
        // Another workstation deletes the chosen record while the dialog shows it.
        const auto vanishing = [this](const QString &table) {
            return [this, table](QDialog &dialog) {
                if (auto *search = dialog.findChild<QAbstractButton *>(u"actCerca"_s))
                    search->click();
                test::control<QTableView>(&dialog, u"gridRisultati"_s)->selectRow(0);
                database().execute(u"DELETE FROM "_s + table);
                test::press(&dialog, u"cmdOk"_s);
            };
        };
        for (const auto &[command, table] : {std::pair(u"actSelezionaCliente"_s, u"CLIENTI"_s),
                                             {u"actSelezionaFornitore"_s, u"FORNITORI"_s},
                                             {u"actSelezionaVettore"_s, u"VETTORI"_s},
                                             {u"actAggiungiArticolo"_s, u"ANA_MAGA"_s},
                                             {u"actAggiungiServizio"_s, u"SERVIZI"_s},
                                             {u"cmdSelezionaCausaleTrasporto"_s, u"CAUSALI_TRASPORTO"_s}})
            note().choose(command, vanishing(table));
        QCOMPARE(note().flags(), u"new"_s);
        QCOMPARE(note().grid()->model()->rowCount(), 0);
    }

    void closingQuestion_data()
    {
        test::table<core::Answer, bool, bool, QString>(
            {{"Cancel", core::Answer::Cancel, true, false, u"0"_s},
             {"No", core::Answer::No, true, true, u"0"_s},
             {"Yes", core::Answer::Yes, true, true, u"1"_s},
             // Yes closes whether or not the save succeeded; this is intended.
             {"Yes, refused", core::Answer::Yes, false, true, u"0"_s}});
    }

    void closingQuestion()
    {
        const auto [answer, complete, closes, saved] = test::row<core::Answer, bool, bool, QString>();
        if (complete)
            note().fillHeader();
        note().control<QLineEdit>(u"txtAspettoBeni"_s)->setText(u"Sfuso"_s);
        const QPointer<QWidget> form = &note().form();
        place().messages.expectQuestion(test::saveFirst, answer);
        if (!complete)
            place().messages.expectWarning(u"Non è stato selezionato un cliente!"_s);
        note().trigger(u"actChiudi"_s);
        QCOMPARE(form.isNull(), closes);
        QCOMPARE(lines(u"SELECT COUNT(*) FROM DDT_SCARICO"_s), QStringList({saved}));
    }

private:
    void receive(double quantity, double cost) const
    {
        test::insertInto(
            database(), u"MOVI_MAGA"_s,
            u"DATA_MOVIMENTO=2026-01-10|CODICE=TRA-0018|TIPO_MOVIMENTO=Carico|QUANTITA=%1|VALORE=%2|VALORE_IMPORTO=%3"_s
                .arg(quantity)
                .arg(cost)
                .arg(cost * quantity));
    }
};

static const test::Registered<TestDeliveryNoteForm> registered;

#include "test_delivery_note_form.moc"
