#include "host/Translations.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QStandardPaths>
#include <QTranslator>

#include <memory>

using namespace Qt::StringLiterals;

namespace host {

namespace {

bool install(const QString &name, const QStringList &folders, QCoreApplication &application)
{
    auto translator = std::make_unique<QTranslator>();
    for (const QString &folder : folders) {
        if (!translator->load(name, folder) || !QCoreApplication::installTranslator(translator.get()))
            continue;
        translator.release()->setParent(&application);
        return true;
    }
    return false;
}

// The language that is spoken, "it" or "de_AT".
QString installOwnTexts(QCoreApplication &application)
{
    const QStringList folders = QStringList(QCoreApplication::applicationDirPath() + u"/translations"_s) +
                                QStandardPaths::locateAll(QStandardPaths::GenericDataLocation,
                                                          u"corvane/translations"_s, QStandardPaths::LocateDirectory);
    const QStringList languages = QLocale::system().uiLanguages();
    for (QString language : languages) {
        language.replace(u'-', u'_');
        if (language.section(u'_', 0, 0) == u"it"_s)
            break;
        if (install(u"corvane_"_s + language, folders, application))
            return language;
    }
    return u"it"_s;
}

} // namespace

void installTranslations(QCoreApplication &application)
{
    install(u"qtbase_"_s + installOwnTexts(application), {QLibraryInfo::path(QLibraryInfo::TranslationsPath)},
            application);
}

} // namespace host
