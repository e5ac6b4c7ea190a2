#pragma once
#include "magazzino/ui/MMGInserimentoDocumento.h"
#include "platform/ui/ChoiceFields.h"

/// Goods receipt note: header, rows with unit costs, totals. Each article row loads stock at its cost.
class TMMGInserimentoBolleCarico : public TMMGInserimentoDocumento
{
    Q_OBJECT

public:
    explicit TMMGInserimentoBolleCarico(QWidget *owner);

protected:
    QList<std::pair<ui::Field *, QString>> asLastTime() const override;
    QString counterpartName() const override;

private:
    QGroupBox *createSupplier();
    QGroupBox *createTransportType();
    QGroupBox *createTransport();
    void selezionaFornitore();
    void setSupplier(int id);
    void selezionaTipoTrasporto();

    ui::PickInput *supplierInput_ = nullptr;
    ui::RecordLabels *supplier_ = nullptr;
    ui::ChoiceField *transportType_ = nullptr;
    ui::DropDownField *transportReason_ = nullptr;
};
