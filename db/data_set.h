// SPDX-License-Identifier: MIT

#pragma once

#include "db/client_library.h"
#include "db/connection.h"
#include "db/field.h"
#include "db/query_parameters.h"
#include "db/row_decoder.h"
#include "db/row_store.h"

#include <QObject>
#include <QStringList>

#include <optional>
#include <span>
#include <vector>

namespace db {

class Transaction;

/// A query with its parameters, its declared fields, and, while it is open, the rows that it read and one of
/// them as the current row.
///
/// The rows are read whole when the dataset is opened and kept on this side until it is closed. Values are
/// reached by row (from 0) and field index; decoding to text happens only on asking. Whoever shows rows can
/// do so while the reading goes on, see rowsArrived(); to everybody else the dataset is closed until its end.
class DataSet final : public QObject, private ConnectionClient {
    Q_OBJECT

public:
    /// `name` is the object name; fields are called `name` followed by their column. `fields` must outlive
    /// the dataset.
    DataSet(const QString& name, std::span<const FieldSpec> fields, QStringList sql, Connection& connection,
            Transaction& transaction, QObject* parent);
    ~DataSet() override;

    /// The lines of the query.
    [[nodiscard]] const QStringList& sql() const { return sql_; }

    /// Replaces the query; parameters keep their values where the names stay. Throws DatabaseError while
    /// open.
    void setSql(QStringList lines);

    /// Has the server compile the query unless that is done. Throws DatabaseError.
    void prepare();

    /// Runs the query and reads all its rows; stays closed when anything fails. Does nothing when open.
    /// Throws DatabaseError: server errors, a missing column, a column that cannot be read as its declared
    /// field, an unbound parameter.
    void open();

    /// Discards the rows.
    void close() override;

    /// Closes and opens; returns to the row whose integer field `column` has the value that the current row
    /// had, or to the first row. Throws as open() does.
    void reopenLocate(const QString& column);

    [[nodiscard]] bool isOpen() const { return isOpen_; }

    /// The value of the parameter of that name. Throws DatabaseError when the query has none.
    [[nodiscard]] ParameterValue& parameter(const QString& name) { return parameters_.parameter(name); }

    /// The declared fields, in their order.
    [[nodiscard]] std::span<Field* const> fields() const { return fields_; }

    /// The field of that column, or null.
    [[nodiscard]] const Field* findField(const QString& column) const;

    /// The field of that column; throws DatabaseError when it is not declared.
    [[nodiscard]] const Field& field(const QString& column) const;

    /// Rows read; 0 while closed.
    [[nodiscard]] int rowCount() const { return isOpen_ ? rows_->rowCount() : 0; }

    /// Frees the compiled query on the server; the next opening has it compiled again. Throws DatabaseError.
    void releaseHandles() override;

    /// The rows themselves; only while open, and as far as rowsArrived() has told.
    [[nodiscard]] const RowStore& rows() const { return *rows_; }

    /// A value as text: decoded text, or the exact number with all its fraction digits and `decimalPoint`,
    /// without grouping; empty for NULL. Where rows() can be read.
    [[nodiscard]] QString text(int row, const Field& field, QChar decimalPoint = u'.') const;

    /// The current row, from 0; -1 when there is none.
    [[nodiscard]] int currentRow() const { return currentRow_; }

    /// Makes `row` current; a row outside of the rows leaves the current one.
    void moveTo(int row);

    /// The first row whose text field `column` equals `value` exactly (NULL equals nothing), if there is one.
    [[nodiscard]] std::optional<int> find(const QString& column, const QString& value) const;

    /// Moves to the first row whose text field `column` equals `value` exactly (NULL equals nothing) and
    /// tells whether there is one; the current row stays when there is none.
    bool locate(const QString& column, const QString& value);

signals:
    /// Within open(), while the dataset still counts as closed: its first `count` rows can be read, and
    /// others are on their way. Emitted when the first thousand has come, then at most ten times a second,
    /// and with 0 when the reading fails after that. Nothing may be asked of the connection meanwhile.
    void rowsArrived(int count);
    /// The rows are about to be replaced: on opening and on closing.
    void aboutToReset();
    /// The rows have been replaced.
    void reset();
    /// Another row has become current. Not emitted within a reset.
    void currentRowChanged(int row);

private:
    void forgetHandles() override;
    [[nodiscard]] Handle<Firebird::IResultSet> runQuery();
    [[nodiscard]] Handle<Firebird::IResultSet> openCursor();
    void fetchRows(Handle<Firebird::IResultSet> cursor);

    Connection& connection_;
    Transaction& transaction_;
    QStringList sql_;
    QueryParameters parameters_;
    std::vector<Field*> fields_;
    Handle<Firebird::IStatement> statement_;
    std::optional<RowDecoder> decoder_;
    std::optional<RowStore> rows_; // while open, and while open() reads
    bool isOpen_ = false;
    int currentRow_ = -1;
};

} // namespace db
