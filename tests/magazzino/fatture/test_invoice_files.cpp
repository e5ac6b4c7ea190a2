#include "host/ui/MainWindow.h"
#include "host/ui/PreviewWindow.h"
#include "magazzino/fatturapa/Registro.h"
#include "magazzino/uMMGModMagazzino.h"
#include "platform/ui/MailProgram.h"
#include "tests/support/Documents.h"
#include "tests/support/TestMain.h"

#include <QCryptographicHash>
#include <QDropEvent>
#include <QFile>
#include <QLabel>
#include <QMimeData>
#include <QPushButton>
#include <QScopeGuard>
#include <QSet>
#include <QTableView>
#include <QTemporaryDir>
#include <QUrl>

#include <thread>

using namespace Qt::StringLiterals;

/// The register of electronic invoices' files, and the window that works on it.
class TestInvoiceFiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { workplace_.reset(); }

    void namesOfTwoWorkstations();
    void fileNeverChanges();
    void editedInvoice();
    void deletedInvoice();
    void window();
    void findings_data();
    void findings();
    void receipts_data();
    void receipts();
    void readings();
    void mail();
    void rights();

private:
    QString problems() const { return workplace_->messages.verify().join(u'\n'); }
    QWidget *openWindow();
    QTableView *grid() const { return test::control<QTableView>(window_, u"GridRisultati"_s); }
    QStringList states() const { return test::columnTexts(grid(), u"Stato"_s); }
    void writeAll();
    /// A receipt in the folder for the file of an invoice; `errors` are elements of its list.
    QString receipt(const QString &root, const QString &file, const QString &errors = {}) const;
    void drop(const QStringList &files) const;
    data::Connection &connection() const { return *workplace_->module().ModADOConn; }
    fatturapa::Esito write(int invoice) const;
    QString stateOf(int invoice) const;

    std::unique_ptr<test::Workplace> workplace_;
    std::unique_ptr<test::Document> invoice_;
    QWidget *window_ = nullptr;
    std::unique_ptr<QTemporaryDir> folder_;
    QList<int> keys_; ///< of three saved invoices, none with a file
};

namespace {

bool nobodyHasIt(const QString &)
{
    return false;
}

const QString user = u"AMMINISTRATORE"_s;

} // namespace

void TestInvoiceFiles::init()
{
    workplace_ = std::make_unique<test::Workplace>();
    folder_ = std::make_unique<QTemporaryDir>();
    workplace_->database().execute(u"DELETE FROM FATT_ACC_DETT"_s);
    workplace_->database().execute(u"DELETE FROM FATT_ACC"_s);
    invoice_ = std::make_unique<test::Document>(*workplace_, test::accompanyingInvoice());
    keys_.clear();
    for (int i = 0; i < 3; ++i) {
        invoice_->trigger(u"actNuovo"_s);
        invoice_->fillHeader();
        invoice_->addArticle(u"TRA-0018"_s, u"7,90"_s, u"3"_s);
        invoice_->save();
        keys_.append(invoice_->form().IdRecord());
    }
}

fatturapa::Esito TestInvoiceFiles::write(int invoice) const
{
    return fatturapa::registra(connection(), invoice, user, nobodyHasIt);
}

QString TestInvoiceFiles::stateOf(int invoice) const
{
    const auto file = fatturapa::ultimoFile(connection(), invoice);
    return file ? file->stato + (file->modificata ? u" modified"_s : QString()) : QString();
}

