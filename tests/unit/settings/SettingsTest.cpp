#include "settings/Settings.h"

#include "support/FakePlatform.h"

#include <gmock/gmock.h>
#include <optional>

namespace orvantile {
namespace {

using Qt::StringLiterals::operator""_s;
using ::testing::IsEmpty;

const QStringList keys{u"enabled"_s,     u"showInMenuBar"_s, u"displaySeconds"_s, u"position"_s,
                       u"fontSize"_s,    u"soundEnabled"_s,  u"sound"_s,          u"popAnimation"_s,
                       u"translucent"_s, u"showShortcut"_s,  u"appearance"_s,     u"flatOpacity"_s};

const QStringList defaultValues{u"true"_s, u"true"_s, u"1.2"_s,  u"bottomCenter"_s, u"22"_s,   u"true"_s,
                                u"Pop"_s,  u"true"_s, u"true"_s, u"true"_s,         u"auto"_s, u"0.75"_s};

QStringList paired(const QString& verb) {
    QStringList lines;
    for (qsizetype index = 0; index < keys.size(); ++index) {
        lines.append(verb + u' ' + keys[index] + u' ' + defaultValues[index]);
    }
    return lines;
}

class SettingsTest : public ::testing::Test {
protected:
    Settings& settings() {
        if (!made) {
            made.emplace(defaults);
        }
        return *made;
    }

    void expectDefaults() {
        EXPECT_TRUE(settings().enabled());
        EXPECT_TRUE(settings().showInMenuBar());
        EXPECT_EQ(settings().displaySeconds(), 1.2);
        EXPECT_EQ(settings().position(), HUDPosition::bottomCenter);
        EXPECT_EQ(settings().fontSize(), 22.0);
        EXPECT_TRUE(settings().soundEnabled());
        EXPECT_EQ(settings().sound(), HUDSound::pop);
        EXPECT_TRUE(settings().popAnimation());
        EXPECT_TRUE(settings().translucent());
        EXPECT_TRUE(settings().showShortcut());
        EXPECT_EQ(settings().appearance(), HUDAppearance::auto_);
        EXPECT_EQ(settings().flatOpacity(), 0.75);
    }

    void assignOthers() {
        settings().enabled = false;
        settings().showInMenuBar = false;
        settings().displaySeconds = 2.5;
        settings().position = HUDPosition::topLeft;
        settings().fontSize = 40.5;
        settings().soundEnabled = false;
        settings().sound = HUDSound::purr;
        settings().popAnimation = false;
        settings().translucent = false;
        settings().showShortcut = false;
        settings().appearance = HUDAppearance::dark;
        settings().flatOpacity = 0.5;
    }

