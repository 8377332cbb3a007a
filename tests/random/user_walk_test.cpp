// SPDX-License-Identifier: MIT

#include "app/error_log.h"
#include "random/user.h"

#include <QFile>

#include <gtest/gtest.h>

#include <iostream>

namespace {

constexpr int actionCount = 1000;
constexpr int longestWalk = 600; // seconds

class UserWalk : public testing::TestWithParam<std::uint32_t> {};

TEST_P(UserWalk, LeavesEverythingInOrder) {
    test::User user(GetParam(), GetParam() % 2 == 0 ? "sample" : test::limitsCatalog,
                    test::User::Server::Dying, longestWalk);
    for (int action = 0; action < actionCount && !HasFailure(); ++action) {
        user.act();
    }
    if (HasFailure()) {
        std::cout << user.lastActions().toStdString() << std::endl;
    }
    QFile log(app::ErrorLog::path());
    const QByteArray lines = log.open(QIODevice::ReadOnly) ? log.readAll() : QByteArray();
    EXPECT_EQ(lines.count('\n'), user.errors());
    EXPECT_EQ(lines.count(":DatabaseError:") + lines.count(":ExportError:"), user.errors())
        << lines.toStdString();
}

INSTANTIATE_TEST_SUITE_P(Seeds, UserWalk, testing::ValuesIn(test::seeds()));

} // namespace