// Both write the files of all invoices at the same moment, in opposite order.
void TestInvoiceFiles::namesOfTwoWorkstations()
{
    QHash<int, QStringList> names;
    QStringList errors;
    std::mutex mutex;
    const auto work = [&](QList<int> keys) {
        data::Connection own;
        own.setConnectionString(connection().connectionString());
        for (const int key : keys) {
            try {
                own.open();
                const fatturapa::Esito written = fatturapa::registra(own, key, user, nobodyHasIt);
                const std::lock_guard lock(mutex);
                names[key].append(written.nome + QString::fromUtf8(written.contenuto));
            } catch (const std::exception &error) {
                const std::lock_guard lock(mutex);
                errors.append(core::errorText(error));
            }
        }
    };
    std::thread first(work, keys_);
    std::thread second(work, QList<int>(keys_.rbegin(), keys_.rend()));
    first.join();
    second.join();
    QCOMPARE(errors, QStringList());
    QSet<QString> different;
    for (const int key : std::as_const(keys_)) {
        QCOMPARE(names[key].size(), 2);
        QCOMPARE(names[key][0], names[key][1]);
        different.insert(names[key][0].section(u".xml"_s, 0, 0).toUpper());
    }
    QCOMPARE(different.size(), 3);
    QCOMPARE(workplace_->lines(u"SELECT COUNT(*) FROM FATTURE_ELETTRONICHE"_s), QStringList(u"3"_s));
}

void TestInvoiceFiles::fileNeverChanges()
{
    // A name that the folder has, or that a restored database has forgotten, is passed over.
    QStringList taken;
    const fatturapa::Esito first = fatturapa::registra(connection(), keys_[0], user, [&taken](const QString &name) {
        taken.append(name);
        return taken.size() < 3;
    });
    QCOMPARE(taken.size(), 3);
    QCOMPARE(first.nome, taken.last());
    workplace_->database().execute(u"SET GENERATOR GN_PROGRESSIVO_FATT_EL TO 2"_s);
    QVERIFY(write(keys_[1]).nome != first.nome);

    const QString hash =
        QString::fromLatin1(QCryptographicHash::hash(first.contenuto, QCryptographicHash::Sha256).toHex());
    QCOMPARE(workplace_->lines(
                 u"SELECT IMPRONTA, UTENTE, STATO, NUMERO_FATTURA FROM FATTURE_ELETTRONICHE WHERE NOME = '%1'"_s.arg(
                     first.nome)),
             QStringList(u"%1|%2|scritta|1/ACC"_s.arg(hash, user)));
    for (const char *statement : {"UPDATE FATTURE_ELETTRONICHE SET CONTENUTO = 'x'",
                                  "UPDATE FATTURE_ELETTRONICHE SET NOME = 'x'", "DELETE FROM FATTURE_ELETTRONICHE"}) {
        const QString refused = test::errorOf([&] { workplace_->database().execute(QString::fromLatin1(statement)); });
        QVERIFY2(refused.contains(u"non cambia"_s), qPrintable(refused));
    }
    QCOMPARE(write(keys_[0]).contenuto, first.contenuto);
    QVERIFY(first.contenuto.contains("<PrezzoTotale>23.70</PrezzoTotale>") || first.contenuto.contains("23.7"));
}

void TestInvoiceFiles::editedInvoice()
{
    const QString question = u"Il file elettronico di questa fattura è già stato scritto:\n\rle modifiche non vi "
                             "compariranno. Salvarle comunque?"_s;
    const QString first = write(keys_[0]).nome;
    invoice_->form().ApriRecord(keys_[0]);
    const auto *label = invoice_->control<QLabel>(u"lblFatturaElettronica"_s);
    QVERIFY(label->isVisible());
    QCOMPARE(label->text(), u"Fattura elettronica: %1, scritta"_s.arg(first));
    const auto edit = [&](const QString &quantity, core::Answer answer) {
        invoice_->showPage(1);
        test::typeIntoCell(invoice_->grid(), 0, u"Q.tà"_s, quantity);
        workplace_->messages.expectQuestion(question, answer);
        invoice_->save();
        QCOMPARE(problems(), QString());
    };
    edit(u"4"_s, core::Answer::No);
    QCOMPARE(invoice_->flags(), u"stored modified"_s);
    QCOMPARE(stateOf(keys_[0]), u"scritta"_s);
    edit(u"5"_s, core::Answer::Yes);
    QCOMPARE(label->text(), u"Fattura elettronica: %1, scritta – modificata dopo l'invio"_s.arg(first));
    // Not sent yet: a new file, under another name.
    const fatturapa::Esito second = write(keys_[0]);
    QVERIFY(second.nuovo && second.nome != first);
    QCOMPARE(stateOf(keys_[0]), u"scritta"_s);
    // Sent: what was sent stays.
    fatturapa::impostaStato(connection(), fatturapa::ultimoFile(connection(), keys_[0])->id, fatturapa::stato::inviata,
                            test::workplaceTime());
    edit(u"6"_s, core::Answer::Yes);
    const fatturapa::Esito third = write(keys_[0]);
    QVERIFY(!third.nuovo && third.modificata);
    QCOMPARE(third.contenuto, second.contenuto);
    invoice_->trigger(u"actNuovo"_s);
    QVERIFY(!label->isVisible());
}

