#pragma once
// Graph files for tests: some that are made here by hand, field by field, and graphs to save.

#include "ChartBench.h"
#include "chart/files/GraphFile.h"
#include "tests/support/ScriptedPlatform.h"

#include <cstring>
#include <string>
#include <vector>

namespace Quillon {

// Bytes put together by the layout of the file, without the program's own codec.
struct Maker {
    std::string Bytes;
    void Word(int v) {
        Bytes += static_cast<char>(v & 0xFF);
        Bytes += static_cast<char>(v >> 8 & 0xFF);
    }
    void Words(int v, int n) {
        for (int i = 0; i < n; ++i)
            Word(v);
    }
    void Long(unsigned v) {
        Word(static_cast<int>(v & 0xFFFF));
        Word(static_cast<int>(v >> 16));
    }
    void Single(float v) {
        unsigned bits = 0;
        std::memcpy(&bits, &v, 4);
        Long(bits);
    }
    void Text(const std::string& t) {
        Word(static_cast<int>(t.size()));
        Bytes += t;
    }
    void Fixed(std::string t, std::size_t n) {
        t.resize(n, ' ');
        Bytes += t;
    }
    void Box(int x2, int y2) {
        Words(0, 2);
        Word(x2);
        Word(y2);
        Word(15);
        Words(0, 3);
    }
    void Title(const std::string& t) {
        Fixed(t, 80);
        Word(3);
        Single(0.02F);
        Word(0);
        Word(1);
    }
    void Axis(const std::string& title, float min, float max) {
        Word(1), Word(1), Word(2);
        Title(title);
        Word(0), Word(1), Word(1);
        Single(10.0F);
        Word(0);
        Single(min), Single(max), Single(1.0F);
        Fixed("", 40);
        Word(3);
        Single(0.02F), Single(min), Single((max - min) / 4.0F);
        Word(1), Word(2), Word(15), Word(10);
    }
    void State(int bytes, int points, int sets, int first, int cyclesBuilt) {
        Words(0, 2);
        Word(cyclesBuilt);
        Single(1.0F);
        Word(800), Word(600), Word(14), Word(799), Word(599), Word(998);
        Word(0), Word(0), Word(799), Word(599);
        Words(0, 5);
        Word(points), Word(sets), Word(first), Word(first + sets - 1), Word(1), Word(2), Word(2);
        Words(4, 6);
        if (bytes != 86) Word(0);
        Single(0.04F), Single(0.006F);
        Words(0, bytes == 84 ? 4 : 6);
    }
    void Spec() {
        const std::size_t before = Bytes.size();
        Word(4), Word(1), Word(3), Word(1);
        Box(0, 0), Box(700, 500);
        Title("By hand"), Title("second line");
        Axis("X", 0, 4), Axis("", 0, 4), Axis("Y", 0, 8), Axis("", 0, 8);
        Word(1), Word(3), Word(0), Word(3);
        Single(0.016F);
        Word(1);
        Box(0, 0);
        Word(15);
        Long(0);
        Fixed("0", 80);
        EXPECT_EQ(Bytes.size() - before, 1064U);
    }
    void Former() { // the cycles of versions up to 1.2: all colours alike, so that they are known again
        for (int i = 0; i <= 69; ++i)
            Long(0x123456);
        for (int cycle = 0; cycle < 5; ++cycle)
            Words(cycle == 3 ? 2 : 0, 70);
    }
    void Orders() {
        Word(1), Word(2), Word(0);
        Word(0), Word(1);          // lines
        Word(1), Word(0);          // borders, as many
        Word(5), Word(6), Word(7); // symbols
        Word(0);                   // patterns
    }
};

// What a file made by hand may have otherwise.
struct HandMade {
    int StateBytes = 84;
    std::string Program = "QUILLON";
    int Held = -1, Target = 1, CyclesBuilt = 1;
    std::vector<float> Margins = {1.0F, 1.5F, 2.0F, 2.5F};
    std::vector<std::string> Names = {"one", "two"};
    int FirstSet = 1;
    // The word by which an early header is longer, and where it stands.
    enum Place { Nowhere, InFront, BehindMargins, BeforeSymbolSize } Longer = Nowhere;
    int Word = 0x7F7F;
};

// A graph of two sets of three points, in the layout of a version.
inline std::string MadeByHand(const std::string& versionText, double version, const HandMade& h = {}) {
    Maker m;
    m.Text(h.Program);
    m.Text(versionText);
    const auto longer = [&](HandMade::Place place) {
        if (h.Longer == place) m.Word(h.Word);
    };
    longer(HandMade::InFront);
    m.Word(h.Held), m.Word(-1);
    for (const float margin : h.Margins)
        m.Single(margin);
    longer(HandMade::BehindMargins);
    m.Word(0), m.Word(0);
    m.Single(3.0F), m.Single(4.0F), m.Single(-1.0F), m.Single(0.0F);
    m.Word(-1), m.Word(0), m.Word(-1), m.Word(0), m.Word(2);
    longer(HandMade::BeforeSymbolSize); // as a single no size of symbols
    if (version < 1.2) m.Single(77.0F);
    m.Single(0.012F);
    for (const float size : {0.008F, 0.005F, 30.0F, 0.02F, 0.02F, 3.0F, 3.0F, 3.0F, 15.0F, 10.0F, 15.0F})
        m.Single(size);
    for (int i = 0; i < 4; ++i)
        m.Single(1.0F);
    m.Word(h.Target), m.Word(0), m.Word(0), m.Word(0), m.Word(-1);
    m.Word(36), m.Word(6), m.Word(36), m.Word(5);
    m.Word(2);
    m.State(h.StateBytes, 3, 2, h.FirstSet, h.CyclesBuilt);
    m.Spec();
    m.Words(0, 30), m.Words(0, 8);
    for (const float x : {1.0F, 2.0F, 3.0F, 1.0F, 2.0F, MissingValue})
        m.Single(x);
    for (const float y : {1.0F, 4.0F, 7.0F, 2.0F, 5.0F, MissingValue})
        m.Single(y);
    const bool counts = version > 1.0;
    if (counts) m.Word(2), m.Word(0);
    for (int i = 0; i < (counts ? 3 : 14); ++i)
        m.Long(0x0000FF + static_cast<unsigned>(i));
    for (int i = 0; i < (counts ? 1 : 7); ++i)
        m.Long(0);
    if (counts) m.Word(69);
    if (version > 1.2)
        m.Orders();
    else
        m.Former();
    m.Word(1); // a mark
    m.Word(3), m.Word(0), m.Word(1), m.Word(0);
    m.Single(2.0F), m.Single(0.0F), m.Single(0.0F), m.Single(0.0F);
    m.Word(1); // a note
    m.Fixed("here", 80);
    m.Word(3);
    m.Single(0.02F);
    m.Word(0), m.Word(0), m.Word(1);
    m.Single(2.0F), m.Single(6.0F);
    m.Word(2), m.Word(7), m.Word(8); // flags
    m.Word(0);                       // no table
    m.Word(static_cast<int>(h.Names.size()));
    for (const std::string& name : h.Names)
        m.Text(name);
    m.Word(0); // no labels of categories
    if (version > 1.0) m.Word(-1);
    if (version > 1.3) m.Single(9.0F);
    return m.Bytes;
}

class GraphFileTest : public ChartBench {
protected:
    GraphFileTest() {
        Seams.DataDirectory = [this] { return Outside.Directory(); };
    }
    void PlotRich() {
        GraphSpec spec = Begin();
        spec.SymbolMode = 1;
        spec.Title1.Text = "A graph";
        spec.AxisX1.Title.Text = "Radius";
        spec.Legend.Show = 1;
        spec.AxisX1.ScaleMode = spec.AxisY1.ScaleMode = ScaleModes::Autorange;
        const SetTable x = Table({{1, 2, 3}, {1.5F, 2.5F}});
        const SetTable y = Table({{0.11F, 0.52F, 0.93F}, {0.3F, 0.6F}});
        GraphNote note;
        note.Text = "a note";
        note.Size = 0.02F;
        note.X = 2.0F;
        note.Y = 0.5F;
        GraphMark mark;
        mark.Kind = 3;
        mark.X1 = 1.7F;
        PlotSets(spec, x, y, 3, 1, 2, {"first", "second"}, {note}, {mark});
    }
    // Two species of two samples, told apart by colour and dash.
    void PlotLooks() {
        NextLooks.Sets = {{1, 0}, {2, 0}, {1, 1}, {2, 1}};
        NextLooks.Legend = {{"monomer", {1, 0}}, {"dimer", {2, 0}}, {"one", {-1, 0}}, {"two", {-1, 1}}};
        GraphSpec spec = Begin();
        spec.Legend.Show = 1;
        spec.AxisX1.ScaleMode = spec.AxisY1.ScaleMode = ScaleModes::Autorange;
        const std::vector<float> x = {1, 2, 3};
        Plot(spec, Table({x, x, x, x}), Table({{1, 2, 3}, {2, 4, 6}, {3, 5, 7}, {4, 7, 9}}));
    }
    std::vector<std::string> Painted() {
        Screen.Clear();
        ShowGraph();
        return Screen.Lines();
    }
    static std::string Failure(const std::string& text) {
        return "Error '" + text +
               "' occurred while restoring graph information --- terminating.  This could cause this program "
               "to become unstable.";
    }
    // The text that a file is refused with; "" when it is taken.
    static std::string Refusal(const std::string& bytes) {
        try {
            AdoptGraph(bytes);
        } catch (const RuntimeError& error) {
            return error.Text;
        }
        return "";
    }
};

} // namespace Quillon
