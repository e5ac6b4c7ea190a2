#include "tour/TourRegisters.h"

#include "platform/data/Connection.h"
#include "tour/Part.h"

#include <QRadioButton>
#include <QTableView>

using namespace Qt::StringLiterals;

namespace tour {

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

class Registers : private Part
{
public:
    Registers(Visit &visit, host::Session &session)
        : Part(visit, session)
    {
    }

    void keep(const Register &names);
    void enterMovement(const QString &kind, const QString &quantity, const QString &name);
    void listMovements();
    void listDocuments(const QString &action, const QString &form, const QString &name, int documents);

private:
    QString stored(const Register &names, const QString &text) const;
    static QString inList(const QWidget *list, const QString &text);
    void enter(const Register &names);
    QWidget *find(const Register &names, const QString &text);
};

// How many records of the register have `text`.
QString Registers::stored(const Register &names, const QString &text) const
{
    const data::Rows rows =
        database().run(u"SELECT COUNT(*) FROM %1 WHERE %2 = ?"_s.arg(names.table, names.column), {text});
    return rows.values(0).constFirst().toString();
}

// How many rows of a list show `text`.
QString Registers::inList(const QWidget *list, const QString &text)
{
    int found = 0;
    const QAbstractItemModel *model = results(list)->model();
    for (int row = 0; row < model->rowCount(); ++row) {
        for (int column = 0; column < model->columnCount(); ++column)
            found += model->index(row, column).data().toString() == text ? 1 : 0;
    }
    return QString::number(found);
}

void Registers::enter(const Register &names)
{
    QWidget *form = open(names.entryAction, names.entryForm);
    for (const auto &[control, text] : names.inputs)
        type(form, control, text);
    if (names.hasNotes) {
        type(form, u"txtNote"_s, u"Chiuso il venerdì pomeriggio"_s);
        showPage(form, 0);
    }
    if (form->findChild<QWidget *>(u"txtTipoPagamento"_s)) {
        expectChoice(u"Ri.Ba. 30/60 gg. fine mese"_s);
        press(form, u"cmdSelezionaTipoPagamento"_s);
    }
    picture(names.picture);
    pictureAtSmallestSize(form, names.picture);
    trigger(form, u"actSalva"_s);
    check(u"registrati"_s, stored(names, names.inputs.constFirst().second), u"1"_s);
    close(form);
}

// Searches every record and selects the one that shows `text`.
QWidget *Registers::find(const Register &names, const QString &text)
{
    QWidget *list = open(names.listAction, names.listForm);
    trigger(list, u"actRipristina"_s);
    trigger(list, u"actCerca"_s);
    selectRow(results(list), text);
    return list;
}

void Registers::keep(const Register &names)
{
    const QString text = names.inputs.constFirst().second;
    tell(names.title + u": inserire, trovare, modificare, eliminare"_s);
    enter(names);
    QWidget *list = find(names, text);
    picture(names.picture + u"-elenco"_s);
    pictureAtSmallestSize(list, names.picture + u"-elenco"_s);

    trigger(list, u"actModifica"_s);
    QWidget *form = opened(names.entryForm);
    check(u"aperto"_s, shown(form, names.control), text);
    type(form, names.control, names.changed);
    trigger(form, u"actSalva"_s);
    check(u"registrati con il testo nuovo"_s, stored(names, names.changed), u"1"_s);
    list = find(names, names.changed);

    expectQuestion(u"Confermare l'eliminazione?"_s, core::Answer::Yes);
    trigger(names.deletesInList ? list : form, u"actElimina"_s);
    check(u"rimasti"_s, stored(names, names.changed), u"0"_s);
    if (names.deletesInList)
        check(u"rimasti in elenco"_s, inList(list, names.changed), u"0"_s);
    // Its form still shows the record that the list deleted.
    close(form);
    close(list);
}

void Registers::enterMovement(const QString &kind, const QString &quantity, const QString &name)
{
    tell(u"Un movimento libero: "_s + kind.toLower());
    QWidget *form = open(u"actInserimentoMovimentiMagazzino"_s, u"MMGInserimentoMovimentiMagazzino"_s);
    trigger(form, u"actNuovo"_s);
    expectSearch(article, article);
    press(form, u"cmdSelezionaArticolo"_s);
    const QList<QRadioButton *> kinds = form->findChildren<QRadioButton *>();
    for (QRadioButton *button : kinds) {
        if (button->text() == kind)
            button->click();
    }
    expectChoice(kind);
    press(form, u"cmdSelezionaCausaleMagazzino"_s);
    type(form, u"txtQuantita"_s, quantity);
    type(form, u"txtNote"_s, u"Rettifica d'inventario"_s);
    picture(name);
    pictureAtSmallestSize(form, name);
    trigger(form, u"actSalva"_s);
    const QString from = u" FROM MOVI_MAGA WHERE CODICE = '%1' AND TIPO_MOVIMENTO = '%2'"_s.arg(article, kind);
    check(u"quantità registrata"_s, decimal(u"SELECT QUANTITA"_s + from), quantity);
    check(u"totale registrato"_s, decimal(u"SELECT VALORE_IMPORTO"_s + from), u"0,00"_s);
    close(form);
}

void Registers::listMovements()
{
    tell(u"I movimenti del periodo"_s);
    QWidget *list = open(u"actRicercaMovimentiMagazzino"_s, u"MMGRicercaMovimentiMagazzino"_s);
    check(u"movimenti di "_s + article, inList(list, article), u"2"_s);
    selectRow(results(list), article);
    picture(u"movimenti-elenco"_s);
    pictureAtSmallestSize(list, u"movimenti-elenco"_s);
    close(list);
}

void Registers::listDocuments(const QString &action, const QString &form, const QString &name, int documents)
{
    QWidget *list = open(action, form);
    check(u"documenti prima della ricerca"_s, QString::number(results(list)->model()->rowCount()), u"0"_s);
    trigger(list, u"actCerca"_s);
    check(u"documenti dell'anno"_s, QString::number(results(list)->model()->rowCount()), QString::number(documents));
    picture(name);
    pictureAtSmallestSize(list, name);
    close(list);
}

} // namespace

void tourRegisters(Visit &visit, host::Session &session)
{
    Registers part(visit, session);
    for (const Register &names : registers())
        part.keep(names);
    part.enterMovement(u"Carico"_s, u"8,00"_s, u"movimento-carico"_s);
    part.enterMovement(u"Scarico"_s, u"-3,00"_s, u"movimento-scarico"_s);
    part.listMovements();
    visit.tell(u"Gli elenchi dei documenti"_s);
    part.listDocuments(u"actRicercaDdTScarico"_s, u"MMGRicercaDdTScarico"_s, u"ddt-elenco"_s, 1);
    part.listDocuments(u"actRicercaBolleCarico"_s, u"MMGRicercaBolleCarico"_s, u"bolle-elenco"_s, 2);
}

} // namespace tour