    test::CallLog log = std::make_shared<QStringList>();
    test::FakeDefaults defaults{log};
    std::optional<Settings> made;
};

TEST_F(SettingsTest, startWithTheDefaultsInAnEmptyDomain) {
    expectDefaults();
    EXPECT_THAT(defaults.stored, IsEmpty());
}

TEST_F(SettingsTest, registerEveryDefaultThenLoadEveryPropertyInOrder) {
    settings();
    const QStringList loads{u"defaults.bool enabled"_s,          u"defaults.bool showInMenuBar"_s,
                            u"defaults.double displaySeconds"_s, u"defaults.string position"_s,
                            u"defaults.double fontSize"_s,       u"defaults.bool soundEnabled"_s,
                            u"defaults.string sound"_s,          u"defaults.bool popAnimation"_s,
                            u"defaults.bool translucent"_s,      u"defaults.bool showShortcut"_s,
                            u"defaults.string appearance"_s,     u"defaults.double flatOpacity"_s};
    EXPECT_EQ(*log, paired(u"defaults.register"_s) + loads);
}

TEST_F(SettingsTest, loadStoredValues) {
    defaults.stored = {
        {u"enabled"_s, false},          {u"showInMenuBar"_s, false},   {u"displaySeconds"_s, 0.4},
        {u"position"_s, u"topRight"_s}, {u"fontSize"_s, 64.0},         {u"soundEnabled"_s, false},
        {u"sound"_s, u"Morse"_s},       {u"popAnimation"_s, false},    {u"translucent"_s, false},
        {u"showShortcut"_s, false},     {u"appearance"_s, u"light"_s}, {u"flatOpacity"_s, 0.9}};
    EXPECT_FALSE(settings().enabled());
    EXPECT_FALSE(settings().showInMenuBar());
    EXPECT_EQ(settings().displaySeconds(), 0.4);
    EXPECT_EQ(settings().position(), HUDPosition::topRight);
    EXPECT_EQ(settings().fontSize(), 64.0);
    EXPECT_FALSE(settings().soundEnabled());
    EXPECT_EQ(settings().sound(), HUDSound::morse);
    EXPECT_FALSE(settings().popAnimation());
    EXPECT_FALSE(settings().translucent());
    EXPECT_FALSE(settings().showShortcut());
    EXPECT_EQ(settings().appearance(), HUDAppearance::light);
    EXPECT_EQ(settings().flatOpacity(), 0.9);
}

TEST_F(SettingsTest, fallBackFromStringsThatAreNoRawValue) {
    for (const auto& [position, sound, appearance] :
         {std::tuple{u"middle"_s, u"Basso"_s, u"Dark"_s}, std::tuple{u"bottomcenter"_s, u"tink"_s, u"AUTO"_s},
          std::tuple{u""_s, u""_s, u""_s}}) {
        defaults.stored = {{u"position"_s, position}, {u"sound"_s, sound}, {u"appearance"_s, appearance}};
        const Settings loaded(defaults);
        EXPECT_EQ(loaded.position(), HUDPosition::bottomCenter);
        EXPECT_EQ(loaded.sound(), HUDSound::pop);
        EXPECT_EQ(loaded.appearance(), HUDAppearance::auto_);
    }
}

TEST_F(SettingsTest, keepNumbersOutsideEveryRange) {
    for (const double value : {0.0, -3.0, 1e9}) {
        defaults.stored = {{u"displaySeconds"_s, value}, {u"fontSize"_s, value}, {u"flatOpacity"_s, value}};
        const Settings loaded(defaults);
        EXPECT_EQ(loaded.displaySeconds(), value);
        EXPECT_EQ(loaded.fontSize(), value);
        EXPECT_EQ(loaded.flatOpacity(), value);
    }
}

TEST_F(SettingsTest, readValuesOfAnotherTypeAsTheGettersFallbacks) {
    defaults.stored = {{u"enabled"_s, u"yes"_s}, {u"displaySeconds"_s, u"long"_s},
                       {u"position"_s, true},    {u"fontSize"_s, true},
                       {u"sound"_s, 3.0},        {u"showShortcut"_s, 1.0},
                       {u"appearance"_s, false}};
    EXPECT_FALSE(settings().enabled());
    EXPECT_EQ(settings().displaySeconds(), 0.0);
    EXPECT_EQ(settings().position(), HUDPosition::bottomCenter);
    EXPECT_EQ(settings().fontSize(), 0.0);
    EXPECT_EQ(settings().sound(), HUDSound::pop);
    EXPECT_FALSE(settings().showShortcut());
    EXPECT_EQ(settings().appearance(), HUDAppearance::auto_);
}

TEST_F(SettingsTest, writeNothingWhenTheyLoadBadValues) {
    defaults.stored = {{u"position"_s, u"middle"_s}};
    const auto before = defaults.stored;
    settings();
    EXPECT_EQ(defaults.stored, before);
    EXPECT_THAT(log->filter(u"defaults.set"_s), IsEmpty());
}

TEST_F(SettingsTest, persistEachPropertyUnderItsNameAndInItsType) {
    assignOthers();
    const std::map<QString, platform::DefaultsValue> expected{
        {u"enabled"_s, false},         {u"showInMenuBar"_s, false},  {u"displaySeconds"_s, 2.5},
        {u"position"_s, u"topLeft"_s}, {u"fontSize"_s, 40.5},        {u"soundEnabled"_s, false},
        {u"sound"_s, u"Purr"_s},       {u"popAnimation"_s, false},   {u"translucent"_s, false},
        {u"showShortcut"_s, false},    {u"appearance"_s, u"dark"_s}, {u"flatOpacity"_s, 0.5}};
    EXPECT_EQ(defaults.stored, expected);
}

TEST_F(SettingsTest, areTheSameAfterARelaunch) {
    assignOthers();
    const Settings next(defaults);
    EXPECT_FALSE(next.enabled());
    EXPECT_EQ(next.displaySeconds(), 2.5);
    EXPECT_EQ(next.position(), HUDPosition::topLeft);
    EXPECT_EQ(next.fontSize(), 40.5);
    EXPECT_EQ(next.sound(), HUDSound::purr);
    EXPECT_EQ(next.appearance(), HUDAppearance::dark);
    EXPECT_EQ(next.flatOpacity(), 0.5);
}

TEST_F(SettingsTest, announceBeforeTheValueChangesAndWriteAfterwards) {
    auto& object = settings();
    const auto whole = object.objectWillChange.subscribe(
        [&] { log->append(u"object will change from "_s + QString::number(object.fontSize())); });
    const auto own = object.fontSize.subscribe([&](double value) {
        log->append(u"announced "_s + QString::number(value) + u" over "_s +
                    QString::number(object.fontSize()));
    });
    log->clear();
    object.fontSize = 30;
    EXPECT_EQ(*log, (QStringList{u"object will change from 22"_s, u"announced 30 over 22"_s,
                                 u"defaults.set fontSize 30"_s}));
    EXPECT_EQ(object.fontSize(), 30);
}

TEST_F(SettingsTest, publishAndWriteAnEqualValueToo) {
    auto& object = settings();
    int whole = 0;
    int own = 0;
    const auto first = object.objectWillChange.subscribe([&] { ++whole; });
    const auto second = object.fontSize.subscribe([&](double) { ++own; });
    log->clear();
    object.fontSize = object.fontSize();
    EXPECT_EQ(whole, 1);
    EXPECT_EQ(own, 2); // once on subscription
    EXPECT_EQ(*log, QStringList{u"defaults.set fontSize 22"_s});
}

TEST_F(SettingsTest, tellOnlyTheSubscribersOfTheAssignedProperty) {
    int told = 0;
    const auto other = settings().displaySeconds.subscribe([&](double) { ++told; });
    told = 0;
    settings().fontSize = 30;
    EXPECT_EQ(told, 0);
}

TEST_F(SettingsTest, resetEveryPropertyInOrderWithTwelveAnnouncementsAndWrites) {
    assignOthers();
    auto& object = settings();
    const auto whole = object.objectWillChange.subscribe([&] { log->append(u"object will change"_s); });
    const auto told = [this](const QString& key) { return [this, key](const auto&) { log->append(key); }; };
    const std::array own{
        object.enabled.subscribe(told(u"enabled"_s)),
        object.showInMenuBar.subscribe(told(u"showInMenuBar"_s)),
        object.displaySeconds.subscribe(told(u"displaySeconds"_s)),
        object.position.subscribe(told(u"position"_s)),
        object.fontSize.subscribe(told(u"fontSize"_s)),
        object.soundEnabled.subscribe(told(u"soundEnabled"_s)),
        object.sound.subscribe(told(u"sound"_s)),
        object.popAnimation.subscribe(told(u"popAnimation"_s)),
        object.translucent.subscribe(told(u"translucent"_s)),
        object.showShortcut.subscribe(told(u"showShortcut"_s)),
        object.appearance.subscribe(told(u"appearance"_s)),
        object.flatOpacity.subscribe(told(u"flatOpacity"_s)),
    };
    log->clear();
    object.resetToDefaults();
    QStringList expected;
    const auto writes = paired(u"defaults.set"_s);
    for (qsizetype index = 0; index < keys.size(); ++index) {
        expected << u"object will change"_s << keys[index] << writes[index];
    }
    EXPECT_EQ(*log, expected);
    expectDefaults();
}

TEST_F(SettingsTest, resetAlsoWhatIsAtItsDefaultAlready) {
    settings().resetToDefaults();
    EXPECT_EQ(log->filter(u"defaults.set"_s), paired(u"defaults.set"_s));
    EXPECT_EQ(defaults.stored, defaults.registered);
}

TEST_F(SettingsTest, resetTouchesNoOtherKey) {
    defaults.stored[u"other"_s] = u"kept"_s;
    settings().resetToDefaults();
    EXPECT_EQ(defaults.stored.size(), 13U);
    EXPECT_EQ(std::get<QString>(defaults.stored[u"other"_s]), u"kept"_s);
}

TEST(SharedSettingsTest, areOneInstanceOnTheDefaultsOfThePlatform) {
    // Never destroyed, as the shared settings that refer to it.
    static auto& fakes = *std::make_unique<test::FakePlatform>().release();
    auto& settings = Settings::shared();
    EXPECT_EQ(&settings, &Settings::shared());
    settings.sound = HUDSound::ping;
    EXPECT_EQ(std::get<QString>(fakes.defaults->stored[u"sound"_s]), u"Ping"_s);
}

} // namespace
} // namespace orvantile
