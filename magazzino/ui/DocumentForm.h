#pragma once
#include "host/Corvane3Impl.h"
#include "magazzino/ui/DocumentGrid.h"
#include "magazzino/ui/MMGInserimento.h"
#include "platform/ui/EntryForm.h"
#include "platform/ui/Fields.h"

class QLabel;
struct TMoviMaga;

/// Captions of the row commands; a command with an empty caption does not exist.
struct RowCommandCaptions
{
    QString articolo;
    QString servizio;
    QString testo;
    QString nonImponibile;
    QString elimina;
    QString su;
    QString giu;
};

/// Everything in which one kind of document differs from another.
struct DocumentSpec
{
    const DocumentKind &kind;
    ui::EntryFormSpec form;
    QString headerDataSet; ///< of the module
    QString rowsDataSet;   ///< of the module, by the header's key
    QString rowTable;
    QString rowKey;
    QString rowGenerator;
    QString generalPage; ///< page captions
    QString rowsPage;
    QString notesPage;
    QString gridName;
    RowCommandCaptions rowCommands;
    bool showsTotals = false; ///< and stores them; otherwise the stored totals are 0

    QString saveRight;    ///< named right that saving and starting a new document need; none while empty
    QString documentKind; ///< RIF_DOC_TIPO of the movements
    QString movementKind; ///< TIPO_MOVIMENTO
    int quantitySign = 1; ///< 1 for goods in, -1 for goods out
    QString movementNote; ///< before the document's number

    std::function<int(int anno)> nextNumber;
    std::function<bool(int numero, int anno, int idEscluso)> numberExists;
    std::function<bool(QWidget *owner, int id)> deleteDocument; ///< with its questions; true when it is gone
};

/// The form of a document that moves stock: number and date, header pages, rows, notes. Saving writes the header,
/// rewrites all rows and for each article row one stock movement, in one transaction.
class TMMGInserimentoDocumento : public TMMGInserimento<ui::EntryForm>
{
    Q_OBJECT

public:
    TMMGInserimentoDocumento(const DocumentSpec &spec, QWidget *owner);

    /// Recomputes row amounts and the shown totals.
    DocumentTotals AggiornaTotaliDocumento();
    DocumentGrid &grid() const { return *grid_; }

protected:
    /// The header's page, filled by the concrete form between the constructor and finishLayout().
    QWidget *generalPage() const { return generalPage_; }
    int numero() const { return number_->value(); }
    QDate documentDate() const { return date_->date(); }

    /// Adds rows and notes pages and the commands, then starts a new document. `commands` of the form's tool bar and
    /// menu; an empty name is a separator.
    void finishLayout(const QStringList &commands);

    /// Adds the commands "Stampa" and "Salva in PDF" over the document's print routine (key, PDF file, destination).
    using PrintRoutine = std::function<void(int id, const QString &file, TKxReportDestination destination)>;
    void addPrintCommands(const PrintRoutine &print);

    void resetDetails() override;
    void clearDetails() override;
    void recordMissing() override;
    data::DataSet *details() const override;
    void loadDetails() override;
    bool finishEditing() override;
    void prepareSave() override;
    void writeComputed(data::DataSet &record) const override;
    void writeDetails() override;
    QVariant detailState() const override;
    void restoreDetails(const QVariant &state) override;
    bool deleteStored(int id) override { return spec_.deleteDocument(this, id); }

    /// Value per unit that an article row's movement is booked at, EUR.
    virtual double movementValue(const DocumentRow &row) const = 0;
    /// Completes loaded rows with what their own table does not store.
    virtual void completeLoaded(QList<DocumentRow> &) const {}
    /// Does no VAT arise on the whole document?
    virtual bool isExempt() const { return false; }
    bool mayStartNew() override;
    /// Pages between the rows and the notes.
    virtual void addFurtherPages() {}
    ui::MemoField *notes() const { return notes_; }
    ui::IntegerField *numberField() const { return number_; }
    ui::DateField *dateField() const { return date_; }

private:
    void createRowsPage();
    void createRowCommands(QToolBar *bar);
    QWidget *createTotals();
    void showRight();
    void addRow(const DocumentRow &row);
    /// Appends a row for an article or a service; nothing when it was not found.
    template <typename Voce>
    void addChosen(const QString &tipo, const Voce &voce);
    void aggiungiArticolo();
    void aggiungiServizio();
    void aggiungiTesto();
    void aggiungiNonImponibile();
    bool holdsSaveRight() const;
    void eliminaRiga();
    void spostaRiga(int step);
    void cellEdited();
    void cellRefused(const QString &text, bool unreadable);
    void rowsChanged();
    DocumentRow readRow(const data::DataSet &rows) const;
    void writeRow(data::DataSet &rows, const DocumentRow &row);
    void writeMovement(const DocumentRow &row, int rowKey);
    bool savedForPrinting();
    void showTotals(double imponibile, double imposta, double documento);

    DocumentSpec spec_;
    ui::IntegerField *number_;
    ui::DateField *date_;
    QWidget *generalPage_;
    DocumentGrid *grid_ = nullptr;
    ui::MemoField *notes_ = nullptr;
    QList<QLabel *> totalLabels_;
    QLabel *readOnly_ = nullptr; ///< only where saving needs a right
    DocumentTotals totals_;
};
