#pragma once
#include <QObject>
#include <QStringList>
#include <functional>

class QWidget;

/// The report engine's objects as a module holds them. A project file names the reports that can be run.
namespace report {

enum class Destination
{
    Preview,
    Printer,
    File
};

/// How a report is written to a PDF file.
class PdfRenderer : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    bool embedFonts = true;
    int imageQuality = 90; ///< JPEG quality, per cent
    int metafileDpi = 300; ///< dots per inch
    QString fontEncoding = QStringLiteral("WinAnsi");
};

/// Settings of a run: where the output goes, and the windows that stand in for the engine's own.
class ReportSystem : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;
    using WindowHook = std::function<void(ReportSystem &, int overrideMode, QWidget *form)>;

    Destination defaultDestination = Destination::Preview;
    bool allowSetup = true;
    bool nativeOutput = true;
    QString outputFileName;
    PdfRenderer *renderer = nullptr;
    WindowHook overrideSetup;
    WindowHook overridePreview;
};

/// A report project file: an XML document whose root "project" holds "report" elements with a "name".
class ReportProject : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// Takes effect at the next open().
    void setProjectFile(const QString &path) { file_ = path; }
    const QString &projectFile() const { return file_; }
    /// Reads the project. Throws core::Error that names file and line when it cannot be read.
    void open();
    void close();
    bool isOpen() const { return open_; }
    const QStringList &reportNames() const { return reports_; }

private:
    QString file_;
    QStringList reports_;
    bool open_ = false;
};

} // namespace report
