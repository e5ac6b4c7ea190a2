#include "platform/core/Clock.h"
#include "tests/magazzino/registri/Registri.h"
#include "tests/support/TestMain.h"

#include <QComboBox>
#include <QDateEdit>
#include <QDoubleSpinBox>
#include <QLineEdit>
#include <QRadioButton>
#include <QTableView>

using namespace Qt::StringLiterals;

namespace {

const QString unsaved = u"Ci sono delle modifiche non salvate.\n\rContinuare comunque?"_s;
const QString article = u"TRA-0018"_s;

/// Columns of a movement as the form writes them, but for its key.
const QString everyColumn = u"IDMAGAZZINO, DATA_MOVIMENTO, CODICE, DESCRIZIONE, IDCATEGORIA_ANA_MAGA, TIPO_MOVIMENTO, "
                            "PREZZO, COSTO, QUANTITA, VALORE, VALORE_IMPORTO, IDCAUSALE_MAGA, RIF_DOC_TIPO, "
                            "RIF_DOC_ID, RIF_DOC_IDRIGA, NOTE"_s;

} // namespace

class TestMovementForm : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { workplace_.reset(); }

    void newMovement();
    void newMovementHasTheDateOfToday();
    void articleGivesItsData();
    void cancelledDialogsChangeNothing();
    void checksRunInOrder();
    void whatIsShownIsStored_data();
    void whatIsShownIsStored();
    void openedMovementKeepsWhatIsNotShown();
    void unknownKindLeavesTheChoice_data();
    void unknownKindLeavesTheChoice();
    void emptyingBringsBackTheLoad();
    void unsavedChangesAreAskedForOnce_data();
    void unsavedChangesAreAskedForOnce();
    void failedSaveKeepsEverything();
    void deletion();

private:
    test::Workplace &place() const { return *workplace_; }
    QStringList stored() const
    {
        return place().lines(u"SELECT %1 FROM MOVI_MAGA ORDER BY IDMOVI_MAGA"_s.arg(everyColumn));
    }
    QString shown(const QString &name) const { return test::shown(form_, name); }
    QString amounts() const;
    QString kind() const;
    void chooseKind(const QString &text) const;
    void chooseArticle() const;
    void chooseReason(const QString &text) const;
    /// A movement of another program.
    int insertMovement(const QVariantMap &values) const;
    /// One value of the article.
    QString ofArticle(const QString &column) const;

    std::unique_ptr<test::Workplace> workplace_;
    QPointer<ui::EntryForm> form_;
};

void TestMovementForm::init()
{
    workplace_ = std::make_unique<test::Workplace>();
    form_ = test::openEntry(place(), u"actInserimentoMovimentiMagazzino"_s);
}

QString TestMovementForm::amounts() const
{
    QStringList texts;
    for (const char *name : {"txtPrezzo", "txtCosto", "txtQuantita", "txtValore", "txtValoreImporto"})
        texts.append(shown(QString::fromLatin1(name)));
    return texts.join(u'|');
}

QString TestMovementForm::kind() const
{
    const QList<QRadioButton *> buttons =
        test::control<QWidget>(form_, u"grpTipoMovimento"_s)->findChildren<QRadioButton *>();
    for (const QRadioButton *button : buttons) {
        if (button->isChecked())
            return button->text();
    }
    return {};
}

void TestMovementForm::chooseKind(const QString &text) const
{
    const QList<QRadioButton *> buttons =
        test::control<QWidget>(form_, u"grpTipoMovimento"_s)->findChildren<QRadioButton *>();
    for (QRadioButton *button : buttons) {
        if (button->text() == text)
            button->click();
    }
}

void TestMovementForm::chooseArticle() const
{
    place().dialogs.expect(test::choosingArticle(article));
    test::press(form_, u"cmdSelezionaArticolo"_s);
}

void TestMovementForm::chooseReason(const QString &text) const
{
    place().dialogs.expect(test::choosing(text));
    test::press(form_, u"cmdSelezionaCausaleMagazzino"_s);
}

int TestMovementForm::insertMovement(const QVariantMap &values) const
{
    QVariantMap all = {{u"CODICE"_s, article},
                       {u"DESCRIZIONE"_s, u"Trapano"_s},
                       {u"IDCATEGORIA_ANA_MAGA"_s, ofArticle(u"IDCATEGORIA_ANA_MAGA"_s)},
                       {u"TIPO_MOVIMENTO"_s, u"Carico"_s},
                       {u"IDCAUSALE_MAGA"_s, 1}};
    all.insert(values);
    return test::insertInto(place().database(), u"MOVI_MAGA"_s, all);
}

