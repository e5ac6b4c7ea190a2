#pragma once
#include "magazzino/ui/MMGInserimentoScarico.h"
#include "platform/ui/Fields.h"

class FatturaCiclicaField;

/// Accompanying invoice: a delivery note with prices, discounts, VAT totals, payment and a reminder for recurring
/// invoices.
class TMMGInserimentoFattureAccompagnatorie : public TMMGInserimentoScarico
{
    Q_OBJECT

public:
    explicit TMMGInserimentoFattureAccompagnatorie(QWidget *owner);

    /// Turns the invoice shown into a new, unsaved copy with the next number and today's date; its notes name the old
    /// one. Offered to callers outside the module.
    Q_INVOKABLE void ImpostaFatturaCiclica();
    void RidimensionaForm() override;

protected:
    void customerChosen(const TCliente &customer) override;
    void leaveOutOfCopy() override;
    bool isExempt() const override;
    void addFurtherPages() override;
    void clearDetails() override;
    void loadDetails() override;
    QVariant detailState() const override;
    void restoreDetails(const QVariant &state) override;
    void writeDetails() override;
    void recordSaved() override;
    QList<std::pair<ui::Field *, QString>> asLastTime() const override;
    void lastTimeTaken() override { followPayment(); }

private:
    QGroupBox *createPayment();
    void addOtherMenu();
    void followPayment();
    void followDate();
    void visualizzaContattiCliente();
    void inserisciNotaDocumento();
    void fatturaElettronica();
    void mostraFileElettronico(const QString &testo);

    ui::ChoiceField *payment_ = nullptr;
    ui::FlagField *paid_ = nullptr;
    ui::FlagField *notified_ = nullptr;
    ui::DateField *due_ = nullptr;
    QDate proposedDue_; // what the payment type said; invalid for nothing
    ui::FlagField *exempt_ = nullptr;
    FatturaCiclicaField *recurrence_ = nullptr;
    QLabel *file_ = nullptr; ///< what became of the invoice's file; hidden while there is none
    QString savedFile_;      ///< the same, as the save that is going on has found it
};
