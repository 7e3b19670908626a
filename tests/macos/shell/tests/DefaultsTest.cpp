#include "macos/shell/tests/ShellTest.h"
#include "platform/macos/desktop/MacDefaults.h"

namespace orvantile::test {
namespace {

using desktop::DefaultsObject;
using platform::macos::MacDefaults;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;
using ::testing::UnorderedElementsAre;
using Qt::StringLiterals::operator""_s;

class MacDefaultsTest : public ShellTest {
protected:
    MacDefaults defaults;
};

TEST_F(MacDefaultsTest, registersAllFallbacksAtOnceWithTheirTypesAndWritesNothing) {
    defaults.registerDefaults({{u"enabled"_s, true}, {u"fontSize"_s, 22.0}, {u"sound"_s, u"Pop"_s}});

    EXPECT_THAT(calls(), ElementsAre("[NSUserDefaults standardUserDefaults]",
                                     "[NSUserDefaults registerDefaults:<NSMutableDictionary>]"));
    EXPECT_THAT(desktop::registeredDefaults(),
                UnorderedElementsAre(Pair("enabled", DefaultsObject(true)),
                                     Pair("fontSize", DefaultsObject(22.0)),
                                     Pair("sound", DefaultsObject(std::string("Pop")))));
    EXPECT_THAT(desktop::storedDefaults(), IsEmpty());
}

TEST_F(MacDefaultsTest, readsFallbacksAndStoredValues) {
    defaults.registerDefaults({{u"enabled"_s, true}, {u"fontSize"_s, 22.0}, {u"sound"_s, u"Pop"_s}});
    desktop::storedDefaults() = {{"fontSize", 30.5}};

    EXPECT_TRUE(defaults.boolForKey(u"enabled"_s));
    EXPECT_EQ(defaults.doubleForKey(u"fontSize"_s), 30.5);
    EXPECT_EQ(defaults.stringForKey(u"sound"_s), u"Pop"_s);
}

TEST_F(MacDefaultsTest, readsWhatIsNotThere) {
    EXPECT_FALSE(defaults.boolForKey(u"enabled"_s));
    EXPECT_EQ(defaults.doubleForKey(u"fontSize"_s), 0.0);
    EXPECT_EQ(defaults.stringForKey(u"sound"_s), std::nullopt);
}

TEST_F(MacDefaultsTest, usesTheTypedGetters) {
    (void)defaults.boolForKey(u"enabled"_s);
    (void)defaults.doubleForKey(u"fontSize"_s);
    (void)defaults.stringForKey(u"sound"_s);

    EXPECT_THAT(
        calls(),
        ElementsAre("[NSUserDefaults standardUserDefaults]", "[NSUserDefaults boolForKey:\"enabled\"]",
                    "[NSUserDefaults standardUserDefaults]", "[NSUserDefaults doubleForKey:\"fontSize\"]",
                    "[NSUserDefaults standardUserDefaults]", "[NSUserDefaults stringForKey:\"sound\"]"));
}

TEST_F(MacDefaultsTest, usesTheTypedSetters) {
    defaults.set(u"enabled"_s, false);
    defaults.set(u"fontSize"_s, 18.25);
    defaults.set(u"sound"_s, u"Purr"_s);

    EXPECT_THAT(calls(), ElementsAre("[NSUserDefaults standardUserDefaults]",
                                     "[NSUserDefaults setBool:NO forKey:\"enabled\"]",
                                     "[NSUserDefaults standardUserDefaults]",
                                     "[NSUserDefaults setDouble:18.25 forKey:\"fontSize\"]",
                                     "[NSUserDefaults standardUserDefaults]",
                                     "[NSUserDefaults setObject:\"Purr\" forKey:\"sound\"]"));
}

TEST_F(MacDefaultsTest, keepsTextOfAnyScript) {
    const auto text = u"Größe 字 😀"_s;
    defaults.set(u"text"_s, text);

    EXPECT_EQ(defaults.stringForKey(u"text"_s), text);
}

} // namespace
} // namespace orvantile::test
