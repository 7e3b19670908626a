#include "settings/HUDAppearance.h"
#include "settings/HUDPosition.h"
#include "settings/HUDSound.h"
#include "support/FakePlatform.h"

#include <QSet>
#include <QStringList>
#include <gmock/gmock.h>
#include <unordered_set>

namespace orvantile {
namespace {

using Qt::StringLiterals::operator""_s;
using ::testing::ElementsAre;

template <typename Option>
class EnumerationTest : public ::testing::Test {};

using Options = ::testing::Types<HUDPosition, HUDSound, HUDAppearance>;
TYPED_TEST_SUITE(EnumerationTest, Options);

template <typename Option>
QStringList rawValues() {
    QStringList result;
    for (const auto& option : Option::allCases) {
        result.append(option.rawValue());
    }
    return result;
}

template <typename Option>
QStringList labels() {
    QStringList result;
    for (const auto& option : Option::allCases) {
        result.append(option.label());
    }
    return result;
}

TYPED_TEST(EnumerationTest, listsItsCasesInDeclarationOrder) {
    int index = 0;
    for (const auto& option : TypeParam::allCases) {
        EXPECT_EQ(static_cast<int>(static_cast<typename TypeParam::Case>(option)), index++);
    }
}

TYPED_TEST(EnumerationTest, findsEachCaseByItsRawValue) {
    for (const auto& option : TypeParam::allCases) {
        EXPECT_EQ(TypeParam::fromRawValue(option.rawValue()), option);
    }
}

TYPED_TEST(EnumerationTest, isIdentifiedByItsRawValue) {
    for (const auto& option : TypeParam::allCases) {
        EXPECT_EQ(option.id(), option.rawValue());
    }
}

TYPED_TEST(EnumerationTest, matchesRawValuesExactly) {
    for (const auto& option : TypeParam::allCases) {
        const auto raw = option.rawValue();
        QString swapped = raw;
        swapped[0] = raw[0].isUpper() ? raw[0].toLower() : raw[0].toUpper();
        for (const auto& other : {swapped, raw.toUpper(), QString(raw + u' '), QString(u' ' + raw),
                                  raw.chopped(1), QString(raw + QChar(0))}) {
            EXPECT_EQ(TypeParam::fromRawValue(other), std::nullopt) << other.toStdString();
        }
    }
    EXPECT_EQ(TypeParam::fromRawValue(QString()), std::nullopt);
    EXPECT_EQ(TypeParam::fromRawValue(u""), std::nullopt);
    EXPECT_EQ(TypeParam::fromRawValue(u"0"), std::nullopt);
}

TYPED_TEST(EnumerationTest, hashesByCase) {
    std::unordered_set<TypeParam> set(TypeParam::allCases.begin(), TypeParam::allCases.end());
    EXPECT_EQ(set.size(), TypeParam::allCases.size());
    EXPECT_TRUE(set.contains(TypeParam::allCases.back()));
}

TEST(HUDPositionTest, hasSevenPlacesWithTheirLabels) {
    EXPECT_THAT(rawValues<HUDPosition>(),
                ElementsAre(u"center"_s, u"topCenter"_s, u"bottomCenter"_s, u"topLeft"_s, u"topRight"_s,
                            u"bottomLeft"_s, u"bottomRight"_s));
    EXPECT_THAT(labels<HUDPosition>(),
                ElementsAre(u"Center"_s, u"Top center"_s, u"Bottom center"_s, u"Top left"_s, u"Top right"_s,
                            u"Bottom left"_s, u"Bottom right"_s));
    EXPECT_EQ(HUDPosition::fallback, HUDPosition::bottomCenter);
}

TEST(HUDSoundTest, hasSixSoundsWhoseLabelsAreTheirNames) {
    EXPECT_THAT(rawValues<HUDSound>(),
                ElementsAre(u"Pop"_s, u"Tink"_s, u"Glass"_s, u"Ping"_s, u"Morse"_s, u"Purr"_s));
    EXPECT_EQ(labels<HUDSound>(), rawValues<HUDSound>());
    EXPECT_EQ(HUDSound::fallback, HUDSound::pop);
}

TEST(HUDAppearanceTest, hasThreeAppearancesWithTheirLabels) {
    EXPECT_THAT(rawValues<HUDAppearance>(), ElementsAre(u"auto"_s, u"light"_s, u"dark"_s));
    EXPECT_THAT(labels<HUDAppearance>(), ElementsAre(u"Auto"_s, u"Light"_s, u"Dark"_s));
    EXPECT_EQ(HUDAppearance::fallback, HUDAppearance::auto_);
}

TEST(HUDAppearanceTest, contrastsTheHUDWithTheNamedAppearance) {
    for (const bool schemeIsDark : {false, true}) {
        EXPECT_TRUE(HUDAppearance(HUDAppearance::light).darkMode(schemeIsDark));
        EXPECT_FALSE(HUDAppearance(HUDAppearance::dark).darkMode(schemeIsDark));
        EXPECT_EQ(HUDAppearance(HUDAppearance::auto_).darkMode(schemeIsDark), !schemeIsDark);
    }
}

TEST(HUDAppearanceTest, asksTheDesktopEachTime) {
    test::FakePlatform fakes;
    EXPECT_FALSE(HUDAppearance::systemIsDark());
    fakes.appearance->change(true);
    EXPECT_TRUE(HUDAppearance::systemIsDark());
    fakes.appearance->change(false);
    EXPECT_FALSE(HUDAppearance::systemIsDark());
}

TEST(HUDAppearanceDeathTest, stopsTheProgramWhenAskedBeforeThereIsAPlatform) {
    EXPECT_DEATH(static_cast<void>(HUDAppearance::systemIsDark()), "no platform has been installed");
}

} // namespace
} // namespace orvantile
