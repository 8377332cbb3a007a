// SPDX-License-Identifier: MIT

#pragma once

#include <QFile>
#include <QFileInfo>
#include <QString>

/// What systems do each in a way of its own with the files that an export reads and writes. All that fails
/// throws base::Error with the reason.
namespace exporter {

/// Where a chain of symbolic links ends, whether there is a file or not. Throws when a file of that name can
/// be told to be impossible.
[[nodiscard]] QFileInfo behindLinks(const QString& target);

/// Throws when another program has a document open in such a way that it cannot be replaced.
void checkClosed(const QFileInfo& document);

/// Whether an office program that left this lock file beside its document may still have that open. Not asked
/// about those of other machines.
[[nodiscard]] bool isHeldHere(const QFileInfo& lock);

/// Writes what the system has kept of an open file to the disk.
void flush(const QFile& file);

/// Gives a file the name of another, whose place it takes.
void replace(const QFile& file, const QFileInfo& target);

/// The system's words for a disk that is full.
[[nodiscard]] QString noRoomReason();

} // namespace exporter
