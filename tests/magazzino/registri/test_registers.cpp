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
        // What the form lets through the table still refuses.
        test::trigger(form, u"actNuovo"_s);
        test::retype(form, u"txtCausaleTrasporto"_s, u"Vendita"_s);
        place().messages.expectError(test::saveError);
        told(form, u"actSalva"_s);
        QVERIFY(form->NewRecord() && form->Modified());
        QCOMPARE(stored(reasons).last(), u"11|"_s);
    }

    void deletion_data()
    {
        QTest::addColumn<int>("index");
        for (int i = 0; i < registers().size(); ++i)
            QTest::newRow(qPrintable(registers()[i].spec->table)) << i;
    }

    void deletion()
    {
        QFETCH(int, index);
        const Register &names = registers()[index];
        const ui::RegisterSpec &spec = *names.spec;
        QStringList expected = stored(spec);
        const auto text = [this, &spec](int id) {
            return lines(u"SELECT * FROM %1 WHERE %2 = %3"_s.arg(spec.table, spec.key).arg(id))
                .value(0)
                .section(u'|', 1, 1);
        };
        const QString referenced = text(1);
        refer(names, 1, referenced);
        ui::EntryForm *form = entry(spec);
        form->openRecord(1);
        place().messages.expectWarning(names.entryRefusal);
        told(form, u"actElimina"_s);
        form->openRecord(2);
        for (const core::Answer answer : {core::Answer::No, core::Answer::Yes}) {
            QCOMPARE(stored(spec), expected);
            place().messages.expectQuestion(test::deleting, answer);
            told(form, u"actElimina"_s);
        }
        expected.removeAt(1);
        QCOMPARE(stored(spec), expected);
        QVERIFY(form->NewRecord() && !form->Modified());

        ui::SearchForm *list = fullList(spec);
        test::selectRow(gridOf(*list), referenced);
        if (&spec == &suppliers())
            test::retype(list, u"txtCodice"_s, referenced);
        place().messages.expectWarning(names.listRefusal);
        told(list, u"actElimina"_s);
        QCOMPARE(stored(spec), expected);
        if (&spec == &transportReasons())
            return; // what its list deletes is a case of its own
        test::trigger(list, u"actRipristina"_s);
        test::selectRow(gridOf(*list), text(3));
        place().messages.expectQuestion(test::deleting, core::Answer::Yes);
        told(list, u"actElimina"_s);
        expected.removeAt(1);
        QCOMPARE(stored(spec), expected);
        QCOMPARE(gridOf(*list)->model()->rowCount(), expected.size());
    }

    void supplierListChecksTheFilterText()
    {
        const QStringList before = stored(suppliers());
        const QString code = before.first().section(u'|', 1, 1);
        const Register &names = registers().first();
        refer(names, 1, code);
        ui::SearchForm *list = fullList(suppliers());
        test::selectRow(gridOf(*list), u"Bulloneria Lombarda S.r.l."_s);
        test::retype(list, u"txtCodice"_s, code);
        place().messages.expectWarning(names.listRefusal);
        told(list, u"actElimina"_s);
        QCOMPARE(stored(suppliers()), before);
    }

    void reasonListDeletesTheType()
    {
        const QStringList reasonsBefore = stored(transportReasons());
        ui::SearchForm *list = fullList(transportReasons());
        test::selectRow(gridOf(*list), u"Reso"_s); // key 2, as the type "Vettore"
        place().messages.expectQuestion(test::deleting, core::Answer::Yes);
        told(list, u"actElimina"_s);
        QCOMPARE(stored(transportReasons()), reasonsBefore);
        QCOMPARE(stored(transportTypes()), QStringList({u"1|Mittente"_s, u"3|Destinatario"_s}));
    }

private:
    /// Puts the record with this key and main text into a document.
    void refer(const Register &names, int id, const QString &text) const
    {
        test::insertInto(database(), names.referrer,
                         {{names.reference, names.reference == names.spec->key ? QVariant(id) : QVariant(text)}});
    }

    QStringList stored(const ui::RegisterSpec &spec) const
    {
        return lines(u"SELECT * FROM %1 ORDER BY 1"_s.arg(spec.table));
    }

    ui::EntryForm *entry(const ui::RegisterSpec &spec) const { return openEntry(u"actInserimento"_s + spec.name); }

    /// Triggers a command that tells what the test expects.
    void told(QWidget *form, const QString &command) const
    {
        test::trigger(form, command);
        QCOMPARE(place().messages.verify(), QStringList());
    }

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
