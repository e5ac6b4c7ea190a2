#pragma once
#include "magazzino/fatturapa/Fattura.h"
#include "magazzino/fatturapa/Ricevute.h"
#include "platform/ui/ResultGrid.h"

#include <QPushButton>
#include <QWidget>

class QLabel;

/// What is to be said of one electronic invoice: what was found in it, and what the exchange system answered.
class RiscontriPanel : public QWidget
{
    Q_OBJECT

public:
    explicit RiscontriPanel(QWidget *parent);

    /// Shows both under `titolo`.
    void mostra(const QString &titolo, const QList<fatturapa::Riscontro> &riscontri,
                const QList<fatturapa::Ricevuta> &ricevute);

Q_SIGNALS:
    /// The user wants to mend it.
    void aperto(const fatturapa::Riscontro &riscontro);

private:
    void apri();

    QList<fatturapa::Riscontro> riscontri_;
    QLabel *titolo_;
    ui::ResultGrid *elenco_;
    QPushButton *apri_;
};
