// What labels of every kind leave in the picture.

#include "hud/HUDView.h"

#include <QElapsedTimer>
#include <gmock/gmock.h>

namespace orvantile {
namespace {

using Qt::StringLiterals::operator""_s;

HUDView bareText(const QString& text) {
    return {.text = text, .translucent = false, .darkMode = true, .flatOpacity = 0};
}

QImage drawn(const HUDView& view, double scale = 2) {
    const auto size = view.fittingSize();
    return view.picture(scale, platform::NoBackdrop{}, {0, 0, size.width, size.height});
}

/// Where something brighter than a shadow is drawn, in points within the capsule.
QRectF inkOf(const HUDView& view, const QRectF& within) {
    constexpr double scale = 2;
    const auto image = drawn(view, scale);
    QRect ink;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const auto pixel = image.pixel(x, y);
            if (std::max({qRed(pixel), qGreen(pixel), qBlue(pixel)}) > 100 &&
                within.contains(QPointF(x, y) / scale)) {
                ink |= QRect(x, y, 1, 1);
            }
        }
    }
    return {QPointF(ink.topLeft()) / scale, QSizeF(ink.size()) / scale};
}

QRectF inkOf(const HUDView& view) {
    return inkOf(view, view.capsule());
}

TEST(TextInk, emptyTextLeavesNone) {
    EXPECT_TRUE(inkOf(bareText(QString())).isEmpty());
    EXPECT_TRUE(inkOf(bareText(u"  "_s)).isEmpty());
}

TEST(TextInk, staysWithinThePaddings) {
    for (const auto& text : {u"⌃S  Save"_s, u"⌥⇧⌘→  Next"_s, u"保存文件"_s, u"שמור הכול"_s, u"حفظ باسم"_s,
                             u"Čeština é ñ"_s, u"naïve"_s}) {
        const auto view = bareText(text);
        const auto ink = inkOf(view);
        EXPECT_GT(ink.width(), 20) << text.toStdString();
        EXPECT_GT(ink.height(), 8) << text.toStdString();
        const auto room =
            view.capsule().adjusted(view.horizontalPadding() - 4, 4, 4 - view.horizontalPadding(), -4);
        EXPECT_TRUE(room.contains(ink)) << text.toStdString();
    }
}

TEST(TextInk, everyKeySymbolIsInTheBundledFace) {
    // A missing symbol would come from a face of another weight or be an empty box of another height.
    for (const auto symbol : u"⌃⌥⇧⌘⇥⇤⌅␣⌦⏎⌫⇞⇪←→↑↓⇟⏻⏏⎋↖↘"_s) {
        const auto ink = inkOf(bareText(QString(symbol)));
        EXPECT_GT(ink.width(), 5) << QString(symbol).toStdString();
        EXPECT_LT(ink.height(), 22) << QString(symbol).toStdString();
    }
}

TEST(TextInk, marksStayWithTheirLetters) {
    for (const auto& [apart, whole] : {std::pair{u"e\u0301"_s, u"é"_s}, std::pair{u"e\u0302\u0301"_s, u"ế"_s},
                                       std::pair{u"a\u0323"_s, u"ạ"_s}}) {
        EXPECT_EQ(inkOf(bareText(apart)), inkOf(bareText(whole)));
        const auto letter = inkOf(bareText(apart.left(1)));
        const auto marked = inkOf(bareText(apart));
        EXPECT_GT(marked.height(), letter.height() + 2);
        EXPECT_NEAR(marked.left(), letter.left(), 2);
    }
}

TEST(TextInk, enclosedQuestionMarkIsOneSign) {
    const auto enclosed = inkOf(bareText(u"?\u20DD"_s));
    EXPECT_NEAR(enclosed.width(), enclosed.height(), 1.5);
    EXPECT_GT(enclosed.width(), 12);
}

TEST(TextInk, linesBeginOnTheSideOfTheirScript) {
    const auto leftToRight = bareText(u"mmmmmmmmmm\nm"_s);
    const auto rightToLeft = bareText(u"שששששששששש\nש"_s);
    const auto lowerHalf = [](const HUDView& view) {
        auto half = view.capsule();
        half.setTop(half.center().y());
        return inkOf(view, half);
    };
    EXPECT_LT(lowerHalf(leftToRight).center().x(), leftToRight.capsule().center().x() - 50);
    EXPECT_GT(lowerHalf(rightToLeft).center().x(), rightToLeft.capsule().center().x() + 30);
}

TEST(TextInk, fiveThousandCharactersOfAnyKindAreDrawn) {
    for (const auto& piece :
         {u"word "_s, u"保"_s, u"ש"_s, u"😀"_s, u"a\u0301\u0323"_s, u"\n"_s, u"\u0000"_s}) {
        auto view = bareText(piece.repeated(5000 / piece.size()));
        QElapsedTimer clock;
        clock.start();
        const auto size = view.fittingSize();
        const auto image =
            view.picture(1, platform::NoBackdrop{}, {size.width / 2, 0, std::min(size.width, 1920.0), 200});
        EXPECT_LE(image.sizeInBytes(), 1921 * 201 * 4);
        EXPECT_LT(clock.elapsed(), 4000) << "generous: sanitizers, a busy machine";
    }
}

TEST(Painting, isTheSameOnAnyPainter) {
    const HUDView view{.text = u"⌃S  Save"_s, .translucent = false};
    const auto expected = drawn(view, 2);
    QImage canvas(expected.width() + 40, expected.height() + 40, QImage::Format_ARGB32_Premultiplied);
    canvas.fill(Qt::transparent);
    canvas.setDevicePixelRatio(2);
    QPainter painter(&canvas);
    painter.translate(10, 10);
    view.paint(painter);
    painter.end();
    EXPECT_EQ(canvas.copy(20, 20, expected.width(), expected.height()), expected);
}

TEST(Painting, showsAnyInstantOfTheEntrance) {
    const HUDView view{.text = u"⌃S  Save"_s, .translucent = false, .popAnimation = true, .flatOpacity = 1};
    const auto size = view.fittingSize();
    const auto at = [&](double elapsed) {
        QImage canvas(qRound(size.width), qRound(size.height), QImage::Format_ARGB32_Premultiplied);
        canvas.fill(Qt::transparent);
        QPainter painter(&canvas);
        view.paint(painter, QImage(), elapsed);
        painter.end();
        return canvas;
    };
    const QPoint edge(34, qRound(view.capsule().center().y()));
    EXPECT_EQ(qAlpha(at(0).pixel(qRound(size.width / 2), edge.y())), 0);
    EXPECT_LT(qAlpha(at(0.05).pixel(edge)), 60); // still small
    EXPECT_EQ(qAlpha(at(2).pixel(edge)), 255);
    EXPECT_GT(qAlpha(at(0.268).pixel(26, edge.y())), 200); // overshoots
}

} // namespace
} // namespace orvantile
