// SPDX-License-Identifier: MIT

#include "support/printing.h"

#include <QProcess>

#include <gtest/gtest.h>

namespace {

/// What the program does with an option on a machine without a display.
struct Answer {
    int status;
    QString output;
    QString errors;
};

Answer ask(const QString& option, const QString& outputFile = {}) {
    QProcess program;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
        environment.remove(name);
    }
    program.setProcessEnvironment(environment);
    if (!outputFile.isEmpty()) {
        program.setStandardOutputFile(outputFile);
    }
    program.start(TARVELO_PROGRAM, {option});
    EXPECT_TRUE(program.waitForFinished());
    EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
    return {program.exitCode(), QString::fromUtf8(program.readAllStandardOutput()),
            QString::fromUtf8(program.readAllStandardError())};
}

TEST(CommandLineTest, AnswersWithoutADisplay) {
    const Answer version = ask("--version");
    EXPECT_EQ(version.output, "Tarvelo " TARVELO_VERSION "\n");
    EXPECT_EQ(version.errors, "");
    EXPECT_EQ(version.status, 0);

    const Answer help = ask("--help");
    EXPECT_TRUE(help.output.contains("--help") && help.output.contains("--version"));
    EXPECT_EQ(help.errors, "");
    EXPECT_EQ(help.status, 0);
    EXPECT_EQ(ask("-h").output, help.output);
}

TEST(CommandLineTest, TellsOfAnAnswerThatCannotBeWritten) {
    EXPECT_NE(ask("--version", "/dev/full").status, 0);
}

} // namespace
