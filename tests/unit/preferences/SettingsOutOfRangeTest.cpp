#include "preferences/HUDPreview.h"
#include "preferences/PreferencesWindow.h"
#include "preferences/controls/SliderRow.h"
#include "support/FakePlatform.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QScreen>
#include <cmath>
#include <gmock/gmock.h>
#include <limits>

namespace orvantile {
namespace {

using Qt::StringLiterals::operator""_s;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

/// A stored number that no control can have written, and how it is shown.
struct Outlier {
    const char* key;
    double value;
    const char* slider; ///< name
    double knob;        ///< 0 at the slider's left end, 1 at its right
    const char* digits; ///< null where there are hundreds
};

void PrintTo(const Outlier& outlier, std::ostream* stream) {
    *stream << outlier.key << " = " << outlier.value;
}

class SettingsOutOfRangeTest : public ::testing::TestWithParam<Outlier> {
protected:
    SettingsOutOfRangeTest() {
        fakes.defaults->stored[key()] = GetParam().value;
        fakes.defaults->stored[u"translucent"_s] = false; // so that the opacity is there, too
        settings.emplace(*fakes.platform().defaults);
        window.emplace(*settings, fakes.platform());
        window->view().select(PreferencesTab::hud);
        window->present();
        QCoreApplication::processEvents();
        fakes.log->clear();
    }

    [[nodiscard]] static QString key() { return QString::fromLatin1(GetParam().key); }

    [[nodiscard]] ValueSlider& slider() const {
        for (auto* each : window->findChildren<QSlider*>()) {
            auto* found = dynamic_cast<ValueSlider*>(each);
            if (found != nullptr && found->accessibleName() == QString::fromLatin1(GetParam().slider)) {
                return *found;
            }
        }
        throw std::runtime_error("no such slider");
    }

    [[nodiscard]] const HUDPreview& preview() const {
        for (auto* each : window->findChildren<QWidget*>()) {
            if (const auto* found = dynamic_cast<HUDPreview*>(each)) {
                return *found;
            }
        }
        throw std::runtime_error("no preview");
    }

    [[nodiscard]] static bool same(double left, double right) {
        return left == right || (std::isnan(left) && std::isnan(right));
    }

    [[nodiscard]] bool isStoredUnchanged() const {
        return same(std::get<double>(fakes.defaults->stored.at(key())), GetParam().value) &&
               fakes.log->filter(u"defaults.set"_s).isEmpty();
    }

    /// Everything that has to do with numbers keeps inside the window.
    void expectSaneLayout() const {
        const auto room = window->screen()->availableGeometry();
        EXPECT_EQ(window->width(), 480);
        EXPECT_GE(window->height(), 300);
        EXPECT_LE(window->height(), room.height());
        EXPECT_EQ(preview().width(), 480);
        EXPECT_GE(preview().height(), 90);
        for (const auto* each : window->findChildren<QSlider*>()) {
            const QRect place(each->mapTo(window->window(), QPoint()), each->size());
            EXPECT_GE(place.left(), 0);
            EXPECT_LE(place.right(), 480);
            EXPECT_LE(place.bottom(), window->height()) << "without scrolling";
            EXPECT_GE(place.width(), 80) << "wide enough to be taken";
        }
        for (const auto* label : window->findChildren<QLabel*>()) {
            if (label->isVisibleTo(&*window)) {
                EXPECT_LE(label->mapTo(window->window(), label->rect().bottomRight()).x(), 480)
                    << label->text().toStdString();
            }
        }
    }

    test::FakePlatform fakes;
    std::optional<Settings> settings;
    std::optional<PreferencesWindow> window;
};

TEST_P(SettingsOutOfRangeTest, isShownAndKeptUntilTheControlIsMoved) {
    const auto picture = window->grab().toImage();
    ASSERT_FALSE(picture.isNull());
    if (const auto folder = qEnvironmentVariable("ORVANTILE_TEST_SCREENSHOTS"); !folder.isEmpty()) {
        picture.save(u"%1/%2 %3.png"_s.arg(folder, key(), QString::number(GetParam().value)));
    }
    expectSaneLayout();
    EXPECT_EQ(slider().sliderPosition(), GetParam().knob * slider().maximum());
    if (GetParam().digits != nullptr) {
        EXPECT_EQ(slider().accessibleValue, QString::fromUtf8(GetParam().digits));
    }

    window->close();
    window->present();
    window->view().select(PreferencesTab::general);
    window->view().select(PreferencesTab::hud);
    EXPECT_FALSE(window->grab().isNull());
    EXPECT_TRUE(isStoredUnchanged()) << "looking changes nothing";

    auto& moved = slider();
    QKeyEvent press(QEvent::KeyPress, Qt::Key_Home, Qt::NoModifier);
    QCoreApplication::sendEvent(&moved, &press);
    EXPECT_EQ(std::get<double>(fakes.defaults->stored.at(key())), moved.range().minimum);
    QCoreApplication::processEvents();
    EXPECT_FALSE(window->grab().isNull());
    expectSaneLayout();
}

TEST_P(SettingsOutOfRangeTest, arrowsGoOnFromTheNearerEnd) {
    auto& moved = slider();
    const auto range = moved.range();
    const double end = range.minimum + GetParam().knob * (range.maximum - range.minimum);
    const bool atMinimum = GetParam().knob == 0;
    QKeyEvent press(QEvent::KeyPress, atMinimum ? Qt::Key_Right : Qt::Key_Left, Qt::NoModifier);
    QCoreApplication::sendEvent(&moved, &press);
    EXPECT_DOUBLE_EQ(std::get<double>(fakes.defaults->stored.at(key())),
                     end + (atMinimum ? range.step : -range.step));
}

INSTANTIATE_TEST_SUITE_P(Numbers, SettingsOutOfRangeTest,
                         ::testing::Values(Outlier{"displaySeconds", 0, "Duration", 0, "0.0s"},
                                           Outlier{"displaySeconds", -5, "Duration", 0, "-5.0s"},
                                           Outlier{"displaySeconds", 1e9, "Duration", 1, "1000000000.0s"},
                                           Outlier{"displaySeconds", nan, "Duration", 0, "–"},
                                           Outlier{"displaySeconds", infinity, "Duration", 1, "–"},
                                           Outlier{"displaySeconds", std::numeric_limits<double>::max(),
                                                   "Duration", 1, nullptr},
                                           Outlier{"fontSize", 0, "Font size", 0, "0pt"},
                                           Outlier{"fontSize", -40, "Font size", 0, "-40pt"},
                                           Outlier{"fontSize", 1000, "Font size", 1, "1000pt"},
                                           Outlier{"fontSize", 1e9, "Font size", 1, "1000000000pt"},
                                           Outlier{"fontSize", nan, "Font size", 0, "–"},
                                           Outlier{"fontSize", -infinity, "Font size", 0, "–"},
                                           Outlier{"flatOpacity", 7, "Background opacity", 1, "700%"},
                                           Outlier{"flatOpacity", -1, "Background opacity", 0, "-100%"},
                                           Outlier{"flatOpacity", nan, "Background opacity", 0, "–"}));

} // namespace
} // namespace orvantile
