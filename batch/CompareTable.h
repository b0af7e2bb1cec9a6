#pragma once
// A comparison of models as a table for other programs: CSV, or JSON by the ending of the file.
//
//     model,name,options,free,degrees_of_freedom,sum_of_squares,rms,runs_z,reference,F,p,
//     delta_aicc,delta_bic,weight,converged,minimum,notes
//
// a row for each model, in the order of the list; in JSON the record {"models": [...]} with the same members.
// What does not exist is empty, in JSON null; yes and no are true and false there.

#include "studies/methods/Comparison.h"

#include <string>

namespace Quillon {

std::string CompareCsv(const Comparison& comparison);
std::string CompareJson(const Comparison& comparison);

// By the ending of the path: ".json", else CSV.
std::string CompareTable(const Comparison& comparison, const std::string& path);

} // namespace Quillon
