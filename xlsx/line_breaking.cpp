#include "xlsx/line_breaking.h"

#include <algorithm>

namespace xlsx {

namespace {

constexpr int tabWidth = 6 * 1038; // generous: its real width depends on where it stands

/// One paragraph, laid line under line.
class Paragraph final {
public:
    Paragraph(int width, const FontWidths& widths) : width_(width), widths_(widths) {}

    [[nodiscard]] int lines(std::string_view text) {
        while (!text.empty()) {
            const std::size_t length = wordLength(text);
            place(text.substr(0, length));
            text.remove_prefix(length);
            placeBlanks(text);
        }
        return lines_;
    }

private:
    [[nodiscard]] static bool isLetter(char character) {
        const auto byte = static_cast<unsigned char>(character);
        return byte >= 0xC0 || (character >= 'A' && character <= 'Z') ||
               (character >= 'a' && character <= 'z');
    }

    /// Whether a line may end behind a character that is no blank.
    [[nodiscard]] static bool breaksAfter(char before, char character, char next) {
        return (character == '-' && isLetter(before) && isLetter(next)) || (character == ')' && next == '(');
    }

    /// Whether no line ends between two characters although blanks stand there.
    [[nodiscard]] static bool holdTogether(char before, char after) {
        return std::string_view("([{").find(before) != std::string_view::npos ||
               std::string_view(")]},.;:!?/").find(after) != std::string_view::npos;
    }

    /// Characters up to the first place where a line may end.
    [[nodiscard]] static std::size_t wordLength(std::string_view text) {
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

    [[nodiscard]] int widthOf(char character) const {
        return character == '\t' ? tabWidth : widths_[static_cast<unsigned char>(character)];
    }

    void place(std::string_view word) {
        int total = 0;
        for (const char character : word) {
            total += widthOf(character);
        }
        if (used_ + total <= width_) {
            used_ += total;
            return;
        }
        if (used_ > 0) {
            startLine();
        }
        for (std::size_t i = 0; i < word.size(); ++i) {
            const int width = widthOf(word[i]);
            // The minus of a number that has to be cut stays behind alone.
            const bool afterMinus = i == 1 && word.front() == '-';
            if (used_ > 0 && (afterMinus || used_ + width > width_)) {
                startLine();
            }
            used_ += width;
        }
    }

    /// The first blank may hang over the end of a line.
    void placeBlanks(std::string_view& text) {
        for (bool first = true; !text.empty() && text.front() == ' '; first = false, text.remove_prefix(1)) {
            if (!first && used_ + widthOf(' ') > width_) {
                startLine();
            }
            used_ += widthOf(' ');
        }
    }

    void startLine() {
        ++lines_;
        used_ = 0;
    }

    int width_;
    const FontWidths& widths_;
    int used_ = 0;
    int lines_ = 1;
};

/// Most texts fit into their cell as they are.
bool fitsOneLine(std::string_view text, int width, const FontWidths& widths) {
    int total = 0;
    bool plain = true;
    for (const char character : text) {
        total += widths[static_cast<unsigned char>(character)];
        plain = plain && static_cast<unsigned char>(character) >= ' ';
    }
    return plain && total <= width;
}

} // namespace

int linesOf(std::string_view text, int width, const FontWidths& widths) {
    if (fitsOneLine(text, width, widths)) {
        return 1;
    }
    int lines = 0;
    for (;;) {
        const std::size_t end = text.find_first_of("\r\n");
        lines += Paragraph(width, widths).lines(text.substr(0, end));
        if (end == text.npos) {
            return lines;
        }
        text.remove_prefix(end + (text.substr(end, 2) == "\r\n" ? 2 : 1));
    }
}

} // namespace xlsx
