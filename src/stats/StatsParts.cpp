#include "stats/StatsParts.h"

#include "core/Text.h"

#include <utility>

namespace tv {

CheckList CollectCheckLines(CheckIterator& it, int16_t category, const CheckInputs& in) {
    CheckList list;
    std::string title;
    std::string line;
    bool found = GetNextCheckLine(it, category, list.Title, line, in);
    while (found) {
        list.Lines.push_back(std::move(line));
        found = GetNextCheckLine(it, category, title, line, in);
    }
    return list;
}

std::string TableRow(const RecordTable& table, int index, std::size_t indexWidth) {
    const std::string& text = table.LineText[index];
    std::string row = AlignRight(index, indexWidth);
    row.reserve(row.size() + 2 + text.size());
    row += "  ";
    row += text;
    return row;
}

std::vector<std::string> HeaderRows(const RecordTable& table, std::size_t indexWidth,
                                    const std::string& runRow) {
    std::vector<std::string> rows;
    bool afterHeader = false;
    for (int i = 1; i <= table.LineCount; ++i) {
        if (!table.IsRecord(i)) {
            rows.push_back(TableRow(table, i, indexWidth));
            afterHeader = true;
        } else if (afterHeader) {
            rows.push_back(runRow);
            afterHeader = false;
        }
    }
    return rows;
}

std::string CountsLine(const RecordTable& table) {
    return std::to_string(table.RecordCount) + " QRL entries in file, total of " +
           std::to_string(table.LineCount) + " lines in file";
}

} // namespace tv
