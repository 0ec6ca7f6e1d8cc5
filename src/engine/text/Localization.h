#pragma once

#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

// Every visible text is looked up by key in the application's string tables.
QString localized(const char* key);
// The same for a text with a %n count and plural forms.
QString localizedCount(const char* key, int count);

// The languages the user asks for, most wanted first, read as gettext reads them: each entry
// of LANGUAGE (a colon-separated list), then the first of LC_ALL, LC_MESSAGES and LANG that
// is set. Encodings and modifiers are dropped ("de_DE.UTF-8@euro" gives "de_DE"); "C" and
// "POSIX" ask for the untranslated texts and give "en". Unlike gettext, LANGUAGE counts under
// the C locale too: whoever sets it wants that language.
QStringList preferredLanguages(const QProcessEnvironment& environment);
// The first of `languages` that has a string table, trying "de_AT" as "de" too; "en" when
// English comes first or nothing matches.
QString tableLanguage(const QStringList& languages);

// Loads the string tables compiled into the binary into the running application: English
// always, the table for the user's language on top where one exists, and with it Qt's own
// translations of its dialogs when they are installed. Needs a QCoreApplication instance.
void installStringTables();
// The same for a given table language; replaces the tables installed before.
void installStringTables(const QString& language);
