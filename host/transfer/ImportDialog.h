#pragma once
#include "host/transfer/ImportPlan.h"
#include "platform/core/CsvFile.h"
#include "platform/core/Progress.h"
#include "platform/ui/Controls.h"
#include "platform/ui/ResultGrid.h"

#include <QDialog>

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <memory>

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
    /// How the file is read, as the controls say.
    struct Reading
    {
        core::CsvFile &file;
        core::CsvFormat format;
        bool hasHeader;

        RecordSource records(core::Progress &progress) const;
    };

    QWidget *createFilePart();
    void createRecordOptions();
    QWidget *createMappingPart();
    QWidget *createRightPart();
    QWidget *createButtons();
    QComboBox *addChoice(const QString &name, const QStringList &captions);

    const ImportTarget &target() const;
    void targetChosen();
    void chooseFile();
    void openFile(const QString &path);
    void readBeginning();
    void readAgain();
    void splitHeader();
    void createMapping();
    void proposeMapping();
    void showPreview();
    void check();
    void showProblems();
    bool work(const core::CsvFile &file, const std::function<void(core::Progress &)> &body);
    core::CsvFormat format() const;
    Reading reading() const;
    ImportOptions options() const;
    void runImport();

    data::Connection &connection_;
    QList<ImportTarget> targets_;
    std::unique_ptr<ImportLookups> lookups_;
    std::unique_ptr<core::CsvFile> file_; ///< none before one was chosen
    QList<core::CsvRecord> beginning_;    ///< the first records, with the header line
    QStringList headers_;
    ImportPlan plan_;
    QString readFailure_; ///< of the beginning
    bool checked_ = true; ///< to the end, so that `plan_` counts

    QComboBox *targetChoice_ = nullptr;
    QComboBox *separatorChoice_ = nullptr;
    QComboBox *encodingChoice_ = nullptr;
    QLineEdit *fileName_ = nullptr;
    QCheckBox *hasHeader_ = nullptr;
    QCheckBox *updateExisting_ = nullptr;
    QCheckBox *createMissing_ = nullptr;
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
