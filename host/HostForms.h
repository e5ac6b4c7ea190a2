#pragma once
#include <QString>
#include <QWidget>

/// Runs a command of the host by its name ("actInserimentoClienti"), with the right that it takes. Returns the form
/// that it shows; null when it was refused or has none.
QWidget *OpenHostForm(const QString &action);
