#include "scandata/forms/InfoBox.h"

#include "input/NUMINPUT.h"
#include "platform/Platform.h"
#include "scandata/reader/IntensityScan.h"
#include "scandata/reader/MeanScan.h"
#include "scandata/table/LeftOut.h"
#include "workspace/records/ReadingRemarks.h"

namespace Quillon {

InfoBoxForm InfoBox;

namespace {

constexpr std::size_t LineLength = 60;

// A long comment is broken at the last blank that fits, or hard where there is none.
std::string Broken(std::string rest) {
    std::string text;
    while (rest.size() > LineLength) {
        std::size_t at = rest.rfind(' ', LineLength);
        if (at == std::string::npos || at == 0) at = LineLength;
        text += rest.substr(0, at) + "\n";
        rest.erase(0, rest[at] == ' ' ? at + 1 : at);
    }
    return text + rest;
}

std::string SpanText(const char* what, const IntensitySpan& span) {
    const auto number = [](float value) { return FormatNumber(static_cast<double>(value), "0.###E+00"); };
    return std::string(what) + "= " + number(span.Mean) + " on average, " + number(span.Lowest) + " to " +
           number(span.Highest);
}

void ShowIntensities() {
    const RowNo row = InfoBox.Row;
    const bool intensity = Work.IntensityOrder[row] != IntensityOrders::None;
    InfoBox.Intensities.Visible = InfoBox.SwitchButton.Visible = intensity;
    if (!intensity) return;
    const auto [sample, reference] = IntensitySpans(row);
    const bool first = Work.IntensityOrder[row] == IntensityOrders::SampleFirst;
    InfoBox.Intensities.Text = std::string("Intensities of the fitting range, the sample in the ") +
                               (first ? "first" : "second") + " column:\n" + SpanText("Sample", sample) +
                               "\n" + SpanText("Reference", reference);
    if (const long out = CountLeftOut(row, LeftOutBy::Intensity); out > 0)
        InfoBox.Intensities.Text += "\n" + std::to_string(out) +
                                    (out == 1 ? " reading is" : " readings are") +
                                    " not above 0 and left out";
}

// What was told when the file was read, behind the last line.
void AddReadingRemark(const char* what, const std::string& remark) {
    if (!remark.empty()) InfoBox.Line.back().Text += "\n" + Broken(what + remark);
}

} // namespace

void LoadInfoBox(RowNo row) {
    InfoBox = InfoBoxForm{};
    InfoBox.State.Caption = Work.ScanFile[row];
    const double seconds = static_cast<double>(Work.ScanTime[row]);
    InfoBox.Line[0].Text = Broken("Comment= " + Work.ScanComment[row]);
    InfoBox.Line[1].Text =
        "RPM= " + SingleText(Work.ScanRPM[row]) + "            Temp=" + SingleText(Work.ScanTemperature[row]);
    InfoBox.Line[2].Text =
        "Time= " + std::to_string(Work.ScanTime[row]) + "s (" + FormatNumber(seconds / 60.0, "#0.0") +
        " min)     omega^2*t= " + FormatNumber(static_cast<double>(Work.ScanOmega2t[row]), "0.00##E-00");
    InfoBox.Line[3].Text = "Wavelength=" + SingleText(Work.ScanWavelength[row]) +
                           "      Scans Averaged=" + std::to_string(Work.ScansAveraged[row]);
    if (const std::string mean = MeanRemark(row); !mean.empty())
        InfoBox.Line[3].Text += "\n" + Broken("This is " + mean);
    AddReadingRemark("Of its readings: ", RemarkOfScan(Work, row));
    AddReadingRemark("Of its baseline: ", RemarkOfBaseline(Work, row));
    InfoBox.Row = row;
    InfoBox.SwitchButton.Text = "&Switch Sample and Reference";
    InfoBox.SwitchButton.ToolTip = "Take the other column as the sample: each absorbance changes its sign";
    ShowIntensities();
    InfoBox.OkButton.Text = "OK";
    InfoBox.State.FocusOn = &InfoBox.OkButton;
    InfoBox.State.Shown = true;
}

void ShowInfoBox(RowNo row) {
    LoadInfoBox(row);
    Host.ShowModal(InfoBoxName);
}

void InfoBoxSwitchButton() {
    const bool first = Work.IntensityOrder[InfoBox.Row] == IntensityOrders::SampleFirst;
    SetIntensityOrder(InfoBox.Row, first ? IntensityOrders::ReferenceFirst : IntensityOrders::SampleFirst);
    ShowIntensities();
}

void InfoBoxOkButton() {
    InfoBox.State.Shown = false;
}

} // namespace Quillon
