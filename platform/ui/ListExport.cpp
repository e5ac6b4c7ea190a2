#include "platform/ui/ListExport.h"

#include "platform/core/CsvWriter.h"
#include "platform/core/Messages.h"
#include "platform/core/SaveFile.h"
#include "platform/core/Translation.h"
#include "platform/core/XlsxWriter.h"
#include "platform/ui/Dialogs.h"
#include "platform/ui/ProgressDialog.h"

#include <QClipboard>
#include <QFileInfo>
#include <QGuiApplication>
#include <QHeaderView>
#include <QRegularExpression>

#include <set>

using namespace Qt::StringLiterals;

namespace ui {

namespace {

// The model's columns from left to right as they stand on screen.
QList<int> visibleColumns(const QTableView &view)
{
    QList<int> columns;
    const QHeaderView *header = view.horizontalHeader();
    for (int place = 0; place < header->count(); ++place) {
        if (const int column = header->logicalIndex(place); !header->isSectionHidden(column))
            columns.append(column);
    }
    return columns;
}

// A list that exports values says so for each column; an invalid value is an empty cell then.
int roleOf(const QTableView &view, int column)
{
    const bool typed = view.model()->headerData(column, Qt::Horizontal, ExportPlaces).isValid();
    return typed ? static_cast<int>(ExportValue) : Qt::DisplayRole;
}

template <typename RowNumbers>
core::Table tableOf(const QTableView &view, const QList<int> &columns, const RowNumbers &rows, core::Progress *progress)
{
    constexpr qsizetype rowsPerStep = 256;
    core::Table table;
    QList<int> roles;
    const QAbstractItemModel &model = *view.model();
    for (const int column : columns) {
        table.columns.append({.header = model.headerData(column, Qt::Horizontal, Qt::DisplayRole).toString(),
                              .places = model.headerData(column, Qt::Horizontal, ExportPlaces).toInt(),
                              .currency = model.headerData(column, Qt::Horizontal, ExportCurrency).toBool(),
                              .width = view.columnWidth(column)});
        roles.append(roleOf(view, column));
    }
    table.rows.reserve(rows.size());
    if (progress)
        progress->setTotal(static_cast<int>(rows.size()));
    for (const int row : rows) {
        if (progress && table.rows.size() % rowsPerStep == 0)
            progress->step(static_cast<int>(table.rows.size()));
        QVariantList values;
        values.reserve(columns.size());
        for (qsizetype i = 0; i < columns.size(); ++i)
            values.append(model.index(row, columns[i]).data(roles[i]));
        table.rows.append(std::move(values));
    }
    return table;
}

} // namespace

core::Table tableOf(const QTableView &view, core::Progress *progress)
{
    QList<int> rows;
    for (int row = 0; row < view.model()->rowCount(); ++row) {
        if (!view.isRowHidden(row))
            rows.append(row);
    }
    return tableOf(view, visibleColumns(view), rows, progress);
}

core::Table selectionOf(const QTableView &view, core::Progress *progress)
{
    std::set<int> rows;
    std::set<int> selectedColumns;
    for (const QModelIndex &index : view.selectionModel()->selectedIndexes()) {
        rows.insert(index.row());
        selectedColumns.insert(index.column());
    }
    QList<int> columns = visibleColumns(view);
    columns.removeIf([&selectedColumns](int column) { return !selectedColumns.contains(column); });
    return tableOf(view, columns, rows, progress);
}

ListExport::ListExport(QTableView *view)
    : QObject(view)
    , view_(view)
{
    QAction *copy = addCommand(u"actCopiaSelezione"_s, core::tr("Copia"), &ListExport::copySelection);
    copy->setShortcut(QKeySequence::Copy);
    // Not in the editor of a cell, which copies its own text.
    copy->setShortcutContext(Qt::WidgetShortcut);
    auto *separator = new QAction(view);
    separator->setSeparator(true);
    view->addAction(separator);
    commands_ = {addCommand(u"actEsportaCSV"_s, core::tr("Esporta in CSV…"), &ListExport::saveCsv),
                 addCommand(u"actEsportaXLSX"_s, core::tr("Esporta in Excel (XLSX)…"), &ListExport::saveXlsx),
                 addCommand(u"actCopiaElenco"_s, core::tr("Copia negli Appunti"), &ListExport::copyList)};
    view->setContextMenuPolicy(Qt::ActionsContextMenu);
}

QAction *ListExport::addCommand(const QString &name, const QString &caption, void (ListExport::*run)())
{
    auto *action = new QAction(caption, view_);
    action->setObjectName(name);
    connect(action, &QAction::triggered, this, [this, run] { core::guarded(view_, [this, run] { (this->*run)(); }); });
    view_->addAction(action);
    return action;
}

void ListExport::saveCsv()
{
    save(core::tr("File CSV (*.csv)"), u"csv"_s, core::csvText);
}

void ListExport::saveXlsx()
{
    save(core::tr("Cartella di lavoro Excel (*.xlsx)"), u"xlsx"_s, core::xlsxFile);
}

void ListExport::save(const QString &filter, const QString &extension, QByteArray (*write)(const core::Table &))
{
    if (!hasRows())
        return;
    static const QRegularExpression forbidden(u"\\s*[/\\\\:*?\"<>|]\\s*"_s);
    const QString name = title().replace(forbidden, u" - "_s);
    const QString path = chooseSaveFile(view_, {.title = core::tr("Esporta l'elenco"),
                                                .filter = filter,
                                                .defaultExtension = extension,
                                                .proposedName = name + u'.' + extension});
    if (path.isEmpty())
        return;
    core::Table table = read(core::tr("Esportazione"), tableOf);
    table.title = title();
    runInterruptibly(view_, core::tr("Esportazione"), [&](core::Progress &progress) {
        progress.setText(core::tr("Scrittura del file \"%1\"…").arg(QFileInfo(path).fileName()));
        const QByteArray content = write(table);
        progress.check();
        core::saveFile(path, content);
    });
}

// The cells belong to the windows' thread. A list that is filled anew between two steps is read from its beginning.
core::Table ListExport::read(const QString &work, TableReader cells)
{
    core::Table table;
    bool changed = true;
    const auto note = [&changed] { changed = true; };
    const QObject watching;
    const QAbstractItemModel *model = view_->model();
    connect(model, &QAbstractItemModel::modelReset, &watching, note);
    connect(model, &QAbstractItemModel::layoutChanged, &watching, note);
    connect(model, &QAbstractItemModel::dataChanged, &watching, note);
    runInSteps(view_, work, [&](core::Progress &progress) {
        progress.setText(core::tr("Lettura delle righe…"));
        while (std::exchange(changed, false))
            table = cells(*view_, &progress);
    });
    return table;
}

QString ListExport::copied(TableReader cells, bool headers)
{
    const QString work = core::tr("Copia negli Appunti");
    const core::Table table = read(work, cells);
    QString text;
    runInterruptibly(view_, work, [&](core::Progress &) { text = core::clipboardText(table, headers); });
    return text;
}

void ListExport::copyList()
{
    if (hasRows())
        QGuiApplication::clipboard()->setText(copied(tableOf, true));
}

void ListExport::copySelection()
{
    if (copy_) {
        copy_();
        return;
    }
    QString text = copied(selectionOf, false);
    if (text.isEmpty())
        return;
    text.chop(1); // a single line is pasted into other inputs, too
    QGuiApplication::clipboard()->setText(text);
}

bool ListExport::hasRows() const
{
    if (view_->model()->rowCount() > 0)
        return true;
    core::warn(view_, core::tr("L'elenco è vuoto: non c'è nulla da esportare."));
    return false;
}

// The caption of the form or dialog around the list.
QString ListExport::title() const
{
    for (const QWidget *widget = view_; widget; widget = widget->parentWidget()) {
        if (!widget->windowTitle().isEmpty())
            return widget->windowTitle();
    }
    return core::tr("Elenco");
}

} // namespace ui
