#include "magazzino/ui/ModuleRegisters.h"
#include "tests/support/Fixtures.h"

namespace {

/// What one of the module's registers says, and who refers to its records.
struct Register
{
    const ui::RegisterSpec *spec;
    QString entryRefusal;
    QString listRefusal;
    QString referrer;  ///< table whose `reference` refers to the record
    QString reference; ///< holds the key if it is named like it, else the main text
};

const QList<Register> &registers()
{
    static const QString related = u"Impossibile eliminare, esistono dei dati correlati!"_s;
    static const QString refusal = u"Non è possibile eliminare quest%1,\n\resistono dei dati correlati!"_s;
    static const QList<Register> all = {
        {&suppliers(), refusal.arg(u"o fornitore"_s), refusal.arg(u"o fornitore"_s), u"BOLLE_CARICO"_s,
         u"FOR_CODICE"_s},
        {&carriers(), related, related, u"FATT_ACC"_s, u"VETT_CODICE"_s},
        {&transportTypes(), refusal.arg(u"a tipologia"_s), related, u"DDT_SCARICO"_s, u"IDTIPO_TRASPORTO"_s},
        {&transportReasons(), refusal.arg(u"a causale"_s), related, u"BOLLE_CARICO"_s, u"IDCAUSALE_TRASPORTO"_s}};
    return all;
}

} // namespace

/// How the module's registers refuse and delete; what they keep of a record is tested with those of the host.
class TestRegisters : public test::AtWorkplace
{
    Q_OBJECT

private Q_SLOTS:
    void reasonIsNotCheckedByTheForm()
    {
        const ui::RegisterSpec &reasons = transportReasons();
        ui::EntryForm *form = entry(reasons);
        form->SetModified(true);
        test::trigger(form, u"actSalva"_s);
        QCOMPARE(stored(reasons).last(), u"11|"_s);
    }

    void deletion_data()
    {
        QStringList tables;
        for (const Register &one : registers())
            tables.append(one.spec->table);
        test::cases(tables);
    }

    void deletion()
    {
        const Register &names = *std::find_if(registers().begin(), registers().end(), [](const Register &one) {
            return one.spec->table == test::currentCase();
        });
        const ui::RegisterSpec &spec = *names.spec;
        const QStringList before = stored(spec);
        QStringList expected = before;
        const auto text = [&before](int id) { return before.value(id - 1).section(u'|', 1, 1); };
        const QString referenced = text(1);
        test::insertInto(database(), names.referrer,
                         names.reference + u'=' + (names.reference == spec.key ? u"1"_s : referenced));
        ui::EntryForm *form = entry(spec);
        form->openRecord(1);
        place().messages.expectWarning(names.entryRefusal);
        test::trigger(form, u"actElimina"_s);
        form->openRecord(2);
        for (const core::Answer answer : {core::Answer::No, core::Answer::Yes}) {
            QCOMPARE(stored(spec), expected);
            place().messages.expectQuestion(test::deleting, answer);
            test::trigger(form, u"actElimina"_s);
        }
        expected.removeAt(1);
        QCOMPARE(stored(spec), expected);
        QVERIFY(form->NewRecord() && !form->Modified());

        ui::SearchForm *list = fullList(spec);
        // Of suppliers the text of the filter is looked at, whatever row is selected.
        test::selectRow(gridOf(*list), &spec == &suppliers() ? text(3) : referenced);
        if (&spec == &suppliers())
            test::retype(list, u"txtCodice"_s, referenced);
        place().messages.expectWarning(names.listRefusal);
        test::trigger(list, u"actElimina"_s);
        QCOMPARE(stored(spec), expected);
        if (&spec == &transportReasons())
            return; // what its list deletes is a case of its own
        test::trigger(list, u"actRipristina"_s);
        test::selectRow(gridOf(*list), text(3));
        place().messages.expectQuestion(test::deleting, core::Answer::Yes);
        test::trigger(list, u"actElimina"_s);
        expected.removeAt(1);
        QCOMPARE(stored(spec), expected);
        QCOMPARE(gridOf(*list)->model()->rowCount(), expected.size());
    }

    void reasonListDeletesTheType()
    {
        const QStringList reasonsBefore = stored(transportReasons());
        ui::SearchForm *list = fullList(transportReasons());
        test::selectRow(gridOf(*list), u"Reso"_s); // key 2, as the type "Vettore"
        place().messages.expectQuestion(test::deleting, core::Answer::Yes);
        test::trigger(list, u"actElimina"_s);
        QCOMPARE(stored(transportReasons()), reasonsBefore);
        QCOMPARE(stored(transportTypes()), QStringList({u"1|Mittente"_s, u"3|Destinatario"_s}));
    }

private:
    QStringList stored(const ui::RegisterSpec &spec) const
    {
        return lines(u"SELECT * FROM %1 ORDER BY 1"_s.arg(spec.table));
    }

    ui::EntryForm *entry(const ui::RegisterSpec &spec) const { return openEntry(u"actInserimento"_s + spec.name); }

    /// The list with every record in it.
    ui::SearchForm *fullList(const ui::RegisterSpec &spec) const
    {
        ui::SearchForm *list = openList(u"actRicerca"_s + spec.name);
        test::trigger(list, u"actCerca"_s);
        return list;
    }
};

static const test::Registered<TestRegisters> registered;

#include "test_registers.moc"