QString TestMovementForm::ofArticle(const QString &column) const
{
    return place().lines(u"SELECT %1 FROM ANA_MAGA WHERE CODICE = '%2'"_s.arg(column, article)).value(0);
}

void TestMovementForm::newMovement()
{
    QCOMPARE(shown(u"txtDataMovimento"_s), u"16/03/2026"_s);
    QCOMPARE(shown(u"txtCodice"_s) + shown(u"txtDescrizione"_s) + shown(u"txtCategoria"_s) + shown(u"txtNote"_s),
             QString());
    QCOMPARE(amounts(), u"€ 0,00|€ 0,00|1,00|€ 0,00|0,00"_s);
    QCOMPARE(kind(), u"Carico"_s);
    QCOMPARE(shown(u"txtCausaleMagazzino"_s), u"..."_s);
    QVERIFY(test::control<QWidget>(form_, u"grpCausaleMagazzino"_s)->isVisible());
    for (const char *name : {"txtCodice", "txtDescrizione", "txtValoreImporto"})
        QVERIFY2(test::control<QWidget>(form_, QString::fromLatin1(name))->property("readOnly").toBool(), name);
    QCOMPARE(test::flagsOf(form_), u"new"_s);
}

void TestMovementForm::newMovementHasTheDateOfToday()
{
    core::setClock([] { return QDateTime(QDate(2027, 1, 1), QTime(0, 5)); });
    test::trigger(form_, u"actNuovo"_s);
    QCOMPARE(shown(u"txtDataMovimento"_s), u"01/01/2027"_s);
}

void TestMovementForm::articleGivesItsData()
{
    chooseArticle();
    QCOMPARE(shown(u"txtCodice"_s), article);
    QCOMPARE(shown(u"txtDescrizione"_s), ofArticle(u"DESCRIZIONE"_s));
    QCOMPARE(shown(u"txtCategoria"_s).trimmed(),
             place()
                 .lines(u"SELECT CATEGORIA FROM CATEGORIE_ANA_MAGA WHERE IDCATEGORIA_ANA_MAGA = "_s +
                        ofArticle(u"IDCATEGORIA_ANA_MAGA"_s))
                 .value(0));
    const auto number = [this](const char *name) {
        return test::control<QDoubleSpinBox>(form_, QString::fromLatin1(name))->value();
    };
    const double cost = ofArticle(u"COSTO"_s).toDouble();
    QVERIFY(cost > 0);
    QCOMPARE(number("txtPrezzo"), ofArticle(u"PREZZO"_s).toDouble());
    QCOMPARE(number("txtCosto"), cost);
    QCOMPARE(number("txtValore"), cost);
    QCOMPARE(shown(u"txtQuantita"_s) + u'|' + shown(u"txtValoreImporto"_s), u"1,00|0,00"_s);
    QCOMPARE(test::flagsOf(form_), u"new modified"_s);
}

void TestMovementForm::cancelledDialogsChangeNothing()
{
    for (const char *button : {"cmdSelezionaArticolo", "cmdSelezionaCausaleMagazzino"}) {
        place().dialogs.expect([](QDialog &dialog) { dialog.reject(); });
        test::press(form_, QString::fromLatin1(button));
        QCOMPARE(shown(u"txtCodice"_s) + shown(u"txtCausaleMagazzino"_s), u"..."_s);
        QCOMPARE(test::flagsOf(form_), u"new"_s);
    }
}

void TestMovementForm::checksRunInOrder()
{
    const auto refused = [this](const QString &text) {
        place().messages.expectWarning(text);
        test::trigger(form_, u"actSalva"_s);
        QCOMPARE(place().messages.verify(), QStringList());
        QCOMPARE(stored(), QStringList());
        QCOMPARE(test::flagsOf(form_), u"new modified"_s);
    };
    test::retype(form_, u"txtQuantita"_s, u"2"_s);
    refused(u"Non è stato indicato il codice!"_s);
    chooseArticle();
    test::control<QLineEdit>(form_, u"txtDescrizione"_s)->clear();
    refused(u"Non è stata indicata la descrizione!"_s);
    test::control<QLineEdit>(form_, u"txtDescrizione"_s)->setText(u"Trapano"_s);
    test::control<QComboBox>(form_, u"txtCategoria"_s)->setCurrentIndex(0);
    refused(u"Non è stata indicata la causale di magazzino!"_s);
    chooseReason(u"Carico"_s);
    refused(u"Non è stata indicata la categoria!"_s);
    test::control<QComboBox>(form_, u"txtCategoria"_s)->setCurrentIndex(1);
    test::trigger(form_, u"actSalva"_s);
    QCOMPARE(test::flagsOf(form_), u"stored"_s);
    QCOMPARE(stored().size(), 1);
}

