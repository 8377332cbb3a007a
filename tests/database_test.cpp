#include "data/data_modul.h"
#include "data/selection.h"
#include "support/firebird_server.h"
#include "support/printing.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <limits>
#include <thread>

namespace {

using test::runSql;
using test::sqlValue;

/// The message of the DatabaseError that `action` raises; "nothing thrown" when it raises none.
template <typename Action>
QString errorOf(Action&& action) {
    try {
        action();
    } catch (const db::DatabaseError& error) {
        return error.message();
    }
    return QStringLiteral("nothing thrown");
}

void openAll(TDM& module, const QString& period, std::int32_t region) {
    for (db::DataSet* dataSet : module.selectionDataSets()) {
        data::bindSelection(*dataSet, period, region);
    }
    for (db::DataSet* dataSet : module.dataSets()) {
        dataSet->open();
    }
}

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

TEST(Connection, HasTheSettingsThatTheServerReports) {
    TDM module;
    EXPECT_EQ(module.pFIBDatabase1.databaseName(), "127.0.0.1/3050:C:\\DATA\\BAZAKATALOG.FDB");
    module.connectTo(test::sampleServer);
    EXPECT_FALSE(module.RFIBTransaction.isActive());
    module.pFIBDataSet1.open();
    EXPECT_TRUE(module.RFIBTransaction.isActive());

    // Of this process alone: other tests use the same server.
    const QString ours =
        QStringLiteral(" where a.MON$REMOTE_PID = %1 and a.MON$ATTACHMENT_ID <> current_connection")
            .arg(QCoreApplication::applicationPid());
    EXPECT_EQ(
        sqlValue(test::sampleServer,
                 "select trim(a.MON$USER) || ' ' || trim(c.RDB$CHARACTER_SET_NAME) from MON$ATTACHMENTS a "
                 "join RDB$CHARACTER_SETS c on c.RDB$CHARACTER_SET_ID = a.MON$CHARACTER_SET_ID" +
                     ours),
        "SYSDBA WIN1251");
    // 2: read committed with record versions.
    EXPECT_EQ(
        sqlValue(
            test::sampleServer,
            "select t.MON$ISOLATION_MODE || ' ' || t.MON$READ_ONLY || ' ' || t.MON$LOCK_TIMEOUT "
            "from MON$TRANSACTIONS t join MON$ATTACHMENTS a on a.MON$ATTACHMENT_ID = t.MON$ATTACHMENT_ID" +
                ours),
        "2 1 0");
    module.pFIBDatabase1.close();
    EXPECT_FALSE(module.pFIBDataSet1.isOpen());
    EXPECT_EQ(sqlValue(test::sampleServer, "select count(*) from MON$ATTACHMENTS a" + ours), "0");
}

TEST(Connection, RefusesWhatItCannotReachAndStaysUsable) {
    test::FirebirdServer other("127.0.0.2", "schema");
    TDM module;
    EXPECT_THROW(module.connectTo("127.0.0.99"), db::DatabaseError);
    EXPECT_FALSE(module.pFIBDatabase1.isConnected());

    db::Connection wrongPassword("wrong", TDM::databaseNameOn(test::sampleServer),
                                 {"password=oak", "user_name=SYSDBA", "lc_ctype=WIN1251"},
                                 db::ClientLibrary::defaultNames(), nullptr);
    EXPECT_TRUE(errorOf([&] { wrongPassword.open(); }).contains("user name and password"));

    module.pFIBDatabase1.setDatabaseName(QString(test::sampleServer) + "/3050:C:\\DATA\\NONE.FDB");
    EXPECT_NE(errorOf([&] { module.pFIBDatabase1.open(); }), "nothing thrown");

    db::Connection noLibrary("none", TDM::databaseNameOn(test::sampleServer), {}, {"no_such_client.so"},
                             nullptr);
    EXPECT_TRUE(errorOf([&] { noLibrary.open(); }).startsWith("Клиенская библиотека"));

    module.connectTo(test::sampleServer);
    module.connectTo(test::sampleServer);
    EXPECT_TRUE(errorOf([&] { module.connectTo(other.address()); }).contains("нельзя изменить"));
    EXPECT_EQ(module.pFIBDatabase1.databaseName(), TDM::databaseNameOn(test::sampleServer));
    module.pFIBDataSet1.open();
    EXPECT_GT(module.pFIBDataSet1.rowCount(), 0);
    module.pFIBDatabase1.close();
    module.connectTo(other.address());
    module.pFIBDataSet1.open();
    EXPECT_EQ(module.pFIBDataSet1.rowCount(), 0);
    EXPECT_THROW(module.pFIBDataSet3.open(), db::DatabaseError) << "unbound parameters";
    EXPECT_TRUE(errorOf([&] { static_cast<void>(module.pFIBDataSet1.parameter("p1")); }).contains("p1"));
}

TEST(ConnectionDeathTest, LeavesItToTheProgramHowSignalsEndIt) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            TDM module;
            module.connectTo(test::sampleServer);
            std::raise(SIGTERM);
        },
        testing::KilledBySignal(SIGTERM), "");
}

