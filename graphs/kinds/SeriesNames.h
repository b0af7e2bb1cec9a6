#pragma once
// What titles and legends call the data of a graph: text of a graph is Latin-1, while labels are paths.

#include "workspace/records/Counts.h"

#include <string>

namespace Quillon {

// The name of a set's data: its label. Where the file's name occurs in several sets, what tells them apart
// stands behind it: the speed ("00012.RA1, 12000 rpm"), or the wavelength where the speeds are one; and where
// the whole label occurs again, the range of radii ("00012.RA1, 5.85-6.30 cm"), or at last the set's number.
std::string SeriesName(SetNo set);

// "Data from: " and the common path of all labels; "" when they have none, since a title that names nothing
// is not worth its place.
std::string DataFrom();

// A path behind other text of a title, in the room that a title leaves. What is too long loses its beginning,
// since its end tells more: "Data from: " and "/data/2024/.../run7/" give "Data from: .../run7/".
std::string WithPath(const std::string& text, const std::string& path);

} // namespace Quillon
