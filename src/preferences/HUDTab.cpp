#include "preferences/HUDTab.h"

#include "hud/HUDController.h"
#include "preferences/Localized.h"
#include "preferences/NumberFormats.h"
#include "preferences/controls/Binding.h"

namespace orvantile {
namespace {

using Qt::StringLiterals::operator""_s;

constexpr ValueSlider::Range durationRange{.minimum = 0.4, .maximum = 3, .step = 0.1, .bigStep = 0.5};
constexpr ValueSlider::Range fontSizeRange{.minimum = 12, .maximum = 64, .step = 1, .bigStep = 8};
constexpr ValueSlider::Range opacityRange{.minimum = 0.5, .maximum = 1, .step = 0.01, .bigStep = 0.1};
constexpr int opacityIndex = 3; // among the rows of its section

QString sampleLabel(bool withShortcut) {
    return withShortcut ? u"⌘S  Save"_s : u"Save"_s;
}

} // namespace

HUDTab::HUDTab(Settings& settings_, platform::Platform& platform_)
    : settings(settings_),
      platform(platform_),
      shownAppearance(settings.appearance()),
      display(localized("Display")),
      look(localized("Appearance")),
      positionRow(localized("Position")),
      position(localized("Position"), localizedOptions<HUDPosition>()),
      duration(localized("Duration"), durationRange, secondsText),
      fontSize(localized("Font size"), fontSizeRange, pointsText),
      modeRow(localized("Mode")),
      mode(localized("Mode"), localizedOptions<HUDAppearance>()),
      showShortcut(localized("Show keyboard shortcut")),
      translucent(localized("Translucent glass")),
      popAnimation(localized("Pop animation")),
      testButton(localized("Test in chosen position")),
      layout(this) {
    buildForm();
    bindControls();
    bindPreview();
    connect(&testButton, &QPushButton::clicked, this, [this] { test(); });
}

void HUDTab::buildForm() {
    layout.setContentsMargins(0, 0, 0, 0);
    layout.setSpacing(0);
    layout.addWidget(&preview);
    layout.addWidget(&form, 1);

    positionRow.addControl(position);
    display.addRow(positionRow);
    display.addRow(duration);
    display.addRow(fontSize);

    mode.setHelp(localized("Auto follows the system Light/Dark setting."));
    showShortcut.setToolTip(localized("Prefix the action name with the keys pressed (e.g. ⌘S  Save)."));
    translucent.setToolTip(localized("Render the HUD with a frosted-glass background and a soft top sheen."));
    popAnimation.setToolTip(localized("Spring-scale the HUD in when it appears."));
    modeRow.addControl(mode);
    look.addRow(modeRow);
    look.addRow(showShortcut);
    look.addRow(translucent);
    look.addRow(popAnimation);

    testRow.addSpacer();
    testRow.addControl(testButton);
    testRow.addSpacer();
    testing.addRow(testRow);

    form.addSection(display);
    form.addSection(look);
    form.addSection(testing);
}

void HUDTab::bindControls() {
    subscriptions.push_back(bind(position, settings.position));
    subscriptions.push_back(bind(duration, settings.displaySeconds));
    subscriptions.push_back(bind(fontSize, settings.fontSize));
    subscriptions.push_back(bind(mode, settings.appearance));
    subscriptions.push_back(bind(showShortcut, settings.showShortcut));
    subscriptions.push_back(bind(translucent, settings.translucent));
    subscriptions.push_back(bind(popAnimation, settings.popAnimation));
    subscriptions.push_back(settings.translucent.subscribe([this](bool glass) { showOpacityRow(!glass); }));
}

template <typename Change>
void HUDTab::redraw(Change change) {
    auto view = preview.hud();
    change(view);
    preview.setHUD(view);
}

void HUDTab::bindPreview() {
    redraw([](HUDView& view) {
        view.popAnimation = false;
        view.blendingMode = BlendingMode::withinWindow;
    });
    subscriptions.push_back(settings.showShortcut.subscribe(
        [this](bool shown) { redraw([shown](HUDView& view) { view.text = sampleLabel(shown); }); }));
    subscriptions.push_back(settings.fontSize.subscribe(
        [this](double points) { redraw([points](HUDView& view) { view.fontSize = points; }); }));
    subscriptions.push_back(settings.translucent.subscribe(
        [this](bool glass) { redraw([glass](HUDView& view) { view.translucent = glass; }); }));
    subscriptions.push_back(settings.flatOpacity.subscribe(
        [this](double part) { redraw([part](HUDView& view) { view.flatOpacity = part; }); }));
    subscriptions.push_back(settings.appearance.subscribe([this](const HUDAppearance& appearance) {
        shownAppearance = appearance;
        redraw([this](HUDView& view) { view.darkMode = previewDark(); });
    }));
    appearanceToken = platform.appearance->observeChanges(
        [this] { redraw([this](HUDView& view) { view.darkMode = previewDark(); }); });
}

bool HUDTab::previewDark() const {
    return shownAppearance.darkMode(platform.appearance->isDark());
}

void HUDTab::showOpacityRow(bool shown) {
    if (!shown) {
        opacityFollows.cancel();
        opacity.reset();
    } else if (!opacity) {
        opacity.emplace(localized("Background opacity"), opacityRange, percentText);
        opacityFollows = bind(*opacity, settings.flatOpacity);
        look.addRow(*opacity, opacityIndex);
        setTabOrder(&translucent, &opacity->slider);
        setTabOrder(&opacity->slider, &popAnimation);
    }
}

void HUDTab::setRoom(const QSize& room) {
    preview.setRoom(room.height() - form.layout()->totalHeightForWidth(room.width()));
}

void HUDTab::test() const {
    HUDController::shared()->show(sampleLabel(settings.showShortcut()));
}

} // namespace orvantile
