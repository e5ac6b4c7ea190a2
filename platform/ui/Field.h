#pragma once
#include "platform/data/DataSet.h"

#include <QObject>
#include <QString>
#include <QVariant>

class QWidget;

namespace ui {

/// One input of an entry form: a control (or a few that belong together) and the columns it stands for. A field knows
/// how to clear itself, to load from a record, to write into one and to tell that the user changed it.
class Field : public QObject
{
    Q_OBJECT

public:
    /// A field with this caption.
    Field(QString label, QObject *parent)
        : QObject(parent)
        , label_(std::move(label))
    {
    }

    /// Caption beside the control; empty where the control carries its own.
    const QString &label() const { return label_; }
    /// Is it marked as required by a save? The save's own check refuses without it.
    bool isRequired() const { return required_; }
    /// Marks it, before it is laid out.
    void setRequired() { required_ = true; }
    /// What is laid out: the control, or a box around several; null for a field without one.
    virtual QWidget *widget() const = 0;
    /// Shows what a new record begins with.
    virtual void clear() = 0;
    /// Shows the values of the current row. Throws core::Error for a column that it does not have.
    virtual void load(const data::DataSet &record) = 0;
    /// Sets the columns of the row being changed. Throws core::Error for a column that it does not have.
    virtual void write(data::DataSet &record) const = 0;
    /// After the commit of a save: what it wrote is stored.
    virtual void written() {}
    /// What is typed, readable or not, and what is kept of the loaded record: for restore(), of the same field in any
    /// form of its kind, and for nothing else.
    virtual QVariant state() const = 0;
    /// Shows what state() was.
    virtual void restore(const QVariant &state) = 0;

Q_SIGNALS:
    /// The user, or the program, changed what is shown.
    void edited();

private:
    QString label_;
    bool required_ = false;
};

/// A field that stands for one column.
class ColumnField : public Field
{
public:
    /// A field with this caption for this column.
    ColumnField(const QString &label, QString column, QObject *parent)
        : Field(label, parent)
        , column_(std::move(column))
    {
    }

    void load(const data::DataSet &record) override;
    void write(data::DataSet &record) const override;
    QVariant state() const override { return toStore(); }
    void restore(const QVariant &state) override { show(state); }

protected:
    /// Shows what the column holds.
    virtual void show(const QVariant &stored) = 0;
    /// What the column shall hold.
    virtual QVariant toStore() const = 0;

private:
    QString column_;
};

} // namespace ui
