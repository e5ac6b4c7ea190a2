#pragma once
#include <QDialog>
#include <QString>
#include <functional>

class QWidget;

/// Fronts of everything that waits for the user besides message boxes; tests and the guided tour replace them.
namespace ui {

using ModalRunner = std::function<int(QDialog &)>;
/// Replaces the runner of modal dialogs and returns the one before it; an empty one restores QDialog::exec().
ModalRunner setModalRunner(ModalRunner runner);
/// Shows `dialog` modally, over its owner or, when that is never shown, in the middle of the screen. Returns its result
/// (QDialog::Accepted or Rejected).
int runModal(QDialog &dialog);
/// The same for whoever handles the windows' events himself: comes back at once.
void showModal(QDialog &dialog);

struct SaveFileRequest
{
    QString title;
    QString filter;           ///< "File PDF (*.pdf)"
    QString defaultExtension; ///< added to a name without one, "pdf"
    QString proposedName;
};

using SaveFileChooser = std::function<QString(QWidget *, const SaveFileRequest &)>;
/// Replaces the dialog that asks for a file to write and returns what stood for it before; an empty one restores it.
SaveFileChooser setSaveFileChooser(SaveFileChooser chooser);
/// Asks for a file to write (with a question before overwriting); empty when the user cancels.
QString chooseSaveFile(QWidget *owner, const SaveFileRequest &request);

struct OpenFileRequest
{
    QString title;
    QString filter; ///< "File CSV (*.csv);;Tutti i file (*)"
    QString folder; ///< where the user starts looking; empty for the last one
};

using OpenFileChooser = std::function<QString(QWidget *, const OpenFileRequest &)>;
/// Replaces the dialog that asks for a file to read and returns what stood for it before; an empty one restores it.
OpenFileChooser setOpenFileChooser(OpenFileChooser chooser);
/// Asks for a file to read, which exists; empty when the user cancels.
QString chooseOpenFile(QWidget *owner, const OpenFileRequest &request);

using FolderChooser = std::function<QString(QWidget *, const QString &title)>;
/// Replaces the dialog that asks for a folder and returns what stood for it before; an empty one restores it.
FolderChooser setFolderChooser(FolderChooser chooser);
/// Asks for a folder, which exists; empty when the user cancels.
QString chooseFolder(QWidget *owner, const QString &title);

/// The hourglass for as long as the object lives.
class WaitCursor
{
public:
    WaitCursor();
    ~WaitCursor();
    WaitCursor(const WaitCursor &) = delete;
    WaitCursor &operator=(const WaitCursor &) = delete;
};

} // namespace ui
