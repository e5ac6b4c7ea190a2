#pragma once
#include "platform/schema/Step.h"

/// The host's own tables: one version for all of them, and the steps from one to the next. Tables of plug-in modules
/// are left to their modules.
///
/// None of these routines must be called inside a transaction. What the database refuses is thrown as
/// data::DatabaseError.
namespace host {

/// All steps in their order. The first ones make what the first release made, in an empty database: tables, and the
/// rows that every database has (options, the right "Controllo completo", the user AMMINISTRATORE holding it). Every
/// later one brings all databases, new ones included, one version further.
const QList<schema::Step> &hostSteps();

/// Makes everything in an empty database, or in one that has the table of versions only.
void createHostSchema(data::Connection &connection, const QList<schema::Step> &steps = hostSteps());

/// Notes the version of a database of the first release, which noted none; leaves every other one alone.
void recogniseHostSchema(data::Connection &connection);

/// Runs the steps that are due, once the database's version is recognised. A step that fails ends it with a core::Error
/// that tells the user; the steps before it stay, and the next call goes on.
void upgradeHostSchema(data::Connection &connection, const QList<schema::Step> &steps = hostSteps());

/// True when the database is at a version that none of the steps knows: a newer program has upgraded it.
bool isHostSchemaNewer(data::Connection &connection, const QList<schema::Step> &steps = hostSteps());

} // namespace host
