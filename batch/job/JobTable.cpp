#include "batch/job/JobTable.h"

#include "batch/console/OneLine.h"
#include "platform/RuntimeError.h"
#include "platform/Words.h"

#include <algorithm>
#include <functional>
#include <sstream>

namespace Quillon {

namespace {

[[noreturn]] void FailTable(const std::string& path, const std::string& reason) {
    RaiseError(OneLine(path + ": " + reason));
}

void CheckHeads(const JobTable& table) {
    for (const std::string& head : table.Heads) {
        if (head.empty()) FailTable(table.Path, "a column has no name");
        if (head.find_first_of("{}\r\n") != std::string::npos)
            FailTable(table.Path, Quoted(head) + " is no name of a column");
        if (std::count(table.Heads.begin(), table.Heads.end(), head) > 1)
            FailTable(table.Path, "the column " + head + " stands twice");
    }
}

// Calls name(what stands in it) for each pair of braces and puts its answer there.
std::string WithBraces(const std::string& text, const std::function<std::string(const std::string&)>& name) {
    std::string result;
    std::size_t at = 0;
    for (std::size_t open = text.find('{'); open != std::string::npos; open = text.find('{', at)) {
        const std::size_t close = text.find('}', open);
        if (close == std::string::npos) break;
        result += text.substr(at, open - at) + name(text.substr(open + 1, close - open - 1));
        at = close + 1;
    }
    return result + text.substr(at);
}

std::ptrdiff_t PlaceOf(const JobTable& table, const std::string& name) {
    return std::find(table.Heads.begin(), table.Heads.end(), name) - table.Heads.begin();
}
bool IsColumn(const JobTable& table, const std::string& name) {
    return PlaceOf(table, name) != std::ssize(table.Heads);
}

} // namespace

JobTable ParseJobTable(const std::string& text, const std::string& path) {
    JobTable table;
    table.Path = path;
    try {
        table.Rows = ParseCsv(text);
    } catch (const RuntimeError& error) {
        FailTable(path, error.Text);
    }
    if (table.Rows.size() < 2) FailTable(path, "a table has a line of names and at least one row");
    table.Heads = table.Rows.front();
    table.Rows.erase(table.Rows.begin());
    CheckHeads(table);
    return table;
}

std::string Filled(const std::string& text, const JobRow& row) {
    return WithBraces(text, [&](const std::string& name) {
        if (!IsColumn(*row.Table, name)) RaiseError("{" + name + "} is no column of " + row.Table->Path);
        return row.Cells().at(static_cast<std::size_t>(PlaceOf(*row.Table, name)));
    });
}

bool NamesAColumn(const std::string& text, const JobTable& table) {
    bool any = false;
    WithBraces(text, [&](const std::string& name) {
        any |= IsColumn(table, name);
        return "";
    });
    return any;
}

std::string UnknownColumn(const std::string& text, const JobTable& table) {
    std::string unknown;
    WithBraces(text, [&](const std::string& name) {
        if (unknown.empty() && !IsColumn(table, name)) unknown = name;
        return "";
    });
    return unknown;
}

std::vector<JobValue> ValuesOfJob(const std::string& job) {
    std::vector<JobValue> values;
    std::istringstream lines(job);
    int number = 0;
    for (std::string line; std::getline(lines, line);) {
        ++number;
        const std::size_t first = line.find_first_not_of(" \t");
        const std::size_t equals = line.find('=');
        if (first == std::string::npos || line[first] == ';' || line[first] == '#') continue;
        if (equals != std::string::npos)
            values.push_back({line.substr(equals + 1, line.find(" ;", equals) - equals - 1), number});
    }
    return values;
}

std::string WhyRowIsNone(const JobRow& row) {
    const auto cells = std::ssize(row.Cells());
    const auto columns = std::ssize(row.Table->Heads);
    if (cells == columns) return "";
    return "the row has " + Counted(cells, "cell") + ", the table " + Counted(columns, "column");
}

} // namespace Quillon
