#include "platform/ui/FigureField.h"

#include "platform/core/Format.h"
#include "platform/core/Log.h"
#include "platform/data/DataSet.h"
#include "platform/ui/Colours.h"
#include "platform/ui/Controls.h"

using namespace Qt::StringLiterals;

namespace ui {

FigureField::FigureField(FigureSpec spec, QWidget *parent)
    : Field(spec.label, parent)
    , spec_(std::move(spec))
    , edit_(new LineEdit(parent))
{
    edit_->setObjectName(spec_.name);
    edit_->setAlignment(Qt::AlignRight);
    edit_->setMaximumWidth(std::max(150, edit_->sizeHint().width()));
    edit_->installEventFilter(this);
    showReadOnly(edit_);
    // Nobody types there: Tab goes past it.
    edit_->setFocusPolicy(Qt::ClickFocus);
    connect(spec_.source, &FigureSource::changed, this, [this] {
        stale_ = true;
        showAgain();
    });
}

// What changed while another page was in front.
bool FigureField::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Show)
        showAgain();
    return Field::eventFilter(watched, event);
}

void FigureField::showAgain()
{
    if (stale_ && edit_->isVisible())
        show(text_);
}

void FigureField::load(const data::DataSet &record)
{
    show(record.text(spec_.column));
}

void FigureField::write(data::DataSet &record) const
{
    written_ = record.text(spec_.column).trimmed();
}

void FigureField::show(const QString &text)
{
    text_ = text;
    stale_ = false;
    edit_->clear();
    if (text.isEmpty())
        return;
    try {
        const double figure = spec_.source->of({text}).value(text);
        edit_->setText(core::formatNumber(figure));
        recolour(edit_, [figure](QPalette palette) {
            palette.setColor(QPalette::Base, palette.color(QPalette::Window));
            palette.setColor(QPalette::Text, figure < 0 ? negativeText(palette) : palette.color(QPalette::WindowText));
            return palette;
        });
    } catch (const std::exception &error) {
        // What only tells must not keep anybody from the record.
        core::logError(u"campo "_s + spec_.name, error);
    }
}

} // namespace ui
