#include "magazzino/ui/EntryLine.h"

#include "platform/core/Barcode.h"
#include "platform/core/Messages.h"
#include "platform/core/Translation.h"
#include "platform/ui/Bell.h"
#include "platform/ui/CallAfter.h"
#include "platform/ui/Controls.h"

#include <QApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QScrollBar>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype shortestScan = 3;
// So short a burst may be fingers in a field of numbers.
constexpr qsizetype shortestScanOfNumbers = 6;
// The database is asked for the pieces on hand once the fingers rest.
constexpr int onHandDelay = 150; // ms
// Between a cell's edge and its text.
constexpr int textMargin = 4;

bool isEnd(const QKeyEvent &key)
{
    return key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter ||
           (key.key() == Qt::Key_Tab && key.modifiers() == Qt::NoModifier);
}

// Between the values of a scanned code. No input takes the character itself.
bool isSeparator(const QKeyEvent &key)
{
    return key.text() == core::groupSeparator;
}

bool types(const QKeyEvent &key)
{
    return isSeparator(key) || (!key.text().isEmpty() && key.text().front().isPrint() &&
                                !(key.modifiers() & (Qt::ControlModifier | Qt::AltModifier)));
}

} // namespace

DocumentEntryLine::DocumentEntryLine(const DocumentKind &kind, DocumentGrid &grid, EntryLineUse use, QWidget *parent)
    : QWidget(parent)
    , kind_(kind)
    , grid_(grid)
    , use_(std::move(use))
    , hasServices_(!kind.captions.rows.servizio.isEmpty())
    , articles_(tipoRiga::articolo)
    , services_(tipoRiga::servizio)
{
    setObjectName(u"rigaInserimento"_s);
    createInputs();
    ui::callAfter(onHandLater_, onHandDelay, this, [this] { core::guarded(this, [this] { showOnHand(); }); });
    connect(grid_.horizontalHeader(), &QHeaderView::sectionResized, this, &DocumentEntryLine::placeInputs);
    connect(grid_.horizontalScrollBar(), &QScrollBar::valueChanged, this, &DocumentEntryLine::placeInputs);
    setFocusProxy(code_);
    setFixedHeight(code_->sizeHint().height());
    clear();
}

EntryList &DocumentEntryLine::list()
{
    if (list_)
        return *list_;
    list_ = new EntryList(numbers_[1].column.header, this);
    connect(list_, &EntryList::picked, this, [this] { core::guarded(this, [this] { takeOffered(false); }); });
    return *list_;
}

void DocumentEntryLine::hideList()
{
    if (list_)
        list_->hide();
}

void DocumentEntryLine::createInputs()
{
    code_ = ui::named(u"txtRigaCodice"_s, new ui::LineEdit(this));
    code_->setToolTip(
        core::tr("Codice, parte del codice o parole della descrizione; 12*CODICE indica anche la quantità.") +
        (hasServices_ ? core::tr(" / cerca tra i servizi.") : u""_s) + core::tr(" F4 apre l'elenco degli articoli."));
    code_->installEventFilter(this);
    connect(code_, &QLineEdit::textEdited, this, [this] { core::guarded(this, [this] { codeEdited(); }); });
    description_ = createLabel(u"lblRigaDescrizione"_s, &DocumentRow::descrizione);
    amount_ = createLabel(u"lblRigaImporto"_s, &DocumentRow::importo);
    unit_ = createLabel(u"lblRigaUM"_s, &DocumentRow::um);
    const QList<std::pair<QString, RowMember>> inputs = {{u"txtRigaQuantita"_s, &DocumentRow::quantita},
                                                         {u"txtRigaPrezzo"_s, RowMember(kind_.unitPrice)},
                                                         {u"txtRigaSconto"_s, &DocumentRow::sconto}};
    for (const auto &[name, member] : inputs) {
        const int column = grid_.rowsModel().indexOf(member);
        if (column < 0)
            continue;
        auto *edit = ui::named(name, new ui::LineEdit(this));
        edit->setPointTypesComma(true);
        edit->setAlignment(Qt::AlignRight);
        edit->installEventFilter(this);
        connect(edit, &QLineEdit::textEdited, this, &DocumentEntryLine::showAmount);
        numbers_.append({grid_.rowsModel().columns()[column], edit});
    }
}

QLabel *DocumentEntryLine::createLabel(const QString &name, const RowMember &member)
{
    auto *label = ui::named(name, new ui::ElidedLabel(this));
    const bool left = grid_.rowsModel().columns()[grid_.rowsModel().indexOf(member)].isLeftAligned();
    label->setAlignment(Qt::AlignVCenter | (left ? Qt::AlignLeft : Qt::AlignRight));
    return label;
}

void DocumentEntryLine::place(QWidget *widget, int column)
{
    const int origin = grid_.viewport()->mapToGlobal(QPoint()).x() - mapToGlobal(QPoint()).x();
    QRect area(origin + grid_.columnViewportPosition(column), 0, grid_.columnWidth(column), height());
    if (qobject_cast<QLabel *>(widget))
        area.adjust(textMargin, 0, -textMargin, 0);
    widget->setGeometry(area);
}

