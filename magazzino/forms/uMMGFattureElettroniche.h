#pragma once
#include "magazzino/ui/LavoriFatture.h"
#include "magazzino/ui/MMGRicercaBase.h"

class RiscontriPanel;

/// The accompanying invoices of a period as electronic ones: what became of each, its file, the exchange system's
/// receipts, and what is to be mended before it can be sent.
class TMMGFattureElettroniche : public TMMGRicercaBase
{
    Q_OBJECT

public:
    explicit TMMGFattureElettroniche(QWidget *owner);

    /// Lists the invoice with key `id` alone, checked and selected.
    Q_INVOKABLE void MostraFattura(int id);

protected:
    void newRecord() override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    void dichiaraComandi();
    void completa(data::Rows &rows) const;
    void completaRiga(QVariantList &riga, const data::Rows &rows) const;
    void mostraRilievi();
    void aggiorna();
    bool puoScrivere();
    QList<int> scelte();
    int unaScelta();

    void controlla();
    void scriviFile();
    void anteprima();
    void segnaInviata();
    void inviaConLaPosta();
    void leggiCartella();
    void leggi(const QStringList &percorsi);

    RiscontriFatture rilievi_; ///< of the invoices that were checked
    RiscontriPanel *pannello_;
    QString cartella_;            ///< of the files written last
    std::function<bool()> cerca_; ///< what is listed
};
