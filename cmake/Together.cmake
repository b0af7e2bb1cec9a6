# Sources of a folder compiled eight at a time: what they share, headers and templates, is then read and built once.
# A fresh test builds everything two times over; there it takes a third of the time for tests, half for folders. For
# work on a folder it is off: a change would compile its neighbours too, and a source that forgets a header is
# found only by itself.
option(QUILLON_TOGETHER "Compile the sources of a folder eight at a time" OFF)

# Those that have a name of their own which a neighbour has too ("redefinition" or "shadows" tells of one that is
# missing here).
set(quillon_apart
    batch/SortRun.cpp
    chart/dialogs/AxisOptsForm.cpp chart/dialogs/LineWidthForm.cpp chart/dialogs/PrintGrForm.cpp
    chart/dialogs/SetColor.cpp chart/dialogs/ShiftData.cpp chart/dialogs/TitleOptsForm.cpp
    chart/hand/ChartWheel.cpp
    chart/targets/PageGeometry.cpp chart/targets/PaperNote.cpp chart/targets/PictureTarget.cpp
    chart/targets/SvgFile.cpp
    commands/export/PrintedReport.cpp
    fit/forms/GetGuess.cpp
    graphs/FigureGraphs.cpp graphs/GraphPair.cpp
    input/IniFile.cpp
    models/forms/ConcForm.cpp models/forms/ShareForm.cpp models/forms/ShowConstraintForm.cpp
    models/forms/SigmaCalcForm.cpp models/forms/SpecForm.cpp
    models/table/ModelTable.cpp
    planning/solution/Solutes.cpp
    reporting/ParameterTable.cpp reporting/Report.cpp reporting/ReportConstraints.cpp reporting/ReportModel.cpp
    reporting/ReportPage.cpp reporting/Results.cpp
    scandata/forms/FileFormChannels.cpp scandata/forms/FileFormEvents.cpp scandata/forms/FileFormMenu.cpp
    scandata/forms/VelocityRun.cpp
    scandata/range/ProposeRange.cpp scandata/range/RangeGraph.cpp scandata/range/RangeOptions.cpp
    scandata/range/RangeReadings.cpp scandata/range/Spikes.cpp
    scandata/reader/ScanNames.cpp scandata/reader/ScanReader.cpp
    studies/StudyForm.cpp studies/StudyKinds.cpp
    tests/fit/MatInvTest.cpp tests/fit/Robustness.cpp
    tests/graphs/FigureTest.cpp tests/graphs/GraphWindowsTest.cpp
    tests/persistence/FitVersionsTest.cpp
    tests/scandata/LeftOutTest.cpp tests/scandata/MeanScanTest.cpp
    tests/studies/OtherMinimaTest.cpp)
list(TRANSFORM quillon_apart PREPEND ${PROJECT_SOURCE_DIR}/)

# quillon_together(TARGET): asked by the folder that makes the target.
function(quillon_together target)
  if(NOT QUILLON_TOGETHER)
    return()
  endif()
  set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 8)
  set_source_files_properties(${quillon_apart} PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
endfunction()
