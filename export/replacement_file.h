// SPDX-License-Identifier: MIT

#pragma once

#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QString>

namespace exporter {

/// A file that is written under a temporary name and takes the place of its target in one step when it is
/// complete. Until then, and whenever anything fails, the target is left as it was. A symbolic link stays:
/// what it leads to is replaced. Everything throws base::Error with the reason.
///
/// The temporary name follows from the target's, so that what a killed program left is overwritten by its
/// next try; a lock keeps two programs apart that write the same file at once.
class ReplacementFile final {
public:
    /// Throws when `target` can be told to be impossible, is read-only or in use by another program.
    explicit ReplacementFile(const QString& target);
    /// Removes the temporary file, which is no more once it has become the target.
    ~ReplacementFile();
    Q_DISABLE_COPY_MOVE(ReplacementFile)

    /// Where the contents go, unbuffered.
    [[nodiscard]] QIODevice& device() { return file_; }

    /// Makes the written file the target.
    void commit();

private:
    void lock();

    QFileInfo place_; ///< of the target itself, behind all links
    QLockFile lock_;
    QFile file_;
};

} // namespace exporter
