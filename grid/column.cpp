#include "grid/column.h"

#include "db/data_set.h"

namespace grid {

Column::Column(const ColumnSpec& spec, const db::DataSet& dataSet, QObject* parent)
    : QObject(parent),
      spec_(spec),
      fieldName_(QString::fromUtf16(spec.field.data(), static_cast<qsizetype>(spec.field.size()))),
      field_(dataSet.findField(fieldName_)),
      headerText_(field_ ? field_->displayLabel() : fieldName_),
      width_(designWidth()) {
    setObjectName(QString::fromUtf16(spec.name.data(), static_cast<qsizetype>(spec.name.size())));
}

Qt::Alignment Column::alignment() const {
    return field_ ? field_->alignment() : Qt::Alignment(Qt::AlignLeft);
}

} // namespace grid
