// SPDX-License-Identifier: MIT

#include "db/database_error.h"
#include "db/named_parameters.h"
#include "db/parameter_block.h"
#include "support/printing.h"

#include <gtest/gtest.h>

#include <cstring>
#include <vector>

namespace {

std::vector<unsigned char> item(std::initializer_list<unsigned char> head, const char* text) {
    std::vector<unsigned char> bytes(head);
    bytes.insert(bytes.end(), text, text + std::strlen(text));
    return bytes;
}

TEST(ParameterBlock, IsByteForByteWhatTheServerIsSent) {
    std::vector<unsigned char> expected{1};
    for (const auto& part : {item({29, 9}, "pinewoods"), item({28, 6}, "SYSDBA"), item({48, 7}, "WIN1251")}) {
        expected.insert(expected.end(), part.begin(), part.end());
    }
    EXPECT_EQ(db::databaseParameterBlock({"password=pinewoods", "user_name=SYSDBA", "lc_ctype=WIN1251"}),
              expected);
    EXPECT_EQ(db::transactionParameterBlock({"read", "nowait", "rec_version", "read_committed"}),
              (std::vector<unsigned char>{3, 8, 7, 17, 15}));
}

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
