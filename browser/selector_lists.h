// SPDX-License-Identifier: MIT

#pragma once

class QComboBox;
class TDM;

/// The lists of the selectors of a new window, and what they choose first.
namespace browser {

/// Opens the regions, lists their names and selects the fourth; its ID becomes the chosen region where the
/// name is found. Throws db::DatabaseError.
void fillRegionSelector(TDM& module, QComboBox& selector);

/// Opens the periods, lists them and selects the first, which becomes the chosen period. Throws
/// db::DatabaseError.
void fillPeriodSelector(TDM& module, QComboBox& selector);

} // namespace browser
