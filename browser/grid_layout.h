#pragma once

#include "browser/column_table.h"
#include "data/catalog_fields.h"
#include "grid/table/grid_spec.h"
#include "grid/tree/tree_list.h"

#include <array>

/// The grids of the catalog browser. Their columns are the fields of their datasets.
namespace browser::layout {

namespace fields = data::fields;

inline constexpr ColumnTable materialColumns(u"cxGrid1DBTableView1", fields::materials);
inline constexpr ColumnTable contentsColumns(u"cxGridDBTableView2", fields::contents);
inline constexpr ColumnTable machineColumns(u"cxGridDBTableView3", fields::machines);
inline constexpr ColumnTable labourColumns(u"cxGridDBTableView4", fields::labour);
inline constexpr ColumnTable regionColumns(u"cxGridDBTableView5", fields::regions);
inline constexpr ColumnTable firmColumns(u"cxGridDBTableView6", fields::firms);
inline constexpr ColumnTable coefficientColumns(u"cxGridDBTableView7", fields::coefficients);
inline constexpr ColumnTable transportColumns(u"cxGridDBTableView8", fields::transport);
inline constexpr ColumnTable treeColumns(u"cxDBTreeList1", fields::catalogTree);

/// The grid lies beneath the table of contents and is never seen; most of the fields do not exist in its
/// dataset.
inline constexpr std::array coveredColumns{
    grid::ColumnSpec{.name = u"cxGridDBColumn1", .field = u"ID", .visible = false},
    grid::ColumnSpec{.name = u"cxGridDBColumn2", .field = u"PER", .visible = false},
    grid::ColumnSpec{.name = u"cxGridDBColumn3", .field = u"REGIONID", .visible = false},
    grid::ColumnSpec{.name = u"cxGridDBColumn4", .field = u"KOD"},
    grid::ColumnSpec{.name = u"cxGridDBColumn5", .field = u"OBOSNOV", .width = 200},
    grid::ColumnSpec{.name = u"cxGridDBColumn6", .field = u"NAME", .width = 537},
    grid::ColumnSpec{.name = u"cxGridDBColumn7", .field = u"CMP"},
    grid::ColumnSpec{.name = u"cxGridDBColumn8", .field = u"OZP"},
    grid::ColumnSpec{.name = u"cxGridDBColumn9", .field = u"EMM"},
    grid::ColumnSpec{.name = u"cxGridDBColumn10", .field = u"ZMP"},
};

/// A grid with the columns of a table.
template <std::size_t count>
consteval grid::GridSpec gridOf(QStringView grid, QStringView level, const ColumnTable<count>& table,
                                QStringView keyField, QStringView footerField) {
    return {grid, level, table.view(), table.columns(), keyField, footerField};
}

inline constexpr auto materials = gridOf(u"cxGrid1", u"cxGrid1Level1", materialColumns, u"ID", u"KOD");
inline constexpr auto contents = gridOf(u"cxGrid3", u"cxGridLevel2", contentsColumns, u"ID", u"KOD");
inline constexpr auto machines = gridOf(u"cxGrid4", u"cxGridLevel3", machineColumns, u"ID", u"KOD");
inline constexpr auto labour = gridOf(u"cxGrid5", u"cxGridLevel4", labourColumns, u"ID", u"KOD");
inline constexpr auto transport = gridOf(u"cxGrid9", u"cxGridLevel8", transportColumns, u"ID", u"KOD");
inline constexpr auto regions = gridOf(u"cxGrid6", u"cxGridLevel5", regionColumns, u"ID", u"NAME");
inline constexpr auto firms = gridOf(u"cxGrid7", u"cxGridLevel6", firmColumns, u"INN", u"INN");
inline constexpr auto coefficients =
    gridOf(u"cxGrid8", u"cxGridLevel7", coefficientColumns, u"NAME", u"NAME");
inline constexpr grid::GridSpec covered{
    .grid = u"cxGrid2",
    .level = u"cxGridLevel1",
    .view = u"cxGridDBTableView1",
    .columns = coveredColumns,
    .keyField = u"ID",
    .footerField = u"",
};

inline constexpr grid::TreeListSpec catalogTree{
    .name = treeColumns.view(),
    .columns = treeColumns.columns(),
    .keyField = u"ID",
    .parentField = u"PARENTID",
    .findPrompt = u"Введите текст для поиска",
};

} // namespace browser::layout
