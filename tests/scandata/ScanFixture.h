#pragma once
// Scans as text, and a workspace to read them into.

#include "scandata/reader/ScanReader.h"
#include "tests/support/ScriptedPlatform.h"
#include "workspace/records/Workspace.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace Quillon {

inline const std::string FileReadError = "Error during file read, possible invalid data in file";
inline const std::string BaselineReadError = "Error during baseline read, possible invalid data in file";
inline const std::string GoodHeader = "R 1 20.0 10000 0084667 9.2280E10 280 32";

// A scan of the header and points given, with CR LF behind each line.
inline std::string ScanText(const std::vector<std::string>& points, const std::string& header = GoodHeader,
                            const std::string& comment = "Sample", const std::string& lineEnd = "\r\n") {
    std::string text = comment + lineEnd + header + lineEnd;
    for (const std::string& point : points)
        text += point + lineEnd;
    return text;
}

// count points from 6.0 cm on, 0.001 cm apart, with the values 0.001, 0.002, ...
inline std::vector<std::string> ManyPoints(long count) {
    std::vector<std::string> points;
    for (long i = 1; i <= count; ++i)
        points.push_back(std::to_string(6.0 + 0.001 * static_cast<double>(i - 1)) + " " +
                         std::to_string(0.001 * static_cast<double>(i)));
    return points;
}

// A fresh workspace with a scripted platform; the box of every failure is an exclamation with OK.
struct ScanTest : testing::Test {
    ScanTest() { Work = FreshWorkspace(); }
    Script script;

    void ExpectTold(const std::string& text) {
        script.ExpectMessage({text, "Quillon", BoxIcon::Warning, BoxButtons::Ok, BoxAnswer::Ok},
                             BoxAnswer::Ok);
    }

    // A read that ends in a sentence with the reason for it, told of the file named.
    void ExpectReadFailure(const std::string& reason, const std::string& file = "00001.RA1",
                           const std::string& sentence = FileReadError) {
        ExpectTold(sentence + "\n\n" + file + ": " + reason);
    }

    // Reads a text as the scan of a row, as if its file had been chosen in the dialog.
    ScanReadResult Read(const std::string& text, long row = 1, const std::string& name = "00001.RA1") {
        const std::string path = script.MakeFile(name, text);
        Work.ChosenPath = path;
        Work.ChosenName = name;
        return ReadScan(path, RowNo(row));
    }
    bool ReadAsBaseline(const std::string& text, long row = 1) {
        return ReadBaseline(script.MakeFile("baseline.RA1", text), RowNo(row));
    }
};

} // namespace Quillon
