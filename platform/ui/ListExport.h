#pragma once
#include "platform/core/Table.h"

#include <QObject>

#include <QAction>
#include <QTableView>
#include <functional>

namespace core {
class Progress;
}

namespace ui {

/// What a model tells about itself so that its lists can leave the program as values. A model without them is exported
/// with the texts that it shows.
enum ExportRole
{
    ExportValue = Qt::UserRole + 100, ///< data(): the cell's typed value, see core::Table
    ExportPlaces,                     ///< headerData(): decimals of the column's numbers
    ExportCurrency                    ///< headerData(): true for amounts in EUR
};

/// The rows of a list in the order and with the columns that are on screen. Tells `progress` every few hundred rows;
/// throws core::Cancelled once that was cancelled.
core::Table tableOf(const QTableView &view, core::Progress *progress = nullptr);
/// The same of what is selected: whole rows, or single cells where the list selects cells.
core::Table selectionOf(const QTableView &view, core::Progress *progress = nullptr);

/// The commands by which any list leaves the program: a CSV file, an Excel file, the clipboard. They are the list's
/// context menu, and Ctrl+C in it copies what is selected. The form's caption proposes the file's name.
class ListExport : public QObject
{
    Q_OBJECT

public:
    /// Serves `view` and lives as long as it.
    explicit ListExport(QTableView *view);

    /// "Esporta in CSV…", "Esporta in Excel (XLSX)…" and "Copia negli Appunti", for a form's menu.
    const QList<QAction *> &commands() const { return commands_; }
    /// What Ctrl+C does in the place of copying the selected texts.
    void setCopy(std::function<void()> copy) { copy_ = std::move(copy); }

private:
    using TableReader = core::Table (*)(const QTableView &, core::Progress *);

    QAction *addCommand(const QString &name, const QString &caption, void (ListExport::*run)());
    void saveCsv();
    void saveXlsx();
    void copyList();
    void copySelection();
    void save(const QString &filter, const QString &extension, QByteArray (*write)(const core::Table &));
    core::Table read(const QString &work, TableReader cells);
    QString copied(TableReader cells, bool headers);
    bool hasRows() const;
    QString title() const;

    QTableView *view_;
    QList<QAction *> commands_;
    std::function<void()> copy_;
};

} // namespace ui
