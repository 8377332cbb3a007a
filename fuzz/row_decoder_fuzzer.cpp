// SPDX-License-Identifier: MIT

// A column as a server may describe it, and messages of any bytes that should hold its values.

#include "db/connection.h"
#include "db/load.h"
#include "db/row_decoder.h"
#include "fuzz/fuzzing.h"

#include <QLibrary>

#include <array>

namespace {

using fuzz::check;
using fuzz::Input;
using Metadata = db::Handle<Firebird::IMessageMetadata>;

/// A connection to nothing, for the client library that it loads.
class Client final {
public:
    Client() {
        try {
            connection.open();
        } catch (const db::DatabaseError&) {
            // There is no database; the library is loaded now.
        }
        using MasterFunction = Firebird::IMaster*();
        QLibrary library(db::ClientLibrary::defaultNames().front());
        master_ = reinterpret_cast<MasterFunction*>(library.resolve("fb_get_master_interface"))();
    }

    /// One column, whose name is empty, since names come from servers only.
    [[nodiscard]] Metadata describe(unsigned type, unsigned length, int scale) {
        return connection.run([&](auto* status) {
            const db::Handle<Firebird::IMetadataBuilder> builder(master_->getMetadataBuilder(status, 1));
            builder->setType(status, 0, type | 1U);
            builder->setLength(status, 0, length);
            builder->setScale(status, 0, scale);
            return Metadata(builder->getMetadata(status));
        });
    }

    db::Connection connection{{}, {}, {}, db::ClientLibrary::defaultNames(), nullptr};

private:
    Firebird::IMaster* master_ = nullptr;
};

/// A type of a column, and its bytes where they are fixed.
struct Type {
    unsigned code;
    unsigned length;
};

constexpr std::array types{Type{SQL_SHORT, 2}, Type{SQL_LONG, 4},    Type{SQL_INT64, 8},  Type{32752, 16},
                           Type{SQL_TEXT, 0},  Type{SQL_VARYING, 0}, Type{SQL_DOUBLE, 8}, Type{SQL_BLOB, 8}};

/// What the bytes of a value say, in words of this fuzzer's own.
void checkValue(const db::RowStore& rows, int row, const std::uint8_t* source, const Type& type) {
    const auto* const characters = reinterpret_cast<const char*>(source);
    switch (type.code) {
    case SQL_SHORT:
        check(rows.integer(row, 0) == db::load<std::int16_t>(source));
        break;
    case SQL_LONG:
        check(rows.integer(row, 0) == db::load<std::int32_t>(source));
        break;
    case SQL_TEXT: {
        const std::string text = std::string(characters, type.length) + 'x';
        check(text.starts_with(rows.string(row, 0)));
        check(text.find_first_not_of(' ', rows.string(row, 0).size()) == type.length);
        break;
    }
    case SQL_VARYING:
        check(rows.string(row, 0).size() <= type.length);
        check(rows.string(row, 0) == std::string_view(characters + 2, db::load<std::uint16_t>(source)));
        break;
    default:
        check(rows.integer(row, 0) == db::load<std::int64_t>(source));
    }
}

} // namespace

void fuzz::run(Input& input) {
    static Client client;
    static const std::array fields{
        db::Field(db::bigint(u""), 0, {}, nullptr), db::Field(db::integer(u""), 0, {}, nullptr),
        db::Field(db::decimal(u"", 2), 0, {}, nullptr), db::Field(db::text(u"", 1000), 0, {}, nullptr)};
    const db::Field& field = fields[input.ConsumeIntegralInRange<std::size_t>(0, fields.size() - 1)];
    Type type = input.PickValueInArray(types);
    type.length = type.length > 0 ? type.length : input.ConsumeIntegralInRange(0U, 1001U);
    const int scale = input.ConsumeBool() ? -field.fractionDigits() : input.ConsumeIntegral<std::int8_t>();
    const std::array kinds{field.kind()};
    const std::array wanted{const_cast<db::Field*>(&field)};
    db::RowStore rows(kinds);
    std::vector<std::vector<std::uint8_t>> messages;
    bool isWhole = true;
    unsigned nullOffset = 0;
    try {
        const Metadata declared = client.describe(type.code, type.length, scale);
        const db::RowDecoder decoder(client.connection, *declared, wanted, QString());
        nullOffset =
            client.connection.run([&](auto* status) { return decoder.format().getNullOffset(status, 0); });
        while (isWhole && input.remaining_bytes() > 0) {
            messages.push_back(input.ConsumeBytes<std::uint8_t>(decoder.messageSize()));
            messages.back().resize(decoder.messageSize());
            messages.back().shrink_to_fit();
            isWhole = false;
            decoder.decode(messages.back().data(), rows);
            isWhole = true;
        }
    } catch (const db::DatabaseError&) {
        // A description that does not fit, or a text longer than its column; the rows before it stay.
        check(messages.empty() ||
              (type.code == SQL_VARYING && db::load<std::uint16_t>(messages.back().data()) > type.length));
    }
    rows.seal();
    check(rows.rowCount() == static_cast<int>(messages.size()) - (isWhole ? 0 : 1));
    for (int row = 0; row < rows.rowCount(); ++row) {
        const std::uint8_t* const message = messages[static_cast<std::size_t>(row)].data();
        const bool isNull = db::load<std::int16_t>(message + nullOffset) != 0;
        check(rows.isNull(row, 0) == isNull);
        if (!isNull) {
            checkValue(rows, row, message, type);
        }
    }
}
