#include "tests/support/Schemas.h"

#include "tests/support/Kit.h"

namespace test {

void createFirstRelease(data::Connection &connection)
{
    const QByteArray all = contentOf(QFINDTESTDATA("support/primo-rilascio.sql"));
    for (const QString &statement : QString::fromUtf8(all).split(u'\n', Qt::SkipEmptyParts))
        connection.execute(statement);
}

QString schemaQuery()
{
    return uR"(
    SELECT 'column ' || TRIM(F.RDB$RELATION_NAME) || '.' || TRIM(F.RDB$FIELD_NAME) || ' ' || F.RDB$FIELD_POSITION ||
        ' ' || T.RDB$FIELD_TYPE || ' ' || COALESCE(T.RDB$CHARACTER_LENGTH, 0) || ' ' ||
        COALESCE(T.RDB$FIELD_PRECISION, 0) || ' ' || COALESCE(T.RDB$FIELD_SCALE, 0) || ' ' ||
        COALESCE(T.RDB$FIELD_SUB_TYPE, 0) || ' ' || COALESCE(F.RDB$NULL_FLAG, 0) || ' ' ||
        COALESCE(CAST(F.RDB$DEFAULT_SOURCE AS VARCHAR(100)), '')
    FROM RDB$RELATION_FIELDS F JOIN RDB$FIELDS T ON T.RDB$FIELD_NAME = F.RDB$FIELD_SOURCE
    WHERE F.RDB$SYSTEM_FLAG = 0
    UNION ALL SELECT 'index ' || TRIM(I.RDB$INDEX_NAME) || ' ' || TRIM(I.RDB$RELATION_NAME) || ' ' ||
        COALESCE(I.RDB$UNIQUE_FLAG, 0) || ' ' || COALESCE(I.RDB$INDEX_TYPE, 0) || ' ' ||
        COALESCE(I.RDB$INDEX_INACTIVE, 0) || ' ' || COALESCE(CAST(I.RDB$EXPRESSION_SOURCE AS VARCHAR(100)), '') ||
        COALESCE(CAST((SELECT LIST(N) FROM (SELECT TRIM(S.RDB$FIELD_NAME) AS N FROM RDB$INDEX_SEGMENTS S
            WHERE S.RDB$INDEX_NAME = I.RDB$INDEX_NAME ORDER BY S.RDB$FIELD_POSITION)) AS VARCHAR(200)), '')
    FROM RDB$INDICES I WHERE I.RDB$SYSTEM_FLAG = 0 AND I.RDB$INDEX_NAME NOT STARTING WITH 'RDB$'
    UNION ALL SELECT 'trigger ' || TRIM(RDB$TRIGGER_NAME) || ' ' || RDB$TRIGGER_TYPE || ' ' ||
        CAST(RDB$TRIGGER_SOURCE AS VARCHAR(200)) FROM RDB$TRIGGERS
    WHERE RDB$SYSTEM_FLAG = 0 AND RDB$TRIGGER_NAME NOT STARTING WITH 'CHECK_'
    UNION ALL SELECT 'generator ' || TRIM(RDB$GENERATOR_NAME) FROM RDB$GENERATORS WHERE RDB$SYSTEM_FLAG = 0
    UNION ALL SELECT 'version ' || TABELLA || ' ' || VERSIONE FROM TABLE_VERSION
    ORDER BY 1)"_s;
}

} // namespace test