void TestMovementForm::whatIsShownIsStored_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("reason");
    QTest::addColumn<QString>("quantity");
    QTest::addColumn<QString>("storedQuantity");
    QTest::newRow("load") << u"Carico"_s << u"Carico"_s << u"12,25"_s << u"12.25"_s;
    QTest::newRow("issue") << u"Scarico"_s << u"Scarico"_s << u"-3,5"_s << u"-3.5"_s;
    // The sign is the user's affair: the form changes it for no kind.
    QTest::newRow("issue typed without sign") << u"Scarico"_s << u"Scarico"_s << u"3"_s << u"3"_s;
}

void TestMovementForm::whatIsShownIsStored()
{
    QFETCH(QString, kind);
    QFETCH(QString, reason);
    QFETCH(QString, quantity);
    QFETCH(QString, storedQuantity);
    insertMovement({});
    chooseArticle();
    test::control<QDateEdit>(form_, u"txtDataMovimento"_s)->setDate(QDate(2026, 2, 28));
    chooseKind(kind);
    chooseReason(reason);
    test::retype(form_, u"txtPrezzo"_s, u"10,5"_s);
    test::retype(form_, u"txtCosto"_s, u"4"_s);
    test::retype(form_, u"txtQuantita"_s, quantity);
    test::retype(form_, u"txtValore"_s, u"7,25"_s);
    test::retype(form_, u"txtNote"_s, u"così è"_s);
    test::trigger(form_, u"actSalva"_s);
    QCOMPARE(test::flagsOf(form_), u"stored"_s);
    QCOMPARE(form_->IdRecord(), 2);
    const QString expected = u"0|2026-02-28|%1|%2|%3|%4|10.5|4|%5|7.25|0|%6||||così è"_s.arg(
        article, ofArticle(u"DESCRIZIONE"_s), ofArticle(u"IDCATEGORIA_ANA_MAGA"_s), kind, storedQuantity,
        reason == u"Carico" ? u"1"_s : u"2"_s);
    QCOMPARE(stored().at(1), expected);

    // Opened and saved again it is the same movement.
    const QString before = amounts();
    test::trigger(form_, u"actNuovo"_s);
    form_->ApriRecord(2);
    QCOMPARE(amounts(), before);
    QCOMPARE(this->kind(), kind);
    QCOMPARE(shown(u"txtCausaleMagazzino"_s), reason);
    form_->SetModified(true);
    test::trigger(form_, u"actSalva"_s);
    QCOMPARE(stored().at(1), expected);
    QCOMPARE(stored().size(), 2);
}

void TestMovementForm::openedMovementKeepsWhatIsNotShown()
{
    const int id = insertMovement({{u"IDMAGAZZINO"_s, 3},
                                   {u"QUANTITA"_s, -5},
                                   {u"VALORE"_s, 3},
                                   {u"VALORE_IMPORTO"_s, -15.75},
                                   {u"RIF_DOC_TIPO"_s, u"D.d.T. di scarico"_s},
                                   {u"RIF_DOC_ID"_s, 8},
                                   {u"RIF_DOC_IDRIGA"_s, 21}});
    const QString before = stored().constFirst();
    form_->ApriRecord(id);
    QCOMPARE(amounts(), u"€ 0,00|€ 0,00|-5,00|€ 3,00|-15,75"_s);
    test::retype(form_, u"txtQuantita"_s, u"-6"_s);
    QCOMPARE(shown(u"txtValoreImporto"_s), u"-15,75"_s);
    test::trigger(form_, u"actSalva"_s);
    QCOMPARE(stored(), QStringList({QString(before).replace(u"|-5|"_s, u"|-6|"_s)}));

    // None of it may reach the next new movement.
    test::trigger(form_, u"actNuovo"_s);
    QCOMPARE(shown(u"txtValoreImporto"_s), u"0,00"_s);
    chooseArticle();
    chooseReason(u"Carico"_s);
    test::trigger(form_, u"actSalva"_s);
    QCOMPARE(place().lines(u"SELECT IDMAGAZZINO, VALORE_IMPORTO, RIF_DOC_TIPO, RIF_DOC_ID, RIF_DOC_IDRIGA FROM "
                           "MOVI_MAGA WHERE IDMOVI_MAGA <> "_s +
                           QString::number(id)),
             QStringList({u"0|0|||"_s}));
}

