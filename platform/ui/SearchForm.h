#pragma once
#include "platform/ui/ChildForm.h"
#include "platform/ui/ResultGrid.h"

class QHBoxLayout;
class QVBoxLayout;
namespace data {
class Connection;
}

namespace ui {

class LetterBar;

/// One input of a list's filter bar. Enter in it searches.
struct ListFilter
{
    enum class Kind
    {
        Text,
        Year,
        Date
    };

    QString name; ///< control name
    QString label;
    Kind kind = Kind::Text;
    /// The condition for what stands in the input: the text (never empty), the year, or the date as yyyy-MM-dd.
    std::function<QString(const QString &value)> condition;
};

/// "COLUMN CONTAINING 'text'": anywhere in the value, without case, the text taken literally.
std::function<QString(const QString &)> containing(const QString &column);

/// What a list is: its query, columns, filters and what its commands do.
struct SearchSpec
{
    QString caption;
    QString menuCaption;
    QString selectText; ///< ends with a blank
    QString orderText;  ///< begins with a blank
    QString keyField;
    QList<ListColumn> columns;
    QList<ListFilter> filters;
    QString letterColumn;         ///< of the alphabet bar; none while empty
    QSize openingSize = {0, 520}; ///< without a width as wide as its columns
    QString newHint;
    QString editHint;
    QString closeHint;
};

/// A list with filters, from which records are found, opened, created and deleted. What another form saves or deletes
/// shows up at the next search only; the selection survives a search when its record is still listed.
class SearchForm : public ChildForm
{
    Q_OBJECT

public:
    SearchForm(const SearchSpec &spec, data::Connection &connection, QWidget *parent);

    /// "Cerca": the filters joined with AND. False when one cannot be read, which the user was told.
    bool search();
    /// "Ripristina": filters back to their first values; the grid stays.
    void reset();
    /// Runs the query with a WHERE clause (or empty text) and refills the grid.
    void refill(const QString &filter);
    /// Key of the selected record, or -1.
    int selectedKey() const { return grid_->selectedKey(); }

protected:
    /// Puts the commands on tool bar and menu and resets the filters; the concrete form calls it last. `commands` of
    /// the standard bar, and of the menu unless it has an order of its own; an empty name is a separator.
    void start(const QStringList &commands, const QStringList &menuCommands = {});

    virtual void openRecord(int id) = 0;
    virtual void newRecord() = 0;
    /// Deletes the record with its questions; true when it is gone.
    virtual bool deleteRecord(int) { return false; }
    /// First values of the filters that are not just empty or the current year.
    virtual void resetFilters() {}

    QWidget *filterInput(int index) const { return inputs_[index]; }
    ResultGrid &grid() const { return *grid_; }

private:
    QSize openingSize() const;
    void declareCommands();
    void declareDelete();
    void placeExport();
    void createFilterBar(QVBoxLayout *layout);
    void addFilter(const ListFilter &filter, QHBoxLayout *line);
    LetterBar *createLetterBar(QVBoxLayout *layout);
    void withSelected(const std::function<void(int)> &run);
    QString filterText() const;

    SearchSpec spec_;
    data::Connection &connection_;
    QToolBar *bar_ = nullptr;
    QList<QWidget *> inputs_;
    ResultGrid *grid_ = nullptr;
};

} // namespace ui
