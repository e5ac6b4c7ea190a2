#include "tests/magazzino/registri/Registri.h"
#include "tests/support/TestMain.h"

#include <QLineEdit>
#include <QTableView>

using namespace Qt::StringLiterals;

namespace {

const QString saveError = u"Si è verificato un errore durante il salvataggio dei dati!"_s;
const QString unsaved = u"Ci sono delle modifiche non salvate.\n\rContinuare comunque?"_s;
const QString deleting = u"Confermare l'eliminazione?"_s;

/// A text of `length` characters with what texts in this country hold; a different one for each field.
QString sample(int length, int field)
{
    static const QString letters = u"aà'è%b_ç"_s;
    QString text;
    for (int i = 0; i < length; ++i)
        text += letters[(i + field) % letters.size()];
    return text;
}

} // namespace

class TestRegisters : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { workplace_ = std::make_unique<test::Workplace>(); }
    void cleanup() { workplace_.reset(); }

    void newRecordIsEmptyButForItsCode_data() { eachRegister(); }
    void newRecordIsEmptyButForItsCode();
    void everyFieldIsLimitedSavedAndLoaded_data() { eachRegister(); }
    void everyFieldIsLimitedSavedAndLoaded();
    void changeReachesItsRecordOnly_data() { eachRegister(); }
    void changeReachesItsRecordOnly();
    void checksRunInOrder_data();
    void checksRunInOrder();
    void sameTextIsRefusedForOthersOnly_data()
    {
        eachRegister([](const auto &names) { return !names.duplicate.isEmpty(); });
    }
    void sameTextIsRefusedForOthersOnly();
    void proposedCodeTakenByAnother_data()
    {
        eachRegister([](const auto &names) { return !names.prefix.isEmpty(); });
    }
    void proposedCodeTakenByAnother();
    void reasonIsNotCheckedByTheForm();
    void tooLongForTheColumnStaysInTheForm_data() { eachRegister(narrowField); }
    void tooLongForTheColumnStaysInTheForm();
    void deletionInTheForm_data() { eachRegister(); }
    void deletionInTheForm();
    void deletionInTheList_data()
    {
        eachRegister([](const auto &names) { return names.table != u"CAUSALI_TRASPORTO"; });
    }
    void deletionInTheList();
    void supplierListChecksTheFilterText();
    void reasonListDeletesTheType();
    void paymentTypeIsChosenAndTakenBack();
    void unsavedChangesAreAskedForOnce_data();
    void unsavedChangesAreAskedForOnce();
    void missingRecordLeavesTheForm();

private:
    using Choice = std::function<bool(const test::Register &)>;
    static void eachRegister(const Choice &wanted = {});
    /// The input whose column takes less than can be typed, or null.
    static const test::RegisterField *narrowField(const test::Register &names);
    /// The register of the test's data row.
    static const test::Register &names()
    {
        return test::registerOf(QString::fromLatin1(QTest::currentDataTag()).section(u' ', 0, 0));
    }
    test::Workplace &place() const { return *workplace_; }
    QStringList stored(const test::Register &names) const
    {
        return place().lines(u"SELECT * FROM %1 ORDER BY 1"_s.arg(names.table));
    }
    QString storedText(const test::RegisterField &field, int id) const;
    /// A new form with the least that can be saved.
    ui::EntryForm *startNew(const test::Register &names, const QString &text) const;
    /// The list with every record in it.
    ui::SearchForm *fullList(const test::Register &names) const;

    std::unique_ptr<test::Workplace> workplace_;
};

void TestRegisters::eachRegister(const Choice &wanted)
{
    QTest::addColumn<int>("unused");
    for (const test::Register &names : test::registers()) {
        if (!wanted || wanted(names))
            QTest::newRow(qPrintable(names.table)) << 0;
    }
}