void TestMovementForm::unknownKindLeavesTheChoice_data()
{
    QTest::addColumn<QString>("before");
    QTest::newRow("load") << u"Carico"_s;
    QTest::newRow("issue") << u"Scarico"_s;
}

void TestMovementForm::unknownKindLeavesTheChoice()
{
    QFETCH(QString, before);
    const int known = insertMovement({{u"TIPO_MOVIMENTO"_s, before}});
    const int unknown = insertMovement({{u"TIPO_MOVIMENTO"_s, u"Rettifica"_s}});
    form_->ApriRecord(known);
    form_->ApriRecord(unknown);
    QCOMPARE(form_->IdRecord(), unknown);
    QCOMPARE(kind(), before);
}

void TestMovementForm::emptyingBringsBackTheLoad()
{
    form_->ApriRecord(insertMovement({{u"TIPO_MOVIMENTO"_s, u"Scarico"_s}, {u"NOTE"_s, u"x"_s}}));
    QCOMPARE(kind(), u"Scarico"_s);
    test::trigger(form_, u"actNuovo"_s);
    newMovement();
}

void TestMovementForm::unsavedChangesAreAskedForOnce_data()
{
    QTest::addColumn<QString>("what");
    for (const char *what : {"new", "close", "list opens", "list new"})
        QTest::newRow(what) << QString::fromLatin1(what);
}

void TestMovementForm::unsavedChangesAreAskedForOnce()
{
    QFETCH(QString, what);
    insertMovement({{u"DATA_MOVIMENTO"_s, QDate(2026, 3, 1)}});
    ui::SearchForm *list = test::openList(place(), u"actRicercaMovimentiMagazzino"_s);
    test::gridOf(list)->selectRow(0);
    const auto act = [&] {
        if (what == u"new" || what == u"close")
            test::trigger(form_, what == u"new" ? u"actNuovo"_s : u"actChiudi"_s);
        else
            test::trigger(list, what == u"list opens" ? u"actModifica"_s : u"actNuovo"_s);
    };
    test::retype(form_, u"txtQuantita"_s, u"7"_s);
    place().messages.expectQuestion(unsaved, core::Answer::No);
    act();
    QCOMPARE(place().messages.verify(), QStringList());
    QVERIFY(form_);
    QCOMPARE(test::control<QDoubleSpinBox>(form_, u"txtQuantita"_s)->value(), 7.0);
    QCOMPARE(test::flagsOf(form_), u"new modified"_s);
    place().messages.expectQuestion(unsaved, core::Answer::Yes);
    act();
    QCOMPARE(place().messages.verify(), QStringList());
    QCOMPARE(!form_, what == u"close");
    if (form_)
        QCOMPARE(test::flagsOf(form_), what == u"list opens" ? u"stored"_s : u"new"_s);
}

void TestMovementForm::failedSaveKeepsEverything()
{
    chooseArticle();
    chooseReason(u"Scarico"_s);
    test::retype(form_, u"txtQuantita"_s, u"-2"_s);
    place().database().run(u"ALTER TABLE MOVI_MAGA ADD CONSTRAINT NO_ISSUE CHECK(QUANTITA > 0)"_s);
    place().messages.expectError(u"Si è verificato un errore durante il salvataggio dei dati!"_s);
    test::trigger(form_, u"actSalva"_s);
    QCOMPARE(place().messages.verify(), QStringList());
    QCOMPARE(stored(), QStringList());
    QCOMPARE(test::flagsOf(form_), u"new modified"_s);
    QCOMPARE(shown(u"txtCodice"_s) + u'|' + shown(u"txtCausaleMagazzino"_s) + u'|' + shown(u"txtQuantita"_s),
             article + u"|Scarico|-2,00"_s);
}

void TestMovementForm::deletion()
{
    const QString question = u"Confermare l'eliminazione?"_s;
    const int id = insertMovement({});
    chooseArticle();
    test::trigger(form_, u"actElimina"_s);
    newMovement();

    form_->ApriRecord(id);
    place().messages.expectQuestion(question, core::Answer::No);
    test::trigger(form_, u"actElimina"_s);
    QCOMPARE(form_->IdRecord(), id);
    QCOMPARE(stored().size(), 1);
    place().messages.expectQuestion(question, core::Answer::Yes);
    test::trigger(form_, u"actElimina"_s);
    QCOMPARE(stored(), QStringList());
    newMovement();
}

static const test::Registered<TestMovementForm> registered;

#include "test_movements.moc"
