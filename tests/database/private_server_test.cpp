// SPDX-License-Identifier: MIT

#include "support/firebird_server.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <chrono>

namespace {

/// What the script says, and after a blank the code that it ends with.
class PrivateServer : public testing::Test {
protected:
    ~PrivateServer() override { run("stop"); }

    QString run(const QString& command, const QStringList& options = {}) {
        return runIn(folder_.path(), command, options);
    }

    static QString runIn(const QString& root, const QString& command, const QStringList& options) {
        QProcess process;
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start(TARVELO_SOURCE_DIR "/database/private-server",
                      QStringList{command, "--root", root} + options);
        EXPECT_TRUE(process.waitForFinished(60'000));
        return QString::fromUtf8(process.readAll()).trimmed() + ' ' + QString::number(process.exitCode());
    }

    QString start(const QStringList& options = {}) {
        return run("start", QStringList{"--address", address, "--catalog", "none"} + options);
    }

    [[nodiscard]] int pid() const {
        QFile file(folder_.filePath("server.pid"));
        return file.open(QIODevice::ReadOnly) ? file.readAll().trimmed().toInt() : 0;
    }

    static constexpr auto address = "127.0.0.10";
    QTemporaryDir folder_;
};

TEST_F(PrivateServer, RefusesWhatWouldReachOutOrBreakItsConfiguration) {
    EXPECT_TRUE(run("start", {"--address", "0.0.0.0"}).contains("is not a loopback address"));
    EXPECT_TRUE(start({"--lifetime", "soon"}).contains("takes a number of seconds"));
    EXPECT_TRUE(run("start", {"--catalog", "other"}).contains("there is no catalog 'other'"));
    EXPECT_TRUE(runIn(folder_.filePath("a$b"), "start", {}).contains("may not hold quotes"));
    EXPECT_EQ(pid(), 0);
}

TEST_F(PrivateServer, RunsOnceAndNamesWhatStandsInItsWay) {
    EXPECT_TRUE(run("status").endsWith(" 3"));
    ASSERT_TRUE(start().contains("Firebird is ready on 127.0.0.10/3050"));
    const int running = pid();
    EXPECT_TRUE(run("status").endsWith(" 0"));
    EXPECT_TRUE(start().contains("is running already"));
    EXPECT_EQ(pid(), running);
    const QTemporaryDir other;
    EXPECT_TRUE(runIn(other.path(), "start", {"--address", address, "--catalog", "none"})
                    .contains(QString("port 3050 on 127.0.0.10 is taken by firebird, pid %1").arg(running)));

    // A server that was killed leaves its pid file, whose number may be another process's by now.
    test::killServer(folder_.path());
    QFile file(folder_.filePath("server.pid"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray::number(QCoreApplication::applicationPid()));
    file.close();
    EXPECT_TRUE(run("status").endsWith(" 3"));
    const QString again = start();
    EXPECT_TRUE(again.contains("its pid file is removed")) << again.toStdString();
    EXPECT_TRUE(again.contains("Firebird is ready"));
    EXPECT_TRUE(run("stop").startsWith("Firebird is stopped"));
}

TEST_F(PrivateServer, EndsByItselfWhenItsTimeIsOver) {
    ASSERT_TRUE(start({"--lifetime", "2"}).contains("Firebird is ready"));
    const QDeadlineTimer deadline(std::chrono::seconds(20));
    while (run("status").endsWith(" 0") && !deadline.hasExpired()) {
    }
    EXPECT_TRUE(run("status").endsWith(" 3"));
}

} // namespace
