#pragma once

#include <QHeaderView>

#include <vector>

namespace grid {

class TreeModel;

/// The header of a tree. Its sections always fill the width, texts wrap, and the sorted column bears a mark.
class TreeHeader final : public QHeaderView {
    Q_OBJECT

public:
    TreeHeader(TreeModel& model, QWidget* parent);

    /// Visible columns (indices of the model) from left to right.
    [[nodiscard]] std::vector<int> visibleColumns() const;

    /// Lays the sections out over `width` pixels; tells whether that is another width.
    bool fitWidth(int width);
    /// The height that shows every text whole.
    [[nodiscard]] int fittedHeight() const;

signals:
    /// A section has been resized or moved.
    void layoutChanged();

protected:
    void paintSection(QPainter* painter, const QRect& rect, int logicalIndex) const override;
    [[nodiscard]] QSize sectionSizeFromContents(int logicalIndex) const override;

private:
    void toggleSort(int column);
    void applyWeights();
    void takeUserWidth(int column, int width);
    [[nodiscard]] std::vector<double> visibleWeights() const;
    [[nodiscard]] int textWidth(int column) const;

    TreeModel& model_;
    std::vector<double> weights_; // of every column, by index
    int width_ = 0;
    bool applying_ = false;
};

} // namespace grid
