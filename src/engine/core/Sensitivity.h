#pragma once

#include "TidleSettings.h"

#include <QString>
#include <array>
#include <optional>

// The preset the user picks instead of typing numbers.
enum class Sensitivity { delicate, standard, aggressive, custom };

namespace SensitivityPresets {

inline constexpr std::array<Sensitivity, 4> allCases = {
    Sensitivity::delicate, Sensitivity::standard, Sensitivity::aggressive, Sensitivity::custom};

QString rawValue(Sensitivity sensitivity);
// Exact, case-sensitive match of one of the four raw values.
std::optional<Sensitivity> fromRawValue(const QString& raw);
QString title(Sensitivity sensitivity);
QString hint(Sensitivity sensitivity);

// The preset's numbers written into `settings`; frameAccurate is left alone.
// `custom` has no numbers of its own and returns false without touching `settings`.
bool applyNumbers(Sensitivity sensitivity, TidleSettings& settings);

} // namespace SensitivityPresets
