// A program with menus, for either version of Qt. It says on standard output what happens in it: "ready" once
// its window is on the screen, then a line for each action that is triggered, with the time.
//   --fire N   presses the keys of New so often by itself, says "done" with the
//              processor time that one took, in nanoseconds, and ends
//   --chatty   an action's own event filter sees shortcuts first and lets them pass
#include <QAction>
#include <QtCore/QTimer>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMainWindow>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QPlainTextEdit>
#include <cstdio>
#include <ctime>

namespace {

long long nanosecondsOf(clockid_t clock) {
    timespec now{};
    clock_gettime(clock, &now);
    return now.tv_sec * 1'000'000'000LL + now.tv_nsec;
}

class MenuWindow final : public QMainWindow {
public:
    MenuWindow() {
        setWindowTitle(QStringLiteral("Menu Application"));
        auto* file = menuBar()->addMenu(QStringLiteral("&File"));
        create = &add(*file, QStringLiteral("&New"), QStringLiteral("Ctrl+N"));
        add(*file, QStringLiteral("Save &As…\tas you like"), QStringLiteral("Ctrl+Shift+S"));
        add(*file, QStringLiteral("&Locked"), QStringLiteral("Ctrl+L")).setEnabled(false);
        auto* edit = menuBar()->addMenu(QStringLiteral("&Edit"));
        auto* more = edit->addMenu(QStringLiteral("&More"));
        add(*more, QStringLiteral("Find && Replace"), QStringLiteral("Ctrl+Alt+F"));
        add(*edit, QStringLiteral("保存(&S)"), QStringLiteral("Ctrl+J"));
        add(*edit, QStringLiteral("Comment"), QStringLiteral("Ctrl+K, Ctrl+C"));
        add(*edit, QStringLiteral("One of two"), QStringLiteral("Ctrl+D"));
        add(*edit, QStringLiteral("The other of two"), QStringLiteral("Ctrl+D"));
        add(*edit, QStringLiteral("Select All"), QStringLiteral("Ctrl+A"));
        add(*edit, QStringLiteral("Refresh"), QStringLiteral("F5"));
        add(*edit, QStringLiteral("Fence"), QStringLiteral("Ctrl+Shift+F12"));
        auto* withoutMenu = new QAction(QStringLiteral("In no menu"), this);
        withoutMenu->setShortcut(QKeySequence(QStringLiteral("Ctrl+H")));
        follow(*withoutMenu);
        addAction(withoutMenu);
        setCentralWidget(new QPlainTextEdit(this)); // takes Ctrl+A for itself
        resize(500, 300);
    }

    QAction& newAction() { return *create; }

private:
    QAction& add(QMenu& menu, const QString& text, const QString& keys) {
        auto* action = menu.addAction(text);
        action->setShortcut(QKeySequence(keys));
        follow(*action);
        return *action;
    }

    static void follow(QAction& action) {
        QObject::connect(&action, &QAction::triggered, &action, [&action] {
            std::printf("%lld %s\n", nanosecondsOf(CLOCK_MONOTONIC), qPrintable(action.text()));
            std::fflush(stdout);
        });
    }

    QAction* create = nullptr;
};

/// Passes everything on, as programs do that look for shortcuts of their own.
class Onlooker final : public QObject {
public:
    using QObject::QObject;

    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Shortcut) {
            ++seen;
        }
        return false;
    }

    int seen = 0;
};

int fireRepeatedly(MenuWindow& window, int times) {
    int fired = 0;
    window.newAction().disconnect();
    QObject::connect(&window.newAction(), &QAction::triggered, &window, [&fired] { ++fired; });
    const auto before = nanosecondsOf(CLOCK_PROCESS_CPUTIME_ID);
    for (int count = 0; count < times; ++count) {
        QTest::keyClick(window.windowHandle(), Qt::Key_N, Qt::ControlModifier);
    }
    const auto used = nanosecondsOf(CLOCK_PROCESS_CPUTIME_ID) - before;
    std::printf("done %d %lld\n", fired, used / times);
    std::fflush(stdout);
    return fired == times ? 0 : 1;
}

} // namespace

int main(int argc, char* argv[]) {
    QApplication app(argc, argv);
    const auto arguments = QApplication::arguments();
    Onlooker onlooker;
    if (arguments.contains(QStringLiteral("--chatty"))) {
        app.installEventFilter(&onlooker);
    }
    MenuWindow window;
    window.show();
    if (!QTest::qWaitForWindowActive(&window, 20'000)) {
        std::fputs("the window does not become active\n", stderr);
        return 2;
    }
    std::puts("ready");
    std::fflush(stdout);
    if (const auto fire = arguments.indexOf(QStringLiteral("--fire")); fire >= 0) {
        return fireRepeatedly(window, arguments.value(fire + 1).toInt());
    }
    return QApplication::exec();
}