void DocumentEntryLine::placeInputs()
{
    const DocumentRowsModel &model = grid_.rowsModel();
    place(code_, model.indexOf(&DocumentRow::codice));
    place(description_, model.indexOf(&DocumentRow::descrizione));
    place(amount_, model.indexOf(&DocumentRow::importo));
    place(unit_, model.indexOf(&DocumentRow::um));
    for (const NumberInput &number : std::as_const(numbers_))
        place(number.edit, model.indexOf(number.column.member));
}

void DocumentEntryLine::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    placeInputs();
}

void DocumentEntryLine::hideEvent(QHideEvent *event)
{
    QWidget::hideEvent(event);
    hideList();
}

void DocumentEntryLine::clear()
{
    code_->clear();
    hideList();
    timing_.forget();
    forgetRow();
    showHint(core::tr("Codice o parole della descrizione, poi Invio"));
}

void DocumentEntryLine::start()
{
    code_->setFocus();
    code_->selectAll();
}

void DocumentEntryLine::forgetRow()
{
    if (row_)
        Q_EMIT articleTaken({});
    row_.reset();
    for (const NumberInput &number : std::as_const(numbers_)) {
        number.edit->clear();
        number.edit->setEnabled(false);
    }
    amount_->clear();
    unit_->clear();
    code_->setPalette({});
}

void DocumentEntryLine::showHint(const QString &text)
{
    description_->setText(text);
    description_->setPalette({});
    description_->setForegroundRole(row_ ? QPalette::WindowText : QPalette::PlaceholderText);
}

void DocumentEntryLine::showRefusal(const QString &text)
{
    ui::ringBell();
    // The code is selected, so that the next one is typed over it.
    const QPalette red = ui::refusedPalette(palette());
    description_->setForegroundRole(QPalette::WindowText);
    description_->setPalette(red);
    description_->setText(text);
    if (!row_)
        code_->setPalette(red);
}

// Keys

bool DocumentEntryLine::eventFilter(QObject *object, QEvent *event)
{
    if (event->type() == QEvent::FocusIn && object == code_) {
        // Before the first key, and outside of an event that moves the focus.
        QTimer::singleShot(0, this, [this] { core::guarded(this, [this] { loadCatalogue(); }); });
    } else if (event->type() == QEvent::FocusOut && object == code_) {
        hideList();
    } else if (event->type() == QEvent::KeyPress) {
        auto &key = static_cast<QKeyEvent &>(*event);
        if (types(key))
            keyTyped(key, static_cast<QLineEdit &>(*object));
        if (isSeparator(key))
            return true;
        bool taken = true;
        core::guarded(this, [&] {
            if (object == code_) {
                taken = codeKey(key);
                return;
            }
            for (qsizetype i = 0; i < numbers_.size(); ++i) {
                if (object == numbers_[i].edit)
                    taken = numberKey(i, key);
            }
        });
        return taken;
    }
    return QWidget::eventFilter(object, event);
}

void DocumentEntryLine::keyTyped(const QKeyEvent &key, QLineEdit &input)
{
    const QString text = isSeparator(key) ? QString(core::shownSeparator) : key.text();
    timing_.pressed(key, text, input.text());
    if (isSeparator(key) && &input == code_)
        code_->insert(text);
}

bool DocumentEntryLine::codeKey(QKeyEvent &key)
{
    if (list_ && list_->handle(key.key()))
        return true;
    if (key.key() == Qt::Key_Down && (!list_ || list_->isHidden()) && !row_) {
        showOffers();
        return true;
    }
    if (key.key() == Qt::Key_Escape && !code_->text().isEmpty()) {
        clear();
        return true;
    }
    if (key.key() == Qt::Key_F4 && key.modifiers() == Qt::NoModifier) {
        choose();
        return true;
    }
    if (!isEnd(key))
        return false;
    if (code_->text().trimmed().isEmpty())
        return key.key() != Qt::Key_Tab;
    // What was looked for in the list was no scan.
    const bool scanned = reader_ ? !list_ || list_->isHidden()
                                 : timing_.endsScan(key, shortestScan) && code_->text().endsWith(timing_.scanned());
    takeTyped(scanned, key.modifiers().testFlag(Qt::ControlModifier));
    return true;
}

bool DocumentEntryLine::numberKey(qsizetype position, QKeyEvent &key)
{
    if (key.key() == Qt::Key_Escape) {
        clear();
        start();
        return true;
    }
    if (!isEnd(key))
        return false;
    if (timing_.endsScan(key, shortestScanOfNumbers))
        return addScanned(numbers_[position]);
    // The discount is rare: Tab goes there, Enter in the price already adds the row.
    const qsizetype last = key.key() == Qt::Key_Tab ? numbers_.size() - 1 : 1;
    if (position >= last || key.modifiers().testFlag(Qt::ControlModifier)) {
        add(false);
    } else {
        numbers_[position + 1].edit->setFocus();
        numbers_[position + 1].edit->selectAll();
    }
    return true;
}

// The reader was used while a number was waited for: the row is added with the number as it stood, then the scan.
bool DocumentEntryLine::addScanned(const NumberInput &into)
{
    const QString code = timing_.scanned();
    into.edit->setText(timing_.before());
    timing_.forget();
    if (add(false)) {
        code_->setText(code);
        takeTyped(true, true);
    } else {
        ui::ringBell();
    }
    return true;
}

void DocumentEntryLine::choose()
{
    hideList();
    if (const auto chosen = use_.choose())
        take(tipoRiga::articolo, *chosen, read(code_->text()).quantity);
    else
        start();
}
