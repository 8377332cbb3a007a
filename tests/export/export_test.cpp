// SPDX-License-Identifier: MIT

#include "base/file_name.h"
#include "base/program_place.h"
#include "browser/grid_export.h"
#include "data/data_modul.h"
#include "data/selection.h"
#include "export/table_export.h"
#include "grid/rows/column.h"
#include "grid/rows/table_model.h"
#include "grid/table/grid.h"
#include "grid/table/table_header.h"
#include "grid/table/table_view.h"
#include "support/firebird_server.h"
#include "support/workbook.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>
#include <QSysInfo>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

#include <clocale>
#include <csignal>

#include <sys/resource.h>

namespace {

using exporter::ExportError;
using test::cell;
using test::expectShown;
using test::readWorkbook;

constexpr db::FieldSpec rangeFields[]{db::integer(u"NUMBER", u"Число"), db::text(u"NAME", 1000, u"Имя")};
constexpr grid::ColumnSpec rangeColumns[]{{u"numberColumn", u"NUMBER"}, {u"nameColumn", u"NAME", true, 300}};
constexpr grid::GridSpec rangeGrid{u"grid", u"level", u"view", rangeColumns, u"NAME"};

constexpr grid::ColumnSpec materialColumns[]{
    {u"idColumn", u"ID", false},           {u"kodColumn", u"KOD", true, 100},
    {u"nomerColumn", u"NOMER", true, 100}, {u"nameColumn", u"NAME", true, 300},
    {u"missingColumn", u"NO_SUCH_FIELD"},  {u"priceColumn", u"BAZOVAY", true, 100, Qt::AlignRight}};
constexpr grid::GridSpec materialGrid{u"grid", u"level", u"view", materialColumns, u"KOD"};

constexpr grid::ColumnSpec coefficientColumns[]{{u"nameColumn", u"NAME"}, {u"koeffColumn", u"KOEFF"}};
constexpr grid::GridSpec coefficientGrid{u"grid", u"level", u"view", coefficientColumns, u"NAME"};

void exportTo(const QString& path, grid::Grid* grid, const QString& pageHeader = {}) {
    const QString folder = base::folderOf(path);
    browser::exportGrid(grid, folder, path.sliced(folder.size()), pageHeader);
}

class Export : public testing::Test {
protected:
    void SetUp() override {
        module_.connectTo(test::limitsServer);
        ASSERT_TRUE(folder_.isValid());
    }

    [[nodiscard]] QString path(const QString& name = "book.xlsx") const { return folder_.filePath(name); }

    /// What lies in the folder, hidden files too.
    [[nodiscard]] QStringList files() const {
        return QDir(folder_.path())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
    }

    /// Shows `rows` rows with a number and a name.
    void openRange(int rows) {
        range_.setSql({QStringLiteral("select cast(row_number() over () as integer) as NUMBER,"
                                      " 'Имя ' || row_number() over () as NAME from"
                                      " (select 1 as ONE from RDB$TYPES A, RDB$TYPES B, RDB$TYPES C rows %1)")
                           .arg(rows)});
        range_.open();
    }

    /// What is said when the range cannot be exported.
    QString refusal(const QString& name) {
        try {
            exportTo(name, &grid_);
        } catch (const ExportError& error) {
            return error.message();
        }
        return "exported";
    }

