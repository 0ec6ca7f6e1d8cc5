#pragma once

#include <QString>

// Every visible text is looked up by key in the application's string tables.
QString localized(const char* key);
// The same for a text with a %n count and plural forms.
QString localizedCount(const char* key, int count);

// Loads the string tables compiled into the binary into the running application:
// English always, a table for the user's language on top where one exists.
// Needs a QCoreApplication (or subclass) instance.
void installStringTables();
