#pragma once

#include <QWidget>

class QLineEdit;
class QToolButton;

namespace grid {

/// A line in which a text to look for is typed, with a button that empties it.
class TreeFindPanel final : public QWidget {
    Q_OBJECT

public:
    explicit TreeFindPanel(QWidget* parent);

    /// Puts the cursor into the line and selects its text.
    void open();
    /// Empties the line.
    void clear();

signals:
    /// The text to look for is another.
    void textChanged(const QString& text);
    /// The user wants to go on to what has been found.
    void left();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QLineEdit* text_;
    QToolButton* clear_;
};

} // namespace grid
