// SPDX-License-Identifier: MIT

#pragma once

#include "db/client_library.h"
#include "db/field.h"
#include "db/row_store.h"

#include <QString>

#include <span>
#include <vector>

namespace db {

class Connection;

/// Takes the declared fields of a dataset out of the messages in which the server sends the rows of its
/// query.
class RowDecoder final {
public:
    /// Matches fields to the result's columns by name and checks that each column can be read as its field.
    /// Throws DatabaseError for a missing column, another type or scale, or texts longer than the field.
    RowDecoder(Connection& connection, Firebird::IMessageMetadata& metadata, std::span<Field* const> fields,
               const QString& dataSetName);

    /// The format in which the messages are to be asked for.
    [[nodiscard]] Firebird::IMessageMetadata& format() const { return *format_; }

    /// Bytes of one message.
    [[nodiscard]] std::size_t messageSize() const { return messageSize_; }

    /// Appends the row held by `message` to `store`. Throws DatabaseError for a text longer than its column,
    /// of which a broken answer may tell.
    void decode(const unsigned char* message, RowStore& store) const;

private:
    enum class Source : std::uint8_t { Integer16, Integer32, Integer64, FixedText, VaryingText };

    struct Step {
        Source source;
        unsigned offset;
        unsigned nullOffset;
        unsigned length;
    };

    [[nodiscard]] std::string_view varyingText(const unsigned char* source, const Step& step) const;

    QString dataSetName_;
    Handle<Firebird::IMessageMetadata> format_;
    std::size_t messageSize_ = 0;
    std::vector<Step> steps_; // in field order
};

} // namespace db
