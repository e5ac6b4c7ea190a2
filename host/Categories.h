#pragma once
#include "platform/ui/CategoryTree.h"

/// The tables of categories that host and modules share.
namespace host {

inline const ui::CategoryTable articleCategories = {QStringLiteral("CATEGORIE_ANA_MAGA"),
                                                    QStringLiteral("IDCATEGORIA_ANA_MAGA"), QStringLiteral("CATEGORIA"),
                                                    QStringLiteral("IDPADRE")};
inline const ui::CategoryTable serviceCategories = {QStringLiteral("CATEGORIE_SERVIZI"),
                                                    QStringLiteral("IDCATEGORIA_SERVIZI"), QStringLiteral("CATEGORIA"),
                                                    QStringLiteral("IDPADRE")};

} // namespace host