    TDM module_;
    db::DataSet range_{"range", rangeFields, {}, module_.pFIBDatabase1, module_.RFIBTransaction, nullptr};
    db::DataSource source_{"source", range_, nullptr};
    grid::Grid grid_{rangeGrid, source_, nullptr};
    QTemporaryDir folder_;
};

TEST_F(Export, WritesTheViewAsItIsShown) {
    data::bindSelection(module_.pFIBDataSet3, "202403", 1);
    module_.pFIBDataSet3.open();
    grid::Grid materials(materialGrid, module_.DataSource3, nullptr);
    materials.resize(1000, 600);
    materials.show();
    exportTo(path(), &materials, "ТЕР");
    QJsonObject book = readWorkbook(path());
    expectShown(book, materials.view());
    EXPECT_EQ(book["sheets"].toArray(), QJsonArray{"book"});
    EXPECT_EQ(book["frozen"].toString(), "A2");
    EXPECT_EQ(book["filter"].toString(), QStringLiteral("A1:E%1").arg(module_.pFIBDataSet3.rowCount() + 1));
    EXPECT_EQ(book["titleRows"].toString(), "$1:$1");
    EXPECT_EQ(QJsonDocument(book["page"].toArray()).toJson(QJsonDocument::Compact),
              R"(["landscape",null,0,true,9])");
    EXPECT_EQ(book["creator"].toString(), "Tarvelo");
    EXPECT_EQ(book["title"].toString(), "book");
    EXPECT_EQ(book["printed"][0].toString(), "ТЕР");
    EXPECT_TRUE(cell(book, 0, 0)["bold"].toBool());
    EXPECT_EQ(cell(book, 0, 4)["align"].toString(), "right");
    EXPECT_NEAR(book["widths"][2].toDouble() / book["widths"][0].toDouble(), 3.0, 0.2);

    grid::TableModel& model = materials.view().tableModel();
    model.sortBy({{5, true}, {3}});
    model.setFilter(2, {.containedText = "e", .values = {}});
    materials.view().header().moveSection(3, 1);
    exportTo(path(), &materials);
    expectShown(readWorkbook(path()), materials.view());
    EXPECT_LT(model.rowCount(), module_.pFIBDataSet3.rowCount());

    module_.pFIBDataSet3.close();
    exportTo(path(), &materials);
    expectShown(readWorkbook(path()), materials.view());
    exportTo(path("none.xlsx"), nullptr);
    EXPECT_EQ(files(), QStringList("book.xlsx"));
}

TEST_F(Export, WritesNumbersWithAPointInEveryLocale) {
    QTemporaryDir locales;
    const QString name = locales.filePath("ru_RU.UTF-8");
    ASSERT_EQ(QProcess::execute("localedef", {"-i", "ru_RU", "-f", "UTF-8", name}), 0);
    const auto restore = qScopeGuard([] {
        std::setlocale(LC_ALL, "C.UTF-8");
        qunsetenv("LOCPATH");
    });
    qputenv("LOCPATH", QFile::encodeName(locales.path()));
    ASSERT_TRUE(std::setlocale(LC_ALL, "ru_RU.UTF-8"));
    module_.pFIBDataSet8.open();
    grid::Grid coefficients(coefficientGrid, module_.DataSource8, nullptr);
    exportTo(path(), &coefficients);
    EXPECT_STREQ(std::setlocale(LC_NUMERIC, nullptr), "ru_RU.UTF-8");
    expectShown(readWorkbook(path()), coefficients.view());
}

QByteArray contents(const QString& path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.readAll();
}

TEST_F(Export, NamesTheReasonWhenTheFileIsImpossible) {
    openRange(3);
    grid::TableModel& model = grid_.view().tableModel();
    model.setFilter(1, {.containedText = "Имя", .values = {}});
    model.sortBy({{0, true}});
    range_.moveTo(model.dataSetRow(1));
    QDir(folder_.path()).mkdir("taken.xlsx");
    const QStringList before = files();
    // Nobody, not even root, creates files in the second one.
    for (const QString& name :
         {path("taken"), QStringLiteral("/proc/book"), path("no/folder"), path(QString(252, u'a')),
          path("a" + QString(QChar::Null)), path("a" + QString(QChar(0xD800)))}) {
        const QString reason = refusal(name);
        EXPECT_TRUE(reason.contains(base::withExtension(name, ".xlsx"))) << reason.toStdString();
        EXPECT_FALSE(reason.endsWith(": ") || reason.endsWith("Unknown error")) << reason.toStdString();
        EXPECT_EQ(files(), before);
        EXPECT_EQ(model.text(0, 0) + model.text(1, 0) + model.text(2, 0), "321");
        EXPECT_EQ(model.filters().size(), 1U);
        EXPECT_EQ(grid_.view().currentRow(), 1);
        EXPECT_TRUE(grid_.isEnabled() && grid_.updatesEnabled() && !grid_.isExporting());
    }
    // The longest names that a folder takes have room for no addition.
    exportTo(path(QString(250, u'a')), &grid_);
    EXPECT_EQ(files().size(), 2);
    const QString cyrillic = path("中ѣ 😀\\:*?\"<>|");
    exportTo(cyrillic, &grid_);
    EXPECT_EQ(readWorkbook(cyrillic + ".xlsx")["rows"].toArray().size(), 5);
}

TEST_F(Export, FollowsLinks) {
    openRange(3);
    ASSERT_TRUE(QDir(folder_.path()).mkdir("other"));
    ASSERT_TRUE(QFile::link("second.xlsx", path()));
    ASSERT_TRUE(QFile::link("other/real.xlsx", path("second.xlsx")));
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(refusal(path()), "exported");
        EXPECT_EQ(readWorkbook(path("other/real.xlsx"))["rows"].toArray().size(), 5);
        EXPECT_EQ(files(), QStringList({"book.xlsx", "other", "second.xlsx"}));
        EXPECT_TRUE(QFileInfo(path()).isSymLink() && QFileInfo(path("second.xlsx")).isSymLink());
    }
    ASSERT_TRUE(QFile::link("circle.xlsx", path("circle.xlsx")));
    EXPECT_NE(refusal(path("circle.xlsx")), "exported");
}

