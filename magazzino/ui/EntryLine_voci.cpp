// What the line of a row being typed looks up, takes and adds.
#include "magazzino/ui/EntryLine.h"
#include "platform/core/Format.h"
#include "platform/core/NumberReader.h"
#include "platform/core/Translation.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype mostOffers = 50;
constexpr QChar servicePrefix = u'/';

} // namespace

Catalogo &DocumentEntryLine::catalogue(const QString &tipo)
{
    return tipo == tipoRiga::servizio ? services_ : articles_;
}

void DocumentEntryLine::loadCatalogue()
{
    articles_.refresh();
    if (services_.isLoaded())
        services_.refresh();
}

void DocumentEntryLine::codeEdited()
{
    forgetRow();
    showHint({});
    // What was looked for in the list is typed over: from here on it is a scan.
    if (reader_)
        hideList();
    else
        showOffers();
}

DocumentEntryLine::Typed DocumentEntryLine::read(const QString &text) const
{
    static const QRegularExpression quantityFirst(u"^\\s*([\\d.,]+)\\s*\\*\\s*(.*)$"_s);
    Typed typed{.text = text.trimmed(), .tipo = tipoRiga::articolo};
    if (const auto match = quantityFirst.match(text); match.hasMatch()) {
        typed.quantity = match.captured(1);
        typed.text = match.captured(2).trimmed();
    }
    if (hasServices_ && typed.text.startsWith(servicePrefix)) {
        typed.tipo = tipoRiga::servizio;
        typed.text = typed.text.mid(1).trimmed();
    }
    return typed;
}

// The quantity counts what the code stands for.
bool DocumentEntryLine::find(Typed &typed)
{
    const CodiceTrovato found = catalogue(typed.tipo).trova(typed.text);
    typed.id = found.id;
    if (found.id <= 0)
        return false;
    const auto quantity = core::readNumber(typed.quantity.isEmpty() ? u"1"_s : typed.quantity);
    // What is no number is refused as it was typed.
    if (found.pezzi != 1 && quantity)
        typed.quantity = DocumentRowsModel::typedNumber(quantity->value * found.pezzi);
    return true;
}

// A whole code goes before everything that could be read into it.
DocumentEntryLine::Typed DocumentEntryLine::resolve(const QString &text)
{
    static const QRegularExpression quantityThenCode(u"^\\s*([\\d.,]+)\\s+(\\S.*)$"_s);
    Typed whole{.text = text.trimmed(), .tipo = tipoRiga::articolo};
    if (find(whole))
        return whole;
    Typed typed = read(text);
    if (typed.text != whole.text && find(typed))
        return typed;
    if (const auto match = quantityThenCode.match(text); match.hasMatch()) {
        Typed second{.quantity = match.captured(1), .text = match.captured(2).trimmed(), .tipo = tipoRiga::articolo};
        if (find(second))
            return second;
    }
    return typed;
}

QList<EntryOffer> DocumentEntryLine::offersFor(const Typed &typed)
{
    Catalogo &source = catalogue(typed.tipo);
    if (!source.isLoaded())
        source.refresh();
    const bool atCost = kind_.unitPrice == &DocumentRow::costo;
    QList<EntryOffer> offers;
    for (const VoceCatalogo &voce : source.find(typed.text, mostOffers))
        offers.append({typed.tipo, voce.id, voce.codice, voce.descrizione, voce.um,
                       core::formatCurrency(atCost ? voce.costo : voce.prezzo)});
    return offers;
}

void DocumentEntryLine::showOffers()
{
    const Typed typed = read(code_->text());
    QList<EntryOffer> offers = offersFor(typed);
    const bool asText = offers.isEmpty() && hasServices_ && !typed.text.isEmpty();
    if (asText)
        offers.append({tipoRiga::testo, -1, {}, core::tr("Riga di testo: %1").arg(code_->text().trimmed()), {}, {}});
    list().offer(offers, *code_, asText);
    if (!offers.isEmpty() && typed.tipo == tipoRiga::articolo)
        onHandLater_.start();
}

