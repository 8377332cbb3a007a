// SPDX-License-Identifier: MIT

#include "random/user.h"
#include "soak/heap.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include <algorithm>
#include <iostream>
#include <vector>

namespace {

/// What a program that is open for weeks must not pile up.
struct Sample {
    int changes = 0;
    double heapMegabytes = 0;
    double residentMegabytes = 0;
    int openFiles = 0;
    int statements = 0;
    int transactions = 0;
};

constexpr int longestSoak = 4 * 3600; // seconds
constexpr double megabyte = 1024.0 * 1024.0;

double residentMegabytes() {
    QFile status("/proc/self/statm");
    if (!status.open(QIODevice::ReadOnly)) {
        throw std::runtime_error("no /proc/self/statm");
    }
    constexpr double pageBytes = 4096;
    return status.readAll().split(' ').at(1).toDouble() * pageBytes / megabyte;
}

int serverCount(const test::User& user, const char* table) {
    return test::sqlValue(
               user.address(),
               QStringLiteral("select count(*) from %1 T join MON$ATTACHMENTS A on A.MON$ATTACHMENT_ID "
                              "= T.MON$ATTACHMENT_ID where A.MON$SYSTEM_FLAG = 0 and "
                              "A.MON$ATTACHMENT_ID <> current_connection")
                   .arg(table))
        .toInt();
}

Sample sampleOf(const test::User& user) {
    return {user.changes(),
            static_cast<double>(soak::allocatedBytes()) / megabyte,
            residentMegabytes(),
            static_cast<int>(QDir("/proc/self/fd").entryList(QDir::Files | QDir::System).size()),
            serverCount(user, "MON$STATEMENTS"),
            serverCount(user, "MON$TRANSACTIONS")};
}

/// The middle one of a figure over a part of the samples.
double median(const std::vector<Sample>& samples, double from, double to, auto figure) {
    const auto at = [&](double part) {
        return samples.begin() + static_cast<std::ptrdiff_t>(part * static_cast<double>(samples.size()));
    };
    std::vector<double> values;
    std::transform(at(from), at(to), std::back_inserter(values),
                   [&](const Sample& each) { return static_cast<double>(each.*figure); });
    std::ranges::sort(values);
    return values.at(values.size() / 2);
}

} // namespace

// scripts/soak sets how many changes are made, and asks for a table of the samples.
TEST(Soak, PilesNothingUp) {
    const int changes = std::max(qEnvironmentVariableIntValue("TARVELO_SOAK_CHANGES"), 400);
    const int samplePeriod = std::max(changes / 100, 20);
    test::User user(1, "sample", test::User::Server::Reliable, longestSoak);
    std::vector<Sample> samples;
    while (user.changes() < changes && !HasFailure()) {
        user.act();
        if (user.changes() >= static_cast<int>(samples.size() + 1) * samplePeriod) {
            user.startOver();
            samples.push_back(sampleOf(user));
        }
    }
    if (HasFailure()) {
        std::cout << user.lastActions().toStdString() << std::endl;
        return;
    }

    QFile table(qEnvironmentVariable("TARVELO_SOAK_TABLE"));
    if (!table.fileName().isEmpty()) {
        ASSERT_TRUE(table.open(QIODevice::WriteOnly | QIODevice::Text)) << table.errorString().toStdString();
        QTextStream lines(&table);
        lines << "changes,heap,resident,files,statements,transactions\n";
        for (const Sample& each : samples) {
            lines << each.changes << ',' << each.heapMegabytes << ',' << each.residentMegabytes << ','
                  << each.openFiles << ',' << each.statements << ',' << each.transactions << '\n';
        }
    }

    // What is loaded and cached on the way is so in the first third.
    const auto growth = [&](auto figure) {
        return median(samples, 0.67, 1, figure) - median(samples, 0.33, 0.67, figure);
    };
    EXPECT_LT(growth(&Sample::heapMegabytes), 0.25);
#ifndef __SANITIZE_ADDRESS__ // what is freed stays in its quarantine
    EXPECT_LT(growth(&Sample::residentMegabytes), 2);
#endif
    EXPECT_LE(growth(&Sample::openFiles), 0);
    for (const Sample& each : samples) {
        EXPECT_EQ(each.statements, samples.front().statements);
        EXPECT_EQ(each.transactions, samples.front().transactions);
    }
}
