#include "tests/support/Documents.h"

#include "magazzino/uMMGModMagazzino.h"
#include "tests/support/Kit.h"

namespace test {

const DocumentNames &documentNames(const QString &kind)
{
    static const QMap<QString, DocumentNames> all = {
        {u"receipt"_s,
         {u"actInserimentoBolleCarico"_s, u"BOLLE_CARICO"_s, u"BOLLE_CARICO_DETT"_s, u"IDBOLLA_CARICO"_s,
          u"actSelezionaFornitore"_s, u"Acciaierie Brentane S.p.A."_s, u"Costo"_s}},
        {u"note"_s,
         {u"actInserimentoDdTScarico"_s, u"DDT_SCARICO"_s, u"DDT_SCARICO_DETT"_s, u"IDDDT_SCARICO"_s,
          u"actSelezionaCliente"_s, u"Arredo Bagno Alpi S.r.l."_s, u"Prezzo"_s}},
        {u"invoice"_s,
         {u"actInserimentoFattureAccompagnatorie"_s, u"FATT_ACC"_s, u"FATT_ACC_DETT"_s, u"IDFATT_ACC"_s,
          u"actSelezionaCliente"_s, u"Arredo Bagno Alpi S.r.l."_s, u"Prezzo"_s}}};
    const auto found = all.constFind(kind);
    if (found == all.constEnd())
        missing(kind);
    return *found;
}

static const QStringList storedTables = {u"BOLLE_CARICO_DETT"_s, u"BOLLE_CARICO"_s,  u"DDT_SCARICO_DETT"_s,
                                         u"DDT_SCARICO"_s,       u"FATT_ACC_DETT"_s, u"FATT_ACC"_s,
                                         u"MOVI_MAGA"_s};

void emptyDocuments(data::Connection &connection)
{
    for (const QString &table : storedTables)
        connection.execute(u"DELETE FROM "_s + table);
}

void eachKind(const QStringList &cases)
{
    QStringList names = {u"receipt"_s, u"note"_s, u"invoice"_s};
    for (const QString &kind : std::exchange(names, cases.isEmpty() ? names : QStringList())) {
        for (const QString &some : cases)
            names.append(kind + u", "_s + some);
    }
    test::cases(names);
}

const DocumentNames &kindOfRow()
{
    return documentNames(currentCase().section(u", "_s, 0, 0));
}

QString caseOfRow()
{
    return currentCase().section(u", "_s, 1);
}

Document::Document(Workplace &workplace, const DocumentNames &names)
    : workplace_(workplace)
    , names_(names)
    , form_(qobject_cast<TMMGInserimentoDocumento *>(workplace.module().openForm(names.action)))
{
    if (!form_)
        missing(names.action);
    checkModel(grid());
    settle();
}

void Document::showPage(int page) const
{
    control<QTabWidget>(u"pages"_s)->setCurrentIndex(page);
}

void Document::choose(const QString &commandOrButton, const ScriptedDialogs::Use &use) const
{
    workplace_.dialogs.expect(use);
    if (QAction *command = form_->command(commandOrButton))
        command->trigger();
    else
        control<QAbstractButton>(commandOrButton)->click();
    settle();
}

void Document::fillHeader() const
{
    choose(names_.counterpartAction, choosing(names_.counterpart));
    choose(u"cmdSelezionaTipoTrasporto"_s, choosing(u"Mittente"_s));
    if (auto *reason = form_->findChild<QComboBox *>(u"txtCausaleTrasporto"_s))
        reason->setCurrentText(u"Vendita"_s);
    else
        choose(u"cmdSelezionaCausaleTrasporto"_s, choosing(u"Vendita"_s));
    if (form_->findChild<QAbstractButton *>(u"cmdSelezionaTipoPagamento"_s))
        choose(u"cmdSelezionaTipoPagamento"_s, choosing(u"Rimessa diretta"_s));
}

void Document::fillAll() const
{
    fillHeader();
    typeOver(control<QLineEdit>(u"txtData"_s), u"28/2/25"_s);
    typeOver(control<QLineEdit>(u"txtPeso"_s), u"12.5"_s);
    addArticle(u"TRA-0018"_s, u"7.25"_s, u"3"_s);
    addArticle(u"SMA-0750"_s, u"4"_s, u"1,5"_s);
    type(control<QPlainTextEdit>(u"txtNote"_s), u"Fragile"_s);
    if (auto *moment = form_->findChild<QAbstractButton *>(u"chkInizioTrasporto"_s))
        moment->click();
    if (form_->command(u"actSelezionaFornitore"_s) && form_->objectName() == u"MMGInserimentoDdTScarico"_s)
        choose(u"actSelezionaFornitore"_s, choosing(u"Acciaierie Brentane S.p.A."_s));
    if (auto *recurring = form_->findChild<QAbstractButton *>(u"chkFattureCicliche"_s)) {
        recurring->click();
        typeOver(control<QLineEdit>(u"txtGeneraOgni"_s), u"2"_s);
    }
}

void Document::addArticle(const QString &code, const QString &price, const QString &quantity) const
{
    showPage(1);
    choose(u"actAggiungiArticolo"_s, choosingArticle(code));
    const int row = grid()->model()->rowCount() - 1;
    typeIntoCell(grid(), row, names_.priceHeader, price);
    typeIntoCell(grid(), row, u"Q.tà"_s, quantity);
}

void Document::enter(const QString &price, const QString &quantity) const
{
    fillHeader();
    addArticle(u"TRA-0018"_s, price, quantity);
}

void Document::saveAgain() const
{
    form_->DataChanged();
    save();
}

void Document::store(const QString &price, const QString &quantity) const
{
    enter(price, quantity);
    save();
}

QString Document::flags() const
{
    QString text = form_->NewRecord() ? u"new"_s : u"stored"_s;
    if (form_->Modified())
        text += u" modified"_s;
    if (form_->command(u"actSalva"_s)->isEnabled() != form_->Modified())
        text += u" (\"Salva\" differs)"_s;
    return text;
}

QStringList Document::stored() const
{
    QStringList all;
    for (const QString &table : storedTables)
        all += workplace_.lines(u"SELECT * FROM %1 ORDER BY 1"_s.arg(table));
    return all;
}

} // namespace test
