// The settings file is replaced under the program by whatever can lie in its place, and settings are changed
// meanwhile.

#include "desktop/endtoend/WholeProgram.h"

#include "support/QtPrinting.h"

#include <QDir>
#include <QFile>
#include <gmock/gmock.h>

namespace orvantile::test {
namespace {

using Qt::StringLiterals::operator""_s;
using ::testing::AllOf;
using ::testing::HasSubstr;

class ReplacedSettings : public ::testing::Test {
protected:
    void SetUp() override { program.showTab(u"HUD"_s); }

    /// Changes a setting in the preferences, which show it at once whatever the file is.
    void assign(bool animated) {
        const auto control = program.switchNamed(u"Pop animation"_s);
        ASSERT_NE(program.isChecked(control), animated);
        ASSERT_TRUE(program.reader().perform(control, u"Toggle"_s));
        EXPECT_TRUE(program.await([&] { return program.isChecked(control) == animated; }));
    }

    /// The file with everything that has been assigned, and nothing else.
    void expectFile(bool animated) {
        const auto value = animated ? "popAnimation=true" : "popAnimation=false";
        EXPECT_TRUE(program.await([&] { return program.settings().contains(value); }));
        EXPECT_THAT(program.settings().toStdString(),
                    AllOf(HasSubstr("[General]"), HasSubstr("displaySeconds=0.3")));
        EXPECT_LT(program.settings().size(), 1'000);
    }

    /// Commands are named as before.
    void expectHud() { program.awaitHidden(program.fire()); }

    [[nodiscard]] QString path() {
        return program.stage().session().configuration() + u"/orvantile/orvantile.ini"_s;
    }

    WholeProgram program{"[General]\ndisplaySeconds=0.3\nsoundEnabled=false\n"};
};

/// What the program does not know may be somebody's, so it stays.
TEST_F(ReplacedSettings, anAssignmentIsFoundAgainBesideRubbish) {
    program.stage().session().writeFile(u".config/orvantile/orvantile.ini"_s, QByteArray(100'000, '\xff'));
    expectHud();
    program.showPreferences();
    assign(false);
    EXPECT_TRUE(program.await([&] { return program.settings().contains("popAnimation=false"); }));
    ASSERT_TRUE(program.bar().choose(u"Quit Orvantile"_s));
    ASSERT_EQ(program.process().awaitExit(), 0);
    program.start();
    program.showTab(u"HUD"_s);
    EXPECT_FALSE(program.isChecked(program.switchNamed(u"Pop animation"_s)));
}

TEST_F(ReplacedSettings, aFileThatIsGoneIsWrittenAgain) {
    ASSERT_TRUE(QDir(program.stage().session().configuration() + u"/orvantile"_s).removeRecursively());
    expectHud();
    assign(false);
    expectFile(false);
}

TEST_F(ReplacedSettings, whatCannotBeWrittenFollowsWithTheNextAssignment) {
    ASSERT_TRUE(QFile::remove(path()));
    ASSERT_TRUE(QDir().mkpath(path() + u"/occupied"_s));
    assign(false);
    expectHud();
    ASSERT_TRUE(QDir(path()).removeRecursively());
    assign(true);
    expectFile(true);
    assign(false);
    expectFile(false);
    expectHud();
}

} // namespace
} // namespace orvantile::test
