// SPDX-License-Identifier: MIT

#include "base/win1251.h"
#include "bench/catalog_window.h"
#include "bench/memory.h"
#include "bench/rows.h"
#include "browser/grid_export.h"
#include "browser/ter_form.h"
#include "grid/rows/column.h"
#include "grid/table/grid.h"
#include "grid/table/table_view.h"

#include <QFile>
#include <QFileInfo>
#include <QtEndian>

#include <cmath>
#include <optional>
#include <stdexcept>

#include <isa-l/igzip_lib.h>
#include <xlsxwriter.h>

namespace bench {

namespace {

constexpr int rounds = 5;
constexpr double megabytesAllowed = 16;

void check(int error) {
    if (error != LXW_NO_ERROR) {
        throw std::runtime_error(lxw_strerror(static_cast<lxw_error>(error)));
    }
}

/// The shown cells of an open dataset, ready to be written: texts as UTF-8, numbers as floating point.
class BareSheet final {
public:
    BareSheet(const db::DataSet& dataSet, const std::vector<const grid::Column*>& columns) {
        for (const grid::Column* column : columns) {
            const db::Field& field = *column->field();
            Column cells{column->headerText().toUtf8().toStdString(),
                         column->width(),
                         field.isNumber(),
                         field.fractionDigits(),
                         column->alignment().testFlag(Qt::AlignRight),
                         {},
                         {}};
            const double unit = std::pow(10.0, field.fractionDigits());
            for (int row = 0; row < dataSet.rowCount(); ++row) {
                if (dataSet.rows().isNull(row, field.index())) {
                    throw std::runtime_error("the measuring catalog holds NULL");
                }
                if (field.isNumber()) {
                    cells.numbers.push_back(static_cast<double>(dataSet.rows().integer(row, field.index())) /
                                            unit);
                } else {
                    cells.texts.push_back(base::win1251::decode(dataSet.rows().string(row, field.index()))
                                              .toUtf8()
                                              .toStdString());
                }
            }
            columns_.push_back(std::move(cells));
        }
        rowCount_ = static_cast<lxw_row_t>(dataSet.rowCount());
    }

    void write(const QString& fileName) const {
        lxw_workbook_options options{};
        options.constant_memory = LXW_TRUE;
        lxw_workbook* const workbook = workbook_new_opt(QFile::encodeName(fileName).constData(), &options);
        lxw_worksheet* const sheet = workbook_add_worksheet(workbook, nullptr);
        std::vector<lxw_format*> formats;
        lxw_col_t index = 0;
        for (const Column& column : columns_) {
            lxw_format* const format = formatOf(*workbook, column, formats);
            check(worksheet_write_string(sheet, 0, index, column.header.c_str(), format));
            check(worksheet_set_column_pixels(sheet, index, index, static_cast<uint32_t>(column.width),
                                              format));
            ++index;
        }
        for (lxw_row_t row = 0; row < rowCount_; ++row) {
            index = 0;
            for (const Column& column : columns_) {
                check(column.isNumber
                          ? worksheet_write_number(sheet, row + 1, index, column.numbers[row], formats[index])
                          : worksheet_write_string(sheet, row + 1, index, column.texts[row].c_str(),
                                                   formats[index]));
                ++index;
            }
        }
        check(workbook_close(workbook));
    }

private:
    struct Column {
        std::string header;
        int width;
        bool isNumber;
        int fractionDigits;
        bool right;
        std::vector<double> numbers;
        std::vector<std::string> texts;

        [[nodiscard]] bool looksLike(const Column& other) const {
            return isNumber == other.isNumber && fractionDigits == other.fractionDigits &&
                   right == other.right;
        }
    };

    /// Appends the format of the next column. Columns that look alike share one: the library finds the number
    /// of a second format of the same kind anew for every cell.
    lxw_format* formatOf(lxw_workbook& workbook, const Column& column,
                         std::vector<lxw_format*>& formats) const {
        for (std::size_t earlier = 0; earlier < formats.size(); ++earlier) {
            if (columns_[earlier].looksLike(column)) {
                return formats.emplace_back(formats[earlier]);
            }
        }
        lxw_format* const format = formats.emplace_back(workbook_add_format(&workbook));
        format_set_align(format, LXW_ALIGN_VERTICAL_TOP);
        format_set_align(format, column.right ? LXW_ALIGN_RIGHT : LXW_ALIGN_LEFT);
        if (column.isNumber) {
            format_set_num_format(format, column.fractionDigits == 0 ? "0" : "0.00");
        } else {
            format_set_text_wrap(format);
        }
        return format;
    }

    std::vector<Column> columns_;
    lxw_row_t rowCount_ = 0;
};

/// The finished bytes of an exported workbook, to be packed again by the library alone.
class FinishedBytes final {
public:
    /// Throws std::runtime_error when the file is no ZIP archive of deflated parts.
    explicit FinishedBytes(const QString& fileName) {
        QFile file(fileName);
        if (!file.open(QIODevice::ReadOnly)) {
            throw std::runtime_error("the exported workbook cannot be read");
        }
        const QByteArray archive = file.readAll();
        // The parts stand one after the other behind headers of 30 bytes, a name and an extra field.
        constexpr quint32 partSignature = 0x04034b50;
        qsizetype place = 0;
        const auto u16 = [&](qsizetype offset) {
            return qFromLittleEndian<quint16>(&archive.data()[place + offset]);
        };
        const auto u32 = [&](qsizetype offset) {
            return qFromLittleEndian<quint32>(&archive.data()[place + offset]);
        };
        while (u32(0) == partSignature) {
            const quint32 packed = u32(18);
            const quint32 unpacked = u32(22);
            const qsizetype start = place + 30 + u16(26) + u16(28);
            unpack(QByteArrayView(archive).sliced(start, packed), unpacked);
            place = start + packed;
        }
    }