void TestInvoiceFiles::deletedInvoice()
{
    const QString kept = u"Non è possibile eliminare questa fattura,\n\ril suo file elettronico è già stato scritto!"_s;
    invoice_->form().ApriRecord(keys_[0]);
    // Another workstation writes the file while the user is being asked.
    workplace_->messages.expectQuestion(u"Confermare l'eliminazione?"_s, core::Answer::Yes);
    workplace_->messages.whileShown([this] { write(keys_[0]); });
    workplace_->messages.expectError(
        u"Si è verificato un errore durante l'eliminazione dei dati,\n\rl'operazione è stata annullata!"_s);
    invoice_->trigger(u"actElimina"_s);
    QCOMPARE(problems(), QString());
    workplace_->messages.expectWarning(kept);
    invoice_->trigger(u"actElimina"_s);
    QCOMPARE(problems(), QString());
    QCOMPARE(workplace_->lines(u"SELECT COUNT(*) FROM FATT_ACC"_s), QStringList(u"3"_s));
    QCOMPARE(workplace_->lines(u"SELECT COUNT(*) FROM FATT_ACC_DETT"_s), QStringList(u"3"_s));
}

QWidget *TestInvoiceFiles::openWindow()
{
    window_ = workplace_->module().openForm(u"actFattureElettroniche"_s);
    test::settle();
    return window_;
}

void TestInvoiceFiles::writeAll()
{
    openWindow();
    const auto before = ui::setFolderChooser([this](QWidget *, const QString &) { return folder_->path(); });
    workplace_->messages.expect(u"Informazioni"_s, u"3 file scritti."_s, core::MessageIcon::Information);
    QTest::keyClick(grid(), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(grid(), Qt::Key_F8);
    ui::setFolderChooser(before);
    QCOMPARE(problems(), QString());
}

namespace {

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void put(const QString &path, const QByteArray &content)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
}

const QString information = u"Informazioni"_s;

} // namespace

