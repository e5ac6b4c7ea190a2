#pragma once
#include "platform/ui/DateEdit.h"
#include "platform/ui/Field.h"
#include "platform/ui/NumberEdits.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QDate>
#include <QLabel>

/// Date of the next recurring invoice: `start` plus `every` units ("Giorno", "Settimana", "Mese", "Anno"; months and
/// years clipped to the month's last day), moved to the 15th of its month when `onThe15th`. An invalid date when that
/// is past `end`.
QDate nextRecurringInvoice(QDate start, int every, const QString &unit, bool onThe15th, QDate end);

/// The recurring-invoice reminder of an invoice: its controls are in use, and its columns filled, only while its check
/// box is checked.
class FatturaCiclicaField : public ui::Field
{
public:
    explicit FatturaCiclicaField(QWidget *page);

    /// Takes the check back; the other controls are out of use then.
    void disable();

    QWidget *widget() const override { return box_; }
    void clear() override;
    void load(const data::DataSet &record) override;
    void write(data::DataSet &record) const override;
    QVariant state() const override;
    void restore(const QVariant &state) override;

private:
    void createControls();
    QDate nextDate() const;
    void AggiornaStatoControlliFattureCicliche();

    QWidget *box_;
    QWidget *controls_;
    QCheckBox *enabled_;
    ui::IntegerEdit *every_;
    QComboBox *unit_;
    QButtonGroup *day_; // 0: the 15th of the month, 1: the exact day
    ui::DateEdit *start_;
    ui::DateEdit *end_;
    QLabel *next_;
};
