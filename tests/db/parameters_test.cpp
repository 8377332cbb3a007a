// SPDX-License-Identifier: MIT

#include "db/database_error.h"
#include "db/named_parameters.h"
#include "db/parameter_block.h"
#include "support/printing.h"

#include <gtest/gtest.h>

namespace {

TEST(ParameterBlock, RefusesWhatItCannotExpress) {
    EXPECT_THROW(static_cast<void>(db::databaseParameterBlock({"sql_role=x"})), db::DatabaseError);
    EXPECT_THROW(static_cast<void>(db::databaseParameterBlock({"password=" + QString(256, u'x')})),
                 db::DatabaseError);
    EXPECT_THROW(static_cast<void>(db::transactionParameterBlock({"write"})), db::DatabaseError);
}

TEST(NamedParameters, AreReplacedOnlyOutsideOfTextsAndComments) {
    const auto statement = db::toPositional(
        "select ':no', \":no\" /* :no */ -- :no\nfrom t where a=:p1 and b=:p2 or c=:p1 and d=':'");
    EXPECT_EQ(statement.sql,
              "select ':no', \":no\" /* :no */ -- :no\nfrom t where a=? and b=? or c=? and d=':'");
    EXPECT_EQ(statement.names, QStringList({"p1", "p2", "p1"}));
    EXPECT_EQ(db::toPositional("select '").sql, "select '");
}

} // namespace
