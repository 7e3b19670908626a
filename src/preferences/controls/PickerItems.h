#pragma once

#include <QStyledItemDelegate>

namespace orvantile {

/// Draws the choices of an opened picker: a mark at the chosen one, a rounded bar behind the one that Return
/// or a click would choose.
class PickerItems final : public QStyledItemDelegate {
public:
    /// What an item adds to the width of its words.
    static constexpr int extraWidth = 26 + 14;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

} // namespace orvantile
