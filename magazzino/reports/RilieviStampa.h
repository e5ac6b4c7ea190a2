#pragma once
#include <QStringList>

class TMMGdmStampe;
struct DocumentKind;

/// What is wrong with the document that is open in `stampe`, one sentence each: what the law asks for and it lacks,
/// what would keep an invoice from becoming a file, holes before its number, dates that do not follow the numbers of
/// its year. Empty when there is nothing to say, or no document. Throws data::DatabaseError.
QStringList RilieviStampa(const TMMGdmStampe &stampe, const DocumentKind &kind);
