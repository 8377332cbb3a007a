// SPDX-License-Identifier: MIT

#include "data/data_modul.h"
#include "support/catalog.h"
#include "support/faulty_line.h"
#include "support/firebird_server.h"
#include "support/printing.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <thread>

#include <ibase.h>
#include <unistd.h>

namespace {

using test::errorOf;
using test::openAll;
using test::runSql;
using test::sqlValue;

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
    EXPECT_EQ(errorOf([&] { noLibrary.open(); }), "Клиенская библиотека InterBase gds32.dll не обнаружена. "
                                                  "Пожалуйста, установите клиента InterBase!");

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

TEST(ConnectionDeathTest, EndsAtASignalWhileAServerDoesNotAnswer) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            const test::FaultyLine silent("127.0.0.9", nullptr);
            std::thread([] {
                std::this_thread::sleep_for(std::chrono::milliseconds(500));
                ::kill(::getpid(), SIGTERM);
            }).detach();
            TDM module;
            module.connectTo("127.0.0.9");
        },
        testing::KilledBySignal(SIGTERM), "");
}

TEST(Connection, ThatDiesIsRecognisedAndCanBeOpenedAgain) {
    test::FirebirdServer server("127.0.0.3", test::limitsCatalog);
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

TEST(Connection, LetsGoOfALineThatNobodyReads) {
    const test::FirebirdServer server("127.0.0.3", test::limitsCatalog);
    TDM module;
    module.connectTo(server.address());
    openAll(module, "202403", 1);
    // A server that ends one connection may leave its line so.
    server.pause();
    const std::jthread resuming([&](const std::stop_token& stop) {
        for (int left = 50; left > 0 && !stop.stop_requested(); --left) {
            std::this_thread::sleep_for(std::chrono::milliseconds(100));
        }
        server.resume();
    });
    const auto start = std::chrono::steady_clock::now();
    EXPECT_THROW(module.pFIBDatabase1.run(
                     [](auto*) { throw db::DatabaseError("connection shutdown", {isc_att_shutdown}); }),
                 db::DatabaseError);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(2));
    EXPECT_FALSE(module.pFIBDatabase1.isConnected());
}

} // namespace
