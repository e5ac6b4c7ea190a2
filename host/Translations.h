#pragma once

class QCoreApplication;

namespace host {

/// Installs the texts of the first of the user's languages that there is a translation for: `corvane_LANGUAGE.qm` in
/// the folder `translations` beside the program or in `corvane/translations` of the shared data folders, and Qt's own
/// texts of that language. The program's texts are Italian, so Italian needs Qt's texts alone; that is also what the
/// program speaks where no language fits. Before any text is looked up.
void installTranslations(QCoreApplication &application);

} // namespace host
