#pragma once
#include "magazzino/ui/MMGInserimento.h"
#include "platform/ui/EntryForm.h"
#include "platform/ui/Fields.h"

/// In what the registers of suppliers and carriers differ.
struct AnagraficaSpec
{
    ui::EntryFormSpec form;
    QString dataSet;    ///< of the module
    QString codePrefix; ///< of a proposed code
    int addressLength = 50;
    int vatNumberLength = 13;
};

/// Entry form of a register of firms: code, name, address, tax data, contacts, notes.
class TMMGInserimentoAnagrafica : public TMMGInserimento<ui::EntryForm>
{
    Q_OBJECT

public:
    TMMGInserimentoAnagrafica(const AnagraficaSpec &spec, QWidget *owner);

protected:
    ui::TextField *codice() const { return code_; }
    ui::TextField *ragioneSociale() const { return name_; }
    /// The group behind the tax data, for what one register has more.
    QGridLayout *taxGrid() const { return taxGrid_; }
    QWidget *generalPage() const { return generalPage_; }
    /// Adds contacts and notes behind what the concrete form added, and starts.
    void finish();

    /// Proposes the code that the next key suggests.
    void resetDetails() override;

private:
    ui::TextField *text(const QString &name, const QString &label, const QString &column, int length, bool upper,
                        QWidget *parent);

    AnagraficaSpec spec_;
    QWidget *generalPage_ = nullptr;
    QGridLayout *taxGrid_ = nullptr;
    ui::TextField *code_ = nullptr;
    ui::TextField *name_ = nullptr;
};
