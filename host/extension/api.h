// Forced into every source of the extension: calls of SQLite go through the table that the loading program hands over.
#pragma once

#include <sqlite3ext.h>

SQLITE_EXTENSION_INIT3
