#pragma once

#include <QLockFile>
#include <QString>

namespace exporter {

/// A file that is written under a temporary name and takes the place of its target in one step when it is
/// complete. Until then, and whenever anything fails, the target is left as it was.
///
/// The temporary name follows from the target's, so that what a killed program left is overwritten by its
/// next try; a lock keeps two programs apart that write the same file at once.
class ReplacementFile final {
public:
    /// Throws ExportError when `target` can be told to be impossible, or is being written by another program.
    explicit ReplacementFile(const QString& target);
    /// Removes the temporary file unless it has become the target.
    ~ReplacementFile();
    ReplacementFile(const ReplacementFile&) = delete;
    ReplacementFile& operator=(const ReplacementFile&) = delete;

    [[nodiscard]] const QString& target() const { return target_; }
    /// Where to write.
    [[nodiscard]] const QString& path() const { return path_; }

    /// Makes the written file the target. Throws ExportError.
    void commit();

private:
    void checkTarget() const;
    void lock();
    void flushToDisk() const;

    QString target_;
    QString path_;
    QLockFile lock_;
    bool committed_ = false;
};

} // namespace exporter
