#include "host/help/ManualWindow.h"

#include "platform/core/Error.h"
#include "platform/core/Messages.h"
#include "platform/core/Translation.h"
#include "platform/ui/Controls.h"
#include "platform/ui/Help.h"
#include "platform/ui/WindowPlaces.h"

#include <QApplication>
#include <QBoxLayout>
#include <QDialog>
#include <QFileInfo>
#include <QKeyEvent>
#include <QPointer>
#include <QSplitter>
#include <QStandardPaths>
#include <QTextBlock>

using namespace Qt::StringLiterals;

namespace host {

namespace {

constexpr int blockRole = Qt::UserRole;

class HelpKey : public QObject
{
public:
    using QObject::QObject;

    bool eventFilter(QObject *, QEvent *event) override
    {
        // Of every event of the program: the rest is asked for F1 alone.
        if (event->type() != QEvent::KeyPress)
            return false;
        const auto *key = static_cast<QKeyEvent *>(event);
        auto *dialog = qobject_cast<QDialog *>(QApplication::activeWindow());
        if (key->key() != Qt::Key_F1 || key->modifiers() != Qt::NoModifier || !dialog)
            return false;
        showManual(dialog);
        return true;
    }
};

// Where the user is: the field with the focus, in whichever window.
QString wantedChapter()
{
    const QWidget *place = QApplication::focusWidget();
    return ui::helpChapter(place ? place : QApplication::activeWindow());
}

} // namespace

QString manualFolder()
{
    QString beside = QCoreApplication::applicationDirPath() + u"/manuale"_s;
    const QString file = u"/manuale.md"_s;
    if (QFileInfo::exists(beside + file))
        return beside;
    const QString shared = QStandardPaths::locate(QStandardPaths::GenericDataLocation, u"corvane/manuale"_s + file);
    return shared.isEmpty() ? QString() : QFileInfo(shared).absolutePath();
}

ManualText::ManualText(QWidget *parent)
    : QTextBrowser(parent)
{
    setObjectName(u"txtManuale"_s);
    setOpenExternalLinks(true);
}

QVariant ManualText::loadResource(int type, const QUrl &name)
{
    QVariant found = QTextBrowser::loadResource(type, name);
    if (type != QTextDocument::ImageResource)
        return found;
    QImage picture = found.value<QImage>();
    if (picture.isNull())
        picture.loadFromData(found.toByteArray());
    // Most pictures stand in steps, which are indented; the scroll bar comes with the text.
    const int room = viewport()->width() - qRound(2 * document()->documentMargin() + 2 * document()->indentWidth()) -
                     style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    const qreal ratio = devicePixelRatioF();
    if (picture.width() > room * ratio)
        picture = picture.scaledToWidth(qRound(room * ratio), Qt::SmoothTransformation);
    picture.setDevicePixelRatio(ratio);
    return picture;
}

ManualWindow::ManualWindow(QWidget *owner)
    : QWidget(owner, Qt::Window)
    , chapters_(ui::named(u"lstCapitoli"_s, new QListWidget(this)))
    , wanted_(ui::named(u"txtCerca"_s, new ui::LineEdit(this)))
    , text_(new ManualText(this))
{
    setObjectName(u"frmManuale"_s);
    setWindowTitle(core::tr("Manuale di Corvane"));
    setAttribute(Qt::WA_DeleteOnClose);
    chapters_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    wanted_->setPlaceholderText(core::tr("Cerca nel manuale (Invio: il prossimo)"));
    wanted_->setClearButtonEnabled(true);

    auto *left = new QWidget(this);
    auto *column = ui::withoutMargins<QVBoxLayout>(left);
    column->addWidget(wanted_);
    column->addWidget(chapters_);
    auto *halves = new QSplitter(this);
    halves->addWidget(left);
    halves->addWidget(text_);
    halves->setStretchFactor(1, 1);
    halves->setSizes({280, 700});
    auto *all = new QVBoxLayout(this);
    all->addWidget(halves);
    resize(QSize(980, 720).boundedTo(screen()->availableSize()));

    // Laid out before the text is read, so that pictures know their room.
    layout()->activate();
    const QString folder = manualFolder();
    if (folder.isEmpty())
        throw core::Error(core::tr("Il manuale non è installato."));
    text_->setSource(QUrl::fromLocalFile(folder + u"/manuale.md"_s), QTextDocument::MarkdownResource);
    listChapters();
    connect(chapters_, &QListWidget::currentRowChanged, this,
            [this](int row) { showChapter(chapters_->item(row)->text().trimmed()); });
    connect(wanted_, &QLineEdit::returnPressed, this, &ManualWindow::search);
    wanted_->setFocus();
    ui::keepPlace(this, objectName());
}

void ManualWindow::listChapters()
{
    for (QTextBlock block = text_->document()->begin(); block.isValid(); block = block.next()) {
        const int level = block.blockFormat().headingLevel();
        if (level < 2)
            continue;
        auto *item = new QListWidgetItem(QString(qsizetype{4} * (level - 2), u' ') + block.text(), chapters_);
        item->setData(blockRole, block.blockNumber());
    }
}

QStringList ManualWindow::chapters() const
{
    QStringList titles;
    for (int row = 0; row < chapters_->count(); ++row)
        titles.append(chapters_->item(row)->text().trimmed());
    return titles;
}

void ManualWindow::showChapter(const QString &title)
{
    const auto row = static_cast<int>(chapters().indexOf(title));
    const QSignalBlocker quiet(chapters_);
    chapters_->setCurrentRow(row);
    const QTextBlock block =
        text_->document()->findBlockByNumber(row < 0 ? 0 : chapters_->item(row)->data(blockRole).toInt());
    text_->setTextCursor(QTextCursor(block));
    // The end first: then the heading comes to stand at the top.
    text_->moveCursor(QTextCursor::End);
    text_->setTextCursor(QTextCursor(block));
    text_->ensureCursorVisible();
}

// From where the reader is, and from the beginning once the end is reached.
void ManualWindow::search()
{
    if (!text_->find(wanted_->text())) {
        text_->moveCursor(QTextCursor::Start);
        text_->find(wanted_->text());
    }
}

void showManual(QWidget *owner)
{
    static QPointer<ManualWindow> open;
    const QString chapter = wantedChapter();
    core::guarded(owner, [&] {
        // A window of another owner cannot be used while a dialog waits.
        ManualWindow *manual = open;
        if (manual && qobject_cast<QDialog *>(owner) && manual->parentWidget() != owner) {
            delete manual;
            manual = nullptr;
        }
        if (!manual)
            manual = new ManualWindow(owner);
        open = manual;
        manual->show();
        manual->raise();
        manual->activateWindow();
        manual->showChapter(chapter);
    });
}

void installHelpKey(QObject *owner)
{
    qApp->installEventFilter(new HelpKey(owner));
}

} // namespace host
