// What drawing a HUD takes, in CPU time: from a label to the picture that the frames scale and fade.

#include "hud/HUDHostingView.h"
#include "hud/VisualEffectBackground.h"
#include "platform/linux/desktop/PanelComposer.h"
#include "support/Samples.h"

#include <QApplication>
#include <QRandomGenerator>
#include <cstdlib>
#include <ctime>
#include <optional>
#include <vector>

namespace orvantile::bench {
namespace {

using Qt::StringLiterals::operator""_s;

/// The CPU time of this thread, which is what drawing takes, whatever else runs on the machine.
double cpuMilliseconds() {
    timespec used{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &used);
    return static_cast<double>(used.tv_sec) * 1e3 + static_cast<double>(used.tv_nsec) / 1e6;
}

/// A busy desktop behind everything.
class BusyBackdrop final : public platform::Backdrop {
public:
    explicit BusyBackdrop(double scale_) : scale(scale_) {}

    [[nodiscard]] platform::BackdropPicture behind(const platform::Rect& rect) override {
        const QSize pixels(static_cast<int>(rect.width * scale), static_cast<int>(rect.height * scale));
        if (picture.size() != pixels) {
            picture = QImage(pixels, QImage::Format_RGB32);
            QRandomGenerator random(7);
            random.fillRange(reinterpret_cast<quint32*>(picture.bits()), picture.sizeInBytes() / 4);
        }
        return picture;
    }

private:
    double scale;
    QImage picture;
};

class OneScreen final : public platform::Screens {
public:
    [[nodiscard]] std::optional<platform::Screen> mainScreen() const override { return screen; }

    [[nodiscard]] std::vector<platform::Screen> screens() const override { return {screen}; }

private:
    platform::Screen screen{{0, 0, 2560, 1440}, {0, 0, 2560, 1440}, 1};
};

void measure(const QString& text, double fontSize, bool glass, double scale, int rounds) {
    BusyBackdrop backdrop(scale);
    const OneScreen screens;
    Samples drawing;
    Samples framing;
    Samples blurring;
    platform::Size size;
    for (int round = 0; round < rounds; ++round) {
        HUDView view;
        view.text = text;
        view.fontSize = fontSize;
        view.translucent = glass;
        const platform::Rect frame{0, 0, view.fittingSize().width, view.fittingSize().height};
        const auto behind = backdrop.behind(frame);
        double start = cpuMilliseconds();
        HUDHostingView content(view, backdrop, screens);
        size = content.fittingSize();
        content.prepare(frame, scale);
        drawing.add(cpuMilliseconds() - start);

        QImage target(content.frameAt(0).image.size(), QImage::Format_ARGB32_Premultiplied);
        target.fill(0); // its memory is there in the program, too
        start = cpuMilliseconds();
        platform::desktop::composePanel(target, content.frameAt(0.1), target.size(), {}, QImage());
        framing.add(cpuMilliseconds() - start);
        start = cpuMilliseconds();
        static_cast<void>(VisualEffectBackground::blurred(behind, scale));
        blurring.add(cpuMilliseconds() - start);
    }
    const auto what =
        u"%1 × %2 points at scale %3, "_s.arg(size.width, 0, 'f', 0).arg(size.height, 0, 'f', 0).arg(scale);
    drawing.print(what + (glass ? u"glass"_s : u"flat"_s));
    framing.print(what + u"one frame of the entrance"_s);
    if (glass) {
        blurring.print(what + u"blur alone"_s);
    }
}

} // namespace
} // namespace orvantile::bench

int main(int argc, char* argv[]) {
    using namespace orvantile::bench;
    using Qt::StringLiterals::operator""_s;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication app(argc, argv);
    const int rounds = argc > 1 ? std::atoi(argv[1]) : 200;
    Samples::printHeader();
    for (const double scale : {1.0, 2.0}) {
        for (const bool glass : {true, false}) {
            measure(u"⌃A  Select All"_s, 22, glass, scale, rounds);
            measure(u"⌃⇧V  Paste Without Formatting"_s, 22, glass, scale, rounds);
            measure(u"⌃⌥⇧V  Paste Without Formatting"_s, 64, glass, scale, rounds);
        }
    }
    return EXIT_SUCCESS;
}
