#include "magazzino/forms/uMMGInserimentoMovimentiMagazzino.h"
#include "tests/support/Fixtures.h"

const QString article = u"TRA-0018"_s;

/// Columns of a movement as the form writes them, but for its key.
const QString everyColumn = u"IDMAGAZZINO, DATA_MOVIMENTO, CODICE, DESCRIZIONE, IDCATEGORIA_ANA_MAGA, "
                            "TIPO_MOVIMENTO, PREZZO, COSTO, QUANTITA, VALORE, VALORE_IMPORTO, IDCAUSALE_MAGA, "
                            "RIF_DOC_TIPO, RIF_DOC_ID, RIF_DOC_IDRIGA, NOTE"_s;

class TestMovementForm : public test::AtWorkplace
{
    Q_OBJECT

private Q_SLOTS:
    void init() override
    {
        AtWorkplace::init();
        form_ = openEntry(u"actInserimentoMovimentiMagazzino"_s);
    }

    // The sign is the user's affair: the form changes it for no kind.
    void whatIsShownIsStored()
    {
        chooseArticle();
        const double cost = ofArticle(u"COSTO"_s).toDouble();
        QVERIFY(cost > 0);
        QCOMPARE(test::control<ui::DecimalEdit>(form_, u"txtCosto"_s)->value(), cost);
        QCOMPARE(test::control<ui::DecimalEdit>(form_, u"txtValore"_s)->value(), cost);
        test::control<ui::DateEdit>(form_, u"txtDataMovimento"_s)->setDate(QDate(2026, 2, 28));
        kindButton(u"Scarico"_s)->click();
        chooseReason(u"Scarico"_s);
        test::retype(form_, u"txtPrezzo"_s, u"-10,5"_s);
        test::retype(form_, u"txtCosto"_s, u"-4"_s);
        test::retype(form_, u"txtQuantita"_s, u"3,25"_s);
        test::retype(form_, u"txtValore"_s, u"-7,25"_s);
        test::retype(form_, u"txtNote"_s, u"così è"_s);
        QVERIFY(test::control<QPlainTextEdit>(form_, u"txtNote"_s)->verticalScrollBar()->isVisible());
        test::trigger(form_, u"actSalva"_s);
        const QStringList expected = {u"0|2026-02-28|%1|%2|%3|Scarico|-10.5|-4|3.25|-7.25|0|2||||così è"_s.arg(
            article, ofArticle(u"DESCRIZIONE"_s), ofArticle(u"IDCATEGORIA_ANA_MAGA"_s))};
        QCOMPARE(stored(), expected);

        // Opened and saved again it is the same movement.
        const int id = form_->IdRecord();
        test::trigger(form_, u"actNuovo"_s);
        QVERIFY(kindButton(u"Carico"_s)->isChecked());
        form_->openRecord(id);
        form_->SetModified(true);
        test::trigger(form_, u"actSalva"_s);
        QCOMPARE(stored(), expected);
    }

    void whatCallersSetIsStored()
    {
        auto *movement = qobject_cast<TMMGInserimentoMovimentiMagazzino *>(form_);
        chooseArticle();
        movement->SetIdMagazzino(3);
        movement->SetIdCausaleMagazzino(2);
        QCOMPARE(test::shown(form_, u"txtCausaleMagazzino"_s), u"Scarico"_s);
        movement->SetRifDocTipo(u"Inventario"_s);
        movement->SetRifDocID(7);
        movement->SetRifDocIDRiga(9);
        test::trigger(form_, u"actSalva"_s);
        QCOMPARE(
            lines(u"SELECT IDMAGAZZINO, IDCAUSALE_MAGA, RIF_DOC_TIPO, RIF_DOC_ID, RIF_DOC_IDRIGA FROM MOVI_MAGA"_s),
            QStringList{u"3|2|Inventario|7|9"_s});
        // A new movement has none of it.
        test::trigger(form_, u"actNuovo"_s);
        chooseArticle();
        movement->SetIdCausaleMagazzino(1);
        test::trigger(form_, u"actSalva"_s);
        QCOMPARE(lines(u"SELECT IDMAGAZZINO, RIF_DOC_TIPO, RIF_DOC_ID, RIF_DOC_IDRIGA FROM MOVI_MAGA WHERE "
                       "IDCAUSALE_MAGA = 1"_s),
                 QStringList{u"0|||"_s});
    }

    void signAgainstTheKindIsShown()
    {
        const auto *line = test::control<QLabel>(form_, u"lblSegno"_s);
        const auto isAmber = [line] {
            return line->autoFillBackground() && line->palette().color(QPalette::Window) == QColor(255, 191, 0);
        };
        QVERIFY(!isAmber());
        test::retype(form_, u"txtQuantita"_s, u"-2"_s);
        QVERIFY(isAmber());
        QVERIFY(line->text().contains(u"diminuisce"_s));
        kindButton(u"Scarico"_s)->click();
        QVERIFY(!isAmber());
        test::retype(form_, u"txtQuantita"_s, u"3"_s);
        QVERIFY(isAmber());
        QVERIFY(line->text().contains(u"aumenta"_s));
        const int id = insertMovement(u"QUANTITA=-1|TIPO_MOVIMENTO=Scarico"_s);
        form_->SetModified(false);
        form_->openRecord(id);
        QVERIFY(!isAmber());
    }

