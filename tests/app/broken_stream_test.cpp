// SPDX-License-Identifier: MIT

#include "app/action_manager.h"
#include "app/error_log.h"
#include "app/main_form.h"
#include "browser/ter_form.h"
#include "data/data_modul.h"
#include "support/faulty_line.h"
#include "support/firebird_server.h"
#include "support/printing.h"
#include "support/random.h"
#include "support/waiting.h"
#include "ui/application.h"

#include <QAction>
#include <QElapsedTimer>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QTest>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <iostream>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include <dlfcn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <unwind.h>

namespace {

using test::FaultyLine;
using test::LineFault;
using Kind = LineFault::Kind;

constexpr auto lineAddress = "127.0.0.14";
constexpr qint64 longestWait = 20'000; // ms, of a user whose line is broken, on a busy machine

/// The program at work over a line, as a user drives it. Error messages are read and closed.
class Session final {
public:
    Session() {
        DM = &module_;
        QFile::remove(app::ErrorLog::path());
        messageReader_.callOnTimeout([this] { readMessage(); });
        messageReader_.start(1);
    }
    ~Session() { QFile::remove(app::ErrorLog::path()); }

    void connectTo(const QString& server) {
        const test::NextDialog inputBox([&](QDialog& dialog) {
            dialog.findChild<QLineEdit*>()->setText(server);
            dialog.accept();
        });
        form_.N1->trigger();
        const QString outcome = form_.dxStatusBar1->findChild<QLabel*>("ConnectionPanel")->text();
        EXPECT_EQ(outcome, isConnected() ? "База FB подключена" : "База FB не подключена");
    }
    void connect() { connectTo(lineAddress); }
    void openEdition() { form_.findChild<QAction*>("Action1")->trigger(); }
    void rereadSelection() {
        if (TERForm) {
            QApplication::setActiveWindow(&form_); // an inactive window takes no shortcut
            QTest::keyClick(TERForm, Qt::Key_F5);
        }
    }
    /// Connects and opens an edition, whatever is open now.
    void goOn(const QString& server = lineAddress) {
        closeBrowser();
        connectTo(server);
        openEdition();
    }
    void reopen() { goOn(); }
    /// As if the program began anew.
    void closeAll() {
        closeBrowser();
        closeWindow();
    }
    void closeBrowser() {
        if (TERForm) {
            form_.findChild<QAction*>("Action9")->trigger();
            ui::Application::processMessages();
        }
    }
    void closeWindow() {
        form_.close();
        ui::application().setTerminating(false);
        form_.show();
    }

    [[nodiscard]] bool isConnected() const { return module_.pFIBDatabase1.isConnected(); }
    /// Rows in the ten datasets; -1 for a closed one.
    [[nodiscard]] std::vector<int> rowCounts() {
        std::vector<int> counts;
        std::ranges::transform(module_.dataSets(), std::back_inserter(counts), [](const db::DataSet* each) {
            return each->isOpen() ? each->rowCount() : -1;
        });
        return counts;
    }
    /// The messages since the last call; each must be logged, and have words.
    [[nodiscard]] qsizetype takeErrors() {
        QFile log(app::ErrorLog::path());
        const QStringList lines =
            log.open(QIODevice::ReadOnly)
                ? QString::fromLocal8Bit(log.readAll()).split("\r\n", Qt::SkipEmptyParts)
                : QStringList();
        EXPECT_EQ(lines.size(), messages_.size()) << lines.join('\n').toStdString();
        EXPECT_EQ(lines.filter(":DatabaseError:").size(), lines.size()) << lines.join('\n').toStdString();
        EXPECT_FALSE(messages_.contains(QString()));
        log.remove();
        return std::exchange(messages_, {}).size();
    }

private:
    void readMessage() {
        if (auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
            messages_ += box->text();
            box->accept();
        }
    }

