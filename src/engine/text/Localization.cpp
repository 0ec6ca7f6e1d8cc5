#include "Localization.h"

#include <QCoreApplication>
#include <QFile>
#include <QLibraryInfo>
#include <QPointer>
#include <QTranslator>
#include <memory>
#include <vector>

namespace {

const QString english = QStringLiteral("en");

QString tableResource(const QString& language)
{
    return QStringLiteral(":/i18n/hushpane_%1.qm").arg(language);
}

// "de_DE.UTF-8@euro" -> "de_DE"; "C" and "POSIX" -> "en".
QString languageOfLocale(const QString& locale)
{
    QString language = locale.section(QLatin1Char('@'), 0, 0).section(QLatin1Char('.'), 0, 0);
    if (language == QLatin1String("C") || language == QLatin1String("POSIX"))
        return english;
    return language;
}

std::vector<QPointer<QTranslator>>& installedTranslators()
{
    static std::vector<QPointer<QTranslator>> translators;
    return translators;
}

void install(std::unique_ptr<QTranslator> translator)
{
    QCoreApplication::installTranslator(translator.get());
    installedTranslators().emplace_back(translator.release());
}

} // namespace

QString localized(const char* key)
{
    return qtTrId(key);
}

QString localizedCount(const char* key, int count)
{
    return qtTrId(key, count);
}

QStringList preferredLanguages(const QProcessEnvironment& environment)
{
    QStringList languages;
    const QStringList listed =
        environment.value(QStringLiteral("LANGUAGE")).split(QLatin1Char(':'), Qt::SkipEmptyParts);
    for (const QString& entry : listed)
        languages << languageOfLocale(entry);
    for (const char* variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        const QString locale = environment.value(QString::fromLatin1(variable));
        if (!locale.isEmpty()) {
            languages << languageOfLocale(locale);
            break;
        }
    }
    return languages;
}

QString tableLanguage(const QStringList& languages)
{
    for (const QString& wanted : languages) {
        const QString base = wanted.section(QLatin1Char('_'), 0, 0);
        if (base == english)
            return english;
        for (const QString& candidate : {wanted, base}) {
            if (!candidate.isEmpty() && QFile::exists(tableResource(candidate)))
                return candidate;
        }
    }
    return english;
}

void installStringTables()
{
    installStringTables(
        tableLanguage(preferredLanguages(QProcessEnvironment::systemEnvironment())));
}

void installStringTables(const QString& language)
{
    auto* app = QCoreApplication::instance();
    if (!app)
        return;
    for (const QPointer<QTranslator>& translator : installedTranslators()) {
        if (translator) {
            QCoreApplication::removeTranslator(translator);
            delete translator;
        }
    }
    installedTranslators().clear();

    // Later-installed translators are searched first, so English goes in first as the fallback.
    auto fallback = std::make_unique<QTranslator>(app);
    if (fallback->load(tableResource(english)))
        install(std::move(fallback));
    if (language == english)
        return;
    auto native = std::make_unique<QTranslator>(app);
    if (native->load(tableResource(language)))
        install(std::move(native));
    // Qt's own dialogs and buttons (Cancel, Save, the file dialog), where the translations
    // package is installed; without it they stay English.
    auto qt = std::make_unique<QTranslator>(app);
    if (qt->load(QStringLiteral("qtbase_") + language,
                 QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        install(std::move(qt));
}
