#include "app/cursor_table.h"

#include "app/xpm_resource.h"

#include <QPixmap>

namespace app {

QCursor CursorTable::cursor(int number) const {
    const auto found = cursors_.find(number);
    return found == cursors_.end() ? QCursor(Qt::ArrowCursor) : found->second;
}

RegisteredCursor::RegisteredCursor(CursorTable& table, int number, const QString& resource)
    : table_(table), number_(number) {
    table_.add(number_, QCursor(QPixmap::fromImage(readXpmResource(resource)), 0, 0));
}

RegisteredCursor::~RegisteredCursor() {
    table_.remove(number_);
}

} // namespace app
