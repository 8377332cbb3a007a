#include "db/field.h"

#include "base/text.h"

namespace db {

Field::Field(const FieldSpec& spec, int index, const QString& name, QObject* parent)
    : QObject(parent),
      spec_(spec),
      index_(index),
      column_(base::toQString(spec.column)),
      displayLabel_(spec.label.empty() ? column_ : base::toQString(spec.label)) {
    setObjectName(name);
}

} // namespace db