const test::RegisterField *TestRegisters::narrowField(const test::Register &names)
{
    for (const test::RegisterField &field : names.fields) {
        if (field.stored > 0 && field.stored < field.limit)
            return &field;
    }
    return nullptr;
}

QString TestRegisters::storedText(const test::RegisterField &field, int id) const
{
    return place()
        .lines(u"SELECT %1 FROM %2 WHERE %3 = %4"_s.arg(field.column, names().table, names().key, QString::number(id)))
        .value(0);
}

ui::EntryForm *TestRegisters::startNew(const test::Register &names, const QString &text) const
{
    ui::EntryForm *form = test::openEntry(place(), names.entryAction);
    test::retype(form, names.fields.first().control, text);
    if (names.fields.size() > 1)
        test::retype(form, names.fields[1].control, u"Ditta "_s + text);
    return form;
}

ui::SearchForm *TestRegisters::fullList(const test::Register &names) const
{
    ui::SearchForm *list = test::openList(place(), names.listAction);
    test::trigger(list, u"actCerca"_s);
    return list;
}

void TestRegisters::newRecordIsEmptyButForItsCode()
{
    const test::Register &names = this->names();
    const ui::EntryForm *form = test::openEntry(place(), names.entryAction);
    const int count = static_cast<int>(stored(names).size());
    QStringList expected(names.fields.size(), QString());
    if (!names.prefix.isEmpty())
        expected[0] = names.prefix + u"%1"_s.arg(count + 1, 6, 10, QLatin1Char('0'));
    QStringList shown;
    for (const test::RegisterField &field : names.fields)
        shown.append(test::shown(form, field.control));
    QCOMPARE(shown, expected);
    QCOMPARE(test::flagsOf(form), u"new"_s);
    QCOMPARE(form->IdRecord(), -1);
}

void TestRegisters::everyFieldIsLimitedSavedAndLoaded()
{
    const test::Register &names = this->names();
    const int expectedKey = static_cast<int>(stored(names).size()) + 1;
    ui::EntryForm *form = test::openEntry(place(), names.entryAction);
    QStringList texts;
    for (int i = 0; i < names.fields.size(); ++i) {
        const test::RegisterField &field = names.fields[i];
        const QString wanted = field.upper ? sample(field.limit, i).toUpper() : sample(field.limit, i);
        test::retype(form, field.control, sample(field.limit, i) + u"in più"_s);
        QCOMPARE(test::shown(form, field.control), wanted);
        const int length = field.stored > 0 ? field.stored : field.limit;
        texts.append(wanted.left(length));
        test::retype(form, field.control, texts.last());
    }
    QCOMPARE(test::flagsOf(form), u"new modified"_s);
    test::trigger(form, u"actSalva"_s);
    QCOMPARE(test::flagsOf(form), u"stored"_s);
    QCOMPARE(form->IdRecord(), expectedKey);

    test::trigger(form, u"actNuovo"_s);
    form->ApriRecord(expectedKey);
    QCOMPARE(test::flagsOf(form), u"stored"_s);
    for (int i = 0; i < names.fields.size(); ++i) {
        QCOMPARE(storedText(names.fields[i], expectedKey), texts[i]);
        QCOMPARE(test::shown(form, names.fields[i].control), texts[i]);
    }
}

void TestRegisters::changeReachesItsRecordOnly()
{
    const test::Register &names = this->names();
    QStringList expected = stored(names);
    ui::EntryForm *form = test::openEntry(place(), names.entryAction);
    form->ApriRecord(2);
    const QString before = test::shown(form, names.fields.first().control);
    test::retype(form, names.fields.first().control, u"Nuovo d'oro"_s);
    QCOMPARE(test::flagsOf(form), u"stored modified"_s);
    test::trigger(form, u"actSalva"_s);
    QCOMPARE(test::flagsOf(form), u"stored"_s);
    expected[1].replace(u'|' + before, u"|Nuovo d'oro"_s);
    // What was never entered is stored as empty text, which these lines show like NULL.
    QCOMPARE(stored(names), expected);
}

