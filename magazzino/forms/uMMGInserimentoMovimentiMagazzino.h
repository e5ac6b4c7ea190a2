#pragma once
#include "magazzino/ui/MMGInserimento.h"
#include "platform/ui/ChoiceFields.h"
#include "platform/ui/EntryForm.h"
#include "platform/ui/Fields.h"

class QLabel;
namespace ui {
class CategoryField;
}

/// Entry form of one stock movement outside any document. Quantity and total are stored as shown: the form neither
/// changes the sign of an issue nor computes the total; this is intended. A line warns when sign and kind disagree.
class TMMGInserimentoMovimentiMagazzino : public TMMGInserimento<ui::EntryForm>
{
    Q_OBJECT

public:
    explicit TMMGInserimentoMovimentiMagazzino(QWidget *owner);

protected:
    bool deleteStored(int id) override;
    void showEvent(QShowEvent *event) override;
    void resetDetails() override { showSign(); }
    void loadDetails() override { showSign(); }

private:
    QWidget *createArticle(QWidget *page);
    QWidget *createAmounts(QWidget *page);
    QWidget *createReason(QWidget *page);
    void keepReferences();
    void selezionaArticolo();
    void showSign();

    ui::TextField *code_ = nullptr;
    ui::TextField *description_ = nullptr;
    ui::CategoryField *category_ = nullptr;
    ui::DecimalField *price_ = nullptr;
    ui::DecimalField *cost_ = nullptr;
    ui::DecimalField *value_ = nullptr;
    ui::DecimalField *quantity_ = nullptr;
    ui::RadioField *kind_ = nullptr;
    QLabel *hint_ = nullptr;
    ui::ChoiceField *reason_ = nullptr;
    QGroupBox *reasonBox_ = nullptr;
};
