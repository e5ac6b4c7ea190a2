#include "magazzino/uMMGModMagazzino.h"
#include "magazzino/ui/SelectionDialog.h"
#include "platform/core/Error.h"
#include "platform/data/Connection.h"
#include "platform/ui/CategoryTree.h"
#include "tests/support/Controls.h"
#include "tests/support/TestMain.h"
#include "tests/support/Workplace.h"

#include <QLineEdit>
#include <QTableView>
#include <QToolButton>

using namespace Qt::StringLiterals;

class TestSelectionDialogs : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { workplace_ = std::make_unique<test::Workplace>(); }
    void cleanup() { workplace_.reset(); }

    void dialogs_data();
    void dialogs();
    void letterBar_data();
    void letterBar();
    void articleFilters_data();
    void articleFilters();
    void customerFilter_data();
    void customerFilter();
    void categoryIncludesThoseBelow_data();
    void categoryIncludesThoseBelow();
    void okWithoutARowWarnsAndStaysOpen();
    void doubleClickChooses();
    void doubleClickBesideTheRowsChoosesNothing();
    void cancelClosesWithoutAsking_data();
    void cancelClosesWithoutAsking();
    void enterInAFilterSearchesOnly();
    void filtersAndRowsStayBetweenUses();
    void listsLoadedOnShowAreCurrent();
    void resetEmptiesTheFiltersOnly();
    void failedSearchIsShown();

private:
    TMMGModSelezionaBase &dialog(const QString &name)
    {
        return workplace_->module().selectionDialog(u"actModSeleziona"_s + name);
    }
    QTableView *grid(const QWidget &dialog) const { return test::control<QTableView>(&dialog, u"gridRisultati"_s); }
    QStringList codes(const QWidget &dialog) const { return test::columnTexts(grid(dialog), u"Codice"_s); }
    void clickLetter(const QWidget &dialog, const QString &letter) const;

    std::unique_ptr<test::Workplace> workplace_;
};

void TestSelectionDialogs::clickLetter(const QWidget &dialog, const QString &letter) const
{
    const QList<QToolButton *> buttons =
        test::control<QWidget>(&dialog, u"BarraRicerca"_s)->findChildren<QToolButton *>();
    for (QToolButton *button : buttons) {
        if (button->text() == letter)
            button->click();
    }
}

void TestSelectionDialogs::dialogs_data()
{
    QTest::addColumn<QString>("caption");
    QTest::addColumn<QString>("headers");
    QTest::addColumn<QString>("onShow"); // column and condition of what is loaded; empty for nothing
    QTest::addColumn<QString>("controls");
    QTest::addColumn<bool>("returnsText");
    const QString article = u"Codice|Descrizione|Categoria"_s;
    const QString person = u"Codice|Ragione sociale|Codice fiscale|Partita IVA"_s;
    const QString search = u"actCerca|actRipristina"_s;
    const QString letterA = u" WHERE UPPER(RAGIONESOCIALE) LIKE 'A%' ORDER BY UPPER(RAGIONESOCIALE)"_s;
    QTest::newRow("Articolo") << u"Seleziona un articolo"_s << article << QString()
                              << search + u"|txtCategoria|txtCodice|txtDescrizione"_s << false;
    QTest::newRow("Servizio") << u"Seleziona un servizio"_s << article << QString()
                              << search + u"|txtCategoria|txtCodice|txtDescrizione"_s << false;
    QTest::newRow("Cliente") << u"Seleziona un cliente"_s << person << u"CODICE FROM CLIENTI"_s + letterA
                             << u"BarraRicerca|"_s + search + u"|txtRagioneSociale"_s << false;
    QTest::newRow("Fornitore") << u"Seleziona un fornitore"_s << person << u"CODICE FROM FORNITORI"_s + letterA
                               << u"BarraRicerca"_s << false;
    QTest::newRow("Vettore") << u"Seleziona un vettore"_s << u"Codice|Ragione sociale|Indirizzo|Città|Pr."_s
                             << QString() << u"BarraRicerca|"_s + search << false;
    QTest::newRow("NotaDocumenti") << u"Seleziona nota documenti"_s << u"Titolo|Testo"_s
                                   << u"TITOLO FROM NOTE_DOCUMENTI ORDER BY UPPER(TITOLO)"_s << search << false;
    QTest::newRow("CausaleMagazzino") << u"Seleziona una causale di magazzino"_s << u"Causale di magazzino"_s
                                      << u"CAUSALE_MAGA FROM CAUSALI_MAGA ORDER BY UPPER(CAUSALE_MAGA)"_s << QString()
                                      << false;
    QTest::newRow("CausaleTrasporto") << u"Seleziona una causale di trasporto"_s << u"Causale di trasporto"_s
                                      << u"CAUSALE_TRASPORTO FROM CAUSALI_TRASPORTO ORDER BY UPPER(CAUSALE_TRASPORTO)"_s
                                      << QString() << false;
    QTest::newRow("TipoPagamento") << u"Seleziona un tipo di pagamento"_s << u"Tipo di pagamento"_s
                                   << u"TIPO_PAGAMENTO FROM TIPI_PAGAMENTO ORDER BY UPPER(TIPO_PAGAMENTO)"_s
                                   << QString() << true;
    QTest::newRow("TipoTrasporto") << u"Seleziona un tipo di trasporto"_s << u"Tipo di trasporto"_s
                                   << u"TIPO_TRASPORTO FROM TIPI_TRASPORTO ORDER BY UPPER(TIPO_TRASPORTO)"_s
                                   << QString() << true;
    QTest::newRow("UM") << u"Seleziona un'unità di misura"_s << u"Unità di misura"_s
                        << u"UM FROM UM ORDER BY UPPER(UM)"_s << QString() << true;
}

