#pragma once
#include <QDate>
#include <QHash>
#include <QList>
#include <QVariant>

/// What an electronic invoice is made from.
namespace fatturapa {

/// A row of a table: values by column. A table's missing row is an empty one.
class Record
{
public:
    Record() = default;
    explicit Record(QHash<QString, QVariant> valori)
        : valori_(std::move(valori))
    {
    }

    bool isEmpty() const { return valori_.isEmpty(); }
    /// NULL and a column that there is not read as empty, 0 or an invalid date.
    QString testo(const QString &colonna) const { return valori_.value(colonna).toString().trimmed(); }
    int intero(const QString &colonna) const { return valori_.value(colonna).toInt(); }
    /// In hundredths.
    qint64 centesimi(const QString &colonna) const;
    double numero(const QString &colonna) const { return valori_.value(colonna).toDouble(); }
    bool flag(const QString &colonna) const;
    QDate data(const QString &colonna) const { return valori_.value(colonna).toDate(); }
    QTime ora(const QString &colonna) const { return valori_.value(colonna).toTime(); }
    bool isNull(const QString &colonna) const { return valori_.value(colonna).isNull(); }

private:
    QHash<QString, QVariant> valori_;
};

/// The choices that the options keep.
struct Opzioni
{
    QString naturaNonImponibile = QStringLiteral("N1");
    QString naturaEsente = QStringLiteral("N4");
    QString notaEsente;                        ///< legal reference of an exempt invoice
    QString suffisso = QStringLiteral("/ACC"); ///< behind the number
    bool numerazioneUnica = false;             ///< accompanying and sales invoices draw from one sequence
};

/// An invoice as it is stored, with the rows of the registers that it names.
struct Dati
{
    Record testata;
    QList<Record> righe; ///< in their order
    Record azienda;
    Record cliente;
    Record vettore;
    Record tipoPagamento;
    QHash<int, Record> aliquote; ///< by IDALIQUOTA_IVA
    Opzioni opzioni;
    bool numeroInVendita = false; ///< a sales invoice of that year has the number
    bool numeroDoppio = false;    ///< another accompanying invoice of that year has it
    QDate oggi;
    QString progressivo; ///< up to five letters or digits, of this file alone
};

} // namespace fatturapa