TEST_F(Export, RefusesAWorkbookThatIsOpenElsewhere) {
    openRange(3);
    ASSERT_EQ(refusal(path()), "exported");
    const QByteArray earlier = contents(path());

    QFile lock(path(".~lock.book.xlsx#"));
    const auto lockFrom = [&lock](const QString& host) {
        ASSERT_TRUE(lock.open(QIODevice::WriteOnly));
        lock.write(QStringLiteral(",user,%1,23.11.2026 10:00,file:///home/user/profile;").arg(host).toUtf8());
        lock.close();
    };
    lockFrom("another-host");
    EXPECT_TRUE(refusal(path()).contains(".~lock.book.xlsx#"));
    // Stands in for the office program, which processes are told by.
    lockFrom(QSysInfo::machineHostName());
    QFile::copy("/bin/sleep", path("soffice.bin"));
    QProcess office;
    office.start(path("soffice.bin"), {"60"});
    ASSERT_TRUE(office.waitForStarted());
    EXPECT_TRUE(refusal(path()).contains("файл открыт в другой программе"));
    EXPECT_EQ(contents(path()), earlier);
    office.kill();
    office.waitForFinished();
    EXPECT_EQ(refusal(path()), "exported");
}

/// Makes every file of the process end at `bytes`, as a full disk would.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes) : signal_(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &saved_);
        const rlimit limit{bytes, saved_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit() {
        setrlimit(RLIMIT_FSIZE, &saved_);
        static_cast<void>(std::signal(SIGXFSZ, signal_));
    }
    Q_DISABLE_COPY_MOVE(FileSizeLimit)

private:
    rlimit saved_{};
    void (*signal_)(int);
};

bool exportsUnderLimit(const QString& path, grid::Grid& grid, rlim_t bytes) {
    const FileSizeLimit limit(bytes);
    try {
        exportTo(path, &grid);
        return true;
    } catch (const ExportError&) {
        return false;
    }
}

qsizetype openFiles() {
    return QDir("/proc/self/fd").entryList(QDir::AllEntries | QDir::System).size();
}

TEST_F(Export, NoticesAFullDiskWhereverItStrikes) {
    openRange(60);
    exportTo(path(), &grid_);
    const QJsonArray whole = readWorkbook(path())["rows"].toArray();
    const QByteArray earlier = contents(path());
    const qsizetype open = openFiles();

    int failures = 0;
    rlim_t limit = 0;
    for (; !exportsUnderLimit(path(), grid_, limit); limit += 30, ++failures) {
        ASSERT_EQ(contents(path()), earlier) << limit;
        ASSERT_EQ(files(), QStringList("book.xlsx")) << limit;
        ASSERT_LT(limit, 1'000'000);
    }
    EXPECT_GT(failures, 100);
    EXPECT_EQ(readWorkbook(path())["rows"].toArray(), whole) << limit;
    EXPECT_EQ(openFiles(), open);
}

TEST_F(Export, RefusesMoreRowsThanASheetHolds) {
    openRange(1'048'575);
    EXPECT_THROW(exportTo(path(), &grid_), ExportError);
    EXPECT_EQ(files(), QStringList());
}

/// Runs in a process of its own, which is killed.
TEST_F(Export, DISABLED_WritesMuch) {
    openRange(400'000);
    exportTo(qEnvironmentVariable("TARVELO_EXPORT"), &grid_);
}

TEST_F(Export, LeavesNothingBehindAfterAKilledOne) {
    openRange(3);
    exportTo(path(), &grid_);
    const QByteArray earlier = contents(path());

    QProcess other;
    other.setProgram(base::programPath());
    other.setArguments({"--gtest_also_run_disabled_tests", "--gtest_filter=*.DISABLED_WritesMuch"});
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("TARVELO_EXPORT", path());
    other.setProcessEnvironment(environment);
    other.start();
    const auto written = [this] {
        const QFileInfoList found = QDir(folder_.path()).entryInfoList({"*.tmp"}, QDir::Files | QDir::Hidden);
        return !found.isEmpty() && found.first().size() > 100'000;
    };
    ASSERT_TRUE(QTest::qWaitFor(written, 60'000));
    // Two programs never write the same file at once.
    EXPECT_THROW(exportTo(path(), &grid_), ExportError);
    other.kill();
    ASSERT_TRUE(other.waitForFinished());
    EXPECT_GT(files().size(), 1);
    EXPECT_EQ(contents(path()), earlier);

    exportTo(path(), &grid_);
    EXPECT_EQ(files(), QStringList("book.xlsx"));
    EXPECT_EQ(readWorkbook(path())["rows"].toArray().size(), 5);
}

} // namespace
