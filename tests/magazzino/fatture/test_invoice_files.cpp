#include "host/ui/PreviewWindow.h"
#include "magazzino/fatturapa/Registro.h"
#include "platform/ui/MailProgram.h"
#include "tests/support/Fixtures.h"

#include <thread>

namespace {

bool nobodyHasIt(const QString &)
{
    return false;
}

const QString user = u"AMMINISTRATORE"_s;

} // namespace

/// The register of electronic invoices' files, and the window that works on it.
class TestInvoiceFiles : public test::AtDocument
{
    Q_OBJECT
    Q_CLASSINFO("kind", "invoice")

private Q_SLOTS:
    void init() override
    {
        AtDocument::init();
        folder_ = std::make_unique<QTemporaryDir>();
        ui::setFolderChooser([this](QWidget *, const QString &) { return target_; });
        target_ = folder_->path();
        test::emptyDocuments(database());
        keys_.clear();
        for (int i = 0; i < 3; ++i) {
            note().trigger(u"actNuovo"_s);
            note().store(u"7,90"_s, u"3"_s);
            keys_.append(note().form().IdRecord());
        }
    }

    void cleanup() override
    {
        ui::setFolderChooser({});
        ui::setMailOpener({});
        AtDocument::cleanup();
    }

    // Both write the files of all invoices at the same moment, in opposite order.
    void namesOfTwoWorkstations()
    {
        QHash<int, QStringList> files;
        QStringList errors;
        std::mutex mutex;
        const auto work = [&](const QList<int> &keys) {
            data::Connection own;
            own.setConnectionString(connection().connectionString());
            for (const int key : keys) {
                QString file;
                const QString error = test::errorOf([&] {
                    own.open();
                    const fatturapa::Esito written = fatturapa::registra(own, key, user, nobodyHasIt);
                    file = written.nome + QString::fromUtf8(written.contenuto);
                });
                const std::lock_guard lock(mutex);
                files[key].append(file);
                errors.append(error);
            }
        };
        std::thread first(work, keys_);
        std::thread second(work, QList<int>(keys_.rbegin(), keys_.rend()));
        first.join();
        second.join();
        QCOMPARE(errors, QStringList(6, u"no error"_s));
        QSet<QString> names;
        for (const int key : std::as_const(keys_)) {
            QCOMPARE(files[key], QStringList(2, files[key].first()));
            names.insert(files[key].first().section(u".xml"_s, 0, 0).toUpper());
        }
        QCOMPARE(names.size(), 3);
        QCOMPARE(lines(u"SELECT COUNT(*) FROM FATTURE_ELETTRONICHE"_s), QStringList(u"3"_s));
    }

    void fileNeverChanges()
    {
        // A name that the folder has, or that a restored database has forgotten, is passed over.
        QStringList taken;
        const fatturapa::Esito first = fatturapa::registra(connection(), keys_[0], user, [&taken](const QString &name) {
            taken.append(name);
            return taken.size() < 3;
        });
        QCOMPARE(taken.size(), 3);
        QCOMPARE(first.nome, taken.last());
        database().execute(u"SET GENERATOR GN_PROGRESSIVO_FATT_EL TO 2"_s);
        QVERIFY(write(1).nome != first.nome);
        const QByteArray hash = QCryptographicHash::hash(first.contenuto, QCryptographicHash::Sha256).toHex();
        QCOMPARE(
            lines(u"SELECT IMPRONTA, UTENTE, STATO, NUMERO_FATTURA FROM FATTURE_ELETTRONICHE WHERE NOME = '%1'"_s.arg(
                first.nome)),
            QStringList(u"%1|%2|scritta|1/ACC"_s.arg(QString::fromLatin1(hash), user)));
        for (const QString &change :
             {u"UPDATE FATTURE_ELETTRONICHE SET CONTENUTO = 'x'"_s, u"UPDATE FATTURE_ELETTRONICHE SET NOME = 'x'"_s,
              u"DELETE FROM FATTURE_ELETTRONICHE"_s}) {
            const QString refused = test::errorOf([&] { database().execute(change); });
            QVERIFY2(refused.contains(u"non cambia"_s), qPrintable(refused));
        }
        QCOMPARE(write(0).contenuto, first.contenuto);
    }

