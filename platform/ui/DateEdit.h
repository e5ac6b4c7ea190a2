#pragma once
#include "platform/ui/TypedEdit.h"

#include <QDate>

namespace ui {

/// A dd/MM/yyyy date from 1900 to 3000, typed as core::readDate takes it or picked from a calendar (its button, F4,
/// Alt+Down). The arrow keys go by days, the Page keys by months.
class DateEdit : public TypedEdit
{
    Q_OBJECT

public:
    explicit DateEdit(QWidget *parent = nullptr);

    /// The date as it stands there; invalid while it cannot be read, or when none was loaded.
    QDate date() const { return current().toDate(); }
    /// Shows `date` even when it could not be typed here; an invalid one shows nothing.
    void setDate(QDate date) { load(date.isValid() ? QVariant(date) : QVariant()); }

protected:
    Reading read(const QString &text) const override;
    QString written(const QVariant &value, bool editing) const override;
    QVariant stepped(const QVariant &value, int steps, bool large) const override;
    QString widest() const override { return QStringLiteral("88/88/8888"); }
    void keyPressEvent(QKeyEvent *event) override;

private:
    void openCalendar();
};

/// A time of day, HH:mm, typed as core::readTime takes it. The arrow keys go by minutes, the Page keys by hours.
class TimeEdit : public TypedEdit
{
    Q_OBJECT

public:
    explicit TimeEdit(QWidget *parent = nullptr);

    /// The time as it stands there, with the seconds that were loaded; invalid while it cannot be read.
    QTime time() const { return current().toTime(); }
    /// Shows `time`; an invalid one shows nothing.
    void setTime(QTime time) { load(time.isValid() ? QVariant(time) : QVariant()); }

protected:
    Reading read(const QString &text) const override;
    QString written(const QVariant &value, bool editing) const override;
    QVariant stepped(const QVariant &value, int steps, bool large) const override;
    QString widest() const override { return QStringLiteral("88:88"); }
};

} // namespace ui
