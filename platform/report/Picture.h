#pragma once
#include <QImage>

namespace report {

/// The picture that `content` holds (PNG, SVG, and whatever else can be read here), large enough to be sharp on paper
/// in the size of a letterhead and not larger; null when it holds none.
QImage pictureOf(const QByteArray &content);

} // namespace report
