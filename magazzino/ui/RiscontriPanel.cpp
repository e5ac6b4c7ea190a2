#include "magazzino/ui/RiscontriPanel.h"

#include "platform/core/Translation.h"
#include "platform/ui/Controls.h"

#include <QHBoxLayout>
#include <QItemSelectionModel>

using namespace Qt::StringLiterals;

namespace {

constexpr int righeVisibili = 6;

const QList<ui::ListColumn> &colonne()
{
    static const QList<ui::ListColumn> tutte = {{core::tr("Effetto"), u"EFFETTO"_s, 130},
                                                {u"Codice"_s, u"CODICE"_s, 60},
                                                {core::tr("Riga"), u"RIGA"_s, 45},
                                                {core::tr("Che cosa"), u"TESTO"_s, 0, ui::ListColumn::Width::Rest}};
    return tutte;
}

QList<QVariantList> righeDi(const QList<fatturapa::Riscontro> &riscontri, const QList<fatturapa::Ricevuta> &ricevute)
{
    QList<QVariantList> righe;
    for (const fatturapa::Ricevuta &ricevuta : ricevute) {
        for (const fatturapa::ErroreRicevuta &errore : ricevuta.errori)
            righe.append({0, core::tr("Ricevuta ") + ricevuta.tipo, errore.codice, QVariant(), errore.descrizione});
    }
    for (qsizetype i = 0; i < riscontri.size(); ++i) {
        const fatturapa::Riscontro &uno = riscontri[i];
        righe.append({i + 1, uno.blocca ? core::tr("Impedisce il file") : core::tr("Avviso"), uno.codice,
                      uno.riga > 0 ? QVariant(uno.riga) : QVariant(), uno.testo});
    }
    return righe;
}

} // namespace

RiscontriPanel::RiscontriPanel(QWidget *parent)
    : QWidget(parent)
    , titolo_(ui::named(u"lblRilievi"_s, new ui::ElidedLabel(this)))
    , elenco_(ui::named(u"gridRilievi"_s, new ui::ResultGrid(u"POSTO"_s, colonne(), this)))
    , apri_(ui::named(u"cmdApriRilievo"_s, new QPushButton(ui::icon(ui::Icon::Open), core::tr("Apri"), this)))
{
    apri_->setToolTip(core::tr("Apre la maschera in cui si corregge, sul campo giusto."));
    apri_->setAutoDefault(false);
    auto *layout = ui::withoutMargins<QVBoxLayout>(this);
    auto *riga = new QHBoxLayout;
    riga->addWidget(titolo_, 1);
    riga->addWidget(apri_);
    layout->addLayout(riga);
    layout->addWidget(elenco_);
    setFixedHeight(apri_->sizeHint().height() + (righeVisibili + 1) * (fontMetrics().height() + 8) + 8);
    connect(apri_, &QPushButton::clicked, this, &RiscontriPanel::apri);
    connect(elenco_, &ui::ResultGrid::chosen, this, &RiscontriPanel::apri);
    connect(elenco_->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this] { apri_->setEnabled(elenco_->selectedKey() > 0); });
    mostra({}, {}, {});
}

void RiscontriPanel::mostra(const QString &titolo, const QList<fatturapa::Riscontro> &riscontri,
                            const QList<fatturapa::Ricevuta> &ricevute)
{
    riscontri_ = riscontri;
    titolo_->setText(titolo);
    QList<data::Column> campi = {{.name = u"POSTO"_s}};
    for (const ui::ListColumn &colonna : colonne())
        campi.append({.name = colonna.field, .isText = true});
    elenco_->setRows({campi, righeDi(riscontri, ricevute)});
    if (elenco_->rows().rowCount() > 0)
        elenco_->selectRow(0);
    apri_->setEnabled(elenco_->selectedKey() > 0);
}

void RiscontriPanel::apri()
{
    const int posto = elenco_->selectedKey();
    if (posto > 0 && posto <= riscontri_.size())
        Q_EMIT aperto(riscontri_[posto - 1]);
}
