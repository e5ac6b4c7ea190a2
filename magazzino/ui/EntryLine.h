#pragma once
#include "magazzino/documents/Catalogo.h"
#include "magazzino/ui/DocumentGrid.h"
#include "magazzino/ui/EntryList.h"
#include "magazzino/ui/ScanTiming.h"
#include "platform/ui/LineEdit.h"

#include <QLabel>
#include <QTimer>

class QLineEdit;

/// What the line of a row being typed needs of its document.
struct EntryLineUse
{
    /// The row that an article or a service makes, by its key; nothing when it does not exist (any more).
    std::function<std::optional<DocumentRow>(const QString &tipo, int id)> rowOf;
    /// Lets the user choose an article in its selection dialog; nothing when that was cancelled.
    std::function<std::optional<int>()> choose;
    /// Adds the row to the document; a row that was scanned may raise the quantity of one that is there. False when the
    /// document does not take it now.
    std::function<bool(const DocumentRow &row, bool scanned)> add;
};

/// The line under the rows of a document in which the next row is typed, in the grid's columns: code (or a part of it,
/// or words of the description), quantity, price, discount. It is no row: nothing of it is counted or saved before
/// Enter adds it.
///
/// In the code field "12*CODE" and, before a whole code, "12 CODE" set the quantity; where the document has services,
/// "/" offers them, and a text that nothing is found for is offered as a text row. What a barcode reader types is
/// added at once, the pieces that a barcode stands for with it.
class DocumentEntryLine : public QWidget
{
    Q_OBJECT

public:
    DocumentEntryLine(const DocumentKind &kind, DocumentGrid &grid, EntryLineUse use, QWidget *parent);

    /// Forgets what was typed.
    void clear();
    /// Puts the cursor into the code field.
    void start();
    /// Takes for a scan whatever is typed in the code field, for readers that are as slow as fingers.
    void setReader(bool on) { reader_ = on; }

Q_SIGNALS:
    /// The row being typed has the article with this code; empty for none any more.
    void articleTaken(const QString &codice);

protected:
    bool eventFilter(QObject *object, QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    /// A number of the row being typed.
    struct NumberInput
    {
        RowColumn column;
        ui::LineEdit *edit;
    };
    /// What stands in the code field.
    struct Typed
    {
        QString quantity; ///< empty for none
        QString text;     ///< code or words, without the prefix of services
        QString tipo;     ///< of what is looked for
        int id = -1;      ///< of the one with that code
    };

    void createInputs();
    QLabel *createLabel(const QString &name, const RowMember &member);
    EntryList &list();
    void hideList();
    void placeInputs();
    void place(QWidget *widget, int column);
    Catalogo &catalogue(const QString &tipo);
    void loadCatalogue();
    void keyTyped(const QKeyEvent &key, QLineEdit &input);
    bool codeKey(QKeyEvent &key);
    bool numberKey(qsizetype position, QKeyEvent &key);
    bool addScanned(const NumberInput &into);
    void codeEdited();
    void showOffers();
    void showOnHand();
    QList<EntryOffer> offersFor(const Typed &typed);
    bool find(Typed &typed);
    Typed read(const QString &text) const;
    Typed resolve(const QString &text);
    void takeTyped(bool scanned, bool addAtOnce);
    void takeOffered(bool addAtOnce);
    void choose();
    bool take(const QString &tipo, int id, const QString &quantity);
    void addText(const QString &text);
    bool add(bool scanned);
    bool readNumbers(DocumentRow &row, bool refusing);
    void showAmount();
    void forgetRow();
    void showRefusal(const QString &text);
    void showHint(const QString &text);

    const DocumentKind &kind_;
    DocumentGrid &grid_;
    EntryLineUse use_;
    bool hasServices_;
    Catalogo articles_;
    Catalogo services_;
    ui::LineEdit *code_ = nullptr;
    QLabel *description_ = nullptr;
    QLabel *amount_ = nullptr;
    QLabel *unit_ = nullptr;
    QList<NumberInput> numbers_; // in the order in which they are typed
    EntryList *list_ = nullptr;  ///< once something was offered
    QTimer onHandLater_;
    ScanTiming timing_;
    bool reader_ = false;
    std::optional<DocumentRow> row_; // taken, not yet added
};