void TestInvoiceFiles::window()
{
    writeAll();
    QCOMPARE(states(), QStringList(3, u"scritta"_s));
    QCOMPARE(test::columnTexts(grid(), u"Giorni"_s), QStringList(3, u"12"_s));
    for (const int key : std::as_const(keys_)) {
        const fatturapa::Esito written = write(key);
        QVERIFY(!written.nuovo);
        QCOMPARE(contentOf(folder_->filePath(written.nome)), written.contenuto);
    }
    // Set by hand, and back.
    test::selectRow(grid(), u"2"_s);
    test::trigger(window_, u"actSegnaInviata"_s);
    QCOMPARE(states(), QStringList({u"scritta"_s, u"inviata"_s, u"scritta"_s}));
    QCOMPARE(test::cellText(grid(), 1, u"Giorni"_s), QString());
    test::trigger(window_, u"actSegnaInviata"_s);
    QCOMPARE(states(), QStringList(3, u"scritta"_s));
    // What the file says, as pages.
    test::trigger(window_, u"actStampa"_s);
    const auto previews = workplace_->window().findChildren<host::PreviewWindow *>();
    QCOMPARE(previews.size(), 1);
    QVERIFY(previews[0]->document().pageCount() >= 1);
    openWindow();
    grid()->setFocus();
    // A folder that cannot be written to: the file is registered, and written elsewhere under the same name.
    workplace_->database().execute(
        u"UPDATE FATTURE_ELETTRONICHE SET STATO = 'scartata' WHERE IDDOCUMENTO = %1"_s.arg(keys_[1]));
    const auto before = ui::setFolderChooser([](QWidget *, const QString &) { return u"/dev/null/cartella"_s; });
    workplace_->messages.expectPart(u"Errore"_s, u"è nel registro, ma non nella cartella"_s, core::Answer::Ok);
    QTest::keyClick(grid(), Qt::Key_F8);
    QCOMPARE(problems(), QString());
    const QString name = fatturapa::ultimoFile(connection(), keys_[1])->nome;
    ui::setFolderChooser([this](QWidget *, const QString &) { return folder_->path(); });
    workplace_->messages.expectPart(information, u"1 file c'era già"_s, core::Answer::Ok);
    QTest::keyClick(grid(), Qt::Key_F8);
    ui::setFolderChooser(before);
    QCOMPARE(contentOf(folder_->filePath(name)), write(keys_[1]).contenuto);
    QCOMPARE(workplace_->lines(u"SELECT COUNT(*) FROM FATTURE_ELETTRONICHE"_s), QStringList(u"4"_s));
}

void TestInvoiceFiles::findings_data()
{
    QTest::addColumn<QString>("change");
    QTest::addColumn<QString>("state");
    QTest::addColumn<QString>("control");
    const auto row = [](const char *name, const QString &change, bool prevents, const QString &control) {
        QTest::newRow(name) << change << (prevents ? u"con rilievi"_s : u"da fare"_s) << control;
    };
    const QString ofCustomer = u" WHERE CODICE = (SELECT FIRST 1 CLI_CODICE FROM FATT_ACC)"_s;
    row("firm", u"UPDATE AZIENDA SET REGIMEFISCALE = NULL"_s, true, u"txtRegimeFiscale"_s);
    row("customer", u"UPDATE CLIENTI SET CODICEDESTINATARIO = 'ABC'"_s + ofCustomer, true, u"txtCodiceDestinatario"_s);
    row("payment", u"UPDATE TIPI_PAGAMENTO SET MODALITA = NULL"_s, false, u"txtModalita"_s);
    row("rate", u"UPDATE FATT_ACC_DETT SET IVA_ALIQUOTA = 0"_s, true, u"txtNatura"_s);
    row("invoice", u"UPDATE FATT_ACC SET COLLI = 10000"_s, false, u"txtColli"_s);
    row("row", u"UPDATE FATT_ACC_DETT SET DESCRIZIONE = '日本'"_s, true, u"gridRigheFattura"_s);
}

// "Apri" leads to the field from which the finding comes.
void TestInvoiceFiles::findings()
{
    QFETCH(QString, change);
    QFETCH(QString, control);
    workplace_->database().execute(change);
    openWindow();
    test::selectRow(grid(), u"2"_s);
    QTest::keyClick(grid(), Qt::Key_F7);
    QTEST(test::cellText(grid(), 1, u"Stato"_s), "state");
    QCOMPARE(test::cellText(grid(), 0, u"Stato"_s), u"da fare"_s);
    auto *list = test::control<QTableView>(window_, u"gridRilievi"_s);
    bool reached = false;
    for (int row = 0; row < list->model()->rowCount() && !reached; ++row) {
        list->selectRow(row);
        QTest::keyClick(list, Qt::Key_Return);
        test::settle();
        const QWidget *focus = workplace_->window().focusWidget();
        reached = focus && (focus->objectName() == control);
    }
    QVERIFY2(reached, qPrintable(test::columnTexts(list, u"Che cosa"_s).join(u'\n')));
}

