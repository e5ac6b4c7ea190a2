#include "platform/ui/FormDialog.h"

#include "platform/core/Messages.h"
#include "platform/ui/Controls.h"
#include "platform/ui/TypedEdit.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace ui {

FormDialog::FormDialog(const QString &title, QWidget *owner)
    : QDialog(owner)
    , rows_(new QFormLayout)
{
    setWindowTitle(title);
    rows_->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(rows_);
    layout->addStretch();
    auto *buttons = new QDialogButtonBox(this);
    ok_ = named(u"cmdOk"_s, buttons->addButton(u"OK"_s, QDialogButtonBox::AcceptRole));
    ok_->setDefault(true);
    cancel_ = named(u"cmdAnnulla"_s, buttons->addButton(u"Annulla"_s, QDialogButtonBox::RejectRole));
    cancel_->setAutoDefault(false);
    layout->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    setMinimumWidth(420);
}

void FormDialog::addRow(const QString &label, QWidget *input)
{
    if (label.isEmpty())
        rows_->addRow(input);
    else
        rows_->addRow(label, input);
}

void FormDialog::addText(const QString &text)
{
    auto *label = new QLabel(text, this);
    label->setWordWrap(true);
    rows_->addRow(label);
}

// The buttons are there before the inputs, but Tab reaches them last, and typing begins in the first input.
void FormDialog::showEvent(QShowEvent *event)
{
    QList<QWidget *> chain;
    for (QWidget *next = nextInFocusChain(); next != this; next = next->nextInFocusChain()) {
        if (next != ok_ && next != cancel_ && (next->focusPolicy() & Qt::TabFocus))
            chain.append(next);
    }
    chain += {ok_, cancel_};
    for (qsizetype i = 1; i < chain.size(); ++i)
        setTabOrder(chain[i - 1], chain[i]);
    if (!focusWidget() || focusWidget() == ok_ || focusWidget() == cancel_)
        chain.first()->setFocus();
    // A minimum width of its own would let the dialog open narrower than its inputs need on a small screen.
    setMinimumSize(minimumSize().expandedTo(minimumSizeHint()));
    QDialog::showEvent(event);
}

// The narrower it is the more lines its paragraphs need; what a layout tells as smallest size knows nothing of that.
void FormDialog::resizeEvent(QResizeEvent *event)
{
    QDialog::resizeEvent(event);
    if (layout()->hasHeightForWidth())
        setMinimumHeight(layout()->totalMinimumHeightForWidth(width()));
}

void FormDialog::accept()
{
    bool passed = everythingReadable(this);
    if (passed && check_)
        core::guarded(this, [this, &passed] { passed = check_(); });
    if (passed)
        QDialog::accept();
}

} // namespace ui
