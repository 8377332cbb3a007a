// SPDX-License-Identifier: MIT

#include "grid/rows/column.h"

#include "db/data_set.h"

namespace grid {

Column::Column(const ColumnSpec& spec, const db::DataSet& dataSet, QObject* view)
    : QObject(view),
      spec_(spec),
      field_(dataSet.findField(spec.field.toString())),
      headerText_(field_ ? field_->displayLabel() : spec.field.toString()),
      width_(designWidth()) {
    setObjectName(spec.name.isEmpty() ? view->objectName() + spec.field.toString() : spec.name.toString());
}

Qt::Alignment Column::alignment() const {
    return field_ ? field_->alignment() : Qt::Alignment(Qt::AlignLeft);
}

std::vector<Column*> makeColumns(std::span<const ColumnSpec> specs, const db::DataSet& dataSet,
                                 QObject* view) {
    std::vector<Column*> columns;
    for (const ColumnSpec& spec : specs) {
        columns.push_back(new Column(spec, dataSet, view));
    }
    return columns;
}

} // namespace grid
