// The looks of the preferences, with the bundled font, against pictures that have been looked at.

#include "gallery/StillStyle.h"
#include "hud/LabelFont.h"
#include "preferences/PreferencesWindow.h"
#include "render/PictureComparison.h"
#include "support/FakePlatform.h"

#include <QApplication>
#include <gmock/gmock.h>

namespace orvantile::test {
namespace {

using Qt::StringLiterals::operator""_s;

class PreferencesGoldenTest : public ::testing::TestWithParam<bool> {
protected:
    PreferencesGoldenTest() {
        QApplication::setStyle(std::make_unique<StillStyle>().release()); // the application's from here on
        auto font = labelFont(13);
        font.setHintingPreference(QFont::PreferNoHinting);
        font.setStyleStrategy(QFont::NoSubpixelAntialias);
        QApplication::setFont(font);
        fakes.appearance->dark = GetParam();
    }

    void expectLooks(const QString& name) {
        PreferencesWindow window(settings, fakes.platform());
        window.view().select(tab);
        window.present();
        window.view().setHeightLimit(QWIDGETSIZE_MAX);
        QApplication::processEvents();
        const auto picture = window.grab().toImage().convertToFormat(QImage::Format_RGB32);
        const auto scale = QString::number(qRound(window.devicePixelRatioF() * 100));
        constexpr double movedText = 0.0002; // of the pixels
        expectGolden(picture,
                     QStringLiteral(GOLDEN_FOLDER "/preferences/") + name +
                         (GetParam() ? u"-dark-"_s : u"-light-"_s) + scale + u".png"_s,
                     movedText);
    }

    FakePlatform fakes;
    Settings settings{*fakes.platform().defaults};
    PreferencesTab tab = PreferencesTab::general;
};

TEST_P(PreferencesGoldenTest, general) {
    expectLooks(u"general"_s);
}

TEST_P(PreferencesGoldenTest, generalWithoutPermissionOrMenu) {
    fakes.accessibility->trusted = false;
    settings.showInMenuBar = false;
    expectLooks(u"general-required"_s);
}

TEST_P(PreferencesGoldenTest, hud) {
    tab = PreferencesTab::hud;
    settings.translucent = false;
    settings.popAnimation = false;
    settings.displaySeconds = 2.2;
    expectLooks(u"hud"_s);
}

TEST_P(PreferencesGoldenTest, soundSwitchedOff) {
    tab = PreferencesTab::sound;
    settings.soundEnabled = false;
    expectLooks(u"sound"_s);
}

INSTANTIATE_TEST_SUITE_P(appearances, PreferencesGoldenTest, ::testing::Bool(),
                         [](const auto& tested) { return std::string(tested.param ? "dark" : "light"); });

} // namespace
} // namespace orvantile::test
