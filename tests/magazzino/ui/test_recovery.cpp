#include "magazzino/uMMGModMagazzino.h"
#include "platform/core/Error.h"
#include "platform/data/Connection.h"
#include "tests/support/Documents.h"
#include "tests/support/TestMain.h"

#include <QLineEdit>
#include <QPlainTextEdit>

using namespace Qt::StringLiterals;

namespace {

const QString unsaved = u"Ci sono delle modifiche non salvate.\n\rContinuare comunque?"_s;
const QString saveFirst = u"Salvare le modifiche al record corrente\n\rprima di continuare?"_s;

} // namespace

/// "Recupera": what was given up unsaved comes back.
class TestRecovery : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { workplace_ = std::make_unique<test::Workplace>(); }
    void cleanup() { workplace_.reset(); }

    void documentComesBackWhole_data();
    void documentComesBackWhole();
    void refusedSaveOfAClosingNoteComesBack_data();
    void refusedSaveOfAClosingNoteComesBack();
    void changedRecordKeepsWhatItWasOpenedFrom();
    void unreadableTextComesBack();
    void twoAreExchanged();

private:
    static const test::DocumentNames &names(const QString &kind);
    void fill(const test::Document &document) const;
    void giveUp(const test::Document &document, const QString &way, const QString &kind);
    ui::EntryForm *supplier() const
    {
        return qobject_cast<ui::EntryForm *>(workplace_->module().openForm(u"actInserimentoFornitori"_s));
    }
    static QLineEdit *nameOf(const QWidget *form) { return test::control<QLineEdit>(form, u"txtRagioneSociale"_s); }

    std::unique_ptr<test::Workplace> workplace_;
};

const test::DocumentNames &TestRecovery::names(const QString &kind)
{
    if (kind == u"invoice"_s)
        return test::accompanyingInvoice();
    return kind == u"receipt"_s ? test::receipt() : test::deliveryNote();
}

void TestRecovery::fill(const test::Document &document) const
{
    document.fillHeader();
    test::typeOver(document.control<QLineEdit>(u"txtData"_s), u"28/2/25"_s);
    test::typeOver(document.control<QLineEdit>(u"txtPeso"_s), u"12.5"_s);
    document.addArticle(u"TRA-0018"_s, u"7.25"_s, u"3"_s);
    document.addArticle(u"SMA-0750"_s, u"4"_s, u"1,5"_s);
    test::type(document.control<QPlainTextEdit>(u"txtNote"_s), u"Fragile"_s);
    if (auto *moment = document.form().findChild<QAbstractButton *>(u"chkInizioTrasporto"_s))
        moment->click();
    if (auto *supplier = document.form().command(u"actSelezionaFornitore"_s);
        supplier && document.form().objectName() == u"MMGInserimentoDdTScarico"_s)
        document.choose(u"actSelezionaFornitore"_s, test::choosing(u"Acciaierie Brentane S.p.A."_s));
    if (auto *recurring = document.form().findChild<QAbstractButton *>(u"chkFattureCicliche"_s)) {
        recurring->click();
        test::typeOver(document.control<QLineEdit>(u"txtGeneraOgni"_s), u"2"_s);
    }
}

void TestRecovery::giveUp(const test::Document &document, const QString &way, const QString &kind)
{
    if (way == u"actChiudi"_s && kind != u"receipt"_s)
        workplace_->messages.expectQuestion(saveFirst, core::Answer::No);
    else if (way != u"actElimina"_s)
        workplace_->messages.expectQuestion(unsaved, core::Answer::Yes);
    document.trigger(way);
    QCOMPARE(workplace_->messages.verify(), QStringList());
}

void TestRecovery::documentComesBackWhole_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("way");
    const QList<std::pair<QString, QString>> rows = {{u"receipt"_s, u"actNuovo"_s},
                                                     {u"receipt"_s, u"actChiudi"_s},
                                                     {u"note"_s, u"actElimina"_s},
                                                     {u"invoice"_s, u"actChiudi"_s}};
    for (const auto &[kind, way] : rows)
        QTest::addRow("%s, %s", qPrintable(kind), qPrintable(way)) << kind << way;
}

// Saved after it came back, everything stored is as if it had never been given up.
void TestRecovery::documentComesBackWhole()
{
    QFETCH(QString, kind);
    QFETCH(QString, way);
    QStringList expected;
    {
        const test::Document document(*workplace_, names(kind));
        fill(document);
        document.save();
        expected = document.stored();
        QVERIFY(!expected.isEmpty());
    }
    workplace_.reset();
    init();
    {
        const test::Document document(*workplace_, names(kind));
        fill(document);
        giveUp(document, way, kind);
    }
    const test::Document document(*workplace_, names(kind));
    QCOMPARE(document.flags(), u"new"_s);
    document.trigger(u"actRecupera"_s);
    QCOMPARE(document.flags(), u"new modified"_s);
    document.save();
    QCOMPARE(document.stored(), expected);
    QVERIFY(!document.form().command(u"actRecupera"_s)->isEnabled());
}