void TestRegisters::checksRunInOrder_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("warning");
    const QString noCode = u"Non è stato indicato il codice!"_s;
    const QString both = u"Codice e ragione sociale sono obbligatori!"_s;
    QTest::newRow("FORNITORI nothing") << u""_s << u""_s << noCode;
    QTest::newRow("FORNITORI name only") << u""_s << u"Ditta"_s << noCode;
    QTest::newRow("FORNITORI code only") << u"F002"_s << u""_s << u"Non è stata indicata la ragione sociale!"_s;
    QTest::newRow("VETTORI nothing") << u""_s << u""_s << both;
    QTest::newRow("VETTORI name only") << u""_s << u"Ditta"_s << both;
    QTest::newRow("VETTORI code only") << u"V002"_s << u""_s << both;
    QTest::newRow("TIPI_TRASPORTO nothing") << u""_s << u""_s << u"Non è stato indicato il tipo di trasporto!"_s;
}

void TestRegisters::checksRunInOrder()
{
    QFETCH(QString, text);
    QFETCH(QString, name);
    QFETCH(QString, warning);
    const test::Register &names = this->names();
    const QStringList before = stored(names);
    ui::EntryForm *form = startNew(names, u"x"_s);
    test::retype(form, names.fields.first().control, text);
    if (names.fields.size() > 1)
        test::retype(form, names.fields[1].control, name);
    place().messages.expectWarning(warning);
    test::trigger(form, u"actSalva"_s);
    QCOMPARE(place().messages.verify(), QStringList());
    QCOMPARE(stored(names), before);
    QCOMPARE(test::flagsOf(form), u"new modified"_s);
    QCOMPARE(test::shown(form, names.fields.first().control), text);
}

void TestRegisters::sameTextIsRefusedForOthersOnly()
{
    const test::Register &names = this->names();
    const QString taken = storedText(names.fields.first(), 1);
    for (const QString &text : {taken, taken.toLower(), taken.toUpper()}) {
        ui::EntryForm *form = startNew(names, text);
        place().messages.expectWarning(names.duplicate);
        test::trigger(form, u"actSalva"_s);
        QCOMPARE(place().messages.verify(), QStringList());
        QCOMPARE(test::flagsOf(form), u"new modified"_s);
        form->SetModified(false);
    }
    ui::EntryForm *form = test::openEntry(place(), names.entryAction);
    form->ApriRecord(1);
    test::retype(form, names.fields.first().control, taken.toLower());
    test::trigger(form, u"actSalva"_s);
    QCOMPARE(storedText(names.fields.first(), 1), taken.toLower());
    form->ApriRecord(2);
    test::retype(form, names.fields.first().control, taken);
    place().messages.expectWarning(names.duplicate);
    test::trigger(form, u"actSalva"_s);
    QCOMPARE(place().messages.verify(), QStringList());
    QCOMPARE(test::flagsOf(form), u"stored modified"_s);
}

// The proposal is made when the form is emptied; the key that another workstation takes meanwhile is given to the
// record at its save.
void TestRegisters::proposedCodeTakenByAnother()
{
    const test::Register &names = this->names();
    const int key = static_cast<int>(stored(names).size()) + 1;
    ui::EntryForm *form = test::openEntry(place(), names.entryAction);
    test::retype(form, u"txtRagioneSociale"_s, u"Ditta"_s);
    const QString proposed = test::shown(form, u"txtCodice"_s);
    QCOMPARE(test::insertInto(place().database(), names.table, {{u"CODICE"_s, proposed}}), key);
    place().messages.expectWarning(names.duplicate);
    test::trigger(form, u"actSalva"_s);
    QCOMPARE(place().messages.verify(), QStringList());
    test::retype(form, u"txtCodice"_s, u"ALTRO"_s);
    test::trigger(form, u"actSalva"_s);
    QCOMPARE(form->IdRecord(), key + 1);
    QCOMPARE(storedText(names.fields.first(), key + 1), u"ALTRO"_s);
    test::trigger(form, u"actNuovo"_s);
    QCOMPARE(test::shown(form, u"txtCodice"_s), names.prefix + u"%1"_s.arg(key + 2, 6, 10, QLatin1Char('0')));
}

