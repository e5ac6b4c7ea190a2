#include "platform/report/Picture.h"

#include <QBuffer>
#include <QImageReader>

namespace report {

namespace {

QImage readPicture(const QByteArray &content)
{
    // Six hundred dots an inch over fifty millimetres.
    constexpr QSize most(1200, 1200);
    QBuffer buffer;
    buffer.setData(content);
    QImageReader reader(&buffer);
    reader.setDecideFormatFromContent(true);
    const QSize size = reader.size();
    // Drawings have no size of their own that mattered, so small ones are made large, too.
    const bool isDrawing = reader.format().startsWith("svg");
    if (size.isValid() && !size.isEmpty() &&
        (isDrawing || size.width() > most.width() || size.height() > most.height()))
        reader.setScaledSize(size.scaled(most, Qt::KeepAspectRatio));
    return reader.read();
}

} // namespace

QImage pictureOf(const QByteArray &content)
{
    // One firm has one logo, which stands on every page. Long files are made in threads of their own.
    thread_local QByteArray lastContent;
    thread_local QImage lastPicture;
    if (content.isEmpty())
        return {};
    if (content != lastContent) {
        lastPicture = readPicture(content);
        lastContent = content;
    }
    return lastPicture;
}

} // namespace report
