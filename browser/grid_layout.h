#pragma once

#include "data/catalog_fields.h"
#include "db/field.h"
#include "grid/rows/column.h"
#include "grid/table/grid_spec.h"
#include "grid/tree/tree_list.h"

#include <algorithm>
#include <array>

/// The grids of the catalog browser. Their columns are the fields of their datasets.
namespace browser::layout {

namespace fields = data::fields;
using grid::ColumnSpec;
using grid::GridSpec;

/// The columns of a view that shows a dataset: one for each field, in the fields' order, the header at the
/// side where the values stand.
template <std::size_t count>
consteval std::array<ColumnSpec, count> columnsOf(const std::array<db::FieldSpec, count>& fields) {
    std::array<ColumnSpec, count> columns;
    std::ranges::transform(fields, columns.begin(), [](const db::FieldSpec& field) {
        return ColumnSpec{.field = field.column,
                          .visible = field.visible,
                          .width = field.columnWidth,
                          .headerAlignment = field.alignment()};
    });
    return columns;
}

inline constexpr auto materialColumns = columnsOf(fields::materials);
inline constexpr auto contentsColumns = columnsOf(fields::contents);
inline constexpr auto machineColumns = columnsOf(fields::machines);
inline constexpr auto labourColumns = columnsOf(fields::labour);
inline constexpr auto regionColumns = columnsOf(fields::regions);
inline constexpr auto firmColumns = columnsOf(fields::firms);
inline constexpr auto coefficientColumns = columnsOf(fields::coefficients);
inline constexpr auto transportColumns = columnsOf(fields::transport);
inline constexpr auto treeColumns = columnsOf(fields::catalogTree);

/// The grid lies beneath the table of contents and is never seen; most of the fields do not exist in its
/// dataset.
inline constexpr std::array coveredColumns{
    ColumnSpec{.name = u"cxGridDBColumn1", .field = u"ID", .visible = false},
    ColumnSpec{.name = u"cxGridDBColumn2", .field = u"PER", .visible = false},
    ColumnSpec{.name = u"cxGridDBColumn3", .field = u"REGIONID", .visible = false},
    ColumnSpec{.name = u"cxGridDBColumn4", .field = u"KOD"},
    ColumnSpec{.name = u"cxGridDBColumn5", .field = u"OBOSNOV", .width = 200},
    ColumnSpec{.name = u"cxGridDBColumn6", .field = u"NAME", .width = 537},
    ColumnSpec{.name = u"cxGridDBColumn7", .field = u"CMP"},
    ColumnSpec{.name = u"cxGridDBColumn8", .field = u"OZP"},
    ColumnSpec{.name = u"cxGridDBColumn9", .field = u"EMM"},
    ColumnSpec{.name = u"cxGridDBColumn10", .field = u"ZMP"},
};

inline constexpr GridSpec materials{u"cxGrid1", u"cxGrid1Level1", u"cxGrid1DBTableView1", materialColumns,
                                    u"KOD"};
inline constexpr GridSpec covered{u"cxGrid2", u"cxGridLevel1", u"cxGridDBTableView1", coveredColumns, u""};
inline constexpr GridSpec contents{u"cxGrid3", u"cxGridLevel2", u"cxGridDBTableView2", contentsColumns,
                                   u"KOD"};
inline constexpr GridSpec machines{u"cxGrid4", u"cxGridLevel3", u"cxGridDBTableView3", machineColumns,
                                   u"KOD"};
inline constexpr GridSpec labour{u"cxGrid5", u"cxGridLevel4", u"cxGridDBTableView4", labourColumns, u"KOD"};
inline constexpr GridSpec regions{u"cxGrid6", u"cxGridLevel5", u"cxGridDBTableView5", regionColumns, u"NAME"};
inline constexpr GridSpec firms{u"cxGrid7", u"cxGridLevel6", u"cxGridDBTableView6", firmColumns, u"INN"};
inline constexpr GridSpec coefficients{u"cxGrid8", u"cxGridLevel7", u"cxGridDBTableView7", coefficientColumns,
                                       u"NAME"};
inline constexpr GridSpec transport{u"cxGrid9", u"cxGridLevel8", u"cxGridDBTableView8", transportColumns,
                                    u"KOD"};

inline constexpr grid::TreeListSpec catalogTree{
    .name = u"cxDBTreeList1",
    .columns = treeColumns,
    .keyField = u"ID",
    .parentField = u"PARENTID",
};

} // namespace browser::layout
