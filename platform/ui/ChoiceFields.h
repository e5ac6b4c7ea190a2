#pragma once
#include "platform/core/CodeText.h"
#include "platform/data/Connection.h"
#include "platform/ui/Controls.h"
#include "platform/ui/Field.h"
#include "platform/ui/PickInput.h"

#include <QComboBox>

#include <functional>
#include <optional>

namespace ui {

/// What the user picked: a key and the text that stands for it.
struct Choice
{
    int key = -1;
    QString text;
};

struct ChoiceSpec
{
    QString name;       ///< of the label that shows the choice
    QString buttonName; ///< of the button that opens the dialog
    QString label;
    QString keyColumn;
    QString textColumn;
    std::function<std::optional<Choice>()> choose; ///< nothing when the user cancelled
    std::function<QString(int)> textOf = {};       ///< looks the text up where no column stores it (empty textColumn)
    bool clearable = false;                        ///< offers a button that takes the choice back
    /// Offers an input to type in beside the button; none while it has no columns. The first one's text is the
    /// choice's.
    PickSource source = {};
};

/// A record picked in a dialog: a label ("..." for none) and a button. Stored as key and text, both NULL for none.
class ChoiceField : public Field
{
public:
    /// Label and buttons as `spec` tells, nothing chosen.
    ChoiceField(const ChoiceSpec &spec, QWidget *parent);

    /// 0 or less when nothing was chosen.
    int key() const { return choice_.key; }
    /// Text of what was chosen; empty for none.
    const QString &text() const { return choice_.text; }
    /// The input beside the button; null where there is none.
    PickInput *input() const { return input_; }
    /// Shows a choice; a key of 0 or less is none.
    void setChoice(const Choice &choice);

    QWidget *widget() const override { return box_; }
    void clear() override { setChoice({}); }
    void load(const data::DataSet &record) override;
    void write(data::DataSet &record) const override;
    QVariant state() const override;
    void restore(const QVariant &state) override;

private:
    PickInput *createInput();
    void runDialog();

    QWidget *box_;
    ElidedLabel *label_;
    PickInput *input_ = nullptr;
    ChoiceSpec spec_;
    Choice choice_;
};

struct DropDownSpec
{
    QString name;
    QString label;
    QString keyColumn;
    QString textColumn = {}; ///< none while the record stores the key alone
    QString sql;             ///< lists keys and texts under the same column names as the record's
};

/// A drop-down list over a table. It may be left empty, then key and text are NULL. A stored choice that the table no
/// longer has, or has under another text, is kept as it was stored.
class DropDownField : public Field
{
public:
    /// `tableKey` and `tableText` are the list query's columns.
    DropDownField(const DropDownSpec &spec, QString tableKey, QString tableText, QWidget *parent);

    /// Key of the entry chosen, -1 for none.
    int key() const;
    /// Fills the list from the database. An untouched stored choice stays as it was stored, another one while the
    /// table has it.
    void fill(data::Connection &connection);

    QWidget *widget() const override { return box_; }
    void clear() override;
    void load(const data::DataSet &record) override;
    void write(data::DataSet &record) const override;
    void written() override;
    QVariant state() const override;
    void restore(const QVariant &state) override;

private:
    bool showsStored() const;
    void showStored();

    QComboBox *box_;
    DropDownSpec spec_;
    QString tableKey_;
    QString tableText_;
    Choice stored_;          // as it was loaded or written
    bool addedItem_ = false; // the last item is not the table's but the stored choice
};

struct CodeSpec
{
    QString name;
    QString label;
    QString column;
    QList<core::CodeText> codes;
};

/// A drop-down list of fixed codes with their meaning. It may be left empty, then the code is NULL. A stored code that
/// is none of them stands there as it was stored until another one is chosen.
class CodeField : public ColumnField
{
public:
    /// The field that `spec` describes, nothing chosen.
    CodeField(const CodeSpec &spec, QWidget *parent);

    /// The code chosen; empty for none.
    QString code() const { return box_->currentData().toString(); }

    QWidget *widget() const override { return box_; }
    void clear() override { show({}); }

protected:
    void show(const QVariant &stored) override;
    QVariant toStore() const override { return code().isEmpty() ? QVariant() : code(); }

private:
    void addItem(const QString &code, const QString &text);

    ComboBox *box_;
    int known_; // items that are no unknown code
};

/// One read-only label of a copied record. Labels of the same line stand side by side in the order of their
/// declaration.
struct RecordLabel
{
    QString name;
    QString caption;
    QString column;
    int line = 0;
    int characters = 6;    ///< that must stay readable at the smallest size; also its share of the line
    bool required = false; ///< its column takes no NULL, so that the empty text is stored
};

/// The data of another record copied into this one (a customer into a delivery note), so that a later change of the
/// master record never changes the copy. Each label shows "..." while empty and is then stored as NULL.
class RecordLabels : public Field
{
public:
    /// Labels in the order of their declaration, all empty.
    RecordLabels(const QList<RecordLabel> &labels, QWidget *parent);

    /// Shows `values` in the order of the declaration; empty ones show "...".
    void setValues(const QStringList &values);
    /// The label's text, "..." when empty.
    QString text(int index) const { return labels_[index]->text(); }
    /// Has the label with this index, counted from 0, no text?
    bool isEmpty(int index) const { return labels_[index]->text() == nothingChosen; }

    QWidget *widget() const override { return box_; }
    void clear() override { setValues({}); }
    void load(const data::DataSet &record) override;
    void write(data::DataSet &record) const override;
    QVariant state() const override;
    void restore(const QVariant &state) override;

private:
    QWidget *box_;
    QList<RecordLabel> specs_;
    QList<ElidedLabel *> labels_;
};

} // namespace ui
