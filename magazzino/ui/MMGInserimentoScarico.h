#pragma once
#include "host/Corvane3Impl.h"
#include "magazzino/ui/MMGInserimentoDocumento.h"
#include "platform/ui/ChoiceFields.h"

#include <QGroupBox>

/// What delivery notes and accompanying invoices have in common: an addressee, a destination, a carrier and the data of
/// the transport; each article row unloads stock at its average cost at the document's date.
class TMMGInserimentoScarico : public TMMGInserimentoDocumento
{
    Q_OBJECT

public:
    TMMGInserimentoScarico(const DocumentKind &kind, QWidget *owner);

    /// The unit of the weight by key and text; a key of 0 or less for none.
    void SetPesoUM(int id, const QString &testo);

protected:
    /// Puts the groups on the header's page: `addressee` first, what `createBottom` makes (if given) below the
    /// others. It makes its controls last, so that Tab comes to them last.
    void layOutGeneralPage(QWidget *addressee, const std::function<QWidget *()> &createBottom = {});
    /// A document without an addressee is not saved.
    void refuseWithoutCustomer();
    /// One whose addressee has neither tax code nor VAT number is saved when the user says so.
    void askWithoutTaxData();

    /// Chooses the customer, "actSelezionaCliente".
    QAction *customerCommand();
    /// The user chose `customer`, which is stored.
    virtual void customerChosen(const TCliente &customer) = 0;
    /// A button of the addressee's group.
    struct AddresseeButton
    {
        QAction *action;
        QString name;
        ui::PickInput *input = nullptr; ///< beside it
    };
    /// The input beside the customer's button.
    ui::PickInput *createCustomerInput(QWidget *box);
    /// The addressee's group, empty but for its caption.
    QGroupBox *createAddresseeBox();
    /// Puts `buttons`, with their inputs, and the addressee's data into it.
    void fillAddresseeBox(QGroupBox *box, const QList<AddresseeButton> &buttons);
    /// Shows the data of `addressee` as the document's own.
    void showAddressee(const TCliente &addressee);
    /// Code of the addressee shown, empty for none.
    QString addresseeCode() const;

    QList<std::pair<ui::Field *, QString>> asLastTime() const override;
    QString customerCode() const override { return addresseeCode(); }
    QString counterpartName() const override;
    void leaveOutOfCopy() override;
    ui::ChoiceField *transportType() const { return transportType_; }
    ui::ChoiceField *transportReason() const { return transportReason_; }

private:
    QGroupBox *createDestination();
    QGroupBox *createCarrier();
    QGroupBox *createTransport();
    void selezionaVettore();
    void setCarrier(int id);
    void selezionaPesoUM();

    ui::PickInput *customerInput_ = nullptr;
    ui::RecordLabels *addressee_ = nullptr;
    ui::RecordLabels *carrier_ = nullptr;
    ui::ChoiceField *transportType_ = nullptr;
    ui::ChoiceField *transportReason_ = nullptr;
    ui::ChoiceField *weightUnit_ = nullptr;
    ui::MomentField *start_ = nullptr;
};
