#include "hud/LabelFont.h"

#include "hud/TextLabel.h"

#include <QFontDatabase>
#include <QImage>
#include <QPainter>
#include <QStringList>

inline void initializeFontResource() {
    Q_INIT_RESOURCE(fonts); // a static library's resources are not registered by themselves
}

namespace orvantile {
namespace {

using Qt::StringLiterals::operator""_s;

QStringList loadFamilies() {
    initializeFontResource();
    const int id = QFontDatabase::addApplicationFont(u":/orvantile/fonts/OrvantileRounded-SemiBold.ttf"_s);
    auto families = id < 0 ? QStringList() : QFontDatabase::applicationFontFamilies(id).mid(0, 1);
    families.append(QFont().families());
    families.append(u"sans-serif"_s);
    return families;
}

} // namespace

QFont labelFont(int pixelSize) {
    static const QStringList families = loadFamilies();
    QFont font;
    font.setFamilies(families);
    font.setPixelSize(pixelSize);
    font.setWeight(QFont::DemiBold);
    font.setHintingPreference(QFont::PreferNoHinting);
    font.setStyleStrategy(QFont::NoSubpixelAntialias);
    return font;
}

void prewarmLabelFont() {
    const TextLabel label(u"⌃⌥⇧⌘←→↑↓⏎⎋⇥␣⌫⌦F1A  ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz…"_s, 22);
    QImage image(label.size().toSize(), QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&image);
    label.draw(painter, {});
}

} // namespace orvantile