QString TestInvoiceFiles::receipt(const QString &root, const QString &file, const QString &errors) const
{
    static int number = 0;
    const QString path =
        folder_->filePath(u"%1_RC_%2.xml"_s.arg(file.section(u'.', 0, 0)).arg(++number, 3, 10, QChar(u'0')));
    put(path,
        u"<?xml version=\"1.0\" encoding=\"UTF-8\"?><ns3:%1 "
        u"xmlns:ns3=\"http://www.fatturapa.gov.it/sdi/messaggi/v1.0\" "
        "versione=\"1.0\"><IdentificativoSdI>%4</IdentificativoSdI><NomeFile>%2</NomeFile>"
        "<DataOraRicezione>2026-03-15T09:00:00.000+01:00</DataOraRicezione>%3<RiferimentoArchivio><NomeFile>altro.zip"
        "</NomeFile></RiferimentoArchivio></ns3:%1>"_s
            .arg(root, file, errors.isEmpty() ? QString() : u"<ListaErrori>%1</ListaErrori>"_s.arg(errors))
            .arg(number)
            .toUtf8());
    return path;
}

void TestInvoiceFiles::drop(const QStringList &files) const
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
}

void TestInvoiceFiles::receipts_data()
{
    QTest::addColumn<QStringList>("roots");
    QTest::addColumn<QString>("state");
    QTest::addColumn<QString>("days");
    QTest::newRow("RC") << QStringList{u"RicevutaConsegna"_s} << u"consegnata"_s << QString();
    QTest::newRow("NS") << QStringList{u"RicevutaScarto"_s} << u"scartata"_s << u"4"_s;
    QTest::newRow("NS, office") << QStringList{u"NotificaScarto"_s} << u"scartata"_s << u"4"_s;
    QTest::newRow("MC") << QStringList{u"RicevutaImpossibilitaRecapito"_s} << u"non consegnata"_s << QString();
    QTest::newRow("DT") << QStringList{u"NotificaDecorrenzaTermini"_s} << u"consegnata"_s << QString();
    QTest::newRow("AT") << QStringList{u"AttestazioneTrasmissioneFattura"_s} << u"non consegnata"_s << QString();
    QTest::newRow("in any order") << QStringList{u"RicevutaConsegna"_s, u"NotificaMancataConsegna"_s} << u"consegnata"_s
                                  << QString();
}

void TestInvoiceFiles::receipts()
{
    QFETCH(QStringList, roots);
    writeAll();
    const fatturapa::Esito written = write(keys_[1]);
    QStringList files;
    for (const QString &root : roots)
        files.append(receipt(root, written.nome + u".p7m"_s,
                             u"<Errore><Codice>00404</Codice><Descrizione>Fattura duplicata</Descrizione>"
                             "<Suggerimento>Cambiare il numero</Suggerimento></Errore>"_s));
    test::selectRow(grid(), u"2"_s);
    workplace_->messages.expect(information, roots.size() == 1 ? u"1 ricevuta letta."_s : u"2 ricevute lette."_s,
                                core::MessageIcon::Information);
    drop(files);
    QCOMPARE(problems(), QString());
    QTEST(test::cellText(grid(), 1, u"Stato"_s), "state");
    QTEST(test::cellText(grid(), 1, u"Giorni"_s), "days");
    QCOMPARE(test::cellText(grid(), 0, u"Stato"_s), u"scritta"_s);
    QCOMPARE(test::columnTexts(test::control<QTableView>(window_, u"gridRilievi"_s), u"Che cosa"_s),
             QStringList(roots.size(), u"Fattura duplicata Cambiare il numero"_s));
    // A refused invoice keeps number and date, and gets another name.
    const fatturapa::Esito again = write(keys_[1]);
    QCOMPARE(again.nuovo, states().value(1) == u"scartata");
    QCOMPARE(again.nome == written.nome, !again.nuovo);
    QVERIFY(again.contenuto.contains("<Numero>2/ACC</Numero>"));
}

