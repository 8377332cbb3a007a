#include "db/data_set.h"

#include "base/text.h"
#include "base/win1251.h"
#include "db/connection.h"
#include "db/decimal.h"
#include "db/named_parameters.h"
#include "db/transaction.h"

#include <algorithm>
#include <cstring>

namespace db {

namespace {

/// The message that carries a statement's parameters to the server.
struct InputMessage {
    Handle<Firebird::IMessageMetadata> metadata;
    std::vector<unsigned char> bytes;
};

/// A text that is too long for the column it is compared with equals none of the column's values. The server
/// would refuse it instead; one SUBSTITUTE character, which equals none either, keeps the result empty.
QByteArray encodeForColumn(const QString& text, unsigned columnLength) {
    const QByteArray bytes = base::win1251::encode(text);
    return bytes.size() <= static_cast<qsizetype>(columnLength) ? bytes : base::win1251::encode(u"\x1A");
}

void writeText(unsigned char* target, const QByteArray& text) {
    const auto length = static_cast<std::uint16_t>(text.size());
    std::memcpy(target, &length, sizeof length);
    std::memcpy(target + sizeof length, text.constData(), static_cast<std::size_t>(text.size()));
}

InputMessage makeInputMessage(Connection& connection, Firebird::IStatement& statement,
                              const std::vector<ParameterValue>& values) {
    return connection.run([&](auto* status) {
        const Handle<Firebird::IMessageMetadata> declared(statement.getInputMetadata(status));
        const Handle<Firebird::IMetadataBuilder> builder(declared->getBuilder(status));
        std::vector<QByteArray> texts(values.size());
        for (unsigned index = 0; index < values.size(); ++index) {
            if (const auto* text = std::get_if<QString>(&values[index])) {
                texts[index] = encodeForColumn(*text, declared->getLength(status, index));
                builder->setType(status, index, SQL_VARYING);
                builder->setLength(status, index, static_cast<unsigned>(texts[index].size()));
            } else {
                builder->setType(status, index, SQL_LONG);
                builder->setLength(status, index, sizeof(std::int32_t));
                builder->setScale(status, index, 0);
            }
        }
        InputMessage message{Handle<Firebird::IMessageMetadata>(builder->getMetadata(status)), {}};
        message.bytes.resize(message.metadata->getMessageLength(status));
        for (unsigned index = 0; index < values.size(); ++index) {
            unsigned char* const target = message.bytes.data() + message.metadata->getOffset(status, index);
            if (const auto* number = std::get_if<std::int32_t>(&values[index])) {
                std::memcpy(target, number, sizeof *number);
            } else {
                writeText(target, texts[index]);
            }
        }
        return message;
    });
}

} // namespace

DataSet::DataSet(const QString& name, std::span<const FieldSpec> fields, QStringList sql,
                 Connection& connection, Transaction& transaction, QObject* parent)
    : QObject(parent), connection_(connection), transaction_(transaction), sql_(std::move(sql)) {
    setObjectName(name);
    for (const FieldSpec& spec : fields) {
        const auto index = static_cast<int>(fields_.size());
        fields_.push_back(new Field(spec, index, name + base::toQString(spec.column), this));
    }
    syncParameters();
    connection_.add(*this);
}

DataSet::~DataSet() {
    connection_.remove(*this);
}

void DataSet::setSql(QStringList lines) {
    if (isOpen()) {
        throw DatabaseError(
            QStringLiteral("%1: запрос нельзя изменить, пока набор данных открыт").arg(objectName()));
    }
    unprepare();
    sql_ = std::move(lines);
    syncParameters();
}

void DataSet::syncParameters() {
    markNames_ = toPositional(sql_.join(u'\n')).names;
    std::erase_if(parameters_,
                  [&](const Parameter& parameter) { return !markNames_.contains(parameter.name()); });
    for (const QString& name : markNames_) {
        const bool known = std::any_of(parameters_.begin(), parameters_.end(),
                                       [&](const Parameter& parameter) { return parameter.name() == name; });
        if (!known) {
            parameters_.emplace_back(name);
        }
    }
}

void DataSet::prepare() {
    if (statement_ != nullptr) {
        return;
    }
    transaction_.start();
    const QByteArray sql = base::win1251::encode(toPositional(sql_.join(u'\n')).sql);
    Firebird::IAttachment& attachment = connection_.handle();
    Handle<Firebird::IStatement> statement(connection_.run([&](auto* status) {
        return attachment.prepare(status, transaction_.handle(), static_cast<unsigned>(sql.size()),
                                  sql.constData(), SQL_DIALECT_V6,
                                  Firebird::IStatement::PREPARE_PREFETCH_METADATA);
    }));
    statement_ = std::move(statement);
}

void DataSet::unprepare() {
    decoder_.reset();
    if (statement_ == nullptr) {
        return;
    }
    connection_.run([&](auto* status) { statement_->free(status); });
    // A successful free has taken the reference back.
    static_cast<void>(statement_.release());
}

void DataSet::dropStatement() {
    decoder_.reset();
    statement_.reset();
}

void DataSet::open() {
    if (isOpen()) {
        return;
    }
    replaceRows(fetchRows());
}

RowStore DataSet::fetchRows() {
    transaction_.start();
    prepare();
    std::vector<ParameterValue> values;
    for (const QString& name : std::as_const(markNames_)) {
        values.push_back(parameter(name).value());
        if (std::holds_alternative<std::monostate>(values.back())) {
            throw DatabaseError(
                QStringLiteral("%1: не задано значение параметра «%2»").arg(objectName(), name));
        }
    }
    if (!decoder_) {
        const Handle<Firebird::IMessageMetadata> output(
            connection_.run([&](auto* status) { return statement_->getOutputMetadata(status); }));
        decoder_.emplace(connection_, *output, fields_, objectName());
    }
    InputMessage input = makeInputMessage(connection_, *statement_, values);

    std::vector<FieldKind> kinds;
    for (const Field* field : fields_) {
        kinds.push_back(field->kind());
    }
    RowStore rows(kinds);
    std::vector<unsigned char> message(decoder_->messageSize());
    connection_.run([&](auto* status) {
        Handle<Firebird::IResultSet> cursor(statement_->openCursor(
            status, transaction_.handle(), input.metadata.get(), input.bytes.data(), nullptr, 0));
        while (cursor->fetchNext(status, message.data()) == Firebird::IStatus::RESULT_OK) {
            decoder_->decode(message.data(), rows);
        }
        cursor->close(status);
        // A successful close has taken the reference back.
        static_cast<void>(cursor.release());
    });
    rows.seal();
    return rows;
}

void DataSet::close() {
    if (isOpen()) {
        replaceRows(std::nullopt);
    }
}

void DataSet::replaceRows(std::optional<RowStore> rows) {
    emit aboutToReset();
    rows_ = std::move(rows);
    currentRow_ = rowCount() > 0 ? 0 : -1;
    emit reset();
}

void DataSet::reopenLocate(const QString& column) {
    const int key = field(column).index();
    std::optional<std::int64_t> remembered;
    if (currentRow_ >= 0 && !rows_->isNull(currentRow_, key)) {
        remembered = rows_->integer(currentRow_, key);
    }
    close();
    open();
    for (int row = 0; remembered && row < rowCount(); ++row) {
        if (!rows_->isNull(row, key) && rows_->integer(row, key) == *remembered) {
            moveTo(row);
            return;
        }
    }
}

Parameter& DataSet::parameter(const QString& name) {
    const auto found = std::find_if(parameters_.begin(), parameters_.end(),
                                    [&](const Parameter& parameter) { return parameter.name() == name; });
    if (found == parameters_.end()) {
        throw DatabaseError(QStringLiteral("%1: в запросе нет параметра «%2»").arg(objectName(), name));
    }
    return *found;
}

const Field* DataSet::findField(const QString& column) const {
    const auto found = std::find_if(fields_.begin(), fields_.end(),
                                    [&](const Field* field) { return field->column() == column; });
    return found == fields_.end() ? nullptr : *found;
}

const Field& DataSet::field(const QString& column) const {
    if (const Field* found = findField(column)) {
        return *found;
    }
    throw DatabaseError(QStringLiteral("%1: нет поля «%2»").arg(objectName(), column));
}

QString DataSet::text(int row, const Field& field, QChar decimalPoint) const {
    if (rows_->isNull(row, field.index())) {
        return {};
    }
    if (field.isNumber()) {
        return decimalText(rows_->integer(row, field.index()), field.fractionDigits(), decimalPoint);
    }
    return base::win1251::decode(rows_->string(row, field.index()));
}

void DataSet::moveTo(int row) {
    if (row < 0 || row >= rowCount() || row == currentRow_) {
        return;
    }
    currentRow_ = row;
    emit currentRowChanged(row);
}

bool DataSet::locate(const QString& column, const QString& value) {
    const Field& searched = field(column);
    for (int row = 0; row < rowCount(); ++row) {
        if (!rows_->isNull(row, searched.index()) && text(row, searched) == value) {
            moveTo(row);
            return true;
        }
    }
    return false;
}

} // namespace db
