#pragma once
// The graph file: everything that is needed to show a graph again without the analysis that made it. The
// layout is in GraphFields.cpp.
//
// Writing and reading are pure functions between bytes and a chart module; the commands around them ask for
// the file, talk to the user and take the result into use. A restore that fails leaves the graph at hand as
// it was, and a save that fails leaves the former file as it was.

#include "chart/records/ChartState.h"
#include "platform/Platform.h"

#include <cstdint>
#include <string>

namespace Quillon {

// --- bytes -----------------------------------------------------------------------------------------------

// The version of the format that is written, and the newest that can be read.
inline constexpr const char* GraphFileVersion = "1.50";
inline constexpr double NewestGraphFile = 1.5;

// The bytes that a GraphSpec takes in a file.
inline constexpr std::size_t GraphSpecBytes = 1064;

// A graph as a file holds it.
struct GraphContents {
    ChartModule Module;
    OneBasedMatrix<float> BoxTable; // square; ChartBoxTable, carried along
    std::int16_t ZoomState{};       // markers in use when it was saved
};

// The first two texts of a file.
struct GraphFileHeader {
    std::string Program; // of the program that wrote it, in capitals
    std::string Version; // of the format, "1.50"
    std::size_t Size{};  // bytes that the two take
};

// True when a path names a graph file: it ends with ".grf", in any case.
bool NamesGraphFile(const std::string& path);

// RuntimeError when the bytes do not start like a graph file.
GraphFileHeader ReadGraphHeader(const std::string& bytes);

// What there is to say about a graph of another program; "" of this one's own.
std::string ForeignGraphText(const GraphFileHeader& header);

// The file for a graph. A text of more than 32767 characters is the RuntimeError "Overflow".
std::string EncodeGraph(const GraphContents& graph);

// The graph in a file of any version up to NewestGraphFile. Settings that files do not keep are those of
// present. Whoever takes it into use selects a target and lays out. Bytes that are no valid file are a
// RuntimeError.
GraphContents DecodeGraph(const std::string& bytes, const ChartModule& present);

// True when the codes of a GraphSpec are all such as there are, or it is the one of no graph at all.
bool SpecStands(const GraphSpec& spec);

// --- without a word to the user ----------------------------------------------------------------------------

// The file of the graph at hand.
std::string GraphFileBytes();

// Takes the graph in bytes into use on the picture box: the whole of it is read before anything is replaced,
// and the size of the box decides whether the frame is kept. RuntimeError, and the graph as it was, when the
// bytes are refused, when there is no box and when the graph has no room in it. The next GraphInit reads the
// defaults again.
void AdoptGraph(const std::string& bytes);

// --- commands ----------------------------------------------------------------------------------------------

// The path of a file that the user chooses; "" when the dialog is cancelled or the name left blank.
std::string ChosenFile(const FileRequest& request);

// Asks for a file and writes the graph to it. A graph that stands on the screen without its data is refused.
void DoSaveGraph();

// Writes the graph at hand to a file: what stands behind DoSaveGraph. False, told, when it failed; the file
// then is what it was.
bool SaveGraphFile(const std::string& path);

// Asks for a file and shows the graph in it. While the graph at hand is waited for, that is told instead.
void DoRestoreGraph();

// The same, with an answer: true when another graph stands.
bool RestoreChosenGraph();

// Shows the graph in a file: what stands behind DoRestoreGraph, the command line and a dropped file. False
// when the file was refused or the user did not want it; the graph at hand then is as it was.
bool RestoreGraphFile(const std::string& path);

} // namespace Quillon
