#pragma once
// The pieces the statistics screen and the printed report share, so that the two always agree.
#include "stats/Checks.h"

#include <cstddef>
#include <string>
#include <vector>

namespace tv {

// One category run to its end: its title and every line it handed out.
struct CheckList {
    std::string Title;
    std::vector<std::string> Lines;
};

CheckList CollectCheckLines(CheckIterator& it, int16_t category, const CheckInputs& in);

// One line of the table: its index right-aligned in indexWidth characters, two spaces, its text.
std::string TableRow(const RecordTable& table, int index, std::size_t indexWidth);

// Every non-record line as a table row; a run of records after one of them as runRow.
std::vector<std::string> HeaderRows(const RecordTable& table, std::size_t indexWidth,
                                    const std::string& runRow);

// RecordCount + " QRL entries in file, total of " + LineCount + " lines in file".
std::string CountsLine(const RecordTable& table);

} // namespace tv
