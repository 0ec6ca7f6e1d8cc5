#pragma once

#include "Analysis.h"
#include "Sensitivity.h"
#include "TidleSettings.h"

#include <QMetaType>
#include <optional>

// The engine's value types as the document model publishes them in its properties.
Q_DECLARE_METATYPE(TidleSettings)
Q_DECLARE_METATYPE(Sensitivity)
Q_DECLARE_METATYPE(Analysis)
Q_DECLARE_METATYPE(std::optional<Analysis>)