void TestRegisters::reasonIsNotCheckedByTheForm()
{
    const test::Register &names = test::registerOf(u"CAUSALI_TRASPORTO"_s);
    ui::EntryForm *form = test::openEntry(place(), names.entryAction);
    const qsizetype before = stored(names).size();
    form->SetModified(true);
    test::trigger(form, u"actSalva"_s);
    QCOMPARE(test::flagsOf(form), u"stored"_s);
    QCOMPARE(stored(names).last(), u"11|"_s);

    test::trigger(form, u"actNuovo"_s);
    test::retype(form, u"txtCausaleTrasporto"_s, u"VENDITA"_s);
    test::trigger(form, u"actSalva"_s);
    QCOMPARE(stored(names).size(), before + 2);

    // What the form lets through the table still refuses.
    test::trigger(form, u"actNuovo"_s);
    test::retype(form, u"txtCausaleTrasporto"_s, u"Vendita"_s);
    place().messages.expectError(saveError);
    test::trigger(form, u"actSalva"_s);
    QCOMPARE(place().messages.verify(), QStringList());
    QCOMPARE(test::flagsOf(form), u"new modified"_s);
    QCOMPARE(test::shown(form, u"txtCausaleTrasporto"_s), u"Vendita"_s);
    QCOMPARE(stored(names).size(), before + 2);
}

void TestRegisters::tooLongForTheColumnStaysInTheForm()
{
    const test::Register &names = this->names();
    const test::RegisterField *narrow = narrowField(names);
    const QStringList before = stored(names);
    ui::EntryForm *form = startNew(names, u"LUNGO"_s);
    const QString text = sample(narrow->stored + 1, 0);
    test::retype(form, narrow->control, text);
    place().messages.expectError(saveError);
    test::trigger(form, u"actSalva"_s);
    QCOMPARE(place().messages.verify(), QStringList());
    QCOMPARE(stored(names), before);
    QCOMPARE(test::shown(form, narrow->control), text);
    QCOMPARE(test::flagsOf(form), u"new modified"_s);
    test::retype(form, narrow->control, text.left(narrow->stored));
    test::trigger(form, u"actSalva"_s);
    QCOMPARE(test::flagsOf(form), u"stored"_s);
    QCOMPARE(stored(names).size(), before.size() + 1);
    QCOMPARE(storedText(*narrow, form->IdRecord()), text.left(narrow->stored));
}

void TestRegisters::deletionInTheForm()
{
    const test::Register &names = this->names();
    QStringList expected = stored(names);
    test::refer(place(), names, 1);
    ui::EntryForm *form = test::openEntry(place(), names.entryAction);
    test::trigger(form, u"actElimina"_s);
    QCOMPARE(stored(names), expected);

    form->ApriRecord(1);
    place().messages.expectWarning(names.entryRefusal);
    test::trigger(form, u"actElimina"_s);
    QCOMPARE(form->IdRecord(), 1);

    form->ApriRecord(2);
    place().messages.expectQuestion(deleting, core::Answer::No);
    test::trigger(form, u"actElimina"_s);
    QCOMPARE(form->IdRecord(), 2);
    QCOMPARE(stored(names), expected);

    place().messages.expectQuestion(deleting, core::Answer::Yes);
    test::trigger(form, u"actElimina"_s);
    QCOMPARE(place().messages.verify(), QStringList());
    expected.removeAt(1);
    QCOMPARE(stored(names), expected);
    QCOMPARE(test::flagsOf(form), u"new"_s);
    QCOMPARE(form->IdRecord(), -1);
}

