#pragma once
#include "platform/core/Error.h"

#include <QColor>
#include <QXmlStreamReader>

#include <functional>

namespace report {

/// The elements of an XML file one after another, and the attributes of the current one. Whatever is not as it should
/// be throws core::Error with file and line.
class ElementReader
{
public:
    /// `file` is what errors name.
    ElementReader(QIODevice *device, QString file);

protected:
    ~ElementReader() = default;

    /// Stands on the file's outermost element and returns its name.
    QString enterRoot();
    /// Calls `child` with the name of each child of the current element.
    void children(const std::function<void(const QString &element)> &child);
    QString elementName() const { return xml_.name().toString(); }
    const QString &file() const { return file_; }
    /// Line of the file where the current element begins.
    int line() const { return lineOfElement_; }

    // Attributes of the current element. Each is asked for once; one that nobody asked for is an error.

    /// Its text, `missing` where it is not there.
    QString attribute(const QString &name, const QString &missing = {});
    bool hasAttribute(const QString &name) const { return attributes_.hasAttribute(name); }
    /// Its text. Throws core::Error where it is not there.
    QString required(const QString &name);
    /// Millimetres, 0 to 2000.
    double length(const QString &name, double missing);
    double requiredLength(const QString &name);
    /// False when it is missing.
    bool flag(const QString &name);
    Qt::Alignment alignment(const QString &missing);
    /// Invalid when it is missing.
    QColor color(const QString &name);
    /// Throws core::Error for an attribute that nobody asked for.
    void endAttributes();

    /// Throws core::Error with file, line and `text`.
    [[noreturn]] void fail(const QString &text) const;
    /// The result of `parse`, whose errors get file and line.
    template <typename Parse>
    auto parsed(Parse parse)
    {
        try {
            return parse();
        } catch (const core::Error &error) {
            fail(error.text());
        }
    }

private:
    void enterElement();
    [[noreturn]] void failForXml();

    QXmlStreamReader xml_;
    QString file_;
    QXmlStreamAttributes attributes_;
    QStringList asked_;
    int lineOfElement_ = 0;
};

} // namespace report
