#include "tests/magazzino/registri/Registri.h"
#include "tests/support/TestMain.h"

#include <QTableView>

using namespace Qt::StringLiterals;

namespace {

const QString saveError = u"Si è verificato un errore durante il salvataggio dei dati!"_s;
const QString deleting = u"Confermare l'eliminazione?"_s;

} // namespace

class TestRegisters : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { workplace_ = std::make_unique<test::Workplace>(); }
    void cleanup() { workplace_.reset(); }

    void newRecordComesBackAndIsChangedAlone_data() { eachRegister(); }
    void newRecordComesBackAndIsChangedAlone();
    void sameTextIsRefusedForOthersOnly_data() { eachRegister(u"CAUSALI_TRASPORTO"_s); }
    void sameTextIsRefusedForOthersOnly();
    void reasonIsNotCheckedByTheForm();
    void deletion_data() { eachRegister(); }
    void deletion();
    void supplierListChecksTheFilterText();
    void reasonListDeletesTheType();

private:
    static void eachRegister(const QString &but = {});
    /// The register of the test's data row.
    static const test::Register &names()
    {
        return test::registerOf(QString::fromLatin1(QTest::currentDataTag()).section(u' ', 0, 0));
    }
    static QString mainControl() { return names().controls.section(u' ', 0, 0); }
    test::Workplace &place() const { return *workplace_; }
    QStringList stored(const test::Register &names) const
    {
        return place().lines(u"SELECT * FROM %1 ORDER BY 1"_s.arg(names.table));
    }
    /// The stored text that identifies a record.
    QString storedText(int id) const
    {
        return place()
            .lines(u"SELECT * FROM %1 WHERE %2 = %3"_s.arg(names().table, names().key).arg(id))
            .value(0)
            .section(u'|', 1, 1);
    }
    ui::EntryForm *open(const test::Register &names) const
    {
        return test::openEntry(place(), u"actInserimento"_s + names.name);
    }
    /// Triggers a command that tells what the test expects.
    void told(QWidget *form, const QString &command) const
    {
        test::trigger(form, command);
        QCOMPARE(place().messages.verify(), QStringList());
    }
    /// The list with every record in it.
    ui::SearchForm *fullList(const test::Register &names) const;

    std::unique_ptr<test::Workplace> workplace_;
};

void TestRegisters::eachRegister(const QString &but)
{
    QTest::addColumn<int>("unused");
    for (const test::Register &names : test::registers()) {
        if (names.table != but)
            QTest::newRow(qPrintable(names.table)) << 0;
    }
}

ui::SearchForm *TestRegisters::fullList(const test::Register &names) const
{
    ui::SearchForm *list = test::openList(place(), u"actRicerca"_s + names.name);
    test::trigger(list, u"actCerca"_s);
    return list;
}

void TestRegisters::newRecordComesBackAndIsChangedAlone()
{
    const test::Register &names = TestRegisters::names();
    QStringList expected = stored(names);
    const int key = static_cast<int>(expected.size()) + 1;
    ui::EntryForm *form = open(names);
    const QString code = names.prefix.isEmpty() ? QString() : names.prefix + u"%1"_s.arg(key, 6, 10, QLatin1Char('0'));
    QCOMPARE(test::shown(form, mainControl()), code);
    const QStringList controls = names.controls.split(u' ');
    QStringList texts;
    for (const QString &control : controls) {
        texts.append(QChar(u'A' + static_cast<int>(texts.size())) + u"'"_s);
        test::retype(form, control, texts.last());
    }
    test::trigger(form, u"actSalva"_s);
    QCOMPARE(test::flagsOf(form), u"stored"_s);
    QCOMPARE(place().lines(u"SELECT %1 FROM %2 WHERE %3 = %4"_s.arg(names.columns, names.table, names.key).arg(key)),
             QStringList({texts.join(u'|')}));
    expected.append(stored(names).last());

    test::trigger(form, u"actNuovo"_s);
    QCOMPARE(form->IdRecord(), -1);
    form->openRecord(key);
    QStringList shown;
    for (const QString &control : controls)
        shown.append(test::shown(form, control));
    QCOMPARE(shown, texts);

    form->openRecord(2);
    const QString before = test::shown(form, mainControl());
    test::retype(form, mainControl(), u"Nuovo d'oro"_s);
    QCOMPARE(test::flagsOf(form), u"stored modified"_s);
    test::trigger(form, u"actSalva"_s);
    expected[1].replace(u'|' + before, u"|Nuovo d'oro"_s);
    QCOMPARE(stored(names), expected);
}

