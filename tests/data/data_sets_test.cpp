// SPDX-License-Identifier: MIT

#include "data/data_modul.h"
#include "data/selection.h"
#include "support/catalog.h"
#include "support/firebird_server.h"
#include "support/printing.h"

#include <gtest/gtest.h>

#include <cstring>

#include <array>

namespace {

using test::errorOf;
using test::openAll;
using test::runSql;
using test::sqlValue;

constexpr std::array oneName{db::text(u"NAME", 1000)};

/// A row as text: its values separated by "|", NULL as "<null>".
QString rowText(const db::DataSet& dataSet, int row) {
    QStringList values;
    for (const db::Field* field : dataSet.fields()) {
        values +=
            dataSet.rows().isNull(row, field->index()) ? QStringLiteral("<null>") : dataSet.text(row, *field);
    }
    return values.join(u'|');
}

int rowWhere(const db::DataSet& dataSet, const QString& column, const QString& value) {
    for (int row = 0; row < dataSet.rowCount(); ++row) {
        if (dataSet.text(row, dataSet.field(column)) == value) {
            return row;
        }
    }
    return -1;
}

QString textWhere(const db::DataSet& dataSet, const QString& column, const QString& value,
                  const QString& wanted) {
    const int row = rowWhere(dataSet, column, value);
    return row < 0 ? QStringLiteral("no such row") : dataSet.text(row, dataSet.field(wanted));
}

TEST(DataSets, DeliverEveryKindAtItsLimits) {
    TDM module;
    module.connectTo(test::limitsServer);
    openAll(module, "202403", 1);

    const db::DataSet& materials = module.pFIBDataSet3;
    EXPECT_TRUE(
        rowText(materials, rowWhere(materials, "ID", "3000")).endsWith(QString("|<null>").repeated(11)));
    EXPECT_EQ(textWhere(materials, "ID", "-9223372036854775808", "NAME"), QString(1000, u'Щ'));
    EXPECT_EQ(textWhere(module.pFIBDataSet8, "NAME", "наименьший", "KOEFF"), "-922337203685477.5808");
    EXPECT_EQ(textWhere(module.pFIBDataSet9, "ID", "-9223372036854775808", "PARENTID"),
              "9223372036854775807");
    EXPECT_EQ(rowText(module.pFIBDataSet7, rowWhere(module.pFIBDataSet7, "INN", "")).count("|"), 3);
    // 0x98 has no character; it is kept all the same.
    constexpr std::int32_t regionOfThatByte = 13;
    data::bindSelection(module.pFIBDataSet3, "202403", regionOfThatByte);
    module.pFIBDataSet3.reopenLocate("ID");
    EXPECT_EQ(materials.text(0, materials.field("NAME")), QString("до") + QChar(0x98) + "после");
}

TEST(DataSets, SeeWhatOthersCommitWhenTheyAreOpenedAgain) {
    test::FirebirdServer server("127.0.0.4", test::limitsCatalog);
    TDM module;
    module.connectTo(server.address());
    openAll(module, "202403", 1);
    db::DataSet& labour = module.pFIBDataSet6;
    labour.moveTo(5);
    const QString before = rowText(labour, 5);
    const int count = labour.rowCount();
    runSql(server.address(),
           "insert into TERTRUD_TABLE (ID, PER, REGIONID, KOD) values (7777, '202403', 1, -5);"
           "update TERTRUD_TABLE set NAME = 'иначе' where ID = 6; commit;");
    EXPECT_EQ(labour.rowCount(), count);
    EXPECT_EQ(rowText(labour, 5), before);
    const QString id = labour.text(5, labour.field("ID"));
    labour.reopenLocate("ID");
    EXPECT_EQ(labour.rowCount(), count + 1);
    EXPECT_EQ(labour.text(labour.currentRow(), labour.field("ID")), id) << "back on the same row";
    EXPECT_EQ(textWhere(labour, "ID", "6", "NAME"), "иначе");

    runSql(server.address(), "delete from TERTRUD_TABLE where ID = " + id + "; commit;");
    labour.reopenLocate("ID");
    EXPECT_EQ(labour.currentRow(), 0) << "the first row where the old one is gone";
}

TEST(DataSets, AnswerAnyPeriodWithoutAnError) {
    TDM module;
    module.connectTo(test::limitsServer);
    const auto rowsOf = [&](const QString& period) {
        data::bindSelection(module.pFIBDataSet3, period, 1);
        module.pFIBDataSet3.reopenLocate("ID");
        return module.pFIBDataSet3.rowCount();
    };
    EXPECT_EQ(rowsOf("1"), 1);
    EXPECT_EQ(rowsOf(""), 1);
    EXPECT_EQ(rowsOf("2024031"), 0) << "longer than the column";
    EXPECT_EQ(rowsOf("中"), 0) << "outside of the code page";
    EXPECT_EQ(rowsOf("'; --"), 0);
    EXPECT_GT(rowsOf("202403"), 1);
    EXPECT_EQ(rowsOf("202403  "), rowsOf("202403")) << "blanks at the end do not count";

    // Under this collation control characters do not count: one alone would equal the empty text.
    db::DataSet collated("collated", oneName,
                         {"select cast('x' as varchar(1)) as NAME from RDB$DATABASE",
                          "where cast('' as varchar(6) character set UTF8) collate UNICODE_CI = :p1"},
                         module.pFIBDatabase1, module.RFIBTransaction, nullptr);
    for (const char* period : {"2024031", "中"}) {
        collated.parameter("p1") = QString(period);
        collated.open();
        EXPECT_EQ(collated.rowCount(), 0) << period;
        collated.close();
    }
}

TEST(DataSets, LetOthersAlterTheirTablesOnceTheirQueriesAreReleased) {
    const test::FirebirdServer server("127.0.0.4", "schema");
    runSql(server.address(), "drop index OGRANICHENIE_NAME; alter table OGRANICHENIE drop NAME; alter table "
                             "OGRANICHENIE add NAME varchar(3); commit;");
    TDM module;
    module.connectTo(server.address());
    db::DataSet& coefficients = module.pFIBDataSet8;
    coefficients.open();
    coefficients.close();
    coefficients.releaseHandles();
    runSql(server.address(), "alter table OGRANICHENIE alter NAME type varchar(255); commit;"
                             "insert into OGRANICHENIE (NAME, KOEFF) values ('long name', 1.5); commit;");
    coefficients.open();
    ASSERT_EQ(coefficients.rowCount(), 1);
    EXPECT_EQ(coefficients.text(0, coefficients.field("NAME")), "long name");
}

TEST(DataSets, AreReadByALoginThatMayDoNothingElse) {
    const test::FirebirdServer server("127.0.0.4", "schema");
    runSql(server.address(), "input '" TARVELO_SOURCE_DIR "/database/read_only_user.sql';");
    EXPECT_EQ(sqlValue(server.address(), "select CURRENT_USER from RDB$DATABASE"), "CATALOGREADER");

    TDM module;
    module.connectTo(server.address());
    for (const data::Edition& edition : data::editions) {
        module.chooseEdition(edition);
        openAll(module, "202403", 1);
        for (db::DataSet* dataSet : module.dataSets()) {
            dataSet->close();
        }
    }
    for (const char* const change :
         {"delete from REGION;", "drop table FIRMS;", "create table T (A integer);",
          "create user T password 't';", "drop global mapping CATALOG_READER;"}) {
        EXPECT_THROW(runSql(server.address(), change), std::runtime_error) << change;
    }
}

TEST(RowDecoder, RefusesATextLongerThanItsColumn) {
    TDM module;
    module.connectTo(test::limitsServer);
    db::DataSet texts("texts", oneName, {"select cast('abc' as varchar(1000)) as NAME from RDB$DATABASE"},
                      module.pFIBDatabase1, module.RFIBTransaction, nullptr);
    texts.prepare();
    const auto format = module.pFIBDatabase1.run([&](auto* status) {
        const db::Handle<Firebird::IStatement> statement(module.pFIBDatabase1.handle().prepare(
            status, module.RFIBTransaction.handle(), 0,
            "select cast('abc' as varchar(1000)) as NAME from RDB$DATABASE", SQL_DIALECT_V6,
            Firebird::IStatement::PREPARE_PREFETCH_METADATA));
        return db::Handle<Firebird::IMessageMetadata>(statement->getOutputMetadata(status));
    });
    const db::RowDecoder decoder(module.pFIBDatabase1, *format, texts.fields(), "texts");
    const std::array kinds{db::FieldKind::String};
    std::vector<unsigned char> message(decoder.messageSize());
    for (const std::uint16_t length : {std::uint16_t{1000}, std::uint16_t{1001}, std::uint16_t{60'000}}) {
        db::RowStore store(kinds);
        std::memcpy(message.data(), &length, sizeof length);
        const auto decode = [&](auto*) { decoder.decode(message.data(), store); };
        EXPECT_EQ(errorOf([&] { module.pFIBDatabase1.run(decode); }).contains("испорчен"), length > 1000);
        EXPECT_EQ(module.pFIBDatabase1.isConnected(), length <= 1000) << "nothing of it is trusted again";
    }
}

TEST(DataSets, RefuseTablesThatDoNotFit) {
    test::FirebirdServer server("127.0.0.5", "schema");
    struct Case {
        const char* change;
        int dataSet; // from 0
        const char* expected;
    };
    const Case cases[]{
        {"drop table FER14I2MASH_TABLE; drop table OGRANICHENIE;", 7, "OGRANICHENIE"},
        {"alter table FIRMS drop WEBSITE;", 6, "WEBSITE"},
    };
    for (const Case& change : cases) {
        runSql(server.address(), QString::fromLatin1(change.change) + " commit;");
        TDM module;
        module.connectTo(server.address());
        db::DataSet& dataSet = *module.dataSets()[static_cast<std::size_t>(change.dataSet)];
        const QString error = errorOf([&] { dataSet.open(); });
        EXPECT_TRUE(error.contains(change.expected)) << change.change << error.toStdString();
        EXPECT_FALSE(dataSet.isOpen());
    }
    TDM module;
    module.connectTo(server.address());
    EXPECT_TRUE(errorOf([&] { module.chooseEdition(data::editions[1]); }).contains("FER14I2MASH_TABLE"));
    EXPECT_TRUE(module.pFIBDataSet4.sql().join(' ').contains("FER14I2KATOGLAVLENIE_TABLE"));
    EXPECT_TRUE(module.pFIBDataSet6.sql().join(' ').contains("TERTRUD_TABLE")) << "not reached";
    EXPECT_NO_THROW(module.chooseEdition(data::editions[2]));
}

TEST(DataSets, ReadTheTablesOfTheChosenEditionByTheirCodes) {
    TDM module;
    module.connectTo(test::limitsServer);
    for (const int edition : {1, 4, 7, 8}) {
        module.chooseEdition(data::editionOf(edition));
        openAll(module, "209901", 3);
        // Each table has two rows, whose IDs name it; the later one comes first by KOD.
        const std::pair<db::DataSet*, int> tables[]{
            {&module.pFIBDataSet3, 10 * edition + 1},
            {&module.pFIBDataSet4, 10 * edition + 2},
            {&module.pFIBDataSet5, 10 * edition + 3},
            {&module.pFIBDataSet6, 10 * edition + 4},
            {&module.pFIBDataSet10, 50},
        };
        for (const auto& [dataSet, table] : tables) {
            ASSERT_EQ(dataSet->rowCount(), 2) << dataSet->objectName().toStdString() << " of " << edition;
            EXPECT_EQ(dataSet->text(0, dataSet->field("ID")), QString::number(1000 * table + 2));
            EXPECT_EQ(dataSet->text(1, dataSet->field("ID")), QString::number(1000 * table + 1));
            EXPECT_THROW(dataSet->setSql({}), db::DatabaseError) << "open";
        }
        for (db::DataSet* dataSet : module.dataSets()) {
            dataSet->close();
        }
    }
}

TEST(DataSets, ReadNarrowerColumnsAndNameThoseThatDoNotFit) {
    constexpr std::array fields{db::text(u"FIXED", 5), db::decimal(u"SMALL", 2), db::decimal(u"MIDDLE", 2),
                                db::integer(u"CODE")};
    TDM module;
    module.connectTo(test::limitsServer);
    const QString query = "select cast(%1 as char(5)) FIXED, cast(%2 as numeric(4,2)) SMALL, "
                          "cast(%3 as numeric(9,2)) MIDDLE, cast(%4 as integer) CODE from RDB$DATABASE";
    db::DataSet narrow("narrow", fields,
                       {query.arg("' аб'", "-327.68", "21474836.47", "-2147483648"), "union all",
                        query.arg("''", "327.67", "-21474836.48", "2147483647"), "union all",
                        query.arg("null", "null", "null", "null")},
                       module.pFIBDatabase1, module.RFIBTransaction, nullptr);
    narrow.open();
    ASSERT_EQ(narrow.rowCount(), 3);
    EXPECT_EQ(rowText(narrow, 0), " аб|-327.68|21474836.47|-2147483648");
    EXPECT_EQ(rowText(narrow, 1), "|327.67|-21474836.48|2147483647");
    EXPECT_EQ(rowText(narrow, 2), "<null>|<null>|<null>|<null>");
    narrow.close();
    struct Mistake {
        const char* type;
        const char* instead;
        const char* message;
    };
    for (const auto& [type, instead, message] : std::initializer_list<Mistake>{
             {"as integer)", "as smallint)",
              "столбец «CODE» имеет тип SMALLINT, 0 знаков дроби, а ожидается INTEGER"},
             {"as numeric(4,2))", "as numeric(4,1))",
              "столбец «SMALL» имеет тип SMALLINT, 1 знаков дроби, а ожидается NUMERIC(18,2)"},
             {"as numeric(9,2))", "as double precision)",
              "столбец «MIDDLE» имеет тип DOUBLE PRECISION, а ожидается NUMERIC(18,2)"},
             {"as numeric(9,2))", "as date)", "столбец «MIDDLE» имеет тип DATE, а ожидается NUMERIC(18,2)"},
             {"as char(5))", "as char(6))", "столбец «FIXED» имеет тип CHAR(6), а ожидается VARCHAR(5)"}}) {
        narrow.setSql({query.arg("null", "null", "null", "null").replace(type, instead)});
        EXPECT_EQ(errorOf([&] { narrow.open(); }), QString("narrow: ") + message);
    }

    // The server words what it says of Cyrillic names in the connection's character set.
    narrow.setSql({"select \"Нет такой\" FIXED from RDB$DATABASE"});
    EXPECT_TRUE(errorOf([&] { narrow.open(); }).contains("Нет такой"));
    EXPECT_TRUE(module.pFIBDatabase1.isConnected());
}

} // namespace
