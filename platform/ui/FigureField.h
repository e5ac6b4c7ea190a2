#pragma once
#include "platform/ui/Fields.h"
#include "platform/ui/FigureSource.h"

namespace ui {

struct FigureSpec
{
    QString name; ///< control name
    QString label;
    QString column; ///< whose text the figure goes by
    FigureSource *source = nullptr;
};

/// What somebody else knows of the record, to be read only: of the record as it is stored, empty for a new one. Nothing
/// of it is written.
class FigureField : public Field
{
public:
    /// The field that `spec` describes, empty.
    FigureField(FigureSpec spec, QWidget *parent);

    QWidget *widget() const override { return edit_; }
    void clear() override { show({}); }
    void load(const data::DataSet &record) override;
    void write(data::DataSet &record) const override;
    void written() override { show(written_); }
    QVariant state() const override { return text_; }
    void restore(const QVariant &state) override { show(state.toString()); }

private:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void show(const QString &text);
    void showAgain();

    FigureSpec spec_;
    LineEdit *edit_;
    QString text_;       // of the record that it shows; empty for none
    bool stale_ = false; // the figure has changed since
    mutable QString written_;
};

} // namespace ui