void DocumentEntryLine::showOnHand()
{
    if (!list_ || !list_->isVisible())
        return;
    QStringList codes;
    for (const EntryOffer &offered : list_->offers()) {
        if (offered.tipo == tipoRiga::articolo)
            codes.append(offered.codice);
    }
    list_->setOnHand(GiacenzeAttuali(codes));
}

// Taking and adding

void DocumentEntryLine::takeTyped(bool scanned, bool addAtOnce)
{
    const QString text = code_->text();
    const Typed typed = resolve(text);
    if (typed.id > 0 && take(typed.tipo, typed.id, typed.quantity)) {
        if (scanned || addAtOnce)
            add(scanned);
        return;
    }
    if (!scanned && list_ && list_->current()) {
        takeOffered(addAtOnce);
        return;
    }
    hideList();
    showRefusal(core::tr("Non trovato: %1").arg(text.trimmed()));
    start();
    timing_.forget();
}

void DocumentEntryLine::takeOffered(bool addAtOnce)
{
    const EntryOffer *current = list_ ? list_->current() : nullptr;
    if (!current)
        return;
    const EntryOffer offered = *current;
    if (offered.tipo == tipoRiga::testo)
        addText(code_->text().trimmed());
    else if (take(offered.tipo, offered.id, read(code_->text()).quantity) && addAtOnce)
        add(false);
}

bool DocumentEntryLine::take(const QString &tipo, int id, const QString &quantity)
{
    const auto row = use_.rowOf(tipo, id);
    hideList();
    timing_.forget();
    if (!row)
        return false;
    forgetRow();
    row_ = row;
    if (tipo == tipoRiga::articolo)
        Q_EMIT articleTaken(row->codice);
    code_->setText(row->codice);
    showHint(row->descrizione);
    unit_->setText(row->um);
    for (const NumberInput &number : std::as_const(numbers_)) {
        const auto value = *row_.*numberOf(number.column);
        number.edit->setText(value ? core::plainNumber(*value) : QString());
        number.edit->setEnabled(true);
    }
    if (!quantity.isEmpty())
        numbers_.first().edit->setText(quantity);
    showAmount();
    ui::LineEdit *next = numbers_[quantity.isEmpty() ? 0 : 1].edit;
    next->setFocus();
    next->selectAll();
    return true;
}

void DocumentEntryLine::addText(const QString &text)
{
    if (use_.add({.tipo = tipoRiga::testo, .descrizione = text}, false))
        clear();
    start();
}

// An empty discount is none, as in the row that the article makes; the other numbers must be there.
bool DocumentEntryLine::readNumbers(DocumentRow &row, bool refusing)
{
    for (const NumberInput &number : std::as_const(numbers_)) {
        const QString text = number.edit->text().trimmed();
        if (text.isEmpty() && number.column.member == RowMember(&DocumentRow::sconto)) {
            row.sconto.reset();
            continue;
        }
        const CellRefusal refusal = grid_.rowsModel().tryNumber(row, number.column, text);
        if (refusal.text.isEmpty())
            continue;
        if (refusing) {
            showRefusal(refusal.text);
            number.edit->setFocus();
            number.edit->selectAll();
        }
        return false;
    }
    return true;
}

void DocumentEntryLine::showAmount()
{
    if (!row_)
        return;
    QList<DocumentRow> rows = {*row_};
    amount_->clear();
    if (!readNumbers(rows.first(), false))
        return;
    recomputeDocument(rows, kind_.unitPrice, [](int) { return std::nullopt; });
    amount_->setText(core::formatCurrency(rows.first().importo.value_or(0)));
}

bool DocumentEntryLine::add(bool scanned)
{
    if (!row_)
        return false;
    DocumentRow row = *row_;
    if (!readNumbers(row, true) || !use_.add(row, scanned))
        return false;
    clear();
    start();
    return true;
}
