#pragma once
#include "host/registers/RegisterSpec.h"
#include "platform/ui/EntryForm.h"

#include <QHash>

namespace ui {
class DropDownField;
class TextField;
} // namespace ui

namespace host {

/// The entry form of a register, made from its declaration.
class RegisterEntry : public ui::EntryForm
{
    Q_OBJECT

public:
    RegisterEntry(const RegisterSpec &spec, data::Connection &connection, QWidget *owner);
    /// Ends the declaration, behind what a derived form added, and starts a new record.
    void finish();

protected:
    /// The text typed for `column`, without blanks at its ends.
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
    ui::Field *createField(const RegisterField &field, QWidget *parent);
    void declareChecks();
    void declareDoubts();
    bool isDuplicate() const;
    bool renamesUsedRecord() const;

    RegisterSpec spec_;
    QHash<QString, QWidget *> pagesByTitle_;
    QHash<QString, ui::TextField *> texts_;       // by column
    QHash<QString, ui::DropDownField *> lookups_; // by column
    QString loadedText_;                          // of the unique column
};

} // namespace host
