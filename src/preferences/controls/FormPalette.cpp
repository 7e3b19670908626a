#include "preferences/controls/FormPalette.h"

#include <utility>

namespace orvantile {
namespace {

struct Colours {
    QColor window;
    QColor card;
    QColor edge;
    QColor text;
    QColor secondary;
    QColor control;
    QColor track;
    QColor knob;
    QColor accent;
    QColor destructive;
    QColor disabledText;
};

Colours lightColours() {
    return {.window = {0xf3, 0xf3, 0xf5},
            .card = {0xff, 0xff, 0xff},
            .edge = {0, 0, 0, 24},
            .text = {0x1c, 0x1c, 0x20},
            .secondary = {0x66, 0x66, 0x6e},
            .control = {0xff, 0xff, 0xff},
            .track = {0xd2, 0xd2, 0xd8},
            .knob = {0xff, 0xff, 0xff},
            .accent = {0x2f, 0x6b, 0xee},
            .destructive = {0xc6, 0x28, 0x28},
            .disabledText = {0, 0, 0, 82}};
}

Colours darkColours() {
    return {.window = {0x1e, 0x1e, 0x21},
            .card = {0x2a, 0x2a, 0x2e},
            .edge = {255, 255, 255, 22},
            .text = {0xf2, 0xf2, 0xf4},
            .secondary = {0xa6, 0xa6, 0xae},
            .control = {0x45, 0x45, 0x4b},
            .track = {0x54, 0x54, 0x5b},
            .knob = {0xf6, 0xf6, 0xf8},
            .accent = {0x4a, 0x85, 0xff},
            .destructive = {0xff, 0x7b, 0x72},
            .disabledText = {255, 255, 255, 82}};
}

} // namespace

QPalette formPalette(bool dark) {
    const auto colours = dark ? darkColours() : lightColours();
    QPalette palette;
    palette.setColor(QPalette::Window, colours.window);
    palette.setColor(QPalette::Base, colours.card);
    palette.setColor(QPalette::AlternateBase, colours.window);
    palette.setColor(QPalette::Mid, colours.edge);
    palette.setColor(QPalette::Dark, colours.edge);
    palette.setColor(QPalette::Shadow, QColor(0, 0, 0, dark ? 90 : 40));
    palette.setColor(QPalette::PlaceholderText, colours.secondary);
    palette.setColor(QPalette::Button, colours.control);
    palette.setColor(QPalette::Midlight, colours.track);
    palette.setColor(QPalette::Light, colours.knob);
    palette.setColor(QPalette::Highlight, colours.accent);
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::BrightText, colours.destructive);
    palette.setColor(QPalette::ToolTipBase, dark ? QColor(0x3a, 0x3a, 0x40) : QColor(0xfb, 0xfb, 0xfc));
    for (const auto role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText}) {
        palette.setColor(role, colours.text);
        palette.setColor(QPalette::Disabled, role, colours.disabledText);
    }
    return palette;
}

bool isDark(const QPalette& palette) {
    return palette.color(QPalette::Window).lightness() < 128;
}

} // namespace orvantile