    TDM module_;
    TMainForm form_;
    QStringList messages_;
    QTimer messageReader_;
};

/// A work of the user's during which the line fails.
struct Phase {
    const char* name = nullptr;
    void (Session::*prepare)() = nullptr;
    void (Session::*work)() = nullptr;
    qsizetype errors = 0;      ///< that are shown; a failure to connect is told by the status bar instead
    std::size_t firstByte = 0; ///< of the part of the answer in which it fails
    std::size_t bytes = std::string::npos;
};

/// What the server says of the queries that an edition begins with, before it sends any row.
constexpr std::size_t descriptions = 3000;

constexpr std::array phases{
    Phase{"connecting", &Session::closeAll, &Session::connect, 0},
    Phase{"preparing", &Session::closeBrowser, &Session::openEdition, 1, 0, descriptions},
    Phase{"fetching", &Session::closeBrowser, &Session::openEdition, 1, descriptions},
    Phase{"fetching again", &Session::reopen, &Session::rereadSelection, 1},
    Phase{"detaching", &Session::reopen, &Session::closeWindow, 0},
};

/// The first `dense` places of an answer, and one by chance in each of `parts` parts of the rest.
std::vector<std::size_t> placesIn(std::size_t size, std::size_t dense, std::size_t parts,
                                  std::mt19937& random) {
    std::vector<std::size_t> places;
    for (std::size_t place = 0; place < std::min(dense, size); ++place) {
        places.push_back(place);
    }
    for (std::size_t part = 0; size > dense && part < parts; ++part) {
        const std::size_t start = dense + (size - dense) * part / parts;
        const std::size_t end = dense + (size - dense) * (part + 1) / parts;
        places.push_back(start + random() % std::max<std::size_t>(1, end - start));
    }
    return places;
}

// How a child of this program ends.
constexpr int endedWell = 0;
constexpr int failedByUs = 1;
constexpr int failedByClient = 2;

/// Ends the child where a frame of the stack belongs to the client library.
_Unwind_Reason_Code endAtFrame(_Unwind_Context* context, void*) {
    Dl_info place{};
    // NOLINTNEXTLINE(performance-no-int-to-ptr): the unwinder tells places in the code as numbers
    ::dladdr(reinterpret_cast<void*>(::_Unwind_GetIP(context)), &place);
    const std::string_view file = place.dli_fname ? place.dli_fname : "";
    if (file.ends_with("libfbclient.so.2")) {
        ::_exit(failedByClient);
    }
    return _URC_NO_REASON;
}

/// Ends a child that has crashed or takes too long, and tells whether the client library was at work. No more
/// of the stack is looked at than needed: the client writes garbled lengths over it.
void endWithBlame(int) {
    ::_Unwind_Backtrace(endAtFrame, nullptr);
    ::_exit(failedByUs);
}

void blameForCrashes() {
    for (const int signal : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT, SIGALRM}) {
        std::signal(signal, endWithBlame);
    }
    constexpr unsigned longestWork = 30; // seconds
    ::alarm(longestWork);
#ifndef __SANITIZE_ADDRESS__
    constexpr rlimit limit{1U << 30, 1U << 30};
    ::setrlimit(RLIMIT_DATA, &limit);
#endif
}

/// The whole of a user's work over a line that garbles once, and the same again.
[[noreturn]] void workOverGarbledLine() {
    blameForCrashes();
    {
        Session session;
        session.goOn();
        session.rereadSelection();
        static_cast<void>(session.takeErrors());
        // What was garbled may show late: an answer that was taken for an error leaves its own unread.
        int attempts = 0;
        do {
            session.goOn();
        } while (session.takeErrors() > 0 && ++attempts < 3);
        const std::vector<int> rows = session.rowCounts();
        // The server may tell at the end of a transaction whose start came garbled.
        session.closeAll();
        session.goOn(test::sampleServer);
        EXPECT_EQ(rows, session.rowCounts());
        static_cast<void>(session.takeErrors());
    }
    std::cout << std::flush;
    ::_exit(testing::Test::HasFailure() ? failedByUs : endedWell);
}

