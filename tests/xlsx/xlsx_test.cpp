// SPDX-License-Identifier: MIT

#include "base/win1251.h"
#include "xlsx/cell_text.h"
#include "xlsx/line_breaking.h"
#include "xlsx/sheet_writer.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <limits>

namespace {

using base::win1251::encode;

/// A file that is open for writing.
std::unique_ptr<QFile> newFile(const QString& name) {
    auto file = std::make_unique<QFile>(name);
    EXPECT_TRUE(file->open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered));
    return file;
}

QByteArray python(const QStringList& arguments) {
    QProcess process;
    process.start("/usr/bin/python3", arguments);
    EXPECT_TRUE(process.waitForFinished(300'000) && process.exitCode() == 0)
        << process.readAllStandardError().toStdString();
    return process.readAllStandardOutput();
}

std::string text(const QString& text) {
    return encode(text).toStdString();
}

std::string cellText(std::string_view win1251) {
    std::string xml;
    xlsx::appendText(xml, win1251);
    return xml;
}

TEST(CellText, EscapesWhatAReaderWouldTakeForAnEscape) {
    EXPECT_EQ(cellText(std::string_view("\0a\r\n\t\x1F", 6)), "_x0000_a_x000D_\n\t_x001F_");
    EXPECT_EQ(cellText("_x0041_ _x004_ _X0041_"), "_x005F_x0041_ _x004_ _X0041_");
    // The escaped character's own "_" would complete what stands before it.
    EXPECT_EQ(cellText("_x0041\x01"), "_x005F_x0041_x0001_");
    EXPECT_EQ(cellText("\x98\xC6<&>\""), "\xC2\x98Ж&lt;&amp;&gt;&quot;");
    const QString mixed = QStringLiteral("中😀_x0041_") + QChar(0xD83D) + QChar(1);
    EXPECT_EQ(xlsx::textOf(mixed).toStdString(), "中😀_x005F_x0041__xD83D__x0001_");
}

TEST(LineBreaking, BreaksAtBlanksAndHyphens) {
    // A cell of five digits.
    const xlsx::FontWidths widths = xlsx::fontWidths(xlsx::resource("regular_widths"));
    const auto lines = [&widths](const QString& shown) {
        return xlsx::linesOf(text(shown), 5 * widths['1'], widths);
    };
    EXPECT_EQ(lines(""), 1);
    EXPECT_EQ(lines("11111"), 1);
    EXPECT_EQ(lines("11111 22222"), 2);
    EXPECT_EQ(lines("111111"), 2);
    // A word that is too long for a line begins a new one.
    EXPECT_EQ(lines("1 222222"), 3);
    EXPECT_EQ(lines("нн-нннн"), 2);
    EXPECT_EQ(lines("1\n\n2\n"), 4);
    EXPECT_EQ(lines("1\r\n2\r3"), 3);
    // Where a spreadsheet keeps characters together.
    EXPECT_EQ(lines("1111 / 22"), 2);
    EXPECT_EQ(lines("111 ( 2"), 2);
    EXPECT_EQ(lines("-1111111"), 3);
    EXPECT_EQ(lines("1" + QString(30, ' ') + "1"), 3);
    EXPECT_EQ(lines(QString(14, u'\u00A0')), 2);
}

const std::vector<xlsx::Column>& columns() {
    static const std::vector<xlsx::Column> result{
        {"Имя & \"<_x0041_>\"", 100, Qt::AlignLeft, Qt::AlignLeft, std::nullopt},
        {"Сметная цена за единицу", 90, Qt::AlignRight, Qt::AlignRight, 2},
        {"Код", 60, Qt::AlignLeft, Qt::AlignLeft, 0}};
    return result;
}

TEST(SheetName, ComesClosestToTheNameGiven) {
    using xlsx::sheetName;
    EXPECT_EQ(sheetName("   ТЕР_Фирмы"), "   ТЕР_Фирмы");
    EXPECT_EQ(sheetName(QString(40, u'Щ')), QString(31, u'Щ'));
    EXPECT_EQ(sheetName(QString(30, u'a') + "😀"), QString(30, u'a'));
    EXPECT_EQ(sheetName("a[b]c:d*e?f/g\\h\x01\n"), "a_b_c_d_e_f_g_h__");
    EXPECT_EQ(sheetName(QString("a") + QChar(0xD800)), "a_");
    EXPECT_EQ(sheetName("'a'"), "_a_");
    EXPECT_EQ(sheetName("history"), "history_");
    EXPECT_EQ(sheetName("  "), "Лист1");
}

TEST(SheetWriter, KeepsWhatIsWritten) {
    const QTemporaryDir folder;
    const QString path = folder.filePath("book.xlsx");
    const QStringList texts{"00012",   "=1+1",       "  края  ",          "a\nb",
                            "_x0041_", "\x01<&>\"'", QString(1000, u'Щ'), "1E5"};
    {
        const auto file = newFile(path);
        xlsx::SheetWriter writer(
            *file, {"О'_x0041_ & К", "Название <&> _x0041_\x01", "ТЕР & К  " + QString(300, u'&'), u','},
            columns());
        for (const QString& each : texts) {
            writer.text(text(each));
            writer.number(-845);
            writer.blank();
            writer.endRow();
        }
        writer.text("");
        writer.number(std::numeric_limits<std::int64_t>::min());
        writer.number(1'234'567'890'123'456);
        writer.endRow();
        writer.finish(1);
    }
    EXPECT_EQ(python({TARVELO_SOURCE_DIR "/tour/workbook_format.py", path}).toStdString(), "");

    const QJsonObject book =
        QJsonDocument::fromJson(python({TARVELO_SOURCE_DIR "/tests/read_workbook.py", path})).object();
    const QJsonArray rows = book["rows"].toArray();
    const auto value = [&rows](qsizetype row, int column) { return rows[row][column]["value"]; };
    ASSERT_EQ(rows.size(), texts.size() + 3);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(value(0, i).toString(), columns()[static_cast<std::size_t>(i)].header);
    }
    for (qsizetype i = 0; i < texts.size(); ++i) {
        EXPECT_EQ(value(i + 1, 0).toString(), texts[i]);
        EXPECT_EQ(rows[i + 1][0]["format"].toString(), "@");
        EXPECT_EQ(value(i + 1, 1).toDouble(), -8.45);
        EXPECT_TRUE(rows[i + 1][2].isNull());
    }
    const qsizetype last = texts.size() + 1;
    EXPECT_TRUE(rows[last][0].isNull());
    EXPECT_EQ(value(last, 1).toString(), "-92233720368547758,08");
    EXPECT_EQ(value(last, 2).toString(), "1234567890123456");
    EXPECT_EQ(value(last + 1, 1).toInt(), last);
    EXPECT_EQ(book["title"].toString(), "Название <&> _x0041__");
    const QString header = book["printed"][0].toString();
    EXPECT_TRUE(header.startsWith("ТЕР && К") && header.count('&') % 2 == 0 && header.size() <= 253)
        << header.toStdString();
    EXPECT_EQ(book["printed"][1].toString(), "Стр. &P из &N");
    // The captions leave room for the buttons of the filter; 1000 letters need more than a row may have.
    EXPECT_EQ(QJsonDocument(book["heights"].toArray()).toJson(QJsonDocument::Compact),
              "[45,15,15,15,30,15,15,409.5,15,45,15]");
}

TEST(SheetWriter, RefusesWhatASheetCannotHold) {
    const QTemporaryDir folder;
    const auto file = newFile(folder.filePath("book.xlsx"));
    xlsx::SheetWriter writer(*file, {"Лист", {}, {}, u'.'}, columns());
    EXPECT_THROW(writer.text(std::string(xlsx::longestText + 1, 'a')), std::length_error);
    writer.text(std::string(xlsx::longestText, '\x01'));
    EXPECT_THROW(writer.endRow(), std::logic_error);
    writer.blank();
    writer.blank();
    EXPECT_THROW(writer.blank(), std::logic_error);
}

TEST(ZipArchive, HoldsPartsBeyondFourGigabytes) {
    const QTemporaryDir folder;
    const QString path = folder.filePath("large.zip");
    constexpr qint64 megabyte = 1 << 20;
    constexpr qint64 hole = 5'000 * megabyte; // takes no room on the disk
    constexpr qint64 megabytes = 4'097;
    {
        const auto file = newFile(path);
        ASSERT_TRUE(file->seek(hole));
        xlsx::ZipArchive archive(*file);
        archive.beginPart("small");
        archive.write("before");
        archive.beginPart("large");
        const QByteArray bytes(megabyte, '7');
        for (qint64 i = 0; i < megabytes; ++i) {
            archive.write(bytes);
        }
        archive.beginPart("last");
        archive.write("after");
        archive.finish();
    }
    // Unpacking the large part would take longer than all other tests; its own header must name its sizes.
    const char* const script = R"(
import struct, sys, zipfile
archive = zipfile.ZipFile(sys.argv[1])
large = archive.getinfo('large')
archive.fp.seek(large.header_offset + 30 + len(large.filename))
sizes = struct.unpack('<HHQQ', archive.fp.read(20))
print(archive.getinfo('small').header_offset, archive.read('small'), archive.read('last'), large.file_size,
      archive.open('large').read(9), sizes == (1, 16, large.file_size, large.compress_size), end=''))";
    EXPECT_EQ(python({"-c", script, path}).toStdString(), std::to_string(hole) + " b'before' b'after' " +
                                                              std::to_string(megabytes * megabyte) +
                                                              " b'777777777' True");
}

} // namespace
