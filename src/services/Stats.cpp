#include "Stats.h"

#include "Localization.h"
#include "PreferenceStore.h"

#include <cstdio>

namespace {

const QString totalKey = QStringLiteral("totalSecondsSaved");

} // namespace

namespace Stats {

void add(double seconds)
{
    // Written so that NaN is refused too.
    if (!(seconds > 0.0))
        return;
    PreferenceStore store;
    store.setValue(totalKey, store.number(totalKey).value_or(0.0) + seconds);
}

double totalSecondsSaved()
{
    return PreferenceStore().number(totalKey).value_or(0.0);
}

QString savedDescription()
{
    const double total = totalSecondsSaved();
    double value = total;
    const char* key = "saved.seconds";
    if (total >= 3600.0) {
        value = total / 3600.0;
        key = "saved.hours";
    } else if (total >= 60.0) {
        value = total / 60.0;
        key = "saved.minutes";
    }
    // The C library's rounding, so 1.5 hours reads as 2 the same way everywhere.
    char number[64];
    std::snprintf(number, sizeof number, "%.0f", value);
    return localized(key).arg(QString::fromLatin1(number));
}

} // namespace Stats
