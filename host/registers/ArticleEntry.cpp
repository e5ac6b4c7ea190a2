#include "host/registers/ArticleEntry.h"

#include "host/registers/Registers.h"
#include "platform/core/Barcode.h"
#include "platform/core/Lists.h"
#include "platform/core/Translation.h"
#include "platform/data/DataSet.h"
#include "platform/data/SqlText.h"

#include <QLabel>
#include <QSet>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace host {

namespace {

const QString articleKey = u"IDANA_MAGA"_s;

Barcode barcodeOf(const data::Rows &rows, qsizetype row)
{
    return {rows.text(row, u"CODICE"), piecesOf(rows.number(row, u"PEZZI"))};
}

} // namespace

ArticleEntry::ArticleEntry(data::Connection &connection, QWidget *owner)
    : ui::RegisterEntry(articles(), connection, owner)
    , stored_(new data::DataSet(&connection, this))
{
    stored_->setCommandText(u"SELECT * FROM BARCODE_ARTICOLI WHERE IDANA_MAGA = :IDANA_MAGA"_s);
    stored_->setUpdateTarget({u"BARCODE_ARTICOLI"_s, u"IDBARCODE_ARTICOLI"_s});
    createBarcodes();
    refuseIf([this] { return anyIsTaken(); },
             core::tr("Un codice a barre è scritto due volte\n\ro è già di un altro articolo!"));
    askIf([this] { return anyIsDoubtful(); },
          core::tr("Codici a barre: il carattere di controllo non corrisponde.\n\rSalvare comunque?"));
    finish();
}

void ArticleEntry::createBarcodes()
{
    QWidget *page = addPage(core::tr(" Codici a barre "));
    auto *layout = new QVBoxLayout(page);
    auto *help = new QLabel(core::tr("EAN, UPC o codici liberi: si scrivono o si leggono uno dopo l'altro. Per ognuno "
                                     "i pezzi per cui vale, 6 per una confezione da 6."),
                            page);
    help->setWordWrap(true);
    barcodes_ = new BarcodeGrid(page);
    layout->addWidget(help);
    layout->addWidget(barcodes_, 1);
    connect(barcodes_, &BarcodeGrid::edited, this, &ArticleEntry::DataChanged);
    connect(barcodes_, &BarcodeGrid::typing, this, &ArticleEntry::SetTyping);
}

void ArticleEntry::show(const QString &code)
{
    for (int i = 0; i < pages()->count(); ++i) {
        if (pages()->widget(i)->isAncestorOf(barcodes_))
            pages()->setCurrentIndex(i);
    }
    barcodes_->show(code);
    barcodes_->setFocus();
}

bool ArticleEntry::anyIsTaken()
{
    QSet<QString> seen;
    for (const Barcode &barcode : barcodes_->barcodes()) {
        const QString identity = barcodeIdentity(barcode.code);
        if (seen.contains(identity) || isBarcodeOfAnother(connection(), barcode.code, storedKey())) {
            show(barcode.code);
            return true;
        }
        seen.insert(identity);
    }
    return false;
}

bool ArticleEntry::anyIsDoubtful()
{
    for (const Barcode &barcode : barcodes_->barcodes()) {
        const bool isKnown = std::any_of(loaded_.cbegin(), loaded_.cend(),
                                         [&barcode](const Barcode &known) { return known.code == barcode.code; });
        if (!isKnown && !core::checkDigitFits(barcode.code)) {
            show(barcode.code);
            return true;
        }
    }
    return false;
}

bool ArticleEntry::finishEditing()
{
    barcodes_->finishEditing();
    return true;
}

void ArticleEntry::clearDetails()
{
    ui::RegisterEntry::clearDetails();
    loaded_.clear();
    barcodes_->setBarcodes({});
}

void ArticleEntry::loadDetails()
{
    ui::RegisterEntry::loadDetails();
    loaded_.clear();
    for (int row = 0; row < stored_->recordCount(); ++row)
        loaded_.append(barcodeOf(stored_->rows(), row));
    barcodes_->setBarcodes(loaded_);
}

void ArticleEntry::writeDetails()
{
    connection().run(u"DELETE FROM BARCODE_ARTICOLI WHERE IDANA_MAGA = ?"_s, {IdRecord()});
    if (!stored_->isOpen()) {
        stored_->setParameter(articleKey, IdRecord());
        stored_->open();
    }
    stored_->forgetRows();
    const QList<Barcode> all = barcodes_->barcodes();
    for (const Barcode &barcode : all) {
        stored_->append();
        stored_->setValue(u"CODICE"_s, barcode.code);
        stored_->setValue(articleKey, IdRecord());
        stored_->setValue(u"PEZZI"_s, barcode.pieces);
        stored_->post();
    }
    stored_->updateBatch();
    loaded_ = all;
}

QVariant ArticleEntry::detailState() const
{
    const auto stateOf = [](const Barcode &barcode) { return QVariant(QVariantList{barcode.code, barcode.pieces}); };
    return QVariantList{ui::RegisterEntry::detailState(), core::mapped(barcodes_->barcodes(), stateOf)};
}

void ArticleEntry::restoreDetails(const QVariant &state)
{
    ui::RegisterEntry::restoreDetails(state.toList().value(0));
    QList<Barcode> all;
    for (const QVariant &code : state.toList().value(1).toList())
        all.append({code.toList().value(0).toString(), code.toList().value(1).toDouble()});
    barcodes_->setBarcodes(all);
}

} // namespace host
