#pragma once
// ShowGraph and the wiping of the target, for operations that keep the status of what they did before.

namespace Quillon {

// ShowGraph without clearing the status.
void ShowTarget();

// Wipes what stands on the target; no graph is drawn then.
void ClearDrawing();

} // namespace Quillon
