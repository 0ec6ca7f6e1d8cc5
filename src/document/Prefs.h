#pragma once

#include "Sensitivity.h"
#include "TidleSettings.h"

// The part of the document model that outlives a run of the program.
struct EditorPreferences {
    Sensitivity sensitivity = Sensitivity::standard;
    TidleSettings settings;
    bool skipPausesInPreview = true;
};

// Reads and writes the editor preferences in the per-user store
// (~/.config/Hushpane/Hushpane.conf). Main thread only.
namespace Prefs {

// Overwrites `model` from the store; an unknown preset name leaves `model.sensitivity` as it is.
void load(EditorPreferences& model);
// Writes all six keys, changed or not.
void save(const EditorPreferences& model);

} // namespace Prefs