    void editedInvoice()
    {
        const QString first = write(0).nome;
        note().form().ApriRecord(keys_[0]);
        const auto *label = note().control<QLabel>(u"lblFatturaElettronica"_s);
        QCOMPARE(label->isVisible() ? label->text() : QString(), u"Fattura elettronica: %1, scritta"_s.arg(first));
        edit(u"4"_s, core::Answer::No);
        QCOMPARE(stateOf(0), u"scritta"_s);
        edit(u"5"_s, core::Answer::Yes);
        QCOMPARE(label->text(), u"Fattura elettronica: %1, scritta – modificata dopo l'invio"_s.arg(first));
        // Not sent yet: a new file, under another name.
        const fatturapa::Esito second = write(0);
        QVERIFY(second.nuovo && second.nome != first);
        QCOMPARE(stateOf(0), u"scritta"_s);
        // Sent: what was sent stays.
        fatturapa::spostaStato(connection(), fatturapa::ultimoFile(connection(), keys_[0])->id,
                               fatturapa::stato::scritta, fatturapa::stato::inviata, test::workplaceTime());
        edit(u"6"_s, core::Answer::Yes);
        QCOMPARE(stateOf(0), u"inviata modified"_s);
        const fatturapa::Esito third = write(0);
        QVERIFY(!third.nuovo && third.modificata);
        QCOMPARE(third.contenuto, second.contenuto);
        note().trigger(u"actNuovo"_s);
        QVERIFY(!label->isVisible());
    }

    void deletedInvoice()
    {
        note().form().ApriRecord(keys_[0]);
        // Another workstation writes the file while the user is being asked.
        place().messages.expectQuestion(test::deleting, core::Answer::Yes);
        place().messages.whileShown([this] { write(0); });
        place().messages.expectError(
            u"Si è verificato un errore durante l'eliminazione dei dati,\n\rl'operazione è stata annullata!"_s);
        note().trigger(u"actElimina"_s);
        place().messages.expectWarning(
            u"Non è possibile eliminare questa fattura,\n\ril suo file elettronico è già stato scritto!"_s);
        note().trigger(u"actElimina"_s);
        QCOMPARE(
            lines(u"SELECT (SELECT COUNT(*) FROM FATT_ACC), (SELECT COUNT(*) FROM FATT_ACC_DETT) FROM RDB$DATABASE"_s),
            QStringList(u"3|3"_s));
    }

    void window()
    {
        writeAll();
        QCOMPARE(test::columnTexts(grid(), u"Giorni"_s), QStringList(3, u"12"_s));
        for (int i = 0; i < 3; ++i) {
            const fatturapa::Esito written = write(i);
            QVERIFY(!written.nuovo);
            QCOMPARE(test::contentOf(folder_->filePath(written.nome)), written.contenuto);
        }
        // Set by hand, and back.
        test::selectRow(grid(), u"2"_s);
        test::trigger(window_, u"actSegnaInviata"_s);
        QCOMPARE(states(), u"scritta inviata scritta"_s);
        QCOMPARE(test::cellText(grid(), 1, u"Giorni"_s), QString());
        test::trigger(window_, u"actSegnaInviata"_s);
        QCOMPARE(states(), u"scritta scritta scritta"_s);
        // What the file says, as pages.
        test::trigger(window_, u"actStampa"_s);
        QCOMPARE(place().window().findChildren<host::PreviewWindow *>().size(), 1);
    }

