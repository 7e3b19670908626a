// Draws every tab and state of the preferences into PNG files in the directory that is the first argument.
// QT_SCALE_FACTOR sets the scale; further arguments: "rtl" for right-to-left, "long" for long texts.

#include "preferences/PreferencesWindow.h"
#include "preferences/controls/ConfirmationDialog.h"
#include "support/FakePlatform.h"

#include <QApplication>
#include <QDir>
#include <QPushButton>
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
    QApplication::processEvents();
    if (!widget.grab().save(path)) {
        qFatal("cannot write %s", qPrintable(path));
    }
}

void drawAll(const QString& folder, bool dark) {
    test::FakePlatform fake;
    fake.appearance->dark = dark;
    Settings settings(*fake.defaults);
    PreferencesWindow window(settings, fake.platform());
    window.present();
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
    settings.translucent = false;
    settings.fontSize = 64;
    settings.appearance = HUDAppearance::dark;
    picture(u"hud-flat"_s);
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
