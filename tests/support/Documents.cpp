#include "tests/support/Documents.h"

#include "magazzino/uMMGModMagazzino.h"
#include "platform/core/Error.h"

#include <QAbstractButton>
#include <QAction>
#include <QComboBox>
#include <QTabWidget>

using namespace Qt::StringLiterals;

namespace test {

const DocumentNames &receipt()
{
    static const DocumentNames names = {u"actInserimentoBolleCarico"_s,
                                        u"BOLLE_CARICO"_s,
                                        u"BOLLE_CARICO_DETT"_s,
                                        u"IDBOLLA_CARICO"_s,
                                        u"actSelezionaFornitore"_s,
                                        u"Acciaierie Brentane S.p.A."_s,
                                        u"Costo"_s};
    return names;
}

const DocumentNames &deliveryNote()
{
    static const DocumentNames names = {u"actInserimentoDdTScarico"_s,
                                        u"DDT_SCARICO"_s,
                                        u"DDT_SCARICO_DETT"_s,
                                        u"IDDDT_SCARICO"_s,
                                        u"actSelezionaCliente"_s,
                                        u"Arredo Bagno Alpi S.r.l."_s,
                                        u"Prezzo"_s};
    return names;
}

const DocumentNames &accompanyingInvoice()
{
    static const DocumentNames names = {u"actInserimentoFattureAccompagnatorie"_s,
                                        u"FATT_ACC"_s,
                                        u"FATT_ACC_DETT"_s,
                                        u"IDFATT_ACC"_s,
                                        u"actSelezionaCliente"_s,
                                        u"Arredo Bagno Alpi S.r.l."_s,
                                        u"Prezzo"_s};
    return names;
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

void Document::addArticle(const QString &code, const QString &price, const QString &quantity) const
{
    showPage(1);
    choose(u"actAggiungiArticolo"_s, choosingArticle(code));
    const int row = grid()->model()->rowCount() - 1;
    typeIntoCell(grid(), row, names_.priceHeader, price);
    typeIntoCell(grid(), row, u"Q.tà"_s, quantity);
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
    for (const char *table : {"BOLLE_CARICO", "BOLLE_CARICO_DETT", "DDT_SCARICO", "DDT_SCARICO_DETT", "FATT_ACC",
                              "FATT_ACC_DETT", "MOVI_MAGA"})
        all += workplace_.lines(u"SELECT * FROM %1 ORDER BY 1"_s.arg(QLatin1StringView(table)));
    return all;
}

} // namespace test
