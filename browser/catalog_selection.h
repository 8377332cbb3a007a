#pragma once

#include "data/data_modul.h"

#include <QComboBox>

/// The choice of a region and a period, kept in CurRegionId and CurPeriod, and the datasets that follow it.
namespace browser {

/// Opens the regions, lists their names and selects the fourth; its ID becomes the chosen region where the
/// name is found. Throws db::DatabaseError.
void fillRegionSelector(TDM& module, QComboBox& selector);

/// Opens the periods, lists them and selects the first, which becomes the chosen period. Throws
/// db::DatabaseError.
void fillPeriodSelector(TDM& module, QComboBox& selector);

/// Binds the five datasets of the selection and opens them and the three that do not depend on it; those
/// already open stay as they are. Throws db::DatabaseError.
void openCatalogs(TDM& module);

/// Makes the row of the region of that exact name current; false, and nothing changed, when there is none.
[[nodiscard]] bool locateRegion(TDM& module, const QString& name);

/// The ID of the regions' current row as a 32-bit integer: its low 32 bits, 0 where it is NULL.
[[nodiscard]] std::int32_t currentRegionId(const TDM& module);

/// Closes, binds and opens the five datasets of the selection one after the other. An error leaves those done
/// open, the failing one closed and the others untouched. Throws db::DatabaseError.
void ReopenSelectionDatasets(TDM& module);

} // namespace browser
