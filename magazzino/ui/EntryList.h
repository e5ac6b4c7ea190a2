#pragma once
#include "platform/ui/OfferList.h"

#include <QHash>

/// One line of the list that drops down while a row is typed.
struct EntryOffer
{
    QString tipo; ///< of the row that it makes, see tipoRiga
    int id = -1;  ///< of article or service
    QString codice;
    QString descrizione;
    QString um;
    QString importo; ///< price or cost, as shown
};

/// The list that drops down from the code field of a row being typed.
class EntryList : public ui::OfferList
{
    Q_OBJECT

public:
    /// `amountHeader` stands over price or cost.
    EntryList(const QString &amountHeader, QWidget *parent);

    /// Shows `offers` at `field`, see ui::OfferList::offerLines().
    void offer(const QList<EntryOffer> &offers, const QWidget &field, bool unchosen);
    const QList<EntryOffer> &offers() const { return offers_; }
    /// The current one; null while hidden or when none is current.
    const EntryOffer *current() const;
    /// Fills the column of the pieces on hand, by code; an article without any has 0.
    void setOnHand(const QHash<QString, double> &onHand);

private:
    QList<EntryOffer> offers_;
};
