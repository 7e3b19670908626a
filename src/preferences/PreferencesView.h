#pragma once

#include "platform/Platform.h"
#include "preferences/PreferencesTab.h"
#include "preferences/controls/Divider.h"
#include "preferences/controls/SegmentedPicker.h"
#include "preferences/controls/SlimScrollBar.h"
#include "settings/Settings.h"

#include <QScrollArea>
#include <QVBoxLayout>
#include <QWidget>
#include <memory>

namespace orvantile {

/// The content of the preferences window: a selector and the tab it selects. A tab is built when it is
/// selected and discarded when another one is. The view has a fixed size, which follows the tab.
class PreferencesView final : public QWidget {
public:
    PreferencesView(Settings& settings, platform::Platform& platform,
                    PreferencesTab tab = PreferencesTab::general);

    [[nodiscard]] PreferencesTab tab() const { return selected; }

    void select(PreferencesTab tab);

    /// What the selected tab is given, in points.
    [[nodiscard]] QSize tabSize() const;

    /// The view's height is kept below this; a tab that is higher scrolls.
    void setHeightLimit(int height);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void build();
    void fit();

    Settings& settings;
    platform::Platform& platform;
    PreferencesTab selected;
    int heightLimit = QWIDGETSIZE_MAX;
    QWidget header;
    QVBoxLayout headerLayout;
    SegmentedPicker selector;
    Divider divider;
    QScrollArea frame;
    SlimScrollBar scrollBar; ///< of `frame`
    std::unique_ptr<QWidget> content;
    QVBoxLayout layout;
};

} // namespace orvantile
