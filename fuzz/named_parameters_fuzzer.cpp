// SPDX-License-Identifier: MIT

// The names of parameters in a query of any text.

#include "db/query_parameters.h"
#include "fuzz/fuzzing.h"

void fuzz::run(Input& input) {
    const QString sql = takeText(input);
    const db::PositionalStatement statement = db::toPositional(sql);
    // A mark stands for a colon and a name; nothing else has gone.
    check(statement.sql.size() + statement.names.join(QString()).size() == sql.size());
    const db::PositionalStatement again = db::toPositional(statement.sql);
    check(again.sql == statement.sql && again.names.isEmpty());

    db::QueryParameters parameters{QString()};
    parameters.setQuery(sql);
    check(parameters.positionalSql() == statement.sql);
    for (const QString& name : statement.names) {
        parameters.parameter(name) = name;
    }
    try {
        static_cast<void>(parameters.parameter(QStringLiteral("no name")));
        check(false);
    } catch (const db::DatabaseError&) {
        // As it must be.
    }
}
