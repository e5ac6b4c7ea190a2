#include "tour/TourRegisters.h"

#include "host/ui/MainWindow.h"
#include "platform/core/Format.h"
#include "platform/core/NumberReader.h"
#include "platform/data/Connection.h"
#include "platform/ui/NumberEdits.h"
#include "tour/TourDriver.h"

#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QTableView>

using namespace Qt::StringLiterals;

namespace host {

namespace {

// The article of the movements by hand; no document of the tour moves it.
const QString article = u"TRA-0055"_s;

/// One register's record as the tour enters it.
struct Register
{
    QString title;
    QString picture;
    QString entryAction;
    QString entryForm;
    QString listAction;
    QString listForm;
    QString table;
    QString column;
    QString control; ///< that shows `column`
    QList<std::pair<QString, QString>> inputs;
    QString changed; ///< what `control` holds after the change
    bool hasNotes = false;
    // The list of transport reasons deletes something else by intention.
    bool deletesInList = true;
};

const QList<Register> &registers()
{
    static const QList<std::pair<QString, QString>> firm = {{u"txtRagioneSociale"_s, u"Zanardi & D'Amico S.r.l."_s},
                                                            {u"txtIndirizzo"_s, u"Via dell'Artigianato 12"_s},
                                                            {u"txtCitta"_s, u"Bassano del Grappa"_s},
                                                            {u"txtCap"_s, u"36061"_s},
                                                            {u"txtProvincia"_s, u"VI"_s},
                                                            {u"txtNazione"_s, u"Italia"_s},
                                                            {u"txtCodiceFiscale"_s, u"ZNRDMC70A01A703X"_s},
                                                            {u"txtPartitaIVA"_s, u"01234567897"_s},
                                                            {u"txtTelefono1"_s, u"0424 5550190"_s},
                                                            {u"txtTelefono2"_s, u"0424 5550191"_s},
                                                            {u"txtTelefono3"_s, u"333 5550192"_s},
                                                            {u"txtFax"_s, u"0424 5550193"_s},
                                                            {u"txtEmail"_s, u"ordini@zanardi-damico.example"_s},
                                                            {u"txtWeb"_s, u"www.zanardi-damico.example"_s}};
    static const QList<Register> all = {
        {u"Un fornitore"_s, u"fornitore"_s, u"actInserimentoFornitori"_s, u"MMGInserimentoFornitori"_s,
         u"actRicercaFornitori"_s, u"MMGRicercaFornitori"_s, u"FORNITORI"_s, u"RAGIONESOCIALE"_s,
         u"txtRagioneSociale"_s, firm, u"Zanardi e figli S.r.l."_s, true},
        {u"Un vettore"_s, u"vettore"_s, u"actInserimentoVettori"_s, u"MMGInserimentoVettori"_s, u"actRicercaVettori"_s,
         u"MMGRicercaVettori"_s, u"VETTORI"_s, u"RAGIONESOCIALE"_s, u"txtRagioneSociale"_s, firm,
         u"Zanardi Trasporti S.n.c."_s, true},
        {u"Un tipo di trasporto"_s,
         u"tipo-trasporto"_s,
         u"actInserimentoTipiTrasporto"_s,
         u"MMGInserimentoTipiTrasporto"_s,
         u"actRicercaTipiTrasporto"_s,
         u"MMGRicercaTipiTrasporto"_s,
         u"TIPI_TRASPORTO"_s,
         u"TIPO_TRASPORTO"_s,
         u"txtTipoTrasporto"_s,
         {{u"txtTipoTrasporto"_s, u"Corriere espresso"_s}},
         u"Corriere espresso 24 ore"_s},
        {u"Una causale di trasporto"_s,
         u"causale-trasporto"_s,
         u"actInserimentoCausaliTrasporto"_s,
         u"MMGInserimentoCausaliTrasporto"_s,
         u"actRicercaCausaliTrasporto"_s,
         u"MMGRicercaCausaliTrasporto"_s,
         u"CAUSALI_TRASPORTO"_s,
         u"CAUSALE_TRASPORTO"_s,
         u"txtCausaleTrasporto"_s,
         {{u"txtCausaleTrasporto"_s, u"Prestito d'uso"_s}},
         u"Prestito"_s,
         false,
         false}};
    return all;
}

class Registers
{
public:
    Registers(TourDriver &driver, MainWindow &window, QObject *module, data::Connection &connection)
        : driver_(driver)
        , window_(window)
        , module_(module)
        , connection_(connection)
    {
    }

