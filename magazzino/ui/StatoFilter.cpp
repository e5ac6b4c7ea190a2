#include "magazzino/ui/StatoFilter.h"

#include "magazzino/fatturapa/Registro.h"
#include "platform/core/Translation.h"
#include "platform/data/SqlText.h"
#include "platform/ui/Controls.h"

using namespace Qt::StringLiterals;

namespace {

class StatoFilter : public ui::Filter
{
public:
    StatoFilter(QString colonna, QWidget *parent)
        : Filter(core::tr("Stato"), parent)
        , colonna_(std::move(colonna))
        , elenco_(new ui::ComboBox(parent))
    {
        namespace stato = fatturapa::stato;
        elenco_->setObjectName(u"txtStato"_s);
        // Invoices with findings are still to be done: what was found is not stored.
        elenco_->addItems({core::tr("tutti"), stato::daFare, stato::scritta, stato::inviata, stato::nonConsegnata,
                           stato::consegnata, stato::scartata});
    }

    QWidget *widget() const override { return elenco_; }
    void reset() override { elenco_->setCurrentIndex(0); }
    QVariant value() const override { return elenco_->currentIndex() > 0 ? elenco_->currentText() : QVariant(); }
    QString condition(data::Values &values) const override { return colonna_ + u" = "_s + values.add(value()); }

private:
    QString colonna_;
    ui::ComboBox *elenco_;
};

} // namespace

ui::ListFilter statoFilter(const QString &colonna)
{
    return [colonna](QWidget *parent) { return new StatoFilter(colonna, parent); };
}
