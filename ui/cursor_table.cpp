#include "ui/cursor_table.h"

#include "base/error.h"

#include <QImageReader>
#include <QPixmap>

namespace ui {

QCursor CursorTable::cursor(int number) const {
    const auto found = cursors_.find(number);
    return found == cursors_.end() ? QCursor(Qt::ArrowCursor) : found->second;
}

RegisteredCursor::RegisteredCursor(CursorTable& table, int number, const QString& resource)
    : table_(table), number_(number) {
    QImageReader reader(resource);
    const QImage image = reader.read();
    if (image.isNull()) {
        throw FileError(QStringLiteral("Не читается курсор"), resource, reader.errorString());
    }
    table_.add(number_, QCursor(QPixmap::fromImage(image), 0, 0));
}

RegisteredCursor::~RegisteredCursor() {
    table_.remove(number_);
}

} // namespace ui
