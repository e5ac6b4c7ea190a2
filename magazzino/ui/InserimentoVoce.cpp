#include "magazzino/ui/InserimentoVoce.h"

#include "magazzino/uMMGModMagazzino.h"

#include <QVBoxLayout>

using namespace Qt::StringLiterals;

TMMGInserimentoVoce::TMMGInserimentoVoce(const ui::EntryFormSpec &spec, const QString &dataSet,
                                         const ui::TextSpec &field, QWidget *owner)
    : TMMGInserimento(spec, &Modulo().dataSet(dataSet), owner)
{
    setOnClose(ui::OnClose::Hide);
    setOpeningSize({560, 180});
    setMinimumSize(460, 0);
    mainLayout()->addWidget(pages(), 1);
    QWidget *page = addPage(u" Generale "_s);
    text_ = declare(new ui::TextField(field, page));
    auto *grid = new QGridLayout(page);
    place(grid, text_, 0, 0);
    grid->setRowStretch(1, 1);
    setFocusProxy(text_->widget());
}
