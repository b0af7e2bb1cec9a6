#pragma once
// The program's defaults: what the ini file holds of the settings that outlive an analysis. They are read at
// the start; they are written only when the user says so, one question for each setting.
//
// This header brings both halves; the keys are in DefaultKeys.h.

#include "persistence/settings/ReadDefaults.h"
#include "persistence/settings/SaveDefaults.h"
