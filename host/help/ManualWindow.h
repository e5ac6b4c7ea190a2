#pragma once
#include "platform/ui/LineEdit.h"

#include <QListWidget>
#include <QTextBrowser>
#include <QWidget>

namespace host {

/// The folder in which the manual lies: beside the program where it was built, in the shared data where it is
/// installed. Empty when it is nowhere.
QString manualFolder();

/// The manual's text with its pictures, which are never wider than the window.
class ManualText : public QTextBrowser
{
    Q_OBJECT

public:
    explicit ManualText(QWidget *parent);

protected:
    QVariant loadResource(int type, const QUrl &name) override;
};

/// The user manual: its chapters, a search in its text, and the text.
class ManualWindow : public QWidget
{
    Q_OBJECT

public:
    /// Reads the manual. Throws core::Error when it is not there. `owner` keeps the window usable while a dialog of
    /// its own waits for an answer.
    explicit ManualWindow(QWidget *owner);

    /// Scrolls to the chapter of that title; to the beginning when there is none of that title.
    void showChapter(const QString &title);
    /// The titles, in their order.
    QStringList chapters() const;

private:
    void listChapters();
    void search();

    QListWidget *chapters_;
    ui::LineEdit *wanted_;
    ManualText *text_;
};

/// Opens the manual at the chapter for the window that the user is in, or brings it to the front. What goes wrong is
/// shown.
void showManual(QWidget *owner);

/// F1 in dialogs, where the main window's commands cannot be reached, for as long as `owner` lives.
void installHelpKey(QObject *owner);

} // namespace host
