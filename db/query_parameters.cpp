// SPDX-License-Identifier: MIT

#include "db/query_parameters.h"

#include "base/win1251.h"
#include "db/connection.h"

#include <cstring>

namespace db {

namespace {

/// A value as it goes into a message; nothing for NULL.
using EncodedValue = std::variant<std::monostate, std::int32_t, QByteArray>;

/// A text as it is compared with a column. Blanks at the end do not count, so those beyond the column's
/// length go. A text that is still too long, or has a letter that the code page lacks, equals none of the
/// column's values; the server would refuse it or find another equal, while NULL equals nothing under any
/// collation.
EncodedValue encodeForColumn(const QString& text, unsigned columnLength) {
    const auto length = static_cast<qsizetype>(columnLength);
    std::optional<QByteArray> bytes = base::win1251::tryEncode(text);
    while (bytes && bytes->size() > length && bytes->endsWith(' ')) {
        bytes->chop(1);
    }
    return bytes && bytes->size() <= length ? EncodedValue(*bytes) : EncodedValue();
}

void describe(const EncodedValue& value, unsigned index, Firebird::IMetadataBuilder& builder, auto* status) {
    if (std::holds_alternative<std::int32_t>(value)) {
        builder.setType(status, index, SQL_LONG);
        builder.setLength(status, index, sizeof(std::int32_t));
        builder.setScale(status, index, 0);
        return;
    }
    constexpr unsigned mayBeNull = 1;
    const auto* const text = std::get_if<QByteArray>(&value);
    builder.setType(status, index, SQL_VARYING | mayBeNull);
    builder.setLength(status, index, text ? static_cast<unsigned>(text->size()) : 0);
}

void write(const EncodedValue& value, unsigned char* target, unsigned char* nullTarget) {
    const std::int16_t isNull = std::holds_alternative<std::monostate>(value) ? -1 : 0;
    std::memcpy(nullTarget, &isNull, sizeof isNull);
    if (const auto* text = std::get_if<QByteArray>(&value)) {
        const auto length = static_cast<std::uint16_t>(text->size());
        std::memcpy(target, &length, sizeof length);
        std::memcpy(target + sizeof length, text->constData(), length);
    } else if (const auto* number = std::get_if<std::int32_t>(&value)) {
        std::memcpy(target, number, sizeof *number);
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
                encoded.push_back(encodeForColumn(*text, declared->getLength(status, index)));
            } else {
                encoded.emplace_back(std::get<std::int32_t>(values[index]));
            }
            describe(encoded.back(), index, *builder, status);
        }
        ParameterMessage message{Handle<Firebird::IMessageMetadata>(builder->getMetadata(status)), {}};
        message.bytes.resize(message.metadata->getMessageLength(status));
        for (unsigned index = 0; index < encoded.size(); ++index) {
            write(encoded[index], message.bytes.data() + message.metadata->getOffset(status, index),
                  message.bytes.data() + message.metadata->getNullOffset(status, index));
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
