#include "platform/report/Report.h"

#include "platform/core/Error.h"

#include <QFile>
#include <QXmlStreamReader>

using namespace Qt::StringLiterals;

namespace report {

void ReportProject::close()
{
    reports_.clear();
    open_ = false;
}

void ReportProject::open()
{
    close();
    QFile file(file_);
    if (!file.open(QIODevice::ReadOnly))
        throw core::Error(u"Impossibile leggere il file delle stampe \"%1\"."_s.arg(file_));
    QXmlStreamReader reader(&file);
    if (reader.readNextStartElement() && reader.name() != u"project")
        reader.raiseError(u"manca l'elemento \"project\""_s);
    while (reader.readNextStartElement()) {
        if (reader.name() == u"report")
            reports_.append(reader.attributes().value(u"name"_s).toString());
        reader.skipCurrentElement();
    }
    if (reader.hasError())
        throw core::Error(
            u"File delle stampe \"%1\", riga %2: %3."_s.arg(file_).arg(reader.lineNumber()).arg(reader.errorString()));
    open_ = true;
}

} // namespace report
