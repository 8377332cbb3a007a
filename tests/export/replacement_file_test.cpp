// SPDX-License-Identifier: MIT

#include "export/replacement_file.h"

#include "base/error.h"

#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <functional>

namespace {

using exporter::ReplacementFile;

/// What systems do each in a way of its own; all else is tested with the workbooks.
class ReplacementFileTest : public testing::Test {
protected:
    [[nodiscard]] QString path(const QString& name = "Сметы 2024.xlsx") const {
        return folder_.path() + '/' + name;
    }

    [[nodiscard]] QByteArray contents() const {
        QFile file(path());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("none");
    }

    /// What is said when a file cannot be replaced; `meanwhile` happens while it is written.
    [[nodiscard]] QString refusal(
        const QString& target, const std::function<void()>& meanwhile = [] {}) const {
        try {
            ReplacementFile file(target);
            file.device().write("new");
            meanwhile();
            file.commit();
        } catch (const base::Error& error) {
            return error.message();
        }
        return "replaced";
    }

    QTemporaryDir folder_;
};

TEST_F(ReplacementFileTest, IsWholeOrNotThere) {
    EXPECT_EQ(refusal(path()), "replaced");
    EXPECT_EQ(refusal(path()), "replaced");
    EXPECT_EQ(contents(), "new");
    {
        ReplacementFile dropped(path());
        dropped.device().write("half");
        EXPECT_TRUE(refusal(path()).contains("сейчас записывает другая программа"));
    }
    EXPECT_EQ(contents(), "new");
    EXPECT_EQ(QDir(folder_.path()).entryList(QDir::Files | QDir::Hidden), QStringList("Сметы 2024.xlsx"));

    const QString deep = path(QString("папка/").repeated(60));
    ASSERT_TRUE(QDir().mkpath(deep));
    EXPECT_EQ(refusal(deep + "/book.xlsx"), "replaced")
        << "a path longer than Windows takes of most programs";
}

TEST_F(ReplacementFileTest, NamesWhatStandsInItsWay) {
    ASSERT_EQ(refusal(path()), "replaced");
    EXPECT_TRUE(refusal(folder_.path()).contains("занято папкой"));
    EXPECT_NE(refusal(path("нет такой/book.xlsx")), "replaced");
#ifdef Q_OS_WIN
    for (const char* name : {"a:b.xlsx", "a?.xlsx", "\"a\".xlsx", "a*.xlsx", "<a>.xlsx", "a|b.xlsx"}) {
        EXPECT_TRUE(refusal(path(name)).contains("недопустимые")) << name;
    }
#endif
    EXPECT_TRUE(refusal(path(QString::fromLatin1("a\0b.xlsx", 8))).contains("недопустимые"));

    QFile::setPermissions(path(), QFile::ReadOwner);
    EXPECT_TRUE(refusal(path()).contains("защищён от записи"));
    QFile::setPermissions(path(), QFile::ReadOwner | QFile::WriteOwner);
    EXPECT_EQ(refusal(path()), "replaced");
}

TEST_F(ReplacementFileTest, TakesThePlaceOfAnOpenFileWhereTheSystemLetsIt) {
    ASSERT_EQ(refusal(path()), "replaced");
    QFile reader(path());
    const auto open = [&] { ASSERT_TRUE(reader.open(QIODevice::ReadOnly)); };
    const QString whileWritten = refusal(path(), open);
    const QString fromTheStart = refusal(path());
#ifdef Q_OS_WIN
    EXPECT_TRUE(whileWritten.contains("открыт в другой программе")) << whileWritten.toStdString();
    EXPECT_TRUE(fromTheStart.contains("открыт в другой программе")) << fromTheStart.toStdString();
#else
    EXPECT_EQ(whileWritten + ' ' + fromTheStart, "replaced replaced");
#endif
    EXPECT_EQ(reader.readAll(), "new");
    reader.close();
    EXPECT_EQ(refusal(path()), "replaced");
}

} // namespace
