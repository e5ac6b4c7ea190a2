#include "magazzino/ui/IncollaRighe.h"

#include "magazzino/documents/Catalogo.h"
#include "platform/core/Lists.h"
#include "platform/core/Translation.h"
#include "platform/ui/Dialogs.h"
#include "platform/ui/FormDialog.h"
#include "platform/ui/ResultGrid.h"

#include <QPushButton>

using namespace Qt::StringLiterals;

namespace {

/// Makes the rows of one document.
class Finder
{
public:
    Finder(const DocumentKind &kind, const DocumentRowsModel &model)
        : kind_(kind)
        , model_(model)
    {
    }

    RigaIncollata find(const RigaLetta &read) const
    {
        RigaIncollata pasted{.letta = read, .esito = read.problema};
        double pieces = 1;
        if (pasted.esito.isEmpty())
            pasted.riga = rowOf(read, pieces, pasted.esito);
        if (pasted.riga && !takeNumbers(read, pieces, *pasted.riga, pasted.esito))
            pasted.riga.reset();
        return pasted;
    }

private:
    std::optional<DocumentRow> rowOf(const RigaLetta &read, double &pieces, QString &refusal) const
    {
        const RowCommandCaptions &rows = kind_.captions.rows;
        if (read.tipo == tipoRiga::testo || read.tipo == tipoRiga::nonImponibile) {
            if ((read.tipo == tipoRiga::testo ? rows.testo : rows.nonImponibile).isEmpty()) {
                refusal = core::tr("Questo documento non ha righe di questo tipo.");
                return {};
            }
            if (read.tipo == tipoRiga::testo)
                return DocumentRow{.tipo = read.tipo, .descrizione = read.descrizione};
            return DocumentRow{.tipo = read.tipo,
                               .descrizione = read.descrizione,
                               .costo = 0,
                               .prezzo = 0,
                               .quantita = 1,
                               .importo = 0};
        }
        std::optional<DocumentRow> row = rowOfCode(read, pieces);
        if (!row)
            refusal = core::tr("Codice non trovato.");
        else if (!read.descrizione.isEmpty())
            row->descrizione = read.descrizione;
        return row;
    }

    std::optional<DocumentRow> rowOfCode(const RigaLetta &read, double &pieces) const
    {
        for (const QString &tipo : {tipoRiga::articolo, tipoRiga::servizio}) {
            if ((!read.tipo.isEmpty() && read.tipo != tipo) ||
                (tipo == tipoRiga::servizio && kind_.captions.rows.servizio.isEmpty()))
                continue;
            // A row of a document tells its article by its own code; who writes a list may have the barcodes.
            const Catalogo catalogue(tipo);
            const CodiceTrovato found =
                read.tipo.isEmpty() ? catalogue.trova(read.codice) : CodiceTrovato{catalogue.trovaCodice(read.codice)};
            if (found.id <= 0)
                continue;
            pieces = found.pezzi;
            return rigaDi(tipo, found.id);
        }
        return {};
    }

    bool takeNumbers(const RigaLetta &read, double pieces, DocumentRow &row, QString &refusal) const
    {
        if (row.tipo == tipoRiga::testo)
            return true;
        const bool atCost = kind_.unitPrice == &DocumentRow::costo;
        // A spreadsheet has one price, and it is the one that is typed here.
        const auto price = atCost && (read.costo || !read.tipo.isEmpty()) ? read.costo : read.prezzo;
        const double quantity = read.quantita.value_or(1) * pieces;
        return take(&DocumentRow::quantita, read.quantita || pieces != 1 ? std::optional(quantity) : std::nullopt, row,
                    refusal) &&
               take(RowMember(kind_.unitPrice), price, row, refusal) &&
               take(&DocumentRow::sconto, read.sconto, row, refusal);
    }

