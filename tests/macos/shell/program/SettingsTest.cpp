#include "settings/Settings.h"
#include "macos/shell/program/ProgramTest.h"

namespace orvantile::test {
namespace {

using ::testing::ElementsAre;
using ::testing::SizeIs;

/// What the settings ask of the user's defaults, from the first call to the last.
class MacSettingsTest : public ProgramTest {
protected:
    /// Without asking for the store each time.
    [[nodiscard]] static std::vector<std::string> defaultsCalls() {
        auto result = callsTo({"NSUserDefaults"});
        std::erase(result, "[NSUserDefaults standardUserDefaults]");
        return result;
    }

    platform::UserDefaults& defaults = *platform::Platform::current().defaults;
};

TEST_F(MacSettingsTest, registerAllDefaultsAtOnceAndThenLoadInOrderWritingNothing) {
    forgetCalls();
    const Settings settings(defaults);

    EXPECT_THAT(
        defaultsCalls(),
        ElementsAre(
            "[NSUserDefaults registerDefaults:<NSMutableDictionary>]",
            "[NSUserDefaults boolForKey:\"enabled\"]", "[NSUserDefaults boolForKey:\"showInMenuBar\"]",
            "[NSUserDefaults doubleForKey:\"displaySeconds\"]", "[NSUserDefaults stringForKey:\"position\"]",
            "[NSUserDefaults doubleForKey:\"fontSize\"]", "[NSUserDefaults boolForKey:\"soundEnabled\"]",
            "[NSUserDefaults stringForKey:\"sound\"]", "[NSUserDefaults boolForKey:\"popAnimation\"]",
            "[NSUserDefaults boolForKey:\"translucent\"]", "[NSUserDefaults boolForKey:\"showShortcut\"]",
            "[NSUserDefaults stringForKey:\"appearance\"]", "[NSUserDefaults doubleForKey:\"flatOpacity\"]"));
    EXPECT_THAT(desktop::registeredDefaults(), SizeIs(12));
    EXPECT_THAT(desktop::storedDefaults(), SizeIs(0));
}

TEST_F(MacSettingsTest, areWrittenAtEachAssignmentThoughTheValueIsTheSame) {
    Settings settings(defaults);
    forgetCalls();
    settings.enabled = true;
    settings.fontSize = 22.0;
    settings.sound = HUDSound::pop;

    EXPECT_THAT(defaultsCalls(), ElementsAre("[NSUserDefaults setBool:YES forKey:\"enabled\"]",
                                             "[NSUserDefaults setDouble:22 forKey:\"fontSize\"]",
                                             "[NSUserDefaults setObject:\"Pop\" forKey:\"sound\"]"));
}

TEST_F(MacSettingsTest, areResetInOrderByTwelveAssignments) {
    Settings settings(defaults);
    forgetCalls();
    settings.resetToDefaults();

    EXPECT_THAT(defaultsCalls(),
                ElementsAre("[NSUserDefaults setBool:YES forKey:\"enabled\"]",
                            "[NSUserDefaults setBool:YES forKey:\"showInMenuBar\"]",
                            "[NSUserDefaults setDouble:1.2 forKey:\"displaySeconds\"]",
                            "[NSUserDefaults setObject:\"bottomCenter\" forKey:\"position\"]",
                            "[NSUserDefaults setDouble:22 forKey:\"fontSize\"]",
                            "[NSUserDefaults setBool:YES forKey:\"soundEnabled\"]",
                            "[NSUserDefaults setObject:\"Pop\" forKey:\"sound\"]",
                            "[NSUserDefaults setBool:YES forKey:\"popAnimation\"]",
                            "[NSUserDefaults setBool:YES forKey:\"translucent\"]",
                            "[NSUserDefaults setBool:YES forKey:\"showShortcut\"]",
                            "[NSUserDefaults setObject:\"auto\" forKey:\"appearance\"]",
                            "[NSUserDefaults setDouble:0.75 forKey:\"flatOpacity\"]"));
}

} // namespace
} // namespace orvantile::test
