#include "base/error.h"
#include "base/file_name.h"
#include "base/program_place.h"
#include "base/win1251.h"
#include "db/client_library.h"
#include "db/database_error.h"
#include "db/decimal.h"
#include "db/named_parameters.h"
#include "db/parameter_block.h"
#include "db/row_store.h"
#include "support/printing.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

std::vector<unsigned char> bytes(std::initializer_list<int> codes, const char* text = "") {
    std::vector<unsigned char> block(codes.begin(), codes.end());
    for (; *text != '\0'; ++text) {
        block.push_back(static_cast<unsigned char>(*text));
    }
    return block;
}

TEST(ParameterBlock, IsByteForByteWhatTheServerIsSent) {
    std::vector<unsigned char> expected = bytes({1, 29, 9}, "pinewoods");
    for (const auto& item : {bytes({28, 6}, "SYSDBA"), bytes({48, 7}, "WIN1251")}) {
        expected.insert(expected.end(), item.begin(), item.end());
    }
    EXPECT_EQ(db::databaseParameterBlock({"password=pinewoods", "user_name=SYSDBA", "lc_ctype=WIN1251"}),
              expected);
    EXPECT_EQ(db::transactionParameterBlock({"read", "nowait", "rec_version", "read_committed"}),
              bytes({3, 8, 7, 17, 15}));
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

TEST(Decimal, ShowsEveryDigit) {
    using Limits = std::numeric_limits<std::int64_t>;
    EXPECT_EQ(db::decimalText(Limits::max(), 2, u','), "92233720368547758,07");
    EXPECT_EQ(db::decimalText(Limits::min(), 2, u','), "-92233720368547758,08");
    EXPECT_EQ(db::decimalText(Limits::min(), 0, u','), "-9223372036854775808");
    EXPECT_EQ(db::decimalText(-1, 4, u'.'), "-0.0001");
    EXPECT_EQ(db::decimalText(0, 2, u','), "0,00");
    EXPECT_EQ(db::decimalText(-5, 1, u','), "-0,5");
}

TEST(Win1251, KeepsEveryByteAndReplacesWhatItLacks) {
    std::string all;
    for (int value = 0; value < 256; ++value) {
        all.push_back(static_cast<char>(value));
    }
    const QString text = base::win1251::decode(all);
    EXPECT_EQ(base::win1251::encode(text).toStdString(), all);
    EXPECT_EQ(text.sliced(0xC0), "АБВГДЕЖЗИЙКЛМНОПРСТУФХЦЧШЩЪЫЬЭЮЯабвгдежзийклмнопрстуфхцчшщъыьэюя");
    EXPECT_EQ(text[0x98], QChar(0x98));
    EXPECT_EQ(base::win1251::encode(u"ж中"), QByteArray("\xE6\x1A"));
}

TEST(RowStore, GivesBackWhatWasPutAcrossStretches) {
    using enum db::FieldKind;
    const std::vector<db::FieldKind> kinds{Integer64, String,    Integer32, String,   Decimal,
                                           String,    Integer32, Integer32, Integer64};
    db::RowStore store(kinds);
    constexpr int rows = 5000;
    const auto name = [](int row) {
        return std::string(static_cast<std::size_t>(row % 1001), static_cast<char>('a' + row % 26));
    };
    for (int row = 0; row < rows; ++row) {
        db::RowStore::RowWriter writer(store);
        writer.putInteger(0, std::numeric_limits<std::int64_t>::min() + row);
        writer.putString(1, name(row));
        writer.putInteger(2, -row);
        writer.putNull(3);
        writer.putInteger(4, row);
        writer.putString(5, name(row + 7));
        writer.putNull(6);
        writer.putInteger(7, std::numeric_limits<std::int32_t>::max());
        writer.putNull(8);
        writer.finish();
    }
    store.seal();
    ASSERT_EQ(store.rowCount(), rows);
    for (int row = 0; row < rows; ++row) {
        ASSERT_EQ(store.integer(row, 0), std::numeric_limits<std::int64_t>::min() + row);
        ASSERT_EQ(store.string(row, 1), name(row));
        ASSERT_EQ(store.integer(row, 2), -row);
        ASSERT_TRUE(store.isNull(row, 3) && store.isNull(row, 6) && store.isNull(row, 8));
        ASSERT_FALSE(store.isNull(row, 5) || store.isNull(row, 7));
        ASSERT_EQ(store.string(row, 3), "");
        ASSERT_EQ(store.string(row, 5), name(row + 7));
        ASSERT_EQ(store.integer(row, 7), std::numeric_limits<std::int32_t>::max());
    }
}

TEST(ClientLibrary, ThatIsMissingIsReportedInTheFixedWords) {
    db::ClientLibrary library({"no_such_client.so", "nor_this_one.so"});
    try {
        library.load();
        FAIL() << "loaded";
    } catch (const db::DatabaseError& error) {
        EXPECT_EQ(error.message(), "Клиенская библиотека InterBase gds32.dll не обнаружена. "
                                   "Пожалуйста, установите клиента InterBase!");
        EXPECT_EQ(base::classNameOf(error), "DatabaseError");
    }
}

TEST(ExecutableNames, AreCutAtTheLastPointOrDelimiter) {
    EXPECT_EQ(base::withExtension("/opt/v1.2/Респ. Коми202403", ".xlsx"), "/opt/v1.2/Респ.xlsx");
    EXPECT_EQ(base::withExtension("/opt/v1.2/Москва", ".xlsx"), "/opt/v1.2/Москва.xlsx");
    EXPECT_EQ(base::withExtension("D:\\a.b:name", ".log"), "D:\\a.b:name.log");
    EXPECT_EQ(base::withExtension("name", ".log"), "name.log");
    EXPECT_EQ(base::withExtension(".", ".log"), ".log");
    EXPECT_EQ(base::folderOf("/opt/v1.2/name"), "/opt/v1.2/");
    EXPECT_TRUE(base::programFolder().endsWith('/'));
}

} // namespace