    bool take(const RowMember &member, const std::optional<double> &number, DocumentRow &row, QString &refusal) const
    {
        const int column = model_.indexOf(member);
        if (!number || column < 0)
            return true;
        refusal = model_.tryNumber(row, model_.columns()[column], DocumentRowsModel::typedNumber(*number)).text;
        return refusal.isEmpty();
    }

    const DocumentKind &kind_;
    const DocumentRowsModel &model_;
};

data::Rows rowsOf(const QList<RigaIncollata> &pasted, const DocumentKind &kind)
{
    QList<QVariantList> rows;
    for (const RigaIncollata &row : pasted) {
        const auto number = [&row](const std::optional<double> &value) {
            return row.riga && value ? QVariant(*value) : QVariant();
        };
        const DocumentRow shown = row.riga.value_or(DocumentRow());
        rows.append({rows.size() + 1, row.letta.linea, row.letta.codice,
                     row.riga ? shown.descrizione : row.letta.descrizione, number(shown.quantita),
                     number(shown.*kind.unitPrice), row.riga ? core::tr("Trovata") : row.esito});
    }
    return {{{u"ID"_s}, {u"RIGA"_s}, {u"CODICE"_s}, {u"DESCRIZIONE"_s}, {u"QUANTITA"_s}, {u"PREZZO"_s}, {u"ESITO"_s}},
            std::move(rows)};
}

QList<ui::ListColumn> columnsOf(const DocumentKind &kind)
{
    using Width = ui::ListColumn::Width;
    using Display = ui::ListColumn::Display;
    const bool atCost = kind.unitPrice == &DocumentRow::costo;
    return {{core::tr("Riga"), u"RIGA"_s, 50, Width::Pixels, Display::Integer},
            {u"Codice"_s, u"CODICE"_s, 130},
            {u"Descrizione"_s, u"DESCRIZIONE"_s, 0, Width::Rest},
            {u"Q.tà"_s, u"QUANTITA"_s, 80, Width::Pixels, Display::Quantity},
            {atCost ? u"Costo"_s : u"Prezzo"_s, u"PREZZO"_s, 90, Width::Pixels, Display::Currency},
            {core::tr("Esito"), u"ESITO"_s, 250}};
}

QString summary(qsizetype found, qsizetype missing)
{
    const QString first = found == 1 ? core::tr("1 riga trovata") : core::tr("%1 righe trovate").arg(found);
    if (missing == 0)
        return first + u'.';
    return first + (missing == 1 ? core::tr(", 1 no: non sarà aggiunta.")
                                 : core::tr(", %1 no: non saranno aggiunte.").arg(missing));
}

} // namespace

QList<RigaIncollata> trovaRighe(const QList<RigaLetta> &lette, const DocumentKind &kind, const DocumentRowsModel &model)
{
    const Finder finder(kind, model);
    return core::mapped(lette, [&finder](const RigaLetta &read) { return finder.find(read); });
}

bool confermaRighe(const QList<RigaIncollata> &righe, const DocumentKind &kind, QWidget *owner)
{
    const qsizetype found =
        std::count_if(righe.begin(), righe.end(), [](const RigaIncollata &row) { return row.riga.has_value(); });
    ui::FormDialog dialog(core::tr("Incolla righe"), owner);
    dialog.setObjectName(u"MMGIncollaRighe"_s);
    dialog.addText(summary(found, righe.size() - found));
    auto *grid = new ui::ResultGrid(u"ID"_s, columnsOf(kind), &dialog);
    grid->setObjectName(u"gridRigheIncollate"_s);
    grid->setRows(rowsOf(righe, kind));
    constexpr QSize least(860, 260);
    grid->setMinimumSize(least);
    dialog.addRow({}, grid);
    dialog.okButton()->setText(found == 1 ? core::tr("Aggiungi 1 riga") : core::tr("Aggiungi %1 righe").arg(found));
    dialog.okButton()->setEnabled(found > 0);
    return ui::runModal(dialog) == QDialog::Accepted;
}