    void openedMovementKeepsWhatIsNotShown()
    {
        const int id = insertMovement(u"IDMAGAZZINO=3|QUANTITA=-5|VALORE=3|VALORE_IMPORTO=-15.75|"
                                      "RIF_DOC_TIPO=D.d.T. di scarico|RIF_DOC_ID=8|RIF_DOC_IDRIGA=21"_s);
        const QString before = stored().constFirst();
        form_->openRecord(id);
        QCOMPARE(shownTotal(), u"-15,75"_s);
        test::retype(form_, u"txtQuantita"_s, u"-6"_s);
        test::trigger(form_, u"actSalva"_s);
        QCOMPARE(stored(), QStringList({QString(before).replace(u"|-5|"_s, u"|-6|"_s)}));

        // None of it may reach the next new movement.
        test::trigger(form_, u"actNuovo"_s);
        QCOMPARE(shownTotal(), u"0,00"_s);
        chooseArticle();
        chooseReason(u"Carico"_s);
        test::trigger(form_, u"actSalva"_s);
        QCOMPARE(lines(u"SELECT IDMAGAZZINO, VALORE_IMPORTO, RIF_DOC_TIPO, RIF_DOC_ID, RIF_DOC_IDRIGA FROM "
                       "MOVI_MAGA WHERE IDMOVI_MAGA <> "_s +
                       QString::number(id)),
                 QStringList(u"0|0|||"_s));
    }

    void unknownKindLeavesTheChoice()
    {
        const int unknown = insertMovement(u"TIPO_MOVIMENTO=Rettifica"_s);
        for (const QString &before : {u"Scarico"_s, u"Carico"_s}) {
            form_->openRecord(insertMovement(u"TIPO_MOVIMENTO="_s + before));
            form_->openRecord(unknown);
            QCOMPARE(form_->IdRecord(), unknown);
            QVERIFY(kindButton(before)->isChecked());
        }
    }

    void categoriesMadeMeanwhileAreOffered()
    {
        auto *tree = test::control<QComboBox>(form_, u"txtCategoria"_s);
        const QString chosen = tree->itemText(2);
        tree->setCurrentIndex(2);
        form_->SetModified(false);
        test::insertInto(database(), u"CATEGORIE_ANA_MAGA"_s, {{u"CATEGORIA"_s, u"AAA nuova"_s}});
        QCOMPARE(tree->findText(u"AAA nuova"_s), -1);
        tree->setFocus();
        QVERIFY(tree->findText(u"AAA nuova"_s) > 0);
        QCOMPARE(tree->currentText(), chosen);
        QVERIFY(!form_->Modified());
    }

private:
    QStringList stored() const { return lines(u"SELECT %1 FROM MOVI_MAGA ORDER BY IDMOVI_MAGA"_s.arg(everyColumn)); }
    QString shownTotal() const { return test::shown(form_, u"txtValoreImporto"_s); }

    QRadioButton *kindButton(const QString &text) const
    {
        const QList<QRadioButton *> buttons =
            test::control<QWidget>(form_, u"grpTipoMovimento"_s)->findChildren<QRadioButton *>();
        for (QRadioButton *button : buttons) {
            if (button->text() == text)
                return button;
        }
        test::missing(text);
    }

    void chooseArticle() const
    {
        place().dialogs.expect(test::choosingArticle(article));
        test::press(form_, u"cmdSelezionaArticolo"_s);
    }

    void chooseReason(const QString &text) const
    {
        place().dialogs.expect(test::choosing(text));
        test::press(form_, u"cmdSelezionaCausaleMagazzino"_s);
    }

    /// A movement of another program.
    int insertMovement(const QString &values) const
    {
        const QString usual = u"CODICE=%1|DESCRIZIONE=Trapano|IDCATEGORIA_ANA_MAGA=%2|TIPO_MOVIMENTO=Carico|"
                              "IDCAUSALE_MAGA=1|"_s;
        return test::insertInto(database(), u"MOVI_MAGA"_s,
                                usual.arg(article, ofArticle(u"IDCATEGORIA_ANA_MAGA"_s)) + values);
    }

    /// One value of the article.
    QString ofArticle(const QString &column) const
    {
        return lines(u"SELECT %1 FROM ANA_MAGA WHERE CODICE = '%2'"_s.arg(column, article)).value(0);
    }

    QPointer<ui::EntryForm> form_;
};

static const test::Registered<TestMovementForm> registered;

#include "test_movements.moc"
