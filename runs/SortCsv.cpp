#include "runs/SortCsv.h"

#include "input/Csv.h"
#include "input/ShortestText.h"
#include "runs/ReadRun.h"

namespace Quillon {

namespace {

std::string Text(const std::optional<double>& number) {
    return number ? ShortestText(*number) : "";
}

CsvCells RowOf(const SortedRun& run, std::size_t g, std::size_t i) {
    const RunGroup& group = run.Groups[g];
    const RunScan& scan = run.Scans[group.Scans[i]];
    const ScanJudgement& judged = group.Judged[i];
    const ScanHead& head = scan.Head;
    return {std::to_string(scan.Cell),
            ShortestText(head.Rpm),
            ShortestText(head.Wavelength),
            OpticsWord(scan.Optics),
            scan.Name.Scan ? std::to_string(*scan.Name.Scan) : "",
            ShownName(scan.File),
            std::to_string(head.Time),
            ShortestText(head.Omega2t),
            ShortestText(head.Temperature),
            std::to_string(scan.Radii.Hi()),
            Text(judged.Noise),
            Text(judged.Rms),
            EquilibriumWord(judged.Answer),
            HasLast(group) && i == group.Last ? "yes" : "no",
            std::to_string(g + 1)};
}

} // namespace

std::string SortCsv(const SortedRun& run, const std::vector<std::size_t>& groups) {
    std::string text =
        "cell,speed_rpm,wavelength_nm,optics,scan,file,time_s,omega2t,temperature_c,points,noise,"
        "rms_from_last,at_equilibrium,last,group\n";
    for (const std::size_t g : groups)
        for (std::size_t i = 0; i < run.Groups[g].Scans.size(); ++i)
            text += CsvLine(RowOf(run, g, i));
    return text;
}

} // namespace Quillon
