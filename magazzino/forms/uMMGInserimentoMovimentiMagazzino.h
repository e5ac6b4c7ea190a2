#pragma once
#include "magazzino/ui/MMGInserimento.h"
#include "platform/ui/CategoryField.h"
#include "platform/ui/ChoiceFields.h"
#include "platform/ui/EntryForm.h"
#include "platform/ui/Fields.h"

#include <QLabel>

/// Entry form of one stock movement outside any document. Quantity and total are stored as shown: the form neither
/// changes the sign of an issue nor computes the total; this is intended. A line warns when sign and kind disagree.
class TMMGInserimentoMovimentiMagazzino : public TMMGInserimento<ui::EntryForm>
{
    Q_OBJECT

public:
    explicit TMMGInserimentoMovimentiMagazzino(QWidget *owner);

    /// Key of the warehouse, which the form keeps and does not show; 0 for none.
    void SetIdMagazzino(int id);
    /// Key of the reason, -1 for none; reads its text and shows it.
    void SetIdCausaleMagazzino(int id);
    /// The document that made the movement: kind, key and row key, each null for a movement entered by hand.
    ///@{
    void SetRifDocTipo(const QVariant &tipo);
    void SetRifDocID(const QVariant &id);
    void SetRifDocIDRiga(const QVariant &id);
    ///@}
    /// Nothing, as intended: the total stays what was loaded, 0 for a new movement. A form that computed one here would
    /// change figures that nobody asked it to change.
    void AggiornaImporti() {}

protected:
    bool deleteStored(int id) override;
    std::optional<ui::DraftTitle> draftTitle() const override;
    void showEvent(QShowEvent *event) override;
    void resetDetails() override;
    void loadDetails() override;
    void prepareSave() override { AggiornaImporti(); }

private:
    QWidget *createArticle(QWidget *page);
    QWidget *createAmounts(QWidget *page);
    QWidget *createReason(QWidget *page);
    void selezionaArticolo();
    void selezionaCausaleMagazzino();
    void showSign();

    ui::DateField *date_ = nullptr;
    ui::TextField *code_ = nullptr;
    ui::TextField *description_ = nullptr;
    ui::CategoryField *category_ = nullptr;
    ui::DecimalField *price_ = nullptr;
    ui::DecimalField *cost_ = nullptr;
    ui::DecimalField *value_ = nullptr;
    ui::DecimalField *quantity_ = nullptr;
    ui::RadioField *kind_ = nullptr;
    QLabel *hint_ = nullptr;
    ui::KeptField *warehouse_ = nullptr;
    ui::KeptField *documentKind_ = nullptr;
    ui::KeptField *documentId_ = nullptr;
    ui::KeptField *documentRowId_ = nullptr;
    ui::ChoiceField *reason_ = nullptr;
    QGroupBox *reasonBox_ = nullptr;
};
