#pragma once
#include "platform/core/Progress.h"
#include "platform/data/Rows.h"

#include <QObject>
#include <QStringList>
#include <QVariantMap>

#include <functional>
#include <memory>

class QWidget;

/// The report engine's objects as a module holds them. A project file names the reports that can be run.
namespace report {

class Document;
class RunData;
struct Project;
struct Report;

enum class Destination
{
    Preview,
    Printer,
    File
};

/// What a window hook is asked to do; there is one request so far.
enum OverrideMode
{
    ShowWindow = 0
};

/// How a report is written to a PDF file.
class PdfRenderer : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    bool embedFonts = true; ///< subsets of them; without, texts are drawn as outlines that need no font
    int imageQuality = 90;  ///< JPEG quality of pictures, per cent; those with transparency stay as they are
    int metafileDpi = 300;  ///< dots per inch of the coordinates
    /// Kept for modules that set it: embedded fonts bring their own encoding, with every character that a text has.
    QString fontEncoding = QStringLiteral("WinAnsi");
};

/// What a run is about, for whoever shows, prints and keeps its pages.
struct Subject
{
    /// The record that is printed; a preview of it takes the place of an earlier one. Empty for lists, each of which is
    /// a preview of its own.
    QString record;
    /// What a preview of it proposes as the name of a file; the document's title when empty.
    QString proposedName;
    /// What is to be said about the record that is printed, one sentence each; a preview shows them on request.
    QStringList remarks;
    /// What kind of record it is: each has the printer that was chosen for it last.
    QString kind;
    /// The labels of the copies that are printed, one each; empty for a single copy without a label.
    QStringList copies;
    /// Runs whenever the record has been printed or written to a file; may be empty.
    std::function<void(const Document &document)> issued;
};

/// Settings of a run: where the output goes, and the windows that stand in for the engine's own.
class ReportSystem : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;
    using WindowHook = std::function<void(ReportSystem &, int overrideMode, QWidget *form)>;
    using FileChooser = std::function<QString(QWidget *owner, const QString &proposedName)>;
    using Work = std::function<void(core::Progress &)>;

    Destination defaultDestination = Destination::Preview;
    bool allowSetup = true; ///< the print-setup window may be shown
    /// Kept for modules that switch it off: every output paints the same pages, none a printer's own language.
    bool nativeOutput = true;
    QString outputFileName;
    Subject subject;
    PdfRenderer *renderer = nullptr; ///< used for files only
    /// Shows the print setup and prints; `form` is the preview that asks, or null.
    WindowHook overrideSetup;
    WindowHook overridePreview;
    /// Runs work that takes long, in another thread and so that the user can cancel it: it throws core::Cancelled then.
    /// Without it nobody sees how far the work has come.
    std::function<void(const QString &title, const Work &work)> runLong;
    /// Asks for the file when a preview is saved; empty when the user cancels.
    FileChooser choosePdfFile;

    /// What the last run laid out; null before the first one. The hooks take it from here.
    std::shared_ptr<const Document> document() const { return document_; }
    /// Sends `document` to the destination. Throws core::Error, and core::Cancelled.
    void output(std::shared_ptr<const Document> document);
    /// Writes `document`, or the copy of it with this label, as a PDF with the settings of `renderer`. Throws
    /// core::Error; core::Cancelled leaves no file.
    void writeFile(const Document &document, const QString &path, const QString &copy = {}) const;
    /// Runs `work` as runLong says if it `isLong`, else at once.
    void run(bool isLong, const QString &title, const Work &work) const;

private:
    std::shared_ptr<const Document> document_;
};

/// A report project: the layouts of named reports, kept in a file that can be edited by hand.
class ReportProject : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;
    using DataSource = std::function<data::Rows(const QString &connection)>;

    /// Takes effect at the next open().
    void setProjectFile(const QString &path) { file_ = path; }
    /// The path as it was set.
    const QString &projectFile() const { return file_; }
    /// Reads the project. Throws core::Error that names the file, and the line when its contents are wrong.
    void open();
    /// Forgets the project; nothing can be run then.
    void close();
    /// Was the project read?
    bool isOpen() const { return project_ != nullptr; }
    /// Names of the reports in the order of the file; none while it is closed.
    QStringList reportNames() const;

    /// Where the rows of a data connection come from.
    void setDataSource(DataSource source) { source_ = std::move(source); }
    /// A value that reports read as "param.NAME".
    void setParameter(const QString &name, const QVariant &value) { parameters_[name] = value; }

    /// Lays a report out over the rows as they are now. Throws core::Error: when the project is not open (with the
    /// reason why it could not be opened), for an unknown report and for columns that are not there.
    std::shared_ptr<const Document> layOut(const QString &name) const;
    /// layOut() and output to the destination of `system`. Throws core::Cancelled besides, when the user cancelled a
    /// long one.
    void execute(const QString &name, ReportSystem &system) const;

private:
    std::shared_ptr<const Report> reportOf(const QString &name) const;
    RunData dataOf(const Report &report) const;

    QString file_;
    QString problem_; // why the last open() failed
    std::shared_ptr<const Project> project_;
    DataSource source_;
    QVariantMap parameters_;
};

} // namespace report
