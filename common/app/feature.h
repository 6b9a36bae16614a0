#pragma once

// Feature switches: the applications ask them where behaviour forks.
// An environment switch is on when its variable is defined in the process, whatever the value; the
// empty text and "0" count too. It is asked anew at each call. The level and category of messages
// are not here but in common/log_filter.h.

#include "common/analysis_kind.h"
#include "common/export.h"

#include <string>

namespace lmw::feature {

/// "LMW_3D_ENABLED". Any thread, like all environment switches, as long as no other changes the
/// environment at the same time.
LMW_API bool Is3DEnabled();

/// By design: follows Is3DEnabled and has no variable of its own. With one, hosts that turn on 3D
/// would lose the drawn locations they have always got with it.
LMW_API bool EnableDrawLocations();

/// "LMW_DATASET_REFRESH".
LMW_API bool IsDataSetRefreshEnabled();

/// "LMW_DRAW_LOCKING".
LMW_API bool IsDrawLocking();

/// "LMW_GRAPHICS_SERVER_DOUBLE_BUFFER".
LMW_API bool IsGraphicsServerDoubleBuffer();

/// By design: true unless "LMW_OLD_REINFORCEMENTS" is defined. The variable asks for the old
/// behaviour; read like the others, it would turn the new one off for everybody who sets nothing.
LMW_API bool IsNewReinforcementEnabled();

/// "LMW_PLY_TEXT": meshes are written as text.
LMW_API bool IsPlyMeshText();

/// "LMW_REINFORCEMENT_ADDIN".
LMW_API bool IsReinforcementAddInEnabled();

/// "LMW_USE_QT".
LMW_API bool UseQt();

/// "LMW_USE_RULER".
LMW_API bool UseRuler();

/// Whether the suite runs in diagnostic mode: "LOAMWORKS_DIAG_MODE" or "LMW_DIAG" is defined.
LMW_API bool IsDiagnosticMode();

/// Whether floating-point traps are on while functions are evaluated: what IsDiagnosticMode said
/// when this was called first. It never changes afterwards, so that no evaluation runs half with
/// and half without traps.
LMW_API bool IsDiagnosticFpuTrapsEnabled();

/// Whether analyses of `kind` use the new solver: true for each of the seven kinds until
/// SetNewSolverEnabled says otherwise, false for AnalysisKind::None and any other value.
LMW_API bool IsNewSolverEnabled(AnalysisKind kind);

/// Switches the solver of `kind` for the whole process and returns what IsNewSolverEnabled said
/// before. Changes nothing and returns false for a value that is none of the seven kinds. Meant for
/// start-up, before analyses run: any thread may call it, but another sees the change without any
/// order relative to other memory.
LMW_API bool SetNewSolverEnabled(AnalysisKind kind, bool enabled);

/// The name of the module that implements `kind`, such as "lmwflow"; the platform's prefix and
/// suffix are the loader's. Empty for a value that is none of the seven kinds.
LMW_API std::wstring DllByAnalysisKind(AnalysisKind kind);

}  // namespace lmw::feature
