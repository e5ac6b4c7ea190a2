#pragma once
#include "host/transfer/ImportPlan.h"

#include <QDialog>

#include <memory>

class QCheckBox;
class QComboBox;
class QFormLayout;
class QLabel;
class QLineEdit;
class QPushButton;
class QTableWidget;
namespace ui {
class ElidedLabel;
class ResultGrid;
} // namespace ui

namespace host {

/// "Importa da CSV": file, how it is read, which column goes to which field, the first rows, and what is wrong with
/// it. Nothing is written while anything is.
class ImportDialog : public QDialog
{
    Q_OBJECT

public:
    /// Imports into the database of `connection`, which stays unused while the records are written.
    ImportDialog(data::Connection &connection, QWidget *owner);
    ~ImportDialog() override;

private:
    QWidget *createFilePart();
    QWidget *createMappingPart();
    QWidget *createRightPart();
    QWidget *createButtons();
    QComboBox *addChoice(const QString &name, const QStringList &captions);

    const ImportTarget &target() const;
    void targetChosen();
    void chooseFile();
    void openFile(const QString &path);
    void readContent();
    void splitHeader();
    void createMapping();
    void proposeMapping();
    void showPreview();
    void check();
    ImportOptions options() const;
    void runImport();

    data::Connection &connection_;
    QList<ImportTarget> targets_;
    std::unique_ptr<ImportLookups> lookups_;
    QByteArray content_;
    QList<CsvRecord> records_; ///< all of the file
    QList<CsvRecord> rows_;    ///< without the header line
    QStringList headers_;
    ImportPlan plan_;
    QString readFailure_;

    QComboBox *targetChoice_ = nullptr;
    QComboBox *separatorChoice_ = nullptr;
    QComboBox *encodingChoice_ = nullptr;
    QLineEdit *fileName_ = nullptr;
    QCheckBox *hasHeader_ = nullptr;
    QCheckBox *updateExisting_ = nullptr;
    QFormLayout *mapping_ = nullptr;
    QList<QComboBox *> columnChoices_; ///< one per field of the target
    QTableWidget *preview_ = nullptr;
    ui::ResultGrid *problems_ = nullptr;
    ui::ElidedLabel *status_ = nullptr;
    QPushButton *import_ = nullptr;
};

/// Shows the dialog.
void importFromCsv(QWidget *owner, data::Connection &connection);

} // namespace host
