#include "host/FirmFields.h"
#include "host/InvoiceCodes.h"
#include "host/TaxCodes.h"
#include "host/registers/Registers.h"
#include "magazzino/ui/ModuleRegisters.h"
#include "platform/ui/RegisterDeletion.h"
#include "platform/ui/RegisterEntry.h"
#include "tests/support/Fixtures.h"

namespace {

const QList<const ui::RegisterSpec *> &registers()
{
    static const QList<const ui::RegisterSpec *> all = {
        &host::articles(), &host::services(),     &host::customers(),     &host::vatRates(),
        &host::units(),    &host::paymentTypes(), &host::documentNotes(), &suppliers(),
        &carriers(),       &transportTypes(),     &transportReasons()};
    return all;
}

bool isOfModule(const ui::RegisterSpec &spec)
{
    return !spec.owner.isEmpty();
}

bool isNumber(const ui::RegisterField &field)
{
    using Kind = ui::RegisterField::Kind;
    return field.kind == Kind::Amount || field.kind == Kind::Quantity || field.kind == Kind::Integer;
}

// What only tells is none.
QList<ui::RegisterField> inputsOf(const ui::RegisterSpec &spec)
{
    QList<ui::RegisterField> inputs;
    for (const ui::RegisterGroup &group : spec.groups)
        inputs += group.fields;
    inputs.removeIf([](const ui::RegisterField &field) { return field.kind == ui::RegisterField::Kind::Figure; });
    return inputs;
}

// Something different in every input, as long as the column allows; some inputs of the module take more than theirs.
void fillIn(QWidget *form, const ui::RegisterSpec &spec)
{
    const int longest = isOfModule(spec) ? 11 : 100;
    int number = 100;
    for (const ui::RegisterField &field : inputsOf(spec)) {
        if (field.isRight || field.kind == ui::RegisterField::Kind::Choice)
            continue;
        QWidget *input = test::control<QWidget>(form, field.name);
        if (auto *box = qobject_cast<QComboBox *>(input)) {
            box->setCurrentIndex(box->count() - 1);
            continue;
        }
        QTest::keyClick(input, Qt::Key_A, Qt::ControlModifier);
        if (isNumber(field))
            test::type(input, QString::number(++number) +
                                  (field.kind == ui::RegisterField::Kind::Integer ? QString() : u",89"_s));
        else
            test::type(input, (field.name.mid(3, 2) + u"È'\"<&%;"_s + field.name + QString(100, u'x'))
                                  .left(std::min(field.maxLength, longest)));
        QFocusEvent leave(QEvent::FocusOut, Qt::TabFocusReason);
        QApplication::sendEvent(input, &leave);
    }
}

QStringList contents(QWidget *form, const ui::RegisterSpec &spec)
{
    QStringList texts;
    for (const ui::RegisterField &field : inputsOf(spec))
        texts.append(test::shown(form, field.name));
    return texts;
}

// Inputs whose text does not stand in the column that they are named after.
QStringList misplaced(QWidget *form, const ui::RegisterSpec &spec, data::Connection &connection, int key)
{
    const data::Rows rows = connection.run(u"SELECT * FROM %1 WHERE %2 = ?"_s.arg(spec.table, spec.key), {key});
    QHash<QString, QVariant> stored;
    for (qsizetype column = 0; column < rows.columns().size(); ++column)
        stored.insert(QString(rows.columns()[column].name).remove(u'_'), rows.values(0)[column]);
    QStringList wrong;
    for (const ui::RegisterField &field : inputsOf(spec)) {
        if (test::control<QWidget>(form, field.name)->inherits("QComboBox") ||
            field.kind == ui::RegisterField::Kind::Choice)
            continue;
        const QString typed = test::shown(form, field.name);
        const QVariant value = stored.value(field.name.mid(3).toUpper());
        const bool same = isNumber(field)
                              ? core::readNumber(typed).value_or(core::WrittenNumber{}).value == value.toDouble()
                              : value.toString() == typed;
        if (!same)
            wrong.append(field.name);
    }
    return wrong;
}

} // namespace

