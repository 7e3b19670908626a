#include "hud/TextLabel.h"

#include <QGuiApplication>
#include <QImage>
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

QImage drawn(const QString& text) {
    const TextLabel label(text, 22);
    QImage image(400, 60, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    label.draw(painter, {});
    return image;
}

TEST(TextLabel, showsNothingOfCharactersThatTurnOrHideTheirNeighbours) {
    const auto plain = drawn(u"Save all"_s);
    EXPECT_EQ(drawn(u"Save\u202E all\u202C"_s), plain) << "an override of direction";
    EXPECT_EQ(drawn(u"\u2067Save all\u2069"_s), plain) << "an isolate";
    EXPECT_EQ(drawn(u"Sa\u0007ve\u001B all\u0085"_s), plain) << "control characters";
    EXPECT_EQ(drawn(QString(u"Sa"_s + QChar(u'\0') + u"ve all"_s)), plain);
}

TEST(TextLabel, takesMarkupForText) {
    EXPECT_GT(TextLabel(u"<b>Save</b>"_s, 22).size().width(), TextLabel(u"Save"_s, 22).size().width() * 1.5);
}

TEST(TextLabel, drawsNoMoreThanAnyScreenHolds) {
    const QString endless(1'000'000, u'i');
    EXPECT_EQ(TextLabel(endless, 22).size(), TextLabel(endless.left(16384), 22).size());
}

} // namespace
} // namespace orvantile