// The list of reasons is a case of its own.
void TestRegisters::deletionInTheList()
{
    const test::Register &names = this->names();
    QStringList expected = stored(names);
    test::refer(place(), names, 1);
    ui::SearchForm *list = fullList(names);
    test::trigger(list, u"actElimina"_s);

    const QString header = test::gridOf(list)->model()->headerData(0, Qt::Horizontal).toString();
    const QString referenced = storedText(names.fields.first(), 1);
    const QString free = storedText(names.fields.first(), 2);
    test::selectRow(test::gridOf(list), referenced);
    if (names.table == u"FORNITORI"_s)
        test::retype(list, u"txtCodice"_s, referenced);
    place().messages.expectWarning(names.listRefusal);
    test::trigger(list, u"actElimina"_s);
    QVERIFY(test::columnTexts(test::gridOf(list), header).contains(referenced));

    test::trigger(list, u"actRipristina"_s);
    test::selectRow(test::gridOf(list), free);
    place().messages.expectQuestion(deleting, core::Answer::No);
    test::trigger(list, u"actElimina"_s);
    QCOMPARE(stored(names), expected);
    place().messages.expectQuestion(deleting, core::Answer::Yes);
    test::trigger(list, u"actElimina"_s);
    QCOMPARE(place().messages.verify(), QStringList());
    expected.removeAt(1);
    QCOMPARE(stored(names), expected);
    QCOMPARE(test::gridOf(list)->model()->rowCount(), expected.size());
    QVERIFY(!test::columnTexts(test::gridOf(list), header).contains(free));
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
    test::trigger(list, u"actElimina"_s);
    QCOMPARE(stored(names), before);

    test::trigger(list, u"actRipristina"_s);
    test::selectRow(test::gridOf(list), u"Acciaierie Brentane S.p.A."_s);
    place().messages.expectQuestion(deleting, core::Answer::Yes);
    test::trigger(list, u"actElimina"_s);
    QCOMPARE(place().messages.verify(), QStringList());
    QCOMPARE(stored(names), before.mid(1));
}

void TestRegisters::reasonListDeletesTheType()
{
    const test::Register &reasons = test::registerOf(u"CAUSALI_TRASPORTO"_s);
    const test::Register &types = test::registerOf(u"TIPI_TRASPORTO"_s);
    const QStringList reasonsBefore = stored(reasons);
    ui::SearchForm *list = fullList(reasons);
    test::selectRow(test::gridOf(list), u"Reso"_s); // key 2, as the type "Vettore"
    place().messages.expectQuestion(deleting, core::Answer::Yes);
    test::trigger(list, u"actElimina"_s);
    QCOMPARE(stored(reasons), reasonsBefore);
    QCOMPARE(stored(types), QStringList({u"1|Mittente"_s, u"3|Destinatario"_s}));

    // The check before it is the reason's own.
    test::refer(place(), reasons, 3);
    test::selectRow(test::gridOf(list), u"Conto visione"_s);
    place().messages.expectWarning(reasons.listRefusal);
    test::trigger(list, u"actElimina"_s);
    QCOMPARE(place().messages.verify(), QStringList());
    QCOMPARE(stored(types).size(), 2);
}

