#include "db/field.h"

namespace db {

Field::Field(const FieldSpec& spec, int index, const QString& name, QObject* parent)
    : QObject(parent),
      spec_(spec),
      index_(index),
      column_(QString::fromUtf16(spec.column.data(), static_cast<qsizetype>(spec.column.size()))),
      displayLabel_(spec.label.empty()
                        ? column_
                        : QString::fromUtf16(spec.label.data(), static_cast<qsizetype>(spec.label.size()))) {
    setObjectName(name);
}

Qt::Alignment Field::alignment() const {
    return (isNumber() && !spec_.leftAligned ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter;
}

} // namespace db