// Whatever lies in the folder: each is told once, and what is no receipt changes nothing.
void TestInvoiceFiles::readings()
{
    writeAll();
    const QString ours = receipt(u"RicevutaConsegna"_s, write(keys_[0]).nome);
    const QString unknown = receipt(u"RicevutaConsegna"_s, u"IT01234567890_ZZZZZ.xml"_s);
    const QString bomb = folder_->filePath(u"bomba_RC_001.xml"_s);
    put(bomb, "<!DOCTYPE x [<!ENTITY a \"aaaa\"><!ENTITY b \"&a;&a;\">]><RicevutaConsegna><NomeFile>&b;</NomeFile>"
              "</RicevutaConsegna>");
    const QString broken = folder_->filePath(u"rotta_RC_001.xml"_s);
    put(broken, contentOf(ours).chopped(20));
    const QString foreign = folder_->filePath(u"altro_RC_001.xml"_s);
    put(foreign, "<Fattura><NomeFile>x</NomeFile></Fattura>");
    const QString nothing = folder_->filePath(u"vuota_RC_001.xml"_s);
    put(nothing, {});
    const auto before = ui::setFolderChooser([this](QWidget *, const QString &) { return folder_->path(); });
    const auto restore = qScopeGuard([&] { ui::setFolderChooser(before); });
    for (const bool first : {true, false}) {
        workplace_->messages.expectPart(information,
                                        first ? u"1 ricevuta letta.\n\rDi file che non sono nel registro:\n\r"_s
                                              : u"0 ricevute lette.\n\rGià lette prima:\n\r"_s,
                                        core::Answer::Ok);
        test::trigger(window_, u"actLeggiRicevute"_s);
        QCOMPARE(problems(), QString());
        QCOMPARE(states(), QStringList({u"scritta"_s, u"scritta"_s, u"consegnata"_s}));
    }
    for (const QString &file : {bomb, broken, foreign, nothing}) {
        workplace_->messages.expectPart(information, u"0 ricevute lette.\n\rNon sono ricevute:\n\r"_s,
                                        core::Answer::Ok);
        drop({file});
        QCOMPARE(problems(), QString());
    }
    QCOMPARE(workplace_->lines(u"SELECT TIPO FROM RICEVUTE_FATT_EL"_s), QStringList(u"RC"_s));
}

void TestInvoiceFiles::mail()
{
    writeAll();
    test::selectRow(grid(), u"2"_s);
    ui::Mail sent;
    ui::MailOpened result = ui::MailOpened::WithAttachment;
    const auto before = ui::setMailOpener([&](const ui::Mail &mail) {
        sent = mail;
        return result;
    });
    const auto restore = qScopeGuard([&] { ui::setMailOpener(before); });
    test::trigger(window_, u"actInviaConLaPosta"_s);
    QCOMPARE(contentOf(sent.attachment), write(keys_[1]).contenuto);
    QCOMPARE(sent.to, u"sdi01@pec.fatturapa.it"_s);
    result = ui::MailOpened::WithoutAttachment;
    workplace_->messages.expectPart(information, sent.attachment, core::Answer::Ok);
    test::trigger(window_, u"actInviaConLaPosta"_s);
    QCOMPARE(problems(), QString());
}

void TestInvoiceFiles::rights()
{
    SetKxCurrentUserName(u"UFFICIO"_s);
    openWindow();
    QCOMPARE(states(), QStringList(3, u"da fare"_s));
    test::selectRow(grid(), u"2"_s);
    for (const char *command : {"actScriviFile", "actSegnaInviata", "actLeggiRicevute", "actInviaConLaPosta"}) {
        workplace_->messages.expectWarning(u"Non si dispone di diritti sufficienti per eseguire questa operazione."_s);
        test::trigger(window_, QString::fromLatin1(command));
        QCOMPARE(problems(), QString());
    }
    test::trigger(window_, u"actControlla"_s);
    SetKxCurrentUserName(u"AMMINISTRATORE"_s);
}

static const test::Registered<TestInvoiceFiles> registered;
#include "test_invoice_files.moc"
