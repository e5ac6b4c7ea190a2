#pragma once
#include "platform/data/SqlText.h"
#include "platform/ui/Filter.h"
#include "platform/ui/ResultGrid.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QTimer>
#include <QVariantMap>

class QVBoxLayout;

namespace ui {

class LetterBar;
class ListFooter;
class ListKeys;

/// What a list shows: its query, columns and filters.
struct ListSpec
{
    QString selectText; ///< ends with a blank
    QString orderText;  ///< begins with a blank
    QString keyField;
    QList<ListColumn> columns;
    QList<ListFilter> filters = {};
    QString letterColumn = {}; ///< of the letter bar; none while empty
    QString letterLike = {};   ///< text of the letter bar's comparison, where it is fixed
    data::Values::Way way = data::Values::Way::Bound;
    QString gridName = QStringLiteral("GridRisultati"); ///< control name
    bool keepsLayout = true;                            ///< what the user makes of the columns is kept
    bool longTexts = false;                             ///< cells show texts of several lines from their first one
    std::function<void(data::Rows &)> complete = {};    ///< puts into the rows what no query can tell
    /// Searches while one types, and by itself once what it shows was changed; otherwise only when it is told to.
    bool isLive = false;
    bool hasFooter = true;      ///< says how many rows there are, and whether they are older than what is stored
    bool keepsSelection = true; ///< a search selects the record again that was selected, if it is still listed
};

/// The list of a window: filters, grid and letter bar over one query, with the keyboard and the export of every list.
class ListPanel : public QWidget
{
    Q_OBJECT

public:
    /// Makes the buttons behind the filters, by which the window searches and resets.
    using ButtonMaker = std::function<QList<QPushButton *>(QWidget *parent)>;

    /// Stands in the layout that `window` already has.
    ListPanel(const ListSpec &spec, data::Connection &connection, const ButtonMaker &buttons, QWidget *window);

    /// Fills the grid with the rows that fit the filters, joined with AND. False when a filter cannot be read, which
    /// the user was told. This and fill() throw what the database throws; the grid then holds the rows before the
    /// error.
    bool search();
    /// The rows that begin with a letter of the letter bar, all for "*".
    void searchLetter(const QString &letter);
    /// The rows of a WHERE clause, or of all with an empty text.
    void fill(const QString &clause, const QVariantList &values = {});
    /// Brings the filters back to their first values; the grid stays.
    void reset();
    /// Brings back what the user last typed into the filters of a live list, and searches for it. False when there was
    /// nothing, or it cannot be searched for now.
    bool searchAgain();
    /// Runs `body`, which changes a record and takes it over into the rows: they are not older for that.
    void takingOver(const std::function<void()> &body);
    /// The window is used anew: the next Enter in a filter only searches.
    void forgetSearch();

    ResultGrid &grid() const { return *grid_; }
    /// Null without a letter bar.
    LetterBar *letters() const { return letters_; }
    /// The filters' inputs in the order of the declaration.
    QList<QWidget *> filterInputs() const;
    /// What the filters ask for at the moment.
    QVariantList asked() const;
    /// Width of the window in which columns of `width` altogether, in pixels, are seen whole.
    int widthFor(int width) const;

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    void follow();
    void tablesChanged(const QStringList &tables);
    void refresh();
    QVariantMap typed() const;
    void keepTyped();
    void createFilterBar(const ButtonMaker &buttons, QVBoxLayout *layout);
    void addFilter(Filter *filter, QHBoxLayout *line);
    void createLetterBar(QVBoxLayout *layout);

    ListSpec spec_;
    data::Connection &connection_;
    QList<Filter *> filters_;
    ResultGrid *grid_;
    LetterBar *letters_ = nullptr;
    ListFooter *footer_;
    ListKeys *keys_;
    QTimer typing_;     // runs while more keys may come
    QTimer refreshing_; // runs until the event that changed something is over
    QStringList tables_;
    std::pair<QString, QVariantList> last_; // clause and values of the rows that are shown
    QVariantMap kept_;                      // what was typed into the filters when it was last kept
    bool shown_ = false;
};

} // namespace ui
