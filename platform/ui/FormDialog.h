#pragma once
#include <QDialog>
#include <QFormLayout>

#include <QPushButton>
#include <functional>

namespace ui {

/// A modal dialog of labelled inputs with "OK" (cmdOk) and "Annulla" (cmdAnnulla). Enter in an input accepts.
class FormDialog : public QDialog
{
    Q_OBJECT

public:
    /// An empty dialog; `owner` may be null.
    FormDialog(const QString &title, QWidget *owner);

    /// An input without a label takes the whole width.
    void addRow(const QString &label, QWidget *input);
    /// A paragraph over the whole width.
    void addText(const QString &text);
    /// The button "OK", for whoever switches it off.
    QPushButton *okButton() const { return ok_; }
    /// Runs when the user accepts and every date and number can be read; the dialog stays open when it returns false or
    /// fails, and errors are shown.
    void setCheck(std::function<bool()> check) { check_ = std::move(check); }

    void accept() override;

protected:
    void showEvent(QShowEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    QFormLayout *rows_;
    QPushButton *ok_ = nullptr;
    QPushButton *cancel_ = nullptr;
    std::function<bool()> check_;
};

} // namespace ui
