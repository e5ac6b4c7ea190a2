#include "magazzino/ui/EntryList.h"

#include "magazzino/documents/DocumentRow.h"
#include "platform/core/Format.h"

#include <QHeaderView>
#include <QScreen>

using namespace Qt::StringLiterals;

namespace {

constexpr int amountColumn = 3;
constexpr int onHandColumn = 4;
constexpr int listWidth = 680;
constexpr int visibleRows = 10;

} // namespace

EntryList::EntryList(const QString &amountHeader, QWidget *parent)
    : QTableWidget(0, 5, parent)
{
    setObjectName(u"gridRigaElenco"_s);
    setWindowFlags(Qt::ToolTip);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setFocusPolicy(Qt::NoFocus);
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setEditTriggers(NoEditTriggers);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setShowGrid(false);
    setWordWrap(false);
    setHorizontalHeaderLabels({u"Codice"_s, u"Descrizione"_s, u"U.M."_s, amountHeader, u"Giacenza"_s});
    verticalHeader()->hide();
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
    horizontalHeader()->setHighlightSections(false);
    const QList<int> widths = {130, 0, 50, 100, 90};
    for (int column = 0; column < widths.size(); ++column) {
        horizontalHeader()->setSectionResizeMode(column, widths[column] ? QHeaderView::Fixed : QHeaderView::Stretch);
        if (widths[column])
            setColumnWidth(column, widths[column]);
        horizontalHeaderItem(column)->setTextAlignment(Qt::AlignVCenter |
                                                       (column < amountColumn ? Qt::AlignLeft : Qt::AlignRight));
    }
    connect(this, &QTableWidget::cellClicked, this, &EntryList::picked);
}

void EntryList::offer(const QList<EntryOffer> &offers, const QWidget &field, bool unchosen)
{
    offers_ = offers;
    setRowCount(static_cast<int>(offers.size()));
    for (int row = 0; row < offers.size(); ++row) {
        const EntryOffer &offered = offers[row];
        const QStringList texts = {offered.codice, offered.descrizione, offered.um, offered.importo, {}};
        for (int column = 0; column < texts.size(); ++column) {
            auto *cell = new QTableWidgetItem(texts[column]);
            cell->setTextAlignment(Qt::AlignVCenter | (column < amountColumn ? Qt::AlignLeft : Qt::AlignRight));
            setItem(row, column, cell);
        }
    }
    if (offers.isEmpty()) {
        hide();
        return;
    }
    if (unchosen)
        setCurrentCell(-1, -1);
    else
        setCurrentCell(0, 0);
    scrollToTop();
    showAt(field);
}

void EntryList::showAt(const QWidget &field)
{
    const int rows = std::min(visibleRows, rowCount());
    const int height =
        horizontalHeader()->sizeHint().height() + rows * verticalHeader()->defaultSectionSize() + 2 * frameWidth();
    const QRect room = field.screen()->availableGeometry();
    QRect place(field.mapToGlobal(QPoint(0, field.height())), QSize(std::min(listWidth, room.width()), height));
    if (place.bottom() > room.bottom())
        place.moveBottom(field.mapToGlobal(QPoint()).y() - 1);
    place.moveLeft(std::max(room.left(), std::min(place.left(), room.right() - place.width())));
    setGeometry(place);
    show();
}

const EntryOffer *EntryList::current() const
{
    return isVisible() && currentRow() >= 0 ? &offers_[currentRow()] : nullptr;
}

void EntryList::setOnHand(const QHash<QString, double> &onHand)
{
    for (int row = 0; row < offers_.size(); ++row) {
        if (offers_[row].tipo == tipoRiga::articolo)
            item(row, onHandColumn)->setText(core::formatNumber(onHand.value(offers_[row].codice)));
    }
}

bool EntryList::handle(int key)
{
    const QHash<int, int> steps = {
        {Qt::Key_Down, 1}, {Qt::Key_Up, -1}, {Qt::Key_PageDown, visibleRows}, {Qt::Key_PageUp, -visibleRows}};
    if (!isVisible() || !steps.contains(key))
        return false;
    setCurrentCell(std::clamp(currentRow() + steps[key], 0, rowCount() - 1), 0);
    return true;
}
