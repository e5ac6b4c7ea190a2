#pragma once
#include "magazzino/ui/MMGInserimentoScarico.h"

/// Delivery note: goods issued to a customer or a supplier. Each article row unloads stock at its average cost at the
/// note's date. It carries no monetary totals.
class TMMGInserimentoDdTScarico : public TMMGInserimentoScarico
{
    Q_OBJECT

public:
    explicit TMMGInserimentoDdTScarico(QWidget *owner);

    /// Whom the note is addressed to.
    TTipoAnagrafica TipoAnagrafica() const { return tipoAnagrafica_; }
    /// Whom the note is addressed to; sets the caption of the addressee's group.
    void SetTipoAnagrafica(TTipoAnagrafica tipo);

protected:
    void resetDetails() override;
    void loadDetails() override;
    void writeComputed(data::DataSet &record) const override;
    QVariant detailState() const override;
    void restoreDetails(const QVariant &state) override;
    std::optional<int> counterpartType() const override { return static_cast<int>(tipoAnagrafica_); }
    QString customerCode() const override
    {
        return tipoAnagrafica_ == TTipoAnagrafica::Cliente ? addresseeCode() : QString();
    }
    void customerChosen(const TCliente &customer) override;

private:
    QGroupBox *createAddressee();
    void setAddressee(TTipoAnagrafica tipo, const TCliente &chosen);

    QGroupBox *addresseeBox_ = nullptr;
    TTipoAnagrafica tipoAnagrafica_ = TTipoAnagrafica::Cliente;
};