    void keep(const Register &names);
    void enterMovement(const QString &kind, const QString &quantity, const QString &picture);
    void listMovements();
    void listDocuments(const QString &action, const QString &form, const QString &picture, int documents);

private:
    QWidget *open(const QString &action, const QString &form);
    QTableView *grid(QWidget *list) { return driver_.control<QTableView>(list, u"GridRisultati"_s); }
    QString one(const QString &sql);
    QString stored(const Register &names, const QString &text);
    QString inList(QTableView *grid, const QString &text);
    void enter(const Register &names);
    QWidget *find(const Register &names, const QString &text);
    void choose(const QString &text);

    TourDriver &driver_;
    MainWindow &window_;
    QObject *module_;
    data::Connection &connection_;
};

QWidget *Registers::open(const QString &action, const QString &form)
{
    driver_.trigger(module_, action);
    return driver_.control<QWidget>(&window_, form);
}

QString Registers::one(const QString &sql)
{
    const data::Rows rows = connection_.select(sql);
    return rows.isEmpty() ? QString() : rows.values(0).constFirst().toString();
}

// How many records of the register have `text`.
QString Registers::stored(const Register &names, const QString &text)
{
    const data::Rows rows =
        connection_.run(u"SELECT COUNT(*) FROM %1 WHERE %2 = ?"_s.arg(names.table, names.column), {text});
    return rows.values(0).constFirst().toString();
}

// How many rows of a list show `text`.
QString Registers::inList(QTableView *grid, const QString &text)
{
    int found = 0;
    const QAbstractItemModel *model = grid->model();
    for (int row = 0; row < model->rowCount(); ++row) {
        for (int column = 0; column < model->columnCount(); ++column)
            found += model->index(row, column).data().toString() == text ? 1 : 0;
    }
    return QString::number(found);
}

// Chooses a row of the next selection dialog.
void Registers::choose(const QString &text)
{
    driver_.expectDialog([this, text](QDialog &dialog) {
        driver_.selectRow(driver_.control<QTableView>(&dialog, u"gridRisultati"_s), text);
        driver_.press(&dialog, u"cmdOk"_s);
    });
}

void Registers::enter(const Register &names)
{
    QWidget *form = open(names.entryAction, names.entryForm);
    for (const auto &[control, text] : names.inputs)
        driver_.control<QLineEdit>(form, control)->setText(text);
    if (names.hasNotes)
        driver_.control<QPlainTextEdit>(form, u"txtNote"_s)->setPlainText(u"Chiuso il venerdì pomeriggio"_s);
    if (form->findChild<QWidget *>(u"txtTipoPagamento"_s)) {
        choose(u"Ri.Ba. 30/60 gg. fine mese"_s);
        driver_.press(form, u"cmdSelezionaTipoPagamento"_s);
    }
    driver_.picture(&window_, names.picture);
    driver_.pictureAtSmallestSize(form, names.picture);
    driver_.trigger(form, u"actSalva"_s);
    driver_.check(u"registrati"_s, stored(names, names.inputs.constFirst().second), u"1"_s);
    driver_.trigger(form, u"actChiudi"_s);
}

// Searches every record and selects the one that shows `text`.
QWidget *Registers::find(const Register &names, const QString &text)
{
    QWidget *list = open(names.listAction, names.listForm);
    driver_.trigger(list, u"actRipristina"_s);
    driver_.trigger(list, u"actCerca"_s);
    driver_.selectRow(grid(list), text);
    return list;
}

void Registers::keep(const Register &names)
{
    const QString text = names.inputs.constFirst().second;
    driver_.tell(names.title + u": inserire, trovare, modificare, eliminare"_s);
    enter(names);
    QWidget *list = find(names, text);
    driver_.picture(&window_, names.picture + u"-elenco"_s);
    driver_.pictureAtSmallestSize(list, names.picture + u"-elenco"_s);

    driver_.trigger(list, u"actModifica"_s);
    auto *form = driver_.control<QWidget>(&window_, names.entryForm);
    driver_.check(u"aperto"_s, driver_.control<QLineEdit>(form, names.control)->text(), text);
    driver_.control<QLineEdit>(form, names.control)->setText(names.changed);
    driver_.trigger(form, u"actSalva"_s);
    driver_.check(u"registrati con il testo nuovo"_s, stored(names, names.changed), u"1"_s);
    list = find(names, names.changed);

    driver_.expectMessage(u"Conferma"_s, u"Confermare l'eliminazione?"_s, core::Answer::Yes);
    driver_.trigger(names.deletesInList ? list : form, u"actElimina"_s);
    driver_.check(u"rimasti"_s, stored(names, names.changed), u"0"_s);
    if (names.deletesInList)
        driver_.check(u"rimasti in elenco"_s, inList(grid(list), names.changed), u"0"_s);
    // Its form still shows the record that the list deleted.
    driver_.trigger(form, u"actChiudi"_s);
    driver_.trigger(list, u"actChiudi"_s);
}

void Registers::enterMovement(const QString &kind, const QString &quantity, const QString &picture)
{
    driver_.tell(u"Un movimento libero: "_s + kind.toLower());
    QWidget *form = open(u"actInserimentoMovimentiMagazzino"_s, u"MMGInserimentoMovimentiMagazzino"_s);
    driver_.trigger(form, u"actNuovo"_s);
    driver_.expectDialog([this](QDialog &dialog) {
        driver_.control<QLineEdit>(&dialog, u"txtCodice"_s)->setText(article);
        driver_.press(&dialog, u"actCerca"_s);
        driver_.selectRow(driver_.control<QTableView>(&dialog, u"gridRisultati"_s), article);
        driver_.press(&dialog, u"cmdOk"_s);
    });
    driver_.press(form, u"cmdSelezionaArticolo"_s);
    const QList<QRadioButton *> kinds = form->findChildren<QRadioButton *>();
    for (QRadioButton *button : kinds) {
        if (button->text() == kind)
            button->click();
    }
    choose(kind);
    driver_.press(form, u"cmdSelezionaCausaleMagazzino"_s);
    driver_.control<ui::DecimalEdit>(form, u"txtQuantita"_s)->setValue(core::readNumber(quantity).value().value);
    driver_.control<QPlainTextEdit>(form, u"txtNote"_s)->setPlainText(u"Rettifica d'inventario"_s);
    driver_.picture(&window_, picture);
    driver_.pictureAtSmallestSize(form, picture);
    driver_.trigger(form, u"actSalva"_s);
    const QString from = u" FROM MOVI_MAGA WHERE CODICE = '%1' AND TIPO_MOVIMENTO = '%2'"_s.arg(article, kind);
    driver_.check(u"quantità registrata"_s, core::formatNumber(one(u"SELECT QUANTITA"_s + from).toDouble()), quantity);
    driver_.check(u"totale registrato"_s, core::formatNumber(one(u"SELECT VALORE_IMPORTO"_s + from).toDouble()),
                  u"0,00"_s);
    driver_.trigger(form, u"actChiudi"_s);
}

void Registers::listMovements()
{
    driver_.tell(u"I movimenti del periodo"_s);
    QWidget *list = open(u"actRicercaMovimentiMagazzino"_s, u"MMGRicercaMovimentiMagazzino"_s);
    driver_.check(u"movimenti di "_s + article, inList(grid(list), article), u"2"_s);
    driver_.selectRow(grid(list), article);
    driver_.picture(&window_, u"movimenti-elenco"_s);
    driver_.pictureAtSmallestSize(list, u"movimenti-elenco"_s);
    driver_.trigger(list, u"actChiudi"_s);
}

void Registers::listDocuments(const QString &action, const QString &form, const QString &picture, int documents)
{
    QWidget *list = open(action, form);
    driver_.check(u"documenti prima della ricerca"_s, QString::number(grid(list)->model()->rowCount()), u"0"_s);
    driver_.trigger(list, u"actCerca"_s);
    driver_.check(u"documenti dell'anno"_s, QString::number(grid(list)->model()->rowCount()),
                  QString::number(documents));
    driver_.picture(&window_, picture);
    driver_.pictureAtSmallestSize(list, picture);
    driver_.trigger(list, u"actChiudi"_s);
}

} // namespace

void tourRegisters(TourDriver &driver, MainWindow &window, QObject *module, data::Connection &connection)
{
    Registers part(driver, window, module, connection);
    for (const Register &names : registers())
        part.keep(names);
    part.enterMovement(u"Carico"_s, u"8,00"_s, u"movimento-carico"_s);
    part.enterMovement(u"Scarico"_s, u"-3,00"_s, u"movimento-scarico"_s);
    part.listMovements();
    driver.tell(u"Gli elenchi dei documenti"_s);
    part.listDocuments(u"actRicercaDdTScarico"_s, u"MMGRicercaDdTScarico"_s, u"ddt-elenco"_s, 1);
    part.listDocuments(u"actRicercaBolleCarico"_s, u"MMGRicercaBolleCarico"_s, u"bolle-elenco"_s, 2);
}

} // namespace host
