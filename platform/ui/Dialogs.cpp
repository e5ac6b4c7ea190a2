#include "platform/ui/Dialogs.h"

#include "platform/ui/AccessibleNames.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QScreen>
#include <QStandardPaths>

namespace ui {

namespace {

ModalRunner modalRunner;

SaveFileChooser saveFileChooser;

OpenFileChooser openFileChooser;

FolderChooser folderChooser;

// Where the last file was; the user's documents at first, or the home folder of an account without such a folder.
QString &lastFolder()
{
    static QString folder = [] {
        const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
        return QFileInfo::exists(documents) ? documents : QDir::homePath();
    }();
    return folder;
}

// In the middle of the screen, where its owner is a window that is never shown: Qt would place it over that one, in the
// screen's corner.
void place(QDialog &dialog)
{
    const QWidget *owner = dialog.parentWidget();
    if (owner && owner->window()->isVisible())
        return;
    const QWidget *active = QApplication::activeWindow();
    const QRect screen = (active ? active : &dialog)->screen()->availableGeometry();
    dialog.adjustSize();
    QRect place(QPoint(), dialog.size());
    place.moveCenter(screen.center());
    dialog.move(std::max(place.left(), screen.left()), std::max(place.top(), screen.top()));
}

} // namespace

ModalRunner setModalRunner(ModalRunner runner)
{
    return std::exchange(modalRunner, std::move(runner));
}

int runModal(QDialog &dialog)
{
    nameControls(dialog);
    place(dialog);
    return modalRunner ? modalRunner(dialog) : dialog.exec();
}

void showModal(QDialog &dialog)
{
    nameControls(dialog);
    place(dialog);
    dialog.setModal(true);
    dialog.show();
}

SaveFileChooser setSaveFileChooser(SaveFileChooser chooser)
{
    return std::exchange(saveFileChooser, std::move(chooser));
}

QString chooseSaveFile(QWidget *owner, const SaveFileRequest &request)
{
    if (saveFileChooser)
        return saveFileChooser(owner, request);
    QFileDialog dialog(owner, request.title);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setNameFilter(request.filter);
    dialog.setDefaultSuffix(request.defaultExtension);
    dialog.setDirectory(lastFolder());
    dialog.selectFile(request.proposedName);
    if (dialog.exec() != QDialog::Accepted)
        return {};
    lastFolder() = dialog.directory().absolutePath();
    return dialog.selectedFiles().value(0);
}

OpenFileChooser setOpenFileChooser(OpenFileChooser chooser)
{
    return std::exchange(openFileChooser, std::move(chooser));
}

QString chooseOpenFile(QWidget *owner, const OpenFileRequest &request)
{
    if (openFileChooser)
        return openFileChooser(owner, request);
    const QString folder = request.folder.isEmpty() ? lastFolder() : request.folder;
    QString chosen = QFileDialog::getOpenFileName(owner, request.title, folder, request.filter);
    if (!chosen.isEmpty())
        lastFolder() = QFileInfo(chosen).absolutePath();
    return chosen;
}

FolderChooser setFolderChooser(FolderChooser chooser)
{
    return std::exchange(folderChooser, std::move(chooser));
}

QString chooseFolder(QWidget *owner, const QString &title)
{
    if (folderChooser)
        return folderChooser(owner, title);
    QString chosen = QFileDialog::getExistingDirectory(owner, title, lastFolder());
    if (!chosen.isEmpty())
        lastFolder() = chosen;
    return chosen;
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
