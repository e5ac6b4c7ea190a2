#pragma once
#include <QByteArray>
#include <QStringList>

/// What tests ask about files.
namespace test {

/// The whole file; "no file" when it cannot be read.
QByteArray contentOf(const QString &path);
/// Names of everything in the folder, hidden files included.
QStringList filesIn(const QString &folder);

} // namespace test
