// SPDX-License-Identifier: MIT

#pragma once

#include <QWidget>

class QLineEdit;
class QToolButton;

namespace grid {

class OutcomeLabel;

/// A line in which words to look for are typed, with a button that empties it and the outcome of the search.
class TreeFindPanel final : public QWidget {
    Q_OBJECT

public:
    explicit TreeFindPanel(QWidget* parent);

    /// Puts the cursor into the line and selects its text.
    void open();
    /// Empties the line.
    void clear();
    /// Shows what has become of the search.
    void showOutcome(const QString& words);

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
    OutcomeLabel* outcome_;
};

} // namespace grid