TEST(Connection, ThatDiesIsRecognisedAndCanBeOpenedAgain) {
    test::FirebirdServer server("127.0.0.3", "limits");
    TDM module;
    module.connectTo(server.address());
    openAll(module, "202403", 1);
    const int rows = module.pFIBDataSet3.rowCount();
    const auto reopen = [&] { module.pFIBDataSet4.reopenLocate("ID"); };

    server.kill();
    EXPECT_NE(errorOf(reopen), "nothing thrown");
    EXPECT_FALSE(module.pFIBDatabase1.isConnected());
    EXPECT_FALSE(module.RFIBTransaction.isActive());
    EXPECT_FALSE(module.pFIBDataSet4.isOpen());
    EXPECT_EQ(module.pFIBDataSet3.rowCount(), rows) << "rows already read are kept";
    EXPECT_TRUE(errorOf(reopen).contains("не открыто"));
    EXPECT_NE(errorOf([&] { module.pFIBDatabase1.open(); }), "nothing thrown");

    server.start();
    module.pFIBDatabase1.open();
    reopen();
    EXPECT_GT(module.pFIBDataSet4.rowCount(), 0);
    server.kill();
    EXPECT_NE(errorOf([&] { module.chooseEdition(data::editions[0]); }), "nothing thrown");
    EXPECT_FALSE(module.pFIBDatabase1.isConnected());
    EXPECT_NO_THROW(module.pFIBDatabase1.close());

    // By the administrator, who ends this connection alone.
    server.start();
    module.connectTo(server.address());
    module.chooseEdition(data::editions[0]);
    reopen();
    runSql(server.address(),
           "delete from MON$ATTACHMENTS where MON$ATTACHMENT_ID <> current_connection; commit;");
    EXPECT_TRUE(errorOf(reopen).contains("connection"));
    EXPECT_FALSE(module.pFIBDatabase1.isConnected());
}

