#include "db/query_parameters.h"

#include "base/win1251.h"
#include "db/connection.h"

#include <cstring>

namespace db {

namespace {

/// A value as it goes into a message.
using EncodedValue = std::variant<std::int32_t, QByteArray>;

/// A text that is too long for the column it is compared with equals none of the column's values. The server
/// would refuse it instead; one SUBSTITUTE character, which equals none either, keeps the result empty.
QByteArray encodeForColumn(const QString& text, unsigned columnLength) {
    const QByteArray bytes = base::win1251::encode(text);
    return bytes.size() <= static_cast<qsizetype>(columnLength) ? bytes : base::win1251::encode(u"\x1A");
}

void describe(const EncodedValue& value, unsigned index, Firebird::IMetadataBuilder& builder, auto* status) {
    if (const auto* text = std::get_if<QByteArray>(&value)) {
        builder.setType(status, index, SQL_VARYING);
        builder.setLength(status, index, static_cast<unsigned>(text->size()));
    } else {
        builder.setType(status, index, SQL_LONG);
        builder.setLength(status, index, sizeof(std::int32_t));
        builder.setScale(status, index, 0);
    }
}

void write(const EncodedValue& value, unsigned char* target) {
    if (const auto* text = std::get_if<QByteArray>(&value)) {
        const auto length = static_cast<std::uint16_t>(text->size());
        std::memcpy(target, &length, sizeof length);
        std::memcpy(target + sizeof length, text->constData(), length);
    } else {
        std::memcpy(target, &std::get<std::int32_t>(value), sizeof(std::int32_t));
    }
}

} // namespace

void QueryParameters::setQuery(const QString& sql) {
    statement_ = toPositional(sql);
    std::erase_if(values_, [&](const auto& named) { return !statement_.names.contains(named.first); });
    for (const QString& name : statement_.names) {
        values_.try_emplace(name);
    }
}

ParameterValue& QueryParameters::parameter(const QString& name) {
    const auto found = values_.find(name);
    if (found == values_.end()) {
        throw DatabaseError(QStringLiteral("%1: в запросе нет параметра «%2»").arg(dataSetName_, name));
    }
    return found->second;
}

ParameterMessage QueryParameters::message(Connection& connection, Firebird::IStatement& statement) const {
    const std::vector<ParameterValue> values = valuesAtMarks();
    return connection.run([&](auto* status) {
        const Handle<Firebird::IMessageMetadata> declared(statement.getInputMetadata(status));
        const Handle<Firebird::IMetadataBuilder> builder(declared->getBuilder(status));
        std::vector<EncodedValue> encoded;
        for (unsigned index = 0; index < values.size(); ++index) {
            if (const auto* text = std::get_if<QString>(&values[index])) {
                encoded.emplace_back(encodeForColumn(*text, declared->getLength(status, index)));
            } else {
                encoded.emplace_back(std::get<std::int32_t>(values[index]));
            }
            describe(encoded.back(), index, *builder, status);
        }
        ParameterMessage message{Handle<Firebird::IMessageMetadata>(builder->getMetadata(status)), {}};
        message.bytes.resize(message.metadata->getMessageLength(status));
        for (unsigned index = 0; index < encoded.size(); ++index) {
            write(encoded[index], message.bytes.data() + message.metadata->getOffset(status, index));
        }
        return message;
    });
}

std::vector<ParameterValue> QueryParameters::valuesAtMarks() const {
    std::vector<ParameterValue> values;
    for (const QString& name : statement_.names) {
        values.push_back(values_.at(name));
        if (std::holds_alternative<std::monostate>(values.back())) {
            throw DatabaseError(
                QStringLiteral("%1: не задано значение параметра «%2»").arg(dataSetName_, name));
        }
    }
    return values;
}

} // namespace db
