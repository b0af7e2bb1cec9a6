#pragma once
// Showing and painting: the order in which a graph comes onto its target.

namespace Quillon {

// Shows the graph: on the picture box cleared, painted and refreshed if the box keeps its own picture, else
// left to its paint event; on other targets painted. A cancel that is raised while it paints the picture box
// ends that painting and no more; one that stood before is left standing and does not touch it.
void ShowGraph();

// Paints the graph on the target. The shared cancel flag, tested between the steps and every 50 points, ends
// it early, with the picture incomplete but valid; on a metafile it is not tested.
void DrawGraph();

// ShowGraph without clearing the status.
void ShowTarget();

// Wipes what stands on the target; no graph is drawn then.
void ClearDrawing();

} // namespace Quillon