void TestRecovery::refusedSaveOfAClosingNoteComesBack_data()
{
    QTest::addColumn<bool>("byTheDatabase");
    QTest::newRow("by a check") << false;
    QTest::newRow("by the database") << true;
}

void TestRecovery::refusedSaveOfAClosingNoteComesBack()
{
    QFETCH(bool, byTheDatabase);
    data::Connection &connection = *workplace_->module().ModADOConn;
    {
        const test::Document note(*workplace_, test::deliveryNote());
        note.addArticle(u"TRA-0018"_s, u"7"_s, u"3"_s);
        if (byTheDatabase) {
            note.fillHeader();
            connection.setStatementHook([](const QString &sql) {
                if (sql.startsWith(u"INSERT"))
                    throw core::Error(u"rete interrotta"_s);
            });
            workplace_->messages.expectError(u"Si è verificato un errore durante il salvataggio dei dati!"_s);
            note.save(); // after which the note counts as saved, so that closing asks nothing
        } else {
            workplace_->messages.expectQuestion(saveFirst, core::Answer::Yes);
            workplace_->messages.expectWarning(u"Non è stato selezionato un cliente!"_s);
        }
        note.trigger(u"actChiudi"_s);
        connection.setStatementHook({});
    }
    const test::Document note(*workplace_, test::deliveryNote());
    QCOMPARE(note.grid()->model()->rowCount(), 0);
    note.trigger(u"actRecupera"_s);
    if (!byTheDatabase)
        note.fillHeader();
    note.save();
    QCOMPARE(workplace_->lines(u"SELECT CODICE, QUANTITA FROM DDT_SCARICO_DETT"_s), QStringList(u"TRA-0018|3"_s));
}

void TestRecovery::changedRecordKeepsWhatItWasOpenedFrom()
{
    ui::EntryForm *form = supplier();
    form->openRecord(1);
    const QString code = test::shown(form, u"txtCodice"_s);
    test::typeOver(nameOf(form), u"Mio"_s);
    workplace_->messages.expectQuestion(unsaved, core::Answer::Yes);
    test::trigger(form, u"actChiudi"_s);
    workplace_->database().execute(u"UPDATE FORNITORI SET RAGIONESOCIALE = 'Altrui' WHERE IDFORNITORE = 1"_s);
    form = supplier();
    QCOMPARE(nameOf(form)->text(), QString());
    test::trigger(form, u"actRecupera"_s);
    QCOMPARE(test::shown(form, u"txtCodice"_s), code);
    workplace_->messages.expectQuestion(
        u"Il record è stato modificato da un'altra postazione dopo l'apertura.\n\rSovrascrivere?"_s, core::Answer::Yes);
    test::trigger(form, u"actSalva"_s);
    QCOMPARE(workplace_->lines(u"SELECT RAGIONESOCIALE FROM FORNITORI WHERE IDFORNITORE = 1"_s), QStringList(u"Mio"_s));
}

void TestRecovery::unreadableTextComesBack()
{
    QWidget *form = workplace_->module().openForm(u"actInserimentoMovimentiMagazzino"_s);
    auto *date = test::control<QLineEdit>(form, u"txtDataMovimento"_s);
    test::typeOver(date, u"31/02/2025"_s);
    workplace_->messages.expectQuestion(unsaved, core::Answer::Yes);
    test::trigger(form, u"actNuovo"_s);
    QCOMPARE(date->text(), u"16/03/2026"_s);
    test::trigger(form, u"actRecupera"_s);
    QCOMPARE(date->text(), u"31/02/2025"_s);
    QVERIFY(date->property("red").toBool());
}

void TestRecovery::twoAreExchanged()
{
    const ui::EntryForm *form = supplier();
    QVERIFY(!form->command(u"actRecupera"_s)->isEnabled());
    test::type(nameOf(form), u"Primo"_s);
    workplace_->messages.expectQuestion(unsaved, core::Answer::Yes);
    test::trigger(form, u"actNuovo"_s);
    test::type(nameOf(form), u"Secondo"_s);
    for (const QString &name : {u"Primo"_s, u"Secondo"_s, u"Primo"_s}) {
        test::trigger(form, u"actRecupera"_s);
        QCOMPARE(nameOf(form)->text(), name);
    }
}

static const test::Registered<TestRecovery> registered;

#include "test_recovery.moc"
