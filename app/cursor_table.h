#pragma once

#include <QCursor>
#include <QString>

#include <map>

namespace app {

/// The program's own cursors by their numbers; negative by convention.
class CursorTable final {
public:
    void add(int number, const QCursor& cursor) { cursors_[number] = cursor; }
    void remove(int number) { cursors_.erase(number); }
    /// The cursor of that number, or the arrow.
    [[nodiscard]] QCursor cursor(int number) const;

private:
    std::map<int, QCursor> cursors_;
};

/// Keeps a cursor image of the program's resources in a table under a number as long as it lives.
class RegisteredCursor final {
public:
    /// `resource`: an image, hot spot at its upper left. Throws base::ResourceError when it cannot be read.
    RegisteredCursor(CursorTable& table, int number, const QString& resource);
    ~RegisteredCursor();
    RegisteredCursor(const RegisteredCursor&) = delete;
    RegisteredCursor& operator=(const RegisteredCursor&) = delete;

private:
    CursorTable& table_;
    int number_;
};

} // namespace app
