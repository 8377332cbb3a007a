// SPDX-License-Identifier: MIT

#include "db/row_decoder.h"

#include "db/connection.h"
#include "db/load.h"

#include <algorithm>

namespace db {

namespace {

/// What the server says of one column of a result.
struct Column {
    QString name;
    unsigned type = 0; ///< SQL_... of ibase.h, without the bit for "may be NULL"
    int scale = 0;     ///< 0 or negative: minus the fraction digits
    unsigned length = 0;
    unsigned offset = 0;
    unsigned nullOffset = 0;
};

/// SQL_INT128 of ibase.h from Firebird 4 on: exact numbers of more than 18 digits.
constexpr unsigned wideInteger = 32752;

/// The same columns, numbers wider than 64 bits asked for as 64 bits: only a value that does not fit is an
/// error then, raised by the server.
Handle<Firebird::IMessageMetadata> narrowed(Connection& connection, Firebird::IMessageMetadata& declared) {
    return connection.run([&](auto* status) {
        const Handle<Firebird::IMetadataBuilder> builder(declared.getBuilder(status));
        for (unsigned index = 0; index < declared.getCount(status); ++index) {
            if ((declared.getType(status, index) & ~1U) == wideInteger) {
                builder->setType(status, index, SQL_INT64);
                builder->setLength(status, index, sizeof(std::int64_t));
            }
        }
        return Handle<Firebird::IMessageMetadata>(builder->getMetadata(status));
    });
}

std::vector<Column> columnsOf(Connection& connection, Firebird::IMessageMetadata& metadata) {
    return connection.run([&](auto* status) {
        std::vector<Column> columns(metadata.getCount(status));
        for (unsigned index = 0; index < columns.size(); ++index) {
            columns[index] = {QString::fromUtf8(metadata.getAlias(status, index)),
                              metadata.getType(status, index) & ~1U,
                              metadata.getScale(status, index),
                              metadata.getLength(status, index),
                              metadata.getOffset(status, index),
                              metadata.getNullOffset(status, index)};
        }
        return columns;
    });
}

bool isExactNumber(const Column& column) {
    return column.type == SQL_SHORT || column.type == SQL_LONG || column.type == SQL_INT64;
}

bool canBeRead(const Column& column, const Field& field) {
    switch (field.kind()) {
    case FieldKind::Integer64:
        return column.type == SQL_INT64 && column.scale == 0;
    case FieldKind::Integer32:
        return column.type == SQL_LONG && column.scale == 0;
    case FieldKind::Decimal:
        // Fewer digits before the point are the database's own choice; the scale is not.
        return column.scale == -field.fractionDigits() &&
               (field.fractionDigits() == 0 ? column.type == SQL_INT64 : isExactNumber(column));
    case FieldKind::String:
        return (column.type == SQL_VARYING || column.type == SQL_TEXT) &&
               column.length <= static_cast<unsigned>(field.length());
    }
    return false;
}

QString describe(const Column& column) {
    struct TypeName {
        unsigned type;
        const char16_t* name;
    };
    static constexpr TypeName plainTypes[] = {
        {SQL_DOUBLE, u"DOUBLE PRECISION"}, {SQL_FLOAT, u"FLOAT"},    {SQL_D_FLOAT, u"FLOAT"},
        {SQL_TIMESTAMP, u"TIMESTAMP"},     {SQL_TYPE_DATE, u"DATE"}, {SQL_TYPE_TIME, u"TIME"},
        {SQL_BOOLEAN, u"BOOLEAN"},         {SQL_BLOB, u"BLOB"},      {SQL_ARRAY, u"ARRAY"},
    };
    const auto* const plain = std::ranges::find(plainTypes, column.type, &TypeName::type);
    if (plain != std::end(plainTypes)) {
        return QString::fromUtf16(plain->name);
    }
    const QString size = QString::number(column.length);
    const QString digits = QString::number(-column.scale);
    switch (column.type) {
    case SQL_VARYING:
        return QStringLiteral("VARCHAR(%1)").arg(size);
    case SQL_TEXT:
        return QStringLiteral("CHAR(%1)").arg(size);
    case SQL_SHORT:
        return QStringLiteral("SMALLINT, %1 знаков дроби").arg(digits);
    case SQL_LONG:
        return QStringLiteral("INTEGER, %1 знаков дроби").arg(digits);
    case SQL_INT64:
        return QStringLiteral("BIGINT, %1 знаков дроби").arg(digits);
    default:
        return QStringLiteral("тип %1").arg(column.type);
    }
}

QString describe(const Field& field) {
    switch (field.kind()) {
    case FieldKind::Integer64:
        return QStringLiteral("BIGINT");
    case FieldKind::Integer32:
        return QStringLiteral("INTEGER");
    case FieldKind::Decimal:
        return QStringLiteral("NUMERIC(18,%1)").arg(field.fractionDigits());
    case FieldKind::String:
        return QStringLiteral("VARCHAR(%1)").arg(field.length());
    }
    return {};
}

std::string_view withoutPadding(std::string_view text) {
    const auto last = text.find_last_not_of(' ');
    return text.substr(0, last == std::string_view::npos ? 0 : last + 1);
}

} // namespace

RowDecoder::RowDecoder(Connection& connection, Firebird::IMessageMetadata& metadata,
                       std::span<Field* const> fields, const QString& dataSetName)
    : dataSetName_(dataSetName), format_(narrowed(connection, metadata)) {
    messageSize_ = connection.run([&](auto* status) { return format_->getMessageLength(status); });
    const std::vector<Column> columns = columnsOf(connection, *format_);
    for (const Field* field : fields) {
        const auto column = std::ranges::find(columns, field->column(), &Column::name);
        if (column == columns.end()) {
            throw DatabaseError(QStringLiteral("%1: в результате запроса нет столбца «%2»")
                                    .arg(dataSetName, field->column()));
        }
        if (!canBeRead(*column, *field)) {
            throw DatabaseError(QStringLiteral("%1: столбец «%2» имеет тип %3, а ожидается %4")
                                    .arg(dataSetName, field->column(), describe(*column), describe(*field)));
        }
        const auto source = column->type == SQL_SHORT   ? Source::Integer16
                            : column->type == SQL_LONG  ? Source::Integer32
                            : column->type == SQL_INT64 ? Source::Integer64
                            : column->type == SQL_TEXT  ? Source::FixedText
                                                        : Source::VaryingText;
        steps_.push_back({source, column->offset, column->nullOffset, column->length});
    }
}

std::string_view RowDecoder::varyingText(const unsigned char* source, const Step& step) const {
    const auto length = load<std::uint16_t>(source);
    if (length > step.length) {
        // What else comes by this connection is no more to be trusted.
        throw DatabaseError(QStringLiteral("%1: ответ сервера испорчен: текст в %2 байт при длине столбца %3")
                                .arg(dataSetName_)
                                .arg(length)
                                .arg(step.length),
                            {isc_net_read_err});
    }
    return {reinterpret_cast<const char*>(source) + sizeof length, length};
}

void RowDecoder::decode(const unsigned char* message, RowStore& store) const {
    RowStore::RowWriter row(store);
    int field = 0;
    for (const Step& step : steps_) {
        const unsigned char* const source = message + step.offset;
        if (load<std::int16_t>(message + step.nullOffset) != 0) {
            row.putNull(field++);
            continue;
        }
        switch (step.source) {
        case Source::Integer16:
            row.putInteger(field, load<std::int16_t>(source));
            break;
        case Source::Integer32:
            row.putInteger(field, load<std::int32_t>(source));
            break;
        case Source::Integer64:
            row.putInteger(field, load<std::int64_t>(source));
            break;
        case Source::FixedText:
            row.putString(field, withoutPadding({reinterpret_cast<const char*>(source), step.length}));
            break;
        case Source::VaryingText:
            row.putString(field, varyingText(source, step));
            break;
        }
        ++field;
    }
    row.finish();
}

} // namespace db
