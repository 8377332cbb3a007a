// SPDX-License-Identifier: MIT

#include "ui/application.h"

#include <QPointer>
#include <QTest>

#include <gtest/gtest.h>

namespace {

// A handler closes a window and asks for the events that came since, one of which opens the next window.
TEST(Application, FreesClosedWindowsBeforeAndAfterTheEventsOfAHandler) {
    QPointer<QObject> closed = new QObject;
    QPointer<QObject> closedMeanwhile = new QObject;
    bool wasFreed = false;
    bool isDone = false;
    const auto later = [&] {
        wasFreed = closed.isNull();
        closedMeanwhile->deleteLater();
    };
    const auto handler = [&] {
        closed->deleteLater();
        QMetaObject::invokeMethod(qApp, later, Qt::QueuedConnection);
        ui::Application::processMessages();
        EXPECT_TRUE(wasFreed);
        EXPECT_TRUE(closedMeanwhile.isNull());
        isDone = true;
    };
    QMetaObject::invokeMethod(qApp, handler, Qt::QueuedConnection);
    EXPECT_TRUE(QTest::qWaitFor([&] { return isDone; }));
}

} // namespace
