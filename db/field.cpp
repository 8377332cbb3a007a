// SPDX-License-Identifier: MIT

#include "db/field.h"

namespace db {

Field::Field(const FieldSpec& spec, int index, const QString& name, QObject* parent)
    : QObject(parent),
      spec_(spec),
      index_(index),
      column_(spec.column.toString()),
      displayLabel_(spec.label.empty() ? column_ : spec.label.toString()) {
    setObjectName(name);
}

} // namespace db
