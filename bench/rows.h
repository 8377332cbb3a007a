// SPDX-License-Identifier: MIT

#pragma once

#include "bench/measure.h"

#include <vector>

namespace bench {

/// Where the server with the measuring catalog answers, and where files may be written.
struct Surroundings {
    QString server;
    QString folder;
};

/// Measures one row of the table; some rows have a second line. Throws when the work itself fails. Every row
/// runs in a process of its own, in which a ui::Application exists.
using Measurement = std::vector<Result> (*)(const Surroundings& surroundings);

std::vector<Result> measureOpen(const Surroundings& surroundings);
std::vector<Result> measureFirstRows(const Surroundings& surroundings);
std::vector<Result> measureMemory(const Surroundings& surroundings);
std::vector<Result> measureRegion(const Surroundings& surroundings);
std::vector<Result> measureWheel(const Surroundings& surroundings);
std::vector<Result> measureSortByName(const Surroundings& surroundings);
std::vector<Result> measureSortByNumber(const Surroundings& surroundings);
std::vector<Result> measureFilter(const Surroundings& surroundings);
std::vector<Result> measureFilterByNumber(const Surroundings& surroundings);
std::vector<Result> measureFilterList(const Surroundings& surroundings);
std::vector<Result> measureFind(const Surroundings& surroundings);
std::vector<Result> measureSelectionSum(const Surroundings& surroundings);
std::vector<Result> measureTree(const Surroundings& surroundings);
std::vector<Result> measureTreeFind(const Surroundings& surroundings);
std::vector<Result> measureExport(const Surroundings& surroundings);
std::vector<Result> measureExportMemory(const Surroundings& surroundings);
std::vector<Result> measureGrowth(const Surroundings& surroundings);
std::vector<Result> measureIsql(const Surroundings& surroundings);
std::vector<Result> measureStart(const Surroundings& surroundings);

} // namespace bench
