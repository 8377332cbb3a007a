// SPDX-License-Identifier: MIT

#include "support/firebird_server.h"

#include "data/data_modul.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QThread>

#include <chrono>
#include <csignal>
#include <stdexcept>

namespace test {

namespace {

QByteArray run(const QString& program, const QStringList& arguments, const QByteArray& input = {}) {
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, arguments);
    process.write(input);
    process.closeWriteChannel();
    const bool ended = process.waitForFinished(60'000);
    QByteArray output = process.readAll();
    if (!ended || process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0) {
        throw std::runtime_error(program.toStdString() + " failed: " + output.toStdString());
    }
    return output;
}

int pidOf(const QString& root) {
    QFile file(root + QStringLiteral("/server.pid"));
    const int pid = file.open(QIODevice::ReadOnly) ? file.readAll().trimmed().toInt() : 0;
    if (pid <= 1) {
        throw std::runtime_error("server.pid names no process");
    }
    return pid;
}

QString serverScript() {
    return QStringLiteral(TARVELO_SOURCE_DIR "/database/private-server");
}

} // namespace

FirebirdServer::FirebirdServer(const QString& address, const QString& catalog, int lifetime)
    : address_(address),
      catalog_(catalog),
      lifetime_(lifetime),
      root_(QStringLiteral(TARVELO_SERVER_DIR "/own-") + address) {
    QDir(root_).removeRecursively();
    start();
}

FirebirdServer::~FirebirdServer() {
    QProcess::execute(serverScript(), {QStringLiteral("stop"), QStringLiteral("--root"), root_});
}

void FirebirdServer::start() const {
    run(serverScript(),
        {QStringLiteral("start"), QStringLiteral("--root"), root_, QStringLiteral("--address"), address_,
         QStringLiteral("--lifetime"), QString::number(lifetime_), QStringLiteral("--catalog"), catalog_});
}

void FirebirdServer::pause() const {
    ::kill(pidOf(root_), SIGSTOP);
}

void FirebirdServer::resume() const {
    ::kill(pidOf(root_), SIGCONT);
}

void killServer(const QString& root) {
    const int pid = pidOf(root);
    ::kill(pid, SIGKILL);
    // Until it is waited for it keeps its number, as a zombie: only then are its ports free.
    const auto hasEnded = [pid] {
        QFile status(QStringLiteral("/proc/%1/stat").arg(pid));
        return !status.open(QIODevice::ReadOnly) || status.readAll().contains(") Z ");
    };
    const QDeadlineTimer deadline(std::chrono::seconds(10));
    while (!hasEnded()) {
        if (deadline.hasExpired()) {
            throw std::runtime_error("the server outlives SIGKILL");
        }
        QThread::msleep(1);
    }
}

QString runSql(const QString& address, const QString& sql) {
    return QString::fromUtf8(
        run(QStringLiteral("isql-fb"),
            {QStringLiteral("-quiet"), QStringLiteral("-bail"), QStringLiteral("-ch"), QStringLiteral("UTF8"),
             QStringLiteral("-user"), QString::fromLatin1(TDM::userName), QStringLiteral("-password"),
             QString::fromLatin1(TDM::password), TDM::databaseNameOn(address)},
            sql.toUtf8()));
}

QString sqlValue(const QString& address, const QString& query) {
    return runSql(address, QStringLiteral("set heading off;\n%1;\n").arg(query)).trimmed();
}

} // namespace test