TEST(Connection, SurvivesAServerThatDiesWhileItAnswers) {
    test::FirebirdServer server("127.0.0.3", "limits");
    runSql(server.address(),
           "set term ^; execute block as declare I integer = 0; begin while (I < 150000) do begin I = I + 1; "
           "insert into TERKATALOGKTC_TABLE (ID, PER, REGIONID, KOD, NAME) "
           "values (1000000 + :I, '209912', 77, :I, 'имя ' || :I); end end^ set term ;^ commit;");
    TDM module;
    module.connectTo(server.address());
    data::bindSelection(module.pFIBDataSet3, "209912", 77);
    QString raised;
    {
        const std::jthread killer([&] {
            std::this_thread::sleep_for(std::chrono::milliseconds(100));
            server.kill();
        });
        raised = errorOf([&] { module.pFIBDataSet3.open(); });
    }
    EXPECT_NE(raised, "nothing thrown");
    EXPECT_FALSE(module.pFIBDataSet3.isOpen()) << "a part of the rows is no answer";
    EXPECT_FALSE(module.pFIBDatabase1.isConnected());

    server.start();
    module.pFIBDatabase1.open();
    module.pFIBDataSet3.open();
    EXPECT_EQ(module.pFIBDataSet3.rowCount(), 150'000);
}

TEST(Connection, ClosesAllThatHangsOnADeadServer) {
    test::FirebirdServer server("127.0.0.3", "limits");
    TDM module;
    module.connectTo(server.address());
    openAll(module, "202403", 1);
    server.kill();
    // Whether the client notices depends on when the system reports the broken pipe.
    static_cast<void>(errorOf([&] { module.pFIBDatabase1.close(); }));
    EXPECT_FALSE(module.pFIBDatabase1.isConnected());
    for (const db::DataSet* dataSet : module.dataSets()) {
        EXPECT_FALSE(dataSet->isOpen()) << dataSet->objectName().toStdString();
    }
}

TEST(DataSets, DeliverEveryKindAtItsLimits) {
    TDM module;
    module.connectTo(test::limitsServer);
    openAll(module, "202403", 1);

    const db::DataSet& materials = module.pFIBDataSet3;
    EXPECT_EQ(QString::number(materials.rowCount()),
              sqlValue(test::limitsServer,
                       "select count(*) from TERKATALOGKTC_TABLE where PER='202403' and REGIONID=1"));
    const auto money = [&](int number) {
        return textWhere(materials, "NAME", QStringLiteral("Число %1").arg(number), "INDEKS");
    };
    const QStringList expected{"-92233720368547758.08",
                               "92233720368547758.07",
                               "-0.01",
                               "0.00",
                               "0.01",
                               "0.05",
                               "-0.50",
                               "1.10",
                               "1234567.89",
                               "-1234567.90",
                               "90071992547409.93",
                               ""};
    for (int number = 1; number <= expected.size(); ++number) {
        EXPECT_EQ(money(number), expected[number - 1]);
    }
    EXPECT_TRUE(
        rowText(materials, rowWhere(materials, "ID", "3000")).endsWith(QString("|<null>").repeated(11)));
    EXPECT_EQ(textWhere(materials, "ID", "-9223372036854775808", "KOD"), "-2147483648");
    EXPECT_EQ(textWhere(materials, "ID", "-9223372036854775808", "NAME"), QString(1000, u'Щ'));
    EXPECT_EQ(textWhere(materials, "ID", "9223372036854775807", "KOD"), "2147483647");
    EXPECT_FALSE(materials.rows().isNull(rowWhere(materials, "ID", "9223372036854775807"), 5))
        << "empty is not NULL";

    const QString upperHalf = textWhere(materials, "NOMER", "upper half", "NAME");
    EXPECT_EQ(upperHalf.size(), 127);
    EXPECT_TRUE(upperHalf.startsWith("ЂЃ‚ѓ„…†‡€‰Љ‹ЊЌЋЏђ") && upperHalf.endsWith("шщъыьэюя"));
    EXPECT_EQ(textWhere(materials, "NOMER", "control 0", "NAME"), QString("до") + QChar(0) + "после");

    EXPECT_EQ(textWhere(module.pFIBDataSet8, "NAME", "наименьший", "KOEFF"), "-922337203685477.5808");
    EXPECT_EQ(textWhere(module.pFIBDataSet8, "NAME", "меньше нуля", "KOEFF"), "-0.0001");
    EXPECT_EQ(textWhere(module.pFIBDataSet9, "ID", "-9223372036854775808", "PARENTID"),
              "9223372036854775807");
    EXPECT_EQ(rowText(module.pFIBDataSet7, rowWhere(module.pFIBDataSet7, "INN", "")).count("|"), 3);
    EXPECT_EQ(module.pFIBDataSet10.rowCount(), 13);

    // 0x98 has no character; it is kept all the same.
    data::bindSelection(module.pFIBDataSet3, "202403", 13);
    module.pFIBDataSet3.reopenLocate("ID");
    EXPECT_EQ(materials.text(0, materials.field("NAME")), QString("до") + QChar(0x98) + "после");
}

TEST(DataSets, SeeWhatOthersCommitWhenTheyAreOpenedAgain) {
    test::FirebirdServer server("127.0.0.4", "limits");
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
        {"alter table KATALOG alter NAME type varchar(1001);", 8, "«NAME» имеет тип VARCHAR(1001)"},
        {"alter table REGION drop NAME; alter table REGION add NAME integer;", 0, "«NAME» имеет тип INTEGER"},
        {"drop table PERIOD_TABLE; commit; create table PERIOD_TABLE (PERIOD char(6));", 1, ""},
        {"alter table TERTRUD_TABLE drop OZP; alter table TERTRUD_TABLE add OZP numeric(18,4);", 5, "«OZP»"},
        {"alter table TERMASH_TABLE drop EMM; alter table TERMASH_TABLE add EMM double precision;", 4,
         "DOUBLE"},
        {"alter table TERMASH_TABLE drop EMM; alter table TERMASH_TABLE add EMM numeric(4,2);", 4, ""},
    };
    for (const Case& change : cases) {
        runSql(server.address(), QString::fromLatin1(change.change) + " commit;");
        TDM module;
        module.connectTo(server.address());
        db::DataSet& dataSet = *module.dataSets()[static_cast<std::size_t>(change.dataSet)];
        if (change.dataSet >= 2 && change.dataSet <= 5) {
            data::bindSelection(dataSet, "202403", 1);
        }
        const QString error = errorOf([&] { dataSet.open(); });
        if (*change.expected == '\0') {
            EXPECT_EQ(error, "nothing thrown") << change.change;
        } else {
            EXPECT_TRUE(error.contains(change.expected)) << change.change << error.toStdString();
            EXPECT_FALSE(dataSet.isOpen());
        }
    }
    TDM module;
    module.connectTo(server.address());
    EXPECT_TRUE(errorOf([&] { module.chooseEdition(data::editions[1]); }).contains("FER14I2MASH_TABLE"));
    EXPECT_TRUE(module.pFIBDataSet4.sql().join(' ').contains("FER14I2KATOGLAVLENIE_TABLE"));
    EXPECT_TRUE(module.pFIBDataSet6.sql().join(' ').contains("TERTRUD_TABLE")) << "not reached";
    EXPECT_NO_THROW(module.chooseEdition(data::editions[2]));
}

