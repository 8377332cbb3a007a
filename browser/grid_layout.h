#pragma once

#include "grid/table/grid_spec.h"
#include "grid/tree/tree_list.h"

#include <array>

/// The grids of the catalog browser and their columns. Widths are design widths in pixels at 96 per inch.
namespace browser::layout {

using grid::ColumnSpec;
using grid::GridSpec;

inline constexpr bool hidden = false;
inline constexpr bool shown = true;
inline constexpr auto right = Qt::AlignRight;

inline constexpr std::array materialColumns{
    ColumnSpec{u"cxGrid1DBTableView1ID", u"ID", hidden},
    ColumnSpec{u"cxGrid1DBTableView1PER", u"PER", hidden},
    ColumnSpec{u"cxGrid1DBTableView1REGIONID", u"REGIONID", hidden},
    ColumnSpec{u"cxGrid1DBTableView1KOD", u"KOD", shown, 64},
    ColumnSpec{u"cxGrid1DBTableView1NOMER", u"NOMER", shown, 90},
    ColumnSpec{u"cxGrid1DBTableView1NAME", u"NAME", shown, 308},
    ColumnSpec{u"cxGrid1DBTableView1EDIZM", u"EDIZM", shown, 104},
    ColumnSpec{u"cxGrid1DBTableView1BRUTTO", u"BRUTTO", shown, 105},
    ColumnSpec{u"cxGrid1DBTableView1KLASSGR", u"KLASSGR", shown, 104},
    ColumnSpec{u"cxGrid1DBTableView1KODUZLA", u"KODUZLA", shown, 101},
    ColumnSpec{u"cxGrid1DBTableView1BAZOVAY", u"BAZOVAY", shown, 82, right},
    ColumnSpec{u"cxGrid1DBTableView1OPTOVAY", u"OPTOVAY", shown, 81, right},
    ColumnSpec{u"cxGrid1DBTableView1CMETNAY", u"CMETNAY", shown, 82, right},
    ColumnSpec{u"cxGrid1DBTableView1INDEKS", u"INDEKS", shown, 81, right},
};

/// Lies beneath the table of contents and is never seen; most of its fields do not exist in its dataset.
inline constexpr std::array coveredColumns{
    ColumnSpec{u"cxGridDBColumn1", u"ID", hidden},
    ColumnSpec{u"cxGridDBColumn2", u"PER", hidden},
    ColumnSpec{u"cxGridDBColumn3", u"REGIONID", hidden},
    ColumnSpec{u"cxGridDBColumn4", u"KOD", shown},
    ColumnSpec{u"cxGridDBColumn5", u"OBOSNOV", shown, 200},
    ColumnSpec{u"cxGridDBColumn6", u"NAME", shown, 537},
    ColumnSpec{u"cxGridDBColumn7", u"CMP", shown},
    ColumnSpec{u"cxGridDBColumn8", u"OZP", shown},
    ColumnSpec{u"cxGridDBColumn9", u"EMM", shown},
    ColumnSpec{u"cxGridDBColumn10", u"ZMP", shown},
};

inline constexpr std::array contentsColumns{
    ColumnSpec{u"cxGridDBTableView2ID", u"ID", hidden},
    ColumnSpec{u"cxGridDBTableView2PER", u"PER", hidden},
    ColumnSpec{u"cxGridDBTableView2REGIONID", u"REGIONID", hidden},
    ColumnSpec{u"cxGridDBTableView2KOD", u"KOD", shown, 110},
    ColumnSpec{u"cxGridDBTableView2PUNKT", u"PUNKT", shown, 785},
    ColumnSpec{u"cxGridDBTableView2KODUZLA", u"KODUZLA", shown, 307},
};

inline constexpr std::array machineColumns{
    ColumnSpec{u"cxGridDBTableView3ID", u"ID", hidden},
    ColumnSpec{u"cxGridDBTableView3PER", u"PER", hidden},
    ColumnSpec{u"cxGridDBTableView3REGIONID", u"REGIONID", hidden},
    ColumnSpec{u"cxGridDBTableView3KOD", u"KOD", shown, 145},
    ColumnSpec{u"cxGridDBTableView3OBOSNOV", u"OBOSNOV", shown, 217},
    ColumnSpec{u"cxGridDBTableView3NAME", u"NAME", shown, 294},
    ColumnSpec{u"cxGridDBTableView3EDIZM", u"EDIZM", shown, 93},
    ColumnSpec{u"cxGridDBTableView3EMM", u"EMM", shown, 111, right},
    ColumnSpec{u"cxGridDBTableView3ZMP", u"ZMP", shown, 342, right},
};

inline constexpr std::array labourColumns{
    ColumnSpec{u"cxGridDBTableView4ID", u"ID", hidden},
    ColumnSpec{u"cxGridDBTableView4PER", u"PER", hidden},
    ColumnSpec{u"cxGridDBTableView4REGIONID", u"REGIONID", hidden},
    ColumnSpec{u"cxGridDBTableView4KOD", u"KOD", shown, 261},
    ColumnSpec{u"cxGridDBTableView4OBOSNOV", u"OBOSNOV", shown, 199},
    ColumnSpec{u"cxGridDBTableView4NAME", u"NAME", shown, 375},
    ColumnSpec{u"cxGridDBTableView4EDIZM", u"EDIZM", shown, 217},
    ColumnSpec{u"cxGridDBTableView4OZP", u"OZP", shown, 150, right},
};

inline constexpr std::array transportColumns{
    ColumnSpec{u"cxGridDBTableView8ID", u"ID", hidden},
    ColumnSpec{u"cxGridDBTableView8PER", u"PER", hidden},
    ColumnSpec{u"cxGridDBTableView8REGIONID", u"REGIONID", hidden},
    ColumnSpec{u"cxGridDBTableView8KOD", u"KOD", shown, 196},
    ColumnSpec{u"cxGridDBTableView8OBOSNOV", u"OBOSNOV", shown, 294},
    ColumnSpec{u"cxGridDBTableView8NAME", u"NAME", shown, 351},
    ColumnSpec{u"cxGridDBTableView8KLASSGR", u"KLASSGR", shown, 152},
    ColumnSpec{u"cxGridDBTableView8CMETNAY", u"CMETNAY", shown, 104, right},
    ColumnSpec{u"cxGridDBTableView8TECCENA", u"TECCENA", shown, 105, right},
};

inline constexpr std::array regionColumns{
    ColumnSpec{u"cxGridDBTableView5ID", u"ID", hidden},
    ColumnSpec{u"cxGridDBTableView5NAME", u"NAME", shown},
};

inline constexpr std::array firmColumns{
    ColumnSpec{u"cxGridDBTableView6INN", u"INN", shown, 92},
    ColumnSpec{u"cxGridDBTableView6FULLNAME", u"FULLNAME", shown, 370},
    ColumnSpec{u"cxGridDBTableView6URADDRESS", u"URADDRESS", shown, 370},
    ColumnSpec{u"cxGridDBTableView6WEBSITE", u"WEBSITE", shown, 370},
};

inline constexpr std::array coefficientColumns{
    ColumnSpec{u"cxGridDBTableView7NAME", u"NAME", shown, 300},
    ColumnSpec{u"cxGridDBTableView7KOEFF", u"KOEFF", shown, 100, right},
};

inline constexpr GridSpec materials{
    u"cxGrid1", u"cxGrid1Level1", u"cxGrid1DBTableView1", materialColumns, u"ID", u"KOD"};
inline constexpr GridSpec covered{u"cxGrid2",     u"cxGridLevel1", u"cxGridDBTableView1",
                                  coveredColumns, u"ID",           u""};
inline constexpr GridSpec contents{u"cxGrid3",      u"cxGridLevel2", u"cxGridDBTableView2",
                                   contentsColumns, u"ID",           u"KOD"};
inline constexpr GridSpec machines{u"cxGrid4",     u"cxGridLevel3", u"cxGridDBTableView3",
                                   machineColumns, u"ID",           u"KOD"};
inline constexpr GridSpec labour{u"cxGrid5",    u"cxGridLevel4", u"cxGridDBTableView4",
                                 labourColumns, u"ID",           u"KOD"};
inline constexpr GridSpec transport{u"cxGrid9",       u"cxGridLevel8", u"cxGridDBTableView8",
                                    transportColumns, u"ID",           u"KOD"};
inline constexpr GridSpec regions{u"cxGrid6",    u"cxGridLevel5", u"cxGridDBTableView5",
                                  regionColumns, u"ID",           u"NAME"};
inline constexpr GridSpec firms{u"cxGrid7",  u"cxGridLevel6", u"cxGridDBTableView6",
                                firmColumns, u"INN",          u"INN"};
inline constexpr GridSpec coefficients{u"cxGrid8",         u"cxGridLevel7", u"cxGridDBTableView7",
                                       coefficientColumns, u"NAME",         u"NAME"};

inline constexpr std::array treeColumns{
    ColumnSpec{u"cxDBTreeList1ID", u"ID", hidden, 100},
    ColumnSpec{u"cxDBTreeList1PARENTID", u"PARENTID", hidden, 100},
    ColumnSpec{u"cxDBTreeList1NAME", u"NAME", shown, 100},
    ColumnSpec{u"cxDBTreeList1TREE", u"TREE", shown, 100},
};

inline constexpr grid::TreeListSpec catalogTree{u"cxDBTreeList1", treeColumns, u"ID", u"PARENTID",
                                                u"Введите текст для поиска"};

} // namespace browser::layout
