#pragma once

#include <QWidget>

class QLabel;
class QLineEdit;

namespace grid {

class TableView;

/// The line in which a text is typed that is looked for in the cells of a view.
class TableFindBar final : public QWidget {
    Q_OBJECT

public:
    TableFindBar(TableView& view, QWidget* parent);

    /// Shows the bar and puts the cursor into it.
    void open();
    /// Hides the bar, takes the marks away and gives the focus back to the view.
    void close();
    /// Goes to the next or the previous match; shows the bar first when it is hidden.
    void findNext();
    void findPrevious();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void goOn(bool forward);
    void find(bool forward, bool includeCurrent);

    TableView& view_;
    QLineEdit* text_;
    QLabel* outcome_;
};

} // namespace grid
