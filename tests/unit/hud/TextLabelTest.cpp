#include "hud/TextLabel.h"

#include <QGuiApplication>
#include <QPainter>
#include <gmock/gmock.h>
#include <limits>

namespace orvantile {
namespace {

using Qt::StringLiterals::operator""_s;

TEST(TextLabel, growsEvenlyWithTheFontSize) {
    const auto at = [](double fontSize) { return TextLabel(u"⌥⇧⌘→  Next Tab"_s, fontSize).size(); };
    for (const double fontSize : {12.5, 22.0, 33.3, 64.0}) {
        EXPECT_NEAR(at(fontSize).width() / fontSize, at(100).width() / 100, 0.03) << fontSize;
        EXPECT_NEAR(at(fontSize).height(), 1.2 * fontSize, 0.05) << fontSize;
    }
}

TEST(TextLabel, hasTheDirectionOfItsTextInAMirroredProgram) {
    const auto drawn = [](Qt::LayoutDirection direction) {
        QGuiApplication::setLayoutDirection(direction);
        QImage image(160, 40, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::white);
        QPainter painter(&image);
        TextLabel(u"⌘S  Save"_s, 22).draw(painter, {});
        QGuiApplication::setLayoutDirection(Qt::LeftToRight);
        return image;
    };
    EXPECT_EQ(drawn(Qt::RightToLeft), drawn(Qt::LeftToRight));
}

TEST(TextLabel, neverWraps) {
    const auto one = TextLabel(u"word"_s, 22).size();
    const auto many = TextLabel(u"word "_s.repeated(200), 22).size();
    EXPECT_EQ(many.height(), one.height());
    EXPECT_GT(many.width(), 190 * one.width());
}

TEST(TextLabel, breaksWhereTheTextDoes) {
    const double line = TextLabel(u"a"_s, 22).size().height();
    for (const auto& text : {u"a\nbb\nc"_s, u"a\r\nbb\r\nc"_s, u"a\rbb\rc"_s, u"a\u2028bb\u2029c"_s}) {
        const auto size = TextLabel(text, 22).size();
        EXPECT_NEAR(size.height(), 3 * line, 1e-9);
        EXPECT_NEAR(size.width(), TextLabel(u"bb"_s, 22).size().width(), 1e-9);
    }
}

TEST(TextLabel, hasLinesOfOneHeightWhateverTheScript) {
    const double line = TextLabel(u"a"_s, 22).size().height();
    for (const auto& text : {u"保存"_s, u"שמור"_s, u"حفظ"_s, u"😀"_s, u"Z̸̢͚͝a̴͓͘l̶̰̂g̸͇͝o"_s, QString()}) {
        EXPECT_EQ(TextLabel(text, 22).size().height(), line) << text.toStdString();
    }
}

TEST(TextLabel, copesWithSizesThatAreNone) {
    for (const double fontSize : {0.0, -5.0, std::numeric_limits<double>::quiet_NaN()}) {
        const auto size = TextLabel(u"x"_s, fontSize).size();
        EXPECT_GT(size.height(), 0);
        EXPECT_LT(size.height(), 3);
    }
}

} // namespace
} // namespace orvantile
