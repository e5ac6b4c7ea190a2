#include "host/users/Users.h"
#include "magazzino/MMGUtils.h"
#include "platform/core/Error.h"
#include "platform/core/Format.h"
#include "platform/core/Log.h"
#include "platform/data/DataSet.h"
#include "platform/data/Latest.h"
#include "platform/data/SqlText.h"

using namespace Qt::StringLiterals;

namespace {

// An option that fails to be read or written counts as one that does not exist.
bool swallowing(const QString &routine, const std::function<bool()> &body)
{
    try {
        return body();
    } catch (const std::exception &error) {
        core::logError(routine, error);
        return false;
    }
}

} // namespace

bool GetOptionValue(const QString &option, QVariant &value)
{
    return swallowing(u"GetOptionValue OPZIONI"_s, [&] {
        const data::Rows rows =
            data::latest(ModuleConnection(), u"SELECT VALORE FROM OPZIONI WHERE OPZIONE="_s + data::quoted(option));
        if (rows.isEmpty())
            return false;
        value = rows.at(0, u"VALORE");
        return true;
    });
}

QString ValoreOpzione(const host::DocumentOption &option)
{
    QVariant value = option.initial;
    GetOptionValue(option.name, value);
    return value.toString();
}

bool SetOptionValue(const QString &option, const QVariant &value)
{
    return swallowing(u"SetOptionValue OPZIONI"_s, [&] {
        data::DataSet rows(&ModuleConnection());
        rows.setCommandText(u"SELECT * FROM OPZIONI WHERE OPZIONE="_s + data::quoted(option));
        rows.setUpdateTarget({u"OPZIONI"_s, u"OPZIONE"_s});
        rows.open();
        if (rows.isEmpty())
            return false;
        rows.edit();
        // As every flag is stored.
        const bool isFlag = value.metaType().id() == QMetaType::Bool;
        rows.setValue(u"VALORE"_s, isFlag ? QVariant(core::flagText(value.toBool())) : value);
        rows.updateBatch();
        return true;
    });
}

bool NumerazioneUnicaFattura()
{
    QVariant value;
    return GetOptionValue(u"NUMERAZIONE_UNICA_FATTURE"_s, value) && core::parseFlag(value.toString()).value_or(false);
}

bool UserHasAbilitazione(const QString &right, const QString &userName, data::Connection &connection)
{
    return core::namingErrors(u"UserHasAbilitazione", [&] { return host::userHasRight(userName, right, connection); });
}