void TestSelectionDialogs::dialogs()
{
    QFETCH(QString, caption);
    QFETCH(QString, headers);
    QFETCH(QString, onShow);
    QFETCH(QString, controls);
    QFETCH(bool, returnsText);
    TMMGModSelezionaBase &dialog = this->dialog(QString::fromLatin1(QTest::currentDataTag()));
    QCOMPARE(dialog.ApriSelezionato().id, -1);
    QCOMPARE(dialog.ApriSelezionato().testo, QString());
    dialog.show();
    QCOMPARE(dialog.windowTitle(), caption);
    const QAbstractItemModel &model = *grid(dialog)->model();
    QStringList shown;
    for (int column = 0; column < model.columnCount(); ++column)
        shown.append(model.headerData(column, Qt::Horizontal).toString());
    QCOMPARE(shown.join(u'|'), headers);
    QStringList found;
    for (const char *name : {"BarraRicerca", "actCerca", "actRipristina", "txtCategoria", "txtCodice", "txtDescrizione",
                             "txtRagioneSociale"}) {
        if (dialog.findChild<QWidget *>(QString::fromLatin1(name)))
            found.append(QString::fromLatin1(name));
    }
    QCOMPARE(found.join(u'|'), controls);
    QCOMPARE(test::columnTexts(grid(dialog), shown.first()),
             onShow.isEmpty() ? QStringList() : workplace_->lines(u"SELECT "_s + onShow));
    if (onShow.isEmpty())
        test::press(&dialog, u"actCerca"_s);
    QVERIFY(model.rowCount() > 0);
    grid(dialog)->selectRow(0);
    QVERIFY(dialog.ApriSelezionato().id > 0);
    QCOMPARE(dialog.ApriSelezionato().testo, returnsText ? model.index(0, 0).data().toString() : QString());
    test::press(&dialog, u"cmdAnnulla"_s);
}

void TestSelectionDialogs::letterBar_data()
{
    QTest::addColumn<QString>("table");
    QTest::newRow("Cliente") << u"CLIENTI"_s;
    QTest::newRow("Fornitore") << u"FORNITORI"_s;
    QTest::newRow("Vettore") << u"VETTORI"_s;
}

void TestSelectionDialogs::letterBar()
{
    QFETCH(QString, table);
    workplace_->database().execute(
        u"INSERT INTO %1(CODICE, RAGIONESOCIALE) VALUES('ZZ-20-CARATTERI-ABCD', 'brìc à brac')"_s.arg(table));
    const QString all = u"SELECT CODICE FROM %1 %2 ORDER BY UPPER(RAGIONESOCIALE)"_s;
    TMMGModSelezionaBase &dialog = this->dialog(QString::fromLatin1(QTest::currentDataTag()));
    dialog.show();
    clickLetter(dialog, u"B"_s);
    QCOMPARE(codes(dialog), workplace_->lines(all.arg(table, u"WHERE UPPER(RAGIONESOCIALE) STARTING WITH 'B'"_s)));
    QVERIFY(codes(dialog).contains(u"ZZ-20-CARATTERI-ABCD"_s));
    clickLetter(dialog, u"*"_s);
    QCOMPARE(codes(dialog), workplace_->lines(all.arg(table, QString())));
    dialog.reject();
}

