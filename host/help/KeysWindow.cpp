#include "host/help/KeysWindow.h"

#include "platform/core/Translation.h"
#include "platform/data/WordIndex.h"
#include "platform/ui/Controls.h"
#include "platform/ui/KeyList.h"
#include "platform/ui/WindowPlaces.h"

#include <QKeyEvent>
#include <QLabel>
#include <QMdiSubWindow>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace host {

namespace {

QList<ui::ListColumn> columns()
{
    return {{core::tr("Tasto"), u"TASTO"_s, 150},
            {core::tr("Che cosa fa"), u"COMANDO"_s, 0, ui::ListColumn::Width::Rest},
            {core::tr("Dove"), u"DOVE"_s, 260}};
}

/// The rows of the page that have every word of a text.
class KeyRows
{
public:
    explicit KeyRows(const QString &wanted)
        : words_(data::searchable(wanted).split(u' ', Qt::SkipEmptyParts))
    {
    }

    void add(const QList<ui::KeyUse> &uses, const QString &where)
    {
        for (const ui::KeyUse &use : uses) {
            const QString key = use.key.toString(QKeySequence::NativeText);
            const QString text = data::searchable(key + u' ' + use.caption + u' ' + where);
            if (std::all_of(words_.begin(), words_.end(), [&](const QString &word) { return text.contains(word); }))
                rows_.append({rows_.size() + 1, key, use.caption, where});
        }
    }

    data::Rows rows() const
    {
        return {{{u"ID"_s}, {u"TASTO"_s, 0, true}, {u"COMANDO"_s, 0, true}, {u"DOVE"_s, 0, true}}, rows_};
    }

private:
    QStringList words_;
    QList<QVariantList> rows_;
};

} // namespace

KeysWindow::KeysWindow(QWidget &main, const QMdiArea &area)
    : QWidget(&main, Qt::Window)
    , main_(main)
    , area_(area)
    , wanted_(ui::named(u"txtCerca"_s, new ui::LineEdit(this)))
    , keys_(ui::named(u"GridTasti"_s, new ui::ResultGrid(u"ID"_s, columns(), this)))
{
    setObjectName(u"frmTasti"_s);
    setWindowTitle(core::tr("Tasti"));
    setAttribute(Qt::WA_DeleteOnClose);
    wanted_->setPlaceholderText(core::tr("Cerca un tasto o un comando"));
    wanted_->setClearButtonEnabled(true);
    auto *hint = new QLabel(core::tr("Tenendo premuto Alt, accanto a ogni campo compare la sua lettera. In ogni menu "
                                     "una lettera sceglie la voce."),
                            this);
    hint->setWordWrap(true);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(wanted_);
    layout->addWidget(keys_, 1);
    layout->addWidget(hint);
    connect(wanted_, &QLineEdit::textChanged, this, &KeysWindow::refresh);
    resize(QSize(760, 620).boundedTo(screen()->availableSize()));
    ui::keepPlace(this, objectName());
    wanted_->setFocus();
    refresh();
}

void KeysWindow::refresh()
{
    KeyRows rows(wanted_->text());
    const QMdiSubWindow *active = area_.activeSubWindow();
    if (active && active->widget())
        rows.add(ui::keysOf(*active->widget()), active->widget()->windowTitle());
    rows.add(ui::keysOf(main_), core::tr("Ovunque"));
    keys_->setRows(rows.rows());
}

bool KeysWindow::event(QEvent *event)
{
    if (event->type() == QEvent::WindowActivate)
        refresh();
    return QWidget::event(event);
}

void KeysWindow::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape)
        close();
    else
        QWidget::keyPressEvent(event);
}

} // namespace host
