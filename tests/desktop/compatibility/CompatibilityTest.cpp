// A bounded part of what the survey does, with a few programs.

#include "desktop/compatibility/Survey.h"
#include "support/QtPrinting.h"

#include <gmock/gmock.h>

namespace orvantile::test {
namespace {

using Qt::StringLiterals::operator""_s;
using namespace std::chrono_literals;

class CompatibilityTest : public ::testing::TestWithParam<const char*> {};

TEST_P(CompatibilityTest, namesWhatTheMenusShow) {
    SurveyOptions options{.mostShortcuts = 12, .longest = 45s};
    options.progress = [](const Outcome& outcome) {
        std::printf("%s\t%s\t%s\t[%s]\n", qUtf8Printable(nameOf(outcome.verdict)),
                    qUtf8Printable(outcome.keys), qUtf8Printable(outcome.title),
                    qUtf8Printable(outcome.shown));
    };
    const auto report = Survey(programNamed(QString::fromLatin1(GetParam())), options).run();
    EXPECT_EQ(report.count(Verdict::wrong), 0);
    EXPECT_EQ(report.count(Verdict::falseAlarm), 0);
    EXPECT_GE(report.count(Verdict::right), 3);
}

INSTANTIATE_TEST_SUITE_P(Programs, CompatibilityTest,
                         ::testing::Values("mousepad", "geany", "gimp", "thunar", "galculator", "writer",
                                           "featherpad", "focuswriter"),
                         [](const auto& instance) { return std::string(instance.param); });

} // namespace
} // namespace orvantile::test
