#pragma once
#include "magazzino/fatturapa/Dati.h"
#include "magazzino/fatturapa/Fattura.h"

namespace fatturapa {

struct Composizione
{
    Fattura fattura;
    QList<Riscontro> riscontri;
};

/// The electronic invoice that `dati` make, and what was found on the way: texts that cannot be written, what is
/// missing, what had to be left out. Reads nothing else; the same data give the same result.
Composizione componi(const Dati &dati);

/// The parts, which componi() puts together; each fills its part of `fattura`.
///@{
void componiCedente(const Dati &dati, Composizione &composizione);
void componiCessionario(const Dati &dati, Composizione &composizione);
void componiTrasporto(const Dati &dati, Composizione &composizione);
void componiRighe(const Dati &dati, Composizione &composizione);
/// From the rows made before.
void componiRiepiloghi(const Dati &dati, Composizione &composizione);
///@}

/// Where a text comes from, for what is found in it.
struct Origine
{
    Luogo luogo = Luogo::Fattura;
    QString campo;
    QString nome; ///< "la città del cliente"
    int riga = 0;
};

/// `testo` as the file takes it, at most `massimo` characters; what cannot be written, or is cut, is found.
QString scrivibile(const QString &testo, qsizetype massimo, const Origine &origine, QList<Riscontro> &riscontri);

/// Adds `testo` to the invoice's reasons.
void aggiungiCausali(const QString &testo, const Origine &origine, Composizione &composizione);

/// ISO code of a country: `iso` where it is one, else what `nome`, in Italian, stands for; Italy for none. Empty for a
/// country that is not known.
QString codiceNazione(const QString &nome, const QString &iso);

} // namespace fatturapa
