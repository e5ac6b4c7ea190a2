#include "host/help/HostChapters.h"

#include "platform/ui/Help.h"

using namespace Qt::StringLiterals;

namespace host {

void addHostChapters()
{
    ui::addHelpChapters({{u"frmMain"_s, u"La finestra principale"_s},
                         {u"frmCercaOvunque"_s, u"La finestra principale"_s},
                         {u"frmBozze"_s, u"Se il programma si interrompe"_s},
                         {u"frmPrimoAvvio"_s, u"Primo avvio"_s},
                         {u"frmNuovaAzienda"_s, u"Primo avvio"_s},
                         {u"frmApriArchivio"_s, u"Più postazioni"_s},
                         {u"frmPiuPostazioni"_s, u"Più postazioni"_s},
                         {u"frmAccesso"_s, u"Utenti e diritti"_s},
                         {u"ui::RegisterEntry"_s, u"Elenchi e anagrafiche"_s},
                         {u"ui::SearchForm"_s, u"Elenchi e anagrafiche"_s},
                         {u"host::UserEntry"_s, u"Utenti e diritti"_s},
                         {u"host::RoleEntry"_s, u"Utenti e diritti"_s},
                         {u"host::CategoryEditor"_s, u"Categorie"_s},
                         {u"host::ImportDialog"_s, u"Importare da CSV"_s},
                         {u"host::PreviewWindow"_s, u"Stampare e salvare in PDF"_s}});
}

} // namespace host
