#include "grid/rows/column.h"

#include "db/data_set.h"

namespace grid {

Column::Column(const ColumnSpec& spec, const db::DataSet& dataSet, QObject* parent)
    : QObject(parent),
      spec_(spec),
      fieldName_(spec.field.toString()),
      field_(dataSet.findField(fieldName_)),
      headerText_(field_ ? field_->displayLabel() : fieldName_),
      width_(designWidth()) {
    setObjectName(spec.name.toString());
}

Qt::Alignment Column::alignment() const {
    return field_ ? field_->alignment() : Qt::Alignment(Qt::AlignLeft);
}

} // namespace grid