class TestRegisters : public test::AtWorkplace
{
    Q_OBJECT

private Q_SLOTS:
    void everyRegisterKeepsWhatWasTyped_data()
    {
        QStringList names;
        for (const ui::RegisterSpec *spec : registers())
            names.append(spec->name);
        test::cases(names);
    }

    // Of the module's registers as well; the transport reasons alone leave all checks to the database.
    void everyRegisterKeepsWhatWasTyped()
    {
        const ui::RegisterSpec &spec = **std::find_if(registers().begin(), registers().end(),
                                                      [](const auto *one) { return one->name == test::currentCase(); });
        const QString action = u"actInserimento"_s + spec.name;
        ui::EntryForm *form = isOfModule(spec) ? openEntry(action) : openHostEntry(action);
        const auto others = [this, &spec](int but) {
            return lines(u"SELECT * FROM %1 WHERE %2 <> %3 ORDER BY 1"_s.arg(spec.table, spec.key).arg(but));
        };
        const QStringList before = others(-1);
        QVERIFY(!form->Modified());
        if (!spec.codePrefix.isEmpty())
            QCOMPARE(test::shown(form, u"txtCodice"_s),
                     spec.codePrefix + u"%1"_s.arg(before.size() + 1, 6, 10, QChar(u'0')));
        fillIn(form, spec);
        const QStringList typed = contents(form, spec);
        QVERIFY(form->saveRecord());
        const int key = form->IdRecord();
        QCOMPARE(misplaced(form, spec, database(), key), QStringList());
        form->startNew();
        QVERIFY(contents(form, spec) != typed);
        form->openRecord(key);
        QVERIFY(!form->Modified());
        QCOMPARE(contents(form, spec), typed);
        // Its own text is no duplicate.
        form->SetModified(true);
        QVERIFY(form->saveRecord());
        QCOMPARE(others(key), before);
        // The same once more: the text is taken, or, where nothing is unique, the required one is missing.
        form->startNew();
        fillIn(form, spec);
        if (&spec == &transportReasons())
            place().messages.expectError(test::saveError);
        else if (spec.uniqueColumn.isEmpty())
            test::control<QLineEdit>(form, spec.groups.first().fields.first().name)->clear();
        if (!spec.required.isEmpty())
            place().messages.expectWarning(spec.uniqueColumn.isEmpty() ? spec.required.first().second
                                                                       : spec.duplicateText);
        QVERIFY(!form->saveRecord() && form->NewRecord() && form->Modified());
        form->SetModified(false);
        // Nothing uses it yet, so it may go.
        form->openRecord(key);
        place().messages.expectQuestion(test::deleting, core::Answer::Yes);
        test::trigger(form, u"actElimina"_s);
        QCOMPARE(others(-1), before);
        if (spec.habits.tellsMissing)
            place().messages.expectWarning(u"Il record non esiste più: un'altra postazione l'ha eliminato."_s);
        form->openRecord(key);
    }

