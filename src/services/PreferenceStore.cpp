#include "PreferenceStore.h"

PreferenceStore::PreferenceStore()
    : QSettings(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("Hushpane"),
                QStringLiteral("Hushpane"))
{
}

std::optional<double> PreferenceStore::number(const QString& key) const
{
    if (!contains(key))
        return std::nullopt;
    // QVariant's conversion of unreadable text gives 0.
    return value(key).toDouble();
}

std::optional<bool> PreferenceStore::boolean(const QString& key) const
{
    if (!contains(key))
        return std::nullopt;
    const QVariant stored = value(key);
    // A value written in this process may still be held in memory with its own type; one read
    // back from the file is always text.
    if (stored.typeId() == QMetaType::Bool)
        return stored.toBool();
    if (stored.typeId() != QMetaType::QString)
        return std::nullopt;
    const QString text = stored.toString();
    if (text == QLatin1String("true"))
        return true;
    if (text == QLatin1String("false"))
        return false;
    return std::nullopt;
}
