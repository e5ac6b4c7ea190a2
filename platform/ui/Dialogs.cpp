#include "platform/ui/Dialogs.h"

#include <QDialog>
#include <QFileDialog>
#include <QGuiApplication>

namespace ui {

namespace {

ModalRunner &modalRunner()
{
    static ModalRunner current;
    return current;
}

SaveFileChooser &saveFileChooser()
{
    static SaveFileChooser current;
    return current;
}

} // namespace

ModalRunner setModalRunner(ModalRunner runner)
{
    return std::exchange(modalRunner(), std::move(runner));
}

int runModal(QDialog &dialog)
{
    return modalRunner() ? modalRunner()(dialog) : dialog.exec();
}

SaveFileChooser setSaveFileChooser(SaveFileChooser chooser)
{
    return std::exchange(saveFileChooser(), std::move(chooser));
}

QString chooseSaveFile(QWidget *owner, const SaveFileRequest &request)
{
    if (saveFileChooser())
        return saveFileChooser()(owner, request);
    QFileDialog dialog(owner, request.title);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setNameFilter(request.filter);
    dialog.setDefaultSuffix(request.defaultExtension);
    dialog.selectFile(request.proposedName);
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
}

WaitCursor::WaitCursor()
{
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
}

WaitCursor::~WaitCursor()
{
    QGuiApplication::restoreOverrideCursor();
}

} // namespace ui
