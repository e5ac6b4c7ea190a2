#pragma once
#include "platform/report/Document.h"
#include "platform/report/Report.h"
#include "platform/ui/ChildForm.h"

#include <QLabel>
#include <QListWidget>
#include <QPointer>
#include <QScrollArea>
#include <QSpinBox>
#include <QToolButton>

class QComboBox;

namespace host {

/// One page of a document, drawn as it will be printed.
class PageView : public QWidget
{
    Q_OBJECT

public:
    /// Shows the first page.
    explicit PageView(std::shared_ptr<const report::Document> document, QWidget *parent);

    /// Takes the place of the document shown, at the next showPage().
    void setDocument(std::shared_ptr<const report::Document> document) { document_ = std::move(document); }
    /// Shows a page, counted from 0, of the copy with this label.
    void showPage(int index, const QString &copy = {});
    /// Dots of the screen for a millimetre of paper.
    void setDotsPerMm(double dots);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    std::shared_ptr<const report::Document> document_;
    report::Page page_;
    double dotsPerMm_ = 3;
};

/// The preview of a report: pages, zoom, printing, saving as PDF. It keeps its own document, so it stays as it is when
/// other reports are run.
class PreviewWindow : public ui::ChildForm
{
    Q_OBJECT

public:
    /// `system` asks for the PDF file and shows the print setup.
    PreviewWindow(report::ReportSystem &system, QWidget *parent);

    /// What is shown.
    const report::Document &document() const { return *document_; }
    /// The record that is shown, as the system named it; empty for a list.
    const QString &subject() const { return subject_.record; }
    /// What is to be printed: the record with the copies that the user has chosen.
    report::Subject chosen() const;
    /// Shows what `system` has laid out now of the same record, at the page and in the size that were shown.
    void showDocument(const report::ReportSystem &system);
    /// Shows the page `index`, counted from 0; the nearest one when there is none of that number.
    void goToPage(int index);

    enum class Fit
    {
        Width,
        Page,
        None
    };
    /// `percent` of the paper's own size counts for Fit::None only.
    void setZoom(Fit fit, int percent = 100);

protected:
    void resizeEvent(QResizeEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void declareCommands();
    QToolBar *createToolBar();
    void createCopies(QToolBar *bar);
    void offerCopies();
    void createRemarks();
    void showRemarks(const QStringList &remarks);
    void countPages();
    void stepZoom(int direction);
    void applyZoom();
    void savePdf();
    void printPages();

    QPointer<report::ReportSystem> system_;
    std::shared_ptr<const report::Document> document_;
    report::Subject subject_;
    PageView *view_;
    QScrollArea *scroll_;
    QSpinBox *pageEdit_ = nullptr;
    QLabel *zoomLabel_ = nullptr;
    QComboBox *copies_ = nullptr;
    QAction *copiesPlace_ = nullptr; // in the tool bar
    QToolButton *remarksButton_ = nullptr;
    QListWidget *remarksList_ = nullptr;
    int page_ = 0;
    Fit fit_ = Fit::Width;
    int percent_ = 100;
};

} // namespace host
