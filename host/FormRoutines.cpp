#include "host/Corvane3Impl.h"

#include "host/ui/MainWindow.h"
#include "host/ui/PreviewWindow.h"
#include "host/ui/Printing.h"
#include "platform/ui/CategoryTree.h"

#include <QApplication>
#include <QStyle>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

// Positions in the suite's shared image list.
constexpr int closedFolderImage = 77;

QIcon sharedImage(int index)
{
    const auto pixmap = index == closedFolderImage ? QStyle::SP_DirClosedIcon : QStyle::SP_DirOpenIcon;
    return QApplication::style()->standardIcon(pixmap);
}

} // namespace

QWidget *GetMainForm()
{
    return host::MainWindow::instance();
}

QObject *GetMainFormObject()
{
    return host::MainWindow::instance();
}

TKxToolBarProperties GetKxCommonToolBarProperties(TKxCommonToolBars kind)
{
    auto *window = host::MainWindow::instance();
    return {kind, window ? window->commonToolBar(kind) : nullptr};
}

void ShowChildForm(QWidget *form)
{
    if (auto *window = host::MainWindow::instance())
        window->showChild(form);
    else
        form->show();
}

void FillTreeView(ui::CategoryTree &tree, const QString &keyColumn, const QString &captionColumn,
                  const QString &parentColumn, const QString &table, const QString &orderClause,
                  data::Connection &connection)
{
    tree.fill({table, keyColumn, captionColumn, parentColumn}, orderClause, connection);
}

void UpdateTreeNodeImages(ui::CategoryTree &tree, int closedImage, int openImage)
{
    tree.setNodeImages(sharedImage(openImage), sharedImage(closedImage));
}

// A preview that asks is printed as it stands, whatever was run since.
void RaveSystemOverrideSetup(report::ReportSystem &system, int, QWidget *form)
{
    const auto *preview = qobject_cast<host::PreviewWindow *>(form);
    const report::Document &document = preview ? preview->document() : *system.document();
    const report::Subject &subject = preview ? preview->chosen() : system.subject;
    if (host::printWithDialog(document, subject, form ? form : GetMainForm()) && subject.issued)
        subject.issued(document);
}

void RaveSystemOverridePreview(report::ReportSystem &system, int, QWidget *form)
{
    const QWidget *mainForm = GetMainForm();
    const QList<host::PreviewWindow *> open =
        mainForm ? mainForm->findChildren<host::PreviewWindow *>() : QList<host::PreviewWindow *>();
    const auto same = std::find_if(open.begin(), open.end(), [&system](const host::PreviewWindow *preview) {
        return !system.subject.record.isEmpty() && preview->subject() == system.subject.record;
    });
    if (same == open.end()) {
        ShowChildForm(new host::PreviewWindow(system, form));
        return;
    }
    (*same)->showDocument(system);
    ShowChildForm(*same);
}
