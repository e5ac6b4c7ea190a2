#include "magazzino/reports/uMMGModStampaSottoscortaRiordino.h"

#include "host/Corvane3Impl.h"
#include "magazzino/reports/MMGStampe.h"
#include "magazzino/reports/uMMGdmStampe.h"
#include "magazzino/uMMGModMagazzino.h"
#include "platform/core/Messages.h"
#include "platform/data/DataSet.h"
#include "platform/ui/ProgressDialog.h"

#include <QDialogButtonBox>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

const QStringList choices = {u"Articoli in sottoscorta"_s, u"Articoli in riordino"_s};

} // namespace

// The movements are read once and grouped by code, with every article as one more movement of nothing, so that those
// that never moved count as 0. Asking for each article's sum would read all movements for every article.
//
// Articles come as they are stored, which is the order that a plain reading of them has: the record number inside their
// database key begins with its lowest byte.
QString SottoscortaRiordinoSQL(int type)
{
    QString sql = u"SELECT ANA_MAGA.CODICE, ANA_MAGA.DESCRIZIONE, ANA_MAGA.SOTTOSCORTA, ANA_MAGA.RIORDINO, M.ESISTENZA "
                  "FROM (SELECT CODICE, SUM(QUANTITA) AS ESISTENZA FROM (SELECT CODICE, QUANTITA FROM MOVI_MAGA UNION "
                  "ALL SELECT CODICE, CAST(0 AS DECIMAL(13, 2)) FROM ANA_MAGA) GROUP BY CODICE) M "
                  "JOIN ANA_MAGA ON ANA_MAGA.CODICE = M.CODICE "_s;
    if (type >= 0)
        sql += u"WHERE M.ESISTENZA <= "_s + (type == 0 ? u"SOTTOSCORTA "_s : u"RIORDINO "_s);
    return sql + u"ORDER BY REVERSE(ANA_MAGA.RDB$DB_KEY)"_s;
}

TMMGModStampaSottoscortaRiordino::TMMGModStampaSottoscortaRiordino(QWidget *owner)
    : QDialog(owner)
    , type_(new QButtonGroup(this))
{
    setObjectName(u"MMGModStampaSottoscortaRiordino"_s);
    setWindowTitle(u"Stampa articoli sottoscorta / riordino"_s);
    auto *layout = new QVBoxLayout(this);
    // The spelling "ugale" is part of the text.
    auto *text = new QLabel(u"Stampa l'elenco degli articoli che hanno un'esistenza inferiore o ugale al livello di "
                            "sottoscorta o di riordino."_s,
                            this);
    text->setWordWrap(true);
    layout->addWidget(text);

    auto *box = ui::named(u"grpTipoStampa"_s, new QGroupBox(u" Tipo di stampa "_s, this));
    auto *items = new QVBoxLayout(box);
    for (const QString &choice : choices) {
        auto *button = new QRadioButton(choice, box);
        type_->addButton(button, static_cast<int>(type_->buttons().size()));
        items->addWidget(button);
    }
    layout->addWidget(box);

    auto *buttons = new QDialogButtonBox(this);
    QPushButton *print = ui::named(u"cmdStampa"_s, buttons->addButton(u"Stampa"_s, QDialogButtonBox::AcceptRole));
    print->setDefault(true);
    QPushButton *cancel = ui::named(u"cmdAnnulla"_s, buttons->addButton(u"Annulla"_s, QDialogButtonBox::RejectRole));
    cancel->setAutoDefault(false);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(buttons);
    Ripristina();
}

int TMMGModStampaSottoscortaRiordino::tipoStampa() const
{
    return type_->checkedId();
}

void TMMGModStampaSottoscortaRiordino::Ripristina()
{
    type_->button(0)->setChecked(true);
}

void StampaSottoscortaRiordino(const TMMGModStampaSottoscortaRiordino &dialog)
{
    TMMGModMagazzino &module = Modulo();
    data::DataSet &rows = module.dmStampe->query(u"adsSottoscortaRiordino"_s);
    rows.setCommandText(SottoscortaRiordinoSQL(dialog.tipoStampa()));
    ui::openInterruptibly(GetMainForm(), choices.value(dialog.tipoStampa()), rows);
    if (rows.isEmpty()) {
        core::inform(&module, u"Nessun dato da stampare."_s);
        return;
    }
    StampaElenco(u"SottoscortaRiordino"_s, choices.value(dialog.tipoStampa()));
}
