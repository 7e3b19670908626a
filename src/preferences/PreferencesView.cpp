#include "preferences/PreferencesView.h"

#include "preferences/GeneralTab.h"
#include "preferences/HUDTab.h"
#include "preferences/Localized.h"
#include "preferences/SoundTab.h"

#include <QEvent>
#include <QLayout>
#include <algorithm>

namespace orvantile {
namespace {

constexpr int tabWidth = 480;
constexpr int generalHeight = 340;
constexpr int soundHeight = 220;
constexpr int selectorSide = 80;
constexpr int selectorEdge = 12;

} // namespace

PreferencesView::PreferencesView(Settings& settings_, platform::Platform& platform_, PreferencesTab tab)
    : settings(settings_),
      platform(platform_),
      selected(tab),
      headerLayout(&header),
      selector(localized("Tabs"), localizedOptions<PreferencesTab>()),
      layout(this) {
    headerLayout.setContentsMargins(selectorSide, selectorEdge, selectorSide, selectorEdge);
    headerLayout.addWidget(&selector);
    frame.setFrameShape(QFrame::NoFrame);
    frame.setVerticalScrollBar(&scrollBar);
    frame.setFocusPolicy(Qt::NoFocus);
    frame.setWidgetResizable(true);
    frame.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    frame.setBackgroundRole(QPalette::Window);
    layout.setContentsMargins(0, 0, 0, 0);
    layout.setSpacing(0);
    layout.addWidget(&header);
    layout.addWidget(&divider);
    layout.addWidget(&frame, 1);

    selector.reflect(static_cast<int>(selected));
    selector.onChoice = [this](int index) {
        select(PreferencesTab::allCases.at(static_cast<std::size_t>(index)));
    };
    build();
}

void PreferencesView::select(PreferencesTab tab) {
    if (tab == selected) {
        return;
    }
    selected = tab;
    selector.reflect(static_cast<int>(tab));
    build();
}

void PreferencesView::build() {
    frame.takeWidget();
    content.reset(); // its subscriptions end before the next tab's begin
    switch (selected) {
    case PreferencesTab::general:
        content = std::make_unique<GeneralTab>(settings, platform);
        break;
    case PreferencesTab::hud:
        content = std::make_unique<HUDTab>(settings, platform);
        break;
    case PreferencesTab::sound:
        content = std::make_unique<SoundTab>(settings, platform);
        break;
    }
    content->installEventFilter(this);
    frame.setWidget(content.get());
    content->show();
    fit();
}

QSize PreferencesView::tabSize() const {
    switch (selected) {
    case PreferencesTab::general:
        return {tabWidth, generalHeight};
    case PreferencesTab::sound:
        return {tabWidth, soundHeight};
    case PreferencesTab::hud:
        break;
    }
    return {tabWidth, content->layout()->totalHeightForWidth(tabWidth)};
}

void PreferencesView::setHeightLimit(int height) {
    heightLimit = height;
    fit();
}

void PreferencesView::fit() {
    const int above = header.sizeHint().height() + divider.height();
    if (auto* hudTab = dynamic_cast<HUDTab*>(content.get())) {
        hudTab->setRoom({tabWidth, heightLimit - above});
    }
    setFixedSize(tabWidth, std::min(above + tabSize().height(), heightLimit));
    // Now, not with further events: the window would be drawn in between.
    layout.activate();
    if (parentWidget() != nullptr && parentWidget()->layout() != nullptr) {
        parentWidget()->layout()->activate();
    }
}

bool PreferencesView::eventFilter(QObject* watched, QEvent* event) {
    if (watched == content.get() && event->type() == QEvent::LayoutRequest) {
        fit();
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace orvantile