TEST(DataSets, ReadTheTablesOfTheChosenEdition) {
    TDM module;
    module.connectTo(test::sampleServer);
    for (const data::Edition& edition : data::editions) {
        module.chooseEdition(edition);
        openAll(module, "202403", 11);
        const std::pair<db::DataSet*, std::u16string_view> tables[]{
            {&module.pFIBDataSet3, edition.tables.materials},
            {&module.pFIBDataSet4, edition.tables.contents},
            {&module.pFIBDataSet5, edition.tables.machines},
            {&module.pFIBDataSet6, edition.tables.labour},
        };
        for (const auto& [dataSet, table] : tables) {
            const QString rest =
                QStringLiteral(" from %1 where PER='202403' and REGIONID=11").arg(QStringView(table));
            EXPECT_EQ(QString::number(dataSet->rowCount()),
                      sqlValue(test::sampleServer, "select count(*)" + rest));
            EXPECT_EQ(dataSet->text(0, dataSet->field("ID")),
                      sqlValue(test::sampleServer, "select first 1 ID" + rest + " order by KOD"));
            EXPECT_THROW(dataSet->setSql({}), db::DatabaseError) << "open";
        }
        for (db::DataSet* dataSet : module.dataSets()) {
            dataSet->close();
        }
    }
}

TEST(DataSets, LeaveNothingOnTheServerHoweverOftenTheyAreRead) {
    TDM module;
    module.connectTo(test::limitsServer);
    const auto statements = [] {
        return sqlValue(
            test::limitsServer,
            QStringLiteral("select count(*) from MON$STATEMENTS s join MON$ATTACHMENTS a on "
                           "a.MON$ATTACHMENT_ID = s.MON$ATTACHMENT_ID where a.MON$REMOTE_PID = %1")
                .arg(QCoreApplication::applicationPid()));
    };
    const auto round = [&](int number) {
        module.chooseEdition(data::editions[static_cast<std::size_t>(number) % 2]);
        for (db::DataSet* dataSet : module.selectionDataSets()) {
            dataSet->close();
            data::bindSelection(*dataSet, "202403", number);
            dataSet->open();
        }
    };
    round(0);
    const QString before = statements();
    for (int number = 1; number <= 500; ++number) {
        round(number);
    }
    EXPECT_EQ(statements(), before);
}

TEST(DataSets, TellWhichRowIsCurrent) {
    TDM module;
    module.connectTo(test::limitsServer);
    db::DataSet& regions = module.pFIBDataSet1;
    QSignalSpy moved(&regions, &db::DataSet::currentRowChanged);
    QSignalSpy reset(&regions, &db::DataSet::reset);
    EXPECT_EQ(regions.currentRow(), -1);
    regions.open();
    EXPECT_EQ(regions.currentRow(), 0);
    EXPECT_TRUE(regions.locate("NAME", "Г двойник"));
    EXPECT_EQ(regions.text(regions.currentRow(), regions.field("ID")), "5") << "the first of two";
    EXPECT_FALSE(regions.locate("NAME", "г двойник"));
    EXPECT_FALSE(regions.locate("NAME", "Г двойни"));
    EXPECT_TRUE(regions.locate("NAME", "")) << "the empty name";
    EXPECT_EQ(regions.text(regions.currentRow(), regions.field("ID")), "10") << "not the NULL one";
    EXPECT_EQ(moved.size(), 2);
    EXPECT_EQ(reset.size(), 1);
    regions.close();
    EXPECT_EQ(regions.currentRow(), -1);
    EXPECT_EQ(regions.rowCount(), 0);
}

} // namespace
