// SPDX-License-Identifier: MIT

#include "bench/rows.h"
#include "ui/application.h"

#include <QCommandLineParser>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

#include <algorithm>
#include <array>
#include <cstdio>
#include <stdexcept>
#include <vector>

#include <csignal>
#include <sys/prctl.h>

namespace {

using bench::LimitOf;
using bench::Result;

struct Row {
    const char* name;
    bench::Measurement measure;
};

constexpr std::array rows{
    Row{"open", bench::measureOpen},
    Row{"first-rows", bench::measureFirstRows},
    Row{"memory", bench::measureMemory},
    Row{"region", bench::measureRegion},
    Row{"wheel", bench::measureWheel},
    Row{"sort-name", bench::measureSortByName},
    Row{"sort-number", bench::measureSortByNumber},
    Row{"filter", bench::measureFilter},
    Row{"filter-number", bench::measureFilterByNumber},
    Row{"filter-list", bench::measureFilterList},
    Row{"find", bench::measureFind},
    Row{"selection-sum", bench::measureSelectionSum},
    Row{"tree", bench::measureTree},
    Row{"tree-find", bench::measureTreeFind},
    Row{"export", bench::measureExport},
    Row{"export-memory", bench::measureExportMemory},
    Row{"growth", bench::measureGrowth},
    Row{"isql", bench::measureIsql},
    Row{"start", bench::measureStart},
};

const Row& rowNamed(const QString& name) {
    const auto* const found =
        std::ranges::find(rows, name, [](const Row& row) { return QLatin1StringView(row.name); });
    if (found == rows.end()) {
        throw std::runtime_error("there is no row '" + name.toStdString() + "'; --list shows them");
    }
    return *found;
}

QString limitText(const Result& result) {
    switch (result.limitOf) {
    case LimitOf::Ratio:
        return QStringLiteral("%1 x bare").arg(result.limit, 0, 'f', 2);
    case LimitOf::Value:
        return QStringLiteral("%1 %2").arg(result.limit).arg(result.unit);
    case LimitOf::Difference:
        break;
    }
    return QStringLiteral("bare + %1 %2").arg(result.limit).arg(result.unit);
}

QJsonObject toJson(const Result& result) {
    constexpr std::array limitNames{"ratio", "value", "difference"};
    return {{QStringLiteral("name"), result.name},
            {QStringLiteral("work"), result.work},
            {QStringLiteral("ours"), result.ours},
            {QStringLiteral("bare"), result.bare},
            {QStringLiteral("ratio"), result.ratio()},
            {QStringLiteral("limit"), result.limit},
            {QStringLiteral("limitOf"),
             QString::fromLatin1(limitNames[static_cast<std::size_t>(result.limitOf)])},
            {QStringLiteral("limitText"), limitText(result)},
            {QStringLiteral("met"), result.isMet()},
            {QStringLiteral("unit"), result.unit}};
}

/// One row measured in this process; its results go to standard output.
void measureHere(const Row& row, const bench::Surroundings& surroundings) {
    QJsonArray results;
    for (const Result& result : row.measure(surroundings)) {
        results.append(toJson(result));
    }
    std::fputs(QJsonDocument(results).toJson(QJsonDocument::Compact).constData(), stdout);
}

/// One row measured in a process of its own, whose heap and caches no other row has seen.
QJsonArray measureApart(const Row& row, const QStringList& options) {
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGTERM); });
    process.start(QCoreApplication::applicationFilePath(),
                  options + QStringList{QStringLiteral("--here"), QString::fromLatin1(row.name)});
    process.waitForFinished(-1);
    if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0) {
        throw std::runtime_error(std::string("the row '") + row.name + "' could not be measured");
    }
    return QJsonDocument::fromJson(process.readAllStandardOutput()).array();
}

