#include "grid/rows/column.h"

#include "db/data_set.h"

namespace grid {

Column::Column(const ColumnSpec& spec, const db::DataSet& dataSet, QObject* view)
    : QObject(view),
      spec_(spec),
      fieldName_(spec.field.toString()),
      field_(dataSet.findField(fieldName_)),
      headerText_(field_ ? field_->displayLabel() : fieldName_),
      width_(designWidth()) {
    setObjectName(spec.name.isEmpty() ? view->objectName() + fieldName_ : spec.name.toString());
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
