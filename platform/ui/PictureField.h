#pragma once
#include "platform/ui/Field.h"

#include <QLabel>
#include <QPushButton>

namespace ui {

struct PictureSpec
{
    QString name; ///< of the label that shows the picture; its buttons are named after it
    QString label;
    QString column;
};

/// A picture (PNG or SVG) that is chosen as a file and stored as it is; NULL without one.
class PictureField : public ColumnField
{
public:
    /// The field that `spec` describes, without a picture.
    PictureField(const PictureSpec &spec, QWidget *parent);

    QWidget *widget() const override { return box_; }
    void clear() override { show({}); }

protected:
    void show(const QVariant &stored) override;
    QVariant toStore() const override;

private:
    QPushButton *addButton(const QString &name, const QString &caption, const std::function<void()> &run);
    void choose();

    QWidget *box_;
    QLabel *picture_;
    QPushButton *remove_ = nullptr;
    QByteArray content_;
};

} // namespace ui
