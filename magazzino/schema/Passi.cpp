#include "magazzino/schema/Passi.h"

#include "magazzino/MMGUtils.h"
#include "magazzino/schema/Catalogo.h"
#include "platform/core/Format.h"
#include "platform/data/SqlText.h"

using namespace Qt::StringLiterals;

namespace schema {

namespace {

const QString primaVersione = u"1.0.0"_s;

QStringList righeIniziali(QStringView tabella)
{
    if (tabella != u"CAUSALI_MAGA")
        return {};
    return {u"INSERT INTO CAUSALI_MAGA VALUES(1, "_s + data::quoted(u"Carico"_s) + u')',
            u"INSERT INTO CAUSALI_MAGA VALUES(2, "_s + data::quoted(u"Scarico"_s) + u')'};
}

QString aggiungi(const QString &tabella, const QString &colonna, const QString &tipo, const QString &predefinito)
{
    return u"ALTER TABLE %1 ADD %2 %3 DEFAULT %4 NOT NULL"_s.arg(tabella, colonna, tipo, predefinito);
}

// Foreign VAT numbers have up to 13 characters.
QString allargaPartitaIVA(const QString &tabella, const QString &colonna)
{
    return u"ALTER TABLE %1 ALTER COLUMN %2 TYPE VARCHAR(13)"_s.arg(tabella, colonna);
}

QString falso()
{
    return data::quoted(core::flagText(false));
}

// Every load takes the article's cost of today. An article that is gone yields nulls, which the columns refuse: then
// the whole step fails, as intended.
QString ricalcoloCarichi()
{
    return u"UPDATE MOVI_MAGA SET COSTO = (SELECT ANA_MAGA.COSTO FROM ANA_MAGA WHERE ANA_MAGA.CODICE = "
           "MOVI_MAGA.CODICE ), VALORE = (SELECT ANA_MAGA.COSTO FROM ANA_MAGA WHERE ANA_MAGA.CODICE = "
           "MOVI_MAGA.CODICE ), VALORE_IMPORTO = ((SELECT ANA_MAGA.COSTO FROM ANA_MAGA WHERE ANA_MAGA.CODICE = "
           "MOVI_MAGA.CODICE )  * MOVI_MAGA.QUANTITA ) WHERE TIPO_MOVIMENTO = "_s +
           data::quoted(u"Carico"_s);
}

// The module's name has three z's in the rows of existing databases; it stays that way.
QStringList diritti()
{
    QStringList comandi;
    for (const QString &diritto :
         {u"Fatture acc. (visualizzazione)"_s, u"Fatture acc. (modifica)"_s, u"Fatture acc. (eliminazione)"_s})
        comandi.append(u"INSERT INTO ABILITAZIONI_UTENTE VALUES(0, "_s + data::quoted(diritto) + u", "_s +
                       data::quoted(u"Magazzzino"_s) + u')');
    return comandi;
}

QList<Step> creazioni()
{
    QList<Step> elenco;
    for (const Tabella &tabella : catalogo())
        elenco.append({.object = tabella.nome.toString(),
                       .statements = definizione(tabella),
                       .toVersion = primaVersione,
                       .following = righeIniziali(tabella.nome)});
    return elenco;
}

QList<Step> aggiornamenti()
{
    const QString ddt = u"DDT_SCARICO"_s;
    const QString fatture = u"FATT_ACC"_s;
    const QString bolle = u"BOLLE_CARICO"_s;
    const QString fornitori = u"FORNITORI"_s;
    const auto cliente = QString::number(static_cast<int>(TTipoAnagrafica::Cliente));
    return {
        {ddt, primaVersione, {aggiungi(ddt, u"TIPO_ANAGRAFICA"_s, u"INTEGER"_s, cliente)}, u"1.0.1"_s},
        {.object = u"MOVI_MAGA"_s,
         .fromVersion = primaVersione,
         .statements = {ricalcoloCarichi()},
         .toVersion = u"1.0.1"_s,
         .action = [](data::Connection &) { RivalorizzaTuttiGliScarichi(); }},
        {fatture, primaVersione, {aggiungi(fatture, u"NOTIFICATO"_s, u"VARCHAR(5)"_s, falso())}, u"1.1.0"_s},
        {fornitori, primaVersione, {allargaPartitaIVA(fornitori, u"PARTITAIVA"_s)}, u"1.1.0"_s},
        {fatture, u"1.1.0"_s, {allargaPartitaIVA(fatture, u"CLI_PARTITAIVA"_s)}, u"1.2.0"_s},
        {bolle, primaVersione, {allargaPartitaIVA(bolle, u"FOR_PARTITAIVA"_s)}, u"1.1.0"_s},
        {ddt, u"1.0.1"_s, {allargaPartitaIVA(ddt, u"CLI_PARTITAIVA"_s)}, u"1.2.0"_s},
        {u"MMG_ABILITAZIONI"_s, {}, diritti(), primaVersione},
        {fatture, u"1.2.0"_s, {aggiungi(fatture, u"IVA_ESENTE"_s, u"VARCHAR(5)"_s, falso())}, u"1.3.0"_s},
        {fatture, u"1.3.0"_s, {u"UPDATE FATT_ACC SET IVA_ESENTE = "_s + falso()}, u"1.4.0"_s},
    };
}

} // namespace

const QList<Step> &passi()
{
    static const QList<Step> tutti = creazioni() + aggiornamenti();
    return tutti;
}

} // namespace schema