    // The file is registered, and goes elsewhere under the same name.
    void folderThatCannotBeWritten()
    {
        openWindow();
        test::selectRow(grid(), u"2"_s);
        target_ = u"/dev/null/cartella"_s;
        place().messages.expectPart(u"Errore"_s, u"è nel registro, ma non nella cartella"_s);
        QTest::keyClick(grid(), Qt::Key_F8);
        const QString name = fatturapa::ultimoFile(connection(), keys_[1])->nome;
        target_ = folder_->path();
        place().messages.expectPart(information, u"1 file c'era già"_s);
        QTest::keyClick(grid(), Qt::Key_F8);
        QCOMPARE(test::contentOf(folder_->filePath(name)), write(1).contenuto);
        QCOMPARE(lines(u"SELECT COUNT(*) FROM FATTURE_ELETTRONICHE"_s), QStringList(u"1"_s));
    }

    void findings_data()
    {
        const QString all = u"con rilievi"_s;
        const QString none = u"da fare"_s;
        const QString ofCustomer = u" WHERE CODICE = (SELECT FIRST 1 CLI_CODICE FROM FATT_ACC)"_s;
        const QString carrier = u"VETT_CODICE = (SELECT FIRST 1 CODICE FROM VETTORI), VETT_RAGIONESOCIALE = 'X'"_s;
        test::table<QString, QString, QString>(
            {{"firm", u"AZIENDA SET REGIMEFISCALE = NULL"_s, all, u"txtRegimeFiscale"_s},
             {"customer", u"CLIENTI SET CODICEDESTINATARIO = 'ABC'"_s + ofCustomer, all, u"txtCodiceDestinatario"_s},
             {"payment", u"TIPI_PAGAMENTO SET MODALITA = NULL"_s, none, u"txtModalita"_s},
             {"rate", u"FATT_ACC_DETT SET IVA_ALIQUOTA = 0"_s, all, u"txtNatura"_s},
             {"carrier", u"FATT_ACC SET "_s + carrier, none, u"txtPartitaIVA"_s},
             {"invoice", u"FATT_ACC SET COLLI = 10000"_s, none, u"txtColli"_s},
             {"row", u"FATT_ACC_DETT SET DESCRIZIONE = '日本'"_s, all, u"gridRigheFattura"_s}});
    }

    // "Apri" leads to the field from which the finding comes.
    void findings()
    {
        const auto [change, state, control] = test::row<QString, QString, QString>();
        database().execute(u"UPDATE VETTORI SET PARTITAIVA = NULL"_s);
        database().execute(u"UPDATE "_s + change);
        openWindow();
        test::selectRow(grid(), u"2"_s);
        QTest::keyClick(grid(), Qt::Key_F7);
        QCOMPARE(states(), u"da fare %1 da fare"_s.arg(state));
        auto *list = test::control<QTableView>(window_, u"gridRilievi"_s);
        bool reached = false;
        for (int row = 0; row < list->model()->rowCount() && !reached; ++row) {
            list->selectRow(row);
            QTest::keyClick(list, Qt::Key_Return);
            test::settle();
            const QWidget *focus = place().window().focusWidget();
            reached = focus && focus->objectName() == control;
        }
        QVERIFY2(reached, qPrintable(test::columnTexts(list, u"Che cosa"_s).join(u'\n')));
    }

