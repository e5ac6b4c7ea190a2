#pragma once
#include "platform/data/SqlText.h"

#include <QVariant>

#include <functional>

class QWidget;

namespace ui {

/// One input of a list's filter bar. A filter knows its first value, what it asks for and the condition that stands for
/// it in the list's query.
class Filter : public QObject
{
    Q_OBJECT

public:
    /// `label` is the caption before the input.
    Filter(QString label, QObject *parent)
        : QObject(parent)
        , label_(std::move(label))
    {
    }

    /// Caption before the input.
    const QString &label() const { return label_; }
    /// The input.
    virtual QWidget *widget() const = 0;
    /// Back to the first value; what it offers is read anew.
    virtual void reset() = 0;
    /// What is asked for; invalid when every row fits.
    virtual QVariant value() const = 0;
    /// The condition that fits a valid value().
    virtual QString condition(data::Values &values) const = 0;
    /// Its condition stands before the others, wherever its input stands.
    virtual bool leads() const { return false; }
    /// Its input takes the width that is left.
    virtual bool stretches() const { return false; }
    /// What was typed, for typeAgain(); empty where nothing is kept of it.
    virtual QString typed() const { return {}; }
    virtual void typeAgain(const QString &) {}

Q_SIGNALS:
    /// The user types.
    void edited();

private:
    QString label_;
};

/// Makes a filter of a list: what a list's declaration holds of it.
using ListFilter = std::function<Filter *(QWidget *parent)>;

} // namespace ui
