#include "platform/ui/Icons.h"

#include "platform/ui/Colours.h"
#include "platform/ui/Controls.h"

#include <QApplication>
#include <QHash>
#include <QIcon>
#include <QStandardPaths>
#include <QStyle>

using namespace Qt::StringLiterals;

namespace ui {

namespace {

/// A drawing of the theme, and what stands for it where there is no theme.
struct Drawing
{
    QString name;
    QStyle::StandardPixmap instead;
};

// One drawing has one meaning.
const QHash<Icon, Drawing> drawings = {{Icon::New, {u"document-new"_s, QStyle::SP_FileIcon}},
                                       {Icon::Open, {u"document-open"_s, QStyle::SP_DialogOpenButton}},
                                       {Icon::Save, {u"document-save"_s, QStyle::SP_DialogSaveButton}},
                                       {Icon::Delete, {u"edit-delete"_s, QStyle::SP_TrashIcon}},
                                       {Icon::Close, {u"window-close"_s, QStyle::SP_DialogCloseButton}},
                                       {Icon::Print, {u"document-print"_s, QStyle::SP_FileDialogContentsView}},
                                       {Icon::Pdf, {u"application-pdf"_s, QStyle::SP_FileDialogDetailedView}},
                                       {Icon::Add, {u"list-add"_s, QStyle::SP_FileDialogNewFolder}},
                                       {Icon::Remove, {u"list-remove"_s, QStyle::SP_DialogDiscardButton}},
                                       {Icon::Up, {u"go-up"_s, QStyle::SP_ArrowUp}},
                                       {Icon::Down, {u"go-down"_s, QStyle::SP_ArrowDown}},
                                       {Icon::Search, {u"edit-find"_s, QStyle::SP_FileDialogContentsView}},
                                       {Icon::Reset, {u"edit-reset"_s, QStyle::SP_DialogResetButton}},
                                       {Icon::Text, {u"insert-text"_s, QStyle::SP_FileDialogInfoView}},
                                       {Icon::Choose, {u"view-list-details"_s, QStyle::SP_DirOpenIcon}},
                                       {Icon::Clear, {u"edit-clear"_s, QStyle::SP_DialogCancelButton}},
                                       {Icon::Recover, {u"document-revert"_s, QStyle::SP_ArrowBack}},
                                       {Icon::Service, {u"configure"_s, QStyle::SP_FileDialogListView}},
                                       {Icon::Export, {u"document-export"_s, QStyle::SP_DialogSaveButton}},
                                       {Icon::Import, {u"document-import"_s, QStyle::SP_ArrowBack}},
                                       {Icon::Send, {u"mail-send"_s, QStyle::SP_DialogSaveButton}},
                                       {Icon::Check, {u"dialog-ok-apply"_s, QStyle::SP_DialogApplyButton}},
                                       {Icon::Done, {u"mail-mark-read"_s, QStyle::SP_DialogOkButton}},
                                       {Icon::Rename, {u"edit-rename"_s, QStyle::SP_FileDialogInfoView}},
                                       {Icon::LastTime, {u"clock"_s, QStyle::SP_ArrowBack}},
                                       {Icon::Duplicate, {u"edit-copy"_s, QStyle::SP_FileLinkIcon}},
                                       {Icon::FitWidth, {u"zoom-fit-width"_s, QStyle::SP_FileDialogInfoView}},
                                       {Icon::FitPage, {u"zoom-fit-page"_s, QStyle::SP_FileDialogInfoView}}};

// Each is made once: the style draws some twenty pictures for one, and Qt keeps up to ten megabytes of what is shown.
QHash<Icon, QIcon> made;

} // namespace

void useIconTheme()
{
    // Not every platform of Qt says where themes lie.
    QIcon::setThemeSearchPaths(
        QIcon::themeSearchPaths() +
        QStandardPaths::locateAll(QStandardPaths::GenericDataLocation, u"icons"_s, QStandardPaths::LocateDirectory));
    QIcon::setThemeName(isDark(QApplication::palette()) ? u"breeze-dark"_s : u"breeze"_s);
    made.clear();
}

QIcon icon(Icon which)
{
    // Pictures end with the application.
    if (made.isEmpty())
        qAddPostRoutine([] { made.clear(); });
    if (!made.contains(which)) {
        const Drawing drawing = drawings.value(which);
        made.insert(which, QIcon::fromTheme(drawing.name, QApplication::style()->standardIcon(drawing.instead)));
    }
    return made.value(which);
}

} // namespace ui