void TestSelectionDialogs::articleFilters_data()
{
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("description");
    QTest::addColumn<QString>("found");
    QTest::newRow("code, other case, in the middle") << u"ra-001"_s << QString() << u"TRA-0012|TRA-0018"_s;
    QTest::newRow("description") << QString() << u"12 v A BATT"_s << u"TRA-0012"_s;
    QTest::newRow("both") << u"tra"_s << u"18 V"_s << u"TRA-0018"_s;
    QTest::newRow("both, one fails") << u"vit"_s << u"18 V"_s << QString();
    QTest::newRow("apostrophe") << QString() << u"l'acqua \"x"_s << u"ZZ'1"_s;
    QTest::newRow("apostrophe in the code") << u"z'"_s << QString() << u"ZZ'1"_s;
    QTest::newRow("per cent is no wildcard") << QString() << u"100%"_s << u"ZZ%2"_s;
    QTest::newRow("underscore is no wildcard") << u"zz_"_s << QString() << QString();
    QTest::newRow("accent") << QString() << u"è così"_s << u"ZZ%2"_s;
    QTest::newRow("accent, other case") << QString() << u"È COSÌ"_s << u"ZZ%2"_s;
    QTest::newRow("code of 20 characters") << u"zz-3-456789012345678"_s << QString() << u"ZZ-3-456789012345678"_s;
    QTest::newRow("colon is no parameter") << QString() << u"a :ID"_s << u"ZZ%2"_s;
    QTest::newRow("question mark is no parameter") << QString() << u"perché?"_s << u"ZZ%2"_s;
}

void TestSelectionDialogs::articleFilters()
{
    QFETCH(QString, code);
    QFETCH(QString, description);
    QFETCH(QString, found);
    const QString insert = u"INSERT INTO ANA_MAGA(CODICE, DESCRIZIONE, COSTO, PREZZO) VALUES(?, ?, 0, 0)"_s;
    workplace_->database().run(insert, {u"ZZ'1"_s, u"Filtro per l'acqua \"X\""_s});
    workplace_->database().run(insert, {u"ZZ%2"_s, u"Cotone 100%, è così a :ID perché?"_s});
    workplace_->database().run(insert, {u"ZZ-3-456789012345678"_s, u"Codice lungo"_s});
    TMMGModSelezionaBase &dialog = this->dialog(u"Articolo"_s);
    dialog.show();
    test::type(test::control<QLineEdit>(&dialog, u"txtCodice"_s), code);
    test::control<QLineEdit>(&dialog, u"txtDescrizione"_s)->setText(description);
    test::press(&dialog, u"actCerca"_s);
    QCOMPARE(codes(dialog).join(u'|'), found);
    dialog.reject();
}

void TestSelectionDialogs::customerFilter_data()
{
    QTest::addColumn<QString>("filter");
    QTest::addColumn<QString>("first");
    QTest::addColumn<int>("count");
    QTest::newRow("apostrophe") << u"d'am"_s << u"D'Amico Ferramenta S.n.c."_s << 1;
    QTest::newRow("accent") << u"càorle"_s << u"Colorificio Càorle S.r.l."_s << 1;
    QTest::newRow("ampersand") << u"& f"_s << u"Esposito & Figli S.n.c."_s << 2;
    QTest::newRow("empty finds all") << QString() << u"Agostini Lucia"_s << 60;
}

void TestSelectionDialogs::customerFilter()
{
    QFETCH(QString, filter);
    QFETCH(QString, first);
    QFETCH(int, count);
    TMMGModSelezionaBase &dialog = this->dialog(u"Cliente"_s);
    dialog.show();
    test::type(test::control<QLineEdit>(&dialog, u"txtRagioneSociale"_s), filter);
    test::press(&dialog, u"actCerca"_s);
    QCOMPARE(test::columnTexts(grid(dialog), u"Ragione sociale"_s).size(), count);
    QCOMPARE(test::cellText(grid(dialog), 0, u"Ragione sociale"_s), first);
    dialog.reject();
}

