#pragma once
#include "host/Corvane3Impl.h"
#include "magazzino/ui/DocumentForm.h"

class QGroupBox;
namespace ui {
class ChoiceField;
class RecordLabels;
} // namespace ui

/// Delivery note: goods issued to a customer or a supplier. Each article row unloads stock at its average cost at the
/// note's date. It carries no monetary totals.
class TMMGInserimentoDdTScarico : public TMMGInserimentoDocumento
{
    Q_OBJECT

public:
    explicit TMMGInserimentoDdTScarico(QWidget *owner);

    TTipoAnagrafica TipoAnagrafica() const { return tipoAnagrafica_; }
    /// Whom the note is addressed to; sets the caption of the addressee's group.
    void SetTipoAnagrafica(TTipoAnagrafica tipo);

protected:
    void resetDetails() override;
    void loadDetails() override;
    void writeComputed(data::DataSet &record) const override;
    double movementValue(const DocumentRow &row) const override;
    QHash<int, double> storedCosts() const override;

private:
    QGroupBox *createAddressee();
    QGroupBox *createDestination();
    QGroupBox *createCarrier();
    QGroupBox *createTransport();
    void setAddressee(TTipoAnagrafica tipo, const TCliente &record);
    void selezionaVettore();

    QGroupBox *addresseeBox_ = nullptr;
    ui::RecordLabels *addressee_ = nullptr;
    ui::RecordLabels *carrier_ = nullptr;
    ui::ChoiceField *transportType_ = nullptr;
    ui::ChoiceField *transportReason_ = nullptr;
    TTipoAnagrafica tipoAnagrafica_ = TTipoAnagrafica::Cliente;
};
