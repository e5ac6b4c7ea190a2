#pragma once
#include <QByteArray>
#include <QList>
#include <QStringList>

namespace test {

/// An element of an XML file: read with nothing of what wrote it.
struct Element
{
    QString name;
    QString text;
    QList<Element> children;

    /// The elements below this one along `path`, names separated by '/'.
    QList<const Element *> all(const QString &path) const;
    /// Text of the first one; null when there is none.
    QString first(const QString &path) const;
};

/// The root element; throws core::Error for what is no XML.
Element readXml(const QByteArray &bytes);

/// What the exchange system would say of the sums of an invoice file, computed from its texts alone, one line each.
QStringList sumFaults(const Element &invoice);

/// A decimal text in hundred-millionths; an empty one is 0.
qint64 parts(const QString &decimal);

/// Validates `files` with xmllint against the schema in `schemaFolder`; gives what it says against them.
QStringList schemaFaults(const QStringList &files, const QString &schemaFolder);

/// Said in place of faults where the library is not installed.
inline const QString noOtherReader = QStringLiteral("no second reader");

/// What a library that nobody here wrote finds in `files`: the Python package a38, one line for each file with faults.
QStringList otherReaderFaults(const QStringList &files);

} // namespace test
