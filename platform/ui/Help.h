#pragma once
#include <QHash>
#include <QString>
#include <QWidget>

namespace ui {

/// Says which chapter of the manual tells about which windows: object name or class name of a window, with its
/// namespace, to the chapter's title. A later entry for the same name counts.
void addHelpChapters(const QHash<QString, QString> &chapters);

/// All that was added; for those who look whether the chapters exist.
const QHash<QString, QString> &helpChapters();

/// The chapter for `widget` or the nearest widget around it that has one: its object name comes before its class, a
/// class before the one it stands on. Empty when none has one.
QString helpChapter(const QWidget *widget);

} // namespace ui
