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

OpenFileChooser &openFileChooser()
{
    static OpenFileChooser current;
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

OpenFileChooser setOpenFileChooser(OpenFileChooser chooser)
{
    return std::exchange(openFileChooser(), std::move(chooser));
}

QString chooseOpenFile(QWidget *owner, const OpenFileRequest &request)
{
    if (openFileChooser())
        return openFileChooser()(owner, request);
    return QFileDialog::getOpenFileName(owner, request.title, request.folder, request.filter);
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
