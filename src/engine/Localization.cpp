#include "Localization.h"

#include <QCoreApplication>
#include <QLocale>
#include <QTranslator>

QString localized(const char* key)
{
    return qtTrId(key);
}

QString localizedCount(const char* key, int count)
{
    return qtTrId(key, count);
}

void installStringTables()
{
    auto* app = QCoreApplication::instance();
    if (!app)
        return;
    // Later-installed translators are searched first, so English goes in first as the fallback.
    auto* english = new QTranslator(app);
    if (english->load(QStringLiteral(":/i18n/hushpane_en.qm")))
        QCoreApplication::installTranslator(english);
    auto* native = new QTranslator(app);
    if (native->load(QLocale(), QStringLiteral("hushpane"), QStringLiteral("_"),
                     QStringLiteral(":/i18n")) &&
        native->language() != QLatin1String("en"))
        QCoreApplication::installTranslator(native);
    else
        delete native;
}