void printLine(const QStringList& cells) {
    constexpr std::array<int, 7> widths{-14, -50, 12, 12, 7, -16, 0};
    QString line;
    for (std::size_t index = 0; index < widths.size(); ++index) {
        const QString& cell = cells[static_cast<qsizetype>(index)];
        line += widths[index] < 0 ? cell.leftJustified(-widths[index]) : cell.rightJustified(widths[index]);
        line += QStringLiteral("  ");
    }
    std::puts(line.trimmed().toUtf8().constData());
    std::fflush(stdout);
}

void printResult(const QJsonObject& result) {
    const QString unit = QLatin1Char(' ') + result[QStringLiteral("unit")].toString();
    const auto number = [&](const char* key) {
        const double value = result[QLatin1StringView(key)].toDouble();
        return QString::number(value, 'f', value < 100 ? 2 : 0);
    };
    printLine({result[QStringLiteral("name")].toString(), result[QStringLiteral("work")].toString(),
               number("ours") + unit, number("bare") + unit, number("ratio"),
               result[QStringLiteral("limitText")].toString(),
               result[QStringLiteral("met")].toBool() ? QStringLiteral("met") : QStringLiteral("MISSED")});
}

/// Measures the rows one after the other; tells whether every limit is met.
bool measureAll(const std::vector<Row>& chosen, const QStringList& options, const QString& jsonName) {
    printLine({QStringLiteral("name"),
               QStringLiteral("work"),
               QStringLiteral("ours"),
               QStringLiteral("bare"),
               QStringLiteral("ratio"),
               QStringLiteral("limit"),
               {}});
    QJsonArray all;
    bool allMet = true;
    for (const Row& row : chosen) {
        const QJsonArray results = measureApart(row, options);
        for (const auto& result : results) {
            printResult(result.toObject());
            allMet = allMet && result[QStringLiteral("met")].toBool();
            all.append(result);
        }
    }
    QFile file(jsonName);
    if (!file.open(QIODevice::WriteOnly) || file.write(QJsonDocument(all).toJson()) < 0 || !file.flush()) {
        throw std::runtime_error("cannot write " + jsonName.toStdString());
    }
    return allMet;
}

int run(const QCoreApplication& application) {
    QCommandLineParser parser;
    const QCommandLineOption list(QStringLiteral("list"), QStringLiteral("List the rows."));
    const QCommandLineOption here(QStringLiteral("here"), QStringLiteral("Measure one row in this process."));
    const QCommandLineOption server(QStringLiteral("server"),
                                    QStringLiteral("Server of the measuring catalog."),
                                    QStringLiteral("address"));
    const QCommandLineOption folder(QStringLiteral("folder"),
                                    QStringLiteral("Folder for files of a measurement."),
                                    QStringLiteral("path"));
    const QCommandLineOption json(QStringLiteral("json"), QStringLiteral("File for the results."),
                                  QStringLiteral("path"));
    parser.addOptions({list, here, server, folder, json});
    parser.addHelpOption();
    parser.addPositionalArgument(QStringLiteral("names"),
                                 QStringLiteral("Rows to measure; all without any."));
    parser.process(application);

    std::vector<Row> chosen;
    const QStringList names = parser.positionalArguments();
    for (const QString& name : names) {
        chosen.push_back(rowNamed(name));
    }
    if (chosen.empty()) {
        chosen.assign(rows.begin(), rows.end());
    }
    if (parser.isSet(list)) {
        for (const Row& row : chosen) {
            std::puts(row.name);
        }
        return 0;
    }
    if (parser.isSet(here)) {
        measureHere(chosen.front(), {parser.value(server), parser.value(folder)});
        return 0;
    }
    const QStringList options{QStringLiteral("--server"), parser.value(server), QStringLiteral("--folder"),
                              parser.value(folder)};
    return measureAll(chosen, options, parser.value(json)) ? 0 : 1;
}

} // namespace

int main(int argc, char** argv) {
    try {
        ui::Application application(argc, argv);
        return run(application);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "bench: %s\n", error.what());
        return 2;
    }
}
