#pragma once
// The fitted function and its derivatives for a run of points of one set: the same numbers as FitFunction
// and CalcDerivs point by point, bit for bit, for less work.
//
// What is saved: constants of the set are derived once for each stepped slot and not at each point; an
// exponential that a step does not touch, or that the pass before has left, is not evaluated again;
// derivatives that are zero by construction (the slots of other sets) are neither computed nor handed on.

#include "models/function/FitFrame.h"
#include "workspace/records/Counts.h"

#include <array>
#include <cstdint>

namespace Quillon {

inline constexpr long BlockPoints = 256; // points of a block at most
inline constexpr int BlockColumns =
    12; // eight global slots, three of the set or of those that it follows, one tied offset

// A set's frames: the base and one for each fitted slot with a derivative other than zero.
struct SetPlan {
    SetNo Set;
    FitFrame Base;
    int Count = 0; // columns, in rising order of the free position
    std::array<SlotNo, BlockColumns> Slot;
    std::array<FreePos, BlockColumns> FreePosition;
    std::array<bool, BlockColumns> Constant; // derivative exactly 1
    std::array<double, BlockColumns> Step;
    std::array<FitFrame, BlockColumns> Frames;
};

// Values and derivative columns of a block of points.
struct PointBlock {
    long First = 0; // point number
    long Count = 0;
    std::array<double, BlockPoints> Value;
    std::array<std::array<double, BlockPoints>, BlockColumns> Column;
};

// Prepares a set at the current Work.Parms; withDerivs also for the stepped slots. A fault in the constants
// is noted as FitFunction notes it, and sets Work.AbortFit; a step of 0 is a RuntimeError.
void PlanSet(SetPlan& plan, SetNo set, bool withDerivs);

// Fills the block for the points first .. first + count - 1, all of the plan's set, either all true points or
// a single pseudo-point. An arithmetic fault leaves numbers that are not finite (see BlockIsFinite), or has
// been noted already and Work.AbortFit is set.
void EvaluateBlock(PointBlock& block, const SetPlan& plan, long first, long count);

// False when the function or a derivative met an arithmetic fault at a point of the block. Not asked at
// every block: such a number shows in the sums.
bool BlockIsFinite(const PointBlock& block, const SetPlan& plan);

// While in use, exponentials at the unstepped parameters are kept for the next pass over the same points. The
// points (Work.PtX, PtSet, NumPts) must not change meanwhile.
void StoreSignals(bool inUse);

} // namespace Quillon
