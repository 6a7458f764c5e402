#include "faults/fault_table.h"

#include "support/bytes.h"

#include <ostream>
#include <sstream>

namespace testing_support {

namespace {

std::vector<std::string> cellsOf(const std::string& line)
{
    constexpr char separator[] = " | ";
    std::vector<std::string> cells;
    size_t begin = 2;
    for (size_t end = line.find(separator, begin); end != line.npos;
         end = line.find(separator, begin)) {
        cells.push_back(line.substr(begin, end - begin));
        begin = end + 3;
    }
    cells.push_back(line.substr(begin, line.rfind(" |") - begin));
    return cells;
}

std::string withoutMarks(const std::string& name)
{
    return name.substr(1, name.size() - 2);
}

} // namespace

std::vector<FaultRow> readFaultTable(const std::wstring& page)
{
    std::vector<FaultRow> rows;
    std::istringstream lines(readBytes(page).value_or(""));
    std::string scenario;
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("## "))
            scenario = line.substr(3);
        if (!line.starts_with("| `"))
            continue;
        const std::vector<std::string> cells = cellsOf(line);
        if (cells.size() == 4)
            rows.push_back({scenario, withoutMarks(cells[0]), cells[1], cells[2], cells[3]});
    }
    return rows;
}

std::string asLine(const FaultRow& row)
{
    return "| `" + row.fault + "` | " + row.user + " | " + row.disk + " | " + row.afterwards + " |";
}

void PrintTo(const FaultRow& row, std::ostream* stream)
{
    *stream << row.scenario << ": " << asLine(row);
}

} // namespace testing_support
