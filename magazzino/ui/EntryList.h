#pragma once
#include <QHash>
#include <QTableWidget>

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

/// The list that drops down from the code field of a row being typed. It never takes the focus: the field keeps it and
/// hands over the keys that lead through the list.
class EntryList : public QTableWidget
{
    Q_OBJECT

public:
    /// `amountHeader` stands over price or cost.
    EntryList(const QString &amountHeader, QWidget *parent);

    /// Shows `offers` at `field`, below it or, where there is no room, above; hides when there are none. The first one
    /// is the current one, unless `unchosen`.
    void offer(const QList<EntryOffer> &offers, const QWidget &field, bool unchosen);
    const QList<EntryOffer> &offers() const { return offers_; }
    /// The current one; null while hidden or when none is current.
    const EntryOffer *current() const;
    /// Fills the column of the pieces on hand, by code; an article without any has 0.
    void setOnHand(const QHash<QString, double> &onHand);
    /// Takes a key that leads through the list; false for any other, and while hidden.
    bool handle(int key);

Q_SIGNALS:
    /// A line was clicked; it is the current one.
    void picked();

private:
    void showAt(const QWidget &field);

    QList<EntryOffer> offers_;
};