    // More than a few are worked behind a dialog.
    void manyInvoices()
    {
        for (int number = 4; number <= 12; ++number)
            test::insertInto(database(), u"FATT_ACC"_s, u"NUMERO=%1|ANNO=2026|DATA=2026-03-02"_s.arg(number));
        openWindow();
        place().dialogs.expect(test::waiting());
        QTest::keyClick(grid(), Qt::Key_F7);
        QCOMPARE(states().count(u"con rilievi"_s), 9);
        place().dialogs.expect(test::waiting());
        place().messages.expectInformation(
            u"3 file scritti.\n\r9 fatture hanno rilievi che impediscono il file: sono elencati sotto."_s);
        QTest::keyClick(grid(), Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(grid(), Qt::Key_F8);
        QCOMPARE(test::filesIn(folder_->path()).size(), 3);
    }

    void receipts_data()
    {
        test::table<QStringList, QString, QString>(
            {{"RC", {u"RicevutaConsegna"_s}, u"consegnata"_s, {}},
             {"NS", {u"RicevutaScarto"_s}, u"scartata"_s, u"4"_s},
             {"NS, office", {u"NotificaScarto"_s}, u"scartata"_s, u"4"_s},
             {"MC", {u"RicevutaImpossibilitaRecapito"_s}, u"non consegnata"_s, {}},
             {"DT", {u"NotificaDecorrenzaTermini"_s}, u"consegnata"_s, {}},
             {"AT", {u"AttestazioneTrasmissioneFattura"_s}, u"non consegnata"_s, {}},
             {"in any order", {u"RicevutaConsegna"_s, u"NotificaMancataConsegna"_s}, u"consegnata"_s, {}}});
    }

    void receipts()
    {
        const auto [roots, state, days] = test::row<QStringList, QString, QString>();
        writeAll();
        const fatturapa::Esito written = write(1);
        const QString errors =
            u"<ListaErrori><Errore><Codice>00404</Codice><Descrizione>Fattura duplicata</Descrizione>"
            "<Suggerimento>Cambiare il numero</Suggerimento></Errore></ListaErrori>"_s;
        QStringList files;
        for (const QString &root : roots)
            files.append(receipt(root, written.nome + u".p7m"_s, errors));
        test::selectRow(grid(), u"2"_s);
        place().messages.expectInformation(roots.size() == 1 ? u"1 ricevuta letta."_s : u"2 ricevute lette."_s);
        drop(files);
        QCOMPARE(states(), u"scritta %1 scritta"_s.arg(state));
        QCOMPARE(test::cellText(grid(), 1, u"Giorni"_s), days);
        QCOMPARE(test::columnTexts(test::control<QTableView>(window_, u"gridRilievi"_s), u"Che cosa"_s),
                 QStringList(roots.size(), u"Fattura duplicata Cambiare il numero"_s));
        // A refused invoice keeps number and date, and gets another name.
        const fatturapa::Esito again = write(1);
        QCOMPARE(again.nuovo, state == u"scartata");
        QCOMPARE(again.nome == written.nome, !again.nuovo);
        QVERIFY(again.contenuto.contains("<Numero>2/ACC</Numero>"));
    }

    // Whatever lies in the folder: each is told, and what is no receipt changes nothing.
    void readings()
    {
        writeAll();
        const QString ours = receipt(u"RicevutaConsegna"_s, write(0).nome);
        receipt(u"RicevutaConsegna"_s, u"IT01234567890_ZZZZZ.xml"_s);
        const QList<QByteArray> others = {
            "<!DOCTYPE x [<!ENTITY a \"aa\"><!ENTITY b \"&a;&a;\">]><RicevutaConsegna><NomeFile>&b;</NomeFile>"
            "</RicevutaConsegna>",
            test::contentOf(ours).chopped(20), "<Fattura><NomeFile>x</NomeFile></Fattura>", "<RicevutaConsegna/>", ""};
        for (const bool first : {true, false}) {
            place().messages.expectPart(information,
                                        first ? u"1 ricevuta letta.\n\rDi file che non sono nel registro:\n\r"_s
                                              : u"0 ricevute lette.\n\rGià lette prima:\n\r"_s);
            test::trigger(window_, u"actLeggiRicevute"_s);
            QCOMPARE(states(), u"scritta scritta consegnata"_s);
        }
        for (const QByteArray &other : others) {
            const QString file = folder_->filePath(u"altro.xml"_s);
            core::saveFile(file, other);
            place().messages.expectPart(information, u"0 ricevute lette.\n\rNon sono ricevute:\n\r"_s);
            drop({file});
        }
        QCOMPARE(lines(u"SELECT TIPO FROM RICEVUTE_FATT_EL"_s), QStringList(u"RC"_s));
    }

    void mail()
    {
        writeAll();
        test::selectRow(grid(), u"2"_s);
        ui::Mail sent;
        ui::MailOpened result = ui::MailOpened::WithAttachment;
        ui::setMailOpener([&](const ui::Mail &mail) {
            sent = mail;
            return result;
        });
        test::trigger(window_, u"actInviaConLaPosta"_s);
        QCOMPARE(test::contentOf(sent.attachment), write(1).contenuto);
        QCOMPARE(sent.to, u"sdi01@pec.fatturapa.it"_s);
        result = ui::MailOpened::WithoutAttachment;
        place().messages.expectPart(information, sent.attachment);
        test::trigger(window_, u"actInviaConLaPosta"_s);
    }

    // From the invoice's form; the office may look only.
    void rights()
    {
        note().trigger(u"actFatturaElettronica"_s);
        openWindow();
        QCOMPARE(states(), u"da fare"_s);
        SetKxCurrentUserName(u"UFFICIO"_s);
        for (const QString &command :
             {u"actScriviFile"_s, u"actSegnaInviata"_s, u"actLeggiRicevute"_s, u"actInviaConLaPosta"_s}) {
            place().messages.expectWarning(test::noRights);
            test::trigger(window_, command);
        }
        test::trigger(window_, u"actControlla"_s);
        SetKxCurrentUserName(user);
    }

private:
    QTableView *grid() const { return gridOf(*window_); }
    QString states() const { return test::columnTexts(grid(), u"Stato"_s).join(u' '); }
    fatturapa::Esito write(int invoice) const
    {
        return fatturapa::registra(connection(), keys_[invoice], user, nobodyHasIt);
    }
    QString stateOf(int invoice) const
    {
        const auto file = fatturapa::ultimoFile(connection(), keys_[invoice]);
        return file->stato + (file->modificata ? u" modified"_s : QString());
    }

    void openWindow() { window_ = openList(u"actFattureElettroniche"_s); }

    void writeAll()
    {
        openWindow();
        place().messages.expectInformation(u"3 file scritti."_s);
        QTest::keyClick(grid(), Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(grid(), Qt::Key_F8);
        QCOMPARE(states(), u"scritta scritta scritta"_s);
    }

    void edit(const QString &quantity, core::Answer answer)
    {
        note().showPage(1);
        test::typeIntoCell(note().grid(), 0, u"Q.tà"_s, quantity);
        place().messages.expectQuestion(u"Il file elettronico di questa fattura è già stato scritto:\n\rle modifiche "
                                        "non vi compariranno. Salvarle comunque?"_s,
                                        answer);
        note().save();
        QCOMPARE(note().flags(), answer == core::Answer::Yes ? u"stored"_s : u"stored modified"_s);
    }

    /// A receipt in the folder for an invoice file, with a list of errors.
    QString receipt(const QString &root, const QString &file, const QString &errors = {})
    {
        const QString path = folder_->filePath(u"%1_RC_%2.xml"_s.arg(file.section(u'.', 0, 0)).arg(++receipts_));
        core::saveFile(path, u"<?xml version=\"1.0\" encoding=\"UTF-8\"?><ns3:%1 "
                             "xmlns:ns3=\"http://www.fatturapa.gov.it/sdi/messaggi/v1.0\"><NomeFile>%2</NomeFile>"
                             "<DataOraRicezione>2026-03-15T09:00:00.000+01:00</DataOraRicezione>%3<RiferimentoArchivio>"
                             "<NomeFile>altro.zip</NomeFile></RiferimentoArchivio></ns3:%1>"_s.arg(root, file, errors)
                                 .toUtf8());
        return path;
    }

    void drop(const QStringList &files) const
    {
        QMimeData data;
        QList<QUrl> urls;
        for (const QString &file : files)
            urls.append(QUrl::fromLocalFile(file));
        data.setUrls(urls);
        QDragEnterEvent enter(QPoint(20, 20), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(window_, &enter);
        QVERIFY(enter.isAccepted());
        QDropEvent event(QPointF(20, 20), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(window_, &event);
        test::settle();
    }

    const QString information = u"Informazioni"_s;
    QWidget *window_ = nullptr;
    std::unique_ptr<QTemporaryDir> folder_;
    QString target_;  ///< the folder that is chosen
    QList<int> keys_; ///< of three saved invoices, none with a file
    int receipts_ = 0;
};

static const test::Registered<TestInvoiceFiles> registered;
#include "test_invoice_files.moc"
