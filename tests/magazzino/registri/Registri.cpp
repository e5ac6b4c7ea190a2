#include "tests/magazzino/registri/Registri.h"

#include "magazzino/uMMGModMagazzino.h"

#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTableView>
#include <QTest>

using namespace Qt::StringLiterals;

namespace test {

namespace {

QList<RegisterField> firmFields(int address, int vatNumber)
{
    return {{.control = u"txtCodice"_s, .column = u"CODICE"_s, .limit = 20},
            {.control = u"txtRagioneSociale"_s, .column = u"RAGIONESOCIALE"_s, .limit = 100},
            {.control = u"txtIndirizzo"_s, .column = u"INDIRIZZO"_s, .limit = address, .stored = 50},
            {.control = u"txtCitta"_s, .column = u"CITTA"_s, .limit = 30},
            {.control = u"txtCap"_s, .column = u"CAP"_s, .limit = 5, .upper = true},
            {.control = u"txtProvincia"_s, .column = u"PROVINCIA"_s, .limit = 2, .upper = true},
            {.control = u"txtNazione"_s, .column = u"NAZIONE"_s, .limit = 30},
            {.control = u"txtCodiceFiscale"_s, .column = u"CODICEFISCALE"_s, .limit = 16, .upper = true},
            {.control = u"txtPartitaIVA"_s, .column = u"PARTITAIVA"_s, .limit = vatNumber, .upper = true},
            {.control = u"txtTelefono1"_s, .column = u"TELEFONO1"_s, .limit = 20},
            {.control = u"txtTelefono2"_s, .column = u"TELEFONO2"_s, .limit = 20},
            {.control = u"txtTelefono3"_s, .column = u"TELEFONO3"_s, .limit = 20},
            {.control = u"txtFax"_s, .column = u"FAX"_s, .limit = 20},
            {.control = u"txtEmail"_s, .column = u"EMAIL"_s, .limit = 100},
            {.control = u"txtWeb"_s, .column = u"WEB"_s, .limit = 100}};
}

} // namespace

const QList<Register> &registers()
{
    static const QString related = u"Impossibile eliminare, esistono dei dati correlati!"_s;
    static const QList<Register> all = {
        {.entryAction = u"actInserimentoFornitori"_s,
         .listAction = u"actRicercaFornitori"_s,
         .table = u"FORNITORI"_s,
         .key = u"IDFORNITORE"_s,
         .prefix = u"FOR"_s,
         .fields = firmFields(50, 13),
         .duplicate = u"Codice già utilizzato!"_s,
         .entryRefusal = u"Non è possibile eliminare questo fornitore,\n\resistono dei dati correlati!"_s,
         .listRefusal = u"Non è possibile eliminare questo fornitore,\n\resistono dei dati correlati!"_s,
         .referrer = u"BOLLE_CARICO"_s,
         .reference = u"FOR_CODICE"_s},
        {.entryAction = u"actInserimentoVettori"_s,
         .listAction = u"actRicercaVettori"_s,
         .table = u"VETTORI"_s,
         .key = u"IDVETTORE"_s,
         .prefix = u"VET"_s,
         .fields = firmFields(100, 11),
         .duplicate = u"Codice già utilizzato da un altro vettore!"_s,
         .entryRefusal = related,
         .listRefusal = related,
         .referrer = u"FATT_ACC"_s,
         .reference = u"VETT_CODICE"_s},
        {.entryAction = u"actInserimentoTipiTrasporto"_s,
         .listAction = u"actRicercaTipiTrasporto"_s,
         .table = u"TIPI_TRASPORTO"_s,
         .key = u"IDTIPO_TRASPORTO"_s,
         .fields = {{.control = u"txtTipoTrasporto"_s, .column = u"TIPO_TRASPORTO"_s, .limit = 50}},
         .duplicate = u"Esiste già un tipo di trasporto con questo nome!"_s,
         .entryRefusal = u"Non è possibile eliminare questa tipologia,\n\resistono dei dati correlati!"_s,
         .listRefusal = related,
         .referrer = u"DDT_SCARICO"_s,
         .reference = u"IDTIPO_TRASPORTO"_s,
         .referenceIsKey = true},
        {.entryAction = u"actInserimentoCausaliTrasporto"_s,
         .listAction = u"actRicercaCausaliTrasporto"_s,
         .table = u"CAUSALI_TRASPORTO"_s,
         .key = u"IDCAUSALE_TRASPORTO"_s,
         .fields = {{.control = u"txtCausaleTrasporto"_s, .column = u"CAUSALE_TRASPORTO"_s, .limit = 30, .stored = 20}},
         .entryRefusal = u"Non è possibile eliminare questa causale,\n\resistono dei dati correlati!"_s,
         .listRefusal = related,
         .referrer = u"BOLLE_CARICO"_s,
         .reference = u"IDCAUSALE_TRASPORTO"_s,
         .referenceIsKey = true}};
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
    auto *form = qobject_cast<ui::EntryForm *>(workplace.module().openForm(action));
    settle();
    return form ? form : (missing(action), nullptr);
}

ui::SearchForm *openList(const Workplace &workplace, const QString &action)
{
    auto *form = qobject_cast<ui::SearchForm *>(workplace.module().openForm(action));
    settle();
    return form ? form : (missing(action), nullptr);
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
    if (form->command(u"actSalva"_s)->isEnabled() != form->Modified())
        text += u" (\"Salva\" differs)"_s;
    return text;
}

void refer(const Workplace &workplace, const Register &names, int id)
{
    const QString text = workplace
                             .lines(u"SELECT %1 FROM %2 WHERE %3 = %4"_s.arg(names.fields.first().column, names.table,
                                                                             names.key, QString::number(id)))
                             .value(0);
    insertInto(workplace.database(), names.referrer,
               {{names.reference, names.referenceIsKey ? QVariant(id) : QVariant(text)}});
}

} // namespace test
