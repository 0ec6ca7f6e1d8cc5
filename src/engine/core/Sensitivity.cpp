#include "Sensitivity.h"

#include "Localization.h"

namespace SensitivityPresets {

QString rawValue(Sensitivity sensitivity)
{
    switch (sensitivity) {
    case Sensitivity::delicate:
        return QStringLiteral("delicate");
    case Sensitivity::standard:
        return QStringLiteral("standard");
    case Sensitivity::aggressive:
        return QStringLiteral("aggressive");
    case Sensitivity::custom:
        return QStringLiteral("custom");
    }
    return {};
}

std::optional<Sensitivity> fromRawValue(const QString& raw)
{
    for (Sensitivity candidate : allCases) {
        if (rawValue(candidate) == raw)
            return candidate;
    }
    return std::nullopt;
}

QString title(Sensitivity sensitivity)
{
    return localized(("sensitivity." + rawValue(sensitivity)).toUtf8().constData());
}

QString hint(Sensitivity sensitivity)
{
    return localized(("sensitivity." + rawValue(sensitivity) + ".hint").toUtf8().constData());
}

bool applyNumbers(Sensitivity sensitivity, TidleSettings& settings)
{
    switch (sensitivity) {
    case Sensitivity::delicate:
        settings.thresholdDB = -45.0;
        settings.minPause = 1.0;
        settings.padding = 0.25;
        return true;
    case Sensitivity::standard:
        settings.thresholdDB = -35.0;
        settings.minPause = 0.6;
        settings.padding = 0.15;
        return true;
    case Sensitivity::aggressive:
        settings.thresholdDB = -30.0;
        settings.minPause = 0.4;
        settings.padding = 0.1;
        return true;
    case Sensitivity::custom:
        return false;
    }
    return false;
}

} // namespace SensitivityPresets