    void whatIsUsedStaysAndSaysWhere()
    {
        const test::Document note(place(), test::deliveryNote());
        note.store(u"7,90"_s, u"5"_s);
        const auto refuses = [this](const ui::RegisterSpec &spec, const QString &condition, const QString &used) {
            const int key = lines(u"SELECT %1 FROM %2 WHERE "_s.arg(spec.key, spec.table) + condition).value(0).toInt();
            place().messages.expectWarning(
                u"Non è possibile eliminare %1,\n\resistono dei dati correlati:\n\r"_s.arg(spec.oneRecord) + used);
            return !ui::deleteRegisterRecord(spec, key, database(), nullptr);
        };
        QVERIFY(refuses(host::articles(), u"CODICE = 'TRA-0018'"_s,
                        u"righe di D.d.T. di scarico: 1\n\rmovimenti di magazzino: 1"_s));
        const QString customer = lines(u"SELECT CLI_CODICE FROM DDT_SCARICO"_s).value(0);
        QVERIFY(refuses(host::customers(), u"CODICE = '%1'"_s.arg(customer), u"D.d.T. di scarico: 1"_s));
        database().execute(u"DELETE FROM SERVIZI"_s);
        database().execute(u"UPDATE ANA_MAGA SET IDALIQUOTA_IVA = NULL"_s);
        const QString rate = lines(u"SELECT IVA_CODICE FROM DDT_SCARICO_DETT"_s).value(0);
        QVERIFY(refuses(host::vatRates(), u"CODICE = '%1'"_s.arg(rate), u"righe di D.d.T. di scarico: 1"_s));
        // Movements name the article by its code, so that must not change either.
        ui::EntryForm *form = openHostEntry(u"actInserimentoArticoli"_s);
        form->openRecord(lines(u"SELECT IDANA_MAGA FROM ANA_MAGA WHERE CODICE = 'TRA-0018'"_s).value(0).toInt());
        test::control<QLineEdit>(form, u"txtDescrizione"_s)->setText(u"Un altro testo"_s);
        const QString withoutRate = u"Non è stata indicata l'aliquota IVA o l'unità di misura:\n\r"
                                    "mancherà anche nelle righe dei documenti. Salvare comunque?"_s;
        for (const bool saves : {false, true}) {
            place().messages.expectQuestion(withoutRate, saves ? core::Answer::Yes : core::Answer::No);
            QCOMPARE(form->saveRecord(), saves);
        }
        test::control<QLineEdit>(form, u"txtCodice"_s)->setText(u"ALTRO"_s);
        place().messages.expectWarning(
            u"Il codice non si può cambiare: documenti o movimenti di magazzino\n\rlo riportano già."_s);
        QVERIFY(!form->saveRecord());
        form->SetModified(false);
    }

    // Another workstation uses the record while the question stands on the screen.
    void recordUsedMeanwhileStays()
    {
        const int key = test::insertInto(database(), u"UM"_s, {{u"UM"_s, u"XX"_s}});
        place().messages.expectQuestion(test::deleting, core::Answer::Yes);
        place().messages.whileShown([this, key] {
            test::insertInto(database(), u"ANA_MAGA"_s, {{u"CODICE"_s, u"ZZ"_s}, {u"IDUM"_s, key}});
        });
        place().messages.expectWarning(
            u"Non è più possibile eliminare %1:\n\rnel frattempo un'altra postazione ha cambiato i dati."_s.arg(
                host::units().oneRecord));
        QVERIFY(!ui::deleteRegisterRecord(host::units(), key, database(), nullptr));
        QCOMPARE(lines(u"SELECT COUNT(*) FROM UM WHERE UM = 'XX'"_s), QStringList(u"1"_s));
    }

    void codes()
    {
        using Code = std::tuple<bool (*)(const QString &), QString, QString>; // the check, right codes, wrong codes
        for (const auto &[isRight, right, wrong] :
             {Code{&host::isVatNumber, u"00743110157|it00743110157|DE123456788"_s,
                   u"00743110158|0074311015|RSSMRA85T10A562S|0123456789012345"_s},
              Code{&host::isTaxCode, u"00743110157|DE123456788|RSSMRA85T10A562S|RSSMRA85T10A56NH"_s,
                   u"00743110158|it00743110157|0074311015|RSSMRA85T10A562T|0123456789012345"_s},
              Code{&host::isRecipientCode, u"M5UXCR1"_s, u"UF1234|m5uxcr1"_s},
              Code{&host::isCountryCode, u"DE"_s, u"QX|Italia"_s},
              Code{&host::isIban, u"IT60 X054 2811 1010 0000 0123 456|DE89370400440532013000"_s,
                   u"IT60X0542811101000000123465"_s},
              Code{&host::isMailAddress, u"ditta.srl@pec.example"_s, u"ditta@pec|a@pec.example, b@pec.example"_s}}) {
            for (const QString &text : right.split(u'|'))
                QVERIFY2(isRight(text), qPrintable(text));
            for (const QString &text : wrong.split(u'|'))
                QVERIFY2(!isRight(text), qPrintable(text));
        }
    }

