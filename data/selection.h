// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

#include <cstdint>

namespace db {
class DataSet;
}

class TDM;

/// The chosen region's ID as a 32-bit integer, for the parameter p2; outlives every browser window.
extern std::int32_t CurRegionId;

/// The chosen period as the selector shows it, for the parameter p1; outlives every browser window.
extern QString CurPeriod;

/// The choice of a region and a period, and the datasets that follow it.
namespace data {

/// Sets the parameters of a dataset that reads the rows of one period and region. Throws db::DatabaseError
/// when its query has none.
void bindSelection(db::DataSet& dataSet, const QString& period, std::int32_t region);

/// Binds the five datasets of the selection to CurPeriod and CurRegionId and opens them and the three that do
/// not depend on it; those already open stay as they are. Throws db::DatabaseError.
void openCatalogs(TDM& module);

/// Makes the row of the region of that exact name current; false, and nothing changed, when there is none.
[[nodiscard]] bool locateRegion(TDM& module, const QString& name);

/// Whether that exact name is the one of the chosen region, as locateRegion() finds it.
[[nodiscard]] bool isChosenRegion(const TDM& module, const QString& name);

/// The ID of the regions' current row as a 32-bit integer: its low 32 bits, 0 where it is NULL.
[[nodiscard]] std::int32_t currentRegionId(const TDM& module);

/// Whether the five datasets of the selection hold the rows of CurPeriod and CurRegionId; not so after an
/// error half way.
[[nodiscard]] bool isSelectionRead(TDM& module);

/// Reads the five datasets of the selection again; each stays at its row where that is still there. Throws
/// db::DatabaseError.
void rereadSelection(TDM& module);

/// Closes, binds and opens the five datasets of the selection one after the other. An error leaves those done
/// open, the failing one closed and the others untouched. Throws db::DatabaseError.
void ReopenSelectionDatasets(TDM& module);

} // namespace data
