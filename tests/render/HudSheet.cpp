// Draws every look of the HUD over three wallpapers into one picture: orvantile_hud_sheet FILE.

#include "hud/HUDView.h"
#include "render/Wallpapers.h"

#include <QApplication>
#include <array>
#include <cstdio>
#include <cstdlib>

namespace {

using namespace orvantile;
using Qt::StringLiterals::operator""_s;

constexpr double sheetScale = 2;
constexpr int columnWidth = 470;
constexpr int rowHeight = 1010;

void place(QPainter& painter, const QImage& wallpaper, const HUDView& view, QPointF centre) {
    const auto size = view.fittingSize();
    const QPointF corner(std::round(centre.x() - size.width / 2), std::round(centre.y() - size.height / 2));
    const QRectF whole(0, 0, size.width, size.height);
    const auto pixels = QRectF(corner * sheetScale, whole.size() * sheetScale).toAlignedRect();
    const auto blurred = VisualEffectBackground::blurred(wallpaper.copy(pixels), sheetScale);
    painter.drawImage(corner, view.picture(sheetScale, blurred, whole));
}

struct Example {
    const char16_t* text;
    double fontSize;
    double y;
};

constexpr std::array examples{
    Example{u"⌃S  Save", 22, 60},           Example{u"⌥⇧⌘→  Next Tab", 16, 130},
    Example{u"⌃⇧P  Preferences…", 30, 210}, Example{u"⌃?⃝  Undo", 48, 320},
    Example{u"F11  Full Screen", 12, 405},
};

} // namespace

int main(int argc, char* argv[]) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s FILE\n", argv[0]);
        return EXIT_FAILURE;
    }
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication app(argc, argv);

    QImage sheet((QSizeF(3 * columnWidth, rowHeight) * sheetScale).toSize(), QImage::Format_RGB32);
    sheet.setDevicePixelRatio(sheetScale);
    sheet.fill(Qt::white);
    QPainter painter(&sheet);
    int column = 0;
    for (const auto kind : {test::Wallpaper::bright, test::Wallpaper::dark, test::Wallpaper::busy}) {
        const auto wallpaper = test::makeWallpaper(kind, {columnWidth, rowHeight}, sheetScale);
        painter.save();
        painter.setClipRect(QRectF(column * columnWidth, 0, columnWidth, rowHeight));
        painter.translate(column * columnWidth, 0);
        painter.drawImage(QPointF(), wallpaper);
        HUDView view;
        double top = 0;
        for (const bool dark : {true, false}) {
            view.darkMode = dark;
            view.translucent = true;
            for (const auto& example : examples) {
                view.text = QString::fromUtf16(example.text);
                view.fontSize = example.fontSize;
                place(painter, wallpaper, view, {columnWidth / 2.0, top + example.y});
            }
            view.translucent = false;
            view.text = u"⌃Z  Undo Typing"_s;
            view.fontSize = 22;
            place(painter, wallpaper, view, {columnWidth / 2.0, top + 465});
            top += 505;
        }
        painter.restore();
        ++column;
    }
    painter.end();
    if (!sheet.save(QString::fromLocal8Bit(argv[1]))) {
        std::fprintf(stderr, "cannot write %s\n", argv[1]);
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
