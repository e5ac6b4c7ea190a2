#pragma once
#include "platform/ui/RegisterSpec.h"

#include <QHash>

namespace ui {

class TextField;

/// The entry form of a register, made from its declaration.
class RegisterEntry : public EntryForm
{
    Q_OBJECT

public:
    RegisterEntry(const RegisterSpec &spec, data::Connection &connection, QWidget *owner);
    /// The same over a data set of the caller's, which selects by the register's key.
    RegisterEntry(const RegisterSpec &spec, data::DataSet &record, QWidget *owner);
    /// Ends the declaration, behind what a derived form added, and starts a new record.
    void finish();
    /// What no record of the register may lack: code and name.
    QString recordName() const override;

protected:
    /// The text typed for `column`, without blanks at its ends unless they count.
    QString textOf(const QString &column) const;
    QWidget *page(const QString &title) const { return pagesByTitle_.value(title); }
    /// The unique text as it is stored; empty for a new record.
    const QString &storedText() const { return loadedText_; }
    void resetDetails() override;
    void clearDetails() override;
    void loadDetails() override;
    void recordSaved() override;
    void writeComputed(data::DataSet &record) const override;
    QVariant detailState() const override { return loadedText_; }
    void restoreDetails(const QVariant &state) override { loadedText_ = state.toString(); }
    void recordMissing() override;
    bool deleteStored(int id) override;

private:
    void createGroup(const RegisterGroup &group);
    static void placeInGroup(const RegisterGroup &group, const RegisterField &spec, Field *field, QGridLayout *grid);
    Field *createField(const RegisterField &field, QWidget *parent);
    void declareChecks();
    void declareDoubts();
    bool isDuplicate() const;
    bool renamesUsedRecord() const;

    RegisterSpec spec_;
    QHash<QString, QWidget *> pagesByTitle_;
    QHash<QString, TextField *> texts_;       // by column
    QHash<QString, DropDownField *> lookups_; // by column
    QString loadedText_;                      // of the unique column
};

} // namespace ui