void TestRegisters::sameTextIsRefusedForOthersOnly()
{
    const QString taken = storedText(1);
    ui::EntryForm *form = open(names());
    if (!names().prefix.isEmpty())
        test::retype(form, u"txtRagioneSociale"_s, u"Ditta"_s);
    for (const QString &text : {taken, taken.toLower(), taken.toUpper()}) {
        test::retype(form, mainControl(), text);
        place().messages.expectWarning(names().duplicate);
        told(form, u"actSalva"_s);
        QCOMPARE(test::flagsOf(form), u"new modified"_s);
    }
    form->SetModified(false);
    form->openRecord(1);
    test::retype(form, mainControl(), taken.toLower());
    test::trigger(form, u"actSalva"_s);
    QCOMPARE(storedText(1), taken.toLower());
}

void TestRegisters::reasonIsNotCheckedByTheForm()
{
    const test::Register &names = test::registerOf(u"CAUSALI_TRASPORTO"_s);
    ui::EntryForm *form = open(names);
    form->SetModified(true);
    test::trigger(form, u"actSalva"_s);
    QCOMPARE(stored(names).last(), u"11|"_s);
    // What the form lets through the table still refuses.
    test::trigger(form, u"actNuovo"_s);
    test::retype(form, u"txtCausaleTrasporto"_s, u"Vendita"_s);
    place().messages.expectError(saveError);
    told(form, u"actSalva"_s);
    QCOMPARE(test::flagsOf(form), u"new modified"_s);
    QCOMPARE(stored(names).last(), u"11|"_s);
}

void TestRegisters::deletion()
{
    const test::Register &names = TestRegisters::names();
    QStringList expected = stored(names);
    const QString referenced = storedText(1);
    test::refer(place(), names, 1);
    ui::EntryForm *form = open(names);
    form->openRecord(1);
    place().messages.expectWarning(names.entryRefusal);
    told(form, u"actElimina"_s);
    form->openRecord(2);
    for (const core::Answer answer : {core::Answer::No, core::Answer::Yes}) {
        QCOMPARE(stored(names), expected);
        place().messages.expectQuestion(deleting, answer);
        told(form, u"actElimina"_s);
    }
    expected.removeAt(1);
    QCOMPARE(stored(names), expected);
    QCOMPARE(test::flagsOf(form), u"new"_s);

    ui::SearchForm *list = fullList(names);
    test::selectRow(test::gridOf(list), referenced);
    if (names.table == u"FORNITORI")
        test::retype(list, u"txtCodice"_s, referenced);
    place().messages.expectWarning(names.listRefusal);
    told(list, u"actElimina"_s);
    QCOMPARE(stored(names), expected);
    if (names.table == u"CAUSALI_TRASPORTO")
        return; // what its list deletes is a case of its own
    test::trigger(list, u"actRipristina"_s);
    test::selectRow(test::gridOf(list), storedText(3));
    place().messages.expectQuestion(deleting, core::Answer::Yes);
    told(list, u"actElimina"_s);
    expected.removeAt(1);
    QCOMPARE(stored(names), expected);
    QCOMPARE(test::gridOf(list)->model()->rowCount(), expected.size());
}

void TestRegisters::supplierListChecksTheFilterText()
{
    const test::Register &names = test::registerOf(u"FORNITORI"_s);
    test::refer(place(), names, 1);
    ui::SearchForm *list = fullList(names);
    const QStringList before = stored(names);
    test::selectRow(test::gridOf(list), u"Bulloneria Lombarda S.r.l."_s);
    test::retype(list, u"txtCodice"_s, before.first().section(u'|', 1, 1));
    place().messages.expectWarning(names.listRefusal);
    told(list, u"actElimina"_s);
    QCOMPARE(stored(names), before);
}

void TestRegisters::reasonListDeletesTheType()
{
    const test::Register &reasons = test::registerOf(u"CAUSALI_TRASPORTO"_s);
    const test::Register &types = test::registerOf(u"TIPI_TRASPORTO"_s);
    const QStringList reasonsBefore = stored(reasons);
    ui::SearchForm *list = fullList(reasons);
    test::selectRow(test::gridOf(list), u"Reso"_s); // key 2, as the type "Vettore"
    place().messages.expectQuestion(deleting, core::Answer::Yes);
    told(list, u"actElimina"_s);
    QCOMPARE(stored(reasons), reasonsBefore);
    QCOMPARE(stored(types), QStringList({u"1|Mittente"_s, u"3|Destinatario"_s}));
}

static const test::Registered<TestRegisters> registered;

#include "test_registers.moc"