void TestRegisters::paymentTypeIsChosenAndTakenBack()
{
    const test::Register &names = test::registerOf(u"FORNITORI"_s);
    const QString query = u"SELECT T.TIPO_PAGAMENTO FROM FORNITORI F LEFT JOIN TIPI_PAGAMENTO T ON "
                          "T.IDTIPO_PAGAMENTO = F.IDTIPO_PAGAMENTO WHERE F.IDFORNITORE = 16"_s;
    ui::EntryForm *form = startNew(names, u"PAGA"_s);
    QCOMPARE(test::shown(form, u"txtTipoPagamento"_s), u"..."_s);
    test::trigger(form, u"actSalva"_s);
    QCOMPARE(place().lines(query), QStringList({u""_s}));

    place().dialogs.expect(test::choosing(u"Assegno bancario"_s));
    test::press(form, u"cmdSelezionaTipoPagamento"_s);
    QCOMPARE(test::flagsOf(form), u"stored modified"_s);
    test::trigger(form, u"actSalva"_s);
    QCOMPARE(place().lines(query), QStringList({u"Assegno bancario"_s}));

    test::trigger(form, u"actNuovo"_s);
    QCOMPARE(test::shown(form, u"txtTipoPagamento"_s), u"..."_s);
    form->ApriRecord(16);
    QCOMPARE(test::shown(form, u"txtTipoPagamento"_s), u"Assegno bancario"_s);
    test::press(form, u"cmdSelezionaTipoPagamentoAnnulla"_s);
    QCOMPARE(test::flagsOf(form), u"stored modified"_s);
    test::trigger(form, u"actSalva"_s);
    QCOMPARE(place().lines(query), QStringList({u""_s}));
}

void TestRegisters::unsavedChangesAreAskedForOnce_data()
{
    QTest::addColumn<QString>("what");
    for (const test::Register &names : test::registers()) {
        for (const char *what : {"new", "close", "list opens", "list new"})
            QTest::newRow(qPrintable(names.table + u' ' + QLatin1StringView(what))) << QString::fromLatin1(what);
    }
}

void TestRegisters::unsavedChangesAreAskedForOnce()
{
    QFETCH(QString, what);
    const test::Register &names = this->names();
    ui::SearchForm *list = fullList(names);
    test::gridOf(list)->selectRow(2);
    QPointer<ui::EntryForm> form = test::openEntry(place(), names.entryAction);
    form->ApriRecord(1);
    const QString &control = names.fields.first().control;
    const QString kept = test::shown(form, control);
    const auto act = [&] {
        if (what == u"new")
            test::trigger(form, u"actNuovo"_s);
        else if (what == u"close")
            test::trigger(form, u"actChiudi"_s);
        else
            test::trigger(list, what == u"list opens" ? u"actModifica"_s : u"actNuovo"_s);
    };
    const QStringList before = stored(names);
    test::retype(form, control, u"Cambiato"_s);
    place().messages.expectQuestion(unsaved, core::Answer::No);
    act();
    QCOMPARE(place().messages.verify(), QStringList());
    QVERIFY(form && form->isVisible());
    QCOMPARE(test::shown(form, control), u"Cambiato"_s);
    QCOMPARE(test::flagsOf(form), u"stored modified"_s);
    QCOMPARE(form->IdRecord(), 1);

    place().messages.expectQuestion(unsaved, core::Answer::Yes);
    act();
    QCOMPARE(place().messages.verify(), QStringList());
    QCOMPARE(stored(names), before);
    if (what == u"close") {
        QVERIFY(!form);
        return;
    }
    QVERIFY(test::shown(form, control) != u"Cambiato"_s);
    QCOMPARE(test::flagsOf(form), what == u"list opens" ? u"stored"_s : u"new"_s);
    QVERIFY(form->IdRecord() != 1 && test::shown(form, control) != kept);
    // Nothing is left to lose.
    test::trigger(form, u"actChiudi"_s);
    QVERIFY(!form);
}

void TestRegisters::missingRecordLeavesTheForm()
{
    for (const test::Register &names : test::registers()) {
        ui::EntryForm *form = test::openEntry(place(), names.entryAction);
        form->ApriRecord(2);
        const QString text = test::shown(form, names.fields.first().control);
        form->ApriRecord(4711);
        QCOMPARE(test::shown(form, names.fields.first().control), text);
        QCOMPARE(test::flagsOf(form), u"stored"_s);
        QCOMPARE(form->IdRecord(), 2);
    }
}

static const test::Registered<TestRegisters> registered;

#include "test_registers.moc"
