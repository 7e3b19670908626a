// A window of stripes over the whole screen that tells of the focus and of input, one line each: a ground on
// which blur can be seen, for compositors that the tests cannot join.

#include <QApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QWidget>
#include <cstdio>

namespace {

void tell(const char* what) {
    std::puts(what);
    std::fflush(stdout);
}

class Stripes final : public QWidget {
public:
    Stripes() { setWindowTitle(QStringLiteral("stripes")); }

protected:
    void paintEvent(QPaintEvent*) override {
        constexpr int width = 2;
        QPainter painter(this);
        painter.fillRect(rect(), QColor(80, 255, 80));
        for (int x = 0; x < this->width(); x += 2 * width) {
            painter.fillRect(x, 0, width, height(), QColor(255, 80, 80));
        }
    }

    void focusInEvent(QFocusEvent*) override { tell("focus"); }

    void focusOutEvent(QFocusEvent*) override { tell("focus lost"); }

    void keyPressEvent(QKeyEvent*) override { tell("key"); }

    void mousePressEvent(QMouseEvent*) override { tell("click"); }
};

} // namespace

int main(int argc, char* argv[]) {
    const QApplication app(argc, argv);
    Stripes stripes;
    stripes.setFocusPolicy(Qt::StrongFocus);
    stripes.showFullScreen();
    return QApplication::exec();
}
