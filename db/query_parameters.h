#pragma once

#include "db/client_library.h"

#include <QString>
#include <QStringList>

#include <cstdint>
#include <variant>
#include <vector>

namespace db {

class Connection;

/// What a named parameter is set to; nothing until it is bound.
using ParameterValue = std::variant<std::monostate, QString, std::int32_t>;

/// A named parameter of a query.
class Parameter final {
public:
    explicit Parameter(QString name) : name_(std::move(name)) {}

    [[nodiscard]] const QString& name() const { return name_; }
    [[nodiscard]] const ParameterValue& value() const { return value_; }
    void setString(const QString& value) { value_ = value; }
    void setInteger(std::int32_t value) { value_ = value; }

private:
    QString name_;
    ParameterValue value_;
};

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
    [[nodiscard]] const QString& positionalSql() const { return positionalSql_; }

    /// The parameter of that name. Throws DatabaseError when the query has none.
    [[nodiscard]] Parameter& parameter(const QString& name);

    /// The values as the compiled query takes them. Throws DatabaseError, also when a value is not set.
    [[nodiscard]] ParameterMessage message(Connection& connection, Firebird::IStatement& statement) const;

private:
    [[nodiscard]] std::vector<Parameter>::const_iterator find(const QString& name) const;
    [[nodiscard]] std::vector<ParameterValue> valuesAtMarks() const;

    QString dataSetName_;
    QString positionalSql_;
    std::vector<Parameter> parameters_; // one for each name
    QStringList markNames_;             // the name at each mark
};

} // namespace db
