#pragma once
#include "magazzino/MMGUtils.h"
#include "magazzino/documents/StoredRows.h"
#include "magazzino/ui/DocumentCommands.h"
#include "magazzino/ui/DocumentGrid.h"
#include "magazzino/ui/MMGInserimento.h"
#include "platform/data/DataSet.h"
#include "platform/ui/EntryForm.h"
#include "platform/ui/Fields.h"
#include "platform/ui/PickInput.h"

#include <QLabel>

class DocumentEntryLine;
class DocumentStockLine;
struct ScorteDi;

/// The form of a document that moves stock: number and date, header pages, rows, notes. Saving writes the header,
/// rewrites all rows and for each article row one stock movement, in one transaction.
class TMMGInserimentoDocumento : public TMMGInserimento<ui::EntryForm>
{
    Q_OBJECT

public:
    /// `behaviour` tells closing question and failed saves; the rest of the form's own comes from `kind`.
    TMMGInserimentoDocumento(const DocumentKind &kind, ui::EntryFormSpec behaviour, QWidget *owner);

    /// Recomputes row amounts and the shown totals.
    DocumentTotals AggiornaTotaliDocumento();
    /// Empties the rows grid to its headers.
    void CreaGrigliaVuotaRigheDocumento();
    /// Fits columns and rows of the rows grid to its width, whenever that changes.
    void RidimensionaGrigliaRigheDocumento();
    /// Gives the form the size at which it opens, and its least one.
    virtual void RidimensionaForm();
    DocumentGrid &grid() const { return *grid_; }
    QString recordName() const override;
    /// "Duplica": makes a new document of the stored one, with today's date and number, the prices of today or its own.
    void duplica();

protected:
    /// The header's page, filled by the concrete form between the constructor and finishLayout().
    QWidget *generalPage() const { return generalPage_; }
    /// What tells the document from others of its kind.
    DocumentHead head() const { return {IdRecord(), numero(), documentDate()}; }
    int numero() const { return number_->value(); }
    QDate documentDate() const { return date_->date(); }

    /// Adds rows and notes pages and the commands, then starts a new document.
    void finishLayout();

    /// Refuses a save with `text` while `missing()` is true. Enter in the header leads to `input` while that is so.
    void require(QWidget *input, std::function<bool()> missing, const QString &text);
    /// The input beside the button of a chooser whose dialog `choose` opens; `take` gets the key of what was typed.
    static ui::PickInput *createPick(const QString &name, const ui::PickSource &source,
                                     const std::function<void(int)> &take, const std::function<void()> &choose,
                                     QWidget *box);
    /// Enter in the header: to the next thing that a save requires and that is missing, then to the rows.
    void followUp(ui::PickInput *input) const;

    /// Code of the customer of an issue; empty for none.
    virtual QString customerCode() const { return {}; }
    /// Name of the customer or supplier shown; empty for none.
    virtual QString counterpartName() const = 0;
    /// A customer or supplier was chosen: what its last document had is offered.
    void counterpartChosen(const QString &code);
    /// What was read with the document that is being loaded.
    const BesideRows &besideRows() const { return beside_; }
    /// What is shown is no longer the document that was printed.
    void forgetPrinted();
    /// What "Come l'ultima volta" fills in, each with the column of its text.
    virtual QList<std::pair<ui::Field *, QString>> asLastTime() const = 0;
    /// It did.
    virtual void lastTimeTaken() {}
    /// What became of the document that was copied is not true of its copy: clears such fields.
    virtual void leaveOutOfCopy() {}
    /// Customer or supplier, where the kind's documents go to both.
    virtual std::optional<int> counterpartType() const { return {}; }

    bool eventFilter(QObject *object, QEvent *event) override;
    void resetDetails() override;
    void clearDetails() override;
    void recordMissing() override;
    data::DataSet *details() const override;
    void readFurther() override;
    void loadDetails() override;
    bool finishEditing() override;
    void prepareSave() override;
    void writeComputed(data::DataSet &record) const override;
    void writeDetails() override;
    void recordSaved() override;
    QVariant detailState() const override;
    void restoreDetails(const QVariant &state) override;
    std::optional<ui::DraftTitle> draftTitle() const override;
    bool deleteStored(int id) override { return deleteDocument(kind_, this, id); }

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
    QList<ui::Command> rowCommands();
    void createHeading();
    QLabel *createReadOnlyHint();
    QLabel *createPrintedHint();
    void showPrinted(const ImprontaDocumento &stored);
    void printedElsewhere(const QString &table, int id);
    void readPrinted();
    void showRight(bool granted);
    void createNotesPage();
    QWidget *createTotals();
    QLabel *createTotal(const DocumentTotal &total, QWidget *box);
    void createEntryLine(QWidget *page);
    void createStockLine(QWidget *page);
    QWidget *createReaderSwitch(QWidget *page);
    ScorteDi stockOf();
    void startEntry();
    void goOn();
    QWidget *createLastTime();
    void offerLastTime();
    void takeLastTime();
    void startCopyOf(QList<DocumentRow> rows, bool currentPrices);
    void fillCopy(int number, const QList<DocumentRow> &rows);
    void createCopyCommands();
    void copiaRighe();
    void incollaRighe();
    void appendRows(const QList<DocumentRow> &rows);
    void addRow(const DocumentRow &row);
    bool addEntered(const DocumentRow &row, bool scanned);
    void addChosen(const QString &tipo, const QString &action);
    void aggiungiArticolo();
    void aggiungiServizio();
    void aggiungiTesto();
    void aggiungiNonImponibile();
    void eliminaRiga();
    void spostaRiga(int step);
    void cellEdited();
    void cellRefused(const QString &text, bool unreadable);
    void rowsChanged();
    bool savedForPrinting();
    void addPrintCommands();
    DocumentTotals computeTotals();
    void createBeside();
    void goBeside(int step);
    void placeInMenu();
    void showTotals(const std::function<double(const DocumentTotal &)> &amountOf);

    const DocumentKind &kind_;
    ui::IntegerField *number_ = nullptr;
    ui::DateField *date_ = nullptr;
    QWidget *generalPage_ = nullptr;
    DocumentGrid *grid_ = nullptr;
    DocumentEntryLine *entry_ = nullptr;
    DocumentStockLine *stock_ = nullptr;
    std::optional<bool> seesInvoices_; // asked for once
    ui::MemoField *notes_ = nullptr;
    QList<std::pair<DocumentTotal, QLabel *>> totalLabels_;
    QLabel *readOnly_ = nullptr; ///< only where saving needs a right
    QLabel *printedLabel_ = nullptr;
    std::optional<StampaFatta> printed_; ///< the last time that the document shown was
    DocumentTotals totals_;
    QHash<int, TAliquotaIVA> rates_; ///< of the rows, as the totals were last computed with them
    QList<std::pair<QWidget *, std::function<bool()>>> required_; // in the order in which they are asked for
    std::unique_ptr<data::DataSet> lastTime_;                     // stands on the counterpart's last document
    // Of the document that is being loaded
    BesideRows beside_;
    bool mayEdit_ = true;
};