void TestSelectionDialogs::categoryIncludesThoseBelow_data()
{
    QTest::addColumn<QString>("dialogName");
    QTest::addColumn<QString>("category");
    QTest::addColumn<QString>("code");
    QTest::addColumn<int>("count");
    QTest::newRow("root") << u"Articolo"_s << u"Tutte le categorie"_s << QString() << 155;
    QTest::newRow("three levels") << u"Articolo"_s << u"Ferramenta"_s << QString() << 50;
    QTest::newRow("middle") << u"Articolo"_s << u"Viteria"_s << QString() << 20;
    QTest::newRow("leaf") << u"Articolo"_s << u"Rondelle"_s << QString() << 5;
    QTest::newRow("with a code") << u"Articolo"_s << u"Ferramenta"_s << u"vit"_s << 5;
    QTest::newRow("code outside") << u"Articolo"_s << u"Casalinghi"_s << u"vit"_s << 0;
    QTest::newRow("services") << u"Servizio"_s << u"Trasporto"_s << QString() << 5;
}

void TestSelectionDialogs::categoryIncludesThoseBelow()
{
    QFETCH(QString, dialogName);
    QFETCH(QString, category);
    QFETCH(QString, code);
    QFETCH(int, count);
    TMMGModSelezionaBase &dialog = this->dialog(dialogName);
    dialog.show();
    auto *tree = test::control<CategoryTree>(&dialog, u"txtCategoria"_s);
    QCOMPARE(tree->itemText(0).trimmed(), u"Tutte le categorie"_s);
    int entry = 0;
    while (entry < tree->count() && tree->itemText(entry).trimmed() != category)
        ++entry;
    QVERIFY(entry < tree->count());
    tree->setCurrentIndex(entry);
    test::type(test::control<QLineEdit>(&dialog, u"txtCodice"_s), code);
    test::press(&dialog, u"actCerca"_s);
    QCOMPARE(codes(dialog).size(), count);
    dialog.reject();
}

void TestSelectionDialogs::okWithoutARowWarnsAndStaysOpen()
{
    TMMGModSelezionaBase &dialog = this->dialog(u"TipoTrasporto"_s);
    dialog.show();
    workplace_->messages.expectWarning(u"Nessuna voce selezionata!"_s);
    test::press(&dialog, u"cmdOk"_s);
    QCOMPARE(workplace_->messages.verify(), QStringList());
    QVERIFY(dialog.isVisible());
    grid(dialog)->selectRow(0);
    test::press(&dialog, u"cmdOk"_s);
    QVERIFY(!dialog.isVisible());
    QCOMPARE(dialog.result(), int(QDialog::Accepted));
}

void TestSelectionDialogs::doubleClickChooses()
{
    TMMGModSelezionaBase &dialog = this->dialog(u"TipoTrasporto"_s);
    dialog.show();
    test::settle();
    QTableView *rows = grid(dialog);
    const QPoint lastRow = rows->visualRect(rows->model()->index(2, 0)).center();
    QTest::mouseClick(rows->viewport(), Qt::LeftButton, {}, lastRow);
    QTest::mouseDClick(rows->viewport(), Qt::LeftButton, {}, lastRow);
    QVERIFY(!dialog.isVisible());
    QCOMPARE(dialog.result(), int(QDialog::Accepted));
    QCOMPARE(dialog.ApriSelezionato().testo, u"Vettore"_s);
}

void TestSelectionDialogs::doubleClickBesideTheRowsChoosesNothing()
{
    TMMGModSelezionaBase &dialog = this->dialog(u"Articolo"_s);
    dialog.show();
    test::settle();
    QTest::mouseClick(grid(dialog)->viewport(), Qt::LeftButton, {}, QPoint(30, 30));
    QTest::mouseDClick(grid(dialog)->viewport(), Qt::LeftButton, {}, QPoint(30, 30));
    QVERIFY(dialog.isVisible());
    dialog.reject();
}

void TestSelectionDialogs::cancelClosesWithoutAsking_data()
{
    QTest::addColumn<bool>("byKey");
    QTest::newRow("Annulla") << false;
    QTest::newRow("Esc") << true;
}

