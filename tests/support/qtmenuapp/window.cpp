// A program without widgets, as those are whose surface is all scenes: one window, and keys that it presses
// by itself. Says "done" and ends.
#include <QtGui/QGuiApplication>
#include <QtGui/QKeyEvent>
#include <QtGui/QWindow>
#include <QtTest/QTest>
#include <cstdio>

namespace {

class CountingWindow final : public QWindow {
public:
    int keys = 0;

protected:
    void keyPressEvent(QKeyEvent* event) override { keys += event->key() == Qt::Key_N ? 1 : 0; }
};

} // namespace

int main(int argc, char* argv[]) {
    const QGuiApplication app(argc, argv);
    CountingWindow window;
    window.show();
    if (!QTest::qWaitForWindowActive(&window, 20'000)) {
        std::fputs("the window does not become active\n", stderr);
        return 2;
    }
    constexpr int times = 100;
    for (int count = 0; count < times; ++count) {
        QTest::keyClick(&window, Qt::Key_N, Qt::ControlModifier);
    }
    std::printf("done %d\n", window.keys);
    return window.keys == times ? 0 : 1;
}
