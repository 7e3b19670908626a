#pragma once

#include "preferences/controls/Segment.h"
#include "preferences/controls/Transition.h"

#include <QButtonGroup>
#include <QHBoxLayout>
#include <QStringList>
#include <QWidget>
#include <functional>
#include <memory>
#include <vector>

namespace orvantile {

/// A choice of one among few, all visible side by side. To assistive technology a group of radio buttons; Tab
/// reaches the chosen one, arrow keys choose.
class SegmentedPicker final : public QWidget {
public:
    /// `name` is what assistive technology calls the group.
    SegmentedPicker(const QString& name, const QStringList& options);

    /// Called with the index when the user has chosen another one.
    std::function<void(int)> onChoice;

    /// Shows the choice without reporting it.
    void reflect(int index);

    [[nodiscard]] int currentIndex() const { return group.checkedId(); }

    /// Gives every segment the hover help.
    void setHelp(const QString& help);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    /// Moves the pill there, and makes it the one segment that the Tab key reaches.
    void showChosen(int index);

    [[nodiscard]] QRectF pill(double position) const;

    QHBoxLayout layout;
    std::vector<std::unique_ptr<Segment>> segments;
    QButtonGroup group;
    Transition selection{*this};
};

} // namespace orvantile
