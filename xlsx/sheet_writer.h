#pragma once

#include "xlsx/sheet.h"
#include "xlsx/zip_archive.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <span>
#include <stdexcept>
#include <string_view>
#include <vector>

namespace xlsx {

/// Bytes that stand in many cells, copied by their fixed size because that is the fastest.
class Fragment final {
public:
    constexpr Fragment() = default;
    /// Throws std::length_error beyond 64 bytes.
    constexpr explicit Fragment(std::string_view text) : size_(text.size()) {
        if (size_ > bytes_.size()) {
            throw std::length_error("a fragment of a sheet is too long");
        }
        std::copy(text.begin(), text.end(), bytes_.begin());
    }

    /// Writes all 64 bytes; returns the end of those that count.
    [[nodiscard]] char* copyTo(char* out) const {
        std::memcpy(out, bytes_.data(), bytes_.size());
        return out + size_;
    }

private:
    std::array<char, 64> bytes_{};
    std::size_t size_ = 0;
};

/// Writes a workbook of one sheet: a header that stays in view, is printed on every page and carries a
/// filter, rows, and a footer. The cells of a row follow one another, every column has one; a row goes to the
/// output as soon as it is complete. Everything throws what the output throws, and std::logic_error when a
/// row has too few or too many cells.
class SheetWriter final {
public:
    /// There is at least one column.
    SheetWriter(Output& output, Page page, std::span<const Column> columns);
    SheetWriter(const SheetWriter&) = delete;
    SheetWriter& operator=(const SheetWriter&) = delete;

    /// A text in WIN1251; it stays one whatever it looks like. Throws std::length_error beyond longestText.
    void text(std::string_view win1251);
    /// `units` / 10^`fractionDigits` of the column; as a text where a spreadsheet would lose digits.
    void number(std::int64_t units);
    void blank();
    void endRow();

    /// Writes the row that closes the table: `count` in one column.
    void footer(std::size_t column, std::int64_t count);

    /// Completes the workbook, which is not to be written to any more.
    void finish();

private:
    /// How the cells of a column begin, up to the number of their row. Their names stand last: what differs
    /// from row to row is then followed by what all cells share, which packs better and faster.
    struct Cells {
        Fragment header;
        Fragment text;
        Fragment number;
        Fragment numberAsText;
        Fragment footer;
        int fractionDigits = 0;
        int wrapWidth = 0; ///< in units of the font
    };

    void writeHeader(std::span<const Column> columns);
    void startRow();
    [[nodiscard]] const Cells& nextCell(std::size_t bytes);
    [[nodiscard]] char* startCell(const Fragment& kind, const Fragment& end);
    void endCell(const char* end);
    void needLines(int lines);
    void closeRow();
    void flush();

    ZipArchive archive_;
    Page page_;
    std::vector<Cells> columns_;
    std::vector<char> buffer_; // ends between two rows unless one is being written
    std::size_t used_ = 0;
    std::size_t column_ = 0; // of the next cell
    std::size_t height_ = 0; // place of the row's height in the buffer
    int lines_ = 1;          // that the row needs
    Fragment rowNumber_;
    int rows_ = 0; // complete ones, the header among them but not the footer
};

} // namespace xlsx
