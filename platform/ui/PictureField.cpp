#include "platform/ui/PictureField.h"

#include "platform/core/Error.h"
#include "platform/core/Messages.h"
#include "platform/core/Translation.h"
#include "platform/report/Picture.h"
#include "platform/ui/Controls.h"
#include "platform/ui/Dialogs.h"

#include <QFile>
#include <QGridLayout>

using namespace Qt::StringLiterals;

namespace ui {

namespace {

// It is read with every print of a document.
constexpr qint64 mostBytes = 500'000;
constexpr QSize shownSize(280, 200);

QByteArray readPicture(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw core::Error(core::tr("Il file \"%1\" non si può leggere.").arg(path), file.errorString());
    if (file.size() > mostBytes)
        throw core::Error(
            core::tr("Il file \"%1\" è troppo grande: al massimo %2 KB.").arg(path).arg(mostBytes / 1000));
    QByteArray content = file.readAll();
    if (report::pictureOf(content).isNull())
        throw core::Error(core::tr("Il file \"%1\" non contiene un'immagine PNG o SVG.").arg(path));
    return content;
}

} // namespace

PictureField::PictureField(const PictureSpec &spec, QWidget *parent)
    : ColumnField(spec.label, spec.column, parent)
    , box_(new QWidget(parent))
    , picture_(named(spec.name, new QLabel(box_)))
{
    picture_->setAccessibleName(spec.label);
    picture_->setFrameShape(QFrame::StyledPanel);
    picture_->setAlignment(Qt::AlignCenter);
    picture_->setFixedSize(shownSize + QSize(12, 12));
    auto *layout = withoutMargins<QGridLayout>(box_);
    layout->addWidget(picture_, 0, 0, 3, 1);
    layout->addWidget(addButton(u"cmdScegli"_s + spec.name.mid(3), core::tr("Scegli..."), [this] { choose(); }), 0, 1);
    remove_ = addButton(u"cmdTogli"_s + spec.name.mid(3), core::tr("Togli"), [this] {
        show({});
        Q_EMIT edited();
    });
    layout->addWidget(remove_, 1, 1);
    layout->setRowStretch(2, 1);
    layout->setColumnStretch(2, 1);
    box_->setFocusProxy(layout->itemAtPosition(0, 1)->widget());
    clear();
}

QPushButton *PictureField::addButton(const QString &name, const QString &caption, const std::function<void()> &run)
{
    auto *button = plainButton(name, caption, box_);
    connect(button, &QPushButton::clicked, this, run);
    return button;
}

void PictureField::show(const QVariant &stored)
{
    content_ = stored.toByteArray();
    const QImage image = report::pictureOf(content_);
    if (image.isNull())
        picture_->setText(content_.isEmpty() ? core::tr("Nessuna immagine") : core::tr("Immagine illeggibile"));
    else
        picture_->setPixmap(QPixmap::fromImage(image.scaled(shownSize, Qt::KeepAspectRatio, Qt::SmoothTransformation)));
    remove_->setEnabled(!content_.isEmpty());
}

QVariant PictureField::toStore() const
{
    return content_.isEmpty() ? QVariant() : QVariant(content_);
}

void PictureField::choose()
{
    core::guarded(box_, [this] {
        const QString path = chooseOpenFile(
            box_, {.title = core::tr("Immagine"), .filter = core::tr("Immagini (*.png *.svg)"), .folder = {}});
        if (path.isEmpty())
            return;
        show(readPicture(path));
        Q_EMIT edited();
    });
}

} // namespace ui
