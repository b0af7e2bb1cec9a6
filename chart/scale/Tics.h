#pragma once
// Where the tics stand: the choice of their interval for an axis of a given length, and their positions.

#include "chart/records/Records.h"

#include <vector>

namespace Quillon {

// Chooses TicInterval and FirstTic of AxisX1 and AxisY1 for the frame, where they have an autorange, and
// rounds their limits outward; hands the scale on to AxisX2 and AxisY2 where these are shown.
void ChooseTics();

// The choice for one axis. length: of the axis, in device units; labelSpace: what one label takes along it.
void ChooseAxisTics(GraphAxis& axis, std::int16_t kind, int length, int labelSpace);

// The least of 1, 2 and 5 times a power of ten that is not below a positive number.
double RoundStep(double wanted);

// Copies what an axis hands on to the second one of its pair: the format of the labels, the whole scale.
void HandOnFormat(const GraphAxis& from, GraphAxis& to);
void HandOnScale(const GraphAxis& from, GraphAxis& to);

struct Tic {
    double Value{}; // in axis units
    bool Major{};   // major tics are labelled; category labels stand at them
    int Category{}; // on a category axis the number of the category, from 1
};

// The tics of an axis that lie within its scale, in rising order of their steps. At most a few thousand: an
// interval too small for that is taken ten times as large until it serves.
std::vector<Tic> TicPositions(const GraphAxis& axis, std::int16_t kind);

// The text at a tic.
std::string TicLabel(const GraphAxis& axis, std::int16_t kind, const Tic& tic);

} // namespace Quillon
