#pragma once
#include "platform/data/Connection.h"
#include "platform/data/DataSet.h"
#include "platform/report/Report.h"
#include "platform/ui/CommandRegistry.h"
#include "platform/ui/Dialogs.h"

#include <QAction>
#include <QMenu>
#include <QToolBar>
#include <QVariant>
#include <QWidget>

class TMMGdmStampe;
class TMMGModSelezionaBase;
namespace report {
class PdfRenderer;
class ReportProject;
} // namespace report

/// The module object: a hidden form of the host that owns the module's connection, data sets, report objects, actions,
/// menus and tool bars, and knows the forms that are open. The rest of the module reaches it through Modulo().
class TMMGModMagazzino : public QWidget
{
    Q_OBJECT

public:
    /// `owner` is the host's; the host destroys the module itself.
    explicit TMMGModMagazzino(QObject *owner);
    ~TMMGModMagazzino() override;

    /// Start, called by the host once. Any failure is thrown as a core::Error with the same text.
    Q_INVOKABLE void Initialize();
    /// Stop, called by the host before it destroys the module; there is nothing to do.
    Q_INVOKABLE void Finalize();
    /// The host's call-in by name. The module is driven by its actions: every name is accepted, nothing is done and the
    /// answer is always false.
    Q_INVOKABLE bool ExecutePkgAction(const QString &action, const QVariantList &parameters, int count);

    data::Connection *ModADOConn;
    report::ReportSystem *rSystem;
    report::ReportProject *rProject;
    report::PdfRenderer *rPDF;
    ui::SaveFileRequest dlgSavePDF;
    QMenu *mnModMagazzino = nullptr; ///< holds the menus that are merged into the host's
    TMMGdmStampe *dmStampe = nullptr;

    /// One of the module's parameterised data sets, by its name ("adsFornitore"). Throws core::Error for another name.
    data::DataSet &dataSet(const QString &name) const;
    /// The module's actions and the forms they open.
    ui::CommandRegistry &commands() const { return *commands_; }
    /// An action of the module by its name; null when there is none.
    QAction *action(const QString &name) const;
    /// Runs an action and returns the form it opened; null when it was refused or failed.
    QWidget *openForm(const QString &actionName);
    /// Runs a selection action, which makes sure that its dialog exists, and returns the dialog.
    TMMGModSelezionaBase &selectionDialog(const QString &actionName);

    /// Opens the report project. A missing or broken file is told in a box and leaves every print to fail.
    void ApriStampe(const QString &path);
    /// Asks for the PDF file to write, proposing `proposedName`; the result ends in ".pdf", or is empty for none.
    QString ScegliFilePDF(QWidget *form, const QString &proposedName) const;

    /// What the report system calls for the print setup: the host's own window.
    static void rSystemOverrideSetup(report::ReportSystem &system, int overrideMode, QWidget *form);
    /// What the report system calls for the preview: the host's own window.
    static void rSystemOverridePreview(report::ReportSystem &system, int overrideMode, QWidget *form);

Q_SIGNALS:
    /// One of the module's forms saved a record to `table` or deleted one.
    void tableChanged(const QString &table);
    /// The document with key `id` of `table` was printed, and that is noted.
    void stampato(const QString &table, int id);

private:
    void createDataSets();
    void createActions();
    void createMenus();
    void createToolBars();
    void adoptHostConnection() const;

    ui::CommandRegistry *commands_ = nullptr; // "actListModMagazzino"
    QList<QToolBar *> toolBars_;
};

/// The live module object, found in the host's registry. Throws core::Error when it is not loaded.
TMMGModMagazzino &Modulo();
