#pragma once
#include "platform/ui/ChildForm.h"
#include "platform/ui/Filters.h"
#include "platform/ui/ListPanel.h"

#include <optional>

namespace ui {

class EntryForm;

/// What a form with a list is: the list and what its commands say.
struct SearchSpec
{
    QString caption;
    QString menuCaption;
    ListSpec list;
    QSize openingSize = {0, 520}; ///< without a width as wide as its columns
    QString newHint = {};
    QString editHint = {};
    QString closeHint = {};
};

/// The commands of a list from which records are deleted, too. An empty name is a separator.
inline const QStringList listCommands = {QStringLiteral("actChiudi"), QStringLiteral("actModifica"), QString(),
                                         QStringLiteral("actNuovo"), QStringLiteral("actElimina")};

/// A list with filters, from which records are found, opened, created and deleted. What another form saves or deletes
/// shows up at the next search, which a live list makes by itself; the selection survives a search when its record is
/// still listed.
class SearchForm : public ChildForm
{
    Q_OBJECT

public:
    SearchForm(const SearchSpec &spec, data::Connection &connection, QWidget *parent);

    /// "Cerca": the filters joined with AND. False when one cannot be read, which the user was told.
    bool search() { return list_->search(); }
    /// "Ripristina": filters back to their first values; the grid stays.
    void reset() { list_->reset(); }
    /// Runs the query with a WHERE clause (or empty text) and refills the grid.
    void refill(const QString &clause) { list_->fill(clause); }
    /// See ListPanel::searchAgain().
    bool searchAgain() { return list_->searchAgain(); }
    /// Key of the selected record, or -1.
    int selectedKey() const { return grid().selectedKey(); }

    /// Key of the record `step` rows below the one with `key`, as they are shown; -1 behind the ends. Nothing when
    /// `key` is not listed.
    std::optional<int> keyBeside(int key, int step) const;
    /// Selects the record with `key` where it is listed.
    void select(int key) { grid().selectKey(key); }

protected:
    /// Puts the commands on tool bar and menu, where they may have an order of their own, and resets the filters; the
    /// concrete form calls it last. Without "actElimina" the list has no command to delete.
    void start(const QStringList &commands = listCommands, const QStringList &menuCommands = {});

    /// Puts further commands behind those that every list has.
    void placeFurther(const QStringList &names) { placeCommands(bar_, names); }

    /// Shows the form in which the records are entered, and returns it. Throws core::Error where there is none.
    virtual EntryForm &entryForm() = 0;
    virtual void newRecord();
    /// Deletes the record with its questions; true when it is gone.
    virtual bool deleteRecord(int) { return false; }

    QWidget *filterInput(int position) const { return list_->filterInputs().value(position); }
    ResultGrid &grid() const { return list_->grid(); }

private:
    QSize openingSize(const SearchSpec &spec) const;
    void declareCommands(const SearchSpec &spec);
    void declareDelete();
    void startFinding();
    void placeExport();
    void withSelected(const std::function<void(int)> &run) const;

    QToolBar *bar_ = nullptr;
    ListPanel *list_ = nullptr;
};

} // namespace ui
