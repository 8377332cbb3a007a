// SPDX-License-Identifier: MIT

#include "xlsx/line_breaking.h"

#include <QTextStream>

#include <algorithm>

namespace xlsx {

namespace {

constexpr int tenPixelUnits = 1343; // LibreOffice makes 15 pixels 10.82 points
constexpr int tabWidth = 6 * 1038;  // generous: its real width depends on where it stands

bool isLetter(char character) {
    const auto byte = static_cast<unsigned char>(character);
    return byte >= 0xC0 || (character >= 'A' && character <= 'Z') || (character >= 'a' && character <= 'z');
}

/// Whether a line may end behind a character that is no blank.
bool breaksAfter(char before, char character, char next) {
    return (character == '-' && isLetter(before) && isLetter(next)) || (character == ')' && next == '(');
}

/// Whether no line ends between two characters although blanks stand there.
bool holdTogether(char before, char after) {
    return std::string_view("([{").find(before) != std::string_view::npos ||
           std::string_view(")]},.;:!?/").find(after) != std::string_view::npos;
}

/// Characters up to the first place where a line may end.
std::size_t wordLength(std::string_view text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == ' ') {
            const std::size_t next = text.find_first_not_of(' ', i);
            if (next == text.npos || !holdTogether(i == 0 ? ' ' : text[i - 1], text[next])) {
                return i;
            }
            i = next;
        }
        if (i > 0 && i + 1 < text.size() && breaksAfter(text[i - 1], text[i], text[i + 1])) {
            return i + 1;
        }
    }
    return text.size();
}

/// The width of a text, or of the beginning that alone goes beyond `limit`.
int widthUpTo(int limit, std::string_view text, const FontWidths& widths) {
    int total = 0;
    for (std::size_t i = 0; i < text.size() && total <= limit; ++i) {
        total += widths[static_cast<unsigned char>(text[i])];
    }
    return total;
}

/// One paragraph, laid line under line.
class Paragraph final {
public:
    Paragraph(int width, const FontWidths& widths) : width_(width), widths_(widths) {}

    [[nodiscard]] int lines(std::string_view text) {
        while (!text.empty()) {
            const std::size_t length = wordLength(text);
            placeWord(text.substr(0, length));
            text.remove_prefix(length);
            // The first blank may hang over the end of a line.
            for (bool hangs = true; text.starts_with(' '); hangs = false, text.remove_prefix(1)) {
                place(' ', hangs);
            }
        }
        return lines_;
    }

private:
    void placeWord(std::string_view word) {
        const int total = widthUpTo(width_, word, widths_);
        if (used_ + total > width_) {
            startLine();
        }
        for (std::size_t i = 0; i < word.size(); ++i) {
            // The minus of a number that has to be cut stays behind alone.
            if (i == 1 && word.front() == '-' && total > width_) {
                startLine();
            }
            place(word[i], false);
        }
    }

    void place(char character, bool hangs) {
        const int width = widths_[static_cast<unsigned char>(character)];
        if (!hangs && used_ + width > width_) {
            startLine();
        }
        used_ += width;
    }

    void startLine() {
        if (used_ > 0) {
            ++lines_;
            used_ = 0;
        }
    }

    int width_;
    const FontWidths& widths_;
    int used_ = 0;
    int lines_ = 1;
};

} // namespace

FontWidths fontWidths(const QByteArray& table) {
    FontWidths widths;
    QTextStream numbers(table);
    for (int& width : widths) {
        numbers >> width;
        // On a screen a spreadsheet sets a character in whole pixels, 15 to LibreOffice's font size.
        width = (width * 15 + 1024) / 2048 * tenPixelUnits / 10;
    }
    widths['\t'] = tabWidth;
    return widths;
}

int linesOf(std::string_view text, int width, const FontWidths& widths) {
    int lines = 0;
    for (;;) {
        const std::size_t end = std::min(text.find('\r'), text.find('\n'));
        const std::string_view paragraph = text.substr(0, end);
        // Most texts fit into their cell as they are.
        lines += widthUpTo(width, paragraph, widths) <= width ? 1 : Paragraph(width, widths).lines(paragraph);
        if (end == text.npos) {
            return lines;
        }
        text.remove_prefix(end + (text.substr(end, 2) == "\r\n" ? 2 : 1));
    }
}

} // namespace xlsx