/// The exit code of a child that works over a line; it begins before the client library is loaded, which
/// does not live on in a child.
int exitCodeOfGarbledWork() {
    std::cout << std::flush;
    const pid_t child = ::fork();
    if (child == 0) {
        workOverGarbledLine();
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : failedByUs;
}

TEST(GarbledStream, EndsInRowsOrInAnError) {
    FaultyLine line(lineAddress, test::sampleServer);
    const std::uint32_t seed = test::seeds().front();
    std::mt19937 random(seed);
    // The client library is not hardened: some garbled descriptions of a query make it crash, ask for ever or
    // take all memory. So each case has a process of its own, in which nothing else may fail.
    int cases = 0;
    int failuresOfClient = 0;
    QStringList faulty; // a failure that was told here would count in all later children
    struct Range {
        std::size_t start;
        std::size_t size;
        std::size_t cases;
        std::size_t garbled; ///< bytes in each case
    };
    // The login, the handle of the transaction, the status of an answer, descriptions of queries, rows.
    for (const Range& range : {Range{0, 476, 4, 1},
                               {476, 24, 12, 1},
                               {524, 8, 4, 40},
                               {540, descriptions, 6, 1},
                               {540 + descriptions, 1'900'000, 6, 40}}) {
        for (const std::size_t place : placesIn(range.size, 0, range.cases, random)) {
            const LineFault fault{Kind::Garble, range.start + place, range.garbled,
                                  static_cast<std::uint32_t>(random())};
            line.arm(fault);
            const int code = exitCodeOfGarbledWork();
            // Only the descriptions make it fail; elsewhere the program itself would have to be at fault.
            const bool mayFail = range.size == descriptions;
            if (!line.hasStruck() || code == failedByUs || (code == failedByClient && !mayFail)) {
                faulty << QStringLiteral("%1 bytes from %2, seed %3: %4")
                              .arg(fault.length)
                              .arg(fault.place)
                              .arg(fault.seed)
                              .arg(line.hasStruck() ? QString::number(code) : "not struck");
            }
            failuresOfClient += code == failedByClient ? 1 : 0;
            ++cases;
        }
    }
    std::cout << cases << " garbled answers, seed " << seed << "; the client library failed at "
              << failuresOfClient << '\n';
    EXPECT_EQ(faulty, QStringList());
}

TEST(BrokenStream, EndsInAnErrorAndTheNextInRows) {
    FaultyLine line(lineAddress, test::sampleServer);
    const std::uint32_t seed = test::seeds().front();
    std::mt19937 random(seed);
    Session session;
    session.goOn();
    const std::vector<int> expected = session.rowCounts();
    for (const Phase& phase : phases) {
        const auto workOverLine = [&](const LineFault& fault) {
            (session.*phase.prepare)();
            line.arm(fault);
            (session.*phase.work)();
        };
        workOverLine({});
        const std::size_t answered = line.answeredBytes();
        ASSERT_GT(answered, phase.firstByte);
        const std::size_t size = std::min(answered - phase.firstByte, phase.bytes);
        session.goOn();
        EXPECT_EQ(session.takeErrors(), 0);
        int cases = 0;
        for (const std::size_t place : placesIn(size, 3, 8, random)) {
            const Kind kind =
                std::array{Kind::End, Kind::Reset, Kind::Delay}[static_cast<std::size_t>(cases % 3)];
            SCOPED_TRACE(testing::Message() << phase.name << ", fault " << static_cast<int>(kind) << " at "
                                            << phase.firstByte + place << " of " << answered);
            QElapsedTimer time;
            time.start();
            workOverLine({kind, phase.firstByte + place});
            EXPECT_LT(time.elapsed(), longestWait);
            EXPECT_TRUE(line.hasStruck());
            const bool isBroken = kind != Kind::Delay;
            EXPECT_EQ(session.takeErrors(), isBroken ? phase.errors : 0);
            if (isBroken) {
                EXPECT_FALSE(session.isConnected());
            }
            session.goOn();
            EXPECT_EQ(session.rowCounts(), expected);
            EXPECT_EQ(session.takeErrors(), 0);
            ++cases;
        }
        std::cout << phase.name << ": " << cases << " faults in " << size << " bytes, seed " << seed << '\n';
    }
}

} // namespace
