#pragma once

#include <QObject>

namespace db {
class DataSet;
}

namespace grid {

/// Connects views to a dataset; the views bind to its fields by column name and follow its signals.
class DataSource final : public QObject {
    Q_OBJECT

public:
    DataSource(const QString& name, db::DataSet& dataSet, QObject* parent)
        : QObject(parent), dataSet_(dataSet) {
        setObjectName(name);
    }

    /// The dataset that the views show.
    [[nodiscard]] db::DataSet& dataSet() const { return dataSet_; }

private:
    db::DataSet& dataSet_;
};

} // namespace grid
