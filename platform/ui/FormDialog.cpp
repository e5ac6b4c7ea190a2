#include "platform/ui/FormDialog.h"

#include "platform/core/Messages.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace ui {

FormDialog::FormDialog(const QString &title, QWidget *owner)
    : QDialog(owner)
    , rows_(new QFormLayout)
{
    setWindowTitle(title);
    rows_->setFieldGrowthPolicy(QFormLayout::ExpandingFieldsGrow);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(rows_);
    layout->addStretch();
    auto *buttons = new QDialogButtonBox(this);
    ok_ = buttons->addButton(u"OK"_s, QDialogButtonBox::AcceptRole);
    ok_->setObjectName(u"cmdOk"_s);
    ok_->setDefault(true);
    QPushButton *cancel = buttons->addButton(u"Annulla"_s, QDialogButtonBox::RejectRole);
    cancel->setObjectName(u"cmdAnnulla"_s);
    cancel->setAutoDefault(false);
    layout->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    setMinimumWidth(420);
}

void FormDialog::addText(const QString &text)
{
    auto *label = new QLabel(text, this);
    label->setWordWrap(true);
    rows_->addRow(label);
}

void FormDialog::accept()
{
    bool passed = !check_;
    if (check_)
        core::guarded(this, [this, &passed] { passed = check_(); });
    if (passed)
        QDialog::accept();
}

} // namespace ui
