// SPDX-License-Identifier: MIT

#pragma once

#include "grid/rows/cell_search.h"

#include <QBasicTimer>
#include <QWidget>

#include <optional>

class QLineEdit;

namespace grid {

class OutcomeLabel;
class TableView;

/// The line in which words are typed that are looked for in the cells of a view. The search goes on in the
/// background; until it has come to a hit the user may type on.
class TableFindBar final : public QWidget {
    Q_OBJECT

public:
    TableFindBar(TableView& view, QWidget* parent);

    /// Shows the bar and puts the cursor into it.
    void open();
    /// Hides the bar, takes the marks away and gives the focus back to the view.
    void close();
    /// Goes to the next or the previous hit; shows the bar first when it is hidden.
    void findNext();
    void findPrevious();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    /// The hit that the user wants to see.
    struct Wish {
        bool forward = true;
        bool includeCurrent = false;
    };

    void createButtons();
    void goOn(bool forward);
    void find(Wish wish);
    void startSearch();
    void startSearchOfOtherColumns();
    [[nodiscard]] bool isSearching() const;
    void searchOn();
    void fulfilWish();
    void showOutcome();

    TableView& view_;
    QLineEdit* text_;
    OutcomeLabel* outcome_;
    std::optional<CellSearch> search_; // once events have been handled
    std::optional<Wish> wish_;         // as long as the search has not come that far
    QBasicTimer slices_;
};

} // namespace grid
