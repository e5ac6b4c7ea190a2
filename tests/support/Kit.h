#pragma once
// What nearly every test uses: the program of tests, databases, files, controls, answers to boxes and dialogs.
#include "platform/core/Error.h"
#include "platform/core/SaveFile.h"
#include "platform/data/DatabaseError.h"
#include "tests/support/Controls.h"
#include "tests/support/Files.h"
#include "tests/support/ScriptedDialogs.h"
#include "tests/support/ScriptedMessages.h"
#include "tests/support/TestDatabase.h"
#include "tests/support/TestMain.h"

#include <QtWidgets>
