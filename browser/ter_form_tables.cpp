// SPDX-License-Identifier: MIT

#include "browser/ter_form_tables.h"

#include "browser/grid_columns.h"
#include "data/catalog_fields.h"
#include "data/data_modul.h"

#include <array>

namespace {

using browser::columnsOf;
namespace fields = data::fields;

/// The grid lies beneath the table of contents and is never seen; most of the fields do not exist in its
/// dataset.
constexpr std::array coveredColumns{
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

} // namespace

std::span<const TTERForm::SelectorSpec> TTERForm::selectors() {
    static constexpr SelectorSpec specs[]{
        {
            .control = {&TTERForm::cxComboBox1, "cxComboBox1", 240, &TTERForm::cxComboBox1PropertiesChange},
            .initialText = u"Регион",
            .hint = u"Выбор текущего региона",
            .gap = {&TTERForm::Panel3, "Panel3", 57},
        },
        {
            .control = {&TTERForm::cxComboBox2, "cxComboBox2", 103, &TTERForm::cxComboBox2PropertiesChange},
            .initialText = u"Период",
            .hint = u"Выбор текущего периода",
        },
    };
    return specs;
}

std::span<const TTERForm::TabSpec> TTERForm::tabs() {
    static constexpr TabSpec specs[]{
        {.sheet = {&TTERForm::cxTabSheet1, "cxTabSheet1", u"КТЦ_Материалы"},
         .panel = {&TTERForm::Panel4, "Panel4"},
         .button = {&TTERForm::Button1, "Button1", &TTERForm::Button1Click},
         .file = {.fixedText = u"_КТЦ_Материалы_", .ofSelection = true},
         .shown = {&TTERForm::cxGrid1,
                   &TDM::DataSource3,
                   {u"cxGrid1", u"cxGrid1Level1", u"cxGrid1DBTableView1", columnsOf<fields::materials>,
                    u"KOD"}}},
        {.sheet = {&TTERForm::cxTabSheet2, "cxTabSheet2", u"КТЦ_Материалы_оглавление"},
         .panel = {&TTERForm::Panel5, "Panel5"},
         .button = {&TTERForm::Button2, "Button2", &TTERForm::Button2Click},
         .file = {.fixedText = u"_КТЦ_Материалы_оглавление_", .ofSelection = true},
         .shown = {&TTERForm::cxGrid3,
                   &TDM::DataSource4,
                   {u"cxGrid3", u"cxGridLevel2", u"cxGridDBTableView2", columnsOf<fields::contents>, u"KOD"}},
         .covered = {&TTERForm::cxGrid2,
                     &TDM::DataSource3,
                     {u"cxGrid2", u"cxGridLevel1", u"cxGridDBTableView1", coveredColumns, u""}}},
        {.sheet = {&TTERForm::cxTabSheet3, "cxTabSheet3", u"КТЦ_Машины"},
         .panel = {&TTERForm::Panel6, "Panel6"},
         .button = {&TTERForm::Button3, "Button3", &TTERForm::Button3Click},
         .file = {.fixedText = u"_КТЦ_Машины_", .ofSelection = true},
         .shown = {&TTERForm::cxGrid4,
                   &TDM::DataSource5,
                   {u"cxGrid4", u"cxGridLevel3", u"cxGridDBTableView3", columnsOf<fields::machines>,
                    u"KOD"}}},
        {.sheet = {&TTERForm::cxTabSheet4, "cxTabSheet4", u"КТЦ_Труд"},
         .panel = {&TTERForm::Panel7, "Panel7"},
         .button = {&TTERForm::Button4, "Button4", &TTERForm::Button4Click},
         .file = {.fixedText = u"_КТЦ_Труд_", .ofSelection = true},
         .shown = {&TTERForm::cxGrid5,
                   &TDM::DataSource6,
                   {u"cxGrid5", u"cxGridLevel4", u"cxGridDBTableView4", columnsOf<fields::labour>, u"KOD"}}},
        {.sheet = {&TTERForm::cxTabSheet9, "cxTabSheet9", u"Каталог перевозка"},
         .panel = {&TTERForm::Panel11, "Panel11"},
         .button = {&TTERForm::Button8, "Button8", &TTERForm::Button8Click},
         .file = {.fixedText = u"_Каталог перевозка_", .ofSelection = true},
         .shown = {&TTERForm::cxGrid9,
                   &TDM::DataSource10,
                   {u"cxGrid9", u"cxGridLevel8", u"cxGridDBTableView8", columnsOf<fields::transport>,
                    u"KOD"}}},
        {.sheet = {&TTERForm::cxTabSheet5, "cxTabSheet5", u"Справочник регионов"},
         .panel = {&TTERForm::Panel8, "Panel8"},
         .button = {&TTERForm::Button5, "Button5", &TTERForm::Button5Click},
         .file = {.fixedText = u"_Регионы", .ofSelection = false},
         .shown = {&TTERForm::cxGrid6,
                   &TDM::DataSource1,
                   {u"cxGrid6", u"cxGridLevel5", u"cxGridDBTableView5", columnsOf<fields::regions>,
                    u"NAME"}}},
        {.sheet = {&TTERForm::cxTabSheet6, "cxTabSheet6", u"Справочник фирм"},
         .panel = {&TTERForm::Panel9, "Panel9"},
         .button = {&TTERForm::Button6, "Button6", &TTERForm::Button6Click},
         .file = {.fixedText = u"_Фирмы", .ofSelection = false},
         .shown = {&TTERForm::cxGrid7,
                   &TDM::DataSource7,
                   {u"cxGrid7", u"cxGridLevel6", u"cxGridDBTableView6", columnsOf<fields::firms>, u"INN"}}},
        {.sheet = {&TTERForm::cxTabSheet7, "cxTabSheet7", u"Региональные коэффициенты"},
         .panel = {&TTERForm::Panel10, "Panel10"},
         .button = {&TTERForm::Button7, "Button7", &TTERForm::Button7Click},
         .file = {.fixedText = u"_Региональные коэффициенты", .ofSelection = false},
         .shown = {&TTERForm::cxGrid8,
                   &TDM::DataSource8,
                   {u"cxGrid8", u"cxGridLevel7", u"cxGridDBTableView7", columnsOf<fields::coefficients>,
                    u"NAME"}}},
        {.sheet = {&TTERForm::cxTabSheet8, "cxTabSheet8", u"Каталог"},
         .tree = {&TTERForm::cxDBTreeList1,
                  &TDM::DataSource9,
                  {u"cxDBTreeList1", columnsOf<fields::catalogTree>, u"ID", u"PARENTID"}}},
    };
    return specs;
}
