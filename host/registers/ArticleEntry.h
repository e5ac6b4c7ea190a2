#pragma once
#include "host/registers/BarcodeGrid.h"
#include "platform/ui/RegisterEntry.h"

namespace host {

/// The entry form of articles, with their barcodes.
class ArticleEntry : public ui::RegisterEntry
{
    Q_OBJECT

public:
    /// The form over `connection`, for a new article.
    ArticleEntry(data::Connection &connection, QWidget *owner);

protected:
    data::DataSet *details() const override { return stored_; }
    void clearDetails() override;
    void loadDetails() override;
    bool finishEditing() override;
    void writeDetails() override;
    QVariant detailState() const override;
    void restoreDetails(const QVariant &state) override;

private:
    void createBarcodes();
    bool anyIsTaken();
    bool anyIsDoubtful();
    void show(const QString &code);

    data::DataSet *stored_;
    BarcodeGrid *barcodes_ = nullptr;
    QList<Barcode> loaded_; // what was asked about then is not asked about again
};

} // namespace host