    void pack() const {
        std::vector<unsigned char> packed(static_cast<std::size_t>(bytes_.size()));
        std::vector<unsigned char> workspace(ISAL_DEF_LVL1_DEFAULT);
        isal_zstream stream{};
        isal_deflate_init(&stream);
        stream.level = 1; // as the exporter packs
        stream.level_buf = workspace.data();
        stream.level_buf_size = static_cast<std::uint32_t>(workspace.size());
        stream.end_of_stream = 1;
        stream.next_in = reinterpret_cast<unsigned char*>(const_cast<char*>(bytes_.data()));
        stream.avail_in = static_cast<std::uint32_t>(bytes_.size());
        stream.next_out = packed.data();
        stream.avail_out = static_cast<std::uint32_t>(packed.size());
        if (isal_deflate(&stream) != COMP_OK || stream.avail_in != 0) {
            throw std::runtime_error("the bytes of the exported workbook cannot be packed");
        }
    }

private:
    void unpack(QByteArrayView packed, quint32 size) {
        const qsizetype before = bytes_.size();
        bytes_.resize(before + size);
        inflate_state state{};
        isal_inflate_init(&state);
        state.next_in = reinterpret_cast<unsigned char*>(const_cast<char*>(packed.data()));
        state.avail_in = static_cast<std::uint32_t>(packed.size());
        state.next_out = reinterpret_cast<unsigned char*>(bytes_.data() + before);
        state.avail_out = size;
        if (isal_inflate_stateless(&state) != ISAL_DECOMP_OK || state.avail_out != 0) {
            throw std::runtime_error("a part of the exported workbook cannot be unpacked");
        }
    }

    QByteArray bytes_;
};

/// The materials on screen and their cells beside them, to be written to files of a folder.
class Workbooks final {
public:
    explicit Workbooks(const Surroundings& surroundings, const Stretch& stretch = threeHundredThousand)
        : window_(surroundings.server),
          folder_(surroundings.folder + u'/'),
          ours_(folder_ + QStringLiteral("ours.xlsx")),
          bare_(folder_ + QStringLiteral("bare.xlsx")) {
        window_.choose(stretch);
        sheet_.emplace(window_.module().pFIBDataSet3, TERForm->cxGrid1->view().visibleColumns());
    }
    ~Workbooks() {
        QFile::remove(ours_);
        QFile::remove(bare_);
    }
    Q_DISABLE_COPY_MOVE(Workbooks)

    void writeOurs() const { browser::exportGrid(TERForm->cxGrid1, folder_, QStringLiteral("ours"), {}); }
    void writeBare() const { sheet_->write(bare_); }
    [[nodiscard]] FinishedBytes finishedBytes() const { return FinishedBytes(ours_); }

    /// Of the files in megabytes.
    [[nodiscard]] Result sizes() const {
        constexpr double megabyte = 1024 * 1024;
        return {QStringLiteral("export-size"),
                QStringLiteral("size of that workbook"),
                static_cast<double>(QFileInfo(ours_).size()) / megabyte,
                static_cast<double>(QFileInfo(bare_).size()) / megabyte,
                QStringLiteral("MB"),
                LimitOf::Ratio,
                1.25};
    }

private:
    CatalogWindow window_;
    QString folder_;
    QString ours_;
    QString bare_;
    std::optional<BareSheet> sheet_;
};

/// Megabytes by which `action` goes beyond what lay in memory before, at its peak.
double extraMemory(const std::function<void()>& action) {
    const double before = residentMegabytes();
    resetPeak();
    action();
    return peakMegabytes() - before;
}

} // namespace

std::vector<Result> measureExport(const Surroundings& surroundings) {
    const Workbooks workbooks(surroundings);
    const Medians medians = alternate(
        rounds, [&](int) { return timeOf([&] { workbooks.writeOurs(); }); },
        [&](int) { return timeOf([&] { workbooks.writeBare(); }); });
    const FinishedBytes bytes = workbooks.finishedBytes();
    const Medians packing = alternate(
        rounds, [&](int) { return timeOf([&] { workbooks.writeOurs(); }); },
        [&](int) { return timeOf([&] { bytes.pack(); }); });
    return {{QStringLiteral("export"), QStringLiteral("export 300,000 rows x 11 columns"), medians.ours,
             medians.bare, QStringLiteral("ms"), LimitOf::Ratio, 0.15},
            {QStringLiteral("export-pack"), QStringLiteral("that export (bare: packing its finished bytes)"),
             packing.ours, packing.bare, QStringLiteral("ms"), LimitOf::Ratio, 3.5},
            workbooks.sizes()};
}

std::vector<Result> measureExportMemory(const Surroundings& surroundings) {
    const auto measured = [&](const Stretch& stretch, const QString& name, const QString& work) {
        const Workbooks workbooks(surroundings, stretch);
        const double ours = extraMemory([&] { workbooks.writeOurs(); });
        const double bare = extraMemory([&] { workbooks.writeBare(); });
        return Result{name, work, ours, bare, QStringLiteral("MB"), LimitOf::Value, megabytesAllowed};
    };
    return {
        measured(threeHundredThousand, QStringLiteral("export-memory"),
                 QStringLiteral("extra memory of that export at its peak")),
        measured(million, QStringLiteral("export-memory-1m"), QStringLiteral("the same for 1,000,000 rows"))};
}

} // namespace bench
