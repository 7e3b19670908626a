// Draws every tab and state of the preferences into PNG files in the directory that is the first argument.
// QT_SCALE_FACTOR sets the scale; further arguments: "rtl" for right-to-left, "long" for long texts.

#include "gallery/StillStyle.h"
#include "preferences/PreferencesWindow.h"
#include "preferences/controls/ConfirmationDialog.h"
#include "support/FakePlatform.h"

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QTranslator>

namespace {

using namespace orvantile;
using Qt::StringLiterals::operator""_s;

/// Makes every text half as long again, as some languages do.
class Lengthener final : public QTranslator {
public:
    [[nodiscard]] QString translate(const char*, const char* text, const char*, int) const override {
        const auto whole = QString::fromUtf8(text);
        return whole + u" "_s + whole.left(static_cast<int>(whole.size() / 2));
    }

    [[nodiscard]] bool isEmpty() const override { return false; }
};

void save(QWidget& widget, const QString& path) {
    for (int turn = 0; turn < 3; ++turn) {
        QApplication::processEvents();
    }
    if (!widget.grab().save(path)) {
        qFatal("cannot write %s", qPrintable(path));
    }
}

/// Every control of the tab in a state that comes and goes: under the pointer, pressed, with the focus.
void drawStates(PreferencesWindow& window, const std::function<void(const QString&)>& picture) {
    for (auto* control : window.findChildren<QWidget*>()) {
        control->setAttribute(Qt::WA_UnderMouse);
    }
    picture(u"hud-hovered"_s);
    for (auto* control : window.findChildren<QWidget*>()) {
        control->setAttribute(Qt::WA_UnderMouse, false);
    }
    for (auto* button : window.findChildren<QAbstractButton*>()) {
        button->setDown(true);
    }
    for (auto* slider : window.findChildren<QSlider*>()) {
        slider->setSliderDown(true);
    }
    picture(u"hud-pressed"_s);
    for (auto* button : window.findChildren<QAbstractButton*>()) {
        button->setDown(false);
    }
    for (auto* slider : window.findChildren<QSlider*>()) {
        slider->setSliderDown(false);
    }
    const auto focus = [&](QWidget* control, const QString& name) {
        window.activateWindow();
        QApplication::processEvents();
        control->setFocus(Qt::TabFocusReason);
        picture(u"hud-focus-"_s + name);
    };
    focus(window.findChild<QComboBox*>(), u"picker"_s);
    focus(window.findChild<QSlider*>(), u"slider"_s);
    focus(window.findChild<QRadioButton*>(), u"segment"_s);
    focus(window.findChild<QPushButton*>(), u"button"_s);
}

void drawAll(const QString& folder, bool dark) {
    test::FakePlatform fake;
    fake.appearance->dark = dark;
    Settings settings(*fake.defaults);
    PreferencesWindow window(settings, fake.platform());
    window.present();
    window.view().setHeightLimit(QWIDGETSIZE_MAX);
    const auto picture = [&](const QString& name) {
        save(window, folder + u'/' + name + (dark ? u"-dark.png"_s : u"-light.png"_s));
    };
    picture(u"general"_s);
    fake.accessibility->trusted = false;
    settings.showInMenuBar = false;
    window.view().select(PreferencesTab::sound);
    picture(u"sound"_s);
    settings.soundEnabled = !settings.soundEnabled();
    picture(u"sound-toggled"_s);
    window.view().select(PreferencesTab::general);
    picture(u"general-required"_s);
    for (auto* button : window.findChildren<QPushButton*>()) {
        if (button->text().contains(u"Reset"_s)) {
            button->click();
        }
    }
    for (auto* dialog : window.findChildren<QDialog*>()) {
        save(*dialog, folder + u"/reset"_s + (dark ? u"-dark.png"_s : u"-light.png"_s));
        dialog->reject();
    }
    window.view().select(PreferencesTab::hud);
    picture(u"hud"_s);
    drawStates(window, picture);
    settings.translucent = false;
    settings.fontSize = 64;
    settings.appearance = HUDAppearance::dark;
    picture(u"hud-flat"_s);
    window.view().setHeightLimit(420);
    picture(u"hud-small-screen"_s);
    settings.fontSize = 1000;
    settings.displaySeconds = -1e9;
    settings.flatOpacity = 7;
    picture(u"hud-out-of-range"_s);
}

} // namespace

int main(int argc, char* argv[]) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QApplication app(argc, argv);
    QApplication::setStyle(std::make_unique<test::StillStyle>().release()); // the application's from here on
    const auto arguments = QApplication::arguments();
    if (arguments.size() < 2 || !QDir().mkpath(arguments.at(1))) {
        qFatal("the first argument is the directory to write to");
    }
    Lengthener lengthener;
    if (arguments.contains(u"long"_s)) {
        QCoreApplication::installTranslator(&lengthener);
    }
    if (arguments.contains(u"rtl"_s)) {
        QApplication::setLayoutDirection(Qt::RightToLeft);
    }
    for (const bool dark : {false, true}) {
        drawAll(arguments.at(1), dark);
    }
    return 0;
}
