// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>

namespace db {

class DataSet;

/// Connects views to a dataset; the views bind to its fields by column name and follow its signals.
class DataSource final : public QObject {
    Q_OBJECT

public:
    DataSource(const QString& name, DataSet& dataSet, QObject* parent) : QObject(parent), dataSet_(dataSet) {
        setObjectName(name);
    }

    /// The dataset that the views show.
    [[nodiscard]] DataSet& dataSet() const { return dataSet_; }

private:
    DataSet& dataSet_;
};

} // namespace db
