#include "platform/ui/Help.h"

namespace ui {

namespace {

QHash<QString, QString> known;

QString chapterOf(const QWidget &widget)
{
    QString chapter = known.value(widget.objectName());
    for (const QMetaObject *type = widget.metaObject(); type && chapter.isEmpty(); type = type->superClass())
        chapter = known.value(QString::fromLatin1(type->className()));
    return chapter;
}

} // namespace

void addHelpChapters(const QHash<QString, QString> &chapters)
{
    known.insert(chapters);
}

const QHash<QString, QString> &helpChapters()
{
    return known;
}

QString helpChapter(const QWidget *widget)
{
    for (; widget; widget = widget->parentWidget()) {
        if (QString chapter = chapterOf(*widget); !chapter.isEmpty())
            return chapter;
    }
    return {};
}

} // namespace ui
