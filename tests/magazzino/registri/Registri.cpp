#include "tests/magazzino/registri/Registri.h"

#include "magazzino/uMMGModMagazzino.h"

#include <QTableView>
#include <QTest>

using namespace Qt::StringLiterals;

namespace test {

namespace {

const QString firmControls =
    u"txtCodice txtRagioneSociale txtIndirizzo txtCitta txtCap txtProvincia txtNazione txtCodiceFiscale "
    "txtPartitaIVA txtTelefono1 txtTelefono2 txtTelefono3 txtFax txtEmail txtWeb"_s;
const QString firmColumns = u"CODICE, RAGIONESOCIALE, INDIRIZZO, CITTA, CAP, PROVINCIA, NAZIONE, CODICEFISCALE, "
                            "PARTITAIVA, TELEFONO1, TELEFONO2, TELEFONO3, FAX, EMAIL, WEB"_s;

} // namespace

const QList<Register> &registers()
{
    static const QString related = u"Impossibile eliminare, esistono dei dati correlati!"_s;
    static const QList<Register> all = {
        {.name = u"Fornitori"_s,
         .table = u"FORNITORI"_s,
         .key = u"IDFORNITORE"_s,
         .prefix = u"FOR"_s,
         .controls = firmControls,
         .columns = firmColumns,
         .duplicate = u"Codice già utilizzato!"_s,
         .entryRefusal = u"Non è possibile eliminare questo fornitore,\n\resistono dei dati correlati!"_s,
         .listRefusal = u"Non è possibile eliminare questo fornitore,\n\resistono dei dati correlati!"_s,
         .referrer = u"BOLLE_CARICO"_s,
         .reference = u"FOR_CODICE"_s},
        {.name = u"Vettori"_s,
         .table = u"VETTORI"_s,
         .key = u"IDVETTORE"_s,
         .prefix = u"VET"_s,
         .controls = firmControls,
         .columns = firmColumns,
         .duplicate = u"Codice già utilizzato da un altro vettore!"_s,
         .entryRefusal = related,
         .listRefusal = related,
         .referrer = u"FATT_ACC"_s,
         .reference = u"VETT_CODICE"_s},
        {.name = u"TipiTrasporto"_s,
         .table = u"TIPI_TRASPORTO"_s,
         .key = u"IDTIPO_TRASPORTO"_s,
         .controls = u"txtTipoTrasporto"_s,
         .columns = u"TIPO_TRASPORTO"_s,
         .duplicate = u"Esiste già un tipo di trasporto con questo nome!"_s,
         .entryRefusal = u"Non è possibile eliminare questa tipologia,\n\resistono dei dati correlati!"_s,
         .listRefusal = related,
         .referrer = u"DDT_SCARICO"_s,
         .reference = u"IDTIPO_TRASPORTO"_s},
        {.name = u"CausaliTrasporto"_s,
         .table = u"CAUSALI_TRASPORTO"_s,
         .key = u"IDCAUSALE_TRASPORTO"_s,
         .controls = u"txtCausaleTrasporto"_s,
         .columns = u"CAUSALE_TRASPORTO"_s,
         .entryRefusal = u"Non è possibile eliminare questa causale,\n\resistono dei dati correlati!"_s,
         .listRefusal = related,
         .referrer = u"BOLLE_CARICO"_s,
         .reference = u"IDCAUSALE_TRASPORTO"_s}};
    return all;
}

const Register &registerOf(const QString &table)
{
    for (const Register &names : registers()) {
        if (names.table == table)
            return names;
    }
    missing(table);
}

ui::EntryForm *openEntry(const Workplace &workplace, const QString &action)
{
    QWidget *form = workplace.module().openForm(action);
    settle();
    return qobject_cast<ui::EntryForm *>(form);
}

ui::SearchForm *openList(const Workplace &workplace, const QString &action)
{
    auto *form = qobject_cast<ui::SearchForm *>(workplace.module().openForm(action));
    if (!form)
        missing(action);
    checkModel(gridOf(form));
    settle();
    return form;
}

QTableView *gridOf(const ui::SearchForm *list)
{
    return control<QTableView>(list, u"GridRisultati"_s);
}

void retype(const QWidget *form, const QString &name, const QString &text)
{
    auto *input = control<QWidget>(form, name);
    QTest::keyClick(input, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(input, Qt::Key_Delete);
    type(input, text);
    settle();
}

QString flagsOf(const ui::EntryForm *form)
{
    QString text = form->NewRecord() ? u"new"_s : u"stored"_s;
    if (form->Modified())
        text += u" modified"_s;
    return text;
}

void refer(const Workplace &workplace, const Register &names, int id)
{
    const QString text =
        workplace
            .lines(u"SELECT %1 FROM %2 WHERE %3 = %4"_s.arg(names.columns.section(u',', 0, 0), names.table, names.key)
                       .arg(id))
            .value(0);
    insertInto(workplace.database(), names.referrer,
               {{names.reference, names.reference == names.key ? QVariant(id) : QVariant(text)}});
}

} // namespace test
