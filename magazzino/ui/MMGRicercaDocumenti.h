#pragma once
#include "magazzino/ui/DocumentCommands.h"
#include "magazzino/ui/MMGRicercaBase.h"

/// The list of a kind's documents of one year, newest first; `yearCondition` is what stands before the year.
ui::SearchSpec documentList(const DocumentKind &kind, const QString &yearCondition = QStringLiteral("ANNO="));

/// List of the documents of a kind: opens its entry form, prints and deletes what is selected.
class TMMGRicercaDocumenti : public TMMGRicercaBase
{
    Q_OBJECT

public:
    /// `spec` is documentList() with what one kind's list has besides.
    TMMGRicercaDocumenti(const DocumentKind &kind, const ui::SearchSpec &spec, QWidget *owner);

protected:
    void newRecord() override;
    bool deleteRecord(int id) override;

private:
    std::optional<DocumentHead> selectedDocument() const;
    void duplicate();

    const DocumentKind &kind_;
};
