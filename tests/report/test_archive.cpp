#include "host/ui/Printing.h"
#include "magazzino/documents/StampeDocumenti.h"
#include "platform/ui/MailProgram.h"
#include "platform/ui/ProgressDialog.h"
#include "tests/report/Prints.h"

#include <filesystem>

/// What becomes of a document besides its pages: the firm's logo, copies, archive, mail.
class TestArchive : public test::AtWorkplace
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() override
    {
        ui::setOpenFileChooser({});
        ui::setSaveFileChooser({});
        ui::setMailOpener({});
        host::keepPrinters({});
        AtWorkplace::cleanup();
    }

    void logoStandsBesideTheFirm()
    {
        const int note = test::insertNote(database(), 3);
        const report::Page without = firstPage(note);
        QVERIFY(without.pictures.isEmpty());
        core::saveFile(path(u"a.svg"_s), "<svg xmlns='http://www.w3.org/2000/svg' width='40' height='20'>"
                                         "<rect width='40' height='20' fill='#1d4f91'/></svg>");
        QImage square(300, 300, QImage::Format_RGB32);
        square.fill(Qt::darkGreen);
        square.save(path(u"b.png"_s));
        core::saveFile(path(u"c.png"_s), "no picture");
        QWidget *form = place().commands().openForm(u"actAzienda"_s);
        const auto choose = [&](const QString &name) {
            ui::setOpenFileChooser([file = path(name)](QWidget *, const ui::OpenFileRequest &) { return file; });
            test::press(form, u"cmdScegliLogo"_s);
            test::trigger(form, u"actSalva"_s);
        };
        place().messages.expectPart(u"Errore"_s, u"non contiene un'immagine"_s);
        choose(u"c.png"_s);
        for (const auto &[name, height] : {std::pair(u"a.svg"_s, 15.0), {u"b.png"_s, 20.5}}) {
            choose(name);
            report::Page with = firstPage(note);
            QCOMPARE(with.pictures.size(), 1);
            const QRectF area = with.pictures.first().area;
            QCOMPARE(area.right(), 102.0);
            QVERIFY2(qAbs(area.height() - height) < 0.01, qPrintable(QString::number(area.height())));
            // Sharp, and away from everything that is told.
            QVERIFY(with.pictures.first().image.width() >= 300);
            with.pictures.clear();
            QCOMPARE(with, without);
            QCOMPARE(test::pdfPages(pdf(note, u"logo-%1.pdf"_s.arg(name.left(1)))).size(), 1);
        }
        test::press(form, u"cmdTogliLogo"_s);
        test::trigger(form, u"actSalva"_s);
        QCOMPARE(firstPage(note), without);
    }

    void copiesCarryTheirLabels()
    {
        const int note = test::insertNote(database(), 40);
        setOptions([](QDialog &dialog) {
            test::retype(&dialog, u"STAMPA_COPIE_DDT_SCARICO"_s, u"3"_s);
            test::retype(&dialog, u"STAMPA_DICITURE_DDT_SCARICO"_s, u"Per il cliente; Per il vettore"_s);
        });
        StampaDdTScarico(note, {}, TKxReportDestination::Anteprima);
        const QString first = u"Per il cliente"_s;
        const QString second = u"Per il vettore"_s;
        const QStringList all = printed();
        QCOMPARE(all.size(), 6);
        for (qsizetype page = 0; page < all.size(); ++page) {
            QCOMPARE(all[page].contains(first), page < 2);
            QCOMPARE(all[page].contains(second), page == 2 || page == 3);
        }
        auto *copies = test::control<QComboBox>(preview(), u"cmbCopie"_s);
        copies->setFocus();
        QTest::keyClick(copies, Qt::Key_Down);
        QTest::keyClick(copies, Qt::Key_Down);
        QCOMPARE(copies->currentText(), second);
        const QStringList one = printed();
        QCOMPARE(one.size(), 2);
        QVERIFY(one[0].contains(second) && one[1].contains(second));
        // Nothing but the label differs.
        QString whole = one.join(u' ').simplified();
        const QString plain = test::pdfText(pdf(note, u"nota.pdf"_s));
        QCOMPARE(whole.remove(second).simplified().remove(u' '), QString(plain).remove(u' '));
        // The prices that a note has, for who wants them.
        setOptions([](QDialog &dialog) {
            test::control<QCheckBox>(&dialog, u"STAMPA_PREZZI_DDT_SCARICO"_s)->setFocus();
            test::pressKey(Qt::Key_Space);
        });
        database().execute(u"UPDATE DDT_SCARICO_DETT SET PREZZO = 2.5, IMPORTO = 2.5 * QUANTITA"_s);
        const QString priced = test::pdfText(pdf(note, u"nota-con-prezzi.pdf"_s));
        for (const QString &part : {u"U.M. Quantità Prezzo Importo"_s, u"PZ 2,00 € 2,50 € 5,00"_s,
                                    u"Totale (IVA esclusa) € 2.050,00"_s, u"Firma del destinatario"_s})
            QVERIFY2(priced.contains(part), qPrintable(priced));

        host::keepPrinters(path(u"corvane.ini"_s));
        host::keepPrinter(u"D.d.T. / nota"_s, u"Laser"_s);
        QCOMPARE(host::keptPrinter(u"D.d.T. / nota"_s), u"Laser"_s);
        QCOMPARE(host::keptPrinter(u"Fattura"_s), QString());
        // What follows on the paper does not wait for a disk.
        host::keepPrinters(path(u"a.svg/corvane.ini"_s));
        core::saveFile(path(u"a.svg"_s), "a file, no folder");
        host::keepPrinter(u"Fattura"_s, u"Laser"_s);
        QVERIFY(
            place().window().statusBar()->currentMessage().startsWith(u"La stampante scelta non si può ricordare"_s));
    }

    void whatIsPrintedIsFiled()
    {
        const int transport = lines(u"SELECT FIRST 1 IDTIPO_TRASPORTO FROM TIPI_TRASPORTO"_s).value(0).toInt();
        const int note = test::insertNote(database(), 2,
                                          {{u"CLI_RAGIONESOCIALE"_s, u"Rossi/Bianchi: \"S.p.A.\""_s},
                                           {u"IDTIPO_TRASPORTO"_s, transport},
                                           {u"IDCAUSALE_TRASPORTO"_s, 1}});
        const QString archive = path(u"archivio"_s);
        QDir().mkpath(archive);
        setOptions([&](QDialog &dialog) {
            auto *folder = test::control<QWidget>(&dialog, u"ARCHIVIO_STAMPE"_s)->findChild<QLineEdit *>();
            test::retype(folder, archive + u"/manca"_s);
            place().messages.expectPart(u"Attenzione"_s, u"non esiste"_s);
            test::press(&dialog, u"cmdOk"_s);
            test::retype(folder, u"archivio"_s);
            place().messages.expectPart(u"Attenzione"_s, u"il percorso completo"_s, core::Answer::Ok);
            test::press(&dialog, u"cmdOk"_s);
            test::retype(folder, archive);
        });
        auto *form = openEntry(u"actInserimentoDdTScarico"_s);
        form->openRecord(note);
        test::settle();
        QCOMPARE(test::shown(form, u"lblStampato"_s), QString());
        ui::setSaveFileChooser([this](QWidget *, const ui::SaveFileRequest &) { return path(u"nota.pdf"_s); });
        const QString printed = u"Stampato il 16/03/2026 alle 10:30"_s;
        const QString name = u"D.d.T. di scarico 12-2026 Rossi-Bianchi- -S.p.A.-"_s;
        test::trigger(form, u"actSalvaPDF"_s);
        QCOMPARE(test::shown(form, u"lblStampato"_s), printed);
        QCOMPARE(QDir(archive + u"/2026"_s).entryList(QDir::Files), QStringList(name + u".pdf"_s));
        const QByteArray filed = test::contentOf(archive + u"/2026/"_s + name + u".pdf"_s);
        QCOMPARE(lines(u"SELECT IMPRONTA_FILE, UTENTE FROM STAMPE_DOCUMENTI"_s),
                 QStringList(QString::fromLatin1(QCryptographicHash::hash(filed, QCryptographicHash::Sha256).toHex()) +
                             u"|AMMINISTRATORE"_s));
        QCOMPARE(test::pdfPages(archive + u"/2026/"_s + name + u".pdf"_s), test::pdfPages(path(u"nota.pdf"_s)));
        // The same data are filed once; another state of them beside the first, however it is printed.
        form->openRecord(note);
        QCOMPARE(test::shown(form, u"lblStampato"_s), printed);
        test::typeOver(test::control<QWidget>(form, u"txtNote"_s), u"Cambiata"_s);
        test::trigger(form, u"actSalva"_s);
        QCOMPARE(test::shown(form, u"lblStampato"_s), printed + u", modificato dopo"_s);
        // What was saved is saved, even though the hint cannot be read.
        test::typeOver(test::control<QWidget>(form, u"txtNote"_s), u"Cambiata di nuovo"_s);
        test::refusing(connection(), aboutPrints, [&] { test::trigger(form, u"actSalva"_s); });
        QVERIFY(!form->Modified() && test::shown(form, u"lblStampato"_s).isEmpty());
        form->openRecord(note);
        QCOMPARE(test::shown(form, u"lblStampato"_s), printed + u", modificato dopo"_s);
        test::trigger(form, u"actStampa"_s);
        // Given up, it is neither written nor noted; the next one is.
        QCOMPARE(TestArchive::printed(true), QStringList());
        QCOMPARE(test::shown(form, u"lblStampato"_s), printed + u", modificato dopo"_s);
        QCOMPARE(TestArchive::printed().size(), 1);
        QCOMPARE(test::shown(form, u"lblStampato"_s), printed);
        TestArchive::printed();
        QCOMPARE(QDir(archive + u"/2026"_s).entryList(QDir::Files),
                 QStringList({name + u" (2).pdf"_s, name + u".pdf"_s}));
        QCOMPARE(test::contentOf(archive + u"/2026/"_s + name + u".pdf"_s), filed);
        QCOMPARE(lines(u"SELECT COUNT(*) FROM STAMPE_DOCUMENTI"_s), QStringList(u"3"_s));
        // An archive that is gone keeps nobody from printing.
        QDir(archive).removeRecursively();
        place().messages.expectPart(u"Errore"_s, u"non è stato archiviato"_s);
        test::trigger(form, u"actSalvaPDF"_s);
        QCOMPARE(test::shown(form, u"lblStampato"_s), printed);
        // Nor does a note that cannot be written; what is printed next is shown again, not written to the file.
        place().messages.expectPart(u"Errore"_s, u"non è stata annotata"_s, core::Answer::Ok);
        test::refusing(connection(), aboutPrints, [&] { test::trigger(form, u"actSalvaPDF"_s); });
        test::trigger(form, u"actStampa"_s);
        QCOMPARE(place().messages.verify(), QStringList());
        test::trigger(form, u"actNuovo"_s);
        QCOMPARE(test::shown(form, u"lblStampato"_s), QString());
        // Nor from changing other options.
        setOptions([](QDialog &dialog) { test::retype(&dialog, u"STAMPA_COPIE_DDT_SCARICO"_s, u"2"_s); });
        QCOMPARE(lines(u"SELECT VALORE FROM OPZIONI WHERE OPZIONE = 'STAMPA_COPIE_DDT_SCARICO'"_s),
                 QStringList(u"2"_s));
    }

    // Whatever becomes of the file there is a note, and no file without one.
    void noteFitsItsFile()
    {
        const int note = test::insertNote(database(), 1, {{u"CLI_RAGIONESOCIALE"_s, QString(100, u'R')}});
        const auto archive = [this](int size) {
            const QString folder = path(u"lungo"_s).leftJustified(size, u'o');
            QDir().mkpath(folder);
            return folder;
        };
        const QString longest = archive(180);
        const auto store = [this](const QString &folder) {
            database().run(u"UPDATE OR INSERT INTO OPZIONI(OPZIONE, VALORE) VALUES('ARCHIVIO_STAMPE', ?)"_s, {folder});
        };
        const auto print = [&](bool filed) {
            if (!filed)
                place().messages.expectPart(u"Errore"_s, u"non è stato archiviato"_s, core::Answer::Ok);
            const int before = lines(u"SELECT IDSTAMPA_DOCUMENTO FROM STAMPE_DOCUMENTI"_s).size();
            pdf(note, u"nota.pdf"_s);
            QCOMPARE(lines(u"SELECT IDSTAMPA_DOCUMENTO FROM STAMPE_DOCUMENTI"_s).size(), before + 1);
            const QString file =
                lines(u"SELECT FIRST 1 NOME_FILE FROM STAMPE_DOCUMENTI ORDER BY IDSTAMPA_DOCUMENTO DESC"_s).value(0);
            QCOMPARE(QFileInfo::exists(file), filed);
        };
        const QString tooLong = archive(181);
        setOptions([&](QDialog &dialog) {
            auto *folder = test::control<QWidget>(&dialog, u"ARCHIVIO_STAMPE"_s)->findChild<QLineEdit *>();
            place().messages.expectPart(u"Attenzione"_s, u"al massimo 180 caratteri"_s, core::Answer::Ok);
            test::retype(folder, tooLong);
            test::press(&dialog, u"cmdOk"_s);
            test::retype(folder, longest);
        });
        store(archive(220));
        print(false);
        store(longest);
        int refused = 0;
        test::refusing(
            connection(),
            [&refused](const QString &sql) { return sql.startsWith(u"INSERT INTO STAMPE_") && ++refused == 1; },
            [&] { print(false); });
        QCOMPARE(QDir(longest + u"/2026"_s).entryList(QDir::Files), QStringList());
        print(true);
        QCOMPARE(QDir(longest + u"/2026"_s).entryList(QDir::Files).size(), 1);
    }

    void mailGoesToTheCustomer()
    {
        const QString customer = lines(u"SELECT FIRST 1 CODICE FROM CLIENTI ORDER BY 1"_s).first();
        database().execute(u"UPDATE CLIENTI SET EMAIL = 'posta@cliente.example' WHERE CODICE = '%1'"_s.arg(customer));
        const QVariantMap header = {{u"CLI_CODICE"_s, customer}};
        const int note = test::insertNote(database(), 1, header);
        const int invoice = test::insertInvoice(database(), 1, header);
        setOptions([](QDialog &dialog) {
            test::retype(&dialog, u"POSTA_TESTO_DDT_SCARICO"_s, u"Ecco {documento} {numero} per {cliente}"_s);
        });
        ui::Mail sent;
        ui::setMailOpener([&sent](const ui::Mail &mail) {
            sent = mail;
            return ui::MailOpened::WithoutAttachment;
        });
        auto *form = openEntry(u"actInserimentoDdTScarico"_s);
        form->openRecord(note);
        test::settle();
        const auto send = [&] {
            place().messages.expectPart(u"Informazioni"_s, u"D.d.T. di scarico 12-2026.pdf"_s, core::Answer::Ok);
            test::trigger(form, u"actInviaPosta"_s);
            return sent.attachment;
        };
        const QString first = send();
        QCOMPARE(sent.to, u"posta@cliente.example"_s);
        QCOMPARE(sent.subject, u"D.d.T. di scarico n. 12 del 16/03/2026"_s);
        QCOMPARE(sent.text, u"Ecco D.d.T. di scarico 12 per Officine D'Amico & Figli"_s);
        QVERIFY(test::pdfText(sent.attachment).contains(u"ART-001"_s));
        // The mail program may still read it when the next message is made; after a week it is gone.
        const QString second = send();
        QVERIFY(second != first && QFile::exists(first));
        const std::filesystem::path old = QFileInfo(first).path().toStdString();
        last_write_time(old, last_write_time(old) - std::chrono::hours(24 * 9000));
        send();
        QVERIFY(!QFile::exists(first) && QFile::exists(second));
        // Without the right to see invoices there is neither mail nor archive of them, nor more than one copy.
        QDir().mkpath(path(u"archivio"_s));
        for (const auto &[option, value] :
             {std::pair(u"STAMPA_COPIE_FATT_ACC"_s, u"2"_s), {u"ARCHIVIO_STAMPE"_s, path(u"archivio"_s)}})
            database().execute(
                u"UPDATE OR INSERT INTO OPZIONI(OPZIONE, VALORE) VALUES('%1', '%2')"_s.arg(option, value));
        auto *invoiceForm = openEntry(u"actInserimentoFattureAccompagnatorie"_s);
        invoiceForm->openRecord(invoice);
        SetKxCurrentUserName(u"MAGAZZINIERE"_s);
        sent = {};
        place().messages.expectWarning(test::noRights);
        test::trigger(invoiceForm, u"actInviaPosta"_s);
        QCOMPARE(sent.attachment, QString());
        const QString prints = u"SELECT COUNT(*) FROM STAMPE_DOCUMENTI WHERE DOCUMENTO = 'FATT_ACC'"_s;
        for (const int copies : {1, 2}) {
            StampaFatturaAccompagnatoria(invoice, {}, TKxReportDestination::Anteprima);
            QCOMPARE(printed().size(), copies);
            QCOMPARE(lines(prints), QStringList(QString::number(copies - 1)));
            QCOMPARE(QDir(path(u"archivio"_s)).isEmpty(), copies == 1);
            SetKxCurrentUserName(u"AMMINISTRATORE"_s);
        }
        // What becomes of an invoice makes it no other one. In the notes of former versions it did.
        const auto hint = [&] {
            invoiceForm->openRecord(invoice);
            return test::shown(invoiceForm, u"lblStampato"_s).section(u", "_s, 1);
        };
        const auto change = [&](const QString &values) { database().execute(u"UPDATE FATT_ACC SET "_s + values); };
        change(u"PAGATO = 'True', NOTIFICATO = 'True', FC_GENERA_OGNI = 2"_s);
        QCOMPARE(hint(), QString());
        database().execute(u"UPDATE STAMPE_DOCUMENTI SET IMPRONTA_DATI = '%1'"_s.arg(
            improntaAttuale(fatturaAccompagnatoria(), invoice).diUnTempo));
        QCOMPARE(hint(), QString());
        change(u"PAGATO = 'False'"_s);
        QCOMPARE(hint(), u"modificato dopo"_s);
    }