    // What the electronic invoice takes from the company: chosen and typed as a user does, asked about where it looks
    // wrong, and a code that no list knows stays until another one is chosen.
    void doubtfulCodesAreAskedAbout()
    {
        database().execute(u"UPDATE AZIENDA SET REGIMEFISCALE = 'RF03'"_s);
        const auto stored = [this] {
            return lines(u"SELECT REGIMEFISCALE, IBAN, CAST(CAPITALESOCIALE AS INTEGER) FROM AZIENDA"_s).value(0);
        };
        ui::EntryForm *form = openHostEntry(u"actAzienda"_s);
        auto *iban = test::control<QLineEdit>(form, u"txtIban"_s);
        test::retype(iban, u"it60x0542811101000000123465"_s);
        const QString doubt = u"IBAN: le cifre di controllo non corrispondono.\n\rSalvare comunque?"_s;
        place().messages.expectQuestion(doubt, core::Answer::No);
        QVERIFY(!form->saveRecord());
        place().messages.expectQuestion(doubt, core::Answer::Yes);
        QVERIFY(form->saveRecord());
        QCOMPARE(stored(), u"RF03|IT60X0542811101000000123465|100000"_s);
        auto *regime = test::control<QComboBox>(form, u"txtRegimeFiscale"_s);
        QCOMPARE(regime->currentText(), u"RF03"_s);
        QTest::keyClick(regime, Qt::Key_Home);
        QTest::keyClick(regime, Qt::Key_Down);
        QTest::keyClick(regime, Qt::Key_Down);
        place().messages.expectQuestion(doubt, core::Answer::Yes);
        QVERIFY(form->saveRecord());
        QVERIFY2(stored().startsWith(u"RF02|"), qPrintable(stored()));
        form->openRecord(form->IdRecord());
        QCOMPARE(regime->findText(u"RF03"_s), -1);
        QCOMPARE(regime->currentText(), u"RF02 - Contribuenti minimi (L. 244/2007)"_s);
        QVERIFY(!form->Modified());
    }

    // A column comes from a step that never changes, so it is told beside the field's declaration: both must agree.
    void firmFieldsAreColumns()
    {
        using host::FirmKind;
        QStringList missing;
        const QList<std::pair<FirmKind, QString>> tables = {{FirmKind::Customer, u"CLIENTI"_s},
                                                            {FirmKind::Company, u"AZIENDA"_s},
                                                            {FirmKind::Supplier, u"FORNITORI"_s},
                                                            {FirmKind::Carrier, u"VETTORI"_s}};
        for (const auto &[kind, table] : tables) {
            const QStringList columns = lines(
                u"SELECT TRIM(C.RDB$FIELD_NAME), T.RDB$CHARACTER_LENGTH FROM RDB$RELATION_FIELDS C JOIN "
                "RDB$FIELDS T ON T.RDB$FIELD_NAME = C.RDB$FIELD_SOURCE WHERE C.RDB$RELATION_NAME = '%1'"_s.arg(table));
            for (const host::FirmField &field : host::firmFieldsOf(kind)) {
                const QString column = u"%1|%2"_s.arg(field.column).arg(field.length);
                if (!columns.contains(column))
                    missing.append(table + u'.' + column);
            }
        }
        // Carriers have short VAT numbers.
        QCOMPARE(missing, QStringList(u"VETTORI.PARTITAIVA|13"_s));
    }

    void categoryNeverMovesIntoItself()
    {
        QWidget *form = place().commands().openForm(u"actCategorieArticoli"_s);
        auto *tree = test::control<QTreeWidget>(form, u"treeCategorie"_s);
        QTreeWidgetItem *top = tree->topLevelItem(0);
        const QString child = top->child(0)->text(0);
        tree->setCurrentItem(top);
        place().messages.expectWarning(u"Una categoria non può stare sotto sé stessa."_s);
        place().dialogs.expect([&child](QDialog &dialog) {
            auto *target = test::control<QComboBox>(&dialog, u"txtDestinazione"_s);
            target->setCurrentIndex(target->findText(child));
            test::press(&dialog, u"cmdOk"_s);
            test::press(&dialog, u"cmdAnnulla"_s);
        });
        test::trigger(form, u"actSposta"_s);
        QCOMPARE(tree->currentItem()->child(0)->text(0), child);
    }
};

static const test::Registered<TestRegisters> registered;
#include "test_registers.moc"
