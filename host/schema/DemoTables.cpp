#include "host/schema/DemoTables.h"

using namespace Qt::StringLiterals;

namespace host::demo {

// clang-format off
const QList<Family> &families()
{
    static const QList<Family> all = {
        {u"Ferramenta/Viteria/Viti per legno"_s, u"VIT"_s, u"Vite truciolare zincata testa piana %1 mm (conf. 200)"_s, u"0316:3x16|0420:4x20|0430:4x30|0540:5x40|0660:6x60"_s, u"CF"_s, u"22"_s, 2.1, 7.9, 20},
        {u"Ferramenta/Viteria/Viti autofilettanti"_s, u"VAU"_s, u"Vite autofilettante testa cilindrica %1 mm (conf. 100)"_s, u"2909:2,9x9,5|3513:3,5x13|3919:3,9x19|4825:4,8x25|5538:5,5x38"_s, u"CF"_s, u"22"_s, 1.85, 6.4, 20},
        {u"Ferramenta/Viteria/Bulloni e dadi"_s, u"BUL"_s, u"Bullone testa esagonale zincato con dado M%1"_s, u"0620:6x20|0830:8x30|1040:10x40|1260:12x60|1680:16x80"_s, u"PZ"_s, u"22"_s, 0.09, 1.12, 200},
        {u"Ferramenta/Viteria/Rondelle"_s, u"RON"_s, u"Rondella piana zincata M%1 (conf. 100)"_s, u"0005:5|0006:6|0008:8|0010:10|0012:12"_s, u"CF"_s, u"22"_s, 0.95, 3.6, 15},
        {u"Ferramenta/Fissaggio/Tasselli"_s, u"TAS"_s, u"Tassello in nylon con vite Ø %1 mm (conf. 50)"_s, u"0005:5|0006:6|0008:8|0010:10|0012:12"_s, u"CF"_s, u"22"_s, 2.3, 9.8, 25},
        {u"Ferramenta/Fissaggio/Chiodi"_s, u"CHI"_s, u"Chiodo in acciaio testa piana %1 mm"_s, u"1430:1,4x30|1840:1,8x40|2250:2,2x50|2870:2,8x70|3490:3,4x90"_s, u"KG"_s, u"22"_s, 2.6, 3.4, 10},
        {u"Ferramenta/Fissaggio/Colle e sigillanti"_s, u"COL"_s, u"Colla vinilica %1"_s, u"0100:flacone 100 g|0250:flacone 250 g|0500:barattolo 500 g|1000:barattolo 1 kg|5000:secchio 5 kg"_s, u"PZ"_s, u"22"_s, 1.15, 16.9, 12},
        {u"Ferramenta/Serrature/Cilindri"_s, u"CIL"_s, u"Cilindro europeo ottonato %1 mm con 3 chiavi"_s, u"3030:30-30|3035:30-35|3040:30-40|4040:40-40|4050:40-50"_s, u"PZ"_s, u"22"_s, 7.2, 11.8, 6},
        {u"Ferramenta/Serrature/Lucchetti"_s, u"LUC"_s, u"Lucchetto in ottone arco in acciaio %1 mm"_s, u"0020:20|0030:30|0040:40|0050:50|0060:60"_s, u"PZ"_s, u"22"_s, 2.4, 10.6, 10},
        {u"Ferramenta/Serrature/Maniglie"_s, u"MAN"_s, u"Maniglia per porta con rosetta, %1"_s, u"0001:alluminio|0002:cromo satinato|0003:ottone lucido|0004:nero opaco|0005:ottone anticato"_s, u"PA"_s, u"22"_s, 8.9, 27.5, 4},
        {u"Utensileria/Utensili a mano/Cacciaviti"_s, u"CAC"_s, u"Cacciavite con impugnatura bimateriale %1"_s, u"0301:taglio 3x75|0402:taglio 4x100|0601:croce PH1|0602:croce PH2|0620:torx T20"_s, u"PZ"_s, u"22"_s, 1.9, 3.7, 12},
        {u"Utensileria/Utensili a mano/Martelli"_s, u"MAR"_s, u"Martello da %1"_s, u"0200:carpentiere 200 g|0300:meccanico 300 g|0500:meccanico 500 g|0800:muratore 800 g|1500:mazzetta 1,5 kg"_s, u"PZ"_s, u"22"_s, 4.3, 12.4, 5},
        {u"Utensileria/Utensili a mano/Chiavi e pinze"_s, u"CHV"_s, u"Chiave combinata al cromo vanadio %1 mm"_s, u"0008:8|0010:10|0013:13|0017:17|0019:19"_s, u"PZ"_s, u"22"_s, 1.75, 4.2, 10},
        {u"Utensileria/Utensili a mano/Misurazione"_s, u"FLE"_s, u"Flessometro magnetico con freno %1"_s, u"0002:2 m|0003:3 m|0005:5 m|0008:8 m|0010:10 m"_s, u"PZ"_s, u"22"_s, 1.6, 9.3, 8},
        {u"Utensileria/Elettroutensili/Trapani e avvitatori"_s, u"TRA"_s, u"Trapano avvitatore %1"_s, u"0012:12 V a batteria|0018:18 V a batteria|0055:550 W a percussione|0075:750 W a percussione|0900:900 W tassellatore"_s, u"PZ"_s, u"22"_s, 38.5, 94.0, 2},
        {u"Utensileria/Elettroutensili/Punte"_s, u"PUN"_s, u"Punta HSS per metallo Ø %1 mm"_s, u"0030:3|0040:4|0050:5|0080:8|0100:10"_s, u"PZ"_s, u"22"_s, 0.7, 3.9, 30},
        {u"Utensileria/Elettroutensili/Dischi"_s, u"DIS"_s, u"Disco da taglio per ferro Ø %1 mm"_s, u"0115:115|0125:125|0150:150|0180:180|0230:230"_s, u"PZ"_s, u"22"_s, 0.65, 2.35, 50},
        {u"Casalinghi/Cucina/Pentole"_s, u"PEN"_s, u"Pentola in acciaio inox con coperchio Ø %1 cm"_s, u"0016:16|0018:18|0020:20|0024:24|0028:28"_s, u"PZ"_s, u"22"_s, 11.4, 27.9, 4},
        {u"Casalinghi/Cucina/Coltelli"_s, u"CLT"_s, u"Coltello da cucina, %1"_s, u"0010:spelucchino 10 cm|0013:bistecca 13 cm|0016:pane 16 cm|0020:trinciante 20 cm|0024:affettare 24 cm"_s, u"PZ"_s, u"22"_s, 2.2, 11.6, 6},
        {u"Casalinghi/Cucina/Contenitori"_s, u"CON"_s, u"Contenitore ermetico in vetro %1"_s, u"0035:350 ml|0065:650 ml|0100:1 litro|0150:1,5 litri|0220:2,2 litri"_s, u"PZ"_s, u"22"_s, 2.5, 6.8, 8},
        {u"Casalinghi/Cucina/Ricettari"_s, u"RIC"_s, u"Ricettario \"La cucina di casa\", %1"_s, u"0001:primi piatti|0002:secondi piatti|0003:verdure|0004:dolci|0005:raccolta completa"_s, u"PZ"_s, u"04"_s, 4.1, 14.2, 3},
        {u"Casalinghi/Pulizia/Scope e spazzole"_s, u"SCO"_s, u"Scopa %1"_s, u"0001:per interni|0002:per esterni|0003:di saggina|0004:industriale 40 cm|0005:industriale 60 cm"_s, u"PZ"_s, u"22"_s, 2.1, 9.7, 8},
        {u"Casalinghi/Pulizia/Detergenti"_s, u"DET"_s, u"Detergente per pavimenti, tanica da %1"_s, u"0001:1 litro|0002:2 litri|0005:5 litri|0010:10 litri|0020:20 litri"_s, u"PZ"_s, u"22"_s, 1.3, 16.5, 10},
        {u"Casalinghi/Pulizia/Secchi"_s, u"SEC"_s, u"Secchio in plastica con manico %1"_s, u"0006:6 litri|0010:10 litri|0012:12 litri|0015:15 litri|0020:20 litri"_s, u"PZ"_s, u"22"_s, 1.1, 3.9, 10},
        {u"Giardinaggio/Irrigazione/Tubi"_s, u"TUB"_s, u"Tubo per irrigazione magliato Ø %1"_s, u"0012:1/2\"|0015:5/8\"|0019:3/4\"|0025:1\"|0032:1 1/4\""_s, u"MT"_s, u"22"_s, 0.62, 2.45, 100},
        {u"Giardinaggio/Attrezzi/Forbici e cesoie"_s, u"FOR"_s, u"Forbice da potatura %1"_s, u"0018:18 cm|0020:20 cm|0022:22 cm|0060:a due mani 60 cm|0080:a due mani 80 cm"_s, u"PZ"_s, u"22"_s, 5.4, 24.8, 4},
        {u"Giardinaggio/Attrezzi/Badili e rastrelli"_s, u"BAD"_s, u"Attrezzo in acciaio con manico: %1"_s, u"0001:paletta|0002:zappa|0003:rastrello 14 denti|0004:vanga|0005:badile a punta"_s, u"PZ"_s, u"22"_s, 3.8, 13.5, 5},
        {u"Giardinaggio/Semina/Sementi"_s, u"SEM"_s, u"Semente per prato, %1"_s, u"0500:busta 500 g|1000:sacchetto 1 kg|2500:sacco 2,5 kg|5000:sacco 5 kg|9000:sacco 10 kg"_s, u"PZ"_s, u"10"_s, 3.2, 44.0, 6},
        {u"Elettricità/Illuminazione/Lampade LED"_s, u"LED"_s, u"Lampada LED attacco E27 luce calda %1"_s, u"0005:5 W|0008:8 W|0010:10 W|0015:15 W|0020:20 W"_s, u"PZ"_s, u"22"_s, 1.35, 5.6, 24},
        {u"Elettricità/Materiale elettrico/Cavi"_s, u"CAV"_s, u"Cavo elettrico flessibile %1 mm²"_s, u"0210:2x1|0215:2x1,5|0315:3x1,5|0325:3x2,5|0340:3x4"_s, u"MT"_s, u"22"_s, 0.55, 2.9, 200},
        {u"Vernici/Smalti/Smalti all'acqua"_s, u"SMA"_s, u"Smalto all'acqua satinato %1"_s, u"0125:bianco 125 ml|0500:bianco 500 ml|0750:bianco 750 ml|2500:bianco 2,5 l|4000:bianco 4 l"_s, u"LT"_s, u"22"_s, 3.4, 48.0, 6},
    };
    return all;
}

const QList<Service> &services()
{
    static const QList<Service> all = {
        {u"Trasporto/Consegne"_s, u"CONS-01"_s, u"Consegna in zona entro 20 km"_s, u"PZ"_s, u"22"_s, 12, 20},
        {u"Trasporto/Consegne"_s, u"CONS-02"_s, u"Consegna in provincia"_s, u"PZ"_s, u"22"_s, 22, 35},
        {u"Trasporto/Consegne"_s, u"CONS-03"_s, u"Consegna al piano"_s, u"PZ"_s, u"22"_s, 15, 25},
        {u"Trasporto/Spedizioni"_s, u"SPED-01"_s, u"Spese di spedizione con corriere"_s, u"PZ"_s, u"22"_s, 7.5, 9.9},
        {u"Trasporto/Spedizioni"_s, u"IMB-01"_s, u"Spese di imballo"_s, u"PZ"_s, u"22"_s, 2, 4},
        {u"Officina/Riparazioni"_s, u"RIP-01"_s, u"Riparazione elettroutensili, manodopera"_s, u"ORA"_s, u"22"_s, 24, 38},
        {u"Officina/Riparazioni"_s, u"AFF-01"_s, u"Affilatura lame e forbici"_s, u"PZ"_s, u"22"_s, 3, 6},
        {u"Officina/Chiavi"_s, u"DUP-01"_s, u"Duplicazione chiave piatta"_s, u"PZ"_s, u"22"_s, 0.8, 2.5},
        {u"Officina/Chiavi"_s, u"DUP-02"_s, u"Duplicazione chiave a doppia mappa"_s, u"PZ"_s, u"22"_s, 2.2, 6},
        {u"Officina/Chiavi"_s, u"CIF-01"_s, u"Cifratura cilindri a chiave unica"_s, u"PZ"_s, u"22"_s, 4, 9},
        {u"Consulenza"_s, u"COL-01"_s, u"Preparazione tinte a campione"_s, u"PZ"_s, u"22"_s, 1.5, 3.5},
        {u"Consulenza"_s, u"COR-01"_s, u"Corso sull'uso sicuro degli utensili"_s, u"ORA"_s, u"ES"_s, 30, 45},
    };
    return all;
}

const QList<Town> &towns()
{
    static const QList<Town> all = {
        {u"36061"_s, u"Bassano del Grappa"_s, u"VI"_s, u"0424"_s, u"024"_s}, {u"20121"_s, u"Milano"_s, u"MI"_s, u"02"_s, u"015"_s},
        {u"10122"_s, u"Torino"_s, u"TO"_s, u"011"_s, u"001"_s},            {u"00184"_s, u"Roma"_s, u"RM"_s, u"06"_s, u"058"_s},
        {u"40121"_s, u"Bologna"_s, u"BO"_s, u"051"_s, u"037"_s},           {u"38122"_s, u"Trento"_s, u"TN"_s, u"0461"_s, u"022"_s},
        {u"35121"_s, u"Padova"_s, u"PD"_s, u"049"_s, u"028"_s},            {u"37121"_s, u"Verona"_s, u"VR"_s, u"045"_s, u"023"_s},
        {u"50122"_s, u"Firenze"_s, u"FI"_s, u"055"_s, u"048"_s},           {u"80133"_s, u"Napoli"_s, u"NA"_s, u"081"_s, u"063"_s},
        {u"67100"_s, u"L'Aquila"_s, u"AQ"_s, u"0862"_s, u"066"_s},         {u"47121"_s, u"Forlì"_s, u"FC"_s, u"0543"_s, u"040"_s},
        {u"25121"_s, u"Brescia"_s, u"BS"_s, u"030"_s, u"017"_s},
    };
    return all;
}

const QList<VatRate> &vatRates()
{
    static const QList<VatRate> all = {{u"22"_s, u"Aliquota ordinaria 22%"_s, 22, {}, {}}, {u"10"_s, u"Aliquota ridotta 10%"_s, 10, {}, {}},
                                       {u"04"_s, u"Aliquota minima 4%"_s, 4, {}, {}},
                                       {u"ES"_s, u"Esente art. 10 DPR 633/72"_s, 0, u"N4"_s, u"Art. 10 DPR 633/72"_s}};
    return all;
}

const QList<Note> &documentNotes()
{
    static const QList<Note> all = {
        {u"Merce in conto visione"_s, u"Merce inviata in conto visione: si intende restituita se non acquistata entro 30 giorni."_s},
        {u"Contributo CONAI"_s, u"Contributo ambientale CONAI assolto ove dovuto."_s},
        {u"Reclami"_s, u"Eventuali reclami vanno presentati per iscritto entro 8 giorni dal ricevimento della merce.\nTrascorso tale termine la merce si intende accettata."_s},
        {u"Riserva di proprietà"_s, u"La merce resta di proprietà del venditore fino al completo pagamento del prezzo."_s},
        {u"Fragile"_s, u"Attenzione: merce fragile, non capovolgere e non sovrapporre."_s},
    };
    return all;
}
// clang-format on

const QStringList &streets()
{
    static const QStringList all = {u"Via Roma"_s,           u"Via Garibaldi"_s,       u"Corso Italia"_s,
                                    u"Via dell'Industria"_s, u"Viale della Libertà"_s, u"Piazza Dante"_s,
                                    u"Via San Martino"_s,    u"Strada Provinciale"_s,  u"Via XX Settembre"_s,
                                    u"Via de' Fabbri"_s,     u"Vicolo del Pozzo"_s};
    return all;
}

const QStringList &customers()
{
    // The first one is a private person: no tax code and no VAT number.
    static const QStringList all =
        u"Agostini Lucia|Arredo Bagno Alpi S.r.l.|Azzurra Casalinghi S.n.c.|Bazar dell'Angolo S.a.s.|"
        "Belluno Utensili S.r.l.|Bottega del Ferro S.n.c.|Brico Valsugana S.r.l.|Casa Più S.r.l.|Casalinghi Cortese|"
        "Colorificio Càorle S.r.l.|D'Amico Ferramenta S.n.c.|Dall'Oglio Edilizia S.r.l.|De Santis Giardini S.a.s.|"
        "Edilferro Emiliana S.p.A.|Elettroservice S.r.l.|Esposito & Figli S.n.c.|Fabbri e Fabbri S.r.l.|"
        "Ferramenta Centrale S.n.c.|Ferramenta Forlì Ovest S.r.l.|Garden Oasi S.r.l.|Gasparini Legnami S.r.l.|"
        "Grandi Impianti S.p.A.|Habitat Casa S.r.l.|Hobby Legno S.n.c.|Idraulica Bianchi S.n.c.|"
        "Il Mastro Ferraio S.a.s.|Immobiliare Nord S.r.l.|Jolly Casalinghi S.r.l.|Jolanda Fiori|Kasa Service S.r.l.|"
        "Karton Imballi S.r.l.|L'Artigiana Serramenti S.r.l.|La Bottega di Nicolò|Legno & Co. S.r.l.|"
        "Magazzini Adige S.p.A.|Manutenzioni Meridiana S.r.l.|Moro Impianti S.n.c.|Nardi Costruzioni S.r.l.|"
        "Nuova Edile S.r.l.|Officine Olivieri S.r.l.|Orto Verde S.s.|Pagani Utensileria S.n.c.|Pitture Padane S.r.l.|"
        "Quadrifoglio Giardini S.r.l.|Quattro Mura Edilizia S.r.l.|Ricci Serrature S.n.c.|Rossetto Ferramenta S.a.s.|"
        "Sant'Ambrogio Immobili S.r.l.|Società Agricola Il Poggio|Stile Casa S.r.l.|Tecnoferro S.r.l.|"
        "Tutto per l'Orto S.n.c.|Utensil Market S.r.l.|Umbra Costruzioni S.r.l.|Valle Verde S.s.|Viteria Veneta S.r.l.|"
        "Wood Lab S.r.l.|Xilos Legnami S.r.l.|Yacht & Ferramenta S.r.l.|Zanòn Edilizia S.r.l."_s.split(u'|');
    return all;
}

const QStringList &units()
{
    static const QStringList all = {u"PZ"_s, u"KG"_s, u"MT"_s, u"CF"_s, u"LT"_s, u"PA"_s, u"MQ"_s, u"ORA"_s};
    return all;
}

const QList<PaymentType> &paymentTypes()
{
    static const QList<PaymentType> all = {{u"Rimessa diretta"_s, u"MP01"_s, u"TP02"_s},
                                           {u"Contanti alla consegna"_s, u"MP01"_s, u"TP02"_s},
                                           {u"Bonifico bancario 30 gg. d.f."_s, u"MP05"_s, u"TP02"_s},
                                           {u"Ri.Ba. 30 gg. fine mese"_s, u"MP12"_s, u"TP02"_s},
                                           {u"Ri.Ba. 30/60 gg. fine mese"_s, u"MP12"_s, u"TP01"_s},
                                           {u"Assegno bancario"_s, u"MP02"_s, u"TP02"_s}};
    return all;
}

} // namespace host::demo
