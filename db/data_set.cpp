// SPDX-License-Identifier: MIT

#include "db/data_set.h"

#include "base/win1251.h"
#include "db/connection.h"
#include "db/decimal.h"
#include "db/transaction.h"

#include <QElapsedTimer>

#include <algorithm>

namespace db {

namespace {

constexpr int tellingInterval = 100; // ms between two times that rows are said to have arrived

} // namespace

DataSet::DataSet(const QString& name, std::span<const FieldSpec> fields, QStringList sql,
                 Connection& connection, Transaction& transaction, QObject* parent)
    : QObject(parent),
      connection_(connection),
      transaction_(transaction),
      sql_(std::move(sql)),
      parameters_(name) {
    setObjectName(name);
    for (const FieldSpec& spec : fields) {
        const auto index = static_cast<int>(fields_.size());
        fields_.push_back(new Field(spec, index, name + spec.column.toString(), this));
    }
    parameters_.setQuery(sql_.join(u'\n'));
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
    releaseHandles();
    sql_ = std::move(lines);
    parameters_.setQuery(sql_.join(u'\n'));
}

void DataSet::prepare() {
    if (statement_) {
        return;
    }
    transaction_.start();
    const QByteArray sql = base::win1251::encode(parameters_.positionalSql());
    Firebird::IAttachment& attachment = connection_.handle();
    Handle<Firebird::IStatement> statement(connection_.run([&](auto* status) {
        return attachment.prepare(status, transaction_.handle(), static_cast<unsigned>(sql.size()),
                                  sql.constData(), SQL_DIALECT_V6,
                                  Firebird::IStatement::PREPARE_PREFETCH_METADATA);
    }));
    statement_ = std::move(statement);
}

void DataSet::releaseHandles() {
    decoder_.reset();
    if (!statement_) {
        return;
    }
    connection_.run([&](auto* status) { statement_->free(status); });
    // A successful free has taken the reference back.
    static_cast<void>(statement_.release());
}

void DataSet::forgetHandles() {
    decoder_.reset();
    statement_.reset();
}

void DataSet::open() {
    if (isOpen()) {
        return;
    }
    try {
        fetchRows(runQuery());
    } catch (...) {
        if (rows_ && rows_->readableCount() > 0) {
            emit rowsArrived(0);
        }
        rows_.reset();
        throw;
    }
    emit aboutToReset();
    isOpen_ = true;
    currentRow_ = rowCount() > 0 ? 0 : -1;
    emit reset();
}

/// Executes the query, which is compiled once more where the server refuses it.
Handle<Firebird::IResultSet> DataSet::runQuery() {
    transaction_.start();
    const bool isCompiledBefore = statement_ != nullptr;
    prepare();
    try {
        return openCursor();
    } catch (const DatabaseError& error) {
        if (!isCompiledBefore || !error.isOfServer() || !connection_.isConnected()) {
            throw;
        }
        // Another client may have altered the table since the query was compiled.
        releaseHandles();
        prepare();
        return openCursor();
    }
}

Handle<Firebird::IResultSet> DataSet::openCursor() {
    ParameterMessage input = parameters_.message(connection_, *statement_);
    if (!decoder_) {
        const Handle<Firebird::IMessageMetadata> output(
            connection_.run([&](auto* status) { return statement_->getOutputMetadata(status); }));
        decoder_.emplace(connection_, *output, fields_, objectName());
    }
    return connection_.run([&](auto* status) {
        return Handle<Firebird::IResultSet>(statement_->openCursor(
            status, transaction_.handle(), input.metadata.get(), input.bytes.data(), &decoder_->format(), 0));
    });
}

void DataSet::fetchRows(Handle<Firebird::IResultSet> cursor) {
    std::vector<FieldKind> kinds;
    kinds.reserve(fields_.size());
    for (const Field* field : fields_) {
        kinds.push_back(field->kind());
    }
    rows_.emplace(kinds);
    std::vector<unsigned char> message(decoder_->messageSize());
    QElapsedTimer sinceTold;
    connection_.run([&](auto* status) {
        while (cursor->fetchNext(status, message.data()) == Firebird::IStatus::RESULT_OK) {
            decoder_->decode(message.data(), *rows_);
            const bool endsStretch = rows_->readableCount() == rows_->rowCount();
            if (endsStretch && (!sinceTold.isValid() || sinceTold.hasExpired(tellingInterval))) {
                emit rowsArrived(rows_->rowCount());
                sinceTold.start();
            }
        }
        cursor->close(status);
        // A successful close has taken the reference back.
        static_cast<void>(cursor.release());
    });
    rows_->seal();
}

void DataSet::close() {
    if (!isOpen()) {
        return;
    }
    emit aboutToReset();
    rows_.reset();
    isOpen_ = false;
    currentRow_ = -1;
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

const Field* DataSet::findField(const QString& column) const {
    const auto found = std::ranges::find(fields_, column, &Field::column);
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

std::optional<int> DataSet::find(const QString& column, const QString& value) const {
    const Field& searched = field(column);
    for (int row = 0; row < rowCount(); ++row) {
        if (!rows_->isNull(row, searched.index()) && text(row, searched) == value) {
            return row;
        }
    }
    return std::nullopt;
}

bool DataSet::locate(const QString& column, const QString& value) {
    const std::optional<int> row = find(column, value);
    if (row) {
        moveTo(*row);
    }
    return row.has_value();
}

} // namespace db
