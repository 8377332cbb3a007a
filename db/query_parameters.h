// SPDX-License-Identifier: MIT

#pragma once

#include "db/client_library.h"
#include "db/named_parameters.h"

#include <QString>

#include <cstdint>
#include <map>
#include <variant>
#include <vector>

namespace db {

class Connection;

/// What a named parameter is bound to; nothing at first.
using ParameterValue = std::variant<std::monostate, QString, std::int32_t>;

/// The message that carries a statement's parameters to the server.
struct ParameterMessage {
    Handle<Firebird::IMessageMetadata> metadata;
    std::vector<unsigned char> bytes;
};

/// The named parameters of a query: the names that stand in it, their values, and the message made of them.
class QueryParameters final {
public:
    /// `dataSetName` begins the errors' texts.
    explicit QueryParameters(QString dataSetName) : dataSetName_(std::move(dataSetName)) {}

    /// Takes the names out of a query; values stay where names stay.
    void setQuery(const QString& sql);

    /// The query as the server knows it, with a mark in place of every name.
    [[nodiscard]] const QString& positionalSql() const { return statement_.sql; }

    /// The value of the parameter of that name. Throws DatabaseError when the query has none.
    [[nodiscard]] ParameterValue& parameter(const QString& name);

    /// The values as the compiled query takes them. Throws DatabaseError, also when a value is not set.
    [[nodiscard]] ParameterMessage message(Connection& connection, Firebird::IStatement& statement) const;

private:
    [[nodiscard]] std::vector<ParameterValue> valuesAtMarks() const;

    QString dataSetName_;
    PositionalStatement statement_;
    std::map<QString, ParameterValue> values_; // one for each name
};

} // namespace db
