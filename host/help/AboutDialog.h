#pragma once
#include <QDialog>

namespace host {

/// "Informazioni su Corvane": versions, licence and the folder of the log, to be copied for whoever helps.
class AboutDialog : public QDialog
{
    Q_OBJECT

public:
    /// `database` as the user sees it.
    AboutDialog(const QString &database, QWidget *owner);
};

} // namespace host
