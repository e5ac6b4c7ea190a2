#pragma once
#include <QButtonGroup>
#include <QDialog>

/// Asks which level the stock on hand is compared with. The last choice is kept between uses.
class TMMGModStampaSottoscortaRiordino : public QDialog
{
    Q_OBJECT

public:
    explicit TMMGModStampaSottoscortaRiordino(QWidget *owner);

    /// 0 for the under-stock level, 1 for the reorder level, -1 for none.
    int tipoStampa() const;
    /// Puts the choice back to the under-stock level.
    void Ripristina();

private:
    QButtonGroup *type_;
};

/// The statement behind the report: code, description, both levels and the stock on hand (ESISTENZA, 0 without
/// movements) of the articles at or below the under-stock level (`type` 0) or the reorder level (1); of all for -1.
QString SottoscortaRiordinoSQL(int type);

/// Lists the articles whose stock on hand is at or below the level that `dialog` holds, or tells that there are none.
void StampaSottoscortaRiordino(const TMMGModStampaSottoscortaRiordino &dialog);
