#include "magazzino/forms/uMMGRicercaBolleCarico.h"

using namespace Qt::StringLiterals;

namespace {

ui::SearchSpec spec()
{
    using Column = ui::ListColumn;
    ui::SearchSpec own = documentList(bollaCarico());
    own.list.columns.last().widthKind = Column::Width::Rest;
    own.list.columns.append(
        {u"Totale"_s, u"TOTALE_DOCUMENTO"_s, 110, Column::Width::Pixels, Column::Display::Currency});
    return own;
}

} // namespace

TMMGRicercaBolleCarico::TMMGRicercaBolleCarico(QWidget *owner)
    : TMMGRicercaDocumenti(bollaCarico(), spec(), owner)
{
    setOnClose(ui::OnClose::Free); // unlike the other lists
}