private:
    static bool aboutPrints(const QString &sql) { return sql.contains(u"STAMPE_DOCUMENTI"_s); }
    QString path(const QString &name) const { return folder_.filePath(name); }

    void setOptions(const test::ScriptedDialogs::Use &use)
    {
        place().dialogs.expect([&](QDialog &dialog) {
            use(dialog);
            test::press(&dialog, u"cmdOk"_s);
        });
        place().commands().openForm(u"actOpzioniDocumenti"_s);
        QCOMPARE(place().dialogs.verify(), QStringList());
    }

    host::PreviewWindow *preview() const
    {
        test::settle();
        return place().window().findChild<host::PreviewWindow *>();
    }

    report::Page firstPage(int note) const
    {
        StampaDdTScarico(note, {}, TKxReportDestination::Anteprima);
        return preview()->document().page(0);
    }

    static QString pdf(int note, const QString &name)
    {
        const QString file = test::outputFile(name);
        StampaDdTScarico(note, file, TKxReportDestination::FilePDF);
        return file;
    }

    // Pages of what the preview prints; Esc gives it up after its first step.
    QStringList printed(bool givingUp = false)
    {
        const auto quiet = ui::setQuietTime({});
        const auto restore = qScopeGuard([&] { ui::setQuietTime(quiet); });
        const QString file = test::outputFile(u"copie.pdf"_s);
        QFile::remove(file);
        place().dialogs.expect([&file, givingUp](QDialog &dialog) {
            auto *print = qobject_cast<QPrintDialog *>(&dialog);
            print->printer()->setOutputFormat(QPrinter::PdfFormat);
            print->printer()->setOutputFileName(file);
            dialog.done(QDialog::Accepted);
            if (givingUp)
                QTimer::singleShot(0, qApp, [] { test::pressInModal(Qt::Key_Escape); });
        });
        test::trigger(preview(), u"actStampa"_s);
        return QFileInfo::exists(file) ? test::pdfPages(file) : QStringList();
    }

    QTemporaryDir folder_;
};

static const test::Registered<TestArchive> registered;

#include "test_archive.moc"
