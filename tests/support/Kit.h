#pragma once
// What nearly every test uses: the program of tests, databases, files, controls, answers to boxes and dialogs, and what
// the tests ask of the program time and again. Qt comes as a whole.
#include "host/DatabaseSetup.h"
#include "host/backup/Backup.h"
#include "host/start/DatabaseMemory.h"
#include "magazzino/MMGUtils.h"
#include "magazzino/schema/ModuleSteps.h"
#include "platform/core/Clock.h"
#include "platform/core/Error.h"
#include "platform/core/Log.h"
#include "platform/core/NumberReader.h"
#include "platform/core/Progress.h"
#include "platform/core/SaveFile.h"
#include "platform/data/DatabaseError.h"
#include "platform/data/DatabaseFile.h"
#include "platform/data/SqlText.h"
#include "tests/support/Controls.h"
#include "tests/support/Files.h"
#include "tests/support/FirebirdServer.h"
#include "tests/support/Program.h"
#include "tests/support/Schemas.h"
#include "tests/support/ScriptedDialogs.h"
#include "tests/support/ScriptedMessages.h"
#include "tests/support/TestDatabase.h"
#include "tests/support/TestMain.h"

#include <QtPrintSupport>
#include <QtTest>
#include <QtWidgets>

#include <unistd.h>

// A head of tests alone, in which nearly every text is such a literal.
using namespace Qt::StringLiterals; // NOLINT(google-global-names-in-headers)
