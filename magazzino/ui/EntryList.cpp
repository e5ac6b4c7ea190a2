#include "magazzino/ui/EntryList.h"

#include "magazzino/documents/DocumentRow.h"
#include "platform/core/Format.h"
#include "platform/core/Translation.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int onHandColumn = 4;
constexpr int listWidth = 680;

} // namespace

EntryList::EntryList(const QString &amountHeader, QWidget *parent)
    : OfferList({{u"Codice"_s, 130},
                 {u"Descrizione"_s},
                 {u"U.M."_s, 50},
                 {amountHeader, 100, true},
                 {core::tr("Giacenza"), 90, true}},
                listWidth, parent)
{
    setObjectName(u"gridRigaElenco"_s);
}

void EntryList::offer(const QList<EntryOffer> &offers, const QWidget &field, bool unchosen)
{
    offers_ = offers;
    QList<QStringList> lines;
    for (const EntryOffer &offered : offers)
        lines.append({offered.codice, offered.descrizione, offered.um, offered.importo});
    offerLines(lines, field, unchosen);
}

const EntryOffer *EntryList::current() const
{
    return currentLine() >= 0 ? &offers_[currentLine()] : nullptr;
}

void EntryList::setOnHand(const QHash<QString, double> &onHand)
{
    for (int row = 0; row < offers_.size(); ++row) {
        if (offers_[row].tipo == tipoRiga::articolo)
            item(row, onHandColumn)->setText(core::formatNumber(onHand.value(offers_[row].codice)));
    }
}