void TestSelectionDialogs::cancelClosesWithoutAsking()
{
    QFETCH(bool, byKey);
    TMMGModSelezionaBase &dialog = this->dialog(u"Cliente"_s);
    dialog.show();
    if (byKey)
        QTest::keyClick(&dialog, Qt::Key_Escape);
    else
        test::press(&dialog, u"cmdAnnulla"_s);
    QVERIFY(!dialog.isVisible());
    QCOMPARE(dialog.result(), int(QDialog::Rejected));
}

void TestSelectionDialogs::enterInAFilterSearchesOnly()
{
    TMMGModSelezionaBase &dialog = this->dialog(u"Articolo"_s);
    dialog.show();
    auto *filter = test::control<QLineEdit>(&dialog, u"txtDescrizione"_s);
    test::type(filter, u"750 ml"_s);
    QTest::keyClick(filter, Qt::Key_Return);
    QCOMPARE(codes(dialog), QStringList({u"SMA-0750"_s}));
    QVERIFY(dialog.isVisible());
    dialog.reject();
}

void TestSelectionDialogs::filtersAndRowsStayBetweenUses()
{
    TMMGModSelezionaBase &dialog = this->dialog(u"Articolo"_s);
    dialog.show();
    auto *filter = test::control<QLineEdit>(&dialog, u"txtCodice"_s);
    test::type(filter, u"tra-00"_s);
    QTest::keyClick(filter, Qt::Key_Return);
    grid(dialog)->selectRow(1);
    test::press(&dialog, u"cmdAnnulla"_s);
    const int key = dialog.ApriSelezionato().id;
    dialog.show();
    QCOMPARE(filter->text(), u"tra-00"_s);
    QCOMPARE(codes(dialog).size(), 4);
    QCOMPARE(dialog.ApriSelezionato().id, key);
    dialog.reject();
}

void TestSelectionDialogs::listsLoadedOnShowAreCurrent()
{
    TMMGModSelezionaBase &dialog = this->dialog(u"UM"_s);
    dialog.show();
    dialog.reject();
    workplace_->database().execute(u"INSERT INTO UM(UM) VALUES('AAA')"_s);
    dialog.show();
    QCOMPARE(test::cellText(grid(dialog), 0, u"Unità di misura"_s), u"AAA"_s);
    QCOMPARE(dialog.ApriSelezionato().id, -1);
    dialog.reject();
}

void TestSelectionDialogs::resetEmptiesTheFiltersOnly()
{
    TMMGModSelezionaBase &dialog = this->dialog(u"Articolo"_s);
    dialog.show();
    test::control<QLineEdit>(&dialog, u"txtCodice"_s)->setText(u"tra"_s);
    test::control<QLineEdit>(&dialog, u"txtDescrizione"_s)->setText(u"18 V"_s);
    auto *tree = test::control<CategoryTree>(&dialog, u"txtCategoria"_s);
    test::press(&dialog, u"actCerca"_s);
    tree->setCurrentIndex(1);
    workplace_->database().execute(u"INSERT INTO CATEGORIE_ANA_MAGA(CATEGORIA) VALUES('Abbigliamento')"_s);
    test::press(&dialog, u"actRipristina"_s);
    QCOMPARE(test::shown(&dialog, u"txtCodice"_s), QString());
    QCOMPARE(test::shown(&dialog, u"txtDescrizione"_s), QString());
    QCOMPARE(test::shown(&dialog, u"txtCategoria"_s).trimmed(), u"Tutte le categorie"_s);
    QCOMPARE(tree->itemText(1).trimmed(), u"Abbigliamento"_s);
    QCOMPARE(codes(dialog), QStringList({u"TRA-0018"_s}));
    dialog.reject();
}

void TestSelectionDialogs::failedSearchIsShown()
{
    TMMGModSelezionaBase &dialog = this->dialog(u"Vettore"_s);
    dialog.show();
    data::Connection &connection = *workplace_->module().ModADOConn;
    connection.setStatementHook([](const QString &) { throw core::Error(u"rifiutato"_s); });
    workplace_->messages.expectError(u"rifiutato"_s);
    test::press(&dialog, u"actCerca"_s);
    QCOMPARE(workplace_->messages.verify(), QStringList());
    QVERIFY(!QGuiApplication::overrideCursor());
    connection.setStatementHook({});
    test::press(&dialog, u"actCerca"_s);
    QCOMPARE(codes(dialog).size(), 6);
    dialog.reject();
}

static const test::Registered<TestSelectionDialogs> registered;

#include "test_selection_dialogs.moc"
